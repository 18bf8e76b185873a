#include "pages/PageGrids.h"

#include "frame/modWheelScroll.h"
#include "pages/PageTable.h"
#include "platform/Numeric.h"

namespace tessaly {

namespace {

// The pages' font, Tahoma of 9 points, set in one change: each change of a
// list's font rebuilds its drop-down.
void SetPageFont(QWidget& control)
{
    QFont font = control.font();
    font.setFamily(QStringLiteral("Tahoma"));
    font.setPointSizeF(9);
    control.setFont(font);
}

} // namespace

PageGrids::PageGrids(PanelControls& controls)
    : c(controls)
{
}

void PageGrids::LoadFixedPages()
{
    g_nLastTab = LastFixedPage;
    for (int16_t page = 1; page <= g_nLastTab; ++page)
        LoadTabControls(page);
}

// Every page lies in the one data rectangle, hidden until its node is clicked.
void PageGrids::DressFixedPages()
{
    for (const PageEntry& entry : FixedPages())
        if (entry.number >= 0)
            c.MSFlexGrid1(entry.number)->setCols(entry.cols);

    for (int16_t page = 0; page <= g_nLastTab; ++page) {
        Frame* frame = c.fraFlexGrid(page);
        frame->setWidth(6735);
        frame->setHeight(6855);
        frame->Move(3720, 1340, 6735, 6855);
        frame->setVisible(false);
        InitFlexGrid(page, FindPage(page)->valueWidth);
        DressEditors(page);
        SetWheelScroll(c.MSFlexGrid1(page), 1);
    }
}

int16_t PageGrids::AppendPage()
{
    g_nLastTab = ToInt16(int64_t(g_nLastTab) + 1);
    LoadTabControls(g_nLastTab);
    return g_nLastTab;
}

// Pages go newest first: the page loops need every number up to LastTab().
void PageGrids::RemoveNewestPage()
{
    const int16_t page = g_nLastTab;
    g_nLastTab = ToInt16(g_nLastTab - 1);
    UnloadTabControls(page);
}

void PageGrids::UnloadAll()
{
    for (int16_t page = 0; page <= g_nLastTab; ++page)
        UnloadTabControls(page);
}

void PageGrids::LoadTabControls(int16_t page)
{
    c.fraFlexGrid.Load(page);
    c.MSFlexGrid1.Load(page);
    c.cboEditCell.Load(page);
    c.txtEdit.Load(page);
    Frame* frame = c.fraFlexGrid(page);
    c.MSFlexGrid1(page)->setContainer(frame);
    c.cboEditCell(page)->setContainer(frame);
    c.txtEdit(page)->setContainer(frame);
}

void PageGrids::UnloadTabControls(int16_t page)
{
    c.cboEditCell.Unload(page);
    c.txtEdit.Unload(page);
    c.MSFlexGrid1.Unload(page);
    c.fraFlexGrid.Unload(page);
}

// A hundred rows of 300 twips, every cell left-aligned and centred, odd rows
// shaded counting from the title row; the titles' column 3500 twips wide and
// the value columns `valueWidth`.
void PageGrids::InitFlexGrid(int16_t page, int32_t valueWidth)
{
    MSFlexGrid* grid = c.MSFlexGrid1(page);
    grid->setWidth(6735);
    grid->setHeight(6855);
    grid->setBackColorFixed(RGB(188, 188, 188));
    grid->setRows(100);
    grid->setColWidth(0, TitleColumnWidth);
    for (int col = 1; col <= grid->Cols() - 1; ++col)
        grid->setColWidth(col, valueWidth);

    const QColor shade = RGB(240, 240, 240);
    for (int col = 0; col <= grid->Cols() - 1; ++col) {
        grid->setCol(col);
        for (int row = 0; row <= grid->Rows() - 1; ++row) {
            grid->setRow(row);
            grid->setCellAlignment(MSFlexGrid::LeftCenter);
            if (row % 2 == 1)
                grid->setCellBackColor(shade);
        }
    }
    for (int row = 0; row <= grid->Rows() - 1; ++row)
        grid->setRowHeight(row, 300);

    grid->setForeColor(RGB(73, 73, 73));
    SetPageFont(*grid);
    grid->setGridLines(1);
    grid->setGridColor(RGB(215, 215, 215));
    grid->setGridLinesFixed(1);
    grid->setForeColorFixed(RGB(73, 73, 73));
}

// The text editor starts over the grid's current cell, both editors hidden.
void PageGrids::DressEditors(int16_t page)
{
    MSFlexGrid* grid = c.MSFlexGrid1(page);
    TextBox* editor = c.txtEdit(page);
    editor->setTop(float(grid->CellTop()) + grid->Top());
    editor->setLeft(float(grid->CellLeft()) + grid->Left());
    editor->setWidth(float(grid->CellWidth()));
    editor->setHeight(float(grid->CellHeight()));
    editor->setText(grid->TextMatrix(grid->Row(), grid->Col()));
    editor->setForeColor(RGB(73, 73, 73));
    SetPageFont(*editor);
    editor->setVisible(false);
    editor->Refresh();

    ComboBox* combo = c.cboEditCell(page);
    SetPageFont(*combo);
    combo->setVisible(false);
}

} // namespace tessaly
