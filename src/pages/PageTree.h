// The page tree: its nodes, and what a click on a node shows on the right.
#pragma once

#include "layout/PanelControls.h"

namespace tessaly {

class AddedTabs;
class PageGrids;

class PageTree {
public:
    PageTree(PanelControls& controls, const PageGrids& pages, const AddedTabs& tabs);

    void InitTreeCtrl();
    void OrvenTreeView1_Click();
    void SetFraFlexGridVisible(int16_t page, bool visible);

private:
    PanelControls& c;
    const PageGrids& m_pages;
    const AddedTabs& m_tabs;
};

} // namespace tessaly
