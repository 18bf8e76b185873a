// Painting of the grid: only the cells that meet the dirty rectangle.
#include "platform/MSFlexGrid.h"

#include <QPaintEvent>
#include <QPainter>
#include <QVarLengthArray>

#include <algorithm>

namespace tessaly {

namespace {

constexpr int TextMargin = 2; // pixels between a cell's edge and its text

// Qt alignment flags for an Alignment value: value / 3 is left, centre or
// right, value % 3 top, centre or bottom. General puts numbers to the right.
Qt::Alignment alignmentFlags(int alignment, const QString& text)
{
    if (alignment == MSFlexGrid::General) {
        bool number = false;
        text.toDouble(&number);
        return (number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
    }
    static constexpr Qt::AlignmentFlag horizontal[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
    static constexpr Qt::AlignmentFlag vertical[] = {Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom};
    return horizontal[alignment / 3] | vertical[alignment % 3];
}

} // namespace

void MSFlexGrid::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    painter.setFont(font());
    const QRect dirty = event->rect();

    // The cells that meet the dirty rectangle; -1 from rowAt/colAt past the
    // last row or column.
    const int firstCol = colAt(std::max(dirty.left(), 0));
    const int lastCol = colAt(dirty.right()) >= 0 ? colAt(dirty.right()) : m_cols - 1;
    const int fixedHeight = m_rowHeight[0];
    const int firstRow = dirty.bottom() >= fixedHeight ? rowAt(std::max(dirty.top(), fixedHeight)) : -1;
    const int lastRow = rowAt(dirty.bottom()) >= 1 ? rowAt(dirty.bottom()) : m_rows - 1;

    // The empty ground right of the last column and below the last row.
    const QRect cells(QPoint(0, 0), QPoint(colLeft(m_cols - 1) + m_colWidth.back() - 1,
                                           rowTop(m_rows - 1) + m_rowHeight.back() - 1));
    if (!cells.contains(dirty)) {
        painter.fillRect(QRect(cells.right() + 1, dirty.top(), dirty.right() - cells.right(), dirty.height()), m_backColorBkg);
        painter.fillRect(QRect(dirty.left(), cells.bottom() + 1, dirty.width(), dirty.bottom() - cells.bottom()), m_backColorBkg);
    }
    if (firstCol < 0)
        return;

    if (dirty.top() < fixedHeight)
        paintRows(painter, 0, 0, firstCol, lastCol);
    if (firstRow >= 1)
        paintRows(painter, firstRow, lastRow, firstCol, lastCol);
    paintFocus(painter);
}

// Cells first, then the lines between them: one line a row at its bottom
// edge and one a column at its right edge, in the colour of the fixed row or
// of the others.
void MSFlexGrid::paintRows(QPainter& painter, int firstRow, int lastRow, int firstCol, int lastCol) const
{
    const bool fixed = firstRow == 0;
    const bool lines = (fixed ? m_gridLinesFixed : m_gridLines) != 0;
    const int top = rowTop(firstRow);
    const int left = colLeft(firstCol);
    int bottom = top;
    int right = left;
    QVarLengthArray<QLine, 64> edges;
    for (int row = firstRow; row <= lastRow; ++row) {
        right = left;
        const int height = m_rowHeight[size_t(row)];
        for (int col = firstCol; col <= lastCol; ++col) {
            const int width = m_colWidth[size_t(col)];
            paintCell(painter, row, col, QRect(right, bottom, width, height), lines);
            right += width;
        }
        bottom += height;
        if (lines)
            edges.append(QLine(left, bottom - 1, right - 1, bottom - 1));
    }
    if (!lines)
        return;
    for (int col = firstCol, x = left; col <= lastCol; ++col) {
        x += m_colWidth[size_t(col)];
        edges.append(QLine(x - 1, top, x - 1, bottom - 1));
    }
    painter.setPen(fixed ? m_gridColorFixed : m_gridColor);
    painter.drawLines(edges.constData(), int(edges.size()));
}

void MSFlexGrid::paintCell(QPainter& painter, int row, int col, const QRect& rect, bool lines) const
{
    const CellStyle& style = m_styles[size_t(cellIndex(row, col))];
    const bool fixed = row == 0;
    const QColor back = style.hasBack ? QColor::fromRgba(style.back) : fixed ? m_backColorFixed : m_backColor;
    // The cell's own grid lines take its rightmost column and bottom row of pixels.
    const QRect inside = lines ? rect.adjusted(0, 0, -1, -1) : rect;
    painter.fillRect(inside, back);

    const QString& text = m_text[size_t(cellIndex(row, col))];
    if (text.isEmpty() || inside.isEmpty())
        return;
    if (painter.font().bold() != style.bold) {
        QFont f = font();
        f.setBold(style.bold);
        painter.setFont(f);
    }
    const int fixedAlignment = fixed ? m_fixedAlignment[size_t(col)] : -1;
    const int alignment = fixedAlignment >= 0 ? fixedAlignment : style.alignment;
    painter.setPen(style.hasFore ? QColor::fromRgba(style.fore) : fixed ? m_foreColorFixed : m_foreColor);
    painter.save();
    painter.setClipRect(inside);
    painter.drawText(inside.adjusted(TextMargin, 0, -TextMargin, 0),
                     int(alignmentFlags(alignment, text)) | Qt::TextDontClip, text);
    painter.restore();
}

void MSFlexGrid::paintFocus(QPainter& painter) const
{
    if (m_row < 1)
        return;
    const QRect cell = cellRect(m_row, m_col);
    const QRect inside = m_gridLines != 0 ? cell.adjusted(0, 0, -1, -1) : cell;
    if (inside.width() < 1 || inside.height() < 1)
        return;
    // A row scrolled off upwards would show through the title row.
    painter.setClipRect(QRect(0, m_rowHeight[0], viewport()->width(), viewport()->height()));
    painter.setPen(Qt::black);
    painter.setBrush(Qt::NoBrush);
    // A 1-pixel outline: drawRect strokes one pixel beyond width and height.
    painter.drawRect(inside.adjusted(0, 0, -1, -1));
}

} // namespace tessaly
