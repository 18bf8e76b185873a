// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The skin's bitmaps as the generator knows them: each has a name, a size in
// pixels, and a painting that draws it in those coordinates at any scale.
#pragma once

#include <QList>
#include <QSize>
#include <QString>

#include <functional>

class QPainter;

namespace tessaly::art {

struct Bitmap {
    QString name;
    QSize size;
    std::function<void(QPainter&)> paint;
};

QList<Bitmap> PanelBackground();
QList<Bitmap> PageBackgrounds();
QList<Bitmap> WindowButtons();
QList<Bitmap> CommandButtons();
QList<Bitmap> ProgressBars();
QList<Bitmap> MessageBox();

// The backgrounds of the two windows.
void PaintPanel(QPainter& painter);
void PaintMessageBox(QPainter& painter);

} // namespace tessaly::art
