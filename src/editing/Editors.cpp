// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Selecting a cell and laying an editor over it. A click or an arrow key only
// moves the current cell, which closes the page's editors; a double click or
// the release of Enter or F2 opens the editor that the cell's attributes ask for.
#include "editing/Editors.h"

#include "frame/ReportError.h"
#include "pages/CellStore.h"
#include "pages/PageGrids.h"
#include "platform/VirtualKey.h"

namespace tessaly {

Editors::Editors(const PanelWidget& panel, const PageGrids& pages, CellStore& cells)
    : m_panel(panel)
    , m_pages(pages)
    , m_cells(cells)
{
}

// Hides the text box, then the combo box, of a page; once both are closed,
// the page's cell changes and scrolling are no longer listened to.
void Editors::CloseEditors(int16_t Index)
{
    TextBox* box = m_pages.TextEditor(Index);
    ComboBox* combo = m_pages.ListEditor(Index);
    if (!box->isHidden()) {
        box->setVisible(false); // may raise txtEdit_LostFocus
        if (m_panel.Ended())
            return;
    }
    combo->setVisible(false);
    if (box->isHidden())
        StopWatchingEditors(Index);
}

void Editors::MSFlexGrid1_RowConlChange(int16_t Index)
{
    OnErrorReport("Event_Function", "MSFlexGrid1_RowConlChange", [&] { CloseEditors(Index); });
}

void Editors::MSFlexGrid1_Scroll(int16_t Index)
{
    OnErrorReport("Event_Function", "MSFlexGrid1_Scroll", [&] { CloseEditors(Index); });
}

void Editors::MSFlexGrid1_DblClick(int16_t Index)
{
    OnErrorReport("Event_Function", "MSFlexGrid1_DblClick", [&] { SetComboOrTextBox(Index); });
}

// The arrow keys move the current cell inside the item area: never onto the
// title row or into the title column.
void Editors::MSFlexGrid1_KeyDown(int16_t Index, int16_t KeyCode, int16_t)
{
    MSFlexGrid* grid = m_pages.Grid(Index);
    switch (KeyCode) {
    case vbKeyDown:
        if (grid->Row() != grid->Rows() - 1)
            grid->setRow(grid->Row() + 1);
        break;
    case vbKeyLeft:
        if (grid->Col() > 1)
            grid->setCol(grid->Col() - 1);
        break;
    case vbKeyRight:
        if (grid->Col() != grid->Cols() - 1)
            grid->setCol(grid->Col() + 1);
        break;
    case vbKeyUp:
        if (grid->Row() > 1)
            grid->setRow(grid->Row() - 1);
        break;
    default:
        break;
    }
}

void Editors::MSFlexGrid1_KeyUp(int16_t Index, int16_t KeyCode, int16_t)
{
    if (KeyCode == vbKeyReturn || KeyCode == vbKeyF2)
        SetComboOrTextBox(Index);
}

void Editors::SetComboOrTextBox(int16_t Index)
{
    OnErrorReport("Common_Function", "SetComboOrTextBox", [&] {
        if (!m_cells.Sized())
            return; // no cell store: nothing to edit
        MSFlexGrid* grid = m_pages.Grid(Index);
        const int col = grid->Col();
        const int row = grid->Row();
        const QString text = grid->TextMatrix(row, col);
        // A cell the host filled in bulk has no record: its column says
        // whether a text box opens over it, and how long a text it takes.
        CellAttr attr;
        if (m_cells.HasRecord(Index, row, col)) {
            attr = m_cells.Attr(Index, row, col);
        } else {
            attr.ReadOnly = col > 0 && grid->ColEditLength(col) == 0;
            attr.FormatType = col > 0 ? QString(grid->ColEditLength(col), u'#') : QString();
        }
        const QStringList items = attr.ComboStr.isEmpty() ? QStringList() : attr.ComboStr.split(QLatin1Char('|'));

        TextBox* box = m_pages.TextEditor(Index);
        ComboBox* combo = m_pages.ListEditor(Index);
        box->setVisible(false); // may raise txtEdit_LostFocus
        if (m_panel.Ended())
            return;
        combo->setVisible(false);
        if (grid->LeftCol() > col || grid->TopRow() > row)
            return; // scrolled off at the left or the top
        if (col == 0 || attr.ReadOnly)
            return; // titles and read-only values are not edited

        const float top = grid->Top() + float(grid->CellTop());
        const float left = grid->Left() + float(grid->CellLeft());
        if (attr.ComboStr.isEmpty()) {
            box->setVisible(true);
            box->setEnabled(true);
            box->setTop(top);
            box->setLeft(left);
            box->setWidth(float(grid->CellWidth()));
            box->setHeight(float(grid->CellHeight() - 100));
            box->setMaxLength(int(attr.FormatType.size()));
            box->setText(text);
            grid->CoverCurrentCell(*box);
            WatchEditorsClosing(Index);
            box->SetFocus();
            return;
        }

        combo->Clear();
        int selected = -1;
        for (int i = 0; i < items.size(); ++i) {
            combo->AddItem(items[i]);
            if (items[i] == text)
                selected = i;
        }
        combo->setVisible(true);
        WatchEditorsClosing(Index);
        combo->setTop(top);
        combo->setLeft(left);
        combo->setWidth(float(grid->CellWidth()));
        grid->CoverCurrentCell(*combo);
        if (selected == -1)
            combo->AddItem(text); // the cell's own value, offered but not chosen
        else
            combo->setListIndex(selected);
        combo->SetFocus();
        combo->DropDown();
    });
}

void Editors::SetCellPosition()
{
    OnErrorReport("Common_Function", "SetCellPosition", [&] {
        for (int16_t page = 0; page <= m_pages.LastTab(); ++page) {
            MSFlexGrid* grid = m_pages.Grid(page);
            grid->setCol(0);
            grid->setRow(1);
            grid->setLeftCol(0);
            grid->setTopRow(1);
            grid->setCellBackColor(RGB(240, 240, 240));
        }
    });
}

// A grid raises RowColChange at every cell the host writes, thousands in a
// row, and Scroll with every step of the wheel; their handlers only close the
// page's editors. So the editors listen to the two while an editor of the
// page is open, and stop at the first of them that finds both closed.
void Editors::WatchEditorsClosing(int16_t Index)
{
    if (size_t(Index) >= m_editorWatch.size())
        m_editorWatch.resize(size_t(Index) + 1);
    auto& [cellChange, scroll] = m_editorWatch[size_t(Index)];
    if (cellChange)
        return;
    MSFlexGrid* grid = m_pages.Grid(Index);
    cellChange = QObject::connect(grid, &MSFlexGrid::RowColChange, m_panel.Handlers.get(),
                                  [this, Index] { MSFlexGrid1_RowConlChange(Index); });
    scroll = QObject::connect(grid, &MSFlexGrid::Scroll, m_panel.Handlers.get(), [this, Index] { MSFlexGrid1_Scroll(Index); });
}

void Editors::StopWatchingEditors(int16_t Index)
{
    if (size_t(Index) >= m_editorWatch.size())
        return;
    auto& [cellChange, scroll] = m_editorWatch[size_t(Index)];
    QObject::disconnect(cellChange);
    QObject::disconnect(scroll);
}

} // namespace tessaly
