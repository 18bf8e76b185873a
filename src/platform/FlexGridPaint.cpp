// Painting of the grid: only the cells that meet the dirty rectangle.
#include "platform/MSFlexGrid.h"

#include <QPaintEvent>
#include <QPainter>

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
    painter.fillRect(dirty, m_backColorBkg);

    // The cells that meet the dirty rectangle; -1 from rowAt/colAt past the
    // last row or column.
    const int firstCol = colAt(std::max(dirty.left(), 0));
    if (firstCol < 0)
        return;
    const int lastCol = colAt(dirty.right()) >= 0 ? colAt(dirty.right()) : m_cols - 1;
    const int fixedHeight = m_rowHeight[0];
    const int firstRow = dirty.bottom() >= fixedHeight ? rowAt(std::max(dirty.top(), fixedHeight)) : -1;
    const int lastRow = rowAt(dirty.bottom()) >= 1 ? rowAt(dirty.bottom()) : m_rows - 1;

    if (dirty.top() < fixedHeight) {
        for (int col = firstCol; col <= lastCol; ++col)
            paintCell(painter, 0, col, cellRect(0, col));
    }
    for (int row = firstRow; row >= 1 && row <= lastRow; ++row) {
        for (int col = firstCol; col <= lastCol; ++col)
            paintCell(painter, row, col, cellRect(row, col));
    }
    paintFocus(painter);
}

void MSFlexGrid::paintCell(QPainter& painter, int row, int col, const QRect& rect) const
{
    const CellStyle& style = m_styles[size_t(cellIndex(row, col))];
    const bool fixed = row == 0;
    const QColor back = style.hasBack ? QColor::fromRgba(style.back) : fixed ? m_backColorFixed : m_backColor;
    painter.fillRect(rect, back);

    // The cell's own grid lines take its rightmost column and bottom row of pixels.
    const bool lines = (fixed ? m_gridLinesFixed : m_gridLines) != 0;
    const QRect inside = lines ? rect.adjusted(0, 0, -1, -1) : rect;

    const QString& text = m_text[size_t(cellIndex(row, col))];
    if (!text.isEmpty() && !inside.isEmpty()) {
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

    if (lines) {
        painter.setPen(fixed ? m_gridColorFixed : m_gridColor);
        painter.drawLine(rect.left(), rect.bottom(), rect.right(), rect.bottom());
        painter.drawLine(rect.right(), rect.top(), rect.right(), rect.bottom());
    }
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
