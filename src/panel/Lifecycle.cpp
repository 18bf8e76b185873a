// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The panel's start-up, repaint and end.
#include "panel/Panel.h"

#include "frame/ReportError.h"
#include "platform/ModalBox.h"

#include <tessaly/Tessaly.h>

namespace tessaly {

namespace {

// What is left of a panel that ended while a box was open: its controls,
// hidden, and its state, until the boxes have closed. Then it ends as any
// panel does.
class EndedPanel : public QWidget {
public:
    explicit EndedPanel(std::unique_ptr<Panel> panel)
        : m_panel(std::move(panel))
    {
    }
    ~EndedPanel() override { m_panel->UserControl_Terminate(); }

private:
    std::unique_ptr<Panel> m_panel;
};

} // namespace

Panel::Panel(Tessaly& userControl)
    : c(userControl)
{
    WireEvents();
    UserControl_Initialize();
}

// The layout has placed every control; the start-up fills and dresses them.
void Panel::UserControl_Initialize()
{
    OnErrorReport("Event_Function", "UserControl_Initialize", [&] {
        m_pages.LoadFixedPages();
        m_tree.InitTreeCtrl();
        m_pages.DressFixedPages();
        m_pages.SetFlexGridTitleAll();
        m_cells.SizeForPages();
        m_commands.ShowStartLooks();
        m_frame.ShowStartLooks();
        m_tree.SelectStartNode();
        m_profiles.FillCountList();
    });
}

// The bar is rebuilt from the counters whenever the panel repaints.
void Panel::UserControl_Paint()
{
    OnErrorReport("Event_Function", "UserControl_Paint", [&] { m_progress.Redraw(); });
}

void Panel::EndAfterModalBoxes(std::unique_ptr<Panel> panel)
{
    Panel& ending = *panel;
    ending.c.Widget.Handlers.reset();
    auto* rest = new EndedPanel(std::move(panel));
    const QObjectList children = ending.c.Widget.UserControl.children();
    for (QObject* child : children)
        if (auto* control = qobject_cast<QWidget*>(child))
            control->setParent(rest);
    DeleteAfterModalBoxes(rest);
}

void Panel::UserControl_Terminate()
{
    OnErrorReport("Event_Function", "UserControl_Terminate", [&] { MemoryFree(); });
}

void Panel::MemoryFree()
{
    OnErrorReport("Common_Function", "MemoryFree", [&] {
        m_cells.Free();
        m_pages.UnloadAll();
    });
}

} // namespace tessaly
