// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The framing of the handset's diagnostic serial link. A frame is its payload,
// then a CRC-16 of the payload (reflected polynomial 0x8408, initial value
// 0xFFFF, final XOR 0xFFFF) low byte first, with the bytes 0x7E and 0x7D
// escaped as 0x7D and the byte XOR 0x20, closed by 0x7E. A 0x7E before a
// frame is accepted.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <vector>

namespace tessaly::link {

inline constexpr char FrameEnd = 0x7E;
inline constexpr char Escape = 0x7D;

uint16_t Crc16(QByteArrayView data);

// The bytes that carry `payload` on the line.
QByteArray EncodeFrame(QByteArrayView payload);

// Takes the bytes of the line as they come, in any chunking, and gives back
// the payloads of the frames they complete. A frame whose CRC does not match,
// that breaks off in an escape or that grows beyond MaxFrame bytes without a
// 0x7E is dropped; decoding goes on at the next 0x7E. A line of noise holds
// no more than MaxFrame bytes.
class FrameDecoder {
public:
    // Far more than the longest packet of the protocol.
    static constexpr qsizetype MaxFrame = 4096;


    std::vector<QByteArray> feed(QByteArrayView bytes);

    // Frames dropped so far.
    int rejected() const { return m_rejected; }

private:
    void close(std::vector<QByteArray>& frames);

    QByteArray m_frame;
    bool m_escaped = false;
    bool m_overlong = false; // the bytes up to the next 0x7E are dropped
    int m_rejected = 0;
};

} // namespace tessaly::link
