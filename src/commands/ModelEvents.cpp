// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "commands/ModelEvents.h"

#include "commands/Progress.h"

namespace tessaly {

ModelEvents::ModelEvents(QObject* handlers, Progress& progress)
    : QObject(handlers)
    , m_progress(progress)
{
}

void ModelEvents::StepIt(int32_t lPort)
{
    m_progress.events_StepIt(lPort);
}

void ModelEvents::GetSubTotalProgressCount(const QString& bstrSubProcessName, int32_t dwTotalProgressCount,
                                           int32_t lPort)
{
    m_progress.events_GetSubTotalProgressCount(bstrSubProcessName, dwTotalProgressCount, lPort);
}

void ModelEvents::GetTotalProgressCount(int32_t dwTotalProgressCount, int32_t lPort)
{
    m_progress.events_GetTotalProgressCount(dwTotalProgressCount, lPort);
}

void ModelEvents::SetProcessStep(int32_t lProcess, int32_t nStatus, int32_t lPort)
{
    m_progress.events_SetProcessStep(lProcess, nStatus, lPort);
}

void ModelEvents::SetSubProcessStep(int32_t lProcess, int32_t nStatus, int32_t lPort)
{
    m_progress.events_SetSubProcessStep(lProcess, nStatus, lPort);
}

} // namespace tessaly
