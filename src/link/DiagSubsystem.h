// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Subsystem commands (0x4B): a header of the subsystem id and its command
// (16 bits) before each subsystem's own packet. Two subsystems are spoken
// here: NV items by subscription, the form of dual-subscription handsets, and
// the call manager's state.
#pragma once

#include "model/NvMemory.h"

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <optional>

namespace tessaly::link {

enum Subsystem : uint8_t {
    SubsysCallManager = 0x0F,
    SubsysNv = 0x30,
};

enum SubsystemCommand : uint16_t {
    CallManagerStateInfo = 0,
    NvReadBySubscription = 1,
    NvWriteBySubscription = 2,
};

struct SubsystemHeader {
    uint8_t subsystem = 0;
    uint16_t command = 0;
};

std::optional<SubsystemHeader> ReadSubsystemHeader(QByteArrayView packet);

// An NV item by subscription: header, item, subscription (16 bits each), 128
// data bytes, status.
inline constexpr qsizetype SubscriptionNvPacketSize = 138;

struct SubscriptionNvItem {
    uint16_t item = 0;
    uint16_t subscription = 0;
    model::NvData data{};
    uint16_t status = 0;
};

// A request and its reply have the same layout.
QByteArray EncodeSubscriptionNv(SubsystemCommand command, const SubscriptionNvItem& item);
// The fields of such a packet; nothing for one of the wrong size.
std::optional<SubscriptionNvItem> ReadSubscriptionNv(QByteArrayView packet);
// Throws TessalyError unless `reply` answers `request` for the same item.
SubscriptionNvItem ParseSubscriptionNv(QByteArrayView request, QByteArrayView reply);

// The call manager's state: each field 32 bits, in this order.
struct CallManagerState {
    uint32_t callState = 0;
    uint32_t operatingMode = 0;
    uint32_t systemMode = 0;
    uint32_t modePreference = 0;
    uint32_t bandPreference = 0;
    uint32_t roamPreference = 0;
    uint32_t serviceDomainPreference = 0;
    uint32_t acquisitionOrder = 0;
    uint32_t hybridPreference = 0;
    uint32_t networkSelection = 0;
};

inline constexpr qsizetype CallManagerStateSize = 44;

QByteArray SubsystemRequest(Subsystem subsystem, uint16_t command);
QByteArray EncodeCallManagerState(const CallManagerState& state);
CallManagerState ParseCallManagerState(QByteArrayView request, QByteArrayView reply);

} // namespace tessaly::link
