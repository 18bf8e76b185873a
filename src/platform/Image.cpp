// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/Image.h"

#include <QPainter>

namespace tessaly {

Image::Image(QWidget* parent)
    : PictureControl(parent)
{
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
    paintFocusCue();
}

} // namespace tessaly
