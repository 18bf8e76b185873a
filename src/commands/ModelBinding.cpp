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

ModelBinding::ModelBinding(PanelControls& controls, Progress& progress)
    : c(controls)
    , m_progress(progress)
{
}

void ModelBinding::SetModelDLL(IBaseModel* model)
{
    OnErrorReport("Interface", "SetModelDLL", [&] {
        g_objModel = model;
        // The receiver leaves the earlier model and joins this one.
        for (const QMetaObject::Connection& connection : std::exchange(events, {}))
            QObject::disconnect(connection);
        if (model && c.Handlers) {
            if (!m_receiver)
                m_receiver = new ModelEvents(c.Handlers.get(), m_progress);
            for (const char* const* event : Events)
                events << QObject::connect(model, event[0], m_receiver, event[1]);
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
