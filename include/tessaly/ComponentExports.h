// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The library's entry points as a component, for hosts that load it at run
// time (dlopen and dlsym) instead of linking it. They have C linkage and
// return 0 on success.
//
//     auto getFactory = (TessalyGetClassObject)dlsym(library, "DllGetClassObject");
//     TessalyPanelFactory* factory = nullptr;
//     if (getFactory("OrvenTessaly2.Tessaly", &factory) == 0) {
//         QWidget* panel = factory->CreateInstance(window); // a Tessaly
//         factory->Release();
//     }
//
// A panel made so is a Tessaly like any other: the host ends it by deleting
// it, and drives it through its methods by name (see <tessaly/TessalyByName.h>).
// Once DllCanUnloadNow says 0, dlclose unloads the library, and a later
// dlopen starts it afresh.
#pragma once

#include <tessaly/tessaly_export.h>

#include <cstdint>

class QWidget;

// Makes panels. A factory lives until its Release.
class TessalyPanelFactory {
public:
    // A new panel inside `parent` (none: a window of its own).
    virtual QWidget* CreateInstance(QWidget* parent) = 0;
    virtual void Release() = 0;

protected:
    ~TessalyPanelFactory() = default;
};

// The class name that DllGetClassObject knows.
#define TESSALY_CLASS_ID "OrvenTessaly2.Tessaly"

extern "C" {
// A factory of the class `classId`; 0, or 0x80040111 for a class it does not have.
TESSALY_EXPORT int32_t DllGetClassObject(const char* classId, TessalyPanelFactory** factory);
// 0 when no panel and no factory of this library is alive, so that it may be unloaded; 1 otherwise.
TESSALY_EXPORT int32_t DllCanUnloadNow();
// The library needs no registration: loading it is enough. Both succeed.
TESSALY_EXPORT int32_t DllRegisterServer();
TESSALY_EXPORT int32_t DllUnregisterServer();
}

using TessalyGetClassObject = int32_t (*)(const char*, TessalyPanelFactory**);
using TessalyCanUnloadNow = int32_t (*)();
