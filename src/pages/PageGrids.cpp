// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "pages/PageGrids.h"

#include "frame/ReportError.h"
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

PageGrids::PageGrids(PageControls controls)
    : m_controls(controls)
{
}

void PageGrids::LoadFixedPages()
{
    m_lastTab = LastFixedPage;
    for (int16_t page = 1; page <= m_lastTab; ++page)
        LoadTabControls(page);
}

// Every page lies where the layout put page 0, hidden until its node is
// clicked.
void PageGrids::DressFixedPages()
{
    for (const PageEntry& entry : FixedPages())
        if (entry.number >= 0)
            SetColumns(entry.number, entry.cols);

    for (int16_t page = 0; page <= m_lastTab; ++page) {
        InitFlexGrid(page, FindPage(page)->valueWidth);
        DressEditors(page);
        SetWheelScroll(Grid(page), 1);
    }
}

void PageGrids::SetColumns(int16_t page, int16_t cols)
{
    Grid(page)->setCols(cols);
}

int16_t PageGrids::AppendPage()
{
    m_lastTab = ToInt16(int64_t(m_lastTab) + 1);
    LoadTabControls(m_lastTab);
    return m_lastTab;
}

// Pages go newest first: the page loops need every number up to LastTab().
void PageGrids::RemoveNewestPage()
{
    const int16_t page = m_lastTab;
    m_lastTab = ToInt16(m_lastTab - 1);
    UnloadTabControls(page);
}

void PageGrids::UnloadAll()
{
    for (int16_t page = 0; page <= m_lastTab; ++page)
        UnloadTabControls(page);
}

void PageGrids::LoadTabControls(int16_t page)
{
    m_controls.frames.Load(page);
    m_controls.grids.Load(page);
    m_controls.lists.Load(page);
    m_controls.texts.Load(page);
    Frame* frame = m_controls.frames(page);
    Grid(page)->setContainer(frame);
    ListEditor(page)->setContainer(frame);
    TextEditor(page)->setContainer(frame);
}

void PageGrids::UnloadTabControls(int16_t page)
{
    m_controls.lists.Unload(page);
    m_controls.texts.Unload(page);
    m_controls.grids.Unload(page);
    m_controls.frames.Unload(page);
}

void PageGrids::HideAll()
{
    for (int16_t page = 0; page <= m_lastTab; ++page) {
        m_controls.frames(page)->setVisible(false);
        MSFlexGrid* grid = Grid(page);
        grid->setVisible(false);
        grid->setLeftCol(0);
        grid->setTopRow(1);
        grid->setCol(0);
        grid->setRow(1);
    }
}

void PageGrids::SetFraFlexGridVisible(int16_t page, bool visible)
{
    OnErrorReport("Common_Function", "SetFraFlexGridVisible", [&] {
        Frame* frame = m_controls.frames(page);
        frame->setVisible(visible);
        Grid(page)->setVisible(visible);
        ListEditor(page)->setVisible(false);
        TextEditor(page)->setVisible(false);
        frame->ZOrder();
        Grid(page)->ZOrder();
        ListEditor(page)->ZOrder();
        TextEditor(page)->ZOrder();
    });
}

void PageGrids::ReleaseWheel()
{
    OnErrorReport("Common_Function", "ReleaseWheel", [&] {
        for (int page = 0; page <= m_controls.grids.UBound(); ++page)
            if (m_controls.grids.exists(page) && HasWheelScroll(m_controls.grids(page)))
                RestoreWheelScroll(m_controls.grids(page));
    });
}

// A hundred rows of 300 twips, every cell left-aligned and centred, odd rows
// shaded counting from the title row; the titles' column 3500 twips wide and
// the value columns `valueWidth`.
void PageGrids::InitFlexGrid(int16_t page, int32_t valueWidth)
{
    MSFlexGrid* grid = Grid(page);
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
    MSFlexGrid* grid = Grid(page);
    TextBox* editor = TextEditor(page);
    editor->setTop(float(grid->CellTop()) + grid->Top());
    editor->setLeft(float(grid->CellLeft()) + grid->Left());
    editor->setWidth(float(grid->CellWidth()));
    editor->setHeight(float(grid->CellHeight()));
    editor->setText(grid->TextMatrix(grid->Row(), grid->Col()));
    editor->setForeColor(RGB(73, 73, 73));
    SetPageFont(*editor);
    editor->setVisible(false);
    editor->Refresh();

    ComboBox* combo = ListEditor(page);
    SetPageFont(*combo);
    combo->setVisible(false);
}

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
