// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// What the panel draws: grid lines whole and the grid covering its rectangle
// at every device pixel ratio, no value drawn twice under its editor and the
// editor whole over it, tree rows that hold their text, cut values and
// messages whole elsewhere, labels whole in the fallback faces and drawn
// anew at every change.
#include "frame/frmMsgBox.h"
#include "support/PanelFixture.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QScrollBar>
#include <QToolTip>

#include <cmath>

using namespace tessaly;

namespace {

// A control drawn alone on a transparent ground, as its own pixels.
QImage Drawn(QWidget& control)
{
    QImage image(control.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    control.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

// The rows and columns in which `image` has any ink, as a rectangle.
QRect Ink(const QImage& image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 0)
                ink |= QRect(x, y, 1, 1);
    return ink;
}

} // namespace

TEST(Rendering, GridLinesFillTheirDevicePixelsWholeAtEveryRatio)
{
    MSFlexGrid grid;
    grid.setRows(6);
    grid.setCols(4);
    grid.setGridColor(Qt::blue);
    grid.setGridColorFixed(Qt::blue);
    grid.setBackColorFixed(Qt::white);
    grid.resize(300, 200);
    grid.show();
    const QColor paper(Qt::white), line(Qt::blue);
    for (const qreal ratio : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(ratio);
        QImage image((QSizeF(grid.viewport()->size()) * ratio).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::magenta); // what no paint reaches
        grid.viewport()->render(&image);
        // Across row 2, the cells' white and the column lines' blue alone,
        // each line as wide as one pixel is at this ratio.
        const int y = int(40 * ratio);
        int run = 0;
        for (int x = 0; x < int(4 * 64 * ratio); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            ASSERT_TRUE(pixel == paper || pixel == line) << "device pixel " << x << ": " << qPrintable(pixel.name());
            run = pixel == line ? run + 1 : 0;
            EXPECT_LE(run, int(std::ceil(ratio))) << x;
        }
        // Down column 1, the same for the row lines.
        for (int yy = 0; yy < int(6 * 16 * ratio); ++yy)
            ASSERT_TRUE(image.pixelColor(int(96 * ratio), yy) == paper || image.pixelColor(int(96 * ratio), yy) == line) << yy;
    }
}

// The grid claims its whole rectangle, so the frame it lies on is never
// painted beneath it: with both scroll bars, drawn alone at every ratio, it
// leaves no pixel of the ground, frame and corner included.
TEST(Rendering, GridCoversItsWholeRectangleAtEveryRatio)
{
    MSFlexGrid grid;
    grid.setRows(40);
    grid.setCols(12);
    grid.resize(300, 200);
    grid.show();
    ASSERT_TRUE(grid.testAttribute(Qt::WA_OpaquePaintEvent));
    ASSERT_TRUE(grid.verticalScrollBar()->isVisible() && grid.horizontalScrollBar()->isVisible());
    for (const qreal ratio : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(ratio);
        QImage image((QSizeF(grid.size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        grid.render(&image, {}, {}, QWidget::DrawChildren);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                ASSERT_EQ(qAlpha(image.pixel(x, y)), 255) << "device pixel " << x << "," << y;
    }
}

TEST(Rendering, CutCellTextIsWholeInItsTooltipAndToScreenReaders)
{
    MSFlexGrid grid;
    grid.setRows(3);
    grid.setCols(2);
    const QString url = QStringLiteral("http://mms.example.com/servlets/mms?carrier=halvane&profile=1");
    grid.setTextMatrix(1, 1, url);
    grid.setTextMatrix(2, 1, QStringLiteral("short"));
    grid.show();
    const auto tip = [&](int row) {
        const QPoint at(96, 16 * row + 8); // column 1 of that row
        QHelpEvent help(QEvent::ToolTip, at, grid.viewport()->mapToGlobal(at));
        QApplication::sendEvent(grid.viewport(), &help);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    EXPECT_EQ(tip(2), QString());
    EXPECT_EQ(tip(1), url);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&grid)->child(1 * 2 + 1)->text(QAccessible::Name), url);
}

using PanelRenderingTest = PanelFixture;

TEST_F(PanelRenderingTest, CellUnderAnOpenTextEditorDoesNotShowItsText)
{
    host->SetNVFieldItemCount(1, 1);
    item(1, 1, "Banner", QStringLiteral("Halvane"), QStringLiteral("########"));
    clickNode(QStringLiteral("General"));
    MSFlexGrid* g = grid(1);
    clickCell(g, 1, 1, true);
    TextBox* editor = panel().txtEdit(1);
    ASSERT_TRUE(editor->isVisible());
    const QRect cell = cellRect(g, 1, 1).translated(-g->viewport()->pos());
    const int editorBottom = editor->geometry().bottom() - g->y() - g->viewport()->y();
    ASSERT_LT(editorBottom, cell.bottom() - 2) << "the editor is lower than its cell";
    // Below the editor, inside the cell's lines and focus outline: its ground alone.
    const QImage shown = g->viewport()->grab().toImage();
    const QRgb ground = shown.pixel(cell.right() - 2, cell.bottom() - 2);
    for (int y = editorBottom + 1; y <= cell.bottom() - 2; ++y)
        for (int x = cell.left() + 1; x <= cell.right() - 2; ++x)
            ASSERT_EQ(shown.pixel(x, y), ground) << x << "," << y;
    // The editor claims to cover its whole rectangle, so the grid is not
    // painted beneath it: drawn alone, it leaves no pixel of the ground.
    ASSERT_TRUE(editor->testAttribute(Qt::WA_OpaquePaintEvent));
    const QImage alone = Drawn(*editor);
    for (int y = 0; y < alone.height(); ++y)
        for (int x = 0; x < alone.width(); ++x)
            ASSERT_EQ(qAlpha(alone.pixel(x, y)), 255) << x << "," << y;
}

TEST_F(PanelRenderingTest, TreeRowsHoldTheirTextAndTheFullTreeFits)
{
    host->SetProfileCount(6);
    host->AddTab(QStringLiteral("Roaming List"), 2);
    OrvenTreeView* tree = panel().OrvenTreeView1;
    const QFontMetrics metrics(tree->font());
    int bottom = 0;
    for (QTreeWidgetItemIterator it(tree); *it; ++it) {
        const QRect row = tree->visualItemRect(*it);
        const QRect ink = metrics.boundingRect((*it)->text(0));
        EXPECT_GE(row.height(), std::max(ink.height(), metrics.height()) + 2) << qPrintable((*it)->text(0));
        bottom = std::max(bottom, row.bottom());
    }
    ASSERT_EQ(tree->topLevelItemCount() + 6, 20);
    EXPECT_LT(bottom, tree->viewport()->height());
}

TEST_F(PanelRenderingTest, LongMessageStopsAtTheLastWholeLineAboveTheButton)
{
    QString message;
    for (int i = 0; i < 12; ++i)
        message += QStringLiteral("LOCK_CODE would be changed according to MDN. ");
    frmMsgBox box(host.get());
    box.SetMessage(message);
    box.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&box));
    const QRect ink = Ink(Drawn(*box.lblMessage)).translated(box.lblMessage->pos());
    ASSERT_FALSE(ink.isEmpty());
    EXPECT_LT(ink.bottom(), box.picCommand->y());
    EXPECT_EQ(box.toolTip(), message);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&box)->text(QAccessible::Description), message);
}

