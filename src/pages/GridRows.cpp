// Item rows and the title rows of the page grids.
#include "pages/PageGrids.h"

#include "frame/ReportError.h"
#include "pages/PageTable.h"

namespace tessaly {

// Pages 3 and 0 stand for groups: 3 for the six profile pages, which always
// have the same rows, and 0 for the two NAM pages. Page 20 is set alone.
void PageGrids::SetNVFieldItemCount(int16_t Part, int16_t count)
{
    OnErrorReport("Interface", "SetNVFieldItemCount", [&] {
        const int32_t rows = int32_t(count) + 1;
        Grid(Part)->setRows(rows);
        if (Part == ProfilesPart) {
            for (int16_t page = FirstProfilePage; page <= LastProfilePage; ++page)
                Grid(page)->setRows(rows);
        }
        if (Part == 0)
            Grid(SecondNamPage)->setRows(rows);
    });
}

void PageGrids::SetGrid1Rows(int16_t /*Number*/) {}
void PageGrids::SetGrid2Rows(int16_t /*Number*/) {}
void PageGrids::SetSettingRows(int16_t /*Number*/) {}
void PageGrids::SetSystemRows(int16_t /*Number*/) {}

void PageGrids::SetFlexGridTitleAll()
{
    OnErrorReport("Common_Function", "SetFlexGridTitleAll", [&] {
        for (const PageEntry& entry : FixedPages())
            if (entry.titled)
                SetFlexGridTitle(entry.number, 1, int16_t(entry.cols - 1));
    });
}

// Titles one grid: "NV Items" over the item titles, and over value columns
// `first` to `last` "VALUE" with the column number, or the bare word on a
// grid of exactly two columns. The title row ends bold and centred.
void PageGrids::SetFlexGridTitle(int16_t page, int16_t first, int16_t last)
{
    OnErrorReport("Common_Function", "SetFlexGridTitle", [&] {
        MSFlexGrid* grid = Grid(page);
        grid->setRow(0);
        grid->setCellFontBold(true);
        grid->setCol(0);
        grid->setCellFontBold(true);
        grid->setTextMatrix(0, 0, QStringLiteral("NV Items"));
        grid->setFixedAlignment(0, MSFlexGrid::CenterCenter);
        for (int col = first; col <= last; ++col) {
            grid->setTextMatrix(0, col, grid->Cols() == 2 ? QStringLiteral("VALUE")
                                                           : QStringLiteral("VALUE") + QString::number(col));
            grid->setFixedAlignment(col, MSFlexGrid::CenterCenter);
            grid->setCol(col);
            grid->setCellFontBold(true);
        }
    });
}

} // namespace tessaly
