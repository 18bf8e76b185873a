#include "platform/Pictures.h"

#include "platform/Accessibility.h"
#include "platform/MouseEvents.h"

#include <QAccessible>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace tessaly {

namespace {

// Space or Return on a button presses it, once however long the key is held.
template <class Control>
bool PressedByKey(Control& control, QKeyEvent* event)
{
    const int key = event->key();
    if (control.Role() != PictureRole::Button || (key != Qt::Key_Space && key != Qt::Key_Return && key != Qt::Key_Enter))
        return false;
    event->accept();
    if (!event->isAutoRepeat())
        emit control.Click();
    return true;
}

// A button shows the focus when it came by the keyboard, where the user
// needs to see which button a key will press.
bool ShowsFocus(PictureRole role, const QFocusEvent& event)
{
    return role == PictureRole::Button
        && (event.reason() == Qt::TabFocusReason || event.reason() == Qt::BacktabFocusReason);
}

void PaintFocusCue(QWidget& control)
{
    QPainter painter(&control);
    painter.setPen(QPen(control.palette().color(QPalette::WindowText), 0, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(control.rect().adjusted(2, 2, -3, -3));
}

} // namespace

PictureBox::PictureBox(QWidget* parent)
    : FormControl(parent)
{
    // It paints every pixel itself, so redrawing it never asks its container
    // to repaint underneath.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    InstallAccessibleInterfaces();
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
    if (m_focusShown && hasFocus())
        PaintFocusCue(*this);
}

void PictureBox::mousePressEvent(QMouseEvent* event)
{
    QWidget::mousePressEvent(event); // takes the focus
    RaiseMouseEvent(*this, event);
}
void PictureBox::mouseMoveEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }
void PictureBox::mouseReleaseEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }

void PictureBox::keyPressEvent(QKeyEvent* event)
{
    if (!PressedByKey(*this, event))
        QWidget::keyPressEvent(event);
}

void PictureBox::focusInEvent(QFocusEvent* event)
{
    m_focusShown = ShowsFocus(m_role, *event);
    update();
}

void PictureBox::focusOutEvent(QFocusEvent*)
{
    m_focusShown = false;
    update();
}

Image::Image(QWidget* parent)
    : FormControl(parent)
{
    setMouseTracking(true);
    InstallAccessibleInterfaces();
}

void Image::setRole(PictureRole role)
{
    m_role = role == PictureRole::Button ? role : PictureRole::Picture;
    // By Tab only: a click on an image leaves the focus where it was.
    setFocusPolicy(m_role == PictureRole::Button ? Qt::TabFocus : Qt::NoFocus);
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
    if (m_focusShown && hasFocus())
        PaintFocusCue(*this);
}

void Image::mousePressEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }
void Image::mouseMoveEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }
void Image::mouseReleaseEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }

void Image::keyPressEvent(QKeyEvent* event)
{
    if (!PressedByKey(*this, event))
        QWidget::keyPressEvent(event);
}

void Image::focusInEvent(QFocusEvent* event)
{
    m_focusShown = ShowsFocus(m_role, *event);
    update();
}

void Image::focusOutEvent(QFocusEvent*)
{
    m_focusShown = false;
    update();
}

} // namespace tessaly
