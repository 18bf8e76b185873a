// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The page tree: its nodes, and what a click on a node shows on the right,
// with the page's name over the data area. The added pages and the MIP
// profiles change the nodes through it.
#pragma once

#include "layout/PanelControls.h"

namespace tessaly {

class AddedTabs;
class PageGrids;

class PageTree {
public:
    PageTree(const PanelWidget& panel, TreeControls controls, PageGrids& pages, const AddedTabs& tabs);

    void InitTreeCtrl();
    // Start-up: the basic information's node chosen, without a click.
    void SelectStartNode();
    void OrvenTreeView1_Click();

    // A node of the host's at the root, after the others; a node gone with
    // its children.
    void AddRootNode(const QString& text);
    void RemoveNode(const QString& text);
    // The nodes of the first `count` MIP profile pages under theirs, the
    // others gone.
    void ShowProfileNodes(int count);

private:
    const PanelWidget& m_panel;
    TreeControls m_controls;
    PageGrids& m_pages;
    const AddedTabs& m_tabs;
};

} // namespace tessaly
