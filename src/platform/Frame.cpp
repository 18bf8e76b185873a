// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/Frame.h"

#include "platform/Accessibility.h"

#include <QPaintEvent>
#include <QPainter>

namespace tessaly {

Frame::Frame(QWidget* parent)
    : FormControl(parent)
{
    setFrameShape(QFrame::NoFrame);
    InstallAccessibleInterfaces();
}

void Frame::CopyFrom(const Frame& model)
{
    CopyCommon(model);
    setBackColor(model.m_backColor);
}

void Frame::setBackColor(const QColor& color)
{
    m_backColor = color;
    // A frame with a colour covers its container there: nothing beneath it
    // needs painting.
    setAttribute(Qt::WA_OpaquePaintEvent, color.isValid());
    update();
}

void Frame::paintEvent(QPaintEvent* event)
{
    if (m_backColor.isValid())
        QPainter(this).fillRect(event->rect(), m_backColor);
}

} // namespace tessaly
