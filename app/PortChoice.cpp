// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "PortChoice.h"

#include "ModemManagerRelease.h"

#include "link/EmulatedPorts.h"
#include "link/PortAdvice.h"
#include "link/PortList.h"
#include "link/PortReport.h"

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QThread>

#include <algorithm>
#include <cstdio>

namespace halvane {

using namespace tessaly::link;

namespace {

const QString ModemManagerName = QStringLiteral("ModemManager");

// ModemManager lets go of a port some time after it agrees to.
constexpr auto ReleaseWait = std::chrono::seconds(10);

// The ports ModemManager holds by its own account, for those /proc does not
// show.
void AddModemManagerHolds(std::vector<SerialPortEntry>& ports)
{
    for (const ModemManagerPort& held : ModemManagerPorts())
        for (SerialPortEntry& port : ports)
            if (port.device == held.device && !port.heldBy(ModemManagerName))
                port.holders.push_back({held.pid, ModemManagerName});
}

// ModemManager's name of the port's device: its own when it gives one,
// otherwise the USB device's sysfs path, which is what it uses on Linux.
QString ModemManagerUid(const SerialPortEntry& port)
{
    for (const ModemManagerPort& held : ModemManagerPorts())
        if (held.device == port.device && !held.uid.isEmpty())
            return held.uid;
    return port.usb ? port.usb->device : QString();
}

bool StillHeldByModemManager(const QString& device)
{
    for (const PortHolder& holder : HoldersOf(SystemRoot(), device))
        if (holder.program == ModemManagerName)
            return true;
    const std::vector<ModemManagerPort> held = ModemManagerPorts();
    return std::any_of(held.begin(), held.end(), [&](const ModemManagerPort& port) { return port.device == device; });
}

// The ports that may be probed, probed at once; the others as they are.
std::vector<ListedPort> Probed(const std::vector<SerialPortEntry>& ports, std::chrono::milliseconds within)
{
    std::vector<ListedPort> listed;
    std::vector<QString> nodes;
    for (const SerialPortEntry& port : ports) {
        listed.push_back({port, std::nullopt});
        if (WhyNotProbed(port).isEmpty())
            nodes.push_back(port.node);
    }
    std::vector<ProbeResult> results = ProbePorts(nodes, within);
    auto result = results.begin();
    for (ListedPort& entry : listed)
        if (WhyNotProbed(entry.port).isEmpty())
            entry.probe = std::move(*result++);
    return listed;
}

// Asks ModemManager to let go of `port`, waits until it has, and says so.
// False, with `failure` saying what stands in the way, when it does not.
bool FreeFromModemManager(const SerialPortEntry& port, QString& failure)
{
    const QString clear = QStringLiteral(" To keep ModemManager away from the handset's port for good: ") + UdevRuleAdvice();
    const QString uid = ModemManagerUid(port);
    if (uid.isEmpty()) {
        failure = QStringLiteral("ModemManager holds %1, which is not a USB port it could be asked to let go of.")
                      .arg(port.device)
            + clear;
        return false;
    }
    const ModemManagerAnswer answer = InhibitDevice(uid);
    switch (answer.kind) {
    case ModemManagerAnswer::Absent: return true; // whoever holds the port, it is not ModemManager on this bus
    case ModemManagerAnswer::Refused:
        failure = QStringLiteral("ModemManager holds %1 and refused to let go of it (%2).").arg(port.device, answer.detail)
            + clear;
        return false;
    case ModemManagerAnswer::Unknown:
        failure = QStringLiteral("ModemManager holds %1 but does not know its device %2 (%3).")
                      .arg(port.device, uid, answer.detail)
            + clear;
        return false;
    case ModemManagerAnswer::Released: break;
    }
    const QDeadlineTimer deadline(ReleaseWait);
    while (true) {
        if (!StillHeldByModemManager(port.device)) {
            std::fprintf(stderr, "halvane: ModemManager let go of %s for as long as halvane runs.\n",
                         qPrintable(port.device));
            return true;
        }
        if (deadline.hasExpired())
            break;
        QThread::msleep(100);
    }
    failure = QStringLiteral("ModemManager agreed to let go of %1 but still holds it after %2 s.")
                  .arg(port.device)
                  .arg(std::chrono::seconds(ReleaseWait).count())
        + clear;
    return false;
}

const char* const NoPort = "There is no serial port. Plug the handset in and switch it to its diagnostic mode.";

// How to get permission for the first listed port the user may not open;
// empty when there is none.
QString FirstNotPermittedAdvice(const std::vector<ListedPort>& listed)
{
    for (const ListedPort& entry : listed)
        if (!entry.port.permitted && entry.port.nodeExists)
            return NotPermittedAdvice(entry.port.device, entry.port.group);
    return {};
}

// The ports where a handset answers, after ModemManager has let go of the
// known handsets' ports it held. None, with `failure` telling every port
// tried and why it was passed over, when no handset answers.
std::vector<ListedPort> AnsweringPorts(const Options& options, QString& failure)
{
    std::vector<SerialPortEntry> ports = Ports();
    QStringList standing; // what ModemManager would not give up
    bool asked = false;
    for (const SerialPortEntry& port : ports) {
        if (!port.usb || !port.usb->diagnostic || !port.heldBy(ModemManagerName))
            continue;
        asked = true;
        QString refused;
        if (!FreeFromModemManager(port, refused))
            standing << refused;
    }
    if (asked)
        ports = Ports();
    const std::vector<ListedPort> listed = Probed(ports, options.probeTime);
    std::vector<ListedPort> answered;
    QStringList tried;
    bool heldByModemManager = false; // a port it holds that halvane did not know for a handset's
    for (const ListedPort& entry : listed) {
        heldByModemManager = heldByModemManager || entry.port.heldBy(ModemManagerName);
        if (entry.probe && entry.probe->handset) {
            answered.push_back(entry);
            continue;
        }
        tried << QStringLiteral("  %1: %2")
                     .arg(entry.port.device, entry.probe ? entry.probe->failure : WhyNotProbed(entry.port));
    }
    if (!answered.empty())
        return answered;
    if (listed.empty()) {
        failure = QLatin1String(NoPort);
        return {};
    }
    failure = QStringLiteral("No handset answered within %1 ms. Tried:\n%2")
                  .arg(options.probeTime.count())
                  .arg(tried.join(QLatin1Char('\n')));
    for (const QString& text : standing)
        failure += QLatin1Char('\n') + text;
    if (heldByModemManager && standing.isEmpty())
        failure += QStringLiteral("\nTo have ModemManager let go of a port it holds, name the port: --port DEVICE.");
    if (const QString advice = FirstNotPermittedAdvice(listed); !advice.isEmpty())
        failure += QLatin1Char('\n') + advice;
    return {};
}

// The one port where a handset answers.
std::optional<QString> AutoPort(const Options& options, QString& failure)
{
    const std::vector<ListedPort> answered = AnsweringPorts(options, failure);
    if (answered.size() == 1)
        return answered.front().port.node;
    if (answered.size() > 1) {
        QStringList lines;
        for (const ListedPort& entry : answered)
            lines << QStringLiteral("  ") + PortLine(entry);
        failure = QStringLiteral("A handset answers on more than one port:\n%1\nChoose one with --port DEVICE, or "
                                 "work with all of them with --port all.")
                      .arg(lines.join(QLatin1Char('\n')));
    }
    return {};
}

// The node to open for the device the user named, after ModemManager has let
// go of it; nothing, with `failure` saying why, when it would not.
std::optional<QString> NamedPort(const QString& device, QString& failure)
{
    // ModemManager is asked only about a serial port of the machine's, not
    // about a pseudo-terminal or a path it cannot hold.
    std::vector<SerialPortEntry> ports = ListPorts(SystemRoot(), KnownDiagInterfaces());
    const auto named = std::find_if(ports.begin(), ports.end(), [&](const SerialPortEntry& port) {
        return port.device == device || port.node == device;
    });
    if (named == ports.end())
        return device;
    AddModemManagerHolds(ports);
    if (named->heldBy(ModemManagerName) && !FreeFromModemManager(*named, failure))
        return {};
    return named->node;
}

} // namespace

std::vector<SerialPortEntry> Ports()
{
    std::vector<SerialPortEntry> ports = ListPorts(SystemRoot(), KnownDiagInterfaces());
    AddModemManagerHolds(ports);
    std::vector<SerialPortEntry> emulated = EmulatedPorts(EmulatorAnnouncementFolder());
    ports.insert(ports.end(), std::make_move_iterator(emulated.begin()), std::make_move_iterator(emulated.end()));
    return ports;
}

int ListPortsCommand(const Options& options)
{
    const std::vector<SerialPortEntry> ports = Ports();
    std::vector<ListedPort> listed;
    if (options.probe) {
        listed = Probed(ports, options.probeTime);
    } else {
        for (const SerialPortEntry& port : ports)
            listed.push_back({port, std::nullopt});
    }
    if (options.json) {
        std::printf("%s", QJsonDocument(PortsJson(listed)).toJson(QJsonDocument::Indented).constData());
        return 0;
    }
    for (const ListedPort& entry : listed)
        std::printf("%s\n", qPrintable(PortLine(entry)));
    if (listed.empty())
        std::printf("%s\n", NoPort);
    if (const QString advice = FirstNotPermittedAdvice(listed); !advice.isEmpty())
        std::printf("\n%s\n", qPrintable(advice));
    return 0;
}

std::optional<QString> ChoosePort(const Options& options, QString& failure)
{
    if (options.port == QLatin1String("auto"))
        return AutoPort(options, failure);
    return NamedPort(options.port, failure);
}

std::optional<QStringList> ChooseBenchPorts(const Options& options, QString& failure)
{
    QStringList devices;
    if (options.port == QLatin1String("all")) {
        for (const ListedPort& entry : AnsweringPorts(options, failure))
            devices << entry.port.node;
        if (devices.isEmpty())
            return {};
        return devices;
    }
    // ModemManager lets go of each it holds; one it keeps is told, and the
    // handset's run then fails to open its port.
    for (const QString& named : options.port.split(QLatin1Char(','))) {
        QString refused;
        const std::optional<QString> node = NamedPort(named.trimmed(), refused);
        if (!node)
            std::fprintf(stderr, "halvane: %s\n", qPrintable(refused));
        devices << node.value_or(named.trimmed());
    }
    return devices;
}

} // namespace halvane
