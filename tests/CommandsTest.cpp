// The panel at work on a model: binding, the command bar's looks and runs,
// the progress drawn from the model's events, the wheel and the window frame.
// The model here is the tests' own: it raises events in chosen orders and
// fails on demand.
#include "frame/modWheelScroll.h"
#include "platform/MouseCapture.h"
#include "support/PanelFixture.h"

#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>

#include <functional>

using namespace tessaly;

namespace {

class TestModel : public IBaseModel {
public:
    std::function<void(TestModel&)> onRead, onWrite, onRestore;
    QString name = QStringLiteral("Test Phone"), port = QStringLiteral("7");
    QStringList calls;

    void NVRead() override { run("NVRead", onRead); }
    void GetModelName(QString& out) override { out = name; }
    void GetPortNumber(QString& out) override { out = port; }
    void NVWrite() override { run("NVWrite", onWrite); }
    void NVRestore() override { run("NVRestore", onRestore); }

    // A command of `steps` steps, announced first.
    void steps(int32_t total, int32_t steps)
    {
        emit GetTotalProgressCount(total, 7);
        for (int i = 0; i < steps; ++i)
            emit StepIt(7);
    }

private:
    void run(const char* call, const std::function<void(TestModel&)>& body)
    {
        calls << QLatin1String(call);
        if (body)
            body(*this);
    }
};

class CommandsTest : public PanelFixture {
protected:
    void SetUp() override
    {
        PanelFixture::SetUp();
        host->SetModelDLL(&model);
    }

