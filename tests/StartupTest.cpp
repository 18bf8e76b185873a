// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// A new panel at rest: once drawn, it asks for no more paints.
#include "support/PanelFixture.h"

using namespace tessaly;

using StartupTest = PanelFixture;

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
