// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The progress bar: an empty track with a one-pixel outline, and the amber
// fill that the panel lays inside the outline, at (1, 1) of the track, as far
// as the work has gone.
#include "Art.h"
#include "Palette.h"

#include <QPainter>

namespace tessaly::art {

namespace {

void PaintTrack(QPainter& painter)
{
    painter.fillRect(QRect(0, 0, 173, 18), TrackEdge);
    // Set into the panel: shaded at the top, lightening downwards.
    painter.fillRect(QRect(1, 1, 171, 16), Vertical(1, 17, QColor(0xD2, 0xD8, 0xDE), QColor(0xF2, 0xF4, 0xF6)));
    painter.fillRect(QRect(1, 1, 171, 1), QColor(0xB4, 0xBD, 0xC6));
}

void PaintFill(QPainter& painter)
{
    // A glossy upper half over a deeper lower half.
    painter.fillRect(QRect(0, 0, 171, 7), Vertical(0, 7, AmberLight, QColor(0xF6, 0xC9, 0x5C)));
    painter.fillRect(QRect(0, 7, 171, 9), Vertical(7, 16, Amber, QColor(0xD0, 0x8E, 0x12)));
    painter.fillRect(QRect(0, 0, 171, 1), QColor(0xFF, 0xF4, 0xD4));
}

} // namespace

QList<Bitmap> ProgressBars()
{
    return {{QStringLiteral("pbProgress"), {171, 16}, PaintFill},
            {QStringLiteral("pbProgressBg"), {173, 18}, PaintTrack}};
}

} // namespace tessaly::art
