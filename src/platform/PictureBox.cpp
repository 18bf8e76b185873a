// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/PictureBox.h"

#include <QAccessible>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace tessaly {

PictureBox::PictureBox(QWidget* parent)
    : PictureControl(parent)
{
    // It paints every pixel itself, so redrawing it never asks its container
    // to repaint underneath.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
}

void PictureBox::setRole(PictureRole role)
{
    m_role = role;
    setFocusPolicy(role == PictureRole::ProgressBar ? Qt::NoFocus : Qt::StrongFocus);
}

void PictureBox::setProgressValue(int percent)
{
    percent = std::clamp(percent, 0, 100);
    if (percent == m_progress)
        return;
    m_progress = percent;
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(this, percent);
        QAccessible::updateAccessibility(&event);
    }
}

void PictureBox::setPicture(const QPixmap& picture)
{
    m_picture = picture;
    m_surface = picture;
    update();
}

void PictureBox::Refresh()
{
    m_surface = m_picture;
    setProgressValue(0);
    showSurface();
}

void PictureBox::BitBlt(int x, int y, int width, int height, const PictureBox& source, int sourceX, int sourceY)
{
    if (m_surface.isNull() || width <= 0 || height <= 0)
        return;
    const qreal ratio = source.m_surface.devicePixelRatio(); // the source rectangle is in its own pixels
    QPainter painter(&m_surface);
    painter.drawPixmap(QRectF(x, y, width, height), source.m_surface,
                       QRectF(sourceX * ratio, sourceY * ratio, width * ratio, height * ratio));
    painter.end();
    showSurface();
}

void PictureBox::showSurface()
{
    if (!isVisible())
        return;
    if (s_containersPainting > 0)
        update();
    else
        repaint();
}

void PictureBox::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const QRect picture(QPoint(0, 0), m_surface.deviceIndependentSize().toSize());
    if (!picture.contains(event->rect()))
        painter.fillRect(event->rect(), palette().window());
    painter.drawPixmap(0, 0, m_surface);
    painter.end();
    paintFocusCue();
}

} // namespace tessaly
