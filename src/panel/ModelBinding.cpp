// The model of the connected handset: binding it, its label, the refusal to
// work without one, and its events routed to the progress handlers.
#include "panel/Panel.h"

#include "frame/ReportError.h"
#include "platform/MsgBox.h"

#include <tessaly/Tessaly.h>

#include <QGuiApplication>

namespace tessaly {

void Panel::SetModelDLL(IBaseModel* model)
{
    OnErrorReport("Interface", "SetModelDLL", [&] {
        g_objModel = model;
        // The sink leaves the earlier model and joins this one.
        for (const QMetaObject::Connection& connection : std::exchange(events, {}))
            QObject::disconnect(connection);
        if (model) {
            QObject* sink = Handlers.get();
            events = {
                QObject::connect(model, &IBaseModelEvents::StepIt, sink, [this](int32_t lPort) { events_StepIt(lPort); }),
                QObject::connect(model, &IBaseModelEvents::GetSubTotalProgressCount, sink,
                                 [this](const QString& name, int32_t count, int32_t lPort) {
                                     events_GetSubTotalProgressCount(name, count, lPort);
                                 }),
                QObject::connect(model, &IBaseModelEvents::GetTotalProgressCount, sink,
                                 [this](int32_t count, int32_t lPort) { events_GetTotalProgressCount(count, lPort); }),
                QObject::connect(model, &IBaseModelEvents::SetProcessStep, sink,
                                 [this](int32_t lProcess, int32_t nStatus, int32_t lPort) {
                                     events_SetProcessStep(lProcess, nStatus, lPort);
                                 }),
                QObject::connect(model, &IBaseModelEvents::SetSubProcessStep, sink,
                                 [this](int32_t lProcess, int32_t nStatus, int32_t lPort) {
                                     events_SetSubProcessStep(lProcess, nStatus, lPort);
                                 }),
            };
        }
        if (!g_objModel) {
            lblModelPortInfo->setCaption(QStringLiteral("No Phone"));
            return;
        }
        QString name;
        QString port;
        g_objModel->GetModelName(name);
        g_objModel->GetPortNumber(port);
        lblModelPortInfo->setCaption(name + QStringLiteral("  (") + QStringLiteral("COM") + port + QStringLiteral(")"));
    });
}

bool Panel::CheckModelDLL()
{
    bool bound = false;
    OnErrorReport("Common_Function", "CheckModelDLL", [&] {
        if (g_objModel) {
            bound = true;
            return;
        }
        MsgBox(QStringLiteral("Error : There is no selected model"), MsgBoxStyle::Critical);
        if (!Ended())
            UserControl.unsetCursor();
    });
    return bound;
}

} // namespace tessaly
