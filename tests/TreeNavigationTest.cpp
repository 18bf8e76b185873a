// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The page tree as a user works it: clicks and keys on the nodes, and what
// shows on the right afterwards.
#include "support/PanelFixture.h"

#include <QSet>
#include <QSignalSpy>

using namespace tessaly;

using TreeNavigationTest = PanelFixture;

// The panel starts on Basic Information. Page 3 is the six profiles' alias;
// 9, 10 and 11 are spare.
TEST_F(TreeNavigationTest, EveryPageIsReachedFromOneNodeWhichShowsItAloneAndTitlesIt)
{
    EXPECT_EQ(QStringList({panel().OrvenTreeView1->SelectedText(), panel().lblDataTitle->Caption()}),
              QStringList(2, "Basic Information"));
    EXPECT_TRUE(shownPages().isEmpty() && panel().fraBasicInfo->isVisible() && !panel().fraMIPProfile->isVisible());
    QSet<int> reached;
    int frames = 0;
    for (QTreeWidgetItemIterator node(panel().OrvenTreeView1); *node; ++node) {
        const QString text = (*node)->text(0);
        SCOPED_TRACE(qPrintable(text));
        clickNode(text);
        EXPECT_EQ(panel().lblDataTitle->Caption(), text);
        const QList<int> shown = shownPages();
        const int views = int(shown.size()) + panel().fraBasicInfo->isVisible() + panel().fraMIPProfile->isVisible();
        ASSERT_EQ(views, 1) << "one view on the right";
        if (shown.isEmpty()) {
            ++frames;
            continue;
        }
        MSFlexGrid* g = grid(shown[0]);
        EXPECT_TRUE(g->isVisible());
        // "VALUE" alone over the one value column of a two-column grid, numbered over several.
        EXPECT_EQ(g->TextMatrix(0, 0), "NV Items");
        EXPECT_EQ(g->TextMatrix(0, 1), g->Cols() == 2 ? "VALUE" : "VALUE1");
        EXPECT_FALSE(reached.contains(shown[0])) << "page " << shown[0] << " has two nodes";
        reached << shown[0];
    }
    EXPECT_EQ(frames, 2);
    for (int page = 0; page <= 20; ++page)
        EXPECT_EQ(reached.contains(page), page != 3 && (page < 9 || page > 11)) << page;
}

TEST_F(TreeNavigationTest, KeysMoveLikeClicksAndANodeOfNoPageShowsNothing)
{
    clickNode(QStringLiteral("System NAM1"));
    QTest::keyClick(panel().OrvenTreeView1, Qt::Key_Down);
    EXPECT_EQ(shownPages(), QList<int>{20});
    EXPECT_EQ(panel().lblDataTitle->Caption(), "System NAM2");

    // Names match exactly.
    panel().OrvenTreeView1->AddRootNode(QStringLiteral("data"));
    clickNode(QStringLiteral("data"));
    EXPECT_TRUE(shownPages().isEmpty() && !panel().fraBasicInfo->isVisible() && !panel().fraMIPProfile->isVisible());
}

TEST_F(TreeNavigationTest, EveryClickSendsAllGridsHomeAndClosesEditors)
{
    OrvenTreeView* tree = panel().OrvenTreeView1;
    QSignalSpy clicks(tree, &OrvenTreeView::Click);
    clickNode(QStringLiteral("Data"));
    for (int page : {0, 2}) {
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
    // A node chosen by code, or a click below the nodes, is no click.
    tree->SelectNode(QStringLiteral("General"));
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, QPoint(20, tree->viewport()->height() - 3));
    EXPECT_EQ(clicks.count(), 2);
}
