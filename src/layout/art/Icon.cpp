// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "Icon.h"

#include "Palette.h"

#include <QPainter>
#include <QPainterPath>

namespace tessaly::art {

void PaintIcon(QPainter& painter)
{
    // The tile leaves a unit of margin all round, where themes expect the
    // shadow of other icons to fall.
    const QRectF tile(3.5, 3.5, 41, 41);
    painter.setPen(QPen(WindowEdge, 1));
    painter.setBrush(Vertical(tile.top(), tile.bottom(), SlateTop, SlateBottom));
    painter.drawRoundedRect(tile, 7, 7);

    // A steel band across the foot of the tile, ruled in amber as the
    // panel's title band is, with the tile's rounded corners kept.
    QPainterPath rounded;
    rounded.addRoundedRect(tile.adjusted(0.5, 0.5, -0.5, -0.5), 6.5, 6.5);
    QPainterPath band;
    band.addRect(QRectF(tile.left(), 35, tile.width(), tile.bottom() - 35));
    painter.setPen(Qt::NoPen);
    painter.setBrush(Vertical(35, tile.bottom(), SteelTop, SteelBottom));
    painter.drawPath(rounded.intersected(band));
    painter.fillRect(QRectF(4, 33, 40, 2), Amber);

    // Four signal bars, rising to the right, each lit from above.
    for (int bar = 0; bar < 4; ++bar) {
        const qreal height = 7 + 6 * bar;
        const QRectF rect(10 + 8 * bar, 30 - height, 5, height);
        painter.setBrush(Vertical(rect.top(), rect.bottom(), AmberLight, Amber));
        painter.setPen(QPen(AmberDark, 1));
        painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), 1, 1);
    }
}

} // namespace tessaly::art
