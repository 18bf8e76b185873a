// A stand-in for ModemManager on the bus DBUS_SYSTEM_BUS_ADDRESS names: it
// owns ModemManager's name and answers InhibitDevice. It "holds" a port as a
// link of a fake /proc, and lets it go when the device it knows is
// inhibited; with --refuse it says no as its policy would without an
// administrator.
//   mock-modemmanager --uid UID --holding LINK [--refuse]
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QFile>
#include <QTimer>

#include <cstdio>

class Manager : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ModemManager1")

public:
    Manager(QString uid, QString holding, bool refuse)
        : m_uid(std::move(uid))
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
        QTimer::singleShot(300, this, [this] { QFile::remove(m_holding); });
    }

private:
    QString m_uid;
    QString m_holding;
    bool m_refuse;
};

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser options;
    const QCommandLineOption uid(QStringLiteral("uid"), QStringLiteral("The device known."), QStringLiteral("uid"));
    const QCommandLineOption holding(QStringLiteral("holding"), QStringLiteral("The link that holds the port."),
                                     QStringLiteral("link"));
    const QCommandLineOption refuse(QStringLiteral("refuse"), QStringLiteral("Refuse every inhibition."));
    options.addOptions({uid, holding, refuse});
    options.process(app);

    Manager manager(options.value(uid), options.value(holding), options.isSet(refuse));
    QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.registerObject(QStringLiteral("/org/freedesktop/ModemManager1"), &manager, QDBusConnection::ExportAllSlots)
        || !bus.registerService(QStringLiteral("org.freedesktop.ModemManager1"))) {
        std::fprintf(stderr, "mock-modemmanager: %s\n", qPrintable(bus.lastError().message()));
        return 1;
    }
    std::printf("ready\n");
    std::fflush(stdout);
    return app.exec();
}

#include "MockModemManager.moc"
