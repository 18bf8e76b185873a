// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The grid of the item pages: shape and storage, errors, current cell,
// scrolling, geometry against what is painted, and the mouse.
#include "platform/MSFlexGrid.h"
#include "support/RuntimeErrors.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>

using tessaly::MSFlexGrid;

namespace {

// Default sizes in pixels.
constexpr int RowPx = 16;
constexpr int ColPx = 64;

// Shows a grid at 300 x 200 pixels and lets the scroll bars settle (Qt shows
// and hides them from a queued call).
void showGrid(MSFlexGrid& grid)
{
    grid.resize(300, 200);
    grid.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&grid));
    QApplication::processEvents();
    QApplication::processEvents();
}

// Centre of a cell in viewport pixels, for a grid of default sizes.
QPoint cellCentre(const MSFlexGrid& grid, int row, int col)
{
    const int top = row == 0 ? 0 : RowPx + (row - grid.TopRow()) * RowPx;
    return {(col - grid.LeftCol()) * ColPx + ColPx / 2, top + RowPx / 2};
}

// The current cell's rectangle in the grid widget's pixels, from the Cell... properties.
QRect currentCellPixels(const MSFlexGrid& grid)
{
    return {grid.CellLeft() / 15, grid.CellTop() / 15, grid.CellWidth() / 15, grid.CellHeight() / 15};
}

} // namespace

TEST(FlexGridCurrentCell, BadCallsChangeNothingAndEachRealChangeRaisesRowColChangeOnce)
{
    MSFlexGrid grid;
    grid.setRows(3);
    grid.setCols(3);
    grid.setTextMatrix(1, 1, QStringLiteral("x"));
    grid.setRowHeight(2, 300);
    grid.setColWidth(2, 300);
    QSignalSpy changes(&grid, &MSFlexGrid::RowColChange);

    const std::pair<std::function<void()>, int32_t> bad[] = {
        {[&] { grid.setRow(3); }, tessaly::errGridInvalidRow},
        {[&] { grid.setTextMatrix(-1, 1, QStringLiteral("y")); }, tessaly::errGridInvalidRow},
        {[&] { grid.setRowHeight(3, 300); }, tessaly::errGridInvalidRow},
        {[&] { grid.setCol(-1); }, tessaly::errGridInvalidCol},
        {[&] { grid.TextMatrix(1, 3); }, tessaly::errGridInvalidCol},
        {[&] { grid.setColWidth(-1, 300); }, tessaly::errGridInvalidCol},
        {[&] { grid.setCellAlignment(10); }, tessaly::errInvalidPropertyValue},
        {[&] { grid.setRows(0); }, tessaly::errInvalidPropertyValue},
        {[&] { grid.setCols(-1); }, tessaly::errInvalidPropertyValue},
        {[&] { grid.setRows(350000 / 3 + 1); }, tessaly::errGridTooManyCells}, // 350,000 cells at most
    };
    for (const auto& [call, error] : bad)
        EXPECT_EQ(ErrorNumberOf(call), error);
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(QRect(grid.Col(), grid.Row(), grid.Cols(), grid.Rows()), QRect(0, 1, 3, 3));
    EXPECT_EQ(grid.TextMatrix(1, 1), QStringLiteral("x"));
    EXPECT_EQ(QSize(grid.ColWidth(2), grid.RowHeight(2)), QSize(300, 300));

    // Each real change of the current cell raises RowColChange once;
    // shrinking past the cell moves it to the last row and column.
    grid.setRows(5);
    grid.setRow(1); // already current
    grid.setRow(3);
    grid.setCol(2);
    grid.setCol(2);
    grid.setRow(0); // code may make the title row current
    EXPECT_EQ(changes.count(), 3);
    grid.setRow(4);
    grid.setRows(3);
    grid.setCols(2);
    EXPECT_EQ(QPoint(grid.Col(), grid.Row()), QPoint(1, 2));
    EXPECT_EQ(changes.count(), 6);
}

