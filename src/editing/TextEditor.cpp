// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The text editor of a page. It writes its text into the current cell at
// every key release, so the grid always holds what the user typed; number
// cells take digits only; the phone number drives every lock code; leaving
// the box checks the value limits.
#include "editing/Editors.h"

#include "frame/ReportError.h"
#include "frame/frmMsgBox.h"
#include "pages/CellStore.h"
#include "pages/PageGrids.h"
#include "platform/ModalBox.h"
#include "platform/Numeric.h"
#include "platform/VirtualKey.h"

#include <QPointer>

namespace tessaly {

namespace {

// The phone number cell: column 1 of the item so titled on page 0. Typing
// there rewrites every lock code.
bool IsPhoneNumberCell(int16_t page, const MSFlexGrid& grid)
{
    return page == 0 && grid.TextMatrix(grid.Row(), 0) == QLatin1String("Mobile Directory Number (MDN)")
        && grid.Col() == 1;
}

} // namespace

void Editors::txtEdit_GotFocus(int16_t Index)
{
    OnErrorReport("Event_Function", "txtEdit_GotFocus", [&] {
        m_pages.TextEditor(Index)->setSelStart(0);
        const MSFlexGrid* grid = m_pages.Grid(Index);
        m_editPart = Index;
        m_editRow = grid->Row();
        m_editCol = ToInt16(grid->Col());
        if (IsPhoneNumberCell(Index, *grid)) {
            // The focus comes back with the window's activation when the box
            // closes, which raises no second GotFocus.
            const QPointer<frmMsgBox> notice = new frmMsgBox(&m_panel.UserControl);
            notice->SetMessage(QStringLiteral("LOCK_CODE would be changed according to MDN"));
            ShowModal(*notice);
            delete notice.data();
            if (m_panel.Ended())
                return;
            m_pages.TextEditor(Index)->SetFocus();
        }
    });
}

void Editors::txtEdit_KeyPress(int16_t Index, int16_t& KeyAscii)
{
    OnErrorReport("Event_Function", "txtEdit_KeyPress", [&] {
        const MSFlexGrid* grid = m_pages.Grid(Index);
        if (!m_cells.HasRecord(Index, grid->Row(), grid->Col()))
            return; // a cell filled in bulk takes any character
        const CellAttr& attr = m_cells.Attr(Index, grid->Row(), grid->Col());
        if (attr.IsNumber && KeyAscii != vbKeyBack && (KeyAscii > '9' || KeyAscii < '0'))
            KeyAscii = 0;
    });
}

void Editors::txtEdit_KeyUp(int16_t Index, int16_t KeyCode, int16_t)
{
    OnErrorReport("Event_Function", "txtEdit_KeyUp", [&] {
        TextBox* box = m_pages.TextEditor(Index);
        MSFlexGrid* grid = m_pages.Grid(Index);
        box->SetFocus();
        grid->setTextMatrix(grid->Row(), grid->Col(), box->Text());
        if (KeyCode == vbKeyReturn) {
            box->setVisible(false); // raises txtEdit_LostFocus
            if (m_panel.Ended())
                return;
            grid->SetFocus();
        }
        if (IsPhoneNumberCell(Index, *grid)) {
            m_cells.SetLockCodes(grid->TextMatrix(grid->Row(), grid->Col()).right(4));
        }
    });
}

void Editors::txtEdit_LostFocus(int16_t)
{
    OnErrorReport("Event_Function", "txtEdit_LostFocus", [&] { CheckOverflow(); });
}

} // namespace tessaly
