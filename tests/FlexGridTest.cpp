// The grid of the item pages: shape and storage, errors, current cell,
// scrolling, geometry against what is painted, mouse, keys and CopyFrom.
#include "platform/MSFlexGrid.h"

#include <QApplication>
#include <QImage>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

using tessaly::MSFlexGrid;
using tessaly::RuntimeError;

namespace {

// Default sizes in pixels.
constexpr int RowPx = 16;
constexpr int ColPx = 64;

// The number of the RuntimeError a call raises, 0 when it raises none.
int errorOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return 0;
}

QString descriptionOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const RuntimeError& e) {
        return e.description();
    }
    return {};
}

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

void fillText(MSFlexGrid& grid)
{
    for (int r = 0; r < grid.Rows(); ++r)
        for (int c = 0; c < grid.Cols(); ++c)
            grid.setTextMatrix(r, c, QStringLiteral("%1,%2").arg(r).arg(c));
}

} // namespace

TEST(FlexGridShape, StartsAsTwoByTwoWithTitleRow)
{
    MSFlexGrid grid;
    EXPECT_EQ(grid.Rows(), 2);
    EXPECT_EQ(grid.Cols(), 2);
    EXPECT_EQ(grid.FixedRows(), 1);
    EXPECT_EQ(grid.FixedCols(), 0);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.Col(), 0);
    EXPECT_EQ(grid.TopRow(), 1);
    EXPECT_EQ(grid.LeftCol(), 0);
    EXPECT_EQ(grid.RowHeight(1), 240);
    EXPECT_EQ(grid.ColWidth(1), 960);
    EXPECT_EQ(grid.FixedAlignment(1), -1);
    EXPECT_EQ(grid.CellAlignment(), MSFlexGrid::General);
    EXPECT_FALSE(grid.CellBackColor().isValid());
    EXPECT_FALSE(grid.CellForeColor().isValid());
    EXPECT_EQ(grid.focusPolicy(), Qt::StrongFocus);
}

TEST(FlexGridShape, RowsKeepRemainingRowsAndAddPlainOnes)
{
    MSFlexGrid grid;
    grid.setCols(3);
    grid.setRows(5);
    fillText(grid);
    grid.setRow(2);
    grid.setCol(1);
    grid.setCellBackColor(Qt::red);
    grid.setCellFontBold(true);
    grid.setRowHeight(2, 600);
    grid.setRow(4);
    grid.setCellAlignment(MSFlexGrid::RightTop);
    grid.setRowHeight(4, 600);

    grid.setRows(4); // drops row 4, current row moves to 3
    grid.setRows(6);
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 3; ++c)
            EXPECT_EQ(grid.TextMatrix(r, c), QStringLiteral("%1,%2").arg(r).arg(c));
    EXPECT_EQ(grid.RowHeight(2), 600);
    grid.setRow(2);
    EXPECT_EQ(grid.CellBackColor(), QColor(Qt::red));
    EXPECT_TRUE(grid.CellFontBold());

    // Row 4 came back new: no text, plain dress, default height.
    for (int r = 4; r < 6; ++r) {
        EXPECT_EQ(grid.RowHeight(r), 240);
        for (int c = 0; c < 3; ++c) {
            EXPECT_TRUE(grid.TextMatrix(r, c).isEmpty());
            grid.setRow(r);
            grid.setCol(c);
            EXPECT_EQ(grid.CellAlignment(), MSFlexGrid::General);
            EXPECT_FALSE(grid.CellBackColor().isValid());
            EXPECT_FALSE(grid.CellFontBold());
        }
    }
}

TEST(FlexGridShape, ColsKeepEachCellInItsRowAndColumn)
{
    MSFlexGrid grid;
    grid.setRows(4);
    grid.setCols(3);
    fillText(grid);
    grid.setRow(3);
    grid.setCol(1);
    grid.setCellForeColor(Qt::blue);
    grid.setColWidth(1, 1500);
    grid.setFixedAlignment(1, MSFlexGrid::CenterCenter);

    grid.setCols(5);
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 5; ++c)
            EXPECT_EQ(grid.TextMatrix(r, c), c < 3 ? QStringLiteral("%1,%2").arg(r).arg(c) : QString());
    }
    EXPECT_EQ(grid.CellForeColor(), QColor(Qt::blue)); // still (3, 1)
    EXPECT_EQ(grid.ColWidth(1), 1500);
    EXPECT_EQ(grid.ColWidth(4), 960);
    EXPECT_EQ(grid.FixedAlignment(4), -1);

    grid.setCols(2);
    grid.setCols(3);
    for (int r = 0; r < 4; ++r) {
        EXPECT_EQ(grid.TextMatrix(r, 1), QStringLiteral("%1,1").arg(r));
        EXPECT_TRUE(grid.TextMatrix(r, 2).isEmpty());
    }
    EXPECT_EQ(grid.CellForeColor(), QColor(Qt::blue));
    EXPECT_EQ(grid.FixedAlignment(1), MSFlexGrid::CenterCenter);
    EXPECT_EQ(grid.ColWidth(2), 960);
}

