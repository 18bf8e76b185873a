// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The skin's bitmaps as the build makes them, how the panel shows them at
// either device pixel ratio, and the installed faces that the layout's fonts
// map onto. The same binary runs again with QT_SCALE_FACTOR=2.
#include "layout/SkinArt.h"
#include "support/PanelFixture.h"

#include <QDir>
#include <QFontInfo>
#include <QImageReader>
#include <QPainter>

using namespace tessaly;

namespace {

// Every bitmap of the skin by name, its double rendering left out.
QStringList BitmapNames()
{
    QStringList names;
    for (const QString& file : QDir(QStringLiteral(":/tessaly/skin")).entryList({QStringLiteral("*.png")}))
        if (!file.endsWith(QLatin1String("@2x.png")))
            names << file.chopped(4);
    return names;
}

// A bitmap's size when it is an RGB picture of 8 bits a channel without
// alpha, else nothing.
QSize RgbSize(const QString& path)
{
    QImageReader reader(path);
    return reader.imageFormat() == QImage::Format_RGB32 ? reader.size() : QSize();
}

// Mean difference of two pictures of one size, 0 to 255 a channel.
double MeanDifference(const QPixmap& a, const QPixmap& b)
{
    const QImage x = a.toImage().convertToFormat(QImage::Format_RGB888);
    const QImage y = b.toImage().convertToFormat(QImage::Format_RGB888);
    if (x.isNull() || y.isNull())
        return 0;
    if (x.size() != y.size())
        return 255;
    double sum = 0;
    for (int row = 0; row < x.height(); ++row)
        for (int i = 0; i < x.width() * 3; ++i)
            sum += std::abs(x.constScanLine(row)[i] - y.constScanLine(row)[i]);
    return sum / (x.width() * x.height() * 3.0);
}

} // namespace

TEST(SkinArt, EveryBitmapIsBuiltAsRgbWithoutAlphaAndAgainAtTwiceItsSize)
{
    for (const QString& name : BitmapNames()) {
        const QSize single = RgbSize(QStringLiteral(":/tessaly/skin/%1.png").arg(name));
        EXPECT_FALSE(single.isEmpty()) << qPrintable(name);
        EXPECT_EQ(RgbSize(QStringLiteral(":/tessaly/skin/%1@2x.png").arg(name)), single * 2) << qPrintable(name);
    }
}

TEST(SkinArt, EachLookDiffersAtAGlanceFromTheOthersOfItsButton)
{
    for (const char* button : {"Read", "Write", "Exit", "Undo"}) {
        QList<QPixmap> states;
        for (const char* state : {"Idle", "Over", "Sel", "Dim"})
            states << SkinPicture(QStringLiteral("image%1%2").arg(QLatin1String(button), QLatin1String(state)));
        for (int i = 0; i < 4; ++i)
            for (int j = i + 1; j < 4; ++j)
                EXPECT_GT(MeanDifference(states[i], states[j]), 4.0) << button << " states " << i << " and " << j;
    }
    for (const auto& [rest, pressed] : {std::pair{"imageMinize", "imageMinimizeSel"}, {"imageClose", "imageCloseSel"},
                                        {"imgBtnOK0", "imgBtnOK1"}})
        EXPECT_GT(MeanDifference(SkinPicture(QLatin1String(rest)), SkinPicture(QLatin1String(pressed))), 4.0) << rest;
}

TEST(SkinArt, FilledBarFitsInsideTheEmptyBarsEdge)
{
    const QImage empty = SkinPicture(QStringLiteral("pbProgressBg")).toImage();
    const QImage fill = SkinPicture(QStringLiteral("pbProgress")).toImage();
    const qreal ratio = empty.devicePixelRatio();
    QImage bar = empty;
    QPainter(&bar).drawImage(QPointF(1, 1), fill); // what the bar shows at 100 %
    const auto at = [&](const QImage& image, int x, int y) { return image.pixelColor(int(x * ratio), int(y * ratio)); };
    for (int x : {0, 86, 172})
        for (int y : {0, 17})
            EXPECT_EQ(at(bar, x, y), at(empty, x, y)) << "edge at " << x << "," << y;
    for (int y : {1, 8, 16})
        EXPECT_EQ(at(bar, 0, y), at(empty, 0, y));
    // The fill stands out from the empty track.
    const QColor track = at(empty, 86, 9), filled = at(fill, 85, 8);
    EXPECT_GT(std::abs(track.lightness() - filled.lightness()) + std::abs(track.hue() - filled.hue()), 60);
}

using SkinShownTest = PanelFixture;

// Each hidden holder of the bitmap store shows the bitmap of its name,
// decoded once and shared, exactly at the holder's size.
TEST_F(SkinShownTest, StoreHoldsItsBitmapsDecodedOnceAtTheScreensRatio)
{
    const qreal ratio = qGuiApp->devicePixelRatio() > 1 ? 2 : 1;
    int holders = 0;
    for (Image* holder : host->findChildren<Image*>()) {
        if (holder->Visible())
            continue;
        const QPixmap art = SkinPicture(holder->objectName());
        EXPECT_EQ(holder->Picture().cacheKey(), art.cacheKey()) << qPrintable(holder->objectName());
        EXPECT_EQ(art.deviceIndependentSize(), QSizeF(holder->size())) << qPrintable(holder->objectName());
        EXPECT_EQ(art.devicePixelRatio(), ratio);
        ++holders;
    }
    EXPECT_EQ(holders, 21);
    EXPECT_EQ(panel().imgDataBack->Picture().cacheKey(), SkinPicture(QStringLiteral("imageBasicInfo2")).cacheKey());
}

TEST_F(SkinShownTest, PanelDrawsItsBackgroundAtTheScreensPixelRatio)
{
    const QImage shown = host->grab().toImage();
    const QImage art = SkinPicture(QStringLiteral("Tessaly")).toImage();
    const qreal ratio = qGuiApp->devicePixelRatio() > 1 ? 2 : 1;
    EXPECT_EQ(shown.size(), QSize(720, 562) * ratio);
    // Places where no control lies: the panel shows its bitmap pixel for pixel.
    for (QPoint at : {QPoint(3, 3), QPoint(715, 40), QPoint(10, 545), QPoint(230, 300), QPoint(710, 555)})
        for (QPoint offset : {QPoint(0, 0), QPoint(1, 1)})
            EXPECT_EQ(shown.pixel(at * ratio + offset), art.pixel(at * ratio + offset)) << at.x() << "," << at.y();
}

TEST_F(SkinShownTest, LayoutFontsMapOntoInstalledFaces)
{
    EXPECT_EQ(QFontInfo(panel().txtESN->font()).family(), "Tahoma");
    // "굴림" draws Korean with real glyphs, not boxes.
    const QFont korean = panel().Label1->font();
    EXPECT_NE(QFontInfo(korean).family(), QFontInfo(QFont()).family());
    EXPECT_TRUE(QFontMetrics(korean).inFontUcs4(U'굴') && QFontMetrics(korean).inFontUcs4(U'림'));
}
