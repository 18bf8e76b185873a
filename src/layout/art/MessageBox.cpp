// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The panel's message box: a window of 406 x 172 pixels with corners rounded
// to a radius of 10, whose bitmap is larger than the window and simply
// continues its ground; the handset beside the message; the OK button.
#include "Art.h"
#include "Button.h"
#include "Chrome.h"
#include "Palette.h"

#include <QPainter>
#include <QPainterPath>

namespace tessaly::art {

namespace {

const QSize Window(406, 172);

// A handset with an information sign on its screen.
void PaintHandset(QPainter& painter)
{
    const QRectF body(12.5, 6.5, 32, 94);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 40));
    painter.drawRoundedRect(body.translated(2, 2), 6, 6);
    painter.setBrush(Vertical(0, 6, SlateTop, SlateBottom));
    painter.drawRoundedRect(QRectF(36, 0, 4, 10), 1.5, 1.5); // the aerial
    QLinearGradient side(body.left(), 0, body.right(), 0);
    side.setColorAt(0, SlateTop);
    side.setColorAt(1, SlateBottom);
    painter.setPen(WindowEdge);
    painter.setBrush(side);
    painter.drawRoundedRect(body, 6, 6);
    painter.fillRect(QRectF(23.5, 11, 10, 2), QColor(0x15, 0x1B, 0x21)); // earpiece

    const QRectF screen(16.5, 16.5, 24, 28);
    painter.setPen(QColor(0x15, 0x1B, 0x21));
    painter.setBrush(Vertical(screen.top(), screen.bottom(), AmberLight, Amber));
    painter.drawRoundedRect(screen, 2, 2);
    painter.setPen(QPen(Ink, 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(screen.center(), 8, 8);
    DrawText(painter, screen, Qt::AlignCenter, QStringLiteral("i"), SkinFont(12), Ink);

    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xC9, 0xD0, 0xD7));
    painter.drawRoundedRect(QRectF(21.5, 50, 14, 5), 2.5, 2.5); // the navigation key
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 3; ++column)
            painter.drawRoundedRect(QRectF(17.5 + 8.5 * column, 60 + 7 * row, 6, 4), 1.5, 1.5);
    painter.fillRect(QRectF(25.5, 92, 6, 1), QColor(0x15, 0x1B, 0x21)); // microphone
}

void PaintOk(QPainter& painter, Look look)
{
    PaintUnder(painter, QPoint(290, 124), PaintMessageBox);
    PaintButton(painter, QRect(0, 0, 80, 30), look, QStringLiteral("OK"), SkinFont(11));
}

} // namespace

void PaintMessageBox(QPainter& painter)
{
    painter.fillRect(QRect(0, 0, 794, 652), Vertical(34, 120, QColor(0xD6, 0xD9, 0xDC), Ground));
    PaintTitleBand(painter, Window.width(), 32);
    PaintEmblem(painter, QPoint(14, 7));
    // The outline: everything of the window outside its rounded inner edge.
    QPainterPath outline;
    outline.addRect(QRectF(QPointF(0, 0), Window));
    outline.addRoundedRect(QRectF(QPointF(1, 1), Window - QSize(2, 2)), 9, 9);
    painter.setPen(Qt::NoPen);
    painter.setBrush(WindowEdge);
    painter.drawPath(outline);
}

QList<Bitmap> MessageBox()
{
    return {
        {QStringLiteral("frmMsgBox"), {794, 652}, PaintMessageBox},
        {QStringLiteral("imgBtnOK0"), {80, 30}, [](QPainter& p) { PaintOk(p, Look::Idle); }},
        {QStringLiteral("imgBtnOK1"), {80, 30}, [](QPainter& p) { PaintOk(p, Look::Over); }},
        {QStringLiteral("Image1"), {57, 103}, [](QPainter& p) {
             PaintUnder(p, QPoint(24, 56), PaintMessageBox);
             PaintHandset(p);
         }},
    };
}

} // namespace tessaly::art
