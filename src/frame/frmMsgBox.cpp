// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "frame/frmMsgBox.h"

#include "frame/ReportError.h"
#include "layout/LayoutFonts.h"
#include "layout/SkinArt.h"
#include "platform/MouseCapture.h"
#include "platform/VirtualKey.h"
#include "platform/WindowDrag.h"

#include <QApplication>
#include <QBitmap>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>

namespace tessaly {

namespace {

QFont BoldTahoma(double points)
{
    QFont font(Tahoma);
    font.setPointSizeF(points);
    font.setBold(true);
    return font;
}

} // namespace

frmMsgBox::frmMsgBox(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
{
    LoadLayoutFonts();
    setObjectName(QStringLiteral("frmMsgBox"));
    setWindowTitle(QStringLiteral("Form1"));
    setFixedSize(ToPixels(6090), ToPixels(2580));
    setPalette(QPalette(Qt::black, QColor(0xC3, 0xC3, 0xC3)));
    setAttribute(Qt::WA_OpaquePaintEvent);
    Picture = SkinPicture(objectName());

    // From the bottom of the stacking order to the top.
    Image1 = Place<Image>(this, "Image1", 360, 840, 855, 1545);
    Image1->setPicture(SkinPicture(Image1->objectName()));
    lblTitle = Place<Label>(this, "lblTitle", 600, 60, 5175, 405);
    lblTitle->setFont(BoldTahoma(11.25));
    lblMessage = Place<Label>(this, "lblMessage", 1470, 870, 4275, 1005);
    lblMessage->setFont(BoldTahoma(9.75));
    lblMessage->setWordWrap(true);
    for (const auto& [index, left, top] : {std::tuple{0, 1800, 1860}, std::tuple{1, 1770, 1350}}) {
        auto* look = Place<Image>(this, "imgBtnOK", left, top, 1200, 450);
        imgBtnOK.Adopt(index, look);
        look->setPicture(SkinPicture(QStringLiteral("imgBtnOK%1").arg(index)));
        look->hide();
    }
    picCommand = Place<PictureBox>(this, "picCommand", 4350, 1860, 1215, 465);
    // OK is a button to the keyboard and to screen readers: Space on it, or
    // a reader's press, raise its Click; Return closes the box as ever.
    picCommand->setRole(PictureRole::Button);
    picCommand->setAccessibleName(QStringLiteral("OK"));
    m_ok.emplace(picCommand, ButtonLooks{imgBtnOK(0)->Picture(), imgBtnOK(1)->Picture(), {}, {}});

    connect(picCommand, &PictureBox::Click, this, [this] { picCommand_Click(); });
    connect(picCommand, &PictureBox::MouseMove, this,
            [this](int button, int shift, float x, float y) { picCommand_MouseMove(button, shift, x, y); });
    connect(lblTitle, &Label::MouseMove, this,
            [this](int button, int shift, float x, float y) { lblTitle_MouseMove(button, shift, x, y); });
}

void frmMsgBox::SetMessage(const QString& strMessage)
{
    m_strMessage = strMessage;
}

void frmMsgBox::setVisible(bool visible)
{
    if (visible && !m_loaded) {
        m_loaded = true;
        Form_Load();
        // The box opens in the middle of the screen, not over its owner.
        const QScreen* screen = parentWidget() ? parentWidget()->screen() : QGuiApplication::primaryScreen();
        if (screen)
            move(screen->availableGeometry().center() - rect().center());
    }
    // A closed box keeps no hold on the mouse.
    if (!visible && GetCapture() && isAncestorOf(GetCapture()))
        ReleaseCapture();
    QDialog::setVisible(visible);
}

void frmMsgBox::Form_Load()
{
    lblMessage->setCaption(m_strMessage);
    // The label shows what fits it; the whole message is always at hand.
    setToolTip(m_strMessage);
    setAccessibleDescription(m_strMessage);
    // Readers name the box after its title, or after the application while
    // it has none, as they name the platform's own boxes.
    setAccessibleName(lblTitle->Caption().isEmpty() ? QApplication::applicationName() : lblTitle->Caption());
    SetRoundRegion();
    // Key preview: the form sees every key before the control that has it.
    installEventFilter(this);
    for (QWidget* control : findChildren<QWidget*>())
        control->installEventFilter(this);
    m_ok->ShowHover();
    // The default button has the focus when the box opens.
    picCommand->setFocus(Qt::OtherFocusReason);
}

void frmMsgBox::SetRoundRegion()
{
    // The whole window, its corners cut by an ellipse of 20 by 20 pixels.
    const QRect window(QPoint(0, 0), size());
    QBitmap region(window.size());
    region.fill(Qt::color0);
    QPainter painter(&region);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::color1);
    painter.drawRoundedRect(window, 10, 10);
    painter.end();
    setMask(region);
}

void frmMsgBox::picCommand_Click()
{
    accept();
}

void frmMsgBox::Form_KeyUp(int KeyCode, int /*Shift*/)
{
    if (KeyCode == vbKeyReturn)
        accept();
}

void frmMsgBox::lblTitle_MouseMove(int Button, int /*Shift*/, float X, float Y)
{
    OnErrorReport("Event_Function", "lblTitle_MouseMove", [&] {
        if (Button == 1) {
            ReleaseCapture();
            BeginWindowDrag(this, lblTitle->mapToGlobal(QPointF(X / TwipsPerPixel, Y / TwipsPerPixel)));
        }
    });
}

void frmMsgBox::picCommand_MouseMove(int /*Button*/, int /*Shift*/, float X, float Y)
{
    OnErrorReport("Event_Function", "picCommand_MouseMove", [&] { m_ok->MouseMove(X, Y); });
}

bool frmMsgBox::eventFilter(QObject* watched, QEvent* event)
{
    // A key goes first to the control with the focus; an ignored key then
    // climbs to the form, which must not see it twice.
    QWidget* first = focusWidget() ? focusWidget() : this;
    // Return closes the box on its release, wherever the focus is: its press
    // does not press OK, or the release would reach the window beneath.
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter)
            return true;
    }
    if (event->type() == QEvent::KeyRelease && watched == first) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (!key->isAutoRepeat())
            Form_KeyUp(VirtualKeyCode(*key), ShiftState(key->modifiers()));
    }
    return false;
}

void frmMsgBox::keyPressEvent(QKeyEvent* event)
{
    // No key closes the box on its press, Escape included.
    event->accept();
}

void frmMsgBox::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (Picture.isNull())
        painter.fillRect(rect(), palette().window());
    else
        painter.drawPixmap(0, 0, Picture);
}

} // namespace tessaly
