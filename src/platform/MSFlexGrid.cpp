// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The grid's data and properties. The current cell's properties are in
// FlexGridCurrentCell.cpp; row and column positions are worked out in
// FlexGridGeometry.cpp, painting in FlexGridPaint.cpp, mouse and keyboard in
// FlexGridInput.cpp.
#include "platform/MSFlexGrid.h"

#include "platform/Accessibility.h"
#include "platform/FlatScrollBar.h"

#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace tessaly {

namespace {

constexpr int DefaultRowHeight = 16; // pixels, 240 twips
constexpr int DefaultColWidth = 64;  // pixels, 960 twips
constexpr qint64 MaxCells = 350000;

void raiseInvalidValue()
{
    Raise(errInvalidPropertyValue, QStringLiteral("Invalid property value"));
}

// A length given in twips as a stored pixel size; a negative length asks
// for the default.
int lengthInPixels(int twips, int defaultPixels)
{
    return twips < 0 ? defaultPixels : ToPixels(twips);
}

} // namespace

MSFlexGrid::MSFlexGrid(QWidget* parent)
    : FormControl<QAbstractScrollArea>(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setVerticalScrollBar(new FlatScrollBar(Qt::Vertical));
    setHorizontalScrollBar(new FlatScrollBar(Qt::Horizontal));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    horizontalScrollBar()->setSingleStep(1);
    verticalScrollBar()->setSingleStep(1);
    // paintEvent covers every pixel of the viewport, the scroll bars theirs
    // and event() the frame and the bars' corner: nothing beneath the grid
    // needs painting.
    // The scroll area sets its bars' attributes as it adopts them, so theirs
    // is set here, after.
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    verticalScrollBar()->setAttribute(Qt::WA_OpaquePaintEvent);
    horizontalScrollBar()->setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_OpaquePaintEvent);
    InstallAccessibleInterfaces();
    reshape(2, 2);
}

MSFlexGrid::~MSFlexGrid() = default;

void MSFlexGrid::CopyFrom(const MSFlexGrid& model)
{
    if (&model == this)
        return;
    reshape(model.m_rows, model.m_cols);
    m_colWidth = model.m_colWidth;
    m_rowHeight = model.m_rowHeight;
    m_fixedAlignment = model.m_fixedAlignment;
    m_colEditLength = model.m_colEditLength;
    m_backColor = model.m_backColor;
    m_backColorFixed = model.m_backColorFixed;
    m_backColorBkg = model.m_backColorBkg;
    m_foreColor = model.m_foreColor;
    m_foreColorFixed = model.m_foreColorFixed;
    m_gridColor = model.m_gridColor;
    m_gridColorFixed = model.m_gridColorFixed;
    m_gridLines = model.m_gridLines;
    m_gridLinesFixed = model.m_gridLinesFixed;
    setFont(model.font());
    setGeometry(model.geometry());
    setEnabled(model.Enabled());
    updateScrollBars();
    viewport()->update();
}

void MSFlexGrid::checkRow(int row) const
{
    if (row < 0 || row >= m_rows)
        Raise(errGridInvalidRow, QStringLiteral("Invalid Row value"));
}

void MSFlexGrid::checkCol(int col) const
{
    if (col < 0 || col >= m_cols)
        Raise(errGridInvalidCol, QStringLiteral("Invalid Col value"));
}

