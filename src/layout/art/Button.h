// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The push-button face that every button of the skin shares, in its four
// looks: at rest, lit under the pointer, pressed in, and unavailable.
#pragma once

#include <QColor>
#include <QRect>

class QFont;
class QPainter;
class QString;

namespace tessaly::art {

enum class Look { Idle, Over, Sel, Dim };

// The face filling `face`; its rounded corners show the ground already painted.
void PaintButtonFace(QPainter& painter, const QRect& face, Look look);

// What a caption or glyph on the face is drawn in.
QColor InkOf(Look look);

// Where a caption or glyph of the face goes: pressed in, it sits a pixel
// lower and to the right.
QRectF ContentOf(const QRect& face, Look look);

// A face with its caption centred.
void PaintButton(QPainter& painter, const QRect& face, Look look, const QString& caption, const QFont& font);

} // namespace tessaly::art
