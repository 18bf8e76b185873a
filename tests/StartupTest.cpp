// What a host finds when a new panel has started, and what it leaves behind
// when it ends.
#include "support/PanelFixture.h"

using namespace tessaly;

using StartupTest = PanelFixture;

TEST_F(StartupTest, PanelHasItsFixedSizeAndShowsBasicInformation)
{
    EXPECT_EQ(host->size(), QSize(720, 562));
    EXPECT_TRUE(panel().fraBasicInfo->isVisible());
    EXPECT_FALSE(panel().fraMIPProfile->isVisible());
    EXPECT_TRUE(shownPages().isEmpty());
    EXPECT_EQ(panel().OrvenTreeView1->SelectedText(), "Basic Information");
    EXPECT_EQ(panel().lblDataTitle->Caption(), "Basic Information");
    EXPECT_EQ(panel().lblModelPortInfo->Caption(), "Mode Name");
    EXPECT_EQ(frame(20)->geometry(), frame(0)->geometry()) << "every page in the one data rectangle";
}

TEST_F(StartupTest, EveryPageHasItsGridAndEditorsDressedForIt)
{
    const int cols[21] = {23, 4, 2, 7, 2, 3, 3, 3, 3, 2, 10, 10, 3, 41, 2, 2, 2, 2, 2, 2, 23};
    for (int page = 0; page <= 20; ++page) {
        SCOPED_TRACE(page);
        for (const char* name : {"MSFlexGrid1", "cboEditCell", "txtEdit"}) {
            QWidget* element = control(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(page));
            ASSERT_NE(element, nullptr) << name;
            EXPECT_EQ(element->parentWidget(), frame(page)) << name;
        }
        EXPECT_FALSE(frame(page)->Visible() || panel().txtEdit(page)->Visible() || panel().cboEditCell(page)->Visible());
        MSFlexGrid* g = grid(page);
        EXPECT_EQ(g->Cols(), cols[page]);
        EXPECT_EQ(g->Rows(), 100);
        EXPECT_EQ(g->ColWidth(0), ToPixels(3500) * 15);
        const int width = page == 1 || page == 13 ? 1000 : page == 2 || page == 4 || (page >= 14 && page <= 19) ? 2800 : 1500;
        EXPECT_EQ(g->ColWidth(g->Cols() - 1), ToPixels(width) * 15);
        // Cells left-aligned and centred, odd rows shaded.
        for (int row : {1, 2, 99}) {
            g->setRow(row);
            g->setCol(g->Cols() - 1);
            EXPECT_EQ(g->RowHeight(row), 300);
            EXPECT_EQ(g->CellAlignment(), MSFlexGrid::LeftCenter);
            EXPECT_EQ(g->CellBackColor(), row % 2 ? RGB(240, 240, 240) : QColor());
        }
        EXPECT_EQ(g->BackColorFixed(), RGB(188, 188, 188));
        EXPECT_EQ(g->ForeColor(), RGB(73, 73, 73));
        EXPECT_EQ(g->GridColor(), RGB(215, 215, 215));
    }
    EXPECT_EQ(control(QStringLiteral("MSFlexGrid1(21)")), nullptr);
}

TEST_F(StartupTest, MemoryFreeReleasesTheStoresAndEveryPage)
{
    Panel& p = panel();
    p.MemoryFree();
    EXPECT_TRUE(p.g_arrCellAttr.IsSingle());
    EXPECT_EQ(p.g_arrCellAttr.UBound(1), 0);
    for (int page = 0; page <= 20; ++page)
        EXPECT_FALSE(p.MSFlexGrid1.exists(page) || p.fraFlexGrid.exists(page) || p.txtEdit.exists(page)
                     || p.cboEditCell.exists(page));
    EXPECT_EQ(host->findChildren<MSFlexGrid*>().size(), 0);
    // Ending the panel afterwards finds nothing left to remove, and says so.
    DialogAnswerer answerer;
    host.reset();
    ASSERT_EQ(answerer.texts().size(), 1);
    EXPECT_EQ(answerer.texts().first(),
              "Error[Common_Function/MemoryFree]:340\tControl array element '0' doesn't exist\t");
}

TEST_F(StartupTest, IdlePanelRepaintsNothing)
{
    struct PaintCounter : QObject {
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override
        {
            paints += event->type() == QEvent::Paint;
            return false;
        }
    } counter;
    host->repaint();
    QTest::qWait(50);
    host->installEventFilter(&counter);
    QTest::qWait(100);
    EXPECT_EQ(counter.paints, 0);
}
