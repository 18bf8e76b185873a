// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The cell store: how each cell of each page may be edited, the places of the
// "LOCK CODE" items, and the host's cell operations that fill both. One
// function maps a page, row and column to the cell's record. As a page
// number in the host's calls, 3 stands for the six MIP profile pages.
#pragma once

#include "pages/PageRecords.h"
#include "platform/Arrays.h"

#include <cstdint>
#include <vector>

namespace tessaly {

class MipProfiles;
class PageGrids;

class CellStore {
public:
    CellStore(const PageGrids& pages, const MipProfiles& profiles);

    // Host interface.
    void AddItemToGrd(int16_t Part, const QString& FormatType, bool IsNumber, bool ReadOnly,
                      const QString& ComboStr, const QString& InputStr, int32_t row, int32_t col);
    void AddItemToGrid2(int16_t Part, const QString& FormatType, bool ReadOnly,
                        const QString& ComboStr, const QString& InputStr, int32_t row, int32_t col);
    QString GetItemFromGrd(int16_t Part, int32_t row, int32_t col);

    // The record of a cell, found through its grid's current row count.
    const CellAttr& Attr(int16_t page, int32_t row, int32_t col) const;
    // Whether a cell has a record in the store: a page's cells beyond the
    // widest fixed page's count have none, and the grid's column settings
    // say how they are edited.
    bool HasRecord(int16_t page, int32_t row, int32_t col) const;
    // Whether the store has been sized for the pages yet.
    bool Sized() const { return m_recordsPerPage > 0; }
    // Every page gets as many records as the widest fixed page has cells.
    void SizeForPages();
    // A record set for a page added behind the others, keeping the rest.
    void GrowForPage(int16_t page);
    void Free();

    // Writes the last four characters of the phone number into column 1 of
    // every "LOCK CODE" item.
    void SetLockCodes(const QString& strLock);

    void SetCellForeColor(int16_t Part, int32_t row, int32_t col, bool ReadOnly);

private:
    void WriteCell(int16_t page, int32_t row, int32_t col, const QString& FormatType, bool IsNumber,
                   bool ReadOnly, const QString& ComboStr, const QString& InputStr);
    // The place of a cell's record in its page's set; a place outside the
    // store is a run-time error.
    size_t RecordIndex(int16_t page, int32_t row, int32_t col) const;
    CellAttr& Record(int16_t page, int32_t row, int32_t col);

    const PageGrids& m_pages;
    const MipProfiles& m_profiles;
    // The records of pages 0 to the last, each page's set made at its first
    // write: a page never written reads empty records.
    std::vector<std::vector<CellAttr>> m_cellAttrs;
    int32_t m_recordsPerPage = 0;
    Array1D<LockCodeCell> m_lockCodeCells;
    int16_t m_maxGridCols = 0;
    int16_t m_maxGridRows = 0;
};

} // namespace tessaly
