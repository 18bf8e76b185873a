// A page's control set: its frame, grid and two editors, made, dressed and
// removed together; and the look-up of the pages the host added.
#include "panel/Panel.h"

#include "platform/Numeric.h"

namespace tessaly {

void Panel::LoadTabControls(int16_t page)
{
    fraFlexGrid.Load(page);
    MSFlexGrid1.Load(page);
    cboEditCell.Load(page);
    txtEdit.Load(page);
    Frame* frame = fraFlexGrid(page);
    MSFlexGrid1(page)->setContainer(frame);
    cboEditCell(page)->setContainer(frame);
    txtEdit(page)->setContainer(frame);
}

void Panel::InitFlexGrid(int16_t page)
{
    MSFlexGrid* grid = MSFlexGrid1(page);
    grid->setWidth(6735);
    grid->setHeight(6855);
    grid->setBackColorFixed(RGB(188, 188, 188));
    grid->setRows(100);
    grid->setColWidth(0, 3500);
    switch (page) {
    case 1:
        for (int col = 1; col <= 3; ++col)
            grid->setColWidth(col, 1000);
        break;
    case 2: case 4: case 14: case 15: case 16: case 17: case 18: case 19:
        grid->setColWidth(1, 2800);
        break;
    case 13:
        for (int col = 1; col <= 40; ++col)
            grid->setColWidth(col, 1000);
        break;
    default:
        for (int col = 1; col <= grid->Cols() - 1; ++col)
            grid->setColWidth(col, 1500);
        break;
    }

    // Every cell left-aligned and centred; odd rows shaded, counting from the
    // title row, so rows 1, 3, 5 ... are shaded.
    const QColor shade = RGB(240, 240, 240);
    for (int col = 0; col <= grid->Cols() - 1; ++col) {
        for (int row = 0; row <= grid->Rows() - 1; ++row) {
            grid->setCol(col);
            grid->setRow(row);
            grid->setCellAlignment(MSFlexGrid::LeftCenter);
            if (row % 2 == 1)
                grid->setCellBackColor(shade);
        }
    }
    for (int row = 0; row <= grid->Rows() - 1; ++row)
        grid->setRowHeight(row, 300);

    grid->setForeColor(RGB(73, 73, 73));
    grid->setFontSize(9);
    grid->setFontName(QStringLiteral("Tahoma"));
    grid->setGridLines(1);
    grid->setGridColor(RGB(215, 215, 215));
    grid->setGridLinesFixed(1);
    grid->setForeColorFixed(RGB(73, 73, 73));
}

void Panel::UnloadTabControls(int16_t page)
{
    cboEditCell.Unload(page);
    txtEdit.Unload(page);
    MSFlexGrid1.Unload(page);
    fraFlexGrid.Unload(page);
}

int16_t Panel::FindAddedTabByName(const QString& name) const
{
    for (const AddedTab& tab : g_arrAddedTab)
        if (tab.TabName == name)
            return ToInt16(tab.TabNumber);
    return -1;
}

QString Panel::FindAddedTabByNumber(int16_t number, int16_t& index) const
{
    for (int i = 0; i <= g_arrAddedTab.UBound(); ++i) {
        if (g_arrAddedTab(i).TabNumber == number) {
            index = int16_t(i);
            return g_arrAddedTab(i).TabName;
        }
    }
    return {};
}

} // namespace tessaly
