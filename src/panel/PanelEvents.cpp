// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The controls' events, each routed to its subsystem's handler; an element
// of a control array passes its index, and page control sets loaded later
// are wired as they come.
#include "panel/Panel.h"

namespace tessaly {

void Panel::WireEvents()
{
    QObject* sink = c.Widget.Handlers.get();
    QObject::connect(c.OrvenTreeView1, &OrvenTreeView::Click, sink, [this] { m_tree.OrvenTreeView1_Click(); });
    QObject::connect(c.cmbProfileCount, &ComboBox::Click, sink, [this] { m_profiles.cmbProfileCount_Click(); });
    WirePageEvents();

    c.picCommand.WireEvents([this](PictureBox& button, int16_t Index) {
        QObject* sink = c.Widget.Handlers.get();
        QObject::connect(&button, &PictureBox::MouseMove, sink, [this, Index](int Button, int Shift, float X, float Y) {
            m_commands.picCommand_MouseMove(Index, int16_t(Button), int16_t(Shift), X, Y);
        });
        QObject::connect(&button, &PictureBox::MouseDown, sink, [this, Index](int Button, int Shift, float X, float Y) {
            m_commands.picCommand_MouseDown(Index, int16_t(Button), int16_t(Shift), X, Y);
        });
        QObject::connect(&button, &PictureBox::Click, sink, [this, Index] { m_commands.picCommand_Click(Index); });
    });

    QObject::connect(c.imgWndClose, &Image::MouseDown, sink, [this] { m_frame.imgWndClose_MouseDown(); });
    QObject::connect(c.imgWndClose, &Image::MouseUp, sink, [this] { m_frame.imgWndClose_MouseUp(); });
    QObject::connect(c.imgWndClose, &Image::Click, sink, [this] { m_frame.imgWndClose_Click(); });
    QObject::connect(c.imgWndMin, &Image::MouseDown, sink, [this] { m_frame.imgWndMin_MouseDown(); });
    QObject::connect(c.imgWndMin, &Image::MouseUp, sink, [this] { m_frame.imgWndMin_MouseUp(); });
    QObject::connect(c.imgWndMin, &Image::Click, sink, [this] { m_frame.imgWndMin_Click(); });
    QObject::connect(c.lblTitle, &Label::MouseMove, sink, [this](int Button, int Shift, float X, float Y) {
        m_frame.lblTitle_MouseMove(Button, Shift, X, Y);
    });
}

// A grid's cell changes and scrolling reach the editors only while an editor
// of its page is open: the editors connect them themselves.
void Panel::WirePageEvents()
{
    c.MSFlexGrid1.WireEvents([this](MSFlexGrid& grid, int16_t Index) {
        QObject* sink = c.Widget.Handlers.get();
        QObject::connect(&grid, &MSFlexGrid::DblClick, sink, [this, Index] { m_editors.MSFlexGrid1_DblClick(Index); });
        QObject::connect(&grid, &MSFlexGrid::KeyDown, sink, [this, Index](int KeyCode, int Shift) {
            m_editors.MSFlexGrid1_KeyDown(Index, int16_t(KeyCode), int16_t(Shift));
        });
        QObject::connect(&grid, &MSFlexGrid::KeyUp, sink, [this, Index](int KeyCode, int Shift) {
            m_editors.MSFlexGrid1_KeyUp(Index, int16_t(KeyCode), int16_t(Shift));
        });
    });
    c.txtEdit.WireEvents([this](TextBox& box, int16_t Index) {
        QObject* sink = c.Widget.Handlers.get();
        QObject::connect(&box, &TextBox::GotFocus, sink, [this, Index] { m_editors.txtEdit_GotFocus(Index); });
        QObject::connect(&box, &TextBox::LostFocus, sink, [this, Index] { m_editors.txtEdit_LostFocus(Index); });
        QObject::connect(&box, &TextBox::KeyPress, sink,
                         [this, Index](int16_t& KeyAscii) { m_editors.txtEdit_KeyPress(Index, KeyAscii); });
        QObject::connect(&box, &TextBox::KeyUp, sink, [this, Index](int KeyCode, int Shift) {
            m_editors.txtEdit_KeyUp(Index, int16_t(KeyCode), int16_t(Shift));
        });
    });
    c.cboEditCell.WireEvents([this](ComboBox& combo, int16_t Index) {
        QObject* sink = c.Widget.Handlers.get();
        QObject::connect(&combo, &ComboBox::Click, sink, [this, Index] { m_editors.cboEditCell_Click(Index); });
    });
}

} // namespace tessaly
