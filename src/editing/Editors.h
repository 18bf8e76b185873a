// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// In-place editing of the page grids: the current cell moved by clicks and
// arrow keys, a text box or a list opened exactly over it, the text editor's
// rules as the user types, and the value limits checked when it is left.
// The editors remember the cell where text editing began.
#pragma once

#include "layout/PanelWidget.h"
#include "pages/PageRecords.h"

#include <QMetaObject>

#include <cstdint>
#include <utility>
#include <vector>

namespace tessaly {

class CellStore;
class PageGrids;

class Editors {
public:
    Editors(const PanelWidget& panel, const PageGrids& pages, CellStore& cells);

    // Selecting a cell and opening its editor.
    void MSFlexGrid1_RowConlChange(int16_t Index);
    void MSFlexGrid1_Scroll(int16_t Index);
    void MSFlexGrid1_DblClick(int16_t Index);
    void MSFlexGrid1_KeyDown(int16_t Index, int16_t KeyCode, int16_t Shift);
    void MSFlexGrid1_KeyUp(int16_t Index, int16_t KeyCode, int16_t Shift);
    void SetComboOrTextBox(int16_t Index);
    // Every page back to its top left, the first item row current.
    void SetCellPosition();

    // The text editor and the combo editor.
    void txtEdit_GotFocus(int16_t Index);
    void txtEdit_KeyPress(int16_t Index, int16_t& KeyAscii);
    void txtEdit_KeyUp(int16_t Index, int16_t KeyCode, int16_t Shift);
    void txtEdit_LostFocus(int16_t Index);
    void cboEditCell_Click(int16_t Index);

    // The value limits.
    void CheckOverflow();
    static ItemBoundary SetBoundaryOfItem(const QString& strTitle, int32_t lReserved, int16_t nMin, int16_t nMax,
                                          int16_t nDefault);

private:
    void CloseEditors(int16_t Index);
    void WatchEditorsClosing(int16_t Index);
    void StopWatchingEditors(int16_t Index);

    const PanelWidget& m_panel;
    const PageGrids& m_pages;
    CellStore& m_cells;
    int16_t m_editPart = 0;
    int32_t m_editRow = 0; // a page filled in bulk has rows beyond 32767
    int16_t m_editCol = 0;
    // Per page, while an editor is open: its grid's RowColChange and Scroll.
    std::vector<std::pair<QMetaObject::Connection, QMetaObject::Connection>> m_editorWatch;
};

} // namespace tessaly
