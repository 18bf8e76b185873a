// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// A text's ink: the text drawn once on a transparent ground at the device's
// pixel ratio, and copied from there at every later paint. Drawing text
// blends each glyph's coverage with the pen, which for a caption costs ten
// times the copy; Qt blends that coverage linearly, so the copy laid over
// the same ground gives the same pixels (a channel may round one level apart
// where the pen is neither black nor white).
#pragma once

#include <QFont>
#include <QImage>
#include <QList>
#include <QRgb>
#include <QSize>
#include <QString>

#include <functional>

class QPainter;

namespace tessaly {

class TextInk {
public:
    // All that the ink depends on: the text, its font and pen, how it is
    // laid out (the caller's flags) and the box it is drawn in, with any
    // margin the caller leaves for glyphs that reach past the text.
    struct Key {
        QString text;
        QFont font;
        QRgb pen = 0;
        int flags = 0;
        QSize box;
        bool operator==(const Key&) const = default;
    };

    // Paints, with the box's top left at `at`, what `draw` makes of the key
    // in a painter set to its font on the box's transparent ground. The
    // inks of the last few keys are kept (a page title that goes back and
    // forth between two pages, a node drawn selected and not), so `draw`
    // runs again only for another key, pixel ratio or resolution; where `at`
    // falls between device pixels, a copy would be resampled, so `draw`
    // paints there directly.
    void paint(QPainter& painter, QPoint at, const Key& key, const std::function<void(QPainter&)>& draw);

private:
    struct Ink {
        Key key;
        qreal ratio = 0;
        int dpi = 0;
        QImage image;
    };
    static constexpr qsizetype Kept = 4;
    QList<Ink> m_inks; // the most recently drawn first
};

} // namespace tessaly