    PictureBox* button(int index) { return panel().picCommand(index); }
    bool shows(int index, const Image* look) { return button(index)->Picture().cacheKey() == look->Picture().cacheKey(); }
    void click(int index) { QTest::mouseClick(button(index), Qt::LeftButton, {}, QPoint(20, 10)); }

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

TEST_F(CommandsTest, BindingNamesTheModelAndItsPortAndDroppingItRefusesCommands)
{
    EXPECT_EQ(panel().lblModelPortInfo->Caption(), "Test Phone  (COM7)");
    TestModel unnamed;
    unnamed.port.clear();
    host->SetModelDLL(&unnamed);
    EXPECT_EQ(panel().lblModelPortInfo->Caption(), "Test Phone  (COM)");
    emit model.GetTotalProgressCount(50, 7); // the earlier model is no longer heard
    EXPECT_EQ(panel().g_lTotalProgressCount, 0);

    host->SetModelDLL(nullptr);
    EXPECT_EQ(panel().lblModelPortInfo->Caption(), "No Phone");
    DialogAnswerer answerer;
    click(0);
    ASSERT_EQ(answerer.seen().size(), 1);
    EXPECT_EQ(answerer.seen()[0].text, "Error : There is no selected model");
    EXPECT_EQ(answerer.seen()[0].icon, QMessageBox::Critical);
    EXPECT_FALSE(panel().g_bCommandBusy);
    EXPECT_TRUE(button(0)->isEnabled());
    EXPECT_EQ(host->cursor().shape(), Qt::ArrowCursor) << "the hourglass is gone";

    // A model deleted by its host while bound is as none.
    auto* doomed = new TestModel;
    host->SetModelDLL(doomed);
    delete doomed;
    click(0);
    EXPECT_EQ(answerer.seen().size(), 2);
}

TEST_F(CommandsTest, ButtonsLightUnderThePointerStrictlyInsideAndShowPressAndDim)
{
    Panel& p = panel();
    QTest::mouseMove(button(0), QPoint(5, 5));
    EXPECT_TRUE(shows(0, p.imageReadOver));
    EXPECT_EQ(GetCapture(), button(0));
    QTest::mouseMove(button(0), QPoint(0, 5)); // the edge is outside
    EXPECT_TRUE(shows(0, p.imageReadIdle));
    EXPECT_EQ(GetCapture(), nullptr);
    QTest::mousePress(button(0), Qt::RightButton, {}, QPoint(5, 5));
    EXPECT_TRUE(shows(0, p.imageReadSel)) << "any mouse button presses";
    QTest::mouseRelease(button(0), Qt::RightButton, {}, QPoint(5, 5));

    // Before the first NV Read, NV Write and Restore neither light nor press.
    QTest::mouseMove(button(1), QPoint(5, 5));
    QTest::mousePress(button(1), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_TRUE(shows(1, p.imageWriteDim));
    QTest::mouseRelease(button(1), Qt::LeftButton, {}, QPoint(5, 5)); // a click that runs nothing
    EXPECT_TRUE(model.calls.isEmpty());
    EXPECT_TRUE(shows(1, p.imageWriteDim));
    EXPECT_TRUE(shows(3, p.imageUndoDim));
    ReleaseCapture();
}

TEST_F(CommandsTest, CommandRunsWithTheBarDimmedThenOffersWriteAndRestore)
{
    Panel& p = panel();
    QStringList seenDuring;
    model.onRead = [&](TestModel& m) {
        seenDuring << p.lblProcess->Caption() << p.lblPercent->Caption();
        EXPECT_TRUE(p.g_bCommandBusy);
        EXPECT_EQ(p.g_nActiveCommand, 0);
        EXPECT_TRUE(shows(0, p.imageReadSel) && shows(1, p.imageWriteDim) && shows(2, p.imageExitDim));
        EXPECT_FALSE(button(2)->isEnabled());
        EXPECT_EQ(host->cursor().shape(), Qt::WaitCursor);
        host->AddItemToGrd(2, {}, false, false, {}, QStringLiteral("x"), 40, 1);
        grid(2)->setTopRow(30);
        m.steps(4, 4);
        // A click queued while the command holds the thread is lost.
        QCoreApplication::postEvent(button(0), new QMouseEvent(QEvent::MouseButtonRelease, QPointF(5, 5),
                                                               QPointF(5, 5), Qt::LeftButton, Qt::NoButton, {}));
    };
    click(0);
    EXPECT_EQ(seenDuring, QStringList({"NV Read", "0 %"}));
    EXPECT_EQ(model.calls, QStringList{"NVRead"});
    EXPECT_EQ(p.lblPercent->Caption(), "Complete");
    EXPECT_EQ(grid(2)->TopRow(), 1) << "every grid sent home after the call";
    EXPECT_TRUE(p.g_bNVReadDone && !p.g_bCommandBusy);
    EXPECT_TRUE(shows(1, p.imageWriteIdle) && shows(3, p.imageUndoIdle));
    EXPECT_EQ(host->cursor().shape(), Qt::ArrowCursor);

    // Restore runs with its idle look, clears the step counter itself and
    // leaves the old bar until the next draw.
    model.onRestore = [&](TestModel&) {
        EXPECT_TRUE(shows(3, p.imageUndoIdle) && shows(0, p.imageReadDim));
        EXPECT_EQ(p.g_lProgressCount, 0);
        EXPECT_EQ(barWidth(), 169);
    };
    click(3);
    click(1);
    EXPECT_EQ(model.calls, QStringList({"NVRead", "NVRestore", "NVWrite"}));
    EXPECT_EQ(p.lblProcess->Caption(), "NV Write");
}

TEST_F(CommandsTest, FailingModelCallIsReportedAndLeavesTheBarStopped)
{
    model.onRead = [](TestModel&) { throw TessalyError(1001, QStringLiteral("Handset does not answer")); };
    DialogAnswerer answerer;
    click(0);
    EXPECT_EQ(answerer.texts(),
              QStringList{"Error[Event_Function/picCommand_Click]:1001\tHandset does not answer\t"});
    EXPECT_TRUE(panel().g_bCommandBusy);
    EXPECT_FALSE(panel().g_bNVReadDone);
    EXPECT_FALSE(button(0)->isEnabled());
    // Other failures carry their text under a number of the panel's own.
    panel().g_bCommandBusy = false;
    panel().SetDefaultButtonState();
    model.onRead = [](TestModel&) { throw std::runtime_error("cable unplugged"); };
    click(0);
    ASSERT_EQ(answerer.texts().size(), 2);
    EXPECT_TRUE(answerer.texts()[1].endsWith(":440\tcable unplugged\t"));
}

TEST_F(CommandsTest, ProgressDrawsOncePerWholePercentRoundingHalvesToEven)
{
    struct PaintCounter : QObject {
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override { return (paints += event->type() == QEvent::Paint), false; }
    } counter;
    Panel& p = panel();
    p.lblPercent->installEventFilter(&counter);
    QStringList captions;
    QList<int> widths;
    model.onRead = [&](TestModel& m) {
        emit m.GetTotalProgressCount(200, 7);
        for (int step = 1; step <= 7; ++step) {
            const int before = counter.paints;
            emit m.StepIt(7);
            captions << p.lblPercent->Caption() + (counter.paints > before ? "*" : "");
            widths << barWidth();
        }
        // On the screen already, while the model still holds the thread.
        const QImage screen = host->screen()->grabWindow(host->winId()).toImage();
        EXPECT_EQ(screen.pixel(p.pbProgressBg->mapTo(host.get(), QPoint(3, 8))),
                  p.pbProgress->Picture().toImage().pixel(2, 7));
        for (int step = 8; step <= 199; ++step)
            emit m.StepIt(7);
        captions << p.lblPercent->Caption();
        // A sub-process ending sets the counter back; the wider bar stays.
        emit m.GetSubTotalProgressCount(QStringLiteral("NAM"), 50, 7);
        emit m.GetTotalProgressCount(200, 7);
        emit m.SetSubProcessStep(3, 2, 7);
        emit m.StepIt(7);
        captions << p.lblPercent->Caption();
        widths << barWidth();
    };
    click(0);
    EXPECT_EQ(captions, QStringList({"0 %", "1 %*", "2 %*", "2 %", "2 %", "3 %*", "4 %*", "Complete", "26 %"}));
    EXPECT_EQ(widths, QList<int>({0, 2, 3, 3, 3, 5, 7, 169}));

    // A step before any total is told, once per step.
    DialogAnswerer answerer;
    p.g_lTotalProgressCount = 0;
    emit model.StepIt(7);
    emit model.StepIt(7);
    EXPECT_EQ(answerer.texts(), QStringList({"Sub Total Count Not Set", "Sub Total Count Not Set"}));
}

TEST_F(CommandsTest, WheelMovesHookedGridsOneRowAndReleaseTakesTheHooksOff)
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
    {
        Tessaly other;
        ASSERT_TRUE(HasWheelScroll(PanelOf(other).MSFlexGrid1(2)));
    }
    EXPECT_EQ(turn(g->viewport(), 120), 5);
    panel().ReleaseWheel();
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
    for (int index : {2, -1}) {
        Host window;
        window.show();
        QPointer<Tessaly> panel = window.panel;
        Panel& p = PanelOf(*panel);
        if (index == 2) {
            QTest::mouseClick(p.picCommand(2), Qt::LeftButton, {}, QPoint(20, 10)); // no model needed
        } else {
            QTest::mousePress(p.imgWndClose, Qt::LeftButton, {}, QPoint(5, 5));
            EXPECT_EQ(p.imgWndClose->Picture().cacheKey(), p.imageCloseSel->Picture().cacheKey());
            QTest::mouseRelease(p.imgWndClose, Qt::LeftButton, {}, QPoint(5, 5));
        }
        EXPECT_TRUE(panel.isNull()) << index;
    }

    // A click on the close button during a command waits for the command's
    // one pass of the event loop, and the command still ends properly.
    Panel& p = panel();
    model.onRead = [&](TestModel&) {
        for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            QCoreApplication::postEvent(p.imgWndClose, new QMouseEvent(type, QPointF(5, 5), QPointF(5, 5), Qt::LeftButton,
                                                                       type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, {}));
        EXPECT_TRUE(host->isVisible());
    };
    click(0);
    EXPECT_FALSE(host->isVisible());
    EXPECT_FALSE(p.g_bCommandBusy);
    EXPECT_FALSE(HasWheelScroll(grid(0)));
    host->show();

    // Minimise leaves the hooks; the pressed look lasts while the button is held.
    SetWheelScroll(grid(0), 1);
    QTest::mousePress(p.imgWndMin, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(p.imgWndMin->Picture().cacheKey(), p.imageMinimizeSel->Picture().cacheKey());
    QTest::mouseRelease(p.imgWndMin, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(p.imgWndMin->Picture().cacheKey(), p.imageMinize->Picture().cacheKey());
    EXPECT_TRUE(host->isMinimized());
    EXPECT_TRUE(HasWheelScroll(grid(0)));
}