TEST(FlexGridScroll, TopRowAndLeftColAreClampedAndRaiseScrollOnChange)
{
    MSFlexGrid grid;
    grid.setRows(50);
    grid.setCols(10);
    showGrid(grid);
    const QRect view = grid.viewport()->geometry();
    const int maxTop = 50 - (view.height() - RowPx) / RowPx;
    const int maxLeft = 10 - view.width() / ColPx;
    QSignalSpy scrolls(&grid, &MSFlexGrid::Scroll);

    grid.setTopRow(1);
    grid.setTopRow(0);
    grid.setLeftCol(-3);
    EXPECT_EQ(QPoint(grid.LeftCol(), grid.TopRow()), QPoint(0, 1));
    EXPECT_EQ(scrolls.count(), 0);

    grid.setTopRow(5);
    grid.setTopRow(1000);
    grid.setTopRow(maxTop + 1); // clamped to where it is: no scroll
    grid.setLeftCol(99);
    EXPECT_EQ(QPoint(grid.LeftCol(), grid.TopRow()), QPoint(maxLeft, maxTop));
    EXPECT_EQ(scrolls.count(), 3);
    EXPECT_EQ(grid.verticalScrollBar()->maximum(), maxTop - 1);
    EXPECT_EQ(grid.horizontalScrollBar()->value(), maxLeft);

    // The scroll bars' values are row and column indexes.
    grid.verticalScrollBar()->setValue(7);
    EXPECT_EQ(grid.TopRow(), 8);
    EXPECT_EQ(scrolls.count(), 4);

    // Setting the current cell by code does not scroll.
    grid.setRow(45);
    grid.setCol(0);
    EXPECT_EQ(QPoint(scrolls.count(), grid.TopRow()), QPoint(4, 8));
}

// The Cell... rectangle is where the cell is painted, scrolled or not.
TEST(FlexGridGeometry, CellRectangleMatchesThePaintedCell)
{
    MSFlexGrid grid;
    grid.setRows(40);
    grid.setCols(8);
    grid.setGridColor(Qt::blue);
    grid.setColWidth(2, 1200);
    grid.setRowHeight(6, 450);
    showGrid(grid);
    ASSERT_GT(grid.viewport()->x(), 0) << "the frame should offset the viewport";

    for (const QPoint scroll : {QPoint(0, 1), QPoint(1, 4)}) {
        grid.setLeftCol(scroll.x());
        grid.setTopRow(scroll.y());
        for (const QPoint cell : {QPoint(2, 6), QPoint(3, 8)}) {
            grid.setRow(cell.y());
            grid.setCol(cell.x());
            const QRect rect = currentCellPixels(grid);
            grid.setCellBackColor(Qt::red);
            grid.setRow(1);
            grid.setCol(0);
            const QImage image = grid.grab().toImage();
            grid.setRow(cell.y());
            grid.setCol(cell.x());
            grid.setCellBackColor(QColor());

            SCOPED_TRACE(testing::Message() << "cell " << cell.y() << ',' << cell.x() << " top row "
                                            << scroll.y() << " left col " << scroll.x());
            // Red fills the rectangle up to its own grid lines at right and bottom.
            EXPECT_EQ(image.pixelColor(rect.topLeft()), QColor(Qt::red));
            EXPECT_EQ(image.pixelColor(rect.right() - 1, rect.bottom() - 1), QColor(Qt::red));
            EXPECT_EQ(image.pixelColor(rect.right(), rect.top() + 2), QColor(Qt::blue));
            // Outside it: the neighbours' lines and background.
            EXPECT_EQ(image.pixelColor(rect.left() - 1, rect.top() + 2), QColor(Qt::blue));
            EXPECT_EQ(image.pixelColor(rect.left() + 2, rect.bottom() + 2), QColor(Qt::white));
        }
    }
}

TEST(FlexGridMouse, ClickMakesACellCurrentAndScrollsItWhole)
{
    MSFlexGrid grid;
    grid.setRows(40);
    grid.setCols(10);
    showGrid(grid);
    // Let the last row and column on view be cut off by the viewport's edge.
    QSize view = grid.viewport()->size();
    grid.resize(grid.width() + ((view.width() % ColPx) ? 0 : ColPx / 2),
                grid.height() + ((view.height() - RowPx) % RowPx ? 0 : RowPx / 2));
    QApplication::processEvents();
    view = grid.viewport()->size();
    ASSERT_NE(view.width() % ColPx, 0);
    ASSERT_NE((view.height() - RowPx) % RowPx, 0);
    QSignalSpy changes(&grid, &MSFlexGrid::RowColChange);
    QSignalSpy scrolls(&grid, &MSFlexGrid::Scroll);

    // The last pixel of a cell belongs to it; the title row is never current.
    const QPoint topLeft = cellCentre(grid, 4, 2) - QPoint(ColPx / 2, RowPx / 2);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, topLeft + QPoint(ColPx - 1, RowPx - 1));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cellCentre(grid, 0, 1));
    EXPECT_EQ(QPoint(grid.Col(), grid.Row()), QPoint(2, 4));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(scrolls.count(), 0);
    EXPECT_EQ(grid.window()->focusWidget(), &grid);
    changes.clear();

    // The bottom-right cell is cut off on both sides: one click, one
    // RowColChange, one Scroll, and the cell is whole on view.
    const QPoint corner(view.width() - 1, view.height() - 1);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, corner);
    EXPECT_EQ(grid.Row(), (corner.y() - RowPx) / RowPx + 1);
    EXPECT_EQ(grid.Col(), corner.x() / ColPx);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(scrolls.count(), 1);
    EXPECT_EQ(grid.TopRow(), 2);
    EXPECT_EQ(grid.LeftCol(), 1);
    const QRect cell = currentCellPixels(grid).translated(-grid.viewport()->pos());
    EXPECT_TRUE(QRect(QPoint(0, 0), view).contains(cell)) << cell.right() << ',' << cell.bottom();
}

