// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The hover rule and looks of an image button, on a bare picture box.
#include "frame/ImageButtonLook.h"
#include "platform/MouseCapture.h"
#include "platform/Pictures.h"

#include <QTest>

#include <gtest/gtest.h>

using namespace tessaly;

namespace {

QPixmap Filled(Qt::GlobalColor color)
{
    QPixmap picture(81, 31);
    picture.fill(color);
    return picture;
}

class ImageButtonLookTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        button->Move(150, 150, 1215, 465); // 81 by 31 pixels
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    void TearDown() override { ReleaseCapture(); }

    bool shows(const QPixmap& look) const { return button->Picture().cacheKey() == look.cacheKey(); }
    // A move to (x, y) pixels, as the button's MouseMove reports it.
    void move(int x, int y, bool live = true) { look.MouseMove(ToTwips(x), ToTwips(y), live); }

    QWidget window;
    PictureBox* button = new PictureBox(&window);
    ButtonLooks looks{Filled(Qt::gray), Filled(Qt::yellow), Filled(Qt::blue), Filled(Qt::darkGray)};
    ImageButtonLook look{button, looks};
};

} // namespace

TEST_F(ImageButtonLookTest, LightsStrictlyInsideAndHoldsTheCaptureToSeeThePointerLeave)
{
    look.ShowRest();
    move(1, 1);
    EXPECT_TRUE(shows(looks.hover));
    EXPECT_EQ(GetCapture(), button);
    look.ShowPressed();
    move(40, 15);
    EXPECT_TRUE(shows(looks.pressed)) << "inside with the capture held, the look stays";
    move(81, 10);
    EXPECT_TRUE(shows(looks.rest));
    EXPECT_EQ(GetCapture(), nullptr);
    move(80, 30);
    EXPECT_TRUE(shows(looks.hover));
    for (QPoint edge : {QPoint(0, 10), QPoint(10, 0)}) {
        move(40, 15);
        move(edge.x(), edge.y());
        EXPECT_TRUE(shows(looks.rest) && !GetCapture()) << edge.x() << "," << edge.y();
    }
}

TEST_F(ImageButtonLookTest, ButtonNotLiveFollowsThePointerButKeepsItsLook)
{
    look.ShowAtRest(false);
    EXPECT_TRUE(shows(looks.dimmed));
    move(10, 10, false);
    EXPECT_EQ(GetCapture(), button);
    move(100, 10, false);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_TRUE(shows(looks.dimmed));
    // A look the button has no bitmap for is its rest look.
    ImageButtonLook plain(button, ButtonLooks{looks.rest, {}, {}, {}});
    plain.ShowPressed();
    EXPECT_TRUE(shows(looks.rest));
}
