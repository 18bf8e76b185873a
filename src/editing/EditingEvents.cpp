// The events of the page control sets, routed to the panel's handlers with
// the page number as the index; pages loaded later are wired as they come.
//
// A grid raises RowColChange at every cell the host writes, thousands in a
// row, and Scroll with every step of the wheel; their handlers only close the
// page's editors. So the panel listens to the two while an editor of the
// page is open, and stops at the first of them that finds both closed.
#include "panel/Panel.h"

#include <tessaly/Tessaly.h>

namespace tessaly {

void Panel::WireEditingEvents()
{
    MSFlexGrid1.WireEvents([this](MSFlexGrid& grid, int16_t Index) {
        QObject::connect(&grid, &MSFlexGrid::DblClick, Handlers.get(), [this, Index] { MSFlexGrid1_DblClick(Index); });
        QObject::connect(&grid, &MSFlexGrid::KeyDown, Handlers.get(), [this, Index](int KeyCode, int Shift) {
            MSFlexGrid1_KeyDown(Index, int16_t(KeyCode), int16_t(Shift));
        });
        QObject::connect(&grid, &MSFlexGrid::KeyUp, Handlers.get(), [this, Index](int KeyCode, int Shift) {
            MSFlexGrid1_KeyUp(Index, int16_t(KeyCode), int16_t(Shift));
        });
    });
    txtEdit.WireEvents([this](TextBox& box, int16_t Index) {
        QObject::connect(&box, &TextBox::GotFocus, Handlers.get(), [this, Index] { txtEdit_GotFocus(Index); });
        QObject::connect(&box, &TextBox::LostFocus, Handlers.get(), [this, Index] { txtEdit_LostFocus(Index); });
        QObject::connect(&box, &TextBox::KeyPress, Handlers.get(), [this, Index](int16_t& KeyAscii) {
            txtEdit_KeyPress(Index, KeyAscii);
        });
        QObject::connect(&box, &TextBox::KeyUp, Handlers.get(), [this, Index](int KeyCode, int Shift) {
            txtEdit_KeyUp(Index, int16_t(KeyCode), int16_t(Shift));
        });
    });
    cboEditCell.WireEvents([this](ComboBox& combo, int16_t Index) {
        QObject::connect(&combo, &ComboBox::Click, Handlers.get(), [this, Index] { cboEditCell_Click(Index); });
    });
}

void Panel::WatchEditorsClosing(int16_t Index)
{
    if (size_t(Index) >= EditorWatch.size())
        EditorWatch.resize(size_t(Index) + 1);
    auto& [cellChange, scroll] = EditorWatch[size_t(Index)];
    if (cellChange)
        return;
    MSFlexGrid* grid = MSFlexGrid1(Index);
    cellChange = QObject::connect(grid, &MSFlexGrid::RowColChange, Handlers.get(),
                                  [this, Index] { MSFlexGrid1_RowConlChange(Index); });
    scroll = QObject::connect(grid, &MSFlexGrid::Scroll, Handlers.get(), [this, Index] { MSFlexGrid1_Scroll(Index); });
}

void Panel::StopWatchingEditors(int16_t Index)
{
    if (size_t(Index) >= EditorWatch.size())
        return;
    auto& [cellChange, scroll] = EditorWatch[size_t(Index)];
    QObject::disconnect(cellChange);
    QObject::disconnect(scroll);
}

} // namespace tessaly
