#include "pages/PageTree.h"

#include "frame/ReportError.h"
#include "pages/AddedTabs.h"
#include "pages/PageGrids.h"
#include "pages/PageTable.h"

namespace tessaly {

PageTree::PageTree(PanelControls& controls, const PageGrids& pages, const AddedTabs& tabs)
    : c(controls)
    , m_pages(pages)
    , m_tabs(tabs)
{
}

void PageTree::InitTreeCtrl()
{
    OnErrorReport("Common_Function", "InitTreeCtrl", [&] {
        for (const PageEntry& page : FixedPages()) {
            if (page.node && page.parent)
                c.OrvenTreeView1->AddChildNode(QLatin1String(page.node), QLatin1String(page.parent));
            else if (page.node)
                c.OrvenTreeView1->AddRootNode(QLatin1String(page.node));
        }
    });
}

void PageTree::OrvenTreeView1_Click()
{
    OnErrorReport("Event_Function", "OrvenTreeView1_Click", [&] {
        // Every page goes back to its top left with the first item row current.
        for (int16_t page = 0; page <= m_pages.LastTab(); ++page) {
            c.fraFlexGrid(page)->setVisible(false);
            MSFlexGrid* grid = c.MSFlexGrid1(page);
            grid->setVisible(false);
            grid->setLeftCol(0);
            grid->setTopRow(1);
            grid->setCol(0);
            grid->setRow(1);
        }
        c.fraBasicInfo->setVisible(false);
        c.fraMIPProfile->setVisible(false);

        const QString text = c.OrvenTreeView1->SelectedText();
        c.lblDataTitle->setCaption(text);

        // The node's text alone picks the page; the fixed nodes come first.
        const PageEntry* fixed = FindPageByNode(text);
        if (fixed && fixed->view == PageView::BasicInfo) {
            c.fraBasicInfo->setVisible(true);
            c.fraBasicInfo->ZOrder();
        } else if (fixed && fixed->view == PageView::Profiles) {
            c.fraMIPProfile->setVisible(true);
            c.fraMIPProfile->ZOrder();
        } else {
            const int16_t page = fixed ? fixed->number : m_tabs.FindAddedTabByName(text);
            if (page != -1) {
                c.MSFlexGrid1(page)->setAccessibleName(text);
                SetFraFlexGridVisible(page, true);
            }
        }

        // The panel's own surface changes under the page's title alone:
        // repainting that runs the panel's Paint, as a full repaint would.
        if (!c.Ended())
            c.UserControl.update(c.lblDataTitle->geometry());
    });
}

void PageTree::SetFraFlexGridVisible(int16_t page, bool visible)
{
    OnErrorReport("Common_Function", "SetFraFlexGridVisible", [&] {
        c.fraFlexGrid(page)->setVisible(visible);
        c.MSFlexGrid1(page)->setVisible(visible);
        c.cboEditCell(page)->setVisible(false);
        c.txtEdit(page)->setVisible(false);
        c.fraFlexGrid(page)->ZOrder();
        c.MSFlexGrid1(page)->ZOrder();
        c.cboEditCell(page)->ZOrder();
        c.txtEdit(page)->ZOrder();
    });
}

} // namespace tessaly
