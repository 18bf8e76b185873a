// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The panel's own widget as its subsystems see it: the parent of the panel's
// boxes, the window it lies in, the receiver of its controls' events, and
// whether it has ended.
#pragma once

#include <QObject>
#include <QRegion>
#include <QWidget>

#include <memory>

namespace tessaly {

struct PanelWidget {
    explicit PanelWidget(QWidget& userControl)
        : UserControl(userControl)
    {
    }

    // The panel's own surface: its background and the controls without a
    // window of their own on it (labels, images, shapes). Repainting it runs
    // the panel's Paint; the controls with windows of their own keep what
    // they show.
    QRegion OwnSurface() const;
    // Whether the panel's widget has gone. A handler that comes back from a
    // modal box returns at once when it has.
    bool Ended() const { return !Handlers; }

    QWidget& UserControl;
    // The receiver of the controls' events: the handlers run while it lives.
    std::unique_ptr<QObject> Handlers = std::make_unique<QObject>();
};

} // namespace tessaly
