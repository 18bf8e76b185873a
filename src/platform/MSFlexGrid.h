// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The grid control of the item pages: a table of text cells with one fixed
// title row, a current cell on which the Cell... properties act, scrolling by
// whole rows and columns, and per-cell colours, alignment and bold. Cells live
// in flat arrays; only the cells on view are painted. Lengths are in twips.
#pragma once

#include "platform/FormControl.h"

#include <QAbstractScrollArea>
#include <QColor>
#include <QFont>
#include <QPointer>
#include <QGlyphRun>
#include <QRawFont>
#include <QStaticText>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <vector>

namespace tessaly {

class MSFlexGrid : public FormControl<QAbstractScrollArea> {
    Q_OBJECT
    Q_PROPERTY(int Rows READ Rows WRITE setRows)
    Q_PROPERTY(int Cols READ Cols WRITE setCols)
    Q_PROPERTY(int FixedRows READ FixedRows CONSTANT)
    Q_PROPERTY(int FixedCols READ FixedCols CONSTANT)
    Q_PROPERTY(int Row READ Row WRITE setRow)
    Q_PROPERTY(int Col READ Col WRITE setCol)
    Q_PROPERTY(int TopRow READ TopRow WRITE setTopRow)
    Q_PROPERTY(int LeftCol READ LeftCol WRITE setLeftCol)
    Q_PROPERTY(int CellLeft READ CellLeft)
    Q_PROPERTY(int CellTop READ CellTop)
    Q_PROPERTY(int CellWidth READ CellWidth)
    Q_PROPERTY(int CellHeight READ CellHeight)
    Q_PROPERTY(QColor CellBackColor READ CellBackColor WRITE setCellBackColor)
    Q_PROPERTY(QColor CellForeColor READ CellForeColor WRITE setCellForeColor)
    Q_PROPERTY(int CellAlignment READ CellAlignment WRITE setCellAlignment)
    Q_PROPERTY(bool CellFontBold READ CellFontBold WRITE setCellFontBold)
    Q_PROPERTY(QColor BackColor READ BackColor WRITE setBackColor)
    Q_PROPERTY(QColor BackColorFixed READ BackColorFixed WRITE setBackColorFixed)
    Q_PROPERTY(QColor BackColorBkg READ BackColorBkg WRITE setBackColorBkg)
    Q_PROPERTY(QColor ForeColor READ ForeColor WRITE setForeColor)
    Q_PROPERTY(QColor ForeColorFixed READ ForeColorFixed WRITE setForeColorFixed)
    Q_PROPERTY(QColor GridColor READ GridColor WRITE setGridColor)
    Q_PROPERTY(QColor GridColorFixed READ GridColorFixed WRITE setGridColorFixed)
    Q_PROPERTY(int GridLines READ GridLines WRITE setGridLines)
    Q_PROPERTY(int GridLinesFixed READ GridLinesFixed WRITE setGridLinesFixed)
    Q_PROPERTY(float FontSize READ FontSize WRITE setFontSize)
    Q_PROPERTY(QString FontName READ FontName WRITE setFontName)

public:
    // Alignment values of CellAlignment and FixedAlignment.
    enum Alignment : int16_t {
        LeftTop, LeftCenter, LeftBottom,
        CenterTop, CenterCenter, CenterBottom,
        RightTop, RightCenter, RightBottom,
        General, // text to the left, numbers to the right, centred vertically
    };

    explicit MSFlexGrid(QWidget* parent = nullptr);
    ~MSFlexGrid() override;

    // Takes the design properties of another grid: counts, colours, font,
    // line settings, column widths and row heights. Cell contents stay.
    void CopyFrom(const MSFlexGrid& model);

    // Rows: the number of rows, the title row included (default 2). The rows
    // that remain keep their text and dress; new rows are empty and plain.
    int Rows() const { return m_rows; }
    void setRows(int rows);
    // Cols: the number of columns (default 2).
    int Cols() const { return m_cols; }
    void setCols(int cols);
    int FixedRows() const { return 1; }
    int FixedCols() const { return 0; }

    // The current cell. Setting it to another cell raises RowColChange; a row
    // or column the grid does not have is refused with a run-time error.
    int Row() const { return m_row; }
    void setRow(int row);
    int Col() const { return m_col; }
    void setCol(int col);

