// The page tree as a user works it: clicks and keys on the nodes, and what
// shows on the right afterwards.
#include "support/PanelFixture.h"

using namespace tessaly;

using TreeNavigationTest = PanelFixture;

namespace {

QStringList NodeTexts(QTreeWidgetItem* parent, int count)
{
    QStringList texts;
    for (int i = 0; i < count; ++i)
        texts << parent->child(i)->text(0);
    return texts;
}

} // namespace

TEST_F(TreeNavigationTest, TreeListsThePagesWithTheProfilesUnderMipProfile)
{
    OrvenTreeView* tree = panel().OrvenTreeView1;
    QStringList roots;
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        roots << tree->topLevelItem(i)->text(0);
    EXPECT_EQ(roots, QStringList({"Basic Information", "System NAM1", "System NAM2", "General", "Data",
                                  "MIP Profile", "Feature", "MMS", "SMS/EMS", "WAP", "BREW", "LBS",
                                  "Calibration"}));
    QTreeWidgetItem* profiles = tree->FindNode(QStringLiteral("MIP Profile"));
    ASSERT_EQ(profiles->childCount(), 6);
    EXPECT_EQ(NodeTexts(profiles, 6), QStringList({"MIP Profile 0", "MIP Profile 1", "MIP Profile 2",
                                                   "MIP Profile 3", "MIP Profile 4", "MIP Profile 5"}));
}

TEST_F(TreeNavigationTest, ClickingANodeShowsItsPageAloneAndTitlesIt)
{
    const struct { const char* node; int page; } nodes[] = {
        {"System NAM1", 0}, {"System NAM2", 20}, {"General", 1}, {"Data", 2}, {"Feature", 4},
        {"MMS", 5}, {"SMS/EMS", 6}, {"WAP", 7}, {"BREW", 8}, {"LBS", 12}, {"Calibration", 13},
        {"MIP Profile 0", 14}, {"MIP Profile 2", 16}, {"MIP Profile 5", 19},
    };
    for (const auto& [node, page] : nodes) {
        SCOPED_TRACE(node);
        clickNode(QLatin1String(node));
        EXPECT_EQ(shownPages(), QList<int>{page});
        EXPECT_TRUE(grid(page)->isVisible());
        EXPECT_FALSE(panel().fraBasicInfo->isVisible());
        EXPECT_FALSE(panel().fraMIPProfile->isVisible());
        EXPECT_EQ(panel().lblDataTitle->Caption(), QLatin1String(node));
    }
}

TEST_F(TreeNavigationTest, FramesKeysAndNodesOfNoPage)
{
    clickNode(QStringLiteral("MIP Profile"));
    EXPECT_TRUE(panel().fraMIPProfile->isVisible());
    EXPECT_TRUE(shownPages().isEmpty()) << "the profile frame, not grid 3";
    clickNode(QStringLiteral("Basic Information"));
    EXPECT_TRUE(panel().fraBasicInfo->isVisible());
    EXPECT_FALSE(panel().fraMIPProfile->isVisible());

    // The keys move the selection as a click does.
    clickNode(QStringLiteral("System NAM1"));
    QTest::keyClick(panel().OrvenTreeView1, Qt::Key_Down);
    EXPECT_EQ(shownPages(), QList<int>{20});
    EXPECT_EQ(panel().lblDataTitle->Caption(), "System NAM2");

    // A node of no page titles the area and shows nothing; names match exactly.
    panel().OrvenTreeView1->AddRootNode(QStringLiteral("data"));
    clickNode(QStringLiteral("data"));
    EXPECT_EQ(panel().lblDataTitle->Caption(), "data");
    EXPECT_TRUE(shownPages().isEmpty());
    EXPECT_FALSE(panel().fraBasicInfo->isVisible() || panel().fraMIPProfile->isVisible());
}

TEST_F(TreeNavigationTest, EveryClickSendsAllGridsHomeAndClosesEditors)
{
    clickNode(QStringLiteral("Data"));
    for (int page : {0, 2, 13, 20}) {
        grid(page)->setTopRow(40);
        grid(page)->setLeftCol(1);
        grid(page)->setRow(50);
        grid(page)->setCol(1);
    }
    panel().txtEdit(2)->setVisible(true);
    clickNode(QStringLiteral("Data")); // the node already selected
    EXPECT_EQ(shownPages(), QList<int>{2});
    EXPECT_FALSE(panel().txtEdit(2)->Visible());
    for (int page = 0; page <= 20; ++page) {
        SCOPED_TRACE(page);
        EXPECT_EQ(QPoint(grid(page)->LeftCol(), grid(page)->TopRow()), QPoint(0, 1));
        EXPECT_EQ(QPoint(grid(page)->Col(), grid(page)->Row()), QPoint(0, 1));
    }
}
