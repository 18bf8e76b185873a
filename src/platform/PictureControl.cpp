// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/PictureControl.h"

#include "platform/Accessibility.h"
#include "platform/MouseEvents.h"

#include <QPainter>

namespace tessaly {

PictureControl::PictureControl(QWidget* parent)
    : FormControl(parent)
{
    setMouseTracking(true);
    InstallAccessibleInterfaces();
}

void PictureControl::paintFocusCue()
{
    if (!m_focusShown || !hasFocus())
        return;
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::WindowText), 0, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(2, 2, -3, -3));
}

void PictureControl::mousePressEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }
void PictureControl::mouseMoveEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }
void PictureControl::mouseReleaseEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }

// Space or Return on a button presses it, once however long the key is held.
void PictureControl::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (m_role != PictureRole::Button || (key != Qt::Key_Space && key != Qt::Key_Return && key != Qt::Key_Enter)) {
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    if (!event->isAutoRepeat())
        emit Click();
}

void PictureControl::focusInEvent(QFocusEvent* event)
{
    m_focusShown = m_role == PictureRole::Button
        && (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason);
    update();
}

void PictureControl::focusOutEvent(QFocusEvent*)
{
    m_focusShown = false;
    update();
}

} // namespace tessaly
