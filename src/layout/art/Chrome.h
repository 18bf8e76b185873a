// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Pieces that the panel, its pages and the message box share.
#pragma once

#include <QRect>

class QPainter;
class QString;

namespace tessaly::art {

// The part of a window's background that a bitmap shown at `at` covers: the
// bitmap starts from it, so that its edges meet the window's art seamlessly.
void PaintUnder(QPainter& painter, QPoint at, void (*window)(QPainter&));

// A light steel title band over rows 0 to height - 1, closed by an edge and
// an amber rule in the two rows below it.
void PaintTitleBand(QPainter& painter, int width, int height);

// The product's mark: signal bars in amber on a slate tile, 18 pixels square.
void PaintEmblem(QPainter& painter, QPoint at);

// A raised panel with rounded corners.
void PaintCard(QPainter& painter, const QRect& card);

// A one-pixel frame just outside `inside`: darker above and left, lighter
// below and right, so that `inside` looks set into the ground.
void PaintSunkenFrame(QPainter& painter, const QRect& inside);

// A page's heading over a rule `width` pixels long, and a white group below it.
void PaintPageHeading(QPainter& painter, QPoint at, int width, const QString& heading);
void PaintGroup(QPainter& painter, const QRect& group);

} // namespace tessaly::art
