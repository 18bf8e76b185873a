// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/FrameCodec.h"

#include <array>

namespace tessaly::link {

namespace {

constexpr std::array<uint16_t, 256> CrcTable = [] {
    std::array<uint16_t, 256> table{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        uint16_t crc = uint16_t(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) ? uint16_t((crc >> 1) ^ 0x8408) : uint16_t(crc >> 1);
        table[byte] = crc;
    }
    return table;
}();

bool NeedsEscape(char byte)
{
    return byte == FrameEnd || byte == Escape;
}

} // namespace

uint16_t Crc16(QByteArrayView data)
{
    uint16_t crc = 0xFFFF;
    for (char byte : data)
        crc = uint16_t((crc >> 8) ^ CrcTable[(crc ^ uint8_t(byte)) & 0xFF]);
    return uint16_t(crc ^ 0xFFFF);
}

QByteArray EncodeFrame(QByteArrayView payload)
{
    const uint16_t crc = Crc16(payload);
    const char check[] = {char(crc & 0xFF), char(crc >> 8)};
    QByteArray frame;
    frame.reserve(payload.size() + payload.size() / 8 + 5);
    for (QByteArrayView part : {payload, QByteArrayView(check, 2)}) {
        for (char byte : part) {
            if (NeedsEscape(byte)) {
                frame.append(Escape);
                frame.append(char(byte ^ 0x20));
            } else {
                frame.append(byte);
            }
        }
    }
    frame.append(FrameEnd);
    return frame;
}

std::vector<QByteArray> FrameDecoder::feed(QByteArrayView bytes)
{
    std::vector<QByteArray> frames;
    for (char byte : bytes) {
        if (byte == FrameEnd) {
            close(frames);
        } else if (m_overlong) {
            continue;
        } else if (m_frame.size() >= MaxFrame) {
            m_overlong = true;
            m_escaped = false;
            m_frame = QByteArray();
        } else if (m_escaped) {
            m_frame.append(char(byte ^ 0x20));
            m_escaped = false;
        } else if (byte == Escape) {
            m_escaped = true;
        } else {
            m_frame.append(byte);
        }
    }
    return frames;
}

// A 0x7E ends what came before it: a frame, or nothing at all.
void FrameDecoder::close(std::vector<QByteArray>& frames)
{
    const bool brokenOff = m_escaped || m_overlong;
    m_escaped = false;
    m_overlong = false;
    if (m_frame.isEmpty() && !brokenOff)
        return;
    const qsizetype size = m_frame.size() - 2;
    if (brokenOff || size < 0
        || Crc16(QByteArrayView(m_frame).first(size)) != uint16_t(uint8_t(m_frame[size]) | uint8_t(m_frame[size + 1]) << 8)) {
        ++m_rejected;
    } else {
        m_frame.truncate(size);
        frames.push_back(std::move(m_frame));
    }
    m_frame = QByteArray();
}

} // namespace tessaly::link