void MSFlexGrid::reshape(int rows, int cols)
{
    if (rows < 1 || cols < 1)
        raiseInvalidValue();
    if (qint64(rows) * cols > MaxCells)
        Raise(errGridTooManyCells, QStringLiteral("Unable to allocate memory for grid"));
    if (rows == m_rows && cols == m_cols)
        return;

    const size_t cells = size_t(rows) * size_t(cols);
    if (cols == m_cols) {
        // Row after row: the remaining rows stay where they are.
        m_text.resize(cells);
        m_styles.resize(cells);
    } else {
        std::vector<QString> text(cells);
        std::vector<CellStyle> styles(cells);
        const int keepRows = std::min(rows, m_rows);
        const int keepCols = std::min(cols, m_cols);
        for (int r = 0; r < keepRows; ++r) {
            for (int c = 0; c < keepCols; ++c) {
                text[size_t(r * cols + c)] = std::move(m_text[size_t(cellIndex(r, c))]);
                styles[size_t(r * cols + c)] = m_styles[size_t(cellIndex(r, c))];
            }
        }
        m_text.swap(text);
        m_styles.swap(styles);
    }
    m_rowHeight.resize(size_t(rows), DefaultRowHeight);
    m_colWidth.resize(size_t(cols), DefaultColWidth);
    m_fixedAlignment.resize(size_t(cols), int8_t(-1));
    m_colEditLength.resize(size_t(cols), 0);
    m_rows = rows;
    m_cols = cols;

    const bool moved = m_row >= rows || m_col >= cols;
    m_row = std::min(m_row, rows - 1);
    m_col = std::min(m_col, cols - 1);
    updateScrollBars();
    viewport()->update();
    if (moved)
        emit RowColChange();
}

void MSFlexGrid::setRows(int rows)
{
    reshape(rows, m_cols);
}

void MSFlexGrid::setCols(int cols)
{
    reshape(m_rows, cols);
}

void MSFlexGrid::setCurrentCell(int row, int col)
{
    if (row == m_row && col == m_col)
        return;
    const int oldRow = std::exchange(m_row, row);
    const int oldCol = std::exchange(m_col, col);
    updateCell(oldRow, oldCol);
    updateCell(row, col);
    TellCurrentCell(*this, row * m_cols + col);
    emit RowColChange();
}

void MSFlexGrid::setRow(int row)
{
    checkRow(row);
    setCurrentCell(row, m_col);
}

void MSFlexGrid::setCol(int col)
{
    checkCol(col);
    setCurrentCell(m_row, col);
}

void MSFlexGrid::scrollTo(int topRow, int leftCol)
{
    topRow = std::clamp(topRow, 1, maxTopRow());
    leftCol = std::clamp(leftCol, 0, maxLeftCol());
    if (topRow == m_topRow && leftCol == m_leftCol)
        return;
    m_topRow = topRow;
    m_leftCol = leftCol;
    {
        const QScopedValueRollback<bool> syncing(m_syncingScrollBars, true);
        verticalScrollBar()->setValue(topRow - 1);
        horizontalScrollBar()->setValue(leftCol);
    }
    viewport()->update();
    emit Scroll();
}

void MSFlexGrid::setTopRow(int row)
{
    scrollTo(row, m_leftCol);
}

void MSFlexGrid::setLeftCol(int col)
{
    scrollTo(m_topRow, col);
}

QString MSFlexGrid::TextMatrix(int row, int col) const
{
    checkRow(row);
    checkCol(col);
    return m_text[size_t(cellIndex(row, col))];
}

void MSFlexGrid::setTextMatrix(int row, int col, const QString& text)
{
    checkRow(row);
    checkCol(col);
    QString& cell = m_text[size_t(cellIndex(row, col))];
    if (cell == text)
        return;
    cell = text;
    // A cell under its open editor shows no text: nothing there to repaint
    // until the editor goes.
    if (!covered(row, col))
        updateCell(row, col);
}

void MSFlexGrid::setColumnTexts(int col, const QStringList& texts)
{
    checkCol(col);
    if (texts.size() >= m_rows)
        Raise(errGridInvalidRow, QStringLiteral("Invalid Row value"));
    // A cell's text laid out for painting is checked against its text at
    // the next paint, so nothing else here needs to know of it.
    for (qsizetype i = 0; i < texts.size(); ++i)
        m_text[size_t(cellIndex(int(i) + 1, col))] = texts[i];
    viewport()->update();
}

QStringList MSFlexGrid::ColumnTexts(int col) const
{
    checkCol(col);
    QStringList texts;
    texts.reserve(m_rows - 1);
    for (int row = 1; row < m_rows; ++row)
        texts.append(m_text[size_t(cellIndex(row, col))]);
    return texts;
}

