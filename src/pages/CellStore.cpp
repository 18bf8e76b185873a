// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "pages/CellStore.h"

#include "frame/ReportError.h"
#include "pages/MipProfiles.h"
#include "pages/PageGrids.h"
#include "pages/PageTable.h"
#include "platform/MsgBox.h"
#include "platform/Numeric.h"

namespace tessaly {

CellStore::CellStore(const PageGrids& pages, const MipProfiles& profiles)
    : m_pages(pages)
    , m_profiles(profiles)
{
}

size_t CellStore::RecordIndex(int16_t page, int32_t row, int32_t col) const
{
    const int64_t index = int64_t(m_pages.Grid(page)->Rows()) * col + row;
    if (page < 0 || size_t(page) >= m_cellAttrs.size() || index < 0 || index >= m_recordsPerPage)
        RaiseSubscript();
    return size_t(index);
}

bool CellStore::HasRecord(int16_t page, int32_t row, int32_t col) const
{
    if (page < 0 || size_t(page) >= m_cellAttrs.size() || row < 0 || col < 0)
        return false;
    return int64_t(m_pages.Grid(page)->Rows()) * col + row < m_recordsPerPage;
}

CellAttr& CellStore::Record(int16_t page, int32_t row, int32_t col)
{
    const size_t index = RecordIndex(page, row, col);
    std::vector<CellAttr>& records = m_cellAttrs[size_t(page)];
    if (records.empty())
        records.resize(size_t(m_recordsPerPage));
    return records[index];
}

const CellAttr& CellStore::Attr(int16_t page, int32_t row, int32_t col) const
{
    static const CellAttr unwritten;
    const size_t index = RecordIndex(page, row, col);
    const std::vector<CellAttr>& records = m_cellAttrs[size_t(page)];
    return records.empty() ? unwritten : records[index];
}

void CellStore::SizeForPages()
{
    const MSFlexGrid* widest = m_pages.Grid(WidestFixedPage());
    m_maxGridCols = ToInt16(widest->Cols());
    m_maxGridRows = ToInt16(widest->Rows());
    m_recordsPerPage = ToInt16((m_maxGridCols + 1) * m_maxGridRows) + 1;
    m_cellAttrs.assign(size_t(m_pages.LastTab()) + 1, {});
}

void CellStore::GrowForPage(int16_t page)
{
    m_recordsPerPage = ToInt16((m_maxGridCols + 1) * m_maxGridRows) + 1;
    m_cellAttrs.resize(size_t(page) + 1);
}

void CellStore::Free()
{
    m_cellAttrs.clear();
    m_recordsPerPage = 0;
}

void CellStore::AddItemToGrd(int16_t Part, const QString& FormatType, bool IsNumber, bool ReadOnly,
                             const QString& ComboStr, const QString& InputStr, int32_t row, int32_t col)
{
    OnErrorReport("Interface", "AddItemToGrid", [&] {
        if (Part < 0 || Part > m_pages.LastTab()) {
            MsgBox(QStringLiteral("Bad Tab Index.. In AddItemToGrd()"));
            return;
        }
        if (Part != ProfilesPart && col >= m_pages.Grid(Part)->Cols()) {
            MsgBox(QStringLiteral("Bad Column Index.. In AddItemToGrd()"));
            return;
        }
        if (Part != ProfilesPart) {
            WriteCell(Part, row, col, FormatType, IsNumber, ReadOnly, ComboStr, InputStr);
            return;
        }
        WriteCell(ToInt16(int64_t(col) + FirstProfilePage - 1), row, 1, FormatType, IsNumber, ReadOnly, ComboStr,
                  InputStr);
        // Profile 0's values are copied to the profiles beyond the current
        // count, so that a later, higher count finds them filled.
        const int inUse = m_profiles.InUse();
        if (col == 1 && inUse < ProfilePages) {
            for (int page = FirstProfilePage + inUse; page <= LastProfilePage; ++page)
                WriteCell(int16_t(page), row, 1, FormatType, IsNumber, ReadOnly, ComboStr, InputStr);
        }
    });
}

// An empty ComboStr or FormatType keeps the stored string; the flags are
// always overwritten.
void CellStore::WriteCell(int16_t page, int32_t row, int32_t col, const QString& FormatType, bool IsNumber,
                          bool ReadOnly, const QString& ComboStr, const QString& InputStr)
{
    m_pages.Grid(page)->setTextMatrix(row, col, InputStr);
    CellAttr& attr = Record(page, row, col);
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

void CellStore::SetCellForeColor(int16_t Part, int32_t row, int32_t col, bool ReadOnly)
{
    OnErrorReport("Common_Function", "SetCellForeColor", [&] {
        MSFlexGrid* grid = m_pages.Grid(Part);
        grid->setCol(col);
        grid->setRow(row);
        grid->setCellForeColor(ReadOnly ? RGB(160, 160, 160) : RGB(73, 73, 73));
    });
}

void CellStore::AddItemToGrid2(int16_t Part, const QString& /*FormatType*/, bool /*ReadOnly*/,
                               const QString& /*ComboStr*/, const QString& InputStr, int32_t row, int32_t col)
{
    OnErrorReport("Interface", "AddItemToGrid2", [&] {
        if (Part < 0 || Part > m_pages.LastTab()) {
            MsgBox(QStringLiteral("Bad Tab Index.. In AddItemToGrd2()"));
            return;
        }
        if (col != 0) {
            MsgBox(QStringLiteral("Bad Column Index.. In AddItemToGrd2()"));
            return;
        }
        if (Part == ProfilesPart) {
            for (int16_t page = FirstProfilePage; page <= LastProfilePage; ++page)
                m_pages.Grid(page)->setTextMatrix(row, 0, InputStr);
        } else {
            m_pages.Grid(Part)->setTextMatrix(row, 0, InputStr);
        }
        if (InputStr == QLatin1String("LOCK CODE")) {
            const int last = m_lockCodeCells.UBound();
            m_lockCodeCells.ReDimPreserve(last + 1);
            LockCodeCell& cell = m_lockCodeCells(last);
            cell.nPart = Part;
            cell.nRow = ToInt16(row);
            cell.nCol = ToInt16(col);
        }
    });
}

QString CellStore::GetItemFromGrd(int16_t Part, int32_t row, int32_t col)
{
    QString result;
    OnErrorReport("Interface", "GetItemFromGrd", [&] {
        if (Part < 0 || Part > m_pages.LastTab()) {
            MsgBox(QStringLiteral("Bad Tab Index.. In GetItemFromGrd()"));
            return;
        }
        if (Part != ProfilesPart && m_pages.Grid(Part)->Cols() <= ToInt32(int64_t(col) + 1)) {
            MsgBox(QStringLiteral("Bad Column Index.. In GetItemFromGrd()"));
            return;
        }
        if (Part == ProfilesPart)
            result = m_pages.Grid(ToInt16(int64_t(col) + FirstProfilePage))->TextMatrix(row, 1);
        else
            result = m_pages.Grid(Part)->TextMatrix(row, col + 1);
    });
    return result;
}

// The list ends in a spare entry, which is skipped.
void CellStore::SetLockCodes(const QString& strLock)
{
    for (int i = 0; i <= m_lockCodeCells.UBound() - 1; ++i) {
        const LockCodeCell entry = m_lockCodeCells(i);
        m_pages.Grid(entry.nPart)->setTextMatrix(entry.nRow, 1, strLock);
    }
}

} // namespace tessaly
