// Draws halvane's icon into the folder given as the only argument, laid out as
// an icon theme's folder is: hicolor/<n>x<n>/apps/halvane.png at each size
// desktops ask for, and hicolor/scalable/apps/halvane.svg from the same
// painting.
#include "Icon.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>

#include <cstdio>

using namespace tessaly::art;

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

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString sized = QStringLiteral("hicolor/%1x%1/apps").arg(size);
        if (!folder.mkpath(sized) || !SavePng(folder.filePath(sized + QStringLiteral("/halvane.png")), size)) {
            std::fprintf(stderr, "%s: cannot write the %d pixel icon\n", argv[0], size);
            return 1;
        }
    }
    if (!folder.mkpath(QStringLiteral("hicolor/scalable/apps"))
        || !SaveSvg(folder.filePath(QStringLiteral("hicolor/scalable/apps/halvane.svg")))) {
        std::fprintf(stderr, "%s: cannot write the scalable icon\n", argv[0]);
        return 1;
    }
    return 0;
}
