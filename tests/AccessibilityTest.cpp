// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The panel as a screen reader finds it, in what ScreenReaderTest.py cannot
// see from outside: the keys that press buttons, the grid's cells by place
// and point, the names of the basic information and lists, the profiles in
// order, and a node removed from the page tree.
#include "support/PanelFixture.h"
#include "platform/OrvenTreeView.h"

#include <QAccessible>
#include <QSignalSpy>


using namespace tessaly;

namespace {

class AccessibilityTest : public PanelFixture {
protected:
    static QAccessibleInterface* of(QObject* object) { return QAccessible::queryAccessibleInterface(object); }

    // Shows page 1 ("General") with a text item and a list item.
    void fillGeneral()
    {
        host->SetNVFieldItemCount(1, 2);
        item(1, 1, "Banner", QStringLiteral("Halvane"));
        item(1, 2, "Key Beep", QStringLiteral("On"), {}, false, false, QStringLiteral("On|Off"));
        clickNode(QStringLiteral("General"));
    }
};

} // namespace

TEST_F(AccessibilityTest, CommandAndWindowButtonsAreReachedByTabAndPressedOnceByEachWay)
{
    const PanelControls& p = panel();
    QList<QWidget*> reached; // by Tab from the tree, round the whole chain
    ASSERT_TRUE(QTest::qWaitForWindowActive(host.get()));
    p.OrvenTreeView1->setFocus();
    for (int i = 0; i < 40; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        reached << QApplication::focusWidget();
    }
    for (QWidget* button : std::initializer_list<QWidget*>{p.picCommand(0), p.picCommand(1), p.picCommand(2),
                                                           p.picCommand(3), p.imgWndMin, p.imgWndClose})
        EXPECT_TRUE(reached.contains(button)) << button->accessibleName().toStdString();

    // Each way of pressing raises Click once, which the panel handles as a
    // click (NV Write before a read: the bar dims and comes back); a held key
    // does not repeat it, and a button the panel has disabled cannot be pressed.
    PictureBox* write = p.picCommand(1);
    QSignalSpy clicks(write, &PictureBox::Click);
    write->setFocus();
    QTest::keyClick(write, Qt::Key_Space);
    QTest::keyClick(write, Qt::Key_Return);
    QTest::keyPress(write, Qt::Key_Space, {}, -1);
    QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Space, {}, QStringLiteral(" "), true);
    QApplication::sendEvent(write, &repeat);
    of(write)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    write->setEnabled(false);
    of(write)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks.count(), 4);
}

TEST_F(AccessibilityTest, GridCellsAreFoundByPlaceAndPointAndTheCurrentOneHasTheFocus)
{
    fillGeneral();
    MSFlexGrid* g = grid(1);
    QAccessibleInterface* table = of(g);
    QAccessibleTableInterface* cells = table->tableInterface();
    ASSERT_NE(cells, nullptr);
    EXPECT_EQ(cells->columnCount(), g->Cols() - 1);
    QAccessibleInterface* beep = cells->cellAt(1, 0);
    EXPECT_EQ(beep->text(QAccessible::Value), QStringLiteral("On"));
    EXPECT_EQ(table->child(table->indexOfChild(beep)), beep);
    EXPECT_EQ(table->childAt(beep->rect().center().x(), beep->rect().center().y()), beep);

    // The current cell is the one selected, and has the focus with the grid.
    g->setCol(1);
    g->setRow(2);
    g->setFocus();
    EXPECT_TRUE(beep->state().focused && beep->state().selected);
    EXPECT_EQ(table->focusChild(), beep);
}

TEST_F(AccessibilityTest, EditorsValuesAndListsAreNamedAfterWhatTheyBelongTo)
{
    const PanelControls& p = panel();
    // The host's basic information, each value read under its own name.
    host->SetBasicInfo("HV-2.31", "2027-03-01", "8F3A21C4", "A0000012345678", "1234 h", "567");
    const std::tuple<TextBox*, const char*, const char*> values[] = {
        {p.txtPhoneSWVer, "Phone S/W Version", "HV-2.31"}, {p.txtWarrantyDate, "Warranty Date", "2027-03-01"},
        {p.txtESN, "ESN", "8F3A21C4"}, {p.txtMEID, "MEID", "A0000012345678"},
        {p.txtLifeTimer, "Life Timer", "1234 h"}, {p.txtLifeCnt, "Life Count", "567"},
    };
    for (const auto& [box, caption, value] : values) {
        EXPECT_EQ(of(box)->text(QAccessible::Name), QLatin1String(caption));
        EXPECT_EQ(of(box)->text(QAccessible::Value), QLatin1String(value)) << caption;
    }

    const auto labels = of(p.cmbProfileCount)->relations(QAccessible::Label);
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels[0].first->object(), p.Label1);

    fillGeneral();
    clickCell(grid(1), 2, 1, true);
    ASSERT_TRUE(p.cboEditCell(1)->isVisible());
    // A list's name is its choice; what it stands for is its description.
    EXPECT_EQ(of(p.cboEditCell(1))->text(QAccessible::Description), QStringLiteral("Key Beep, VALUE1"));
}

TEST_F(AccessibilityTest, ProfilesAreReadInTheirOrder)
{
    QAccessibleInterface* page = of(panel().fraMIPProfile);
    QStringList read;
    for (int i = 0; i < page->childCount(); ++i)
        if (page->child(i)->role() == QAccessible::RadioButton)
            read << page->child(i)->text(QAccessible::Name);
    EXPECT_EQ(read, QStringList({"MIP Profile 0", "MIP Profile 1", "MIP Profile 2", "MIP Profile 3", "MIP Profile 4",
                                 "MIP Profile 5"}));
}

TEST_F(AccessibilityTest, TreeForgetsARemovedNode)
{
    OrvenTreeView* tree = panel().OrvenTreeView1;
    QAccessibleInterface* face = of(tree);
    const int nodes = face->childCount();
    QAccessibleInterface* node = face->child(face->childCount() - 1);
    ASSERT_TRUE(node->isValid());
    tree->RemoveNode(node->text(QAccessible::Name));
    EXPECT_FALSE(node->isValid());
    EXPECT_EQ(face->childCount(), nodes - 1);
    EXPECT_EQ(face->indexOfChild(node), -1);
}
