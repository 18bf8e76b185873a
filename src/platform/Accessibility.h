// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// How the platform's own controls show themselves to screen readers and
// other assistive technology through Qt's accessibility: the grid as a table
// of cells with their row and column titles, picture controls that act as
// buttons (with a press action) or as a progress bar (with a value), and
// frames that give their controls in reading order, top to bottom and left
// to right, whatever their stacking order, and the page tree as a tree of
// its nodes.
#pragma once

class QAccessibleInterface;
class QWidget;

namespace tessaly {

class MSFlexGrid;
class OrvenTreeView;

// Makes the interfaces known to Qt, once a process; every control that has
// one calls it when it is made.
void InstallAccessibleInterfaces();

// The grid's table, made by the factory of InstallAccessibleInterfaces.
QAccessibleInterface* FlexGridAccessibleInterface(MSFlexGrid* grid);

// The page tree as a tree of its nodes, made by the same factory.
QAccessibleInterface* OrvenTreeViewAccessibleInterface(OrvenTreeView* tree);

// Tells an assistive technology listening that the grid's current cell, the
// child at `cell` of its table, now has the focus, if the grid has it.
void TellCurrentCell(MSFlexGrid& grid, int cell);

} // namespace tessaly
