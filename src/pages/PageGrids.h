// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The pages' control sets, numbered 0 to LastTab(): each a frame holding a
// grid and its two editors, made, dressed, shown and removed together; the
// item rows and title rows of the grids; and the grids' wheel hooks. Another
// subsystem reaches a page's grid or editors through Grid, TextEditor and
// ListEditor.
#pragma once

#include "layout/PanelControls.h"

#include <cstdint>

namespace tessaly {

class PageGrids {
public:
    explicit PageGrids(PageControls controls);

    // The highest page number in use: 20 with the fixed pages alone.
    int16_t LastTab() const { return m_lastTab; }

    // A page's grid and editors; a page not loaded is a run-time error.
    MSFlexGrid* Grid(int16_t page) const { return m_controls.grids(page); }
    TextBox* TextEditor(int16_t page) const { return m_controls.texts(page); }
    ComboBox* ListEditor(int16_t page) const { return m_controls.lists(page); }

    // Start-up: loads the control sets of pages 1 to 20 beside the layout's
    // page 0, then gives every page its columns and dressing, and hooks its
    // grid to the wheel.
    void LoadFixedPages();
    void DressFixedPages();
    // The next page number, its control set loaded; and the newest page gone.
    int16_t AppendPage();
    void RemoveNewestPage();
    // Every page's control set gone, for the panel's end.
    void UnloadAll();
    // Sets a page's number of columns, the item titles' included.
    void SetColumns(int16_t page, int16_t cols);

    void InitFlexGrid(int16_t page, int32_t valueWidth);

    // Every page hidden and sent back to its top left, the first item row
    // current; and one page shown, its editors hidden, in front.
    void HideAll();
    void SetFraFlexGridVisible(int16_t page, bool visible);

    // Takes the wheel hooks off every page grid, as the window goes.
    void ReleaseWheel();

    // Host interface: item rows. The other four have nothing to do.
    void SetNVFieldItemCount(int16_t Part, int16_t count);
    void SetGrid1Rows(int16_t Number);
    void SetGrid2Rows(int16_t Number);
    void SetSettingRows(int16_t Number);
    void SetSystemRows(int16_t Number);

    void SetFlexGridTitleAll();
    void SetFlexGridTitle(int16_t page, int16_t first, int16_t last);

private:
    void LoadTabControls(int16_t page);
    void UnloadTabControls(int16_t page);
    void DressEditors(int16_t page);

    PageControls m_controls;
    int16_t m_lastTab = 0;
};

} // namespace tessaly
