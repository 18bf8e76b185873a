// The pages' control sets, numbered 0 to LastTab(): each a frame holding a
// grid and its two editors, made, dressed and removed together; the item
// rows and title rows of the grids.
#pragma once

#include "layout/PanelControls.h"

#include <cstdint>

namespace tessaly {

class PageGrids {
public:
    explicit PageGrids(PanelControls& controls);

    // The highest page number in use: 20 with the fixed pages alone.
    int16_t LastTab() const { return g_nLastTab; }

    // Start-up: loads the control sets of pages 1 to 20 beside the layout's
    // page 0, then gives every page its columns, place and dressing.
    void LoadFixedPages();
    void DressFixedPages();
    // The next page number, its control set loaded; and the newest page gone.
    int16_t AppendPage();
    void RemoveNewestPage();
    // Every page's control set gone, for the panel's end.
    void UnloadAll();

    void InitFlexGrid(int16_t page, int32_t valueWidth);

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

    PanelControls& c;
    int16_t g_nLastTab = 0;
};

} // namespace tessaly