TEST(FlexGridShape, RefusesBadCountsAndTooManyCells)
{
    MSFlexGrid grid;
    grid.setRows(3);
    grid.setTextMatrix(2, 1, QStringLiteral("kept"));
    EXPECT_EQ(errorOf([&] { grid.setRows(0); }), tessaly::errInvalidPropertyValue);
    EXPECT_EQ(descriptionOf([&] { grid.setCols(-1); }), QStringLiteral("Invalid property value"));
    EXPECT_EQ(errorOf([&] { grid.setRows(175001); }), tessaly::errGridTooManyCells);
    EXPECT_EQ(descriptionOf([&] { grid.setCols(116667); }), QStringLiteral("Unable to allocate memory for grid"));
    EXPECT_EQ(grid.Rows(), 3);
    EXPECT_EQ(grid.Cols(), 2);
    EXPECT_EQ(grid.TextMatrix(2, 1), QStringLiteral("kept"));

    grid.setRows(175000); // exactly the limit
    EXPECT_EQ(grid.Rows(), 175000);
    EXPECT_EQ(grid.TextMatrix(2, 1), QStringLiteral("kept"));
}

TEST(FlexGridShape, ShrinkingMovesCurrentCellToTheLastRowAndColumn)
{
    MSFlexGrid grid;
    grid.setRows(6);
    grid.setCols(4);
    grid.setRow(5);
    grid.setCol(3);
    QSignalSpy changes(&grid, &MSFlexGrid::RowColChange);
    grid.setRows(4);
    EXPECT_EQ(grid.Row(), 3);
    EXPECT_EQ(changes.count(), 1);
    grid.setCols(2);
    EXPECT_EQ(grid.Col(), 1);
    EXPECT_EQ(changes.count(), 2);
    grid.setRows(8); // growing leaves the current cell alone
    grid.setRows(4);
    EXPECT_EQ(grid.Row(), 3);
    EXPECT_EQ(changes.count(), 2);
}

TEST(FlexGridErrors, RowsAndColumnsTheGridDoesNotHave)
{
    MSFlexGrid grid;
    grid.setRows(3);
    grid.setCols(3);
    grid.setTextMatrix(1, 1, QStringLiteral("x"));
    grid.setRowHeight(2, 300);
    grid.setColWidth(2, 300);
    QSignalSpy changes(&grid, &MSFlexGrid::RowColChange);

    const std::function<void()> badRows[] = {
        [&] { grid.setRow(3); },
        [&] { grid.setRow(-1); },
        [&] { grid.TextMatrix(3, 0); },
        [&] { grid.setTextMatrix(-1, 1, QStringLiteral("y")); },
        [&] { grid.setRowHeight(3, 300); },
        [&] { grid.RowHeight(-1); },
    };
    for (const auto& call : badRows) {
        EXPECT_EQ(errorOf(call), tessaly::errGridInvalidRow);
        EXPECT_EQ(descriptionOf(call), QStringLiteral("Invalid Row value"));
    }
    const std::function<void()> badCols[] = {
        [&] { grid.setCol(3); },
        [&] { grid.setCol(-1); },
        [&] { grid.TextMatrix(1, 3); },
        [&] { grid.setTextMatrix(1, -1, QStringLiteral("y")); },
        [&] { grid.ColWidth(3); },
        [&] { grid.setColWidth(-1, 300); },
        [&] { grid.FixedAlignment(3); },
        [&] { grid.setFixedAlignment(3, 0); },
    };
    for (const auto& call : badCols) {
        EXPECT_EQ(errorOf(call), tessaly::errGridInvalidCol);
        EXPECT_EQ(descriptionOf(call), QStringLiteral("Invalid Col value"));
    }
    EXPECT_EQ(errorOf([&] { grid.setCellAlignment(10); }), tessaly::errInvalidPropertyValue);
    EXPECT_EQ(errorOf([&] { grid.setFixedAlignment(0, -2); }), tessaly::errInvalidPropertyValue);
    EXPECT_EQ(errorOf([&] { grid.setGridLines(4); }), tessaly::errInvalidPropertyValue);

    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.Col(), 0);
    EXPECT_EQ(grid.TextMatrix(1, 1), QStringLiteral("x"));
    EXPECT_EQ(grid.TextMatrix(1, 2), QString());
    EXPECT_EQ(grid.RowHeight(2), 300);
    EXPECT_EQ(grid.ColWidth(2), 300);
    EXPECT_EQ(grid.CellAlignment(), MSFlexGrid::General);
    EXPECT_EQ(grid.GridLines(), 1);
}

