// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// What the handset reports on its own and how a tool configures it: event
// reports on or off (0x60), the log masks by equipment (0x73) and as one
// extended mask (0x5D), and the message masks by subsystem id (0x7D).
// Requests, replies and the reading of a request, for the emulator.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace tessaly::link {

QByteArray EventReportRequest(bool on);
// Whether an event report switch asks for reports; nothing for another packet.
std::optional<bool> EventReportSwitch(QByteArrayView request);
// The answer to the switch: an event report of no events.
QByteArray EncodeEventReportReply();

enum LogConfigOperation : uint32_t {
    LogDisable = 0,
    LogRetrieveRanges = 1,
    LogSetMask = 3,
    LogGetMask = 4,
};

// The log items of one equipment id that are on: `items` bits, item 0 in the
// lowest bit of the first byte.
struct LogMask {
    uint32_t equipment = 0;
    uint32_t items = 0;
    QByteArray bits;
};

struct LogConfig {
    uint32_t operation = LogDisable;
    uint32_t status = 0; // 0: done
    std::array<uint32_t, 16> lastItems{}; // by equipment id, for LogRetrieveRanges
    LogMask mask; // for LogSetMask and LogGetMask
};

QByteArray LogConfigRequest(uint32_t operation, const LogMask& mask = {});
// The operation and mask a request carries; nothing for one cut short.
std::optional<LogConfig> ReadLogConfigRequest(QByteArrayView request);
QByteArray EncodeLogConfig(const LogConfig& config);
LogConfig ParseLogConfig(QByteArrayView request, QByteArrayView reply);

// The extended log mask: `bits` items, asked for with no bits.
struct ExtendedLogMask {
    uint16_t bits = 0;
    QByteArray mask;
};

// A request and its reply have the same layout.
QByteArray EncodeExtendedLogMask(const ExtendedLogMask& mask);
std::optional<ExtendedLogMask> ReadExtendedLogMask(QByteArrayView packet);

enum MessageConfigOperation : uint8_t {
    MsgRetrieveRanges = 1,
    MsgRetrieveBuildMasks = 2,
    MsgRetrieveMasks = 3,
    MsgSetMasks = 4,
    MsgSetAllMasks = 5,
};

struct SsidRange {
    uint16_t first = 0;
    uint16_t last = 0;
};

struct MessageConfig {
    uint8_t operation = MsgRetrieveRanges;
    uint8_t status = 1; // 1: done
    std::vector<SsidRange> ranges; // for MsgRetrieveRanges
    SsidRange range; // for the masks of a range
    std::vector<uint32_t> masks; // one per id of the range; one for all
};

QByteArray MessageConfigRequest(const MessageConfig& config);
std::optional<MessageConfig> ReadMessageConfigRequest(QByteArrayView request);
QByteArray EncodeMessageConfig(const MessageConfig& config);
MessageConfig ParseMessageConfig(QByteArrayView request, QByteArrayView reply);

} // namespace tessaly::link
