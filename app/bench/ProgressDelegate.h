// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Draws a bench row's progress as a bar in its cell, with the words of the
// cell's text on it; a cell without a percentage is drawn as any other.
#pragma once

#include <QStyledItemDelegate>

namespace halvane {

class ProgressDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace halvane
