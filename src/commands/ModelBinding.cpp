// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "commands/ModelBinding.h"

#include "commands/ModelEvents.h"
#include "commands/Progress.h"
#include "frame/ReportError.h"
#include "platform/MsgBox.h"

namespace tessaly {

namespace {

// Each event of the model and the slot that takes it.
const char* const Events[][2] = {
    {SIGNAL(StepIt(int32_t)), SLOT(StepIt(int32_t))},
    {SIGNAL(GetSubTotalProgressCount(QString, int32_t, int32_t)), SLOT(GetSubTotalProgressCount(QString, int32_t, int32_t))},
    {SIGNAL(GetTotalProgressCount(int32_t, int32_t)), SLOT(GetTotalProgressCount(int32_t, int32_t))},
    {SIGNAL(SetProcessStep(int32_t, int32_t, int32_t)), SLOT(SetProcessStep(int32_t, int32_t, int32_t))},
    {SIGNAL(SetSubProcessStep(int32_t, int32_t, int32_t)), SLOT(SetSubProcessStep(int32_t, int32_t, int32_t))},
};

} // namespace

ModelBinding::ModelBinding(const PanelWidget& panel, Label& portInfo, Progress& progress)
    : m_panel(panel)
    , m_portInfo(portInfo)
    , m_progress(progress)
{
}

void ModelBinding::SetModelDLL(IBaseModel* model)
{
    OnErrorReport("Interface", "SetModelDLL", [&] {
        m_model = model;
        // The receiver leaves the earlier model and joins this one.
        for (const QMetaObject::Connection& connection : std::exchange(m_events, {}))
            QObject::disconnect(connection);
        if (model && m_panel.Handlers) {
            if (!m_receiver)
                m_receiver = new ModelEvents(m_panel.Handlers.get(), m_progress);
            for (const char* const* event : Events)
                m_events << QObject::connect(model, event[0], m_receiver, event[1]);
        }
        if (!m_model) {
            m_portInfo.setCaption(QStringLiteral("No Phone"));
            return;
        }
        QString name;
        QString port;
        m_model->GetModelName(name);
        m_model->GetPortNumber(port);
        m_portInfo.setCaption(name + QStringLiteral("  (") + QStringLiteral("COM") + port + QStringLiteral(")"));
    });
}

bool ModelBinding::CheckModelDLL()
{
    bool bound = false;
    OnErrorReport("Common_Function", "CheckModelDLL", [&] {
        if (m_model) {
            bound = true;
            return;
        }
        MsgBox(QStringLiteral("Error : There is no selected model"), MsgBoxStyle::Critical);
    });
    return bound;
}

} // namespace tessaly
