#include "commands/ModelBinding.h"

#include "commands/Progress.h"
#include "frame/ReportError.h"
#include "platform/MsgBox.h"

namespace tessaly {

ModelBinding::ModelBinding(PanelControls& controls, Progress& progress)
    : c(controls)
    , m_progress(progress)
{
}

void ModelBinding::SetModelDLL(IBaseModel* model)
{
    OnErrorReport("Interface", "SetModelDLL", [&] {
        g_objModel = model;
        // The sink leaves the earlier model and joins this one.
        for (const QMetaObject::Connection& connection : std::exchange(events, {}))
            QObject::disconnect(connection);
        if (model) {
            QObject* sink = c.Handlers.get();
            events = {
                QObject::connect(model, &IBaseModelEvents::StepIt, sink, [this](int32_t lPort) { m_progress.events_StepIt(lPort); }),
                QObject::connect(model, &IBaseModelEvents::GetSubTotalProgressCount, sink,
                                 [this](const QString& name, int32_t count, int32_t lPort) {
                                     m_progress.events_GetSubTotalProgressCount(name, count, lPort);
                                 }),
                QObject::connect(model, &IBaseModelEvents::GetTotalProgressCount, sink,
                                 [this](int32_t count, int32_t lPort) { m_progress.events_GetTotalProgressCount(count, lPort); }),
                QObject::connect(model, &IBaseModelEvents::SetProcessStep, sink,
                                 [this](int32_t lProcess, int32_t nStatus, int32_t lPort) {
                                     m_progress.events_SetProcessStep(lProcess, nStatus, lPort);
                                 }),
                QObject::connect(model, &IBaseModelEvents::SetSubProcessStep, sink,
                                 [this](int32_t lProcess, int32_t nStatus, int32_t lPort) {
                                     m_progress.events_SetSubProcessStep(lProcess, nStatus, lPort);
                                 }),
            };
        }
        if (!g_objModel) {
            c.lblModelPortInfo->setCaption(QStringLiteral("No Phone"));
            return;
        }
        QString name;
        QString port;
        g_objModel->GetModelName(name);
        g_objModel->GetPortNumber(port);
        c.lblModelPortInfo->setCaption(name + QStringLiteral("  (") + QStringLiteral("COM") + port + QStringLiteral(")"));
    });
}

bool ModelBinding::CheckModelDLL()
{
    bool bound = false;
    OnErrorReport("Common_Function", "CheckModelDLL", [&] {
        if (g_objModel) {
            bound = true;
            return;
        }
        MsgBox(QStringLiteral("Error : There is no selected model"), MsgBoxStyle::Critical);
        if (!c.Ended())
            c.UserControl.unsetCursor();
    });
    return bound;
}

} // namespace tessaly
