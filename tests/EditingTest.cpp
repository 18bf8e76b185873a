// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Editing values in place, as a user does it with keys and the mouse: moving
// the current cell, opening the editors over it, typing, picking, and the
// checks that run when the text editor is left.
#include "support/PanelFixture.h"

#include <QAbstractItemView>

using namespace tessaly;

namespace {

class EditingTest : public PanelFixture {
protected:
    void SetUp() override
    {
        PanelFixture::SetUp();
        ASSERT_TRUE(QTest::qWaitForWindowActive(host.get()));
        // Page 1 ("General"): a text cell, a number cell, a list, a read-only
        // value, and empty rows below them.
        host->SetNVFieldItemCount(1, 40);
        item(1, 1, "Banner", "Halvane", "########");
        item(1, 2, "Backlight Timeout (s)", "15", "###", true);
        item(1, 3, "Key Beep", "On", {}, false, false, "On|Off");
        item(1, 4, "Software Version", "HV-2.31", {}, false, true);
    }

    // Shows a page through the tree and makes a cell current with the mouse.
    MSFlexGrid* select(const char* node, int page, int row, int col)
    {
        clickNode(QLatin1String(node));
        clickCell(grid(page), row, col);
        return grid(page);
    }

    TextBox* box(int page) { return panel().txtEdit(page); }
    ComboBox* combo(int page) { return panel().cboEditCell(page); }
};

} // namespace

TEST_F(EditingTest, ArrowKeysMoveTheCurrentCellInsideTheItemAreaOnly)
{
    MSFlexGrid* g = select("General", 1, 1, 0);
    const auto press = [&](Qt::Key key, int times = 1) {
        for (int i = 0; i < times; ++i)
            QTest::keyClick(g, key);
        return QPoint(g->Col(), g->Row());
    };
    EXPECT_EQ(press(Qt::Key_Left), QPoint(0, 1)) << "never from the titles further left";
    EXPECT_EQ(press(Qt::Key_Up), QPoint(0, 1)) << "never onto the title row";
    EXPECT_EQ(press(Qt::Key_Right, 9), QPoint(3, 1));
    EXPECT_EQ(press(Qt::Key_Left, 9), QPoint(1, 1)) << "stops right of the titles";
    EXPECT_EQ(press(Qt::Key_Down, 50), QPoint(1, 40));
    EXPECT_EQ(press(Qt::Key_Return), QPoint(1, 40));
    // The grid brings the cell the handler moved to on view, whole.
    const QRect view(QPoint(0, 0), g->viewport()->size());
    EXPECT_TRUE(view.contains(cellRect(g, 40, 1).translated(-g->viewport()->pos())));
    EXPECT_EQ(press(Qt::Key_Up, 39), QPoint(1, 1));
    EXPECT_EQ(g->TopRow(), 1);
}

TEST_F(EditingTest, EnterF2OrADoubleClickOpensTheEditorTheCellAsksForExactlyOnIt)
{
    MSFlexGrid* g = select("General", 1, 1, 1);
    QTest::keyClick(g, Qt::Key_Return);
    ASSERT_TRUE(box(1)->isVisible());
    const QRect cell = cellRect(g, 1, 1).translated(g->pos());
    EXPECT_EQ(box(1)->geometry(), cell.adjusted(0, 0, 0, -ToPixels(100))) << "100 twips less high than the cell";
    EXPECT_EQ(box(1)->Text(), "Halvane");
    EXPECT_EQ(box(1)->MaxLength(), 8);
    EXPECT_EQ(QApplication::focusWidget(), box(1));

    // Read-only values and titles open nothing; a move closes what was open.
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(g, Qt::Key_Down);
    QTest::keyClick(g, Qt::Key_F2);
    EXPECT_FALSE(combo(1)->isVisible() || box(1)->isVisible());
    g->setCol(0);
    clickCell(g, 2, 0, true);
    EXPECT_EQ(g->Row(), 2);
    EXPECT_FALSE(combo(1)->isVisible() || box(1)->isVisible());

    // A double click on a value opens it; scrolling closes it, and a cell
    // scrolled off above opens nothing.
    clickCell(g, 2, 1, true);
    EXPECT_EQ(box(1)->MaxLength(), 3);
    g->setTopRow(3);
    EXPECT_FALSE(box(1)->isVisible());
    QTest::keyClick(g, Qt::Key_Return);
    EXPECT_FALSE(box(1)->isVisible());
}

