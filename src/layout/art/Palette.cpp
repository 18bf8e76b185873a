// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "Palette.h"

#include "layout/LayoutFonts.h"

#include <QPainter>

namespace tessaly::art {

QFont SkinFont(int pixels, bool bold)
{
    LoadLayoutFonts();
    QFont font(tessaly::Tahoma);
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

QLinearGradient Vertical(qreal top, qreal bottom, const QColor& from, const QColor& to)
{
    QLinearGradient gradient(0, top, 0, bottom);
    gradient.setColorAt(0, from);
    gradient.setColorAt(1, to);
    return gradient;
}

void DrawText(QPainter& painter, const QRectF& box, int flags, const QString& text, const QFont& font,
              const QColor& colour)
{
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(box, flags, text);
}

} // namespace tessaly::art
