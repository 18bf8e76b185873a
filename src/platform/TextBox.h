// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// TextBox: the forms platform's one-line text box.
#pragma once

#include "platform/ControlColors.h"
#include "platform/FormControl.h"

#include <QLineEdit>

#include <cstdint>

namespace tessaly {

// A one-line text box. Its key and focus events are the platform's: KeyDown
// and KeyUp carry virtual-key codes, KeyUp comes once when a key is let go
// (not for the repeats of a held key), and KeyPress comes for each character
// typed, whose code the handler may change, or set to 0 to drop it.
// GotFocus and LostFocus come when the focus moves between controls, not when
// the window around them loses or regains the activation (a modal box opening
// or closing, another application) or a popup menu opens over the box.
class TextBox : public FormControl<QLineEdit> {
    Q_OBJECT
    Q_PROPERTY(QString Text READ Text WRITE setText)
    Q_PROPERTY(int MaxLength READ MaxLength WRITE setMaxLength)
    Q_PROPERTY(int SelStart READ SelStart WRITE setSelStart)
public:
    explicit TextBox(QWidget* parent = nullptr);
    void CopyFrom(const TextBox& model);

    QString Text() const { return text(); }
    // 0 means no limit.
    int MaxLength() const;
    void setMaxLength(int length);
    // The caret's place; setting it selects nothing.
    int SelStart() const { return cursorPosition(); }
    void setSelStart(int position);
    void setForeColor(const QColor& color) { SetControlColors(*this, {}, color); }
    // Draws a one-pixel border of `color` in place of the style's frame,
    // which leaves room for a line of text in a box as low as a grid row.
    void setFlatBorder(const QColor& color);

signals:
    void GotFocus();
    void LostFocus();
    void KeyDown(int KeyCode, int Shift);
    void KeyPress(int16_t& KeyAscii);
    void KeyUp(int KeyCode, int Shift);

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    static constexpr int NoLimit = 32767; // QLineEdit's own default
    QColor m_flatBorder;
};

} // namespace tessaly