TEST_F(EditingTest, TextEditorWritesAtEachReleaseNumberCellsTakeDigitsAndEnterCloses)
{
    MSFlexGrid* g = select("General", 1, 2, 1);
    QTest::keyClick(g, Qt::Key_Return);
    TextBox* editor = box(1);
    EXPECT_EQ(editor->cursorPosition(), 0);
    EXPECT_FALSE(editor->hasSelectedText());
    QTest::keyClick(editor, Qt::Key_End);
    for (Qt::Key key : {Qt::Key_Minus, Qt::Key_Period, Qt::Key_Space, Qt::Key_A, Qt::Key_Escape})
        QTest::keyClick(editor, key);
    QTest::keyClick(editor, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(editor->Text(), "15") << "only digits and Backspace pass";
    QTest::keyClick(editor, Qt::Key_Backspace);
    EXPECT_EQ(g->TextMatrix(2, 1), "1");

    // A held key repeats into the box; the cell follows at the release.
    const auto repeat = [&](QEvent::Type type) {
        QKeyEvent event(type, Qt::Key_7, {}, QStringLiteral("7"), true);
        QApplication::sendEvent(editor, &event);
    };
    QTest::keyPress(editor, Qt::Key_7);
    repeat(QEvent::KeyRelease);
    repeat(QEvent::KeyPress);
    EXPECT_EQ(editor->Text(), "177");
    EXPECT_EQ(g->TextMatrix(2, 1), "1");
    QTest::keyRelease(editor, Qt::Key_7);
    EXPECT_EQ(g->TextMatrix(2, 1), "177");

    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_FALSE(editor->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), g);
    EXPECT_EQ(QPoint(g->Col(), g->Row()), QPoint(1, 2));
}

TEST_F(EditingTest, PhoneNumberWarnsEachTimeItIsEnteredAndDrivesEveryLockCode)
{
    item(0, 1, "Mobile Directory Number (MDN)", "8585550143", "##########", true);
    item(0, 2, "LOCK CODE", "0143", "####", true);
    item(20, 1, "Mobile Directory Number (MDN)", "2125550100", "##########", true);
    item(20, 2, "LOCK CODE", "0100", "####", true);
    DialogAnswerer answerer;
    MSFlexGrid* g = select("System NAM1", 0, 1, 1);
    QTest::keyClick(g, Qt::Key_Return);
    ASSERT_EQ(answerer.seen().size(), 1);
    EXPECT_EQ(answerer.seen()[0].objectName, "frmMsgBox");
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == box(0); }));
    EXPECT_EQ(answerer.seen().size(), 1) << "the focus came back without a second notice";

    QTest::keyClick(box(0), Qt::Key_End);
    QTest::keyClick(box(0), Qt::Key_Backspace);
    QTest::keyClick(box(0), Qt::Key_9);
    EXPECT_EQ(g->TextMatrix(1, 1), "8585550149");
    EXPECT_EQ(g->TextMatrix(2, 1), "0149");
    EXPECT_EQ(grid(20)->TextMatrix(2, 1), "0149") << "every page's lock code";
    for (int i = 0; i < 7; ++i)
        QTest::keyClick(box(0), Qt::Key_Backspace);
    EXPECT_EQ(g->TextMatrix(2, 1), "858") << "fewer than four: all of them";

    // Back into the box that stayed open: a notice again.
    g->setFocus();
    QTest::mouseClick(box(0), Qt::LeftButton);
    EXPECT_EQ(answerer.seen().size(), 2);
    // The same title on NAM2 neither warns nor moves the lock codes.
    QTest::keyClick(select("System NAM2", 20, 1, 1), Qt::Key_Return);
    QTest::keyClick(box(20), Qt::Key_1);
    EXPECT_EQ(answerer.seen().size(), 2);
    EXPECT_EQ(grid(20)->TextMatrix(2, 1), "858");
}

