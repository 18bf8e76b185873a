// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The command bar: NV Read, NV Write, Exit and Restore as four image buttons
// whose bitmaps show their state, and the run of a command on the model.
// While a command runs the bar is busy: its buttons dim and refuse clicks.
// NV Write and Restore are offered once an NV Read has completed. The bar
// alone sets the panel's wait cursor, for the run of a command.
#pragma once

#include "frame/ImageButtonLook.h"
#include "layout/PanelControls.h"

#include <array>
#include <cstdint>

namespace tessaly {

class Editors;
class ModelBinding;
class PageGrids;
class Progress;

class CommandBar {
public:
    CommandBar(const PanelWidget& panel, CommandControls controls, ModelBinding& model, Progress& progress,
               Editors& editors, PageGrids& pages);

    // Start-up: NV Read and Exit at rest, NV Write dimmed, Restore at rest
    // though it takes no click before the first read.
    void ShowStartLooks();

    void picCommand_MouseMove(int16_t Index, int16_t Button, int16_t Shift, float X, float Y);
    void picCommand_MouseDown(int16_t Index, int16_t Button, int16_t Shift, float X, float Y);
    void picCommand_Click(int16_t Index);
    void SetDefaultButtonState();

private:
    bool IsLive(int16_t Index) const;
    // Runs an NV Read, NV Write or Restore on the model; false when none is bound.
    bool RunOnModel(int16_t Index);

    const PanelWidget& m_panel;
    ControlArray<PictureBox>& m_buttons;
    ModelBinding& m_model;
    Progress& m_progress;
    Editors& m_editors;
    PageGrids& m_pages;
    std::array<ImageButtonLook, 4> m_looks;
    int16_t m_activeCommand = -1;
    bool m_nvReadDone = false;
    bool m_commandBusy = false;
};

} // namespace tessaly
