// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The panel at work on a model: binding, the command bar's looks and runs,
// the progress drawn from the model's events, the wheel and the window frame.
// The model here is the tests' own: it raises events in chosen orders and
// fails on demand.
#include "frame/modWheelScroll.h"
#include "support/PanelFixture.h"
#include "support/TestModel.h"

#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>

#include <cmath>

using namespace tessaly;

namespace {

class CommandsTest : public PanelFixture {
protected:
    void SetUp() override
    {
        PanelFixture::SetUp();
        host->SetModelDLL(&model);
    }

    PictureBox* button(int index) { return panel().picCommand(index); }
    // Whether the button shows the skin's bitmap of that name.
    bool shows(int index, const char* look)
    {
        return button(index)->Picture().cacheKey() == control<Image>(QLatin1String(look))->Picture().cacheKey();
    }

    // Pixels of the filled bar copied onto the empty one at (1, 1), counted
    // along its middle row.
    int barWidth()
    {
        const QImage bar = panel().pbProgressBg->Surface().toImage();
        const QImage fill = panel().pbProgress->Picture().toImage();
        int width = 0;
        while (width + 1 < bar.width() && width < fill.width() && bar.pixel(width + 1, 8) == fill.pixel(width, 7))
            ++width;
        return width;
    }

    TestModel model;
};

} // namespace

TEST_F(CommandsTest, RebindingLeavesTheEarlierModelAndNoneRefusesCommands)
{
    TestModel other;
    host->SetModelDLL(&other);
    DialogAnswerer answerer;
    emit model.StepIt(7); // the earlier model is no longer heard: no total, yet no box

    host->SetModelDLL(nullptr);
    EXPECT_EQ(panel().lblModelPortInfo->Caption(), "No Phone");
    clickCommand(0);
    EXPECT_EQ(answerer.texts(), QStringList{"Error : There is no selected model"});
    EXPECT_TRUE(button(0)->isEnabled());
    EXPECT_EQ(host->cursor().shape(), Qt::ArrowCursor) << "the hourglass is gone";

    // A model deleted by its host while bound is as none.
    auto* doomed = new TestModel;
    host->SetModelDLL(doomed);
    delete doomed;
    clickCommand(0);
    EXPECT_EQ(answerer.seen().size(), 2);
}

TEST_F(CommandsTest, CommandRunsWithTheBarDimmedThenOffersWriteAndRestore)
{
    // Any mouse button presses a button; before the first NV Read, NV Write
    // and Restore are dim, and a click on them runs nothing.
    QTest::mouseClick(button(0), Qt::RightButton, {}, QPoint(20, 10));
    EXPECT_TRUE(shows(0, "imageReadSel"));
    clickCommand(1);
    EXPECT_TRUE(model.calls.isEmpty());
    EXPECT_TRUE(shows(1, "imageWriteDim") && shows(3, "imageUndoDim"));
    QStringList seenDuring;
    model.onRead = [&](TestModel& m) {
        seenDuring << panel().lblProcess->Caption() << panel().lblPercent->Caption();
        EXPECT_TRUE(shows(0, "imageReadSel") && shows(1, "imageWriteDim") && shows(2, "imageExitDim"));
        EXPECT_FALSE(button(0)->isEnabled() || button(2)->isEnabled());
        EXPECT_EQ(host->cursor().shape(), Qt::WaitCursor);
        host->AddItemToGrd(2, {}, false, false, {}, QStringLiteral("x"), 40, 1);
        grid(2)->setTopRow(30);
        m.steps(4, 4);
        // A click queued while the command holds the thread is lost.
        QCoreApplication::postEvent(button(0), new QMouseEvent(QEvent::MouseButtonRelease, QPointF(5, 5),
                                                               QPointF(5, 5), Qt::LeftButton, Qt::NoButton, {}));
    };
    clickCommand(0);
    EXPECT_EQ(seenDuring, QStringList({"NV Read", "0 %"}));
    EXPECT_EQ(model.calls, QStringList{"NVRead"});
    EXPECT_EQ(panel().lblPercent->Caption(), "Complete");
    EXPECT_EQ(grid(2)->TopRow(), 1) << "every grid sent home after the call";
    EXPECT_TRUE(shows(1, "imageWriteIdle") && shows(3, "imageUndoIdle"));
    EXPECT_TRUE(button(0)->isEnabled());
    EXPECT_EQ(host->cursor().shape(), Qt::ArrowCursor);

    // Restore runs with its rest look and counts from 0, drawing its fill
    // over the full bar of the read, which stays until the bar is refreshed.
    QList<int> widths;
    model.onRestore = [&](TestModel& m) {
        EXPECT_TRUE(shows(3, "imageUndoIdle") && shows(0, "imageReadDim"));
        widths << barWidth();
        m.steps(200, 2);
        widths << barWidth();
        EXPECT_EQ(panel().lblPercent->Caption(), "1 %");
    };
    clickCommand(3);
    EXPECT_EQ(widths, QList<int>({169, 169}));
    model.onWrite = [&](TestModel&) { EXPECT_EQ(barWidth(), 0) << "a read or write starts on an empty bar"; };
    clickCommand(1);
    EXPECT_EQ(model.calls, QStringList({"NVRead", "NVRestore", "NVWrite"}));
    EXPECT_EQ(panel().lblProcess->Caption(), "NV Write");
}

