#include "link/SerialLink.h"

#include "link/DiagPackets.h"

#include <tessaly/TessalyError.h>

#include <QDeadlineTimer>
#include <QSerialPortInfo>

namespace tessaly::link {

namespace {

enum : int32_t { errPortMissing = 2010, errPortUnavailable = 2011, errHandsetSilent = 2012 };

[[noreturn]] void FailToOpen(const QSerialPort& port, const QString& name)
{
    switch (port.error()) {
    case QSerialPort::DeviceNotFoundError:
        throw TessalyError(errPortMissing, QStringLiteral("There is no port %1. Plug the handset in, switch it to its "
                                                          "diagnostic mode, and see `halvane --list-ports`.")
                                               .arg(name));
    case QSerialPort::PermissionError:
        throw TessalyError(errPortUnavailable,
                           QStringLiteral("The port %1 is in use or not permitted. ModemManager often holds such ports "
                                          "(`sudo systemctl stop ModemManager`); to be permitted, join the dialout "
                                          "group (`sudo usermod -aG dialout $USER`) and log in again.")
                               .arg(name));
    default:
        throw TessalyError(errPortUnavailable,
                           QStringLiteral("The port %1 cannot be opened: %2.").arg(name, port.errorString()));
    }
}

} // namespace

SerialLink::SerialLink(const QString& portName, std::chrono::milliseconds replyTime)
    : m_replyTime(replyTime)
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

QByteArray SerialLink::transact(const QByteArray& request)
{
    for (int attempt = 0; attempt < 2; ++attempt) {
        m_frames.clear();
        m_port.write(EncodeFrame(request));
        m_port.waitForBytesWritten(int(m_replyTime.count()));
        QByteArray reply = awaitReply();
        if (!reply.isNull())
            return reply;
    }
    throw TessalyError(errHandsetSilent, QStringLiteral("The handset on %1 does not answer. Check the cable, and that "
                                                        "the handset is on and in its diagnostic mode.")
                                             .arg(m_port.portName()));
}

// The next frame that is not unsolicited, or a null array after the reply time.
QByteArray SerialLink::awaitReply()
{
    const QDeadlineTimer deadline(m_replyTime);
    while (true) {
        while (!m_frames.empty()) {
            QByteArray frame = std::move(m_frames.front());
            m_frames.pop_front();
            if (!IsUnsolicited(frame))
                return frame;
        }
        if (deadline.hasExpired() || !m_port.waitForReadyRead(int(std::max<qint64>(1, deadline.remainingTime()))))
            return {};
        for (QByteArray& frame : m_decoder.feed(m_port.readAll()))
            m_frames.push_back(std::move(frame));
    }
}

QStringList SerialLink::CandidatePorts()
{
    QStringList ports;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts())
        ports << info.systemLocation() + (info.description().isEmpty() ? QString() : QStringLiteral("  ") + info.description());
    return ports;
}

} // namespace tessaly::link
