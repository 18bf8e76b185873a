// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The panel's construction through the end of start-up, beside the same
// dressing of 21 page grids done with QTableWidget.
#include <tessaly/Tessaly.h>

#include <QTableWidget>

#include <benchmark/benchmark.h>

#include <array>
#include <memory>
#include <vector>

namespace {

void PanelStartup(benchmark::State& state)
{
    for (auto _ : state) {
        auto panel = std::make_unique<Tessaly>();
        benchmark::DoNotOptimize(panel.get());
        state.PauseTiming();
        panel.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(PanelStartup)->Unit(benchmark::kMillisecond);

// Columns of pages 0 to 20 after start-up.
constexpr std::array<int, 21> PageCols = {23, 4, 2, 7, 2, 3, 3, 3, 3, 2, 10, 10, 3, 41, 2, 2, 2, 2, 2, 2, 23};

void QTableWidgetStartupDressing(benchmark::State& state)
{
    const QBrush shade(QColor(240, 240, 240));
    for (auto _ : state) {
        auto form = std::make_unique<QWidget>();
        for (int cols : PageCols) {
            auto* table = new QTableWidget(100, cols, form.get());
            table->resize(449, 457);
            table->setColumnWidth(0, 233);
            for (int col = 1; col < cols; ++col)
                table->setColumnWidth(col, 100);
            for (int col = 0; col < cols; ++col) {
                for (int row = 0; row < 100; ++row) {
                    auto* item = new QTableWidgetItem;
                    item->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
                    if (row % 2 == 1)
                        item->setBackground(shade);
                    table->setItem(row, col, item);
                }
            }
            for (int row = 0; row < 100; ++row)
                table->setRowHeight(row, 20);
            table->setFont(QFont(QStringLiteral("Tahoma"), 9));
            table->setGridStyle(Qt::SolidLine);
            table->hide();
        }
        benchmark::DoNotOptimize(form.get());
        state.PauseTiming();
        form.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(QTableWidgetStartupDressing)->Unit(benchmark::kMillisecond);

} // namespace

namespace {

// A page of the host's own added to a started panel: its controls, its grid
// dressed, and the cell store rebuilt for 22 pages, keeping every record.
// Removing it again keeps the panel the same for the next round.
void PanelAddTab(benchmark::State& state)
{
    Tessaly panel;
    for (auto _ : state) {
        const int16_t page = panel.AddTab(QStringLiteral("Roaming List"), 7);
        state.PauseTiming();
        panel.RemoveTab(page);
        state.ResumeTiming();
    }
}
BENCHMARK(PanelAddTab)->Unit(benchmark::kMicrosecond);

} // namespace