TEST(FlexGridCurrentCell, RowColChangeOncePerRealChange)
{
    MSFlexGrid grid;
    grid.setRows(5);
    grid.setCols(3);
    QSignalSpy changes(&grid, &MSFlexGrid::RowColChange);
    grid.setRow(1);
    grid.setCol(0);
    EXPECT_EQ(changes.count(), 0);
    grid.setRow(3);
    EXPECT_EQ(changes.count(), 1);
    grid.setCol(2);
    EXPECT_EQ(changes.count(), 2);
    grid.setCol(2);
    EXPECT_EQ(changes.count(), 2);
    grid.setRow(0); // code may make the title row current
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_EQ(changes.count(), 3);
}

TEST(FlexGridCurrentCell, CellPropertiesFollowTheCurrentCell)
{
    MSFlexGrid grid;
    grid.setRows(4);
    grid.setCols(3);
    grid.setRow(2);
    grid.setCol(1);
    grid.setCellBackColor(Qt::red);
    grid.setCellForeColor(QColor(1, 2, 3));
    grid.setCellAlignment(MSFlexGrid::RightCenter);
    grid.setCellFontBold(true);

    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 3; ++c) {
            grid.setRow(r);
            grid.setCol(c);
            const bool dressed = r == 2 && c == 1;
            EXPECT_EQ(grid.CellBackColor(), dressed ? QColor(Qt::red) : QColor()) << r << ',' << c;
            EXPECT_EQ(grid.CellForeColor(), dressed ? QColor(1, 2, 3) : QColor());
            EXPECT_EQ(grid.CellAlignment(), dressed ? MSFlexGrid::RightCenter : MSFlexGrid::General);
            EXPECT_EQ(grid.CellFontBold(), dressed);
        }
    }
    grid.setRow(2);
    grid.setCol(1);
    grid.setCellBackColor(QColor()); // an invalid colour drops the cell's own
    EXPECT_FALSE(grid.CellBackColor().isValid());
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
    EXPECT_EQ(grid.TopRow(), 1);
    EXPECT_EQ(grid.LeftCol(), 0);
    EXPECT_EQ(scrolls.count(), 0);

    grid.setTopRow(5);
    EXPECT_EQ(scrolls.count(), 1);
    EXPECT_EQ(grid.verticalScrollBar()->value(), 4);
    grid.setTopRow(1000);
    EXPECT_EQ(grid.TopRow(), maxTop);
    EXPECT_EQ(scrolls.count(), 2);
    grid.setTopRow(maxTop + 1);
    EXPECT_EQ(scrolls.count(), 2);
    EXPECT_EQ(grid.verticalScrollBar()->maximum(), maxTop - 1);
    EXPECT_EQ(grid.verticalScrollBar()->value(), maxTop - 1);

    grid.setLeftCol(99);
    EXPECT_EQ(grid.LeftCol(), maxLeft);
    EXPECT_EQ(grid.horizontalScrollBar()->maximum(), maxLeft);
    EXPECT_EQ(grid.horizontalScrollBar()->value(), maxLeft);
    EXPECT_EQ(scrolls.count(), 3);

    // At the bottom the last row is whole on view and the one above TopRow
    // would not fit any more.
    grid.setRow(49);
    EXPECT_LE(currentCellPixels(grid).bottom(), view.bottom());
    EXPECT_GT(currentCellPixels(grid).bottom() + RowPx, view.bottom());

    // When the rows and columns fit the view exactly, the last ones are
    // still reachable and no further scrolling is possible.
    grid.resize(grid.width() - view.width() % ColPx, grid.height() - (view.height() - RowPx) % RowPx);
    QApplication::processEvents();
    ASSERT_EQ(grid.viewport()->width() % ColPx, 0);
    ASSERT_EQ((grid.viewport()->height() - RowPx) % RowPx, 0);
    grid.setTopRow(1000);
    grid.setLeftCol(1000);
    EXPECT_EQ(grid.TopRow(), 50 - (grid.viewport()->height() - RowPx) / RowPx);
    EXPECT_EQ(grid.LeftCol(), 10 - grid.viewport()->width() / ColPx);

    // Setting the current cell by code does not scroll.
    grid.setTopRow(1);
    grid.setLeftCol(0);
    scrolls.clear();
    grid.setRow(45);
    grid.setCol(9);
    EXPECT_EQ(grid.TopRow(), 1);
    EXPECT_EQ(grid.LeftCol(), 0);
    EXPECT_EQ(scrolls.count(), 0);
}

