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
}

TEST_F(StartupTest, EveryPageHasItsOwnGridAndEditorsInTheOneDataRectangle)
{
    for (int page = 0; page <= 20; ++page) {
        SCOPED_TRACE(page);
        EXPECT_EQ(frame(page)->geometry(), panel().fraBasicInfo->geometry());
        for (const char* name : {"MSFlexGrid1", "cboEditCell", "txtEdit"}) {
            QWidget* element = control(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(page));
            ASSERT_NE(element, nullptr) << name;
            EXPECT_EQ(element->parentWidget(), frame(page)) << name;
            EXPECT_FALSE(element->isVisible()) << name;
        }
        EXPECT_EQ(grid(page)->Rows(), 100);
        // Item rows are shaded one in two, counting from the title row.
        for (int row : {1, 2}) {
            grid(page)->setRow(row);
            grid(page)->setCol(1);
            EXPECT_EQ(grid(page)->CellBackColor(), row % 2 ? RGB(240, 240, 240) : QColor());
        }
    }
    EXPECT_EQ(control(QStringLiteral("MSFlexGrid1(21)")), nullptr);
}

TEST_F(StartupTest, EndingThePanelTwiceFindsNothingLeftAndSaysSo)
{
    PanelOf(*host).MemoryFree();
    EXPECT_EQ(host->findChildren<MSFlexGrid*>().size(), 0);
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
    QCoreApplication::processEvents();
    host->installEventFilter(&counter);
    for (int pass = 0; pass < 3; ++pass)
        QCoreApplication::processEvents(); // a paint that asks for another would come here
    EXPECT_EQ(counter.paints, 0);
}
