// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Painting of the grid: only the cells that meet the dirty rectangle.
#include "platform/FlatScrollBar.h"
#include "platform/MSFlexGrid.h"
#include "platform/PixelFrame.h"

#include <QFontMetricsF>
#include <QPaintEvent>
#include <QPainter>
#include <QVarLengthArray>

#include <algorithm>

namespace tessaly {

namespace {

// Qt alignment flags for an Alignment value: value / 3 is left, centre or
// right, value % 3 top, centre or bottom. General puts numbers to the right.
Qt::Alignment alignmentFlags(int alignment, bool number)
{
    if (alignment == MSFlexGrid::General)
        return (number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
    static constexpr Qt::AlignmentFlag horizontal[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
    static constexpr Qt::AlignmentFlag vertical[] = {Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom};
    return horizontal[alignment / 3] | vertical[alignment % 3];
}

// Where text of `size` starts in `box` at `flags`: the place that drawing
// the text into the box with those flags gives it.
QPointF alignedTopLeft(const QRect& box, Qt::Alignment flags, QSizeF size)
{
    const qreal x = flags & Qt::AlignRight     ? box.x() + box.width() - size.width()
                    : flags & Qt::AlignHCenter ? box.x() + (box.width() - size.width()) / 2
                                               : box.x();
    const qreal y = flags & Qt::AlignBottom    ? box.y() + box.height() - size.height()
                    : flags & Qt::AlignVCenter ? box.y() + (box.height() - size.height()) / 2
                                               : box.y();
    return {x, y};
}

// Text of the digits 0 to 9 alone.
bool isDigits(const QString& text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar ch) { return ch >= u'0' && ch <= u'9'; });
}

// Text that lays out on one line with nothing to expand.
bool singleLine(const QString& text)
{
    return std::none_of(text.begin(), text.end(), [](QChar ch) {
        return ch == u'\n' || ch == u'\r' || ch == u'\t' || ch == QChar::LineSeparator || ch == QChar::ParagraphSeparator;
    });
}

} // namespace

// The grid's border around the viewport and scroll bars: one device pixel in
// the colour Qt's Fusion style gives a scroll area's frame (its outline, the
// window colour darkened by 140 % and lightened by 8 %), on the outer edge at
// the left and top and at the start of the last pixel at the right and
// bottom, as Fusion draws it at every density; the rest of the frame's width
// (above density 1) the grid's background. The grid claims its whole
// rectangle, so the frame it lies on is never painted beneath it: here it
// also fills the corner where both scroll bars meet, in their groove's grey.
// Filled rather than stroked as the style does: its stroke costs a tenth of a
// page's repaint. It is painted in event(): a scroll area's paintEvent()
// paints its viewport, and the frame's drawing is not virtual. The frame's
// region is a ring around the viewport, which would clip every line of a
// fill one by one; each fill is clipped to its own rectangle instead, which
// it then meets whole.
bool MSFlexGrid::event(QEvent* event)
{
    if (event->type() != QEvent::Paint)
        return FormControl::event(event);
    const QRect edge = rect();
    QPainter painter(this);
    const auto fill = [&painter](const QRectF& part, const QColor& color) {
        painter.setClipRect(part.toAlignedRect());
        painter.fillRect(part, color);
    };
    const qreal pixel = 1 / painter.deviceTransform().m11(); // on screen or in a rendering
    if (frameWidth() > pixel)
        for (const QRect& part : static_cast<QPaintEvent*>(event)->region())
            fill(part, m_backColorBkg);
    const QWidget* across = horizontalScrollBar()->parentWidget(); // the bars' containers
    const QWidget* down = verticalScrollBar()->parentWidget();
    if (across->isVisible() && down->isVisible())
        fill(QRect(down->x(), across->y(), down->width(), across->height()), FlatScrollBar::GrooveColor());
    const QColor outline = palette().window().color().darker(140).lighter(108);
    fill(QRectF(edge.left(), edge.top(), edge.width(), pixel), outline);
    fill(QRectF(edge.left(), edge.bottom(), edge.width(), pixel), outline);
    fill(QRectF(edge.left(), edge.top(), pixel, edge.height()), outline);
    fill(QRectF(edge.right(), edge.top(), pixel, edge.height()), outline);
    return true;
}

// A few cells changed far apart (a value and the lock codes it rewrites)
// are painted each on its own rather than every row between them.
void MSFlexGrid::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    painter.setFont(font());
    const QRegion& region = event->region();
    if (region.rectCount() <= 4) {
        for (const QRect& dirty : region)
            paintArea(painter, dirty);
    } else {
        paintArea(painter, region.boundingRect());
    }
    paintFocus(painter);
}

