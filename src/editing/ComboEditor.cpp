// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The combo editor of a page: a pick writes the item's text into the current
// cell and does nothing else.
#include "editing/Editors.h"

#include "frame/ReportError.h"
#include "pages/PageGrids.h"

namespace tessaly {

void Editors::cboEditCell_Click(int16_t Index)
{
    OnErrorReport("Event_Function", "cboEditCell_Click", [&] {
        MSFlexGrid* grid = m_pages.Grid(Index);
        const int row = grid->Row();
        const int col = grid->Col();
        grid->setTextMatrix(row, col, m_pages.ListEditor(Index)->Text());
    });
}

} // namespace tessaly
