// The handset's diagnostic serial port: raw 115200 baud 8N1, opened for this
// program alone. A request goes out as one frame; its reply is the next frame
// that is not a log or an event report the handset sends on its own.
#pragma once

#include "link/FrameCodec.h"

#include <QSerialPort>
#include <QStringList>

#include <chrono>
#include <deque>

namespace tessaly::link {

class SerialLink {
public:
    // Opens `portName`, a device such as /dev/ttyUSB0. Throws TessalyError
    // saying what is wrong and what to do: no such port, the port in use, no
    // permission.
    explicit SerialLink(const QString& portName, std::chrono::milliseconds replyTime = std::chrono::seconds(3));

    // Sends `request` and gives back the reply's payload. A handset that stays
    // silent for the reply time gets the request once more; then the link
    // fails with TessalyError.
    QByteArray transact(const QByteArray& request);

    // The serial ports of this machine that may hold a handset.
    static QStringList CandidatePorts();

private:
    QByteArray awaitReply();

    QSerialPort m_port;
    std::chrono::milliseconds m_replyTime;
    FrameDecoder m_decoder;
    std::deque<QByteArray> m_frames;
};

} // namespace tessaly::link
