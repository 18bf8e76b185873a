// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Where rows and columns are on the viewport, and the scroll range that
// follows from it: the one place that maps rows and columns to pixels and
// back, for painting, hit-testing, scrolling and the Cell... geometry.
#include "platform/MSFlexGrid.h"

#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace tessaly {

// The title row is always at the top of the viewport; scrollable
// rows follow it from TopRow on, columns start at LeftCol. Rows and columns
// before TopRow/LeftCol get the positions they would have, above or left of
// the view.

int MSFlexGrid::rowTop(int row) const
{
    if (row == 0)
        return 0;
    int top = m_rowHeight[0];
    for (int r = m_topRow; r < row; ++r)
        top += m_rowHeight[size_t(r)];
    for (int r = row; r < m_topRow; ++r)
        top -= m_rowHeight[size_t(r)];
    return top;
}

int MSFlexGrid::colLeft(int col) const
{
    int left = 0;
    for (int c = m_leftCol; c < col; ++c)
        left += m_colWidth[size_t(c)];
    for (int c = col; c < m_leftCol; ++c)
        left -= m_colWidth[size_t(c)];
    return left;
}

QRect MSFlexGrid::cellRect(int row, int col) const
{
    return QRect(colLeft(col), rowTop(row), m_colWidth[size_t(col)], m_rowHeight[size_t(row)]);
}

int MSFlexGrid::rowAt(int y) const
{
    if (y < 0)
        return -1;
    int top = m_rowHeight[0];
    if (y < top)
        return 0;
    for (int r = m_topRow; r < m_rows; ++r) {
        top += m_rowHeight[size_t(r)];
        if (y < top)
            return r;
    }
    return -1;
}

int MSFlexGrid::colAt(int x) const
{
    if (x < 0)
        return -1;
    int left = 0;
    for (int c = m_leftCol; c < m_cols; ++c) {
        left += m_colWidth[size_t(c)];
        if (x < left)
            return c;
    }
    return -1;
}

int MSFlexGrid::maxTopRow() const
{
    const int room = viewport()->height() - m_rowHeight[0];
    int top = m_rows;
    int used = 0;
    while (top > 1 && used + m_rowHeight[size_t(top - 1)] <= room)
        used += m_rowHeight[size_t(--top)];
    // When not even the last row fits, it may still be scrolled to the top.
    return std::max(1, std::min(top, m_rows - 1));
}

int MSFlexGrid::maxLeftCol() const
{
    const int room = viewport()->width();
    int left = m_cols;
    int used = 0;
    while (left > 0 && used + m_colWidth[size_t(left - 1)] <= room)
        used += m_colWidth[size_t(--left)];
    return std::min(left, m_cols - 1);
}

void MSFlexGrid::updateScrollBars()
{
    const int maxTop = maxTopRow();
    const int maxLeft = maxLeftCol();
    {
        const QScopedValueRollback<bool> syncing(m_syncingScrollBars, true);
        QScrollBar* vertical = verticalScrollBar();
        vertical->setRange(0, maxTop - 1);
        vertical->setPageStep(std::max(1, m_rows - maxTop));
        QScrollBar* horizontal = horizontalScrollBar();
        horizontal->setRange(0, maxLeft);
        horizontal->setPageStep(std::max(1, m_cols - maxLeft));
    }
    // Brings TopRow and LeftCol into the new range and the bars' values in
    // line with them.
    scrollTo(m_topRow, m_leftCol);
    const QScopedValueRollback<bool> syncing(m_syncingScrollBars, true);
    verticalScrollBar()->setValue(m_topRow - 1);
    horizontalScrollBar()->setValue(m_leftCol);
}

void MSFlexGrid::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateScrollBars();
}

void MSFlexGrid::updateCell(int row, int col)
{
    // Hidden grids are filled cell by cell in bulk: nothing to compute then.
    if (!isVisible())
        return;
    const QWidget* view = viewport();
    if (row >= 1) {
        const int lastRow = rowAt(view->height() - 1);
        if (row < m_topRow || (lastRow >= 0 && row > lastRow))
            return;
    }
    const int lastCol = colAt(view->width() - 1);
    if (col < m_leftCol || (lastCol >= 0 && col > lastCol))
        return;
    viewport()->update(cellRect(row, col));
}

void MSFlexGrid::scrollToCurrent()
{
    const QSize view = viewport()->size();
    int top = m_topRow;
    if (m_row >= 1) {
        if (m_row < top) {
            top = m_row;
        } else {
            int bottom = rowTop(m_row) + m_rowHeight[size_t(m_row)];
            while (top < m_row && bottom > view.height())
                bottom -= m_rowHeight[size_t(top++)];
        }
    }
    int left = m_leftCol;
    if (m_col < left) {
        left = m_col;
    } else {
        int right = colLeft(m_col) + m_colWidth[size_t(m_col)];
        while (left < m_col && right > view.width())
            right -= m_colWidth[size_t(left++)];
    }
    scrollTo(top, left);
}

} // namespace tessaly
