// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/SerialLink.h"

#include "link/DiagPackets.h"
#include "link/PortAdvice.h"
#include "link/PortList.h"

#include <tessaly/TessalyError.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QEventLoop>
#include <QTimer>

#include <sys/stat.h>

namespace tessaly::link {

namespace {

// Resends for replies damaged on the line before the link gives up.
constexpr int MaxResends = 3;

[[noreturn]] void FailToOpen(const QSerialPort& port, const QString& name)
{
    switch (port.error()) {
    case QSerialPort::DeviceNotFoundError:
        throw TessalyError(errPortMissing, QStringLiteral("There is no port %1. Plug the handset in, switch it to its "
                                                          "diagnostic mode, and see `halvane --list-ports`.")
                                               .arg(name));
    case QSerialPort::PermissionError: {
        // Qt says "permission" both for a port the user may not open and for
        // one another program holds: the node's mode and /proc tell which.
        struct stat status {};
        if (!MayOpen(name) && ::stat(QFile::encodeName(name).constData(), &status) == 0)
            throw TessalyError(errPortUnavailable, NotPermittedAdvice(name, GroupName(status.st_gid)));
        const std::vector<PortHolder> holders = HoldersOf(QStringLiteral("/"), name);
        QStringList names;
        bool modemManager = false;
        for (const PortHolder& holder : holders) {
            names << QStringLiteral("%1 (pid %2)").arg(holder.program).arg(holder.pid);
            modemManager = modemManager || holder.program == QLatin1String("ModemManager");
        }
        throw TessalyError(errPortUnavailable,
                           QStringLiteral("The port %1 is in use%2. ").arg(name, names.isEmpty() ? QString() : QStringLiteral(" by ") + names.join(QStringLiteral(", ")))
                               + (modemManager ? QStringLiteral("To keep ModemManager away from the handset's port: ") + UdevRuleAdvice()
                                               : QStringLiteral("Close the program that holds it and try again.")));
    }
    default:
        throw TessalyError(errPortUnavailable,
                           QStringLiteral("The port %1 cannot be opened: %2.").arg(name, port.errorString()));
    }
}

} // namespace

SerialLink::SerialLink(const QString& portName, std::chrono::milliseconds replyTime)
    : m_name(portName)
    , m_replyTime(replyTime)
{
    m_port.setPortName(portName);
    if (!m_port.open(QIODevice::ReadWrite))
        FailToOpen(m_port, portName);
    m_port.setBaudRate(QSerialPort::Baud115200);
    m_port.setDataBits(QSerialPort::Data8);
    m_port.setParity(QSerialPort::NoParity);
    m_port.setStopBits(QSerialPort::OneStop);
    m_port.setFlowControl(QSerialPort::NoFlowControl);
}

QByteArray SerialLink::transact(const QByteArray& request, bool indexed)
{
    int silences = 0;
    int resends = 0;
    while (true) {
        dropPending();
        send(request);
        QByteArray reply;
        switch (awaitReply(request, indexed, reply)) {
        case Wait::Answered: return reply;
        case Wait::Damaged:
            if (++resends <= MaxResends)
                continue;
            throw TessalyError(errHandsetSilent, QStringLiteral("The replies of the handset on %1 arrive damaged, %2 "
                                                                "times in a row. Check the cable and its plugs.")
                                                     .arg(m_name)
                                                     .arg(resends));
        case Wait::Silent:
            if (++silences < 2)
                continue;
            FailSilent(m_name, m_replyTime);
        }
    }
}

void SerialLink::send(const QByteArray& request)
{
    m_port.write(EncodeFrame(request));
    m_port.flush();
}

// A scan waits for tens of thousands of replies, each far quicker than a turn
// of an event loop: it waits on the port itself, in slices, and between them
// serves the application's events but the user's, so that windows keep
// painting.
std::vector<QByteArray> SerialLink::receive(std::chrono::milliseconds within, int& damaged)
{
    constexpr std::chrono::milliseconds Slice(20);
    const QDeadlineTimer deadline(within);
    const auto slice = [&] { return int(std::min<qint64>(Slice.count(), std::max<qint64>(0, deadline.remainingTime()))); };
    while (m_port.bytesAvailable() == 0 && !m_port.waitForReadyRead(slice())) {
        failIfLost();
        m_port.clearError();
        if (deadline.hasExpired())
            break;
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    const int before = m_decoder.rejected();
    std::vector<QByteArray> frames;
    if (m_port.bytesAvailable() > 0)
        frames = m_decoder.feed(m_port.readAll());
    damaged = m_decoder.rejected() - before;
    return frames;
}

// Whatever came in since the last reply, and any frame begun, is stale.
void SerialLink::dropPending()
{
    m_port.clear(QSerialPort::Input);
    m_port.readAll();
    m_decoder = FrameDecoder();
}

// The first frame that answers the request, within the reply time.
SerialLink::Wait SerialLink::awaitReply(const QByteArray& request, bool indexed, QByteArray& reply)
{
    const QDeadlineTimer deadline(m_replyTime);
    while (!deadline.hasExpired()) {
        if (!awaitBytes(std::chrono::milliseconds(std::max<qint64>(1, deadline.remainingTime()))))
            break;
        for (QByteArray& frame : m_decoder.feed(m_port.readAll())) {
            if (Answers(request, frame, indexed)) {
                reply = std::move(frame);
                return Wait::Answered;
            }
        }
        if (m_decoder.rejected() > 0)
            return Wait::Damaged;
    }
    return Wait::Silent;
}

// Whether bytes came within `within`; the port lost on the way is told.
bool SerialLink::awaitBytes(std::chrono::milliseconds within)
{
    if (m_port.bytesAvailable() == 0) {
        QEventLoop loop;
        QTimer timer;
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
        QObject::connect(&m_port, &QSerialPort::readyRead, &loop, &QEventLoop::quit);
        QObject::connect(&m_port, &QSerialPort::errorOccurred, &loop, &QEventLoop::quit);
        timer.start(within);
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    failIfLost();
    return m_port.bytesAvailable() > 0;
}

void SerialLink::failIfLost() const
{
    if (m_port.error() == QSerialPort::ResourceError)
        throw TessalyError(errPortUnavailable, QStringLiteral("The port %1 was lost: %2. Plug the handset in again.")
                                                   .arg(m_name, m_port.errorString()));
}

void FailSilent(const QString& port, std::chrono::milliseconds replyTime)
{
    throw TessalyError(errHandsetSilent,
                       QStringLiteral("The handset on %1 does not answer: no reply within %2 ms, asked twice. "
                                      "Check the cable, and that the handset is on and in its diagnostic mode.")
                           .arg(port)
                           .arg(replyTime.count()));
}

} // namespace tessaly::link
