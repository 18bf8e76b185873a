// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The payloads of the 1X log codes a handset sends while it idles on a CDMA
// system: the sync channel and paging channel messages it receives. Each
// log item is the message as it came over the air: its length in bytes (the
// length byte included), its type, then its fields packed most significant
// bit first, as libqcdm's log-items.h gives the paging channel's item and
// the air interface (3GPP2 C.S0005) gives the messages.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <optional>

namespace tessaly::link {

enum Cdma1xLogCode : uint16_t {
    LogSyncChannelMessage = 0x1006,
    LogPagingChannelMessage = 0x1007,
};

// Message types of the sync and paging channels.
enum CdmaChannelMessage : uint8_t {
    SyncChannelMessageType = 0x01,   // on the sync channel
    SystemParametersMessageType = 0x01, // on the paging channel
    GeneralPageMessageType = 0x11,
};

// The first fields of the sync channel message, what a handset learns of a
// system first; the time fields after them go out as zeros.
struct SyncChannelMessage {
    uint8_t protocolRevision = 0;
    uint8_t leastProtocolRevision = 0;
    uint16_t sid = 0; // 15 bits
    uint16_t nid = 0;
    uint16_t pilotPn = 0; // 9 bits
};

// The first fields of the paging channel's system parameters message.
struct SystemParameters {
    uint16_t pilotPn = 0;    // 9 bits
    uint8_t configSequence = 0; // 6 bits
    uint16_t sid = 0;        // 15 bits
    uint16_t nid = 0;
    uint16_t registrationZone = 0; // 12 bits
    uint16_t baseId = 0;
};

// A general page with no page records: the sequence numbers of the
// overhead messages, every class of pages done.
struct GeneralPage {
    uint8_t configSequence = 0; // 6 bits
    uint8_t accessSequence = 0; // 6 bits
};

QByteArray EncodeSyncChannelMessage(const SyncChannelMessage& message);
QByteArray EncodeSystemParameters(const SystemParameters& message);
QByteArray EncodeGeneralPage(const GeneralPage& page);

// The message type of a channel message item; nothing when its length byte
// does not match its size.
std::optional<uint8_t> ChannelMessageType(QByteArrayView item);
std::optional<SyncChannelMessage> ReadSyncChannelMessage(QByteArrayView item);
std::optional<SystemParameters> ReadSystemParameters(QByteArrayView item);

} // namespace tessaly::link
