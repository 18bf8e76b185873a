// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The MIP profile page, through the host's calls and the user's pick of a
// profile count.
#include "support/PanelFixture.h"

using namespace tessaly;

namespace {

class ProfilesTest : public PanelFixture {
protected:
    QStringList profileNodes()
    {
        QStringList nodes;
        QTreeWidgetItem* parent = panel().OrvenTreeView1->FindNode(QStringLiteral("MIP Profile"));
        for (int i = 0; i < parent->childCount(); ++i)
            nodes << parent->child(i)->text(0);
        return nodes;
    }
    QList<bool> enabledButtons()
    {
        QList<bool> enabled;
        for (int i = 0; i <= 5; ++i)
            enabled << panel().rbMIPProfile(i)->isEnabled();
        return enabled;
    }
};

} // namespace

TEST_F(ProfilesTest, CountKeepsButtonsAndTreeInLineAndTheActiveProfileWhileItStaysAndRefusesWhatIsOutOfRange)
{
    EXPECT_EQ(QPoint(host->GetProfileCount(), host->GetActiveProfileIndex()), QPoint(1, 0));
    EXPECT_TRUE(panel().rbMIPProfile(0)->Value()) << "reading selects profile 0";

    host->SetProfileCount(6);
    host->SetActiveProfileIndex(1);
    host->SetProfileCount(3);
    EXPECT_EQ(host->GetProfileCount(), 3);
    EXPECT_EQ(enabledButtons(), QList<bool>({true, true, true, false, false, false}));
    EXPECT_EQ(profileNodes(), QStringList({"MIP Profile 0", "MIP Profile 1", "MIP Profile 2"}));
    EXPECT_EQ(host->GetActiveProfileIndex(), 1);

    // The user picks profile 2, then a count below it: profile 0 is active.
    clickNode(QStringLiteral("MIP Profile"));
    QTest::mouseClick(panel().rbMIPProfile(2), Qt::LeftButton, {}, QPoint(10, panel().rbMIPProfile(2)->height() / 2));
    EXPECT_EQ(host->GetActiveProfileIndex(), 2);
    QTest::keyClick(panel().cmbProfileCount, Qt::Key_Up); // from "3" to "2"
    EXPECT_EQ(QPoint(host->GetProfileCount(), host->GetActiveProfileIndex()), QPoint(2, 0));
    EXPECT_EQ(profileNodes().size(), 2);

    // A disabled selection never counts; reading moves it to profile 0.
    host->SetActiveProfileIndex(4);
    EXPECT_EQ(host->GetActiveProfileIndex(), 0);
    host->SetActiveProfileEnable(true);
    EXPECT_EQ(enabledButtons(), QList<bool>(6, true));
    host->SetProfileCountEnable(false);
    EXPECT_FALSE(panel().cmbProfileCount->isEnabled());

    // Calls out of range are reported and change nothing.
    DialogAnswerer answerer;
    host->SetProfileCount(7);
    host->SetProfileCount(-1);
    host->SetActiveProfileIndex(6);
    EXPECT_EQ(answerer.texts().size(), 3);
    EXPECT_EQ(answerer.texts()[2], "Error[Interface/SetActiveProfileIndex]:340\tControl array element '6' doesn't exist\t");
    EXPECT_EQ(host->GetProfileCount(), 2);
    EXPECT_EQ(profileNodes().size(), 2);
}