TEST(FlexGridScroll, ScrollBarsMoveTheGridAndFollowItsShape)
{
    MSFlexGrid grid;
    grid.setRows(50);
    grid.setCols(10);
    showGrid(grid);
    QSignalSpy scrolls(&grid, &MSFlexGrid::Scroll);

    grid.verticalScrollBar()->setValue(7);
    EXPECT_EQ(grid.TopRow(), 8);
    EXPECT_EQ(scrolls.count(), 1);
    grid.horizontalScrollBar()->setValue(2);
    EXPECT_EQ(grid.LeftCol(), 2);
    EXPECT_EQ(scrolls.count(), 2);
    grid.verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(grid.TopRow(), 9);
    EXPECT_EQ(scrolls.count(), 3);

    const int maximum = grid.verticalScrollBar()->maximum();
    grid.setRows(60);
    EXPECT_EQ(grid.verticalScrollBar()->maximum(), maximum + 10);
    grid.setRowHeight(59, 2 * 240); // one row fewer fits at the bottom
    EXPECT_EQ(grid.verticalScrollBar()->maximum(), maximum + 11);

    // Fewer rows bring TopRow back into range, and say so.
    scrolls.clear();
    grid.setRows(12);
    QApplication::processEvents();
    QApplication::processEvents();
    const int fit = (grid.viewport()->height() - RowPx) / RowPx;
    EXPECT_EQ(grid.TopRow(), std::max(1, 12 - fit));
    EXPECT_EQ(grid.verticalScrollBar()->value(), grid.TopRow() - 1);
    EXPECT_EQ(scrolls.count(), 1);

    grid.setCols(3);
    QApplication::processEvents();
    EXPECT_EQ(grid.LeftCol(), 0);
    EXPECT_FALSE(grid.horizontalScrollBar()->isVisible());
}

TEST(FlexGridScroll, WheelIsLeftToThePanel)
{
    MSFlexGrid grid;
    grid.setRows(50);
    showGrid(grid);
    QSignalSpy scrolls(&grid, &MSFlexGrid::Scroll);
    const QPointF at(20, 40);
    QWheelEvent wheel(at, grid.viewport()->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(grid.viewport(), &wheel);
    EXPECT_FALSE(wheel.isAccepted());
    EXPECT_EQ(grid.TopRow(), 1);
    EXPECT_EQ(scrolls.count(), 0);
}

TEST(FlexGridGeometry, LengthsAreTwipsStoredAsPixels)
{
    MSFlexGrid grid;
    grid.setColWidth(1, 1000); // 66.7 px
    EXPECT_EQ(grid.ColWidth(1), 67 * 15);
    grid.setRowHeight(1, 300);
    EXPECT_EQ(grid.RowHeight(1), 300);
    grid.setColWidth(0, 0);
    EXPECT_EQ(grid.ColWidth(0), 0);
    grid.setRowHeight(0, -1); // a negative length restores the default
    EXPECT_EQ(grid.RowHeight(0), 240);
    grid.setRow(1);
    grid.setCol(1);
    EXPECT_EQ(grid.CellWidth(), 67 * 15);
    EXPECT_EQ(grid.CellHeight(), 300);
}

// The Cell... rectangle is where the cell is painted, scrolled or not.
TEST(FlexGridGeometry, CellRectangleMatchesThePaintedCell)
{
    QWidget container; // outlives the grid, which moves into it at the end
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
            EXPECT_EQ(image.pixelColor(rect.left() + 2, rect.bottom()), QColor(Qt::blue));
            // Outside it: the neighbours' lines and background.
            EXPECT_EQ(image.pixelColor(rect.left() - 1, rect.top() + 2), QColor(Qt::blue));
            EXPECT_EQ(image.pixelColor(rect.left() + 2, rect.top() - 1), QColor(Qt::blue));
            EXPECT_EQ(image.pixelColor(rect.right() + 2, rect.top() + 2), QColor(Qt::white));
            EXPECT_EQ(image.pixelColor(rect.left() + 2, rect.bottom() + 2), QColor(Qt::white));
        }
    }

    // A control placed at grid.Left + CellLeft in the container lands on the
    // cell: with TopRow 4 and LeftCol 1, cell (5, 3) starts below the title
    // row and row 4, right of columns 1 and 2 (80 pixels wide).
    grid.setContainer(&container);
    grid.Move(150, 300);
    grid.setRow(5);
    grid.setCol(3);
    QWidget editor(&container);
    editor.setGeometry(tessaly::ToPixels(grid.Left() + grid.CellLeft()), tessaly::ToPixels(grid.Top() + grid.CellTop()),
                       tessaly::ToPixels(grid.CellWidth()), tessaly::ToPixels(grid.CellHeight()));
    const QPoint viewOrigin = grid.viewport()->mapTo(&container, QPoint(0, 0));
    EXPECT_EQ(editor.geometry(), QRect(viewOrigin + QPoint(ColPx + 80, RowPx + RowPx), QSize(ColPx, RowPx)));
}