// What reaches the screen after a change on view: the grid asks for the
// repaint of the cells it changed, not only on the next full paint.
TEST(FlexGridPaint, ChangesOnViewReachTheScreen)
{
    MSFlexGrid grid;
    grid.setRows(6);
    grid.setCols(3);
    showGrid(grid);
    auto screenPixel = [&](int row, int col) {
        QApplication::processEvents();
        const QImage shot = grid.screen()->grabWindow(grid.winId()).toImage();
        return shot.pixelColor(grid.viewport()->pos() + cellCentre(grid, row, col) + QPoint(0, 2));
    };
    ASSERT_EQ(screenPixel(2, 1), QColor(Qt::white));

    grid.setRow(2);
    grid.setCol(1);
    grid.setCellBackColor(Qt::red);
    EXPECT_EQ(screenPixel(2, 1), QColor(Qt::red));
    grid.setTextMatrix(2, 1, QStringLiteral("█████"));
    grid.setCellForeColor(Qt::blue);
    EXPECT_EQ(screenPixel(2, 1), QColor(Qt::blue));
}

namespace {

// The smallest rectangle of `area` whose pixels differ from `background`.
QRect inkOf(const QImage& image, const QRect& area, QRgb background)
{
    QRect ink;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (image.pixel(x, y) != background)
                ink |= QRect(x, y, 1, 1);
    return ink;
}

} // namespace

// Values of digits alone are set from the font's digit glyphs rather than by
// the text engine: they must land where the engine would put them, on the
// same baseline and as wide.
TEST(FlexGridPaint, DigitsLieWhereTheTextEngineWouldSetThem)
{
    for (const auto& [alignment, flags] : {std::pair{MSFlexGrid::LeftCenter, Qt::AlignLeft | Qt::AlignVCenter},
                                           std::pair{MSFlexGrid::RightCenter, Qt::AlignRight | Qt::AlignVCenter}}) {
        SCOPED_TRACE(alignment);
        MSFlexGrid grid;
        grid.setRows(2);
        grid.setCols(2);
        grid.setRowHeight(1, 450);
        grid.setColWidth(1, 1500);
        grid.setRow(1);
        grid.setCol(1);
        grid.setCellAlignment(alignment);
        grid.setTextMatrix(1, 1, QStringLiteral("4139"));
        grid.setForeColor(Qt::black);
        grid.setRow(0); // no focus frame over the cell
        showGrid(grid);
        grid.setRow(1);
        const QRect cell = currentCellPixels(grid).translated(-grid.viewport()->pos());
        grid.setRow(0);
        QApplication::processEvents();
        const QImage shown = grid.viewport()->grab().toImage();
        const QRect inside = cell.adjusted(0, 0, -1, -1); // the grid lines take the last row and column
        const QRgb back = shown.pixel(inside.topLeft());

        QImage expected(shown.size(), shown.format());
        expected.fill(back);
        QPainter painter(&expected);
        painter.setFont(grid.font());
        painter.setPen(Qt::black);
        painter.drawText(inside.adjusted(2, 0, -2, 0), int(flags), QStringLiteral("4139"));
        painter.end();

        const QRect drawn = inkOf(shown, inside, back);
        const QRect engine = inkOf(expected, inside, back);
        ASSERT_FALSE(drawn.isEmpty());
        EXPECT_LE(std::abs(drawn.left() - engine.left()), 1);
        EXPECT_LE(std::abs(drawn.right() - engine.right()), 1);
        EXPECT_LE(std::abs(drawn.top() - engine.top()), 1);
        EXPECT_LE(std::abs(drawn.bottom() - engine.bottom()), 1);
    }
}
