// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The panel object behind Tessaly: it builds the controls, makes the
// subsystems that own the panel's state, hands each the controls it alone
// changes, and wires the controls' events to their handlers. Its own events
// are the start-up, the repaint and the end.
#pragma once

#include "commands/CommandBar.h"
#include "commands/ModelBinding.h"
#include "commands/Progress.h"
#include "editing/Editors.h"
#include "frame/WindowFrame.h"
#include "layout/PanelControls.h"
#include "pages/AddedTabs.h"
#include "pages/BasicInfo.h"
#include "pages/CellStore.h"
#include "pages/MipProfiles.h"
#include "pages/PageGrids.h"
#include "pages/PageTree.h"

#include <memory>

class Tessaly;

namespace tessaly {

class Panel {
public:
    explicit Panel(Tessaly& userControl);
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    // Ends a panel whose widget is going while a modal box is open, which a
    // handler of the panel may be waiting on: no handler runs any more, and
    // the controls and state live on, hidden, until the boxes have closed.
    static void EndAfterModalBoxes(std::unique_ptr<Panel> panel);

    // The subsystems that answer the host.
    CellStore& Cells() { return m_cells; }
    PageGrids& Pages() { return m_pages; }
    AddedTabs& Tabs() { return m_tabs; }
    MipProfiles& Profiles() { return m_profiles; }
    BasicInfo& Info() { return m_info; }
    ModelBinding& Model() { return m_model; }

    // The controls, as the user sees them.
    const PanelControls& Controls() const { return c; }
    const QPixmap& Picture() const { return c.Picture; }

    void UserControl_Initialize();
    void UserControl_Paint();
    void UserControl_Terminate();
    void MemoryFree();

private:
    void WireEvents();
    void WirePageEvents();

    PanelControls c;
    PageGrids m_pages{c.ForPages()};
    // The tree answers a click on an added page's node from the added pages,
    // which add their nodes through it; it holds them only to ask.
    PageTree m_tree{c.Widget, c.ForTree(), m_pages, m_tabs};
    MipProfiles m_profiles{c.ForProfiles(), m_tree};
    CellStore m_cells{m_pages, m_profiles};
    AddedTabs m_tabs{m_tree, m_pages, m_cells};
    BasicInfo m_info{c.ForInfo()};
    Editors m_editors{c.Widget, m_pages, m_cells};
    Progress m_progress{c.Widget, c.ForProgress()};
    ModelBinding m_model{c.Widget, c.ForModel(), m_progress};
    WindowFrame m_frame{c.Widget, c.ForFrame()};
    CommandBar m_commands{c.Widget, c.ForCommands(), m_model, m_progress, m_editors, m_pages};
};

} // namespace tessaly

// The panel object behind a Tessaly widget.
tessaly::Panel& PanelOf(Tessaly& panel);

namespace tessaly {
// How many panels of this library are alive.
int LivePanels();
} // namespace tessaly
