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

void Panel::UserControl_Initialize()
{
    OnErrorReport("Event_Function", "UserControl_Initialize", [&] {
        m_pages.LoadFixedPages();
        c.UserControl.setFixedSize(ToPixels(10800), ToPixels(8430));
        m_tree.InitTreeCtrl();

        c.fraBasicInfo->setWidth(6735);
        c.fraBasicInfo->setHeight(6855);
        c.fraMIPProfile->setWidth(6735);
        c.fraMIPProfile->setHeight(6855);
        c.fraMIPProfile->Move(3720, 1340, 6735, 6855);
        c.fraMIPProfile->setVisible(false);

        m_pages.DressFixedPages();
        m_pages.SetFlexGridTitleAll();
        m_cells.SizeForPages();

        c.fraBasicInfo->Move(3720, 1340);
        m_commands.ShowStartLooks();
        c.imgDataBack->setPicture(c.imageBasicInfo2->Picture());
        m_frame.ShowStartLooks();
        c.fraBasicInfo->setVisible(true);
        c.fraMIPProfile->setVisible(false);
        c.OrvenTreeView1->SelectNode(QStringLiteral("Basic Information"));

        c.lblTitle->Move(630, 120);
        c.lblTitleShadow->Move(c.lblTitle->Left() + 15, c.lblTitle->Top() + 15);
        m_profiles.FillCountList();
    });
}

// The bar is rebuilt from the counters whenever the panel repaints. A
// control drawn at once makes Qt first paint what is pending on the panel
// around it; that is no repaint of the panel, and the bar stays as drawn.
void Panel::UserControl_Paint()
{
    OnErrorReport("Event_Function", "UserControl_Paint", [&] {
        if (m_progress.Drawing())
            return;
        c.pbProgressBg->Refresh();
        m_progress.DrawProgressBar();
    });
}

void Panel::EndAfterModalBoxes(std::unique_ptr<Panel> panel)
{
    Panel& ending = *panel;
    ending.c.Handlers.reset();
    auto* rest = new EndedPanel(std::move(panel));
    const QObjectList children = ending.c.UserControl.children();
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
