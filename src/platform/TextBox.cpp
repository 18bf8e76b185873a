// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/TextBox.h"

#include "platform/PixelFrame.h"
#include "platform/VirtualKey.h"

#include <QPainter>

namespace tessaly {

TextBox::TextBox(QWidget* parent)
    : FormControl(parent)
{
}

void TextBox::CopyFrom(const TextBox& model)
{
    CopyCommon(model);
    setText(model.text());
    setMaxLength(model.MaxLength());
    setFrame(model.hasFrame());
    setReadOnly(model.isReadOnly());
    setAlignment(model.alignment());
    if (model.m_flatBorder.isValid())
        setFlatBorder(model.m_flatBorder);
}

int TextBox::MaxLength() const
{
    return maxLength() >= NoLimit ? 0 : maxLength();
}

void TextBox::setMaxLength(int length)
{
    if (length < 0)
        Raise(errInvalidPropertyValue, QStringLiteral("Invalid property value"));
    QLineEdit::setMaxLength(length == 0 ? NoLimit : length);
}

void TextBox::setFlatBorder(const QColor& color)
{
    m_flatBorder = color;
    setFrame(false);
    setTextMargins(2, 1, 2, 1);
    // Without a frame the line editor fills its whole rectangle with its base
    // colour and the border covers the edge, so what lies beneath (a grid
    // cell, for the in-place editor) need not be painted first at each key.
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void TextBox::paintEvent(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
    if (m_flatBorder.isValid()) {
        QPainter painter(this);
        FillFrame(painter, rect(), m_flatBorder);
    }
}

void TextBox::setSelStart(int position)
{
    if (position < 0)
        Raise(errInvalidPropertyValue, QStringLiteral("Invalid property value"));
    setCursorPosition(position);
}

// Focus that comes and goes with the window's activation or a popup is no
// move between controls.
static bool MovesBetweenControls(const QFocusEvent& event)
{
    return event.reason() != Qt::ActiveWindowFocusReason && event.reason() != Qt::PopupFocusReason;
}

void TextBox::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (MovesBetweenControls(*event))
        emit GotFocus();
}

void TextBox::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (MovesBetweenControls(*event))
        emit LostFocus();
}

// The character code a key makes, 0 for none: its text, or for Ctrl with a
// letter the control character (Ctrl+C is 3, Ctrl+V 22, Ctrl+X 24).
static int CharacterCode(const QKeyEvent& event)
{
    const int key = event.key();
    if ((event.modifiers() & Qt::ControlModifier) && key >= Qt::Key_A && key <= Qt::Key_Z)
        return key - Qt::Key_A + 1;
    const QString text = event.text();
    return text.isEmpty() || text.front().unicode() == 127 ? 0 : text.front().unicode();
}

void TextBox::keyPressEvent(QKeyEvent* event)
{
    emit KeyDown(VirtualKeyCode(*event), ShiftState(event->modifiers()));
    const int code = CharacterCode(*event);
    if (code == 0) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    int16_t KeyAscii = int16_t(code); // the platform's 16-bit character code
    emit KeyPress(KeyAscii);
    if (KeyAscii == 0) {
        event->accept(); // dropped: neither typed nor acted on
        return;
    }
    if (KeyAscii == int16_t(code)) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    QKeyEvent changed(event->type(), event->key(), event->modifiers() & ~Qt::ControlModifier,
                      QString(QChar(char16_t(uint16_t(KeyAscii)))), event->isAutoRepeat());
    QLineEdit::keyPressEvent(&changed);
    event->setAccepted(changed.isAccepted());
}

void TextBox::keyReleaseEvent(QKeyEvent* event)
{
    QLineEdit::keyReleaseEvent(event);
    if (!event->isAutoRepeat())
        emit KeyUp(VirtualKeyCode(*event), ShiftState(event->modifiers()));
}

} // namespace tessaly