TEST_F(PanelRenderingTest, ModelLabelStaysWholeInTheLayoutFaceAndInTheFallback)
{
    Label* label = panel().lblModelPortInfo;
    label->setCaption(QStringLiteral("Halvane SIM-800  (COM7)"));
    for (const char* face : {"Tahoma", "DejaVu Sans"}) {
        label->setFontName(QLatin1String(face));
        const QRect ink = Ink(Drawn(*label)); // none at all fails too
        EXPECT_GT(ink.left(), 0) << face;
        EXPECT_LT(ink.right(), label->width() - 1) << face;
    }
}

// A label keeps its caption's ink between paints: after every change of
// caption, colour, font, state or wrapping it draws as a new label with the
// same properties does, and back at an earlier caption as it drew it then.
TEST(Rendering, LabelDrawsEveryChangeAsANewLabelWould)
{
    const auto dressed = [](Label& label, const QString& caption, const QColor& ink, int points, bool enabled,
                            bool wrap) {
        label.resize(120, 40);
        label.setCaption(caption);
        label.setForeColor(ink);
        label.setFontSize(float(points));
        label.setEnabled(enabled);
        label.setWordWrap(wrap);
    };
    Label kept;
    dressed(kept, QStringLiteral("Calibration"), Qt::black, 9, true, false);
    const QImage first = Drawn(kept);
    const struct { const char* caption; QColor ink; int points; bool enabled; bool wrap; } changes[] = {
        {"System NAM1", Qt::black, 9, true, false},
        {"System NAM1", Qt::darkRed, 9, true, false},
        {"System NAM1", Qt::darkRed, 12, true, false},
        {"System NAM1", Qt::darkRed, 12, false, false},
        {"Number Of Profiles And More", Qt::darkRed, 12, true, true},
    };
    for (const auto& change : changes) {
        SCOPED_TRACE(change.caption);
        dressed(kept, QLatin1String(change.caption), change.ink, change.points, change.enabled, change.wrap);
        Label fresh;
        dressed(fresh, QLatin1String(change.caption), change.ink, change.points, change.enabled, change.wrap);
        ASSERT_EQ(Drawn(kept), Drawn(fresh));
    }
    dressed(kept, QStringLiteral("Calibration"), Qt::black, 9, true, false);
    EXPECT_EQ(Drawn(kept), first);
}