void MSFlexGrid::paintArea(QPainter& painter, const QRect& dirty) const
{
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
}

// The backgrounds first, each run of cells of one colour in a row filled at
// once; then the texts; then the lines between the cells: one line a row at its bottom
// edge and one a column at its right edge, in the colour of the fixed row or
// of the others. Lines are filled as rectangles one pixel wide, which cover
// exactly the pixels the cells leave them at any device pixel ratio; a pen
// would straddle the pixel's edge there and leave half of it unpainted.
void MSFlexGrid::paintRows(QPainter& painter, int firstRow, int lastRow, int firstCol, int lastCol) const
{
    const bool fixed = firstRow == 0;
    const bool lines = (fixed ? m_gridLinesFixed : m_gridLines) != 0;
    const int top = rowTop(firstRow);
    const int left = colLeft(firstCol);
    int bottom = top;
    int right = left;
    QVarLengthArray<QRect, 64> edges;
    for (int row = firstRow; row <= lastRow; ++row) {
        const int height = m_rowHeight[size_t(row)];
        // The lines drawn last cover the cells' rightmost column and bottom
        // row of pixels, which the runs fill too.
        right = left;
        int runLeft = left;
        QRgb run = cellBack(row, firstCol);
        for (int col = firstCol; col <= lastCol; ++col) {
            if (const QRgb back = cellBack(row, col); back != run) {
                painter.fillRect(QRect(runLeft, bottom, right - runLeft, height), QColor::fromRgba(run));
                run = back;
                runLeft = right;
            }
            right += m_colWidth[size_t(col)];
        }
        painter.fillRect(QRect(runLeft, bottom, right - runLeft, height), QColor::fromRgba(run));

        right = left;
        for (int col = firstCol; col <= lastCol; ++col) {
            const int width = m_colWidth[size_t(col)];
            paintText(painter, row, col, QRect(right, bottom, width, height), lines);
            right += width;
        }
        bottom += height;
        if (lines)
            edges.append(QRect(left, bottom - 1, right - left, 1));
    }
    if (!lines)
        return;
    for (int col = firstCol, x = left; col <= lastCol; ++col) {
        x += m_colWidth[size_t(col)];
        edges.append(QRect(x - 1, top, 1, bottom - top));
    }
    const QColor color = fixed ? m_gridColorFixed : m_gridColor;
    for (const QRect& edge : edges)
        painter.fillRect(edge, color);
}

QRgb MSFlexGrid::cellBack(int row, int col) const
{
    const CellStyle& style = m_styles[size_t(cellIndex(row, col))];
    return style.hasBack ? style.back : (row == 0 ? m_backColorFixed : m_backColor).rgba();
}

// Text that fits its cell is drawn without clipping, which would cost more
// than drawing it.
void MSFlexGrid::paintText(QPainter& painter, int row, int col, const QRect& rect, bool lines) const
{
    const CellStyle& style = m_styles[size_t(cellIndex(row, col))];
    const bool fixed = row == 0;
    // The cell's own grid lines take its rightmost column and bottom row of pixels.
    const QRect inside = lines ? rect.adjusted(0, 0, -1, -1) : rect;

    const QString& text = m_text[size_t(cellIndex(row, col))];
    if (text.isEmpty() || inside.isEmpty() || covered(row, col))
        return;
    if (painter.font().bold() != style.bold)
        painter.setFont(cellFont(row, col));
    const int fixedAlignment = fixed ? m_fixedAlignment[size_t(col)] : -1;
    const int alignment = fixedAlignment >= 0 ? fixedAlignment : style.alignment;
    const QColor fore = style.hasFore ? QColor::fromRgba(style.fore) : fixed ? m_foreColorFixed : m_foreColor;
    if (painter.pen().color() != fore)
        painter.setPen(fore);
    const QRect box = inside.adjusted(TextMargin, 0, -TextMargin, 0);
    if (singleLine(text)) {
        const ShapedText& shaped = shapedText(cellIndex(row, col), text, painter.font());
        const QPointF at = alignedTopLeft(box, alignmentFlags(alignment, shaped.number), shaped.size);
        const auto draw = [&] {
            if (shaped.digits.isEmpty())
                painter.drawStaticText(at, shaped.text);
            else
                painter.drawGlyphRun(at + QPointF(0, shaped.ascent), shaped.digits);
        };
        if (QRectF(box).contains(QRectF(at, shaped.size))) {
            draw();
            return;
        }
        painter.save();
        painter.setClipRect(inside);
        draw();
    } else {
        painter.save();
        painter.setClipRect(inside);
        bool number = false;
        text.toDouble(&number);
        painter.drawText(box, int(alignmentFlags(alignment, number)) | Qt::TextDontClip, text);
    }
    painter.restore();
}