TEST(FlexGridGeometry, CellsOffTheViewKeepConsistentPositions)
{
    MSFlexGrid grid;
    grid.setRows(30);
    grid.setCols(6);
    showGrid(grid);
    grid.setTopRow(5);
    grid.setLeftCol(2);
    const QPoint origin = grid.viewport()->pos() * 15;

    grid.setRow(0);
    grid.setCol(2);
    EXPECT_EQ(grid.CellTop(), origin.y()); // the title row stays at the top
    EXPECT_EQ(grid.CellLeft(), origin.x());
    grid.setRow(5);
    EXPECT_EQ(grid.CellTop(), origin.y() + 240);
    grid.setRow(3); // two rows above TopRow: hidden behind the title row and above it
    grid.setCol(0);
    EXPECT_EQ(grid.CellTop(), origin.y() + 240 - 2 * 240);
    EXPECT_EQ(grid.CellLeft(), origin.x() - 2 * 960);
    grid.setRow(8);
    grid.setCol(4);
    EXPECT_EQ(grid.CellTop(), origin.y() + 240 + 3 * 240);
    EXPECT_EQ(grid.CellLeft(), origin.x() + 2 * 960);
}

TEST(FlexGridPaint, TitleRowCellColoursLinesAndBackground)
{
    MSFlexGrid grid;
    grid.setRows(4);
    grid.setCols(3);
    grid.setBackColorFixed(Qt::green);
    grid.setBackColorBkg(Qt::darkGray);
    grid.setGridColor(Qt::blue);
    grid.setGridColorFixed(Qt::magenta);
    // Dressed while hidden: must show once the grid is on view.
    grid.setRow(3);
    grid.setCol(1);
    grid.setCellBackColor(Qt::yellow);
    grid.setRow(1);
    grid.setCol(0);
    showGrid(grid);

    const QImage image = grid.grab().toImage();
    const QPoint o = grid.viewport()->pos();
    auto at = [&](int x, int y) { return image.pixelColor(o + QPoint(x, y)); };
    EXPECT_EQ(at(ColPx + 5, 5), QColor(Qt::green));
    EXPECT_EQ(at(ColPx + 5, RowPx - 1), QColor(Qt::magenta));
    EXPECT_EQ(at(ColPx - 1, 5), QColor(Qt::magenta));
    EXPECT_EQ(at(ColPx + 5, 2 * RowPx + 5), QColor(Qt::white));
    EXPECT_EQ(at(ColPx + 5, 2 * RowPx - 1), QColor(Qt::blue));
    EXPECT_EQ(at(ColPx + 5, 3 * RowPx + 5), QColor(Qt::yellow));
    EXPECT_EQ(at(2 * ColPx + 5, 3 * RowPx + 5), QColor(Qt::white));
    EXPECT_EQ(at(3 * ColPx + 5, 5), QColor(Qt::darkGray));         // right of the last column
    EXPECT_EQ(at(5, 4 * RowPx + 5), QColor(Qt::darkGray));          // below the last row
    // The current cell (1, 0) has a dark frame just inside its edges.
    EXPECT_EQ(at(0, RowPx), QColor(Qt::black));
    EXPECT_EQ(at(ColPx - 2, 2 * RowPx - 2), QColor(Qt::black));
    EXPECT_EQ(at(2, RowPx + 2), QColor(Qt::white));

    // A current row scrolled off upwards leaves no frame on the title row.
    grid.setRows(40);
    grid.setTopRow(2);
    ASSERT_EQ(grid.TopRow(), 2);
    const QImage scrolled = grid.grab().toImage();
    EXPECT_EQ(scrolled.pixelColor(o + QPoint(0, 5)), QColor(Qt::green));
    EXPECT_EQ(scrolled.pixelColor(o + QPoint(5, RowPx - 2)), QColor(Qt::green));
    grid.setRows(4);

    // Without lines the cell's colour reaches its edge.
    grid.setGridLines(0);
    const QImage plain = grid.grab().toImage();
    EXPECT_EQ(plain.pixelColor(o + QPoint(2 * ColPx - 1, 4 * RowPx - 1)), QColor(Qt::yellow));
}

// Counts the pixels in a rectangle of an image where one primary (0 red,
// 1 green, 2 blue) clearly outweighs the others: text of that colour,
// antialiased or not, on a white or grey ground.
int inkPixels(const QImage& image, const QRect& rect, int primary)
{
    int count = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            const QColor c = image.pixelColor(x, y);
            const int channel[] = {c.red(), c.green(), c.blue()};
            if (channel[primary] - std::max(channel[(primary + 1) % 3], channel[(primary + 2) % 3]) > 80)
                ++count;
        }
    }
    return count;
}

