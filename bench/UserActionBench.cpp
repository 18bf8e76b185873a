// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// One user action from input to screen: a click on a node of the page tree,
// which hides every page, sends all 21 grids home and shows the chosen page,
// then the repaint that follows.
#include <tessaly/Tessaly.h>

#include <QApplication>
#include <QMouseEvent>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

namespace {

void Click(QWidget* target, const QPoint& at)
{
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, at, target->mapToGlobal(at), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(target, &event);
    }
}

// One click on a node and the repaint of what changed.
[[gnu::noinline]] void ClickNode(QWidget* viewport, const QPoint& at)
{
    Click(viewport, at);
    QApplication::processEvents();
}

void TreeClickShowsPage(benchmark::State& state)
{
    Tessaly panel;
    panel.show();
    QApplication::processEvents();
    auto* tree = panel.findChild<QTreeWidget*>(QStringLiteral("OrvenTreeView1"));
    const auto nodeAt = [tree](const char* text) {
        return tree->visualItemRect(tree->findItems(QLatin1String(text), Qt::MatchExactly).first()).center();
    };
    const QPoint pages[] = {nodeAt("System NAM1"), nodeAt("Calibration")};
    int next = 0;
    for (auto _ : state) {
        ClickNode(tree->viewport(), pages[next]);
        next ^= 1;
    }
}
BENCHMARK(TreeClickShowsPage)->Unit(benchmark::kMicrosecond);

} // namespace
