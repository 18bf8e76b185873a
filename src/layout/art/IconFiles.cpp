// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "Icon.h"

#include <QImage>
#include <QPainter>
#include <QSvgGenerator>

namespace tessaly::art {

namespace {

bool SavePng(const QString& file, int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(qreal(size) / IconGrid, qreal(size) / IconGrid);
    PaintIcon(painter);
    painter.end();
    return image.save(file, "PNG");
}

bool SaveSvg(const QString& file)
{
    QSvgGenerator svg;
    svg.setFileName(file);
    svg.setSize(QSize(IconGrid, IconGrid));
    svg.setViewBox(QRect(0, 0, IconGrid, IconGrid));
    svg.setTitle(QStringLiteral("Halvane"));
    QPainter painter;
    if (!painter.begin(&svg))
        return false;
    painter.setRenderHint(QPainter::Antialiasing);
    PaintIcon(painter);
    return painter.end();
}

} // namespace

QString WriteIconFiles(const QDir& folder)
{
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString sized = QStringLiteral("hicolor/%1x%1/apps").arg(size);
        if (!folder.mkpath(sized) || !SavePng(folder.filePath(sized + QStringLiteral("/halvane.png")), size))
            return QStringLiteral("cannot write the %1 pixel icon").arg(size);
    }
    if (!folder.mkpath(QStringLiteral("hicolor/scalable/apps"))
        || !SaveSvg(folder.filePath(QStringLiteral("hicolor/scalable/apps/halvane.svg"))))
        return QStringLiteral("cannot write the scalable icon");
    return {};
}

} // namespace tessaly::art
