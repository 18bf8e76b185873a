// The cell store: how each cell of each page may be edited, the places of the
// "LOCK CODE" items, and the host's cell operations that fill both. One
// function maps a page, row and column to the cell's record. As a page
// number in the host's calls, 3 stands for the six MIP profile pages.
#pragma once

#include "layout/PanelControls.h"
#include "pages/PageRecords.h"
#include "platform/Arrays.h"

#include <cstdint>

namespace tessaly {

class PageGrids;

class CellStore {
public:
    CellStore(PanelControls& controls, const PageGrids& pages);

    // Host interface.
    void AddItemToGrd(int16_t Part, const QString& FormatType, bool IsNumber, bool ReadOnly,
                      const QString& ComboStr, const QString& InputStr, int32_t row, int32_t col);
    void AddItemToGrid2(int16_t Part, const QString& FormatType, bool ReadOnly,
                        const QString& ComboStr, const QString& InputStr, int32_t row, int32_t col);
    QString GetItemFromGrd(int16_t Part, int32_t row, int32_t col);

    // The record of a cell, found through its grid's current row count.
    const CellAttr& Attr(int16_t page, int32_t row, int32_t col) const;
    // Whether the store has been sized for the pages yet.
    bool Sized() const { return !g_arrCellAttr.IsSingle(); }
    // Every page gets as many records as the widest fixed page has cells.
    void SizeForPages();
    // A record set for a page added behind the others, keeping the rest.
    void GrowForPage(int16_t page);
    void Free() { g_arrCellAttr.ReDimSingle(); }

    // Writes the last four characters of the phone number into column 1 of
    // every "LOCK CODE" item.
    void SetLockCodes(const QString& strLock);

    void SetCellForeColor(int16_t Part, int32_t row, int32_t col, bool ReadOnly);

private:
    void WriteCell(int16_t page, int32_t row, int32_t col, const QString& FormatType, bool IsNumber,
                   bool ReadOnly, const QString& ComboStr, const QString& InputStr);
    CellAttr& Record(int16_t page, int32_t row, int32_t col);

    PanelControls& c;
    const PageGrids& m_pages;
    Array2D<CellAttr> g_arrCellAttr;
    Array1D<LockCodeCell> g_arrLockCodeCells;
    int16_t g_nMaxGridCols = 0;
    int16_t g_nMaxGridRows = 0;
};

} // namespace tessaly