    // The first scrollable row and the first column on view. Values beyond the
    // scroll range are brought into it; a change raises Scroll.
    int TopRow() const { return m_topRow; }
    void setTopRow(int row);
    int LeftCol() const { return m_leftCol; }
    void setLeftCol(int col);

    Q_INVOKABLE QString TextMatrix(int row, int col) const;
    Q_INVOKABLE void setTextMatrix(int row, int col, const QString& text);
    // Writes a whole column at once, for a host that fills many thousands of
    // rows: texts[i] goes into row i + 1, the rows after them keep theirs.
    // One repaint at most, and no current cell moved; more texts than item
    // rows, or a column the grid does not have, is a run-time error.
    Q_INVOKABLE void setColumnTexts(int col, const QStringList& texts);
    // The texts of a column's item rows, row 1 first.
    Q_INVOKABLE QStringList ColumnTexts(int col) const;
    // Gives every row from `first` on the height and cell styles (colours,
    // alignment, bold) of the row `period` rows above it, so that rows added
    // in bulk carry on the dress of those above, such as their alternate
    // shading.
    Q_INVOKABLE void RepeatRowStyles(int first, int period);
    // How the editors treat a column's cells that the host did not describe
    // one by one: 0 (the default) leaves them read-only, a positive length
    // opens a text box over them that takes that many characters at most.
    Q_INVOKABLE int ColEditLength(int col) const;
    Q_INVOKABLE void setColEditLength(int col, int length);

    Q_INVOKABLE int ColWidth(int col) const;
    Q_INVOKABLE void setColWidth(int col, int twips);
    Q_INVOKABLE int RowHeight(int row) const;
    Q_INVOKABLE void setRowHeight(int row, int twips);
    // Alignment of the fixed cells of a column; -1 until set, when the cell's
    // own alignment applies.
    Q_INVOKABLE int FixedAlignment(int col) const;
    Q_INVOKABLE void setFixedAlignment(int col, int alignment);

    // An editor has been laid over the current cell. While it is on view the
    // grid leaves that cell's text undrawn, so that a value is not seen twice
    // where the editor is lower than the cell, and the editor bears the
    // cell's name for screen readers.
    void CoverCurrentCell(QWidget& editor);
    // What a cell stands for: the title of its row in column 0, followed by
    // its column's title when the grid has more than one value column.
    QString CellName(int row, int col) const;
    // Whether a cell's text is wider than the cell shows; such a cell gives
    // its whole text as a tooltip.
    bool CellTextCut(int row, int col) const;

    // Geometry of the current cell, in twips from the grid's own top left.
    int CellLeft() const;
    int CellTop() const;
    int CellWidth() const;
    int CellHeight() const;

    // Look of the current cell alone. A colour never set reads as invalid.
    QColor CellBackColor() const;
    void setCellBackColor(const QColor& color);
    QColor CellForeColor() const;
    void setCellForeColor(const QColor& color);
    int CellAlignment() const;
    void setCellAlignment(int alignment);
    bool CellFontBold() const;
    void setCellFontBold(bool bold);

    // Look of the whole grid.
    QColor BackColor() const { return m_backColor; }
    void setBackColor(const QColor& color);
    QColor BackColorFixed() const { return m_backColorFixed; }
    void setBackColorFixed(const QColor& color);
    QColor BackColorBkg() const { return m_backColorBkg; }
    void setBackColorBkg(const QColor& color);
    QColor ForeColor() const { return m_foreColor; }
    void setForeColor(const QColor& color);
    QColor ForeColorFixed() const { return m_foreColorFixed; }
    void setForeColorFixed(const QColor& color);
    QColor GridColor() const { return m_gridColor; }
    void setGridColor(const QColor& color);
    QColor GridColorFixed() const { return m_gridColorFixed; }
    void setGridColorFixed(const QColor& color);
    // Line style between cells: 0 none, 1 flat (default), 2 inset, 3 raised.
    int GridLines() const { return m_gridLines; }
    void setGridLines(int style);
    int GridLinesFixed() const { return m_gridLinesFixed; }
    void setGridLinesFixed(int style);
    float FontSize() const;
    void setFontSize(float points);
    QString FontName() const;
    void setFontName(const QString& name);

signals:
    void RowColChange();
    void Scroll();
    void DblClick();
    // Key codes are the Windows virtual-key codes; Shift is 1 shift, 2 ctrl, 4 alt.
    void KeyDown(int KeyCode, int Shift);
    void KeyUp(int KeyCode, int Shift);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    friend class FlexGridAccessible;
    friend class FlexGridCellAccessible;

