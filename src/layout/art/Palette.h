// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The skin's colours and type: light steel faces and dark slate chrome with
// an amber accent, on the panel's own grey.
#pragma once

#include <QColor>
#include <QFont>
#include <QLinearGradient>

class QPainter;
class QRectF;

namespace tessaly::art {

// The panel's and the message box's window colour. Picture boxes fill with
// it where their bitmaps stop short of their rectangles, so the bitmaps of
// buttons are laid on ground of this grey and the seam does not show.
inline const QColor Ground{0xC3, 0xC3, 0xC3};

inline const QColor Card{0xE6, 0xE9, 0xEC};      // raised panels on the ground
inline const QColor CardEdge{0x8A, 0x94, 0x9F};
inline const QColor Sheet{0xF4, 0xF6, 0xF8};     // the pages
inline const QColor Well{0xFF, 0xFF, 0xFF};      // groups and fields on a page
inline const QColor WellEdge{0xA9, 0xB3, 0xBD};
inline const QColor SteelTop{0xF7, 0xF9, 0xFA};  // title bands
inline const QColor SteelBottom{0xC6, 0xCE, 0xD6};
inline const QColor SteelEdge{0x79, 0x85, 0x91};
inline const QColor SlateTop{0x4B, 0x59, 0x67};  // the data area's header
inline const QColor SlateBottom{0x27, 0x31, 0x3B};
inline const QColor WindowEdge{0x36, 0x41, 0x4C};
inline const QColor TrackEdge{0x6B, 0x77, 0x83}; // the progress bar's outline
inline const QColor AmberLight{0xFF, 0xE6, 0x9E};
inline const QColor Amber{0xEE, 0xB0, 0x30};
inline const QColor AmberDark{0xA9, 0x74, 0x0C};
inline const QColor Ink{0x1E, 0x28, 0x32};
inline const QColor InkMuted{0x9A, 0xA1, 0xA9};

// The layout's typeface, Tahoma, at a size in pixels: captions drawn into the
// bitmaps match the live text beside them.
QFont SkinFont(int pixels, bool bold = true);

// A top-to-bottom blend over the rows top to bottom; rows beyond keep the
// end colours.
QLinearGradient Vertical(qreal top, qreal bottom, const QColor& from, const QColor& to);

void DrawText(QPainter& painter, const QRectF& box, int flags, const QString& text, const QFont& font,
              const QColor& colour);

} // namespace tessaly::art
