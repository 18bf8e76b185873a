// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "Chrome.h"

#include "Palette.h"

#include <QPainter>

namespace tessaly::art {

void PaintUnder(QPainter& painter, QPoint at, void (*window)(QPainter&))
{
    painter.save();
    painter.translate(-at);
    window(painter);
    painter.restore();
}

void PaintTitleBand(QPainter& painter, int width, int height)
{
    painter.fillRect(QRect(0, 0, width, height), Vertical(0, height, SteelTop, SteelBottom));
    painter.fillRect(QRect(0, height, width, 1), SteelEdge);
    painter.fillRect(QRect(0, height + 1, width, 1), Amber);
}

void PaintEmblem(QPainter& painter, QPoint at)
{
    painter.setPen(WindowEdge);
    painter.setBrush(Vertical(at.y(), at.y() + 18, SlateTop, SlateBottom));
    painter.drawRoundedRect(QRectF(at, QSizeF(18, 18)).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    for (int bar = 0; bar < 4; ++bar) {
        const int height = 3 + 3 * bar;
        const QRect rect(at.x() + 3 + 3 * bar, at.y() + 15 - height, 2, height);
        painter.fillRect(rect, Vertical(rect.top(), rect.bottom() + 1, AmberLight, Amber));
    }
}

void PaintCard(QPainter& painter, const QRect& card)
{
    painter.setPen(CardEdge);
    painter.setBrush(Card);
    painter.drawRoundedRect(QRectF(card).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    painter.fillRect(QRect(card.left() + 4, card.top() + 1, card.width() - 8, 1), Qt::white);
}

void PaintSunkenFrame(QPainter& painter, const QRect& inside)
{
    const QRect frame = inside.adjusted(-1, -1, 1, 1);
    painter.fillRect(QRect(frame.left(), frame.top(), frame.width(), 1), CardEdge);
    painter.fillRect(QRect(frame.left(), frame.top(), 1, frame.height()), CardEdge);
    painter.fillRect(QRect(frame.left() + 1, frame.bottom(), frame.width() - 1, 1), Qt::white);
    painter.fillRect(QRect(frame.right(), frame.top() + 1, 1, frame.height() - 1), Qt::white);
}

void PaintGroup(QPainter& painter, const QRect& group)
{
    painter.setPen(WellEdge);
    painter.setBrush(Well);
    painter.drawRoundedRect(QRectF(group).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
}

void PaintPageHeading(QPainter& painter, QPoint at, int width, const QString& heading)
{
    painter.fillRect(QRect(at.x(), at.y() + 2, 3, 14), Amber);
    DrawText(painter, QRectF(at.x() + 9, at.y(), width - 9, 18), Qt::AlignLeft | Qt::AlignVCenter, heading,
             SkinFont(13), Ink);
    painter.fillRect(QRect(at.x(), at.y() + 21, width, 1), WellEdge);
    painter.fillRect(QRect(at.x(), at.y() + 22, width, 1), Qt::white);
}

} // namespace tessaly::art
