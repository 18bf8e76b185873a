// The panel's own window frame: the close and minimise buttons and the title
// as a drag handle. They act on the window that holds the panel.
#include "panel/Panel.h"

#include "frame/ReportError.h"
#include "platform/MouseCapture.h"
#include "platform/WindowDrag.h"

#include <tessaly/Tessaly.h>

namespace tessaly {

void Panel::WireFrameEvents()
{
    QObject* sink = Handlers.get();
    QObject::connect(imgWndClose, &Image::MouseDown, sink, [this] { imgWndClose_MouseDown(); });
    QObject::connect(imgWndClose, &Image::MouseUp, sink, [this] { imgWndClose_MouseUp(); });
    QObject::connect(imgWndClose, &Image::Click, sink, [this] { imgWndClose_Click(); });
    QObject::connect(imgWndMin, &Image::MouseDown, sink, [this] { imgWndMin_MouseDown(); });
    QObject::connect(imgWndMin, &Image::MouseUp, sink, [this] { imgWndMin_MouseUp(); });
    QObject::connect(imgWndMin, &Image::Click, sink, [this] { imgWndMin_Click(); });
    QObject::connect(lblTitle, &Label::MouseMove, sink,
                     [this](int Button, int Shift, float X, float Y) { lblTitle_MouseMove(Button, Shift, X, Y); });
}

void Panel::imgWndClose_MouseDown()
{
    OnErrorReport("Event_Function", "imgWndclose_MouseDown", [&] { imgWndClose->setPicture(imageCloseSel->Picture()); });
}

void Panel::imgWndClose_MouseUp()
{
    OnErrorReport("Event_Function", "imgWndClose_MouseUp", [&] { imgWndClose->setPicture(imageClose->Picture()); });
}

// The same way out as the Exit command, without its dimming and guard.
void Panel::imgWndClose_Click()
{
    OnErrorReport("Event_Function", "imgWndClose_Click", [&] {
        QWidget* parent = UserControl.window();
        ReleaseCapture();
        ReleaseWheel();
        parent->close(); // the host may end the panel here
    });
}

void Panel::imgWndMin_MouseDown()
{
    OnErrorReport("Event_Function", "imgWndMin_MouseDown", [&] { imgWndMin->setPicture(imageMinimizeSel->Picture()); });
}

void Panel::imgWndMin_MouseUp()
{
    OnErrorReport("Event_Function", "imgWndMin_MouseUp", [&] { imgWndMin->setPicture(imageMinize->Picture()); });
}

void Panel::imgWndMin_Click()
{
    OnErrorReport("Event_Function", "imgWndMin_Click", [&] {
        QWidget* parent = UserControl.window();
        ReleaseCapture();
        parent->showMinimized();
    });
}

// A move with the left button held drags the window, as its own caption would.
void Panel::lblTitle_MouseMove(int Button, int, float X, float Y)
{
    OnErrorReport("Event_Function", "lblTitle_MouseMove", [&] {
        QWidget* parent = UserControl.window();
        if (Button == 1) {
            ReleaseCapture();
            BeginWindowDrag(parent, lblTitle->mapToGlobal(QPointF(X / TwipsPerPixel, Y / TwipsPerPixel)));
        }
    });
}

} // namespace tessaly
