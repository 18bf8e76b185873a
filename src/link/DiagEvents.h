// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The event reports (0x60) a handset sends on its own once reporting is on:
// a length, then events, each an id with its flags, a time stamp in its
// full or short form, and a payload. The switch that turns reporting on and
// its answer, a report of no events, are in DiagLogging.h.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <optional>
#include <vector>

namespace tessaly::link {

// Ids of CDMA call processing events, with the payload each carries, as
// the public event id list (event_defs.h of the qcacld-2.0 driver in the
// Android kernel trees, the list SCAT names) numbers them.
enum CdmaEvent : uint16_t {
    EventBandClassChange = 0x100,       // band class, 1 byte
    EventCdmaChannelChange = 0x101,     // channel, 2 bytes
    EventSidChange = 0x104,             // SID, 2 bytes
    EventNidChange = 0x105,             // NID, 2 bytes
    EventOperatingModeChange = 0x108,   // operating mode, 1 byte
    EventMessageReceived = 0x109,       // channel and message type, 1 byte each
    EventCallProcessingState = 0x10D,   // old and new state, 1 byte each
    EventRegistrationZone = 0x111,      // zone, 2 bytes
    EventSlottedMode = 0x112,           // entered (1) or left (0), 1 byte
    EventQuickPagingInUse = 0x113,      // on (1) or off (0), 1 byte
    EventIdleHandoff = 0x114,           // the new pilot's PN offset, 2 bytes
    EventPagingChannelAcquired = 0x130, // paging channel, 1 byte, and PN offset, 2 bytes
    EventRegistration = 0x135,          // registration type, 1 byte
    EventPowerDown = 0x145,             // no payload
};

struct DiagEvent {
    uint16_t id = 0; // 12 bits
    // The time stamp (DiagTimeStamp.h). The short form sends bits 16 to 31
    // alone, the low bits of the 1.25 ms count, which a reader joins to the
    // full stamp of an event before; they come back in place, the rest 0.
    uint64_t time = 0;
    bool shortTime = false;
    // Up to 255 bytes: one or two go in the flags, more after a length byte.
    QByteArray payload;

    bool operator==(const DiagEvent&) const = default;
};

// The report of `events`; an empty list is the switch's answer.
QByteArray EncodeEventReport(const std::vector<DiagEvent>& events);
// The events of an event report; nothing for another packet, or for one
// whose length and events do not agree.
std::optional<std::vector<DiagEvent>> ReadEventReport(QByteArrayView packet);

} // namespace tessaly::link
