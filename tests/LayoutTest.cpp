// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The panel's controls as the user finds them: every one on view inside the
// panel and its container, and none covering another that must show.
#include "support/PanelFixture.h"

using namespace tessaly;

using LayoutTest = PanelFixture;

namespace {

// The controls shown directly on the panel or on the page on view, with
// their rectangles in the panel's pixels.
QList<QWidget*> ShownControls(QWidget* container)
{
    QList<QWidget*> shown;
    for (QObject* child : container->children())
        if (auto* control = qobject_cast<QWidget*>(child); control && control->isVisible())
            shown << control << ShownControls(control);
    return shown;
}

} // namespace

// The filled bar is the source the empty one copies from: it lies wholly
// beyond the panel's bottom edge, never seen itself.
TEST_F(LayoutTest, EveryControlOnViewLiesInsideThePanelAndItsContainer)
{
    for (const char* node : {"Basic Information", "MIP Profile", "System NAM1", "Calibration"}) {
        clickNode(QLatin1String(node));
        for (QWidget* control : ShownControls(host.get())) {
            SCOPED_TRACE(qPrintable(control->objectName()));
            const QRect inPanel(control->mapTo(host.get(), QPoint(0, 0)), control->size());
            if (control == panel().pbProgress) {
                EXPECT_FALSE(host->rect().intersects(inPanel));
                continue;
            }
            // The data frames' backdrops reach a little beyond them and are cut there.
            if (control == panel().imgDataBack || control == panel().imgMIPProfile)
                continue;
            EXPECT_TRUE(host->rect().contains(inPanel));
            EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry()));
        }
    }
}

TEST_F(LayoutTest, NothingLiesOverAControlThatMustShow)
{
    const PanelControls& p = panel();
    const QList<QWidget*> mustShow = {
        p.OrvenTreeView1, p.picCommand(0), p.picCommand(1), p.picCommand(2), p.picCommand(3), p.pbProgressBg,
        p.fralabelPercent, p.lblProcess, p.lblModelPortInfo, p.lblDataTitle, p.lblTitle, p.imgWndMin,
        p.imgWndClose, p.fraBasicInfo,
    };
    // Neighbours may share their edge pixels.
    for (QWidget* control : mustShow) {
        SCOPED_TRACE(qPrintable(control->objectName()));
        const QObjectList stack = control->parentWidget()->children(); // bottom first
        for (qsizetype above = stack.indexOf(control) + 1; above < stack.size(); ++above) {
            auto* other = qobject_cast<QWidget*>(stack[above]);
            if (other && other->isVisible()) {
                EXPECT_FALSE(other->geometry().intersects(control->geometry().adjusted(1, 1, -1, -1)))
                    << qPrintable(other->objectName());
            }
        }
    }
}


// Every view of a node takes the same place right of the tree, an added page
// too, and its grid fills it: a page never shows beside or under another.
TEST_F(LayoutTest, EveryNodesViewFillsTheOneDataArea)
{
    const short added = host->AddTab(QStringLiteral("Mine"), 3);
    const QRect area = panel().fraBasicInfo->geometry();
    EXPECT_EQ(panel().fraMIPProfile->geometry(), area);
    for (int page = 0; page <= added; ++page) {
        SCOPED_TRACE(page);
        EXPECT_EQ(frame(page)->geometry(), area);
        EXPECT_EQ(grid(page)->geometry(), QRect(QPoint(0, 0), area.size()));
    }
    // An added page's node shows its view alone, as each fixed page's does.
    clickNode(QStringLiteral("Mine"));
    EXPECT_TRUE(frame(added)->isVisible() && shownPages().isEmpty());
    EXPECT_FALSE(panel().fraBasicInfo->isVisible() || panel().fraMIPProfile->isVisible());
}