const MSFlexGrid::ShapedText& MSFlexGrid::shapedText(int index, const QString& text, const QFont& font) const
{
    if (m_shaped.size() != m_text.size()) {
        m_shaped.clear();
        m_shaped.resize(m_text.size());
    }
    std::unique_ptr<ShapedText>& shaped = m_shaped[size_t(index)];
    if (shaped && shaped->font == font && shaped->text.text() == text)
        return *shaped;
    const QFontMetricsF metrics(font);
    if (const DigitGlyphs* glyphs = isDigits(text) ? digitGlyphs(font) : nullptr) {
        shaped = std::make_unique<ShapedText>(ShapedText{QStaticText(text), font, {}, true, {}, metrics.ascent()});
        QList<quint32> indexes;
        QList<QPointF> positions;
        QPointF pen;
        for (QChar digit : text) {
            const auto d = qsizetype(digit.unicode() - u'0');
            indexes.append(glyphs->index[d]);
            positions.append(pen);
            pen += glyphs->advance[d];
        }
        shaped->digits.setRawFont(glyphs->raw);
        shaped->digits.setGlyphIndexes(indexes);
        shaped->digits.setPositions(positions);
        shaped->size = QSizeF(pen.x(), metrics.ascent() + metrics.descent());
        return *shaped;
    }
    shaped = std::make_unique<ShapedText>(ShapedText{QStaticText(text), font, {}, false, {}, 0});
    shaped->text.setTextFormat(Qt::PlainText);
    shaped->text.prepare(QTransform(), font);
    // The laid-out text knows its width: measuring it again would shape it twice.
    shaped->size = QSizeF(shaped->text.size().width(), metrics.ascent() + metrics.descent());
    text.toDouble(&shaped->number);
    return *shaped;
}

const MSFlexGrid::DigitGlyphs* MSFlexGrid::digitGlyphs(const QFont& font) const
{
    if (font.bold())
        return nullptr; // bold may be drawn emboldened: left to shaping
    auto found = std::find_if(m_digitGlyphs.begin(), m_digitGlyphs.end(),
                              [&](const DigitGlyphs& glyphs) { return glyphs.font == font; });
    if (found == m_digitGlyphs.end()) {
        DigitGlyphs glyphs{font, QRawFont::fromFont(font), {}, {}};
        if (glyphs.raw.isValid()) {
            glyphs.index = glyphs.raw.glyphIndexesForString(QStringLiteral("0123456789"));
            glyphs.advance = glyphs.raw.advancesForGlyphIndexes(glyphs.index);
        }
        if (glyphs.index.size() != 10 || glyphs.index.contains(0u) || glyphs.advance.size() != 10)
            glyphs.raw = QRawFont();
        found = m_digitGlyphs.insert(m_digitGlyphs.end(), std::move(glyphs));
    }
    return found->raw.isValid() ? &*found : nullptr;
}

QFont MSFlexGrid::cellFont(int row, int col) const
{
    QFont f = font();
    f.setBold(m_styles[size_t(cellIndex(row, col))].bold);
    return f;
}

void MSFlexGrid::CoverCurrentCell(QWidget& editor)
{
    if (m_editor)
        m_editor->removeEventFilter(this);
    m_editor = &editor;
    m_editorRow = m_row;
    m_editorCol = m_col;
    editor.installEventFilter(this);
    // A list is read by its choice: the description tells what it is for.
    editor.setAccessibleName(CellName(m_row, m_col));
    editor.setAccessibleDescription(CellName(m_row, m_col));
    updateCell(m_row, m_col);
}

bool MSFlexGrid::covered(int row, int col) const
{
    return row == m_editorRow && col == m_editorCol && m_editor && m_editor->isVisible();
}

// The covered cell shows its text again once its editor is hidden.
bool MSFlexGrid::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_editor && (event->type() == QEvent::Hide || event->type() == QEvent::Show)
        && m_editorRow < m_rows && m_editorCol < m_cols)
        updateCell(m_editorRow, m_editorCol);
    return QAbstractScrollArea::eventFilter(watched, event);
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
    FillFrame(painter, inside, Qt::black);
}

} // namespace tessaly
