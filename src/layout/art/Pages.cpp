// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The backgrounds of the two pages that are not grids: the basic
// information page, with the frames of its six value boxes, and
// the Mobile IP page, with a group for the profile choices and one for
// their count.
#include "Art.h"
#include "Chrome.h"
#include "Palette.h"

#include <QPainter>

namespace tessaly::art {

namespace {

const QSize PageSize(450, 467);
const int Left = 28, Width = 372; // the content column of both pages

void PaintBasicInformation(QPainter& painter)
{
    painter.fillRect(QRect(QPoint(0, 0), PageSize), Sheet);
    PaintPageHeading(painter, QPoint(Left, 12), Width, QStringLiteral("Handset Details"));
    PaintGroup(painter, QRect(Left, 42, Width, 209));
    // The captions left of the boxes are labels of the page, drawn over it.
    for (int row = 0; row < 6; ++row) {
        const QRect box(184, 56 + 32 * row, 189, 20); // the value box, which fills itself
        painter.setPen(QColor(0xD3, 0xC3, 0x84));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRectF(box).adjusted(-0.5, -0.5, 0.5, 0.5));
        if (row < 5) // a rule between two rows
            painter.fillRect(QRect(Left + 8, box.bottom() + 7, Width - 16, 1), QColor(0xE6, 0xEA, 0xEE));
    }
}

void PaintMobileIp(QPainter& painter)
{
    painter.fillRect(QRect(QPoint(0, 0), PageSize), Sheet);
    PaintPageHeading(painter, QPoint(Left, 12), Width, QStringLiteral("Mobile IP Profiles"));
    PaintGroup(painter, QRect(Left, 42, 227, 219)); // the six profile choices
    PaintGroup(painter, QRect(258, 42, Left + Width - 258, 94)); // the count's caption and choice
}

} // namespace

QList<Bitmap> PageBackgrounds()
{
    return {{QStringLiteral("imageBasicInfo2"), PageSize, PaintBasicInformation},
            {QStringLiteral("imgMIPProfile"), PageSize, PaintMobileIp}};
}

} // namespace tessaly::art
