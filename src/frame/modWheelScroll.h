// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Wheel scrolling of the page grids. A hook on a grid sees every event of the
// grid and of the widgets it is made of (its viewport and scroll bars) before
// they do: a wheel event moves the grid's first visible row by the hook's
// distance and goes no further; every other event passes on unchanged. The hooks are
// kept in one collection for the process, used on the GUI thread, that
// serves all its panels.
#pragma once

#include <cstdint>

class QWidget;

namespace tessaly {

class MSFlexGrid;

// Hooks `grid`, moving it `distance` rows a wheel event.
void SetWheelScroll(MSFlexGrid* grid, int32_t distance);
// Takes the hook off `grid`; nothing when it has none.
void RestoreWheelScroll(MSFlexGrid* grid);
// Takes the hooks off every grid inside `panel`, as the panel goes.
void RestoreWheelScrollWithin(const QWidget* panel);
// Whether `grid` has a hook.
bool HasWheelScroll(const MSFlexGrid* grid);
// TopRow moves by `lines`; the grid limits the value.
void Scroll_Grid(int32_t lines, MSFlexGrid* grid);

} // namespace tessaly
