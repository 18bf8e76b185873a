// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The panel's own message box, driven through real keys and mouse moves while
// its modal loop runs.
#include "frame/frmMsgBox.h"
#include "support/DialogAnswerer.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

using namespace tessaly;

namespace {

// Opens `box` modally and runs `inside` in its loop; returns whether the box
// closed by itself.
bool RunModal(frmMsgBox& box, const std::function<void()>& inside)
{
    box.setProperty(DialogAnswerer::DrivenByTest, true);
    bool closedByItself = true;
    QTimer::singleShot(0, &box, [&] {
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&box));
        inside();
        if (box.isVisible()) {
            closedByItself = false;
            box.reject();
        }
    });
    box.exec();
    return closedByItself;
}

} // namespace

class MsgBoxTest : public ::testing::Test {
protected:
    bool showsLook(int index) const
    {
        return box.picCommand->Picture().toImage() == box.imgBtnOK(index)->Picture().toImage();
    }

    frmMsgBox box;
};

TEST_F(MsgBoxTest, OpensCentredWithItsMessageRoundedCornersAndTheLitButtonAndNeverGrows)
{
    const QString text = QStringLiteral("LOCK_CODE would be changed according to MDN");
    box.SetMessage(text);
    EXPECT_TRUE(RunModal(box, [&] {
        EXPECT_EQ(box.lblMessage->Caption(), text);
        EXPECT_EQ(box.size(), QSize(406, 172));
        EXPECT_EQ(box.geometry().center(), QGuiApplication::primaryScreen()->availableGeometry().center());
        EXPECT_TRUE(box.windowFlags() & Qt::FramelessWindowHint);
        EXPECT_TRUE(showsLook(1));
        // Corners cut by an ellipse of 20 by 20: its edge passes 10 pixels in.
        const QRegion shape = box.mask();
        for (QPoint corner : {QPoint(2, 2), QPoint(403, 2), QPoint(2, 169), QPoint(403, 169)})
            EXPECT_FALSE(shape.contains(corner)) << corner.x() << "," << corner.y();
        for (QPoint inside : {QPoint(5, 5), QPoint(10, 0), QPoint(0, 10), QPoint(400, 166), QPoint(203, 86)})
            EXPECT_TRUE(shape.contains(inside)) << inside.x() << "," << inside.y();
        EXPECT_EQ(QApplication::focusWidget(), box.picCommand);
        // A message too long for the box is cut; the box does not grow.
        box.SetMessage(text.repeated(20));
        EXPECT_EQ(box.size(), QSize(406, 172));
        QTest::mouseMove(box.picCommand, QPoint(0, 10)); // the edge is outside
        EXPECT_TRUE(showsLook(0));
        QTest::mouseClick(box.picCommand, Qt::LeftButton, {}, QPoint(40, 15));
    }));
}

TEST_F(MsgBoxTest, TheReleaseOfEnterOrSpaceOnOkClosesIt)
{
    EXPECT_TRUE(RunModal(box, [&] {
        QTest::keyClick(&box, Qt::Key_Escape);
        QTest::keyClick(box.picCommand, Qt::Key_A);
        EXPECT_TRUE(box.isVisible());
        QTest::keyPress(box.picCommand, Qt::Key_Return);
        EXPECT_TRUE(box.isVisible()) << "the press alone does nothing";
        QTest::keyRelease(box.picCommand, Qt::Key_Return);
    }));
    frmMsgBox byButton;
    EXPECT_TRUE(RunModal(byButton, [&] {
        ASSERT_EQ(QApplication::focusWidget(), byButton.picCommand) << "OK has the focus";
        QTest::keyClick(byButton.picCommand, Qt::Key_Space);
    }));

    // An Enter held down before the box opened closes it when let go, and
    // the form sees the release once, not again from the focused control.
    frmMsgBox second;
    int closings = 0;
    QObject::connect(&second, &QDialog::accepted, [&] { ++closings; });
    EXPECT_TRUE(RunModal(second, [&] { QTest::keyRelease(second.picCommand, Qt::Key_Enter); }));
    EXPECT_EQ(closings, 1);
}

TEST_F(MsgBoxTest, DraggingTheTitleMovesTheBoxAloneAndOnlyWithTheLeftButton)
{
    QWidget owner;
    owner.setGeometry(50, 50, 300, 200);
    owner.show();
    const QPoint ownerAt = owner.pos();
    frmMsgBox owned(&owner);
    RunModal(owned, [&] {
        const QPoint start = owned.pos();
        QTest::mouseMove(owned.lblTitle, QPoint(60, 12));
        QTest::mousePress(owned.lblTitle, Qt::RightButton, {}, QPoint(60, 12));
        QTest::mouseMove(owned.lblTitle, QPoint(90, 30));
        QTest::mouseRelease(owned.lblTitle, Qt::RightButton, {}, QPoint(90, 30));
        EXPECT_EQ(owned.pos(), start) << "no button, or the right one, drags nothing";

        QTest::mousePress(owned.lblTitle, Qt::LeftButton, {}, QPoint(60, 12));
        QTest::mouseMove(owned.lblTitle, QPoint(61, 12)); // the drag starts here
        QTest::mouseMove(owned.lblTitle, QPoint(101, 42));
        EXPECT_EQ(owned.pos(), start + QPoint(40, 30));
        QTest::mouseRelease(owned.lblTitle, Qt::LeftButton, {}, QPoint(61, 12)); // it moved along
        QTest::mouseMove(owned.lblTitle, QPoint(10, 10));
        EXPECT_EQ(owned.pos(), start + QPoint(40, 30)) << "the drag ends with the button";
        EXPECT_EQ(owner.pos(), ownerAt);
    });
}
