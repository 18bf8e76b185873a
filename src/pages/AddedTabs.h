// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Pages of the host's own, added behind page 20 and removed newest first;
// and RemoveTab taking a fixed page's node out of the tree. Both report a
// failure to the host as the call's failure.
#pragma once

#include "pages/PageRecords.h"
#include "platform/Arrays.h"

#include <QStringList>

namespace tessaly {

class CellStore;
class PageGrids;
class PageTree;

class AddedTabs {
public:
    AddedTabs(PageTree& tree, PageGrids& pages, CellStore& cells);

    int16_t AddTab(const QString& strTabName, int16_t nFlexGridColCount);
    void RemoveTab(int16_t TabNumber);

    // The nodes of the added pages, oldest first.
    QStringList Names() const;
    // The number of the added page with that node, or -1.
    int16_t FindAddedTabByName(const QString& name) const;
    // The node of added page `number`, with its place in the list; empty
    // when no added page has that number.
    QString FindAddedTabByNumber(int16_t number, int16_t& index) const;

private:
    PageTree& m_tree;
    PageGrids& m_pages;
    CellStore& m_cells;
    Array1D<AddedTab> m_addedTabs;
};

} // namespace tessaly
