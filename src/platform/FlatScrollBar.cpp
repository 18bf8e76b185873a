// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/FlatScrollBar.h"

#include <QPainter>
#include <QStyleOptionSlider>

namespace tessaly {

namespace {

const QColor Groove(0xF0, 0xF0, 0xF0);
const QColor Handle(0xC6, 0xC6, 0xC6);
const QColor HandleLit(0xA8, 0xA8, 0xA8);
const QColor Arrow(0x60, 0x60, 0x60);
const QColor ArrowOff(0xB8, 0xB8, 0xB8);

// A small solid triangle pointing along `direction` in the middle of `box`.
void PaintArrow(QPainter& painter, const QRect& box, Qt::ArrowType direction, const QColor& color)
{
    const QPointF c = QRectF(box).center();
    const qreal r = qMin(box.width(), box.height()) / 5.0;
    QPolygonF arrow;
    switch (direction) {
    case Qt::UpArrow: arrow << QPointF(c.x() - r, c.y() + r / 2) << QPointF(c.x() + r, c.y() + r / 2) << QPointF(c.x(), c.y() - r / 2); break;
    case Qt::DownArrow: arrow << QPointF(c.x() - r, c.y() - r / 2) << QPointF(c.x() + r, c.y() - r / 2) << QPointF(c.x(), c.y() + r / 2); break;
    case Qt::LeftArrow: arrow << QPointF(c.x() + r / 2, c.y() - r) << QPointF(c.x() + r / 2, c.y() + r) << QPointF(c.x() - r / 2, c.y()); break;
    default: arrow << QPointF(c.x() - r / 2, c.y() - r) << QPointF(c.x() - r / 2, c.y() + r) << QPointF(c.x() + r / 2, c.y()); break;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPolygon(arrow);
}

} // namespace

FlatScrollBar::FlatScrollBar(Qt::Orientation orientation, QWidget* parent)
    : QScrollBar(orientation, parent)
{
}

QColor FlatScrollBar::GrooveColor()
{
    return Groove;
}

void FlatScrollBar::paintEvent(QPaintEvent*)
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QStyle* look = style();
    const auto part = [&](QStyle::SubControl control) {
        return look->subControlRect(QStyle::CC_ScrollBar, &option, control, this);
    };
    const bool vertical = orientation() == Qt::Vertical;
    const bool pressed = option.activeSubControls & QStyle::SC_ScrollBarSlider && isSliderDown();

    QPainter painter(this);
    painter.fillRect(rect(), Groove);
    if (minimum() < maximum())
        painter.fillRect(part(QStyle::SC_ScrollBarSlider).adjusted(vertical ? 2 : 0, vertical ? 0 : 2, vertical ? -2 : 0, vertical ? 0 : -2),
                         pressed ? HandleLit : Handle);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintArrow(painter, part(QStyle::SC_ScrollBarSubLine), vertical ? Qt::UpArrow : Qt::LeftArrow,
               value() > minimum() ? Arrow : ArrowOff);
    PaintArrow(painter, part(QStyle::SC_ScrollBarAddLine), vertical ? Qt::DownArrow : Qt::RightArrow,
               value() < maximum() ? Arrow : ArrowOff);
}

} // namespace tessaly
