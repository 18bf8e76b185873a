// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "Button.h"

#include "Palette.h"

#include <QPainter>

namespace tessaly::art {

namespace {

struct Colours {
    QColor edge, top, bottom, highlight;
};

Colours ColoursOf(Look look)
{
    switch (look) {
    case Look::Idle:
        return {QColor(0x67, 0x73, 0x80), QColor(0xFC, 0xFD, 0xFD), QColor(0xCF, 0xD6, 0xDD), Qt::white};
    case Look::Over:
        return {QColor(0x9C, 0x6C, 0x0A), QColor(0xFF, 0xF5, 0xD2), QColor(0xF0, 0xBC, 0x42), QColor(0xFF, 0xFC, 0xEE)};
    case Look::Sel: // lit from below: the face lies deeper than its edge
        return {QColor(0x3E, 0x49, 0x55), QColor(0x9C, 0xA7, 0xB3), QColor(0xC3, 0xCA, 0xD2), QColor(0x84, 0x8F, 0x9B)};
    case Look::Dim:
        break;
    }
    // Flat: one grey, no highlight.
    return {QColor(0xA4, 0xAB, 0xB3), QColor(0xD6, 0xDA, 0xDE), QColor(0xD6, 0xDA, 0xDE), QColor(0xD6, 0xDA, 0xDE)};
}

} // namespace

void PaintButtonFace(QPainter& painter, const QRect& face, Look look)
{
    const Colours colours = ColoursOf(look);
    painter.setPen(colours.edge);
    painter.setBrush(Vertical(face.top(), face.bottom() + 1, colours.top, colours.bottom));
    painter.drawRoundedRect(QRectF(face).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    // A highlight along the top inside the edge; pressed in, a shadow; flat
    // when unavailable.
    painter.fillRect(QRect(face.left() + 3, face.top() + 1, face.width() - 6, 1), colours.highlight);
}

QColor InkOf(Look look)
{
    return look == Look::Dim ? InkMuted : Ink;
}

QRectF ContentOf(const QRect& face, Look look)
{
    return look == Look::Sel ? QRectF(face).translated(1, 1) : QRectF(face);
}

void PaintButton(QPainter& painter, const QRect& face, Look look, const QString& caption, const QFont& font)
{
    PaintButtonFace(painter, face, look);
    DrawText(painter, ContentOf(face, look), Qt::AlignCenter, caption, font, InkOf(look));
}

} // namespace tessaly::art
