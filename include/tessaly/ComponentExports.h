// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

/**
 * \file ComponentExports.h
 * \brief The library's entry points as a component, for hosts that load it
 * at run time (dlopen and dlsym) instead of linking it.
 *
 * They have C linkage and return 0 on success.
 *
 * \code
 * auto getFactory = (TessalyGetClassObject)dlsym(library, "DllGetClassObject");
 * TessalyPanelFactory* factory = nullptr;
 * if (getFactory("OrvenTessaly2.Tessaly", &factory) == 0) {
 *     QWidget* panel = factory->CreateInstance(window); // a Tessaly
 *     factory->Release();
 * }
 * \endcode
 *
 * A panel made so is a Tessaly like any other: the host ends it by deleting
 * it, and drives it through its methods by name (see TessalyByName).
 * Once DllCanUnloadNow says 0, dlclose unloads the library, and a later
 * dlopen starts it afresh.
 */
#pragma once

#include <tessaly/tessaly_export.h>

#include <cstdint>

class QWidget;

/**
 * \brief Makes panels. A factory lives until its Release.
 *
 * DllGetClassObject hands out factories; a host never deletes one.
 */
class TessalyPanelFactory {
public:
    /**
     * \brief Makes a new panel.
     * \param parent The widget the panel is placed in; none (null) makes it a
     *        window of its own.
     * \return The new Tessaly, owned by `parent` when there is one, else by
     *         the caller, who ends it by deleting it.
     */
    virtual QWidget* CreateInstance(QWidget* parent) = 0;
    /**
     * \brief Ends the factory; the panels it made live on.
     */
    virtual void Release() = 0;

protected:
    /// \brief Only Release ends a factory.
    ~TessalyPanelFactory() = default;
};

/// \brief The class name that DllGetClassObject knows.
#define TESSALY_CLASS_ID "OrvenTessaly2.Tessaly"

extern "C" {
/**
 * \brief Hands out a factory of panels.
 * \param classId The class's name: TESSALY_CLASS_ID.
 * \param[out] factory Set to the new factory, or to null when the call
 *        fails. The caller ends the factory with TessalyPanelFactory::Release.
 * \return 0, or 0x80040111 for a class it does not have (and when `factory`
 *         is null).
 */
TESSALY_EXPORT int32_t DllGetClassObject(const char* classId, TessalyPanelFactory** factory);
/**
 * \brief Whether the library may be unloaded.
 * \return 0 when no panel and no factory of this library is alive and none
 *         of its message boxes is open, so that it may be unloaded; 1
 *         otherwise.
 */
TESSALY_EXPORT int32_t DllCanUnloadNow();
/**
 * \brief Registers the library: it needs no registration, loading it is
 * enough.
 * \return Always 0.
 */
TESSALY_EXPORT int32_t DllRegisterServer();
/**
 * \brief Unregisters the library: it needs no registration, so there is
 * nothing to undo.
 * \return Always 0.
 */
TESSALY_EXPORT int32_t DllUnregisterServer();
}

/// \brief The type of DllGetClassObject, for dlsym.
using TessalyGetClassObject = int32_t (*)(const char*, TessalyPanelFactory**);
/// \brief The type of DllCanUnloadNow, for dlsym.
using TessalyCanUnloadNow = int32_t (*)();
