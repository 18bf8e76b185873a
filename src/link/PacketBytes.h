// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Little-endian fields and fixed-width text of the diagnostic protocol's
// packets, read from and appended to byte arrays. Readers take positions
// that the caller has checked against the packet's size.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <cstdint>

namespace tessaly::link {

inline uint16_t Little16(QByteArrayView bytes, qsizetype at)
{
    return uint16_t(uint8_t(bytes[at]) | uint8_t(bytes[at + 1]) << 8);
}

inline uint32_t Little32(QByteArrayView bytes, qsizetype at)
{
    return uint32_t(Little16(bytes, at)) | uint32_t(Little16(bytes, at + 2)) << 16;
}

inline void AppendLittle16(QByteArray& bytes, uint16_t value)
{
    bytes.append(char(value & 0xFF));
    bytes.append(char(value >> 8));
}

inline void AppendLittle32(QByteArray& bytes, uint32_t value)
{
    AppendLittle16(bytes, uint16_t(value & 0xFFFF));
    AppendLittle16(bytes, uint16_t(value >> 16));
}

// `text` in exactly `width` bytes: cut, or padded with NULs.
inline void AppendFixedText(QByteArray& bytes, const QString& text, qsizetype width)
{
    QByteArray field = text.toLatin1().left(width);
    field.append(QByteArray(width - field.size(), '\0'));
    bytes.append(field);
}

// A field of `width` bytes as text: up to its first NUL, spaces trimmed.
inline QString FixedText(QByteArrayView bytes, qsizetype at, qsizetype width)
{
    QByteArrayView field = bytes.sliced(at, width);
    if (const qsizetype end = field.indexOf('\0'); end >= 0)
        field = field.first(end);
    return QString::fromLatin1(field).trimmed();
}

} // namespace tessaly::link
