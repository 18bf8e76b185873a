// Item rows and the title row of the page grids.
#include "panel/Panel.h"

#include "frame/ReportError.h"

namespace tessaly {

// Pages 3 and 0 stand for groups: 3 for the six profile pages, which always
// have the same rows, and 0 for the two NAM pages. Page 20 is set alone.
void Panel::SetNVFieldItemCount(int16_t Part, int16_t count)
{
    OnErrorReport("Interface", "SetNVFieldItemCount", [&] {
        const int32_t rows = int32_t(count) + 1;
        MSFlexGrid1(Part)->setRows(rows);
        if (Part == 3) {
            for (int16_t page = 14; page <= 19; ++page)
                MSFlexGrid1(page)->setRows(rows);
        }
        if (Part == 0)
            MSFlexGrid1(20)->setRows(rows);
    });
}

// These four belong to the host interface and have nothing to do.
void Panel::SetGrid1Rows(int16_t /*Number*/) {}
void Panel::SetGrid2Rows(int16_t /*Number*/) {}
void Panel::SetSettingRows(int16_t /*Number*/) {}
void Panel::SetSystemRows(int16_t /*Number*/) {}

void Panel::SetFlexGridTitleAll()
{
    OnErrorReport("Common_Function", "SetFlexGridTitleAll", [&] {
        // Pages 9, 10 and 11 have no titles.
        static constexpr struct { int16_t page; int16_t last; } Titled[] = {
            {0, 22}, {20, 22}, {1, 3}, {2, 1}, {3, 6}, {4, 1}, {5, 2}, {6, 2}, {7, 2},
            {8, 2}, {12, 2}, {13, 40}, {14, 1}, {15, 1}, {16, 1}, {17, 1}, {18, 1}, {19, 1},
        };
        for (const auto& [page, last] : Titled)
            SetFlexGridTitle(page, 1, last);
    });
}

// Titles one grid: "NV Items" over the item titles, and over value columns
// `first` to `last` "VALUE" with the column number, or the bare word on a
// grid of exactly two columns. The title row ends bold and centred.
void Panel::SetFlexGridTitle(int16_t page, int16_t first, int16_t last)
{
    OnErrorReport("Common_Function", "SetFlexGridTitle", [&] {
        MSFlexGrid* grid = MSFlexGrid1(page);
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
