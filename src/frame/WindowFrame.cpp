// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "frame/WindowFrame.h"

#include "frame/ReportError.h"
#include "frame/modWheelScroll.h"
#include "platform/MouseCapture.h"
#include "platform/WindowDrag.h"

namespace tessaly {

WindowFrame::WindowFrame(const PanelWidget& panel, FrameControls controls)
    : m_panel(panel)
    , m_title(controls.title)
    , m_close(&controls.close, controls.closeLooks)
    , m_min(&controls.minimise, controls.minimiseLooks)
{
}

void WindowFrame::ShowStartLooks()
{
    m_min.ShowRest();
    m_close.ShowRest();
}

void WindowFrame::imgWndClose_MouseDown()
{
    OnErrorReport("Event_Function", "imgWndclose_MouseDown", [&] { m_close.ShowPressed(); });
}

void WindowFrame::imgWndClose_MouseUp()
{
    OnErrorReport("Event_Function", "imgWndClose_MouseUp", [&] { m_close.ShowRest(); });
}

// The same way out as the Exit command, without its dimming and guard.
void WindowFrame::imgWndClose_Click()
{
    OnErrorReport("Event_Function", "imgWndClose_Click", [&] {
        QWidget* parent = m_panel.UserControl.window();
        ReleaseCapture();
        RestoreWheelScrollWithin(&m_panel.UserControl);
        parent->close(); // the host may end the panel here
    });
}

void WindowFrame::imgWndMin_MouseDown()
{
    OnErrorReport("Event_Function", "imgWndMin_MouseDown", [&] { m_min.ShowPressed(); });
}

void WindowFrame::imgWndMin_MouseUp()
{
    OnErrorReport("Event_Function", "imgWndMin_MouseUp", [&] { m_min.ShowRest(); });
}

void WindowFrame::imgWndMin_Click()
{
    OnErrorReport("Event_Function", "imgWndMin_Click", [&] {
        QWidget* parent = m_panel.UserControl.window();
        ReleaseCapture();
        parent->showMinimized();
    });
}

// A move with the left button held drags the window, as its own caption would.
void WindowFrame::lblTitle_MouseMove(int Button, int, float X, float Y)
{
    OnErrorReport("Event_Function", "lblTitle_MouseMove", [&] {
        QWidget* parent = m_panel.UserControl.window();
        if (Button == 1) {
            ReleaseCapture();
            BeginWindowDrag(parent, m_title.mapToGlobal(QPointF(X / TwipsPerPixel, Y / TwipsPerPixel)));
        }
    });
}

} // namespace tessaly
