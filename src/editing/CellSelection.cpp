// Selecting a cell and laying an editor over it. A click or an arrow key only
// moves the current cell, which closes the page's editors; a double click or
// the release of Enter or F2 opens the editor that the cell's attributes ask for.
#include "panel/Panel.h"

#include "frame/ReportError.h"
#include "platform/VirtualKey.h"

namespace tessaly {

// Hides the text box, then the combo box, of a page; once both are closed,
// the page's cell changes and scrolling are no longer listened to.
void Panel::CloseEditors(int16_t Index)
{
    TextBox* box = txtEdit(Index);
    ComboBox* combo = cboEditCell(Index);
    if (!box->isHidden()) {
        box->setVisible(false); // may raise txtEdit_LostFocus
        if (Ended())
            return;
    }
    combo->setVisible(false);
    if (box->isHidden())
        StopWatchingEditors(Index);
}

void Panel::MSFlexGrid1_RowConlChange(int16_t Index)
{
    OnErrorReport("Event_Function", "MSFlexGrid1_RowConlChange", [&] { CloseEditors(Index); });
}

void Panel::MSFlexGrid1_Scroll(int16_t Index)
{
    OnErrorReport("Event_Function", "MSFlexGrid1_Scroll", [&] { CloseEditors(Index); });
}

void Panel::MSFlexGrid1_DblClick(int16_t Index)
{
    OnErrorReport("Event_Function", "MSFlexGrid1_DblClick", [&] { SetComboOrTextBox(Index); });
}

// The arrow keys move the current cell inside the item area: never onto the
// title row or into the title column.
void Panel::MSFlexGrid1_KeyDown(int16_t Index, int16_t KeyCode, int16_t)
{
    MSFlexGrid* grid = MSFlexGrid1(Index);
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

void Panel::MSFlexGrid1_KeyUp(int16_t Index, int16_t KeyCode, int16_t)
{
    if (KeyCode == vbKeyReturn || KeyCode == vbKeyF2)
        SetComboOrTextBox(Index);
}

void Panel::SetComboOrTextBox(int16_t Index)
{
    OnErrorReport("Common_Function", "SetComboOrTextBox", [&] {
        if (g_arrCellAttr.UBound(1) == 0)
            return; // no cell store: nothing to edit
        MSFlexGrid* grid = MSFlexGrid1(Index);
        const int col = grid->Col();
        const int row = grid->Row();
        const QString text = grid->TextMatrix(row, col);
        const CellAttr attr = g_arrCellAttr(Index, grid->Rows() * col + row);
        const QStringList items = attr.ComboStr.isEmpty() ? QStringList() : attr.ComboStr.split(QLatin1Char('|'));

        TextBox* box = txtEdit(Index);
        ComboBox* combo = cboEditCell(Index);
        box->setVisible(false); // may raise txtEdit_LostFocus
        if (Ended())
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

void Panel::SetCellPosition()
{
    OnErrorReport("Common_Function", "SetCellPosition", [&] {
        for (int16_t page = 0; page <= g_nLastTab; ++page) {
            MSFlexGrid* grid = MSFlexGrid1(page);
            grid->setCol(0);
            grid->setRow(1);
            grid->setLeftCol(0);
            grid->setTopRow(1);
            grid->setCellBackColor(RGB(240, 240, 240));
        }
    });
}

} // namespace tessaly
