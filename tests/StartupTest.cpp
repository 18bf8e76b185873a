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
