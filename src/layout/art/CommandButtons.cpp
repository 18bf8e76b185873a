// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The panel's command buttons, each in its four looks, with the command's
// caption in the bitmap: the buttons have no captions of their own.
#include "Art.h"
#include "Button.h"
#include "Chrome.h"
#include "Palette.h"

#include <QPainter>
#include <QPainterPath>

namespace tessaly::art {

namespace {

struct State {
    const char* suffix;
    Look look;
};
const State States[] = {{"Idle", Look::Idle}, {"Over", Look::Over}, {"Sel", Look::Sel}, {"Dim", Look::Dim}};

// A counter-clockwise arrow: the mark of taking changes back.
void PaintRestoreArrow(QPainter& painter, const QPointF& centre, const QColor& colour)
{
    QPainterPath arc;
    arc.arcMoveTo(QRectF(centre - QPointF(5, 5), QSizeF(10, 10)), 150);
    arc.arcTo(QRectF(centre - QPointF(5, 5), QSizeF(10, 10)), 150, -270);
    painter.setPen(QPen(colour, 1.6, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(arc);
    const QPointF tip = arc.pointAtPercent(0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(QPolygonF({tip + QPointF(-3.2, -3.2), tip + QPointF(3.4, -1.6), tip + QPointF(-1.2, 3.4)}));
}

// The Restore button's control shows only the top 25 of its bitmap's 27
// rows; the face fills those and the two rows below carry the header.
void PaintRestore(QPainter& painter, Look look)
{
    PaintUnder(painter, QPoint(589, 45), PaintPanel);
    const QRect face(0, 0, 111, 25);
    PaintButtonFace(painter, face, look);
    const QRectF content = ContentOf(face, look);
    PaintRestoreArrow(painter, content.topLeft() + QPointF(27.5, 12.5), InkOf(look));
    DrawText(painter, content.adjusted(36, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("Restore"),
             SkinFont(11), InkOf(look));
}

} // namespace

QList<Bitmap> CommandButtons()
{
    struct Command {
        const char* name;
        const char* caption;
        QPoint at;
    };
    const Command commands[] = {
        {"Read", "NV Read", {24, 501}}, {"Write", "NV Write", {87, 501}}, {"Exit", "Exit", {150, 501}}};
    QList<Bitmap> bitmaps;
    for (const State& state : States) {
        for (const Command& command : commands) {
            bitmaps.append({QStringLiteral("image%1%2").arg(QLatin1String(command.name), QLatin1String(state.suffix)),
                            {58, 30}, [command, look = state.look](QPainter& p) {
                                PaintUnder(p, command.at, PaintPanel);
                                PaintButton(p, QRect(0, 0, 58, 30), look, QLatin1String(command.caption), SkinFont(9));
                            }});
        }
        bitmaps.append({QStringLiteral("imageUndo%1").arg(QLatin1String(state.suffix)), {111, 27},
                        [look = state.look](QPainter& p) { PaintRestore(p, look); }});
    }
    return bitmaps;
}

} // namespace tessaly::art
