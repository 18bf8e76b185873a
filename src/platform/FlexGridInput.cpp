// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Mouse, keyboard, wheel and scroll bars. The grid moves its current cell on
// clicks only; keys are reported to the panel, which moves the cell itself.
#include "platform/MSFlexGrid.h"
#include "platform/VirtualKey.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

namespace tessaly {

void MSFlexGrid::pressAt(const QPoint& pos)
{
    const int row = rowAt(pos.y());
    const int col = colAt(pos.x());
    // The title row and the area beyond the cells cannot be made current.
    if (row < 1 || col < 0)
        return;
    setCurrentCell(row, col);
    scrollToCurrent();
}

void MSFlexGrid::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QAbstractScrollArea::mousePressEvent(event);
        return;
    }
    pressAt(event->position().toPoint());
    event->accept();
}

void MSFlexGrid::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QAbstractScrollArea::mouseDoubleClickEvent(event);
        return;
    }
    pressAt(event->position().toPoint());
    event->accept();
    emit DblClick();
}

void MSFlexGrid::keyPressEvent(QKeyEvent* event)
{
    const int row = m_row;
    const int col = m_col;
    event->accept();
    emit KeyDown(VirtualKeyCode(*event), ShiftState(event->modifiers()));
    // The panel's handler may have moved the current cell: bring it on view.
    if (m_row != row || m_col != col)
        scrollToCurrent();
}

void MSFlexGrid::keyReleaseEvent(QKeyEvent* event)
{
    event->accept();
    if (!event->isAutoRepeat())
        emit KeyUp(VirtualKeyCode(*event), ShiftState(event->modifiers()));
}

void MSFlexGrid::wheelEvent(QWheelEvent* event)
{
    // The panel scrolls item pages with the wheel on its own.
    event->ignore();
}

void MSFlexGrid::scrollContentsBy(int, int)
{
    // The grid repaints from TopRow and LeftCol rather than shifting pixels;
    // the bars' values are row and column numbers.
    if (m_syncingScrollBars)
        return;
    scrollTo(verticalScrollBar()->value() + 1, horizontalScrollBar()->value());
}

} // namespace tessaly
