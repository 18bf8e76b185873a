// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Pages of the host's own: added behind page 20, filled like fixed pages,
// removed newest first; and fixed pages' nodes taken out of the tree.
#include "support/PanelFixture.h"

using namespace tessaly;

using AddedTabsTest = PanelFixture;

TEST_F(AddedTabsTest, AddedPageWorksLikeAFixedOneAndKeepsEveryStoredRecord)
{
    host->AddItemToGrd(13, QStringLiteral("###"), true, false, QStringLiteral("a|b"), QStringLiteral("7"), 99, 40);
    DialogAnswerer answerer;
    EXPECT_EQ(host->AddTab(QStringLiteral("Roaming List"), 3), 21);
    EXPECT_EQ(PanelOf(*host).Cells().Attr(13, 99, 40).ComboStr, "a|b") << "records of the fixed pages survive";
    MSFlexGrid* g = grid(21);
    ASSERT_NE(g, nullptr);
    EXPECT_EQ(g->TextMatrix(0, 2), "VALUE2");

    host->SetNVFieldItemCount(21, 2);
    host->AddItemToGrid2(21, {}, false, {}, QStringLiteral("Preferred SID"), 1, 0);
    host->AddItemToGrd(21, QStringLiteral("#####"), true, false, {}, QStringLiteral("4139"), 1, 2);
    EXPECT_EQ(host->GetItemFromGrd(21, 1, 1), "4139");
    clickNode(QStringLiteral("Roaming List"));
    EXPECT_TRUE(frame(21)->isVisible());
    // Its cells are edited as any other.
    QTest::keyClick(g, Qt::Key_Right);
    QTest::keyClick(g, Qt::Key_Right);
    QTest::keyClick(g, Qt::Key_Return);
    EXPECT_EQ(panel().txtEdit(21)->Text(), "4139");
    EXPECT_TRUE(answerer.texts().isEmpty());
}

TEST_F(AddedTabsTest, PagesGoNewestFirstAndFixedPagesOnlyLoseTheirNode)
{
    EXPECT_EQ(host->AddTab(QStringLiteral("A"), 2), 21);
    EXPECT_EQ(host->AddTab(QStringLiteral("B"), 2), 22);
    EXPECT_THROW(host->RemoveTab(21), TessalyError) << "not the newest";
    EXPECT_NE(grid(21), nullptr);
    host->RemoveTab(22);
    host->RemoveTab(21);
    EXPECT_THROW(host->RemoveTab(21), TessalyError) << "gone already";
    EXPECT_EQ(grid(21), nullptr);
    EXPECT_EQ(panel().OrvenTreeView1->FindNode(QStringLiteral("A")), nullptr);
    EXPECT_EQ(host->AddTab(QStringLiteral("C"), 2), 21) << "the number comes back";
    host->AddItemToGrd(21, {}, false, false, QStringLiteral("x|y"), QStringLiteral("y"), 1, 1);
    EXPECT_EQ(PanelOf(*host).Cells().Attr(21, 1, 1).ComboStr, "x|y");

    host->AddItemToGrd(2, {}, false, false, {}, QStringLiteral("kept"), 1, 1);
    host->RemoveTab(2);
    host->RemoveTab(9);
    host->RemoveTab(-4);
    EXPECT_EQ(panel().OrvenTreeView1->FindNode(QStringLiteral("Data")), nullptr);
    EXPECT_EQ(host->GetItemFromGrd(2, 1, 0), "kept");

    // A column count the grid refuses is the host's failure; the panel goes on.
    EXPECT_THROW(host->AddTab(QStringLiteral("Too wide"), 0), TessalyError);
    DialogAnswerer answerer;
    clickNode(QStringLiteral("Too wide"));
    host->SetNVFieldItemCount(22, 3);
    host->AddItemToGrd(22, {}, false, false, {}, QStringLiteral("x"), 1, 1);
    EXPECT_FALSE(answerer.texts().isEmpty()) << "reported, not crashed";
}
