// The panel's own window frame: the close and minimise buttons and the title
// as a drag handle, acting on the window that holds the panel; and the wheel
// hooks of the page grids, which leave with the window.
#pragma once

#include "frame/ImageButtonLook.h"
#include "layout/PanelControls.h"

namespace tessaly {

class WindowFrame {
public:
    explicit WindowFrame(PanelControls& controls);

    // Start-up: both buttons at rest.
    void ShowStartLooks();

    void imgWndClose_MouseDown();
    void imgWndClose_MouseUp();
    void imgWndClose_Click();
    void imgWndMin_MouseDown();
    void imgWndMin_MouseUp();
    void imgWndMin_Click();
    void lblTitle_MouseMove(int Button, int Shift, float X, float Y);
    // Takes the wheel hooks off every page grid.
    void ReleaseWheel();

private:
    PanelControls& c;
    ImageButtonLook m_close;
    ImageButtonLook m_min;
};

} // namespace tessaly
