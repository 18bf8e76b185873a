// The combo editor of a page: a pick writes the item's text into the current
// cell and does nothing else.
#include "editing/Editors.h"

#include "frame/ReportError.h"

namespace tessaly {

void Editors::cboEditCell_Click(int16_t Index)
{
    OnErrorReport("Event_Function", "cboEditCell_Click", [&] {
        MSFlexGrid* grid = c.MSFlexGrid1(Index);
        const int row = grid->Row();
        const int col = grid->Col();
        grid->setTextMatrix(row, col, c.cboEditCell(Index)->Text());
    });
}

} // namespace tessaly