constexpr int Red = 0;
constexpr int Green = 1;
constexpr int Blue = 2;

TEST(FlexGridPaint, TextColoursAlignmentAndClipping)
{
    MSFlexGrid grid;
    grid.setRows(5);
    grid.setCols(3);
    grid.setColWidth(0, 120 * 15);
    grid.setForeColor(Qt::red);
    grid.setForeColorFixed(Qt::blue);
    grid.setTextMatrix(0, 0, QStringLiteral("Title"));
    grid.setTextMatrix(1, 0, QStringLiteral("12.5"));           // a number: to the right
    grid.setTextMatrix(2, 0, QStringLiteral("Name"));           // text: to the left
    grid.setTextMatrix(3, 0, QStringLiteral("WWWWWWWWWWWWWWWWWWWWWWWW")); // longer than its cell
    grid.setTextMatrix(3, 2, QStringLiteral("WWWWWWWWWWWWWWWWWWWWWWWW")); // ... with nothing right of it
    grid.setTextMatrix(4, 0, QStringLiteral("Green"));
    grid.setTextMatrix(0, 1, QStringLiteral("T1"));
    grid.setFixedAlignment(1, MSFlexGrid::RightCenter); // wins over the cell's own
    grid.setTextMatrix(2, 1, QStringLiteral("Name"));
    grid.setRow(2);
    grid.setCol(1);
    grid.setCellFontBold(true);
    grid.setRow(0);
    grid.setCellAlignment(MSFlexGrid::LeftCenter);
    grid.setCol(0);
    grid.setRow(4);
    grid.setCellForeColor(Qt::green);
    grid.setCellAlignment(MSFlexGrid::CenterCenter);
    grid.setRow(2);
    grid.setCol(2);
    showGrid(grid);

    const QImage image = grid.grab().toImage();
    const QPoint o = grid.viewport()->pos();
    auto leftHalf = [&](int row) { return QRect(o + QPoint(0, row * RowPx), QSize(60, RowPx - 1)); };
    auto rightHalf = [&](int row) { return QRect(o + QPoint(60, row * RowPx), QSize(59, RowPx - 1)); };

    EXPECT_GT(inkPixels(image, leftHalf(0), Blue), 0);
    EXPECT_EQ(inkPixels(image, leftHalf(0), Red), 0);
    EXPECT_EQ(inkPixels(image, leftHalf(1), Red), 0);
    EXPECT_GT(inkPixels(image, rightHalf(1), Red), 0);
    EXPECT_GT(inkPixels(image, leftHalf(2), Red), 0);
    EXPECT_EQ(inkPixels(image, rightHalf(2), Red), 0);
    // Centred: ink on both sides of the middle, none at the far edges.
    const QRect green(o + QPoint(0, 4 * RowPx), QSize(119, RowPx - 1));
    EXPECT_GT(inkPixels(image, green.adjusted(0, 0, -60, 0), Green), 0);
    EXPECT_GT(inkPixels(image, green.adjusted(60, 0, 0, 0), Green), 0);
    EXPECT_EQ(inkPixels(image, green.adjusted(0, 0, -100, 0), Green), 0);
    EXPECT_EQ(inkPixels(image, green.adjusted(100, 0, 0, 0), Green), 0);
    EXPECT_EQ(inkPixels(image, leftHalf(4), Red), 0);
    // Long text fills its cell but stays out of the next one.
    EXPECT_GT(inkPixels(image, rightHalf(3), Red), 0);
    EXPECT_EQ(inkPixels(image, QRect(o + QPoint(120, 3 * RowPx), QSize(ColPx, RowPx)), Red), 0);
    EXPECT_GT(inkPixels(image, QRect(o + QPoint(120 + ColPx, 3 * RowPx), QSize(ColPx - 1, RowPx - 1)), Red), 0);
    EXPECT_EQ(inkPixels(image, QRect(o + QPoint(120 + 2 * ColPx, 3 * RowPx), QSize(40, RowPx)), Red), 0);

    const QRect title1(o + QPoint(120, 0), QSize(ColPx - 1, RowPx - 1));
    EXPECT_EQ(inkPixels(image, title1.adjusted(0, 0, -ColPx / 2, 0), Blue), 0);
    EXPECT_GT(inkPixels(image, title1.adjusted(ColPx / 2, 0, 0, 0), Blue), 0);
    // The same word in bold takes more ink.
    EXPECT_GT(inkPixels(image, QRect(o + QPoint(120, 2 * RowPx), QSize(ColPx - 1, RowPx - 1)), Red),
              inkPixels(image, leftHalf(2), Red));
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

    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cellCentre(grid, 3, 1));
    EXPECT_EQ(grid.Row(), 3);
    EXPECT_EQ(grid.Col(), 1);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(scrolls.count(), 0);
    EXPECT_EQ(grid.window()->focusWidget(), &grid);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cellCentre(grid, 3, 1) + QPoint(0, RowPx / 2 - 1));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cellCentre(grid, 0, 2)); // title row
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(grid.Row(), 3);
    EXPECT_EQ(grid.Col(), 1);

    // The first and the last pixel of a cell both belong to it.
    const QPoint topLeft = cellCentre(grid, 4, 2) - QPoint(ColPx / 2, RowPx / 2);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, topLeft);
    EXPECT_EQ(grid.Row(), 4);
    EXPECT_EQ(grid.Col(), 2);
    grid.setRow(1);
    grid.setCol(0);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, topLeft + QPoint(ColPx - 1, RowPx - 1));
    EXPECT_EQ(grid.Row(), 4);
    EXPECT_EQ(grid.Col(), 2);
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

