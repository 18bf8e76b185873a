// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The component's entry points: a factory of panels, and whether anything of
// the library is still alive.
#include "panel/Panel.h"
#include "platform/ModalBox.h"

#include <tessaly/ComponentExports.h>
#include <tessaly/Tessaly.h>

#include <QMetaType>

#include <atomic>
#include <cstring>

namespace {

std::atomic<int> g_liveFactories{0};

constexpr int32_t S_OK = 0;
constexpr int32_t S_FALSE = 1;
constexpr int32_t CLASS_E_CLASSNOTAVAILABLE = int32_t(0x80040111u);

class PanelFactory final : public TessalyPanelFactory {
public:
    PanelFactory() { ++g_liveFactories; }
    QWidget* CreateInstance(QWidget* parent) override { return new Tessaly(parent); }
    void Release() override { delete this; }

private:
    ~PanelFactory() { --g_liveFactories; }
};

// The panel, a call by name or a script engine registers the public pointer
// types with Qt's meta-type system, which then points into this library. They
// are taken out again when the library is unloaded, so that a later load
// registers its own afresh.
struct MetaTypesTakenBack {
    ~MetaTypesTakenBack()
    {
        QMetaType::unregisterMetaType(QMetaType::fromType<IBaseModel*>());
        QMetaType::unregisterMetaType(QMetaType::fromType<IBaseModelEvents*>());
        QMetaType::unregisterMetaType(QMetaType::fromType<Tessaly*>());
        QMetaType::unregisterMetaType(QMetaType::fromType<TessalyByName*>());
    }
} g_metaTypesTakenBack;

} // namespace

extern "C" {

int32_t DllGetClassObject(const char* classId, TessalyPanelFactory** factory)
{
    if (!factory)
        return CLASS_E_CLASSNOTAVAILABLE;
    *factory = nullptr;
    if (!classId || std::strcmp(classId, TESSALY_CLASS_ID) != 0)
        return CLASS_E_CLASSNOTAVAILABLE;
    *factory = new PanelFactory;
    return S_OK;
}

int32_t DllCanUnloadNow()
{
    return g_liveFactories == 0 && tessaly::LivePanels() == 0 && !tessaly::ModalBoxesBusy() ? S_OK : S_FALSE;
}

int32_t DllRegisterServer()
{
    return S_OK;
}

int32_t DllUnregisterServer()
{
    return S_OK;
}
}
