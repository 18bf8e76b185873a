// A stand-in for ModemManager on the test's own bus, given by its address
// (--bus), never the machine's: it owns ModemManager's name and answers InhibitDevice. It "holds" a port as a
// link of a fake /proc, or (--modem-port NAME) as a modem object that lists
// the port and names its device, as ModemManager shows it to users who
// cannot see its descriptors; it lets go when the device it knows is
// inhibited. With --refuse it says no as its policy would without an
// administrator.
//   mock-modemmanager --bus ADDRESS --uid UID [--holding LINK] [--modem-port NAME] [--refuse]
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusArgument>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QFile>
#include <QTimer>

#include <cstdio>

// A modem's port: its name and kind, a(su) on the bus.
struct ModemPort {
    QString name;
    uint kind = 0;
};
Q_DECLARE_METATYPE(ModemPort)
using ModemPorts = QList<ModemPort>;

QDBusArgument& operator<<(QDBusArgument& argument, const ModemPort& port)
{
    argument.beginStructure();
    argument << port.name << port.kind;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ModemPort& port)
{
    argument.beginStructure();
    argument >> port.name >> port.kind;
    argument.endStructure();
    return argument;
}

class Modem : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ModemManager1.Modem")
    Q_PROPERTY(QString Device READ device)
    Q_PROPERTY(ModemPorts Ports READ ports)

public:
    Modem(QString device, QString port)
        : m_device(std::move(device))
        , m_port(std::move(port))
    {
    }

    QString device() const { return m_device; }
    ModemPorts ports() const { return {{m_port, 3}}; }

private:
    QString m_device;
    QString m_port;
};

class Manager : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ModemManager1")

public:
    Manager(QDBusConnection bus, QString uid, QString holding, bool refuse)
        : m_bus(std::move(bus))
        , m_uid(std::move(uid))
        , m_holding(std::move(holding))
        , m_refuse(refuse)
    {
    }

public Q_SLOTS:
    void InhibitDevice(const QString& uid, bool inhibit)
    {
        if (m_refuse) {
            sendErrorReply(QStringLiteral("org.freedesktop.ModemManager1.Error.Core.Unauthorized"),
                           QStringLiteral("Not authorized to inhibit devices"));
            return;
        }
        if (uid != m_uid || !inhibit) {
            sendErrorReply(QStringLiteral("org.freedesktop.ModemManager1.Error.Core.NotFound"),
                           QStringLiteral("No device found with uid '%1'").arg(uid));
            return;
        }
        // The port goes some time after the answer, as ModemManager's does.
        QTimer::singleShot(300, this, [this] {
            if (!m_holding.isEmpty())
                QFile::remove(m_holding);
            m_bus.unregisterObject(QStringLiteral("/org/freedesktop/ModemManager1/Modem/0"));
        });
    }

private:
    QDBusConnection m_bus;
    QString m_uid;
    QString m_holding;
    bool m_refuse;
};

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser options;
    const QCommandLineOption address("bus", "The bus's address.", "address");
    const QCommandLineOption uid("uid", "The device known.", "uid");
    const QCommandLineOption holding("holding", "The link that holds the port.", "link");
    const QCommandLineOption modemPort("modem-port", "The port a modem object lists.", "name");
    const QCommandLineOption refuse("refuse", "Refuse every inhibition.");
    options.addOptions({address, uid, holding, modemPort, refuse});
    options.process(app);
    qDBusRegisterMetaType<ModemPort>();
    qDBusRegisterMetaType<ModemPorts>();

    QDBusConnection bus = QDBusConnection::connectToBus(options.value(address), QStringLiteral("test"));
    Manager manager(bus, options.value(uid), options.value(holding), options.isSet(refuse));
    if (!options.isSet(address) || !bus.registerObject(QStringLiteral("/org/freedesktop/ModemManager1"), &manager, QDBusConnection::ExportAllSlots)
        || !bus.registerService(QStringLiteral("org.freedesktop.ModemManager1"))) {
        std::fprintf(stderr, "mock-modemmanager: %s\n", qPrintable(bus.lastError().message()));
        return 1;
    }
    Modem modem(options.value(uid), options.value(modemPort));
    if (options.isSet(modemPort))
        bus.registerObject("/org/freedesktop/ModemManager1/Modem/0", &modem, QDBusConnection::ExportAllProperties);
    std::printf("ready\n");
    std::fflush(stdout);
    return app.exec();
}

#include "MockModemManager.moc"
