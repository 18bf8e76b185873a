// The host's cell operations: values with their editing attributes, item
// titles, and reading a value back. As a page number, 3 stands for the six
// MIP profile pages 14 to 19.
#include "panel/Panel.h"

#include "frame/ReportError.h"
#include "platform/MsgBox.h"
#include "platform/Numeric.h"

namespace tessaly {

void Panel::AddItemToGrd(int16_t Part, const QString& FormatType, bool IsNumber, bool ReadOnly,
                         const QString& ComboStr, const QString& InputStr, int32_t row, int32_t col)
{
    OnErrorReport("Interface", "AddItemToGrid", [&] {
        if (Part < 0 || Part > g_nLastTab) {
            MsgBox(QStringLiteral("Bad Tab Index.. In AddItemToGrd()"));
            return;
        }
        if (Part != 3 && col >= MSFlexGrid1(Part)->Cols()) {
            MsgBox(QStringLiteral("Bad Column Index.. In AddItemToGrd()"));
            return;
        }
        if (Part != 3) {
            WriteCell(Part, row, col, FormatType, IsNumber, ReadOnly, ComboStr, InputStr);
            return;
        }
        WriteCell(ToInt16(int64_t(col) + 13), row, 1, FormatType, IsNumber, ReadOnly, ComboStr, InputStr);
        // Profile 0's values are copied to the profiles beyond the current
        // count, so that a later, higher count finds them filled.
        const int listIndex = cmbProfileCount->ListIndex();
        if (col == 1 && listIndex < 5) {
            for (int page = listIndex + 15; page <= 19; ++page)
                WriteCell(int16_t(page), row, 1, FormatType, IsNumber, ReadOnly, ComboStr, InputStr);
        }
    });
}

// An empty ComboStr or FormatType keeps the stored string; the flags are
// always overwritten.
void Panel::WriteCell(int16_t page, int32_t row, int32_t col, const QString& FormatType, bool IsNumber,
                      bool ReadOnly, const QString& ComboStr, const QString& InputStr)
{
    MSFlexGrid* grid = MSFlexGrid1(page);
    grid->setTextMatrix(row, col, InputStr);
    CellAttr& attr = g_arrCellAttr(page, grid->Rows() * col + row);
    // A host fills page after page with the same strings: assigning a
    // string to itself would still cost two atomic counts.
    if (!ComboStr.isEmpty() && !attr.ComboStr.isSharedWith(ComboStr))
        attr.ComboStr = ComboStr;
    if (!FormatType.isEmpty() && !attr.FormatType.isSharedWith(FormatType))
        attr.FormatType = FormatType;
    attr.IsNumber = IsNumber;
    attr.ReadOnly = ReadOnly;
    SetCellForeColor(page, row, col, ReadOnly);
}

void Panel::SetCellForeColor(int16_t Part, int32_t row, int32_t col, bool ReadOnly)
{
    OnErrorReport("Common_Function", "SetCellForeColor", [&] {
        MSFlexGrid* grid = MSFlexGrid1(Part);
        grid->setCol(col);
        grid->setRow(row);
        grid->setCellForeColor(ReadOnly ? RGB(160, 160, 160) : RGB(73, 73, 73));
    });
}

void Panel::AddItemToGrid2(int16_t Part, const QString& /*FormatType*/, bool /*ReadOnly*/,
                           const QString& /*ComboStr*/, const QString& InputStr, int32_t row, int32_t col)
{
    OnErrorReport("Interface", "AddItemToGrid2", [&] {
        if (Part < 0 || Part > g_nLastTab) {
            MsgBox(QStringLiteral("Bad Tab Index.. In AddItemToGrd2()"));
            return;
        }
        if (col != 0) {
            MsgBox(QStringLiteral("Bad Column Index.. In AddItemToGrd2()"));
            return;
        }
        if (Part == 3) {
            for (int16_t page = 14; page <= 19; ++page)
                MSFlexGrid1(page)->setTextMatrix(row, 0, InputStr);
        } else {
            MSFlexGrid1(Part)->setTextMatrix(row, 0, InputStr);
        }
        if (InputStr == QLatin1String("LOCK CODE")) {
            const int last = g_arrLockCodeCells.UBound();
            g_arrLockCodeCells.ReDimPreserve(last + 1);
            LockCodeCell& cell = g_arrLockCodeCells(last);
            cell.nPart = Part;
            cell.nRow = ToInt16(row);
            cell.nCol = ToInt16(col);
        }
    });
}

QString Panel::GetItemFromGrd(int16_t Part, int32_t row, int32_t col)
{
    QString result;
    OnErrorReport("Interface", "GetItemFromGrd", [&] {
        if (Part < 0 || Part > g_nLastTab) {
            MsgBox(QStringLiteral("Bad Tab Index.. In GetItemFromGrd()"));
            return;
        }
        if (Part != 3 && MSFlexGrid1(Part)->Cols() <= ToInt32(int64_t(col) + 1)) {
            MsgBox(QStringLiteral("Bad Column Index.. In GetItemFromGrd()"));
            return;
        }
        if (Part == 3)
            result = MSFlexGrid1(ToInt16(int64_t(col) + 14))->TextMatrix(row, 1);
        else
            result = MSFlexGrid1(Part)->TextMatrix(row, col + 1);
    });
    return result;
}

} // namespace tessaly
