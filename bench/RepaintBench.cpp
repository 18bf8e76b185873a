// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// A full repaint of the skinned panel on a grid page (a 720 by 562 grab of
// the panel, its background, tree, page and every control), beside the same
// window made of QTreeWidget and QTableWidget over a background pixmap; and
// the once-per-process decoding of the skin's bitmaps.
#include <tessaly/Tessaly.h>

#include <QApplication>
#include <QDirIterator>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QTableWidget>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

namespace {

constexpr int Rows = 60;
constexpr int Cols = 23;

QString CellText(int row, int col)
{
    return col == 0 ? QStringLiteral("NV item %1").arg(row) : QString::number((row * 7919 + col) % 65536);
}

void ShowPage(Tessaly& panel, const QString& node)
{
    auto* tree = panel.findChild<QTreeWidget*>(QStringLiteral("OrvenTreeView1"));
    QTreeWidgetItem* item = tree->findItems(node, Qt::MatchExactly).first();
    const QPoint at = tree->visualItemRect(item).center();
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, at, tree->viewport()->mapToGlobal(at), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(tree->viewport(), &event);
    }
}

void PanelFullRepaint(benchmark::State& state)
{
    Tessaly panel;
    panel.SetNVFieldItemCount(0, Rows);
    for (int row = 1; row <= Rows; ++row) {
        panel.AddItemToGrid2(0, QString(), false, QString(), CellText(row, 0), row, 0);
        for (int col = 1; col < Cols; ++col)
            panel.AddItemToGrd(0, QStringLiteral("#####"), true, false, QString(), CellText(row, col), row, col);
    }
    panel.show();
    ShowPage(panel, QStringLiteral("System NAM1"));
    QApplication::processEvents();
    for (auto _ : state)
        benchmark::DoNotOptimize(panel.grab());
}
BENCHMARK(PanelFullRepaint)->Unit(benchmark::kMicrosecond);

void QtWidgetsFullRepaint(benchmark::State& state)
{
    QPixmap background(720, 562);
    background.fill(QColor(0xC3, 0xC3, 0xC3));
    QWidget window;
    window.setFixedSize(720, 562);
    QPalette palette;
    palette.setBrush(QPalette::Window, background);
    window.setPalette(palette);
    window.setAutoFillBackground(true);
    auto* tree = new QTreeWidget(&window);
    tree->setGeometry(22, 84, 191, 346);
    tree->setHeaderHidden(true);
    for (int node = 0; node < 21; ++node)
        tree->addTopLevelItem(new QTreeWidgetItem({QStringLiteral("Page %1").arg(node)}));
    auto* table = new QTableWidget(Rows + 1, Cols, &window);
    table->setGeometry(248, 89, 449, 457);
    table->setFont(QFont(QStringLiteral("Tahoma"), 9));
    for (int row = 0; row <= Rows; ++row)
        for (int col = 0; col < Cols; ++col)
            table->setItem(row, col, new QTableWidgetItem(CellText(row, col)));
    window.show();
    QApplication::processEvents();
    for (auto _ : state)
        benchmark::DoNotOptimize(window.grab());
}
BENCHMARK(QtWidgetsFullRepaint)->Unit(benchmark::kMicrosecond);

// What the first panel of a process pays once: every bitmap of the skin at
// the ordinary pixel ratio, decoded from the library's resources.
void SkinDecodeOnce(benchmark::State& state)
{
    QStringList files;
    for (QDirIterator it(QStringLiteral(":/tessaly/skin")); it.hasNext();)
        if (const QString file = it.next(); !file.contains(QLatin1Char('@')))
            files << file;
    for (auto _ : state)
        for (const QString& file : files)
            benchmark::DoNotOptimize(QImage(file));
    state.counters["bitmaps"] = double(files.size());
}
BENCHMARK(SkinDecodeOnce)->Unit(benchmark::kMillisecond);

} // namespace
