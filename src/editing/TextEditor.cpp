// The text editor of a page. It writes its text into the current cell at
// every key release, so the grid always holds what the user typed; number
// cells take digits only; the phone number drives every lock code; leaving
// the box checks the value limits.
#include "panel/Panel.h"

#include "frame/ReportError.h"
#include "frame/frmMsgBox.h"
#include "platform/ModalBox.h"
#include "platform/Numeric.h"
#include "platform/VirtualKey.h"

#include <tessaly/Tessaly.h>

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

void Panel::txtEdit_GotFocus(int16_t Index)
{
    OnErrorReport("Event_Function", "txtEdit_GotFocus", [&] {
        txtEdit(Index)->setSelStart(0);
        const MSFlexGrid* grid = MSFlexGrid1(Index);
        g_nEditPart = Index;
        g_nEditRow = ToInt16(grid->Row());
        g_nEditCol = ToInt16(grid->Col());
        if (IsPhoneNumberCell(Index, *grid)) {
            // The focus comes back with the window's activation when the box
            // closes, which raises no second GotFocus.
            const QPointer<frmMsgBox> notice = new frmMsgBox(&UserControl);
            notice->SetMessage(QStringLiteral("LOCK_CODE would be changed according to MDN"));
            ShowModal(*notice);
            delete notice.data();
            if (Ended())
                return;
            txtEdit(Index)->SetFocus();
        }
    });
}

void Panel::txtEdit_KeyPress(int16_t Index, int16_t& KeyAscii)
{
    OnErrorReport("Event_Function", "txtEdit_KeyPress", [&] {
        const MSFlexGrid* grid = MSFlexGrid1(Index);
        const CellAttr& attr = g_arrCellAttr(Index, grid->Rows() * grid->Col() + grid->Row());
        if (attr.IsNumber && KeyAscii != vbKeyBack && (KeyAscii > '9' || KeyAscii < '0'))
            KeyAscii = 0;
    });
}

void Panel::txtEdit_KeyUp(int16_t Index, int16_t KeyCode, int16_t)
{
    OnErrorReport("Event_Function", "txtEdit_KeyUp", [&] {
        TextBox* box = txtEdit(Index);
        MSFlexGrid* grid = MSFlexGrid1(Index);
        box->SetFocus();
        grid->setTextMatrix(grid->Row(), grid->Col(), box->Text());
        if (KeyCode == vbKeyReturn) {
            box->setVisible(false); // raises txtEdit_LostFocus
            if (Ended())
                return;
            grid->SetFocus();
        }
        if (IsPhoneNumberCell(Index, *grid)) {
            const QString strLock = grid->TextMatrix(grid->Row(), grid->Col()).right(4);
            for (int i = 0; i <= g_arrLockCodeCells.UBound() - 1; ++i) {
                const LockCodeCell entry = g_arrLockCodeCells(i);
                MSFlexGrid1(entry.nPart)->setTextMatrix(entry.nRow, 1, strLock);
            }
        }
    });
}

void Panel::txtEdit_LostFocus(int16_t)
{
    OnErrorReport("Event_Function", "txtEdit_LostFocus", [&] { CheckOverflow(); });
}

} // namespace tessaly