TEST_F(CommandsTest, FailingModelCallIsReportedAndLeavesTheBarStopped)
{
    model.onRead = [](TestModel&) { throw TessalyError(1001, QStringLiteral("Handset does not answer")); };
    DialogAnswerer answerer;
    clickCommand(0);
    EXPECT_EQ(answerer.texts(),
              QStringList{"Error[Event_Function/picCommand_Click]:1001\tHandset does not answer\t"});
    EXPECT_FALSE(button(0)->isEnabled());
    EXPECT_TRUE(shows(1, "imageWriteDim")) << "no read has completed";
    clickCommand(0);
    EXPECT_EQ(model.calls.size(), 1) << "the bar no longer answers";
}

TEST_F(CommandsTest, ProgressDrawsOncePerWholePercentRoundingHalvesToEven)
{
    // A step before any total is told, once per step.
    {
        DialogAnswerer answerer;
        emit model.StepIt(7);
        emit model.StepIt(7);
        EXPECT_EQ(answerer.texts(), QStringList({"Sub Total Count Not Set", "Sub Total Count Not Set"}));
    }
    struct PaintCounter : QObject {
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override { return (paints += event->type() == QEvent::Paint), false; }
    } counter;
    panel().lblPercent->installEventFilter(&counter);
    QStringList captions;
    QList<int> widths;
    model.onRead = [&](TestModel& m) {
        emit m.GetTotalProgressCount(200, 7);
        emit m.SetProcessStep(1, 1, 7);
        for (int step = 1; step <= 7; ++step) {
            const int before = counter.paints;
            emit m.StepIt(7);
            captions << panel().lblPercent->Caption() + (counter.paints > before ? "*" : "");
            widths << barWidth();
        }
        // On the screen already, while the model still holds the thread.
        const QImage screen = host->screen()->grabWindow(host->winId()).toImage();
        EXPECT_EQ(screen.pixel(panel().pbProgressBg->mapTo(host.get(), QPoint(3, 8))),
                  panel().pbProgress->Picture().toImage().pixel(2, 7));
        // One draw at each change of the whole percentage, halves to even.
        int changes = 0;
        const int before = counter.paints;
        for (int step = 8; step <= 199; ++step) {
            changes += std::nearbyint(step / 2.0) != std::nearbyint((step - 1) / 2.0);
            emit m.StepIt(7);
        }
        EXPECT_EQ(counter.paints - before, changes);
        captions << panel().lblPercent->Caption();
        // A sub-process ending sets the counter back; the wider bar stays.
        emit m.GetSubTotalProgressCount(QStringLiteral("NAM"), 50, 7);
        emit m.GetTotalProgressCount(200, 7);
        emit m.SetSubProcessStep(3, 2, 7);
        emit m.StepIt(7);
        captions << panel().lblPercent->Caption();
        widths << barWidth();
    };
    clickCommand(0);
    EXPECT_EQ(captions, QStringList({"0 %", "1 %*", "2 %*", "2 %", "2 %", "3 %*", "4 %*", "Complete", "26 %"}));
    EXPECT_EQ(widths, QList<int>({0, 2, 3, 3, 3, 5, 7, 169}));
    // A repaint of the panel rebuilds the bar from the counters.
    host->repaint();
    EXPECT_EQ(barWidth(), 44);
}

