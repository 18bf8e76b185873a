// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// What the two picture controls share: a picture drawn at the top left corner,
// uncut and unscaled; the mouse events and Click; and the role of a button,
// which takes the focus by Tab, shows it with a dotted outline, and raises on
// Space or Return the same Click as the mouse, so that every rule of the
// Click handler holds. Screen readers see a button with a press action.
#pragma once

#include "platform/FormControl.h"

#include <QPixmap>

namespace tessaly {

// What a picture control stands for beyond its picture. A progress bar gives
// its value to screen readers.
enum class PictureRole { Picture, Button, ProgressBar };

class PictureControl : public FormControl<QWidget> {
    Q_OBJECT
public:
    const QPixmap& Picture() const { return m_picture; }
    PictureRole Role() const { return m_role; }

signals:
    void MouseDown(int Button, int Shift, float X, float Y);
    void MouseMove(int Button, int Shift, float X, float Y);
    void MouseUp(int Button, int Shift, float X, float Y);
    void Click();

protected:
    explicit PictureControl(QWidget* parent);

    // Draws the dotted outline when the focus came by the keyboard, where the
    // user needs to see which button a key will press.
    void paintFocusCue();

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

    QPixmap m_picture;
    PictureRole m_role = PictureRole::Picture;

private:
    bool m_focusShown = false;
};

} // namespace tessaly
