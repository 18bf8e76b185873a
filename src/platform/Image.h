// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// An image: it only shows its picture, transparent wherever the picture does
// not reach, and raises mouse events; a click leaves the focus where it was.
#pragma once

#include "platform/PictureControl.h"

namespace tessaly {

class Image : public PictureControl {
    Q_OBJECT
    Q_PROPERTY(QPixmap Picture READ Picture WRITE setPicture)
public:
    explicit Image(QWidget* parent = nullptr);

    void setPicture(const QPixmap& picture);
    // An image may only be a picture or a button.
    void setRole(PictureRole role);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tessaly
