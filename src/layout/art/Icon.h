// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// halvane's application icon: the title bar's emblem grown to an icon, signal
// bars in amber on a slate tile, over the steel and amber of the title band.
#pragma once

#include <QDir>
#include <QString>

class QPainter;

namespace tessaly::art {

// The icon's drawing grid: it paints in a square of this many units.
inline constexpr int IconGrid = 48;

void PaintIcon(QPainter& painter);

// Writes the icon into `folder` laid out as an icon theme's folder is:
// hicolor/<n>x<n>/apps/halvane.png at each size desktops ask for, and
// hicolor/scalable/apps/halvane.svg from the same painting. Gives what could
// not be written, or nothing.
QString WriteIconFiles(const QDir& folder);

} // namespace tessaly::art