TEST(FlexGridMouse, DoubleClickSelectsThenReports)
{
    MSFlexGrid grid;
    grid.setRows(3);
    grid.setCols(3);
    showGrid(grid);
    QStringList events;
    QObject::connect(&grid, &MSFlexGrid::RowColChange, [&] { events << QStringLiteral("change"); });
    QObject::connect(&grid, &MSFlexGrid::DblClick, [&] {
        events << QStringLiteral("dbl %1,%2").arg(grid.Row()).arg(grid.Col());
    });

    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, cellCentre(grid, 2, 2));
    EXPECT_EQ(events, QStringList({QStringLiteral("change"), QStringLiteral("dbl 2,2")}));

    events.clear();
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, cellCentre(grid, 0, 1)); // title row
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, cellCentre(grid, 4, 0)); // below the last row
    EXPECT_EQ(events, QStringList({QStringLiteral("dbl 2,2"), QStringLiteral("dbl 2,2")}));

    // A single click beyond the last column or row changes nothing either.
    events.clear();
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cellCentre(grid, 1, 3));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cellCentre(grid, 3, 1));
    EXPECT_TRUE(events.isEmpty());
    EXPECT_EQ(grid.Row(), 2);
    EXPECT_EQ(grid.Col(), 2);
}

TEST(FlexGridKeys, KeysAreReportedNotActedOn)
{
    MSFlexGrid grid;
    grid.setRows(10);
    grid.setCols(4);
    grid.setRow(2);
    grid.setCol(1);
    showGrid(grid);
    QSignalSpy downs(&grid, &MSFlexGrid::KeyDown);
    QSignalSpy ups(&grid, &MSFlexGrid::KeyUp);

    QTest::keyClick(&grid, Qt::Key_Return);
    QTest::keyClick(&grid, Qt::Key_F2);
    QTest::keyClick(&grid, Qt::Key_Left, Qt::ShiftModifier);
    QTest::keyClick(&grid, Qt::Key_Up, Qt::ControlModifier);
    QTest::keyClick(&grid, Qt::Key_Right);
    QTest::keyClick(&grid, Qt::Key_Down);
    // QTest also presses and releases the modifier keys themselves (16, 17).
    auto withoutModifierKeys = [](const QSignalSpy& spy) {
        QList<QList<QVariant>> keys;
        for (const QList<QVariant>& args : spy)
            if (args.at(0).toInt() != 16 && args.at(0).toInt() != 17)
                keys << args;
        return keys;
    };
    const QList<QList<QVariant>> expected = {
        {13, 0}, {113, 0}, {37, 1}, {38, 2}, {39, 0}, {40, 0},
    };
    EXPECT_EQ(withoutModifierKeys(downs), expected);
    EXPECT_EQ(withoutModifierKeys(ups), expected);
    EXPECT_EQ(grid.Row(), 2);
    EXPECT_EQ(grid.Col(), 1);

    // Auto-repeat: every press is reported, repeated releases are not.
    downs.clear();
    ups.clear();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier, QString(), true);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Down, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(&grid, &press);
    QApplication::sendEvent(&grid, &release);
    EXPECT_TRUE(press.isAccepted());
    EXPECT_EQ(downs.count(), 1);
    EXPECT_EQ(ups.count(), 0);
}

