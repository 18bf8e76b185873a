// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// What a user does to the panel, done by halvane for a screenshot, and the
// rendering of what the screen then shows.
#pragma once

#include "UnattendedDialogs.h"

#include <QImage>
#include <QStringList>

class QWidget;
class Tessaly;

namespace halvane {

// The nodes of the panel's pages in the tree's order, the fixed pages' and
// then those the model added, as any host finds them among the panel's
// widgets.
QStringList PageNodes(Tessaly& panel);
// Clicks the node of one of those pages as a user would, so that its page
// shows; false for a text that names none.
bool ClickTreeNode(Tessaly& panel, const QString& text);
// Clicks a button of the command bar as a user would.
void ClickCommand(Tessaly& panel, int index);
// Double-clicks a value cell of the page on view as a user would, which
// opens its editor, finding the cell where the grid tells a screen reader it
// is. `cell` is "row,column".
bool OpenCellEditor(Tessaly& panel, const QString& cell);

// The panel as the screen shows it, with any list dropped open over it and
// the dialogs that were shown over it.
QImage RenderWithPopups(Tessaly& panel, const std::vector<UnattendedDialogs::Seen>& dialogs);
// A window as the screen shows it: what its mask cuts away is transparent.
QImage RenderShaped(QWidget& window);

} // namespace halvane
