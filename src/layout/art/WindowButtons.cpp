// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The minimise and close buttons at the right end of the panel's title band.
// Their controls are a pixel smaller than the bitmaps, so the face takes the
// top-left 17 x 17 pixels and the last row and column carry the band.
#include "Art.h"
#include "Button.h"
#include "Chrome.h"

#include <QPainter>

namespace tessaly::art {

namespace {

const QRect Face(0, 0, 17, 17);

void PaintMinimise(QPainter& painter, QPoint at, Look look)
{
    PaintUnder(painter, at, PaintPanel);
    PaintButtonFace(painter, Face, look);
    const QRectF content = ContentOf(Face, look);
    painter.fillRect(QRectF(content.left() + 5, content.top() + 11, 7, 2), InkOf(look));
}

void PaintClose(QPainter& painter, QPoint at, Look look)
{
    PaintUnder(painter, at, PaintPanel);
    PaintButtonFace(painter, Face, look);
    const QRectF cross = ContentOf(Face, look).adjusted(5, 5, -5, -5);
    painter.setPen(QPen(InkOf(look), 1.8, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(cross.topLeft(), cross.bottomRight());
    painter.drawLine(cross.bottomLeft(), cross.topRight());
}

} // namespace

QList<Bitmap> WindowButtons()
{
    const QPoint minimise(668, 8), close(688, 8);
    return {
        {QStringLiteral("imageMinize"), {18, 18}, [=](QPainter& p) { PaintMinimise(p, minimise, Look::Idle); }},
        {QStringLiteral("imageMinimizeSel"), {18, 18}, [=](QPainter& p) { PaintMinimise(p, minimise, Look::Sel); }},
        {QStringLiteral("imageClose"), {18, 18}, [=](QPainter& p) { PaintClose(p, close, Look::Idle); }},
        {QStringLiteral("imageCloseSel"), {18, 18}, [=](QPainter& p) { PaintClose(p, close, Look::Sel); }},
    };
}

} // namespace tessaly::art