TEST(FlexGridKeys, CellMovedByTheKeyHandlerIsScrolledIntoView)
{
    MSFlexGrid grid;
    grid.setRows(60);
    grid.setCols(10);
    showGrid(grid);
    const QRect view = grid.viewport()->geometry();
    int target = 40;
    int targetCol = 8;
    QObject::connect(&grid, &MSFlexGrid::KeyDown, [&](int key, int) {
        if (key == 40) {
            grid.setRow(target);
            grid.setCol(targetCol);
        }
    });
    QSignalSpy scrolls(&grid, &MSFlexGrid::Scroll);

    QTest::keyClick(&grid, Qt::Key_Down);
    EXPECT_EQ(scrolls.count(), 1);
    QRect cell = currentCellPixels(grid);
    EXPECT_EQ(cell.bottom(), view.bottom() - (view.height() - RowPx) % RowPx); // last whole row on view
    EXPECT_EQ(cell.right(), view.right() - view.width() % ColPx);

    target = 7;
    targetCol = 0;
    QTest::keyClick(&grid, Qt::Key_Down);
    EXPECT_EQ(scrolls.count(), 2);
    EXPECT_EQ(grid.TopRow(), 7);
    EXPECT_EQ(grid.LeftCol(), 0);

    // A key that leaves the cell alone leaves the view alone too.
    grid.setTopRow(30);
    scrolls.clear();
    QTest::keyClick(&grid, Qt::Key_Up);
    EXPECT_EQ(grid.TopRow(), 30);
    EXPECT_EQ(scrolls.count(), 0);
}

TEST(FlexGridCopy, TakesDesignPropertiesButNotContents)
{
    QWidget form;
    MSFlexGrid model(&form);
    model.setRows(7);
    model.setCols(4);
    model.setBackColor(Qt::cyan);
    model.setBackColorFixed(Qt::green);
    model.setBackColorBkg(Qt::darkGray);
    model.setForeColor(Qt::red);
    model.setForeColorFixed(Qt::blue);
    model.setGridColor(Qt::yellow);
    model.setGridColorFixed(Qt::magenta);
    model.setGridLines(0);
    model.setGridLinesFixed(3);
    model.setFontSize(13.5f);
    model.setColWidth(3, 1500);
    model.setRowHeight(6, 450);
    model.setFixedAlignment(2, MSFlexGrid::RightBottom);
    model.setGeometry(11, 12, 213, 114);
    model.setEnabled(false);
    model.setTextMatrix(1, 1, QStringLiteral("model text"));

    MSFlexGrid grid(&form);
    grid.setRows(3);
    grid.setTextMatrix(1, 1, QStringLiteral("own text"));
    grid.setRow(2);
    grid.setCol(1);
    grid.setCellBackColor(Qt::black);
    grid.CopyFrom(model);

    EXPECT_EQ(grid.Rows(), 7);
    EXPECT_EQ(grid.Cols(), 4);
    EXPECT_EQ(grid.BackColor(), QColor(Qt::cyan));
    EXPECT_EQ(grid.BackColorFixed(), QColor(Qt::green));
    EXPECT_EQ(grid.BackColorBkg(), QColor(Qt::darkGray));
    EXPECT_EQ(grid.ForeColor(), QColor(Qt::red));
    EXPECT_EQ(grid.ForeColorFixed(), QColor(Qt::blue));
    EXPECT_EQ(grid.GridColor(), QColor(Qt::yellow));
    EXPECT_EQ(grid.GridColorFixed(), QColor(Qt::magenta));
    EXPECT_EQ(grid.GridLines(), 0);
    EXPECT_EQ(grid.GridLinesFixed(), 3);
    EXPECT_FLOAT_EQ(grid.FontSize(), 13.5f);
    EXPECT_EQ(grid.FontName(), model.FontName());
    EXPECT_EQ(grid.ColWidth(3), 1500);
    EXPECT_EQ(grid.RowHeight(6), 450);
    EXPECT_EQ(grid.RowHeight(2), 240);
    EXPECT_EQ(grid.FixedAlignment(2), MSFlexGrid::RightBottom);
    EXPECT_EQ(grid.geometry(), QRect(11, 12, 213, 114));
    EXPECT_FALSE(grid.Enabled());

    EXPECT_EQ(grid.TextMatrix(1, 1), QStringLiteral("own text"));
    EXPECT_EQ(grid.Row(), 2);
    EXPECT_EQ(grid.Col(), 1);
    EXPECT_EQ(grid.CellBackColor(), QColor(Qt::black));
}

TEST(FlexGridCopy, ReshapesAgainstTheLimitOnlyOnce)
{
    // 1000 x 2 to 10 x 1000: going through 1000 x 1000 would pass the cell limit.
    MSFlexGrid model;
    model.setRows(10);
    model.setCols(1000);
    MSFlexGrid grid;
    grid.setRows(1000);
    grid.CopyFrom(model);
    EXPECT_EQ(grid.Rows(), 10);
    EXPECT_EQ(grid.Cols(), 1000);
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
