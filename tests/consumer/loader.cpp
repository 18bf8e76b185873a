// A host that loads the installed library at run time and makes, uses and
// ends a panel through the component's entry points alone.
#include <tessaly/ComponentExports.h>

#include <QApplication>
#include <QWidget>

#include <dlfcn.h>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    void* library = dlopen(TESSALY_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        std::fprintf(stderr, "dlopen: %s\n", dlerror());
        return 1;
    }
    const auto getFactory = reinterpret_cast<TessalyGetClassObject>(dlsym(library, "DllGetClassObject"));
    const auto canUnload = reinterpret_cast<TessalyCanUnloadNow>(dlsym(library, "DllCanUnloadNow"));
    const auto registerServer = reinterpret_cast<int32_t (*)()>(dlsym(library, "DllRegisterServer"));
    const auto unregisterServer = reinterpret_cast<int32_t (*)()>(dlsym(library, "DllUnregisterServer"));
    if (!getFactory || !canUnload || !registerServer || !unregisterServer || registerServer() != 0 || unregisterServer() != 0)
        return 2;
    TessalyPanelFactory* factory = nullptr;
    if (getFactory("No.Such.Class", &factory) == 0 || factory || getFactory(TESSALY_CLASS_ID, &factory) != 0)
        return 3;
    QWidget window;
    QWidget* panel = factory->CreateInstance(&window);
    factory->Release();
    if (canUnload() == 0)
        return 4; // a panel is alive
    QString value;
    QMetaObject::invokeMethod(panel, "AddItemToGrd", Q_ARG(short, 2), Q_ARG(QString, QString()), Q_ARG(bool, false),
                              Q_ARG(bool, false), Q_ARG(QString, QString()), Q_ARG(QString, QStringLiteral("#777")),
                              Q_ARG(int, 1), Q_ARG(int, 1));
    QMetaObject::invokeMethod(panel, "GetItemFromGrd", Q_RETURN_ARG(QString, value), Q_ARG(short, 2),
                              Q_ARG(int, 1), Q_ARG(int, 0));
    if (value != QLatin1String("#777"))
        return 5;
    delete panel;
    return canUnload() == 0 ? 0 : 6;
}
