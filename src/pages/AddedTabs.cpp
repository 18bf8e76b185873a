// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "pages/AddedTabs.h"

#include "pages/CellStore.h"
#include "pages/PageGrids.h"
#include "pages/PageTable.h"
#include "pages/PageTree.h"
#include "platform/Numeric.h"

#include <tessaly/TessalyError.h>

namespace tessaly {

namespace {

// Runs `body`, handing a run-time error to the host as the public error.
template <class Body>
auto ReportToHost(Body&& body)
{
    try {
        return body();
    } catch (const RuntimeError& error) {
        throw TessalyError(error.number(), error.description());
    }
}

} // namespace

AddedTabs::AddedTabs(PageTree& tree, PageGrids& pages, CellStore& cells)
    : m_tree(tree)
    , m_pages(pages)
    , m_cells(cells)
{
}

int16_t AddedTabs::AddTab(const QString& strTabName, int16_t nFlexGridColCount)
{
    return ReportToHost([&] {
        m_tree.AddRootNode(strTabName);
        const int spare = m_addedTabs.UBound();
        const int16_t page = m_pages.AppendPage();
        m_pages.SetColumns(page, nFlexGridColCount);
        m_addedTabs.ReDimPreserve(spare + 1);
        m_addedTabs(spare) = {page, strTabName};
        m_pages.SetFlexGridTitle(page, 1, ToInt16(nFlexGridColCount - 1));
        m_pages.InitFlexGrid(page, AddedValueWidth);
        // Every page has the records of the widest fixed page, whatever its width.
        m_cells.GrowForPage(page);
        return page;
    });
}

void AddedTabs::RemoveTab(int16_t TabNumber)
{
    ReportToHost([&] {
        // Any page above 20 but the newest is refused before anything changes.
        if (TabNumber > LastFixedPage) {
            int16_t index = -1;
            FindAddedTabByNumber(TabNumber, index);
            if (TabNumber != m_pages.LastTab() || index < 0)
                Raise(errInvalidProcedureCall,
                      QStringLiteral("Page %1 is not the newest added page; remove added pages newest first").arg(TabNumber));
        }
        if (const PageEntry* page = FindPage(TabNumber)) {
            if (page->node)
                m_tree.RemoveNode(QLatin1String(page->node));
        } else if (TabNumber > LastFixedPage) {
            int16_t index = 0;
            const QString name = FindAddedTabByNumber(TabNumber, index);
            if (!name.isEmpty()) {
                m_tree.RemoveNode(name);
                m_addedTabs(index) = {-1, QString()};
            }
            m_pages.RemoveNewestPage();
        }
    });
}

QStringList AddedTabs::Names() const
{
    QStringList names;
    for (const AddedTab& tab : m_addedTabs)
        if (tab.TabNumber > LastFixedPage)
            names << tab.TabName;
    return names;
}

int16_t AddedTabs::FindAddedTabByName(const QString& name) const
{
    for (const AddedTab& tab : m_addedTabs)
        if (tab.TabName == name)
            return ToInt16(tab.TabNumber);
    return -1;
}

QString AddedTabs::FindAddedTabByNumber(int16_t number, int16_t& index) const
{
    for (int i = 0; i <= m_addedTabs.UBound(); ++i) {
        if (m_addedTabs(i).TabNumber == number) {
            index = int16_t(i);
            return m_addedTabs(i).TabName;
        }
    }
    return {};
}

} // namespace tessaly
