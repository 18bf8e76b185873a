// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "commands/CommandBar.h"

#include "commands/ModelBinding.h"
#include "commands/Progress.h"
#include "editing/Editors.h"
#include "frame/ReportError.h"
#include "pages/PageGrids.h"
#include "platform/MouseCapture.h"

#include <tessaly/BaseModel.h>

#include <QCoreApplication>
#include <QPointer>

namespace tessaly {

namespace {

enum Command : int16_t { NVRead = 0, NVWrite = 1, Exit = 2, Restore = 3 };

} // namespace

CommandBar::CommandBar(const PanelWidget& panel, CommandControls controls, ModelBinding& model, Progress& progress,
                       Editors& editors, PageGrids& pages)
    : m_panel(panel)
    , m_buttons(controls.buttons)
    , m_model(model)
    , m_progress(progress)
    , m_editors(editors)
    , m_pages(pages)
    , m_looks{
          ImageButtonLook(m_buttons(NVRead), controls.looks[NVRead]),
          ImageButtonLook(m_buttons(NVWrite), controls.looks[NVWrite]),
          ImageButtonLook(m_buttons(Exit), controls.looks[Exit]),
          ImageButtonLook(m_buttons(Restore), controls.looks[Restore]),
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
    return Index == NVRead || Index == Exit || m_nvReadDone;
}

void CommandBar::picCommand_MouseMove(int16_t Index, int16_t, int16_t, float X, float Y)
{
    OnErrorReport("Event_Function", "picCommand_MouseMove", [&] {
        if (m_activeCommand != Index)
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
    const QPointer<QWidget> alive(&m_panel.UserControl);
    OnErrorReport("Event_Function", "picCommand_Click", [&] {
        if (m_commandBusy)
            return;
        m_panel.UserControl.setCursor(Qt::WaitCursor);
        m_commandBusy = true;
        for (ImageButtonLook& look : m_looks)
            look.ShowDimmed();
        for (int16_t i = 0; i <= 3; ++i)
            m_buttons(i)->setEnabled(false);
        // Restore runs with its rest look, the others pressed.
        if (IsLive(Index))
            Index == Restore ? m_looks[Restore].ShowRest() : m_looks.at(size_t(Index)).ShowPressed();
        m_activeCommand = Index;

        if (Index == Exit) {
            QWidget* parent = m_panel.UserControl.window();
            ReleaseCapture();
            m_pages.ReleaseWheel();
            parent->close();
            if (!alive)
                return;
        } else if (IsLive(Index)) {
            if (!RunOnModel(Index))
                return;
            if (!alive || m_panel.Ended())
                return;
            m_editors.SetCellPosition();
            if (Index == NVRead)
                m_nvReadDone = true;
        }

        // The one pass of the event loop: clicks queued meanwhile find the
        // guard still set and are lost; the frame's buttons act here.
        QCoreApplication::processEvents();
        if (!alive || m_panel.Ended())
            return;
        m_panel.UserControl.unsetCursor();
        m_commandBusy = false;
        m_activeCommand = -1;
        SetDefaultButtonState();
    });
}

bool CommandBar::RunOnModel(int16_t Index)
{
    if (!m_model.CheckModelDLL()) {
        if (!m_panel.Ended()) {
            m_panel.UserControl.unsetCursor();
            SetDefaultButtonState();
            m_commandBusy = false;
        }
        return false;
    }
    static const QString captions[] = {QStringLiteral("NV Read"), QStringLiteral("NV Write"), QString(),
                                       QStringLiteral("Restore")};
    m_progress.Start(captions[Index], Index == Restore);
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
            m_buttons(i)->setEnabled(true);
        m_activeCommand = -1;
    });
}

} // namespace tessaly
