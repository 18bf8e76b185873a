// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "ModemManagerRelease.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QXmlStreamReader>

namespace halvane {

namespace {

// ModemManager's names, as its D-Bus API documents them: the manager object
// with InhibitDevice(s uid, b inhibit), and each modem under .../Modem/<n>
// with its properties Device (s) and Ports (a(su): name and kind).
const QString Service = QStringLiteral("org.freedesktop.ModemManager1");
const QString ManagerPath = QStringLiteral("/org/freedesktop/ModemManager1");
const QString ModemsPath = QStringLiteral("/org/freedesktop/ModemManager1/Modem");
const QString ModemInterface = QStringLiteral("org.freedesktop.ModemManager1.Modem");

// The system bus when ModemManager is on it.
std::optional<QDBusConnection> BusWithModemManager()
{
    // Qt keeps the connection until the program ends, and with it any
    // inhibition asked on it.
    QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.isConnected() || !bus.interface() || !bus.interface()->isServiceRegistered(Service).value())
        return {};
    return bus;
}

QDBusMessage Call(QDBusConnection& bus, const QString& path, const QString& interface, const QString& method,
                  const QVariantList& arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(Service, path, interface, method);
    call.setArguments(arguments);
    return bus.call(call, QDBus::Block, 10000);
}

// The child nodes of `path`: the modems' numbers.
QStringList Children(QDBusConnection& bus, const QString& path)
{
    const QDBusMessage reply
        = Call(bus, path, QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"), {});
    QStringList children;
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return children;
    QXmlStreamReader xml(reply.arguments().at(0).toString());
    int depth = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == QLatin1String("node") && depth++ == 1)
            children << xml.attributes().value(QLatin1String("name")).toString();
        else if (xml.isEndElement() && xml.name() == QLatin1String("node"))
            --depth;
    }
    return children;
}

QVariant Property(QDBusConnection& bus, const QString& path, const QString& name)
{
    const QDBusMessage reply = Call(bus, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                                    {ModemInterface, name});
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    return reply.arguments().at(0).value<QDBusVariant>().variant();
}

// A refusal of ModemManager's own authorisation or of the bus's policy.
bool IsRefusal(const QString& error)
{
    return error.endsWith(QLatin1String(".Unauthorized")) || error == QLatin1String("org.freedesktop.DBus.Error.AccessDenied");
}

} // namespace

std::vector<ModemManagerPort> ModemManagerPorts()
{
    std::vector<ModemManagerPort> ports;
    std::optional<QDBusConnection> bus = BusWithModemManager();
    if (!bus)
        return ports;
    const qint64 pid = bus->interface()->servicePid(Service).value();
    for (const QString& modem : Children(*bus, ModemsPath)) {
        const QString path = ModemsPath + QLatin1Char('/') + modem;
        const QString uid = Property(*bus, path, QStringLiteral("Device")).toString();
        const QVariant listed = Property(*bus, path, QStringLiteral("Ports"));
        if (!listed.canConvert<QDBusArgument>())
            continue;
        const QDBusArgument array = listed.value<QDBusArgument>();
        array.beginArray();
        while (!array.atEnd()) {
            QString name;
            uint kind = 0;
            array.beginStructure();
            array >> name >> kind;
            array.endStructure();
            ports.push_back({QStringLiteral("/dev/") + name, uid, pid});
        }
        array.endArray();
    }
    return ports;
}

ModemManagerAnswer InhibitDevice(const QString& uid)
{
    std::optional<QDBusConnection> bus = BusWithModemManager();
    if (!bus)
        return {ModemManagerAnswer::Absent, {}};
    const QDBusMessage reply = Call(*bus, ManagerPath, Service, QStringLiteral("InhibitDevice"), {uid, true});
    if (reply.type() == QDBusMessage::ReplyMessage)
        return {ModemManagerAnswer::Released, {}};
    return {IsRefusal(reply.errorName()) ? ModemManagerAnswer::Refused : ModemManagerAnswer::Unknown,
            reply.errorMessage()};
}

} // namespace halvane
