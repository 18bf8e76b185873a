// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "pages/PageTree.h"

#include "frame/ReportError.h"
#include "pages/AddedTabs.h"
#include "pages/PageGrids.h"
#include "pages/PageTable.h"

namespace tessaly {

PageTree::PageTree(const PanelWidget& panel, TreeControls controls, PageGrids& pages, const AddedTabs& tabs)
    : m_panel(panel)
    , m_controls(controls)
    , m_pages(pages)
    , m_tabs(tabs)
{
}

void PageTree::InitTreeCtrl()
{
    OnErrorReport("Common_Function", "InitTreeCtrl", [&] {
        for (const PageEntry& page : FixedPages()) {
            if (page.node && page.parent)
                m_controls.tree.AddChildNode(QLatin1String(page.node), QLatin1String(page.parent));
            else if (page.node)
                m_controls.tree.AddRootNode(QLatin1String(page.node));
        }
    });
}

void PageTree::SelectStartNode()
{
    for (const PageEntry& page : FixedPages())
        if (page.view == PageView::BasicInfo)
            m_controls.tree.SelectNode(QLatin1String(page.node));
}

void PageTree::OrvenTreeView1_Click()
{
    OnErrorReport("Event_Function", "OrvenTreeView1_Click", [&] {
        m_pages.HideAll();
        m_controls.basicInfo.setVisible(false);
        m_controls.profiles.setVisible(false);

        const QString text = m_controls.tree.SelectedText();
        m_controls.dataTitle.setCaption(text);

        // The node's text alone picks the page; the fixed nodes come first.
        const PageEntry* fixed = FindPageByNode(text);
        if (fixed && fixed->view == PageView::BasicInfo) {
            m_controls.basicInfo.setVisible(true);
            m_controls.basicInfo.ZOrder();
        } else if (fixed && fixed->view == PageView::Profiles) {
            m_controls.profiles.setVisible(true);
            m_controls.profiles.ZOrder();
        } else {
            const int16_t page = fixed ? fixed->number : m_tabs.FindAddedTabByName(text);
            if (page != -1) {
                m_pages.Grid(page)->setAccessibleName(text);
                m_pages.SetFraFlexGridVisible(page, true);
            }
        }

        // The panel's own surface changes under the page's title alone:
        // repainting that runs the panel's Paint, as a full repaint would.
        if (!m_panel.Ended())
            m_panel.UserControl.update(m_controls.dataTitle.geometry());
    });
}

void PageTree::AddRootNode(const QString& text)
{
    m_controls.tree.AddRootNode(text);
}

void PageTree::RemoveNode(const QString& text)
{
    m_controls.tree.RemoveNode(text);
}

void PageTree::ShowProfileNodes(int count)
{
    for (int16_t page = FirstProfilePage; page <= LastProfilePage; ++page)
        m_controls.tree.RemoveNode(QLatin1String(FindPage(page)->node));
    for (int16_t page = FirstProfilePage; page < FirstProfilePage + count; ++page) {
        const PageEntry* entry = FindPage(page);
        m_controls.tree.AddChildNode(QLatin1String(entry->node), QLatin1String(entry->parent));
    }
}

} // namespace tessaly