    static constexpr int TextMargin = 2; // pixels between a cell's edge and its text

    struct CellStyle {
        QRgb back = 0;
        QRgb fore = 0;
        int8_t alignment = General;
        bool hasBack = false;
        bool hasFore = false;
        bool bold = false;
    };

    // A cell's text as last painted, laid out once for its font, so that a
    // repaint draws it without shaping it again.
    // Digits alone, the most common values, are placed from the font's digit
    // glyphs without shaping: `digits` holds them and `text` is not laid out.
    struct ShapedText {
        QStaticText text;
        QFont font;
        QSizeF size; // its advance, and the font's ascent and descent
        bool number = false; // whether it reads as a number, for General
        QGlyphRun digits;
        qreal ascent = 0;
    };
    // The glyphs and advances of the digits 0 to 9 in a regular font; an
    // entry without a valid `raw` font marks a font that lacks them.
    struct DigitGlyphs {
        QFont font;
        QRawFont raw;
        QList<quint32> index;
        QList<QPointF> advance;
    };

    int cellIndex(int row, int col) const { return row * m_cols + col; }
    CellStyle& currentStyle() { return m_styles[size_t(cellIndex(m_row, m_col))]; }
    const CellStyle& currentStyle() const { return m_styles[size_t(cellIndex(m_row, m_col))]; }
    void checkRow(int row) const;
    void checkCol(int col) const;
    // Sets Rows and Cols together, so that a change of both is checked
    // against the cell limit once, for the final shape.
    void reshape(int rows, int cols);
    // Moves the current cell; RowColChange once if it changed.
    void setCurrentCell(int row, int col);
    // Sets TopRow and LeftCol together; Scroll once if either changed.
    void scrollTo(int topRow, int leftCol);
    // What a left press at this viewport position does to the current cell.
    void pressAt(const QPoint& pos);

    // Geometry, in pixels of the viewport: the one place that maps rows and
    // columns to positions and back.
    int rowTop(int row) const;
    int colLeft(int col) const;
    QRect cellRect(int row, int col) const;
    int rowAt(int y) const; // -1 when no row is there
    int colAt(int x) const;
    int maxTopRow() const;
    int maxLeftCol() const;
    void updateScrollBars();
    void updateCell(int row, int col);
    void scrollToCurrent();

    void paintRows(QPainter& painter, int firstRow, int lastRow, int firstCol, int lastCol) const;
    void paintArea(QPainter& painter, const QRect& dirty) const;
    QRgb cellBack(int row, int col) const;
    void paintText(QPainter& painter, int row, int col, const QRect& rect, bool lines) const;
    void paintFocus(QPainter& painter) const;
    QFont cellFont(int row, int col) const;
    const DigitGlyphs* digitGlyphs(const QFont& font) const;
    const ShapedText& shapedText(int index, const QString& text, const QFont& font) const;
    bool covered(int row, int col) const;

    int m_rows = 0;
    int m_cols = 0;
    int m_row = 1;
    int m_col = 0;
    int m_topRow = 1;
    int m_leftCol = 0;
    bool m_syncingScrollBars = false;
    QPointer<QWidget> m_editor; // the editor over m_editorRow, m_editorCol
    int m_editorRow = -1;
    int m_editorCol = -1;

    std::vector<QString> m_text;      // m_rows * m_cols, row after row
    std::vector<CellStyle> m_styles;  // same shape
    mutable std::vector<DigitGlyphs> m_digitGlyphs;
    mutable std::vector<std::unique_ptr<ShapedText>> m_shaped; // same shape, filled as cells are painted
    std::vector<int> m_colWidth;      // pixels
    std::vector<int> m_rowHeight;     // pixels
    std::vector<int8_t> m_fixedAlignment;
    std::vector<int> m_colEditLength;

    QColor m_backColor = Qt::white;
    QColor m_backColorFixed = QColor(0xC0, 0xC0, 0xC0);
    QColor m_backColorBkg = QColor(0x80, 0x80, 0x80);
    QColor m_foreColor = Qt::black;
    QColor m_foreColorFixed = Qt::black;
    QColor m_gridColor = QColor(0xC0, 0xC0, 0xC0);
    QColor m_gridColorFixed = Qt::black;
    int m_gridLines = 1;
    int m_gridLinesFixed = 2;
};

} // namespace tessaly
