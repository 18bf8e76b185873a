// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The log packets (0x10) a handset sends on its own for the log codes a log
// mask turns on: how many more wait, then one log item, its header (length,
// code, time stamp) and its payload. A code is the equipment id in its top
// four bits and the item within the equipment below; the masks that turn
// them on are in DiagLogging.h, the payloads of the 1X codes in
// Cdma1xLogItems.h.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <optional>

namespace tessaly::link {

struct LogPacket {
    uint8_t pending = 0; // packets still queued behind this one
    uint16_t code = 0;
    uint64_t time = 0; // DiagTimeStamp.h
    QByteArray payload;

    bool operator==(const LogPacket&) const = default;
};

inline constexpr uint32_t LogEquipment(uint16_t code)
{
    return code >> 12;
}
inline constexpr uint32_t LogItem(uint16_t code)
{
    return code & 0x0FFF;
}

QByteArray EncodeLogPacket(const LogPacket& packet);
// The log item a packet carries; nothing for another packet, or for one
// whose lengths do not agree.
std::optional<LogPacket> ReadLogPacket(QByteArrayView packet);

} // namespace tessaly::link
