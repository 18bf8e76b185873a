#include "commands/CommandBar.h"

#include "commands/ModelBinding.h"
#include "commands/Progress.h"
#include "editing/Editors.h"
#include "frame/ReportError.h"
#include "frame/WindowFrame.h"
#include "platform/MouseCapture.h"

#include <tessaly/BaseModel.h>

#include <QCoreApplication>
#include <QPointer>

namespace tessaly {

namespace {

enum Command : int16_t { NVRead = 0, NVWrite = 1, Exit = 2, Restore = 3 };

ButtonLooks LooksOf(const Image* idle, const Image* over, const Image* sel, const Image* dim)
{
    return {idle->Picture(), over->Picture(), sel->Picture(), dim->Picture()};
}

} // namespace

CommandBar::CommandBar(PanelControls& controls, ModelBinding& model, Progress& progress, Editors& editors,
                       WindowFrame& frame)
    : c(controls)
    , m_model(model)
    , m_progress(progress)
    , m_editors(editors)
    , m_frame(frame)
    , m_looks{
          ImageButtonLook(c.picCommand(NVRead),
                          LooksOf(c.imageReadIdle, c.imageReadOver, c.imageReadSel, c.imageReadDim)),
          ImageButtonLook(c.picCommand(NVWrite),
                          LooksOf(c.imageWriteIdle, c.imageWriteOver, c.imageWriteSel, c.imageWriteDim)),
          ImageButtonLook(c.picCommand(Exit), LooksOf(c.imageExitIdle, c.imageExitOver, c.imageExitSel, c.imageExitDim)),
          ImageButtonLook(c.picCommand(Restore),
                          LooksOf(c.imageUndoIdle, c.imageUndoOver, c.imageUndoSel, c.imageUndoDim)),
      }
{
}

void CommandBar::ShowStartLooks()
{
    m_looks[NVRead].ShowRest();
    m_looks[NVWrite].ShowDimmed();
    m_looks[Exit].ShowRest();
    m_looks[Restore].ShowRest();
}

bool CommandBar::IsLive(int16_t Index) const
{
    return Index == NVRead || Index == Exit || g_bNVReadDone;
}

void CommandBar::picCommand_MouseMove(int16_t Index, int16_t, int16_t, float X, float Y)
{
    OnErrorReport("Event_Function", "picCommand_MouseMove", [&] {
        if (g_nActiveCommand != Index)
            m_looks.at(size_t(Index)).MouseMove(X, Y, IsLive(Index));
    });
}

void CommandBar::picCommand_MouseDown(int16_t Index, int16_t, int16_t, float, float)
{
    OnErrorReport("Event_Function", "picCommand_MouseDown", [&] {
        if (IsLive(Index))
            m_looks.at(size_t(Index)).ShowPressed();
    });
}

void CommandBar::picCommand_Click(int16_t Index)
{
    // The host may end the panel while the command asks its window to close,
    // or in the pass of the event loop: nothing is touched after that.
    const QPointer<QWidget> alive(&c.UserControl);
    OnErrorReport("Event_Function", "picCommand_Click", [&] {
        if (g_bCommandBusy)
            return;
        c.UserControl.setCursor(Qt::WaitCursor);
        g_bCommandBusy = true;
        for (ImageButtonLook& look : m_looks)
            look.ShowDimmed();
        for (int16_t i = 0; i <= 3; ++i)
            c.picCommand(i)->setEnabled(false);
        // Restore runs with its rest look, the others pressed.
        if (IsLive(Index))
            Index == Restore ? m_looks[Restore].ShowRest() : m_looks.at(size_t(Index)).ShowPressed();
        g_nActiveCommand = Index;

        if (Index == Exit) {
            QWidget* parent = c.UserControl.window();
            ReleaseCapture();
            m_frame.ReleaseWheel();
            parent->close();
            if (!alive)
                return;
        } else if (IsLive(Index)) {
            if (!RunOnModel(Index))
                return;
            if (!alive || c.Ended())
                return;
            m_editors.SetCellPosition();
            if (Index == NVRead)
                g_bNVReadDone = true;
        }

        // The one pass of the event loop: clicks queued meanwhile find the
        // guard still set and are lost; the frame's buttons act here.
        QCoreApplication::processEvents();
        if (!alive || c.Ended())
            return;
        c.UserControl.unsetCursor();
        g_bCommandBusy = false;
        g_nActiveCommand = -1;
        SetDefaultButtonState();
    });
}

bool CommandBar::RunOnModel(int16_t Index)
{
    if (!m_model.CheckModelDLL()) {
        if (!c.Ended()) {
            SetDefaultButtonState();
            g_bCommandBusy = false;
        }
        return false;
    }
    static const QString captions[] = {QStringLiteral("NV Read"), QStringLiteral("NV Write"), QString(),
                                       QStringLiteral("Restore")};
    c.lblProcess->setCaption(captions[Index]);
    c.lblPercent->setCaption(QStringLiteral("0 %"));
    if (Index == Restore) {
        m_progress.RestartCount(); // the old bar stays until the empty one is refreshed
    } else {
        c.UserControl.repaint(c.OwnSurface()); // the new captions show before the model holds the thread
        c.pbProgressBg->Refresh();
    }
    IBaseModel* model = m_model.Model();
    if (Index == NVRead)
        model->NVRead();
    else if (Index == NVWrite)
        model->NVWrite();
    else
        model->NVRestore();
    return true;
}

void CommandBar::SetDefaultButtonState()
{
    OnErrorReport("Common_Function", "SetDefaultButtonState", [&] {
        for (int16_t i = 0; i <= 3; ++i)
            m_looks.at(size_t(i)).ShowAtRest(IsLive(i));
        for (int16_t i = 0; i <= 3; ++i)
            c.picCommand(i)->setEnabled(true);
        g_nActiveCommand = -1;
    });
}

} // namespace tessaly