TEST_F(EditingTest, ComboListIsBuiltAnewAndAPickWritesItsTextOnly)
{
    item(1, 3, "Key Beep", "Loud", {}, false, false, "On||Off|On");
    MSFlexGrid* g = select("General", 1, 3, 1);
    QTest::keyClick(g, Qt::Key_Return);
    ComboBox* list = combo(1);
    ASSERT_TRUE(list->isVisible());
    EXPECT_EQ(list->geometry().topLeft(), cellRect(g, 3, 1).translated(g->pos()).topLeft());
    EXPECT_TRUE(list->view()->isVisible()) << "the list stands open";
    QStringList items;
    for (int i = 0; i < list->ListCount(); ++i)
        items << list->itemText(i);
    EXPECT_EQ(items, QStringList({"On", "", "Off", "On", "Loud"})) << "empty items kept, the value appended";
    EXPECT_EQ(list->ListIndex(), -1);
    EXPECT_EQ(g->TextMatrix(3, 1), "Loud");

    // The pointer over the last "On" makes it current in the list; Enter picks it.
    list->view()->setCurrentIndex(list->model()->index(3, 0));
    QTest::keyClick(list->view(), Qt::Key_Return);
    EXPECT_EQ(g->TextMatrix(3, 1), "On");
    EXPECT_TRUE(list->isVisible());

    // Reopened: the last of two equal items is chosen, and "Loud" is gone.
    g->setFocus();
    QTest::keyClick(g, Qt::Key_Return);
    EXPECT_EQ(list->ListCount(), 4);
    EXPECT_EQ(list->ListIndex(), 3);
    list->setListIndex(1);
    EXPECT_EQ(g->TextMatrix(3, 1), "") << "written before setListIndex returned";
}

TEST_F(EditingTest, LeavingTheTextEditorChecksTheChannelLimitsOfTheRememberedCell)
{
    const std::pair<const char*, const char*> values[] = {
        {"32767", nullptr}, {"32768", "0"}, {"", nullptr}, {"  -1", "0"}, {"3.2767e4", nullptr},
        {"1e5x", "0"}, {"12e", nullptr}, {"1e999", "0"}, {"abc", nullptr},
    };
    host->SetNVFieldItemCount(0, 3);
    item(0, 3, "Secondary CDMA Channel, B band", "99999", "#####", true);
    for (const auto& [text, refused] : values) {
        SCOPED_TRACE(text);
        item(0, 2, "Primary CDMA Channel, A band", QLatin1String(text), "#####", true);
        DialogAnswerer answerer;
        MSFlexGrid* g = select("System NAM1", 0, 2, 1);
        QTest::keyClick(g, Qt::Key_Return);
        // Leaving by a click on another cell: the check names the cell left.
        clickCell(g, 3, 1);
        EXPECT_EQ(g->Row(), 3);
        EXPECT_EQ(g->TextMatrix(2, 1), QLatin1String(refused ? refused : text));
        if (!refused) {
            EXPECT_TRUE(answerer.seen().isEmpty());
            continue;
        }
        EXPECT_EQ(answerer.texts(), QStringList(QStringLiteral("Primary CDMA Channel, A band doesn't allow the value : ") + text));
    }
    // A text cell of the same title holds anything.
    item(0, 2, "Primary CDMA Channel, A band", "40000", "#####", false);
    DialogAnswerer answerer;
    QTest::keyClick(select("System NAM1", 0, 2, 1), Qt::Key_Return);
    QTest::keyClick(box(0), Qt::Key_Return);
    EXPECT_TRUE(answerer.seen().isEmpty());
}

// A host may end the panel from its event loop while a box is open inside a
// handler: the handler comes back to controls that still exist, and the
// panel's rest goes once the box has closed.
TEST_F(EditingTest, HostEndsThePanelWhileABoxIsOpenInsideAHandler)
{
    item(0, 2, "Primary CDMA Channel, A band", "40000", "#####", true);
    MSFlexGrid* g = select("System NAM1", 0, 2, 1);
    DialogAnswerer answerer;
    answerer.answer = [&](QDialog&) { host.reset(); };
    QTest::keyClick(g, Qt::Key_Return);
    QTest::keyClick(box(0), Qt::Key_Return); // the limit box, in txtEdit_LostFocus
    EXPECT_EQ(host, nullptr);
    ASSERT_EQ(answerer.seen().size(), 1);
    const QPointer<MSFlexGrid> rest = g;
    EXPECT_TRUE(QTest::qWaitFor([&] { return rest.isNull(); })) << "the rest goes with the box";
}
