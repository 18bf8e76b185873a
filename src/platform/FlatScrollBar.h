// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The grid's scroll bars: flat, in the skin's greys, drawn with plain fills.
// They have the style's geometry and behaviour; only their look is their own,
// which keeps a page switch from repainting gradient grooves line by line.
#pragma once

#include <QScrollBar>

namespace tessaly {

class FlatScrollBar : public QScrollBar {
    Q_OBJECT
public:
    explicit FlatScrollBar(Qt::Orientation orientation, QWidget* parent = nullptr);

    // The groove's grey, which also fills the corner where two bars meet.
    static QColor GrooveColor();

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tessaly
