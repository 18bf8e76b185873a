// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Filling every cell of the widest page, 41 columns by 100 rows, with
// AddItemToGrd, beside filling a QTableWidget of that shape with the same
// texts and the same attributes kept in item data.
#include <tessaly/Tessaly.h>

#include <QTableWidget>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

constexpr int Rows = 100;
constexpr int Cols = 41;

std::vector<QString> CellTexts()
{
    std::vector<QString> texts;
    for (int i = 0; i < Rows * Cols; ++i)
        texts.push_back(QString::number((i * 7919) % 65536));
    return texts;
}

void AddItemToGrdFillPage(benchmark::State& state)
{
    const std::vector<QString> texts = CellTexts();
    const QString format = QStringLiteral("#####");
    Tessaly panel;
    for (auto _ : state) {
        for (int col = 0; col < Cols; ++col)
            for (int row = 0; row < Rows; ++row)
                panel.AddItemToGrd(13, format, true, row % 5 == 0, QString(), texts[size_t(row * Cols + col)], row, col);
    }
    state.SetItemsProcessed(state.iterations() * Rows * Cols);
}
BENCHMARK(AddItemToGrdFillPage)->Unit(benchmark::kMicrosecond);

void QTableWidgetFillPage(benchmark::State& state)
{
    const std::vector<QString> texts = CellTexts();
    const QString format = QStringLiteral("#####");
    const QBrush editable(QColor(73, 73, 73));
    const QBrush readOnly(QColor(160, 160, 160));
    QTableWidget table(Rows, Cols);
    for (auto _ : state) {
        for (int col = 0; col < Cols; ++col) {
            for (int row = 0; row < Rows; ++row) {
                auto* item = new QTableWidgetItem(texts[size_t(row * Cols + col)]);
                item->setData(Qt::UserRole, format);
                item->setData(Qt::UserRole + 1, true);
                item->setData(Qt::UserRole + 2, row % 5 == 0);
                item->setForeground(row % 5 == 0 ? readOnly : editable);
                table.setItem(row, col, item);
                table.setCurrentCell(row, col);
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * Rows * Cols);
}
BENCHMARK(QTableWidgetFillPage)->Unit(benchmark::kMicrosecond);

} // namespace
