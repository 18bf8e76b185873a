// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// A host that loads the installed library at run time, makes, uses and ends a
// panel through the component's entry points and calls by name alone, unloads
// the library and does it all again.
#include <tessaly/ComponentExports.h>

#include <QApplication>
#include <QMetaObject>
#include <QWidget>

#include <dlfcn.h>

#include <cstdio>

class IBaseModel;

namespace {

QString ValueOf(QWidget* panel, int row)
{
    QString value;
    QMetaObject::invokeMethod(panel, "GetItemFromGrd", Q_RETURN_ARG(QString, value), Q_ARG(int, 2), Q_ARG(int, row),
                              Q_ARG(int, 0));
    return value;
}

// 0 when a round of loading, using and unloading went as it must.
int OneRound()
{
    void* library = dlopen(TESSALY_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        std::fprintf(stderr, "dlopen: %s\n", dlerror());
        return 1;
    }
    const auto getFactory = reinterpret_cast<TessalyGetClassObject>(dlsym(library, "DllGetClassObject"));
    const auto canUnload = reinterpret_cast<TessalyCanUnloadNow>(dlsym(library, "DllCanUnloadNow"));
    const auto registerServer = reinterpret_cast<int32_t (*)()>(dlsym(library, "DllRegisterServer"));
    const auto unregisterServer = reinterpret_cast<int32_t (*)()>(dlsym(library, "DllUnregisterServer"));
    if (!getFactory || !canUnload || !registerServer || !unregisterServer || registerServer() != 0
        || unregisterServer() != 0)
        return 2;
    TessalyPanelFactory* factory = nullptr;
    if (getFactory("No.Such.Class", &factory) == 0 || factory || getFactory(TESSALY_CLASS_ID, &factory) != 0)
        return 3;
    QWidget window;
    QWidget* panel = factory->CreateInstance(&window);
    factory->Release();
    if (canUnload() == 0)
        return 4; // a panel is alive

    // A page number as a short or an int, called directly or queued.
    QMetaObject::invokeMethod(panel, "AddItemToGrd", Q_ARG(short, 2), Q_ARG(QString, QString()), Q_ARG(bool, false),
                              Q_ARG(bool, false), Q_ARG(QString, QString()), Q_ARG(QString, QStringLiteral("#777")),
                              Q_ARG(int, 1), Q_ARG(int, 1));
    QMetaObject::invokeMethod(panel, "AddItemToGrd", Qt::QueuedConnection, Q_ARG(int, 2), Q_ARG(QString, QString()),
                              Q_ARG(bool, false), Q_ARG(bool, false), Q_ARG(QString, QString()),
                              Q_ARG(QString, QStringLiteral("#778")), Q_ARG(int, 2), Q_ARG(int, 1));
    // The model's type is known to Qt while the library is loaded, and forgotten at the unload.
    if (!QMetaObject::invokeMethod(panel, "SetModelDLL", Qt::QueuedConnection, Q_ARG(IBaseModel*, nullptr)))
        return 5;
    QCoreApplication::processEvents();
    if (ValueOf(panel, 1) != QLatin1String("#777") || ValueOf(panel, 2) != QLatin1String("#778"))
        return 5;
    delete panel;
    if (canUnload() != 0 || dlclose(library) != 0)
        return 6;
    if (dlopen(TESSALY_LIBRARY, RTLD_NOW | RTLD_NOLOAD)) {
        std::fprintf(stderr, "the library stayed loaded after dlclose\n");
        return 7;
    }
    return QMetaType::fromName("IBaseModel*").isValid() ? 8 : 0;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    for (int round = 0; round < 2; ++round)
        if (const int failed = OneRound())
            return failed;
    return 0;
}
