#include "platform/Pictures.h"

#include "platform/MouseEvents.h"

#include <QPaintEvent>
#include <QPainter>

namespace tessaly {

PictureBox::PictureBox(QWidget* parent)
    : FormControl(parent)
{
    // It paints every pixel itself, so redrawing it never asks its container
    // to repaint underneath.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
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
}

void PictureBox::mousePressEvent(QMouseEvent* event)
{
    QWidget::mousePressEvent(event); // takes the focus
    RaiseMouseEvent(*this, event);
}
void PictureBox::mouseMoveEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }
void PictureBox::mouseReleaseEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }

Image::Image(QWidget* parent)
    : FormControl(parent)
{
    setMouseTracking(true);
}

void Image::setPicture(const QPixmap& picture)
{
    m_picture = picture;
    update();
}

void Image::paintEvent(QPaintEvent*)
{
    if (!m_picture.isNull())
        QPainter(this).drawPixmap(0, 0, m_picture);
}

void Image::mousePressEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }
void Image::mouseMoveEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }
void Image::mouseReleaseEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }

} // namespace tessaly
