// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Ten million progress steps of a model on a total of ten million, beside a
// QProgressBar set to each count of a million (it takes a few microseconds a
// step, so the same ten million would take a minute; compare items per
// second). The panel draws its bar and percentage only when the whole
// percentage changes, QProgressBar whenever its drawing would.
#include <tessaly/Tessaly.h>

#include <QApplication>
#include <QLabel>
#include <QProgressBar>

#include <benchmark/benchmark.h>

namespace {

constexpr int32_t Steps = 10'000'000;

// Raises the events straight away; the panel's command bar plays no part.
struct StepModel : IBaseModel {
    void NVRead() override {}
    void GetModelName(QString& name) override { name = QStringLiteral("Bench"); }
    void GetPortNumber(QString& port) override { port = QStringLiteral("1"); }
    void NVWrite() override {}
    void NVRestore() override {}
};

struct DrawCounter : QObject {
    int draws = 0;
    bool eventFilter(QObject*, QEvent* event) override
    {
        draws += event->type() == QEvent::Paint;
        return false;
    }
};

void PanelStepIt(benchmark::State& state)
{
    Tessaly panel;
    StepModel model;
    panel.SetModelDLL(&model);
    panel.show();
    QApplication::processEvents();
    DrawCounter counter;
    panel.findChild<QLabel*>(QStringLiteral("lblPercent"))->installEventFilter(&counter);
    for (auto _ : state) {
        emit model.SetProcessStep(1, 1, 1); // the counter back to 0
        emit model.GetTotalProgressCount(Steps, 1);
        for (int32_t step = 0; step < Steps; ++step)
            emit model.StepIt(1);
    }
    state.SetItemsProcessed(state.iterations() * Steps);
    state.counters["draws"] = double(counter.draws) / double(state.iterations());
}
BENCHMARK(PanelStepIt)->Unit(benchmark::kMillisecond)->Iterations(3);

void QProgressBarSetValue(benchmark::State& state)
{
    constexpr int32_t BarSteps = Steps / 10;
    QProgressBar bar;
    bar.resize(169, 17);
    bar.setRange(0, BarSteps);
    bar.show();
    QApplication::processEvents();
    DrawCounter counter;
    bar.installEventFilter(&counter);
    for (auto _ : state) {
        bar.reset();
        for (int32_t step = 1; step <= BarSteps; ++step)
            bar.setValue(step); // repaints at once when what it shows changes
    }
    state.SetItemsProcessed(state.iterations() * BarSteps);
    state.counters["draws"] = double(counter.draws) / double(state.iterations());
}
BENCHMARK(QProgressBarSetValue)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
