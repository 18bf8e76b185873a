// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Fields packed bit by bit, most significant bit first, as the over-the-air
// provisioning standard (3GPP2 C.S0016) lays out its parameter blocks and the
// roaming list: a field of n bits follows the one before it without regard
// to octet boundaries.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>

namespace tessaly::model {

// Reads fields from `bytes`. A read past the end gives zero bits and marks
// the reader as overrun, so that a caller checks once after a record.
class BitReader {
public:
    explicit BitReader(QByteArrayView bytes, qsizetype startBit = 0)
        : m_bytes(bytes)
        , m_at(startBit)
    {
    }

    uint32_t read(int width)
    {
        uint32_t value = 0;
        for (int i = 0; i < width; ++i, ++m_at) {
            const bool inside = m_at < m_bytes.size() * 8;
            m_overrun = m_overrun || !inside;
            const int bit = inside ? (uint8_t(m_bytes[m_at / 8]) >> (7 - m_at % 8)) & 1 : 0;
            value = value << 1 | uint32_t(bit);
        }
        return value;
    }
    // Moves on to the next octet boundary, past the reserved bits before it.
    void alignToOctet() { m_at = (m_at + 7) / 8 * 8; }
    void skipTo(qsizetype bit) { m_at = bit; }

    qsizetype position() const { return m_at; }
    bool overrun() const { return m_overrun || m_at > m_bytes.size() * 8; }

private:
    QByteArrayView m_bytes;
    qsizetype m_at;
    bool m_overrun = false;
};

// Appends fields; the last octet is filled with zero bits (the reserved
// bits of the standard) until more are written.
class BitWriter {
public:
    void write(uint32_t value, int width)
    {
        for (int i = width - 1; i >= 0; --i, ++m_bits) {
            if (m_bits % 8 == 0)
                m_bytes.append('\0');
            if (value >> i & 1)
                m_bytes[m_bytes.size() - 1] = char(uint8_t(m_bytes.back()) | 1 << (7 - m_bits % 8));
        }
    }
    void writeBytes(QByteArrayView bytes)
    {
        for (const char byte : bytes)
            write(uint8_t(byte), 8);
    }
    void alignToOctet() { m_bits = m_bytes.size() * 8; }

    qsizetype bits() const { return m_bits; }
    const QByteArray& bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
    qsizetype m_bits = 0;
};

} // namespace tessaly::model
