// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// A one-pixel outline drawn as four filled rectangles inside `rect`. A pen
// of width 1 straddles the edge of a pixel, which at a device pixel ratio
// above 1 paints half of one device line and leaves the other half as it was.
#pragma once

#include <QPainter>

namespace tessaly {

inline void FillFrame(QPainter& painter, const QRect& rect, const QColor& color)
{
    if (rect.width() < 1 || rect.height() < 1)
        return;
    painter.fillRect(QRect(rect.left(), rect.top(), rect.width(), 1), color);
    painter.fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), color);
    painter.fillRect(QRect(rect.left(), rect.top(), 1, rect.height()), color);
    painter.fillRect(QRect(rect.right(), rect.top(), 1, rect.height()), color);
}

} // namespace tessaly
