// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The panel's own message box: a small skinned window with rounded corners,
// a message beside a fixed picture, and one OK button that lights up under
// the pointer. It has no border, no caption bar and no buttons of a window;
// it opens in the middle of the screen and is dragged by its title band.
//
//     frmMsgBox box(panel);
//     box.SetMessage(text);
//     box.exec(); // returns when OK is pressed (a click, Space on it or a
//                 // screen reader's press) or Enter is released
//
// Showing the box loads it: Form_Load runs once, before it is first on view,
// and reads the message set before.
#pragma once

#include "frame/ImageButtonLook.h"
#include "platform/ControlArray.h"
#include "platform/Controls.h"
#include "platform/Pictures.h"

#include <QDialog>

#include <optional>

namespace tessaly {

class frmMsgBox : public QDialog {
    Q_OBJECT
public:
    explicit frmMsgBox(QWidget* parent = nullptr);

    Q_INVOKABLE void SetMessage(const QString& strMessage);

    void setVisible(bool visible) override;

    // The controls, as laid out.
    Image* Image1 = nullptr;
    Label* lblTitle = nullptr;
    Label* lblMessage = nullptr;
    ControlArray<Image> imgBtnOK{QStringLiteral("imgBtnOK")};
    PictureBox* picCommand = nullptr;
    QPixmap Picture; // the box's background

    QString m_strMessage;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void Form_Load();
    void SetRoundRegion();
    void picCommand_Click();
    void Form_KeyUp(int KeyCode, int Shift);
    void lblTitle_MouseMove(int Button, int Shift, float X, float Y);
    void picCommand_MouseMove(int Button, int Shift, float X, float Y);

    bool m_loaded = false;
    std::optional<ImageButtonLook> m_ok; // lit under the pointer
};

} // namespace tessaly