void MSFlexGrid::RepeatRowStyles(int first, int period)
{
    checkRow(first);
    if (period < 1 || period > first)
        raiseInvalidValue();
    const size_t width = size_t(m_cols);
    const size_t step = size_t(period) * width;
    for (size_t index = size_t(first) * width; index < m_styles.size(); ++index)
        m_styles[index] = m_styles[index - step];
    for (size_t row = size_t(first); row < m_rowHeight.size(); ++row)
        m_rowHeight[row] = m_rowHeight[row - size_t(period)];
    updateScrollBars();
    viewport()->update();
}

int MSFlexGrid::ColEditLength(int col) const
{
    checkCol(col);
    return m_colEditLength[size_t(col)];
}

void MSFlexGrid::setColEditLength(int col, int length)
{
    checkCol(col);
    if (length < 0)
        raiseInvalidValue();
    m_colEditLength[size_t(col)] = length;
}

int MSFlexGrid::ColWidth(int col) const
{
    checkCol(col);
    return m_colWidth[size_t(col)] * TwipsPerPixel;
}

void MSFlexGrid::setColWidth(int col, int twips)
{
    checkCol(col);
    m_colWidth[size_t(col)] = lengthInPixels(twips, DefaultColWidth);
    updateScrollBars();
    viewport()->update();
}

int MSFlexGrid::RowHeight(int row) const
{
    checkRow(row);
    return m_rowHeight[size_t(row)] * TwipsPerPixel;
}

void MSFlexGrid::setRowHeight(int row, int twips)
{
    checkRow(row);
    m_rowHeight[size_t(row)] = lengthInPixels(twips, DefaultRowHeight);
    updateScrollBars();
    viewport()->update();
}

int MSFlexGrid::FixedAlignment(int col) const
{
    checkCol(col);
    return m_fixedAlignment[size_t(col)];
}

void MSFlexGrid::setFixedAlignment(int col, int alignment)
{
    checkCol(col);
    if (alignment < -1 || alignment > General)
        raiseInvalidValue();
    m_fixedAlignment[size_t(col)] = int8_t(alignment);
    updateCell(0, col);
}

void MSFlexGrid::setBackColor(const QColor& color) { m_backColor = color; viewport()->update(); }
void MSFlexGrid::setBackColorFixed(const QColor& color) { m_backColorFixed = color; viewport()->update(); }
void MSFlexGrid::setBackColorBkg(const QColor& color) { m_backColorBkg = color; viewport()->update(); }
void MSFlexGrid::setForeColor(const QColor& color) { m_foreColor = color; viewport()->update(); }
void MSFlexGrid::setForeColorFixed(const QColor& color) { m_foreColorFixed = color; viewport()->update(); }
void MSFlexGrid::setGridColor(const QColor& color) { m_gridColor = color; viewport()->update(); }
void MSFlexGrid::setGridColorFixed(const QColor& color) { m_gridColorFixed = color; viewport()->update(); }

void MSFlexGrid::setGridLines(int style)
{
    if (style < 0 || style > 3)
        raiseInvalidValue();
    m_gridLines = style;
    viewport()->update();
}

void MSFlexGrid::setGridLinesFixed(int style)
{
    if (style < 0 || style > 3)
        raiseInvalidValue();
    m_gridLinesFixed = style;
    viewport()->update();
}

float MSFlexGrid::FontSize() const
{
    return float(font().pointSizeF());
}

void MSFlexGrid::setFontSize(float points)
{
    if (!(points > 0))
        raiseInvalidValue();
    QFont f = font();
    f.setPointSizeF(points);
    setFont(f);
    viewport()->update();
}

QString MSFlexGrid::FontName() const
{
    return font().family();
}

void MSFlexGrid::setFontName(const QString& name)
{
    QFont f = font();
    f.setFamily(name);
    setFont(f);
    viewport()->update();
}

} // namespace tessaly
