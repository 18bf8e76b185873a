// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// A stand-in for ModemManager on the test's own bus, given by its address
// (--bus), never the machine's: it owns ModemManager's name and answers InhibitDevice. It "holds" a port as a
// link of a fake /proc, or (--modem-port NAME) as a modem object that lists
// the port and names its device, as ModemManager shows it to users who
// cannot see its descriptors; it lets go when the device it knows is
// inhibited, and takes it back, saying "taken back", when the program that
// asked leaves the bus. With --refuse it says no as its policy would without an
// administrator; with --deny the bus's policy says no before the call
// reaches it.
//   mock-modemmanager --bus ADDRESS --uid UID [--holding LINK] [--modem-port NAME] [--refuse | --deny]
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusArgument>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusServiceWatcher>
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
    Manager(QDBusConnection bus, QString uid, QString holding, Modem* modem, bool refuse, bool deny)
        : m_bus(std::move(bus))
        , m_uid(std::move(uid))
        , m_holding(std::move(holding))
        , m_heldDevice(QFile::symLinkTarget(m_holding))
        , m_modem(modem)
        , m_refuse(refuse)
        , m_deny(deny)
    {
        m_release.setSingleShot(true);
        m_release.setInterval(300);
        connect(&m_release, &QTimer::timeout, this, [this] {
            if (!m_holding.isEmpty())
                QFile::remove(m_holding);
            m_bus.unregisterObject(ModemPath);
        });
    }

public Q_SLOTS:
    void InhibitDevice(const QString& uid, bool inhibit)
    {
        if (m_deny) {
            sendErrorReply(QStringLiteral("org.freedesktop.DBus.Error.AccessDenied"),
                           QStringLiteral("Rejected send message, 1 matched rules; "
                                          "member=\"InhibitDevice\" interface=\"org.freedesktop.ModemManager1\""));
            return;
        }
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
        // The port goes some time after the answer, as ModemManager's does,
        // for as long as the caller stays on the bus.
        m_release.start();
        auto* watcher = new QDBusServiceWatcher(message().service(), m_bus,
                                                QDBusServiceWatcher::WatchForUnregistration, this);
        connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this, watcher] {
            watcher->deleteLater();
            takeBack();
        });
    }

private:
    static inline const QString ModemPath = QStringLiteral("/org/freedesktop/ModemManager1/Modem/0");

    void takeBack()
    {
        m_release.stop();
        if (!m_holding.isEmpty() && !QFile::exists(m_holding))
            QFile::link(m_heldDevice, m_holding);
        if (m_modem && !m_bus.objectRegisteredAt(ModemPath))
            m_bus.registerObject(ModemPath, m_modem, QDBusConnection::ExportAllProperties);
        std::printf("taken back\n");
        std::fflush(stdout);
    }

    QDBusConnection m_bus;
    QString m_uid;
    QString m_holding;
    QString m_heldDevice; // where the holding link leads
    Modem* m_modem;       // the modem object listing the port, if any
    bool m_refuse;
    bool m_deny;
    QTimer m_release;
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
    const QCommandLineOption deny("deny", "Deny every inhibition by the bus's policy.");
    options.addOptions({address, uid, holding, modemPort, refuse, deny});
    options.process(app);
    qDBusRegisterMetaType<ModemPort>();
    qDBusRegisterMetaType<ModemPorts>();

    QDBusConnection bus = QDBusConnection::connectToBus(options.value(address), QStringLiteral("test"));
    Modem modem(options.value(uid), options.value(modemPort));
    Manager manager(bus, options.value(uid), options.value(holding), options.isSet(modemPort) ? &modem : nullptr,
                    options.isSet(refuse), options.isSet(deny));
    if (!options.isSet(address) || !bus.registerObject(QStringLiteral("/org/freedesktop/ModemManager1"), &manager, QDBusConnection::ExportAllSlots)
        || !bus.registerService(QStringLiteral("org.freedesktop.ModemManager1"))) {
        std::fprintf(stderr, "mock-modemmanager: %s\n", qPrintable(bus.lastError().message()));
        return 1;
    }
    if (options.isSet(modemPort))
        bus.registerObject("/org/freedesktop/ModemManager1/Modem/0", &modem, QDBusConnection::ExportAllProperties);
    std::printf("ready\n");
    std::fflush(stdout);
    return app.exec();
}

#include "MockModemManager.moc"
