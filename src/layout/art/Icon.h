// halvane's application icon: the title bar's emblem grown to an icon, signal
// bars in amber on a slate tile, over the steel and amber of the title band.
#pragma once

class QPainter;

namespace tessaly::art {

// The icon's drawing grid: it paints in a square of this many units.
inline constexpr int IconGrid = 48;

void PaintIcon(QPainter& painter);

} // namespace tessaly::art
