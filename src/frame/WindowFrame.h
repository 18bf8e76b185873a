// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The panel's own window frame: the close and minimise buttons and the title
// as a drag handle, acting on the window that holds the panel. The page
// grids' wheel hooks leave with the window.
#pragma once

#include "frame/ImageButtonLook.h"
#include "layout/PanelControls.h"

namespace tessaly {


class WindowFrame {
public:
    WindowFrame(const PanelWidget& panel, FrameControls controls);

    // Start-up: both buttons at rest.
    void ShowStartLooks();

    void imgWndClose_MouseDown();
    void imgWndClose_MouseUp();
    void imgWndClose_Click();
    void imgWndMin_MouseDown();
    void imgWndMin_MouseUp();
    void imgWndMin_Click();
    void lblTitle_MouseMove(int Button, int Shift, float X, float Y);

private:
    const PanelWidget& m_panel;
    Label& m_title;
    ImageButtonLook m_close;
    ImageButtonLook m_min;
};

} // namespace tessaly
