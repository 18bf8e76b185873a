// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/TextInk.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tessaly {

namespace {

bool Whole(qreal device)
{
    return std::abs(device - std::round(device)) < 1e-6;
}

} // namespace

void TextInk::paint(QPainter& painter, QPoint at, const Key& key, const std::function<void(QPainter&)>& draw)
{
    const QTransform toDevice = painter.deviceTransform();
    const QPointF origin = toDevice.map(QPointF(at));
    const qreal ratio = toDevice.m11();
    if (toDevice.type() > QTransform::TxScale || ratio <= 0 || toDevice.m22() != ratio || !Whole(origin.x())
        || !Whole(origin.y())) {
        painter.save();
        painter.translate(at);
        painter.setFont(key.font);
        draw(painter);
        painter.restore();
        return;
    }
    const int dpi = painter.device()->logicalDpiY();
    const auto kept = std::find_if(m_inks.begin(), m_inks.end(), [&](const Ink& ink) {
        return ink.key == key && ink.ratio == ratio && ink.dpi == dpi;
    });
    if (kept != m_inks.end()) {
        std::rotate(m_inks.begin(), kept, kept + 1);
    } else {
        if (m_inks.size() == Kept)
            m_inks.removeLast();
        // The image resolves the font at the device's resolution, as the
        // device's own painter does.
        QImage image((QSizeF(key.box) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.setDotsPerMeterX(qRound(painter.device()->logicalDpiX() / 0.0254));
        image.setDotsPerMeterY(qRound(dpi / 0.0254));
        image.fill(Qt::transparent);
        QPainter ink(&image);
        ink.setFont(key.font);
        draw(ink);
        ink.end();
        m_inks.prepend({key, ratio, dpi, std::move(image)});
    }
    painter.drawImage(at, m_inks.front().image);
}

} // namespace tessaly