TEST_F(CommandsTest, WheelMovesHookedGridsOneRowUntilTheWindowCloses)
{
    clickNode(QStringLiteral("Data"));
    MSFlexGrid* g = grid(2);
    g->setTopRow(5);
    const auto turn = [&](QWidget* over, int delta) {
        QWheelEvent wheel(QPointF(10, 10), over->mapToGlobal(QPointF(10, 10)), {}, QPoint(0, delta), Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(over, &wheel);
        return g->TopRow();
    };
    EXPECT_EQ(turn(g->viewport(), 240), 4) << "one row, whatever the size of the turn";
    EXPECT_EQ(turn(g->viewport(), -120), 5);
    EXPECT_EQ(turn(g->verticalScrollBar(), 0), 6) << "no turn counts as down, over the scroll bar too";

    // An ended panel leaves records that disturb no one.
    delete new Tessaly;
    EXPECT_EQ(turn(g->viewport(), 120), 5);
    QTest::mouseClick(panel().imgWndClose, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_FALSE(HasWheelScroll(g));
    EXPECT_EQ(turn(g->viewport(), 120), 5);
}

TEST_F(CommandsTest, ExitAndCloseAskTheHostWindowToCloseWhichMayEndThePanel)
{
    // A host that destroys the panel inside the close request.
    struct Host : QWidget {
        Tessaly* panel = new Tessaly(this);
        void closeEvent(QCloseEvent*) override { delete std::exchange(panel, nullptr); }
    };
    for (const char* name : {"picCommand(2)", "imgWndClose"}) {
        Host window;
        window.show();
        QPointer<Tessaly> panel = window.panel;
        auto* closer = panel->findChild<QWidget*>(QLatin1String(name));
        QTest::mousePress(closer, Qt::LeftButton, {}, QPoint(5, 5)); // no model needed
        QTest::mouseRelease(closer, Qt::LeftButton, {}, QPoint(5, 5));
        EXPECT_TRUE(panel.isNull()) << name;
    }

    // A click on the close button during a command waits for the command's
    // one pass of the event loop, and the command still ends properly.
    model.onRead = [&](TestModel&) {
        for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            QCoreApplication::postEvent(panel().imgWndClose,
                                        new QMouseEvent(type, QPointF(5, 5), QPointF(5, 5), Qt::LeftButton,
                                                        type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, {}));
        EXPECT_TRUE(host->isVisible());
    };
    clickCommand(0);
    EXPECT_FALSE(host->isVisible());
    EXPECT_TRUE(button(0)->isEnabled());
    EXPECT_FALSE(HasWheelScroll(grid(0)));
    host->show();

    // Minimise leaves the hooks; the pressed look lasts while the button is held.
    SetWheelScroll(grid(0), 1);
    Image* minimise = panel().imgWndMin;
    QTest::mousePress(minimise, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(minimise->Picture().cacheKey(), control<Image>(QStringLiteral("imageMinimizeSel"))->Picture().cacheKey());
    QTest::mouseRelease(minimise, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_TRUE(host->isMinimized());
    EXPECT_TRUE(HasWheelScroll(grid(0)));
}
