// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The handset's diagnostic serial port: raw 115200 baud 8N1, opened for this
// program alone. A request goes out as one frame; its reply is the next frame
// that answers it: logs and event reports the handset sends on its own, and
// late replies to earlier requests, are passed over.
//
// While a reply is awaited the thread runs a local event loop that holds back
// the user's input: the windows keep painting, and nothing the user does acts
// before the command is over.
#pragma once

#include "link/FrameCodec.h"

#include <QSerialPort>

#include <chrono>
#include <vector>

namespace tessaly::link {

// The failure of a handset that gave no reply within `replyTime`, asked
// twice.
[[noreturn]] void FailSilent(const QString& port, std::chrono::milliseconds replyTime);

class SerialLink {
public:
    // Opens `portName`, a device such as /dev/ttyUSB0. Throws TessalyError
    // saying what is wrong and what to do: no such port, the port in use, no
    // permission.
    explicit SerialLink(const QString& portName, std::chrono::milliseconds replyTime = std::chrono::seconds(3));

    // The port as it was given.
    const QString& portName() const { return m_name; }

    // Sends `request` and gives back the payload of its reply; `indexed` says
    // that the reply must carry the request's index in its first data byte.
    // What was pending on the line before is dropped. A handset that stays
    // silent for the reply time gets the request once more; a reply damaged
    // on the line has it sent again at once. Then the link fails with
    // TessalyError.
    QByteArray transact(const QByteArray& request, bool indexed = false);

    // For a caller that keeps several requests on the line (link/Pipeline.h):
    // sends `request` without waiting for its reply.
    void send(const QByteArray& request);
    // The frames that came within `within`, none when the handset stayed
    // silent; `damaged` counts the frames dropped for a bad CRC meanwhile.
    // It waits on the port without an event loop, serving the application's
    // events but the user's every 20 ms, so that windows keep painting.
    std::vector<QByteArray> receive(std::chrono::milliseconds within, int& damaged);

private:
    enum class Wait { Answered, Silent, Damaged };
    Wait awaitReply(const QByteArray& request, bool indexed, QByteArray& reply);
    bool awaitBytes(std::chrono::milliseconds within);
    void dropPending();
    void failIfLost() const;

    QString m_name;
    QSerialPort m_port;
    std::chrono::milliseconds m_replyTime;
    FrameDecoder m_decoder;
};

} // namespace tessaly::link
