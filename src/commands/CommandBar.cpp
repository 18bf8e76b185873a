// The command bar: NV Read, NV Write, Exit and Restore as four image buttons
// whose bitmaps show their state, and the run of a command on the model.
#include "panel/Panel.h"

#include "frame/ReportError.h"
#include "platform/MouseCapture.h"

#include <tessaly/Tessaly.h>

#include <QCoreApplication>
#include <QPointer>

namespace tessaly {

namespace {

enum Command : int16_t { NVRead = 0, NVWrite = 1, Exit = 2, Restore = 3 };

} // namespace

void Panel::WireCommandEvents()
{
    picCommand.WireEvents([this](PictureBox& button, int16_t Index) {
        QObject* sink = Handlers.get();
        QObject::connect(&button, &PictureBox::MouseMove, sink, [this, Index](int Button, int Shift, float X, float Y) {
            picCommand_MouseMove(Index, int16_t(Button), int16_t(Shift), X, Y);
        });
        QObject::connect(&button, &PictureBox::MouseDown, sink, [this, Index](int Button, int Shift, float X, float Y) {
            picCommand_MouseDown(Index, int16_t(Button), int16_t(Shift), X, Y);
        });
        QObject::connect(&button, &PictureBox::Click, sink, [this, Index] { picCommand_Click(Index); });
    });
}

Panel::ButtonLooks Panel::LooksOf(int16_t Index) const
{
    switch (Index) {
    case NVRead: return {imageReadIdle, imageReadOver, imageReadSel, imageReadDim};
    case NVWrite: return {imageWriteIdle, imageWriteOver, imageWriteSel, imageWriteDim};
    case Exit: return {imageExitIdle, imageExitOver, imageExitSel, imageExitDim};
    default: return {imageUndoIdle, imageUndoOver, imageUndoSel, imageUndoDim};
    }
}

// NV Write and Restore are offered once an NV Read has completed.
bool Panel::IsLive(int16_t Index) const
{
    return Index == NVRead || Index == Exit || g_bNVReadDone;
}

void Panel::picCommand_MouseMove(int16_t Index, int16_t, int16_t, float X, float Y)
{
    OnErrorReport("Event_Function", "picCommand_MouseMove", [&] {
        if (g_nActiveCommand == Index)
            return;
        PictureBox* button = picCommand(Index);
        // The edge itself counts as outside.
        const bool inside = X > 0 && Y > 0 && X < button->Width() && Y < button->Height();
        if (inside && GetCapture() == button)
            return;
        if (inside) {
            SetCapture(button); // moves outside still reach the button: that is how it sees the pointer leave
            if (IsLive(Index))
                button->setPicture(LooksOf(Index).over->Picture());
        } else {
            ReleaseCapture();
            if (IsLive(Index))
                button->setPicture(LooksOf(Index).idle->Picture());
        }
    });
}

void Panel::picCommand_MouseDown(int16_t Index, int16_t, int16_t, float, float)
{
    OnErrorReport("Event_Function", "picCommand_MouseDown", [&] {
        if (IsLive(Index))
            picCommand(Index)->setPicture(LooksOf(Index).sel->Picture());
    });
}

void Panel::picCommand_Click(int16_t Index)
{
    // The host may end the panel while the command asks its window to close,
    // or in the pass of the event loop: nothing is touched after that.
    const QPointer<Tessaly> alive(&UserControl);
    OnErrorReport("Event_Function", "picCommand_Click", [&] {
        if (g_bCommandBusy)
            return;
        UserControl.setCursor(Qt::WaitCursor);
        g_bCommandBusy = true;
        for (int16_t i = 0; i <= 3; ++i)
            picCommand(i)->setPicture(LooksOf(i).dim->Picture());
        for (int16_t i = 0; i <= 3; ++i)
            picCommand(i)->setEnabled(false);
        if (IsLive(Index))
            picCommand(Index)->setPicture((Index == Restore ? LooksOf(Index).idle : LooksOf(Index).sel)->Picture());
        g_nActiveCommand = Index;

        if (Index == Exit) {
            QWidget* parent = UserControl.window();
            ReleaseCapture();
            ReleaseWheel();
            parent->close();
            if (!alive)
                return;
        } else if (IsLive(Index)) {
            if (!CheckModelDLL()) {
                if (!Ended()) {
                    SetDefaultButtonState();
                    g_bCommandBusy = false;
                }
                return;
            }
            static const QString captions[] = {QStringLiteral("NV Read"), QStringLiteral("NV Write"), QString(),
                                               QStringLiteral("Restore")};
            lblProcess->setCaption(captions[Index]);
            lblPercent->setCaption(QStringLiteral("0 %"));
            if (Index == Restore) {
                g_lProgressCount = 0; // the old bar stays until the next draw
            } else {
                UserControl.repaint(OwnSurface()); // the new captions show before the model holds the thread
                pbProgressBg->Refresh();
            }
            IBaseModel* model = g_objModel;
            if (Index == NVRead)
                model->NVRead();
            else if (Index == NVWrite)
                model->NVWrite();
            else
                model->NVRestore();
            if (!alive || Ended())
                return;
            SetCellPosition();
            if (Index == NVRead)
                g_bNVReadDone = true;
        }

        // The one pass of the event loop: clicks queued meanwhile find the
        // guard still set and are lost; the frame's buttons act here.
        QCoreApplication::processEvents();
        if (!alive || Ended())
            return;
        UserControl.unsetCursor();
        g_bCommandBusy = false;
        g_nActiveCommand = -1;
        SetDefaultButtonState();
    });
}

void Panel::SetDefaultButtonState()
{
    OnErrorReport("Common_Function", "SetDefaultButtonState", [&] {
        picCommand(NVRead)->setPicture(imageReadIdle->Picture());
        picCommand(NVWrite)->setPicture((g_bNVReadDone ? imageWriteIdle : imageWriteDim)->Picture());
        picCommand(Exit)->setPicture(imageExitIdle->Picture());
        picCommand(Restore)->setPicture((g_bNVReadDone ? imageUndoIdle : imageUndoDim)->Picture());
        for (int16_t i = 0; i <= 3; ++i)
            picCommand(i)->setEnabled(true);
        g_nActiveCommand = -1;
    });
}

} // namespace tessaly
