#include "ModemManagerRelease.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace halvane {

namespace {

// ModemManager's manager object and interface, as its D-Bus API documents
// them (org.freedesktop.ModemManager1, method InhibitDevice(s uid, b inhibit)).
const QString Service = QStringLiteral("org.freedesktop.ModemManager1");
const QString ManagerPath = QStringLiteral("/org/freedesktop/ModemManager1");

// A refusal of ModemManager's own authorisation or of the bus's policy.
bool IsRefusal(const QString& error)
{
    return error.endsWith(QLatin1String(".Unauthorized")) || error == QLatin1String("org.freedesktop.DBus.Error.AccessDenied");
}

} // namespace

ModemManagerAnswer InhibitDevice(const QString& uid)
{
    // Qt keeps the system bus connection until the program ends, and with it
    // the inhibition.
    QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.isConnected() || !bus.interface() || !bus.interface()->isServiceRegistered(Service).value())
        return {ModemManagerAnswer::Absent, {}};
    QDBusMessage call = QDBusMessage::createMethodCall(Service, ManagerPath, Service, QStringLiteral("InhibitDevice"));
    call << uid << true;
    const QDBusMessage reply = bus.call(call, QDBus::Block, 10000);
    if (reply.type() == QDBusMessage::ReplyMessage)
        return {ModemManagerAnswer::Released, {}};
    return {IsRefusal(reply.errorName()) ? ModemManagerAnswer::Refused : ModemManagerAnswer::Unknown,
            reply.errorMessage()};
}

} // namespace halvane
