// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Draws the skin's bitmaps into the folder given as the only argument: each
// as <name>.png at its size and <name>@2x.png at twice its size for screens
// of a higher pixel ratio, both from the same painting. The files are 8-bit
// RGB without alpha, and the same on every run. With --icon first, it draws
// halvane's application icon into the folder instead (Icon.h).
#include "Art.h"
#include "Icon.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <cstdio>

using namespace tessaly::art;

namespace {

QImage Draw(const Bitmap& bitmap, int scale)
{
    QImage image(bitmap.size * scale, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    bitmap.paint(painter);
    painter.end();
    return image.convertToFormat(QImage::Format_RGB888);
}

} // namespace

int main(int argc, char** argv)
{
    // Drawn in memory only; the platform plugin still brings the fonts.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const bool icon = argc == 3 && qstrcmp(argv[1], "--icon") == 0;
    if (argc != 2 && !icon) {
        std::fprintf(stderr, "usage: %s [--icon] FOLDER\n", argv[0]);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[argc - 1]));
    if (icon) {
        const QString failure = WriteIconFiles(folder);
        if (!failure.isEmpty())
            std::fprintf(stderr, "%s: %s\n", argv[0], qPrintable(failure));
        return failure.isEmpty() ? 0 : 1;
    }
    if (!folder.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "%s: cannot make %s\n", argv[0], argv[1]);
        return 1;
    }
    const QList<Bitmap> bitmaps =
        PanelBackground() + PageBackgrounds() + WindowButtons() + CommandButtons() + ProgressBars() + MessageBox();
    for (const Bitmap& bitmap : bitmaps) {
        for (int scale : {1, 2}) {
            const QString file = folder.filePath(bitmap.name + (scale == 2 ? "@2x.png" : ".png"));
            // Light compression without row filters: the files grow by a few
            // kilobytes and decode in half the time, once per process.
            if (!Draw(bitmap, scale).save(file, "PNG", 80)) {
                std::fprintf(stderr, "%s: cannot write %s\n", argv[0], qPrintable(file));
                return 1;
            }
        }
    }
    return 0;
}
