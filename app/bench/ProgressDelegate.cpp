// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "ProgressDelegate.h"

#include "BenchTable.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOptionProgressBar>

namespace halvane {

namespace {

// Room around the bar, so that the row's selection shows round it.
constexpr int Margin = 3;
// The bar's least width: enough for "items 65535 of 65535" beside 100 %.
constexpr int BarWidth = 190;

} // namespace

void ProgressDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const int percent = index.data(BenchTable::PercentRole).toInt();
    if (index.data(BenchTable::PercentRole).isNull() || percent < 0) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    // The selection behind, as the row's other cells have it.
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    cell.text.clear();
    const QWidget* view = option.widget;
    QStyle* style = view ? view->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, view);

    QStyleOptionProgressBar bar;
    bar.initFrom(view);
    bar.state = option.state | QStyle::State_Horizontal;
    bar.rect = option.rect.adjusted(Margin, Margin, -Margin, -Margin);
    bar.minimum = 0;
    bar.maximum = 100;
    bar.progress = percent;
    bar.text = index.data(Qt::DisplayRole).toString();
    bar.textVisible = true;
    bar.textAlignment = Qt::AlignCenter;
    style->drawControl(QStyle::CE_ProgressBar, &bar, painter, view);
}

QSize ProgressDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize text = QStyledItemDelegate::sizeHint(option, index);
    return {std::max(text.width() + 2 * Margin, BarWidth), text.height() + 2 * Margin};
}

} // namespace halvane
