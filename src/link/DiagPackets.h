// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The requests and replies of the handset's diagnostic protocol, as frame
// payloads: the command codes, the error replies, the ESN, reading and
// writing one NV item, and unlocking with the service programming code (SPC).
// A reply is checked against its request; an error reply or a reply to
// something else becomes a TessalyError that says what happened and what to
// do. The other layouts are in files of their own: DiagIdentity.h (version,
// build id, status), DiagControl.h (mode changes, password), DiagLogging.h
// (events, logs, messages) and DiagSubsystem.h (subsystem commands).
//
// Command codes and the NV item layout as libqcdm (ModemManager) and the
// OpenPST tools define them.
#pragma once

#include "link/ErrorNumbers.h"
#include "model/NvMemory.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <chrono>
#include <cstdint>

namespace tessaly::link {

enum Command : uint8_t {
    CmdVersion = 0x00,
    CmdEsn = 0x01,
    CmdStatus = 0x0C,
    CmdLog = 0x10,
    CmdBadCommand = 0x13,
    CmdBadParameter = 0x14,
    CmdBadLength = 0x15,
    CmdBadDevice = 0x16,
    CmdBadMode = 0x18,
    CmdDiagVersion = 0x1C,
    CmdNvRead = 0x26,
    CmdNvWrite = 0x27,
    CmdControl = 0x29,
    CmdSpc = 0x41,
    CmdBadSpcMode = 0x42,
    CmdPassword = 0x46,
    CmdBadSecurityMode = 0x47,
    CmdSubsystem = 0x4B,
    CmdExtLogMask = 0x5D,
    CmdEventReport = 0x60,
    CmdLogConfig = 0x73,
    CmdExtBuildId = 0x7C,
    CmdMessageConfig = 0x7D,
};

// An NV item request or reply: command, item number, 128 data bytes, status.
inline constexpr qsizetype NvPacketSize = 133;

// The request of a command that carries nothing but its code.
QByteArray BareRequest(Command command);
QByteArray EsnRequest();
// A read or write of `item`; a read sends its data too, with the index of an
// indexed item in its first byte.
QByteArray NvItemRequest(Command command, uint16_t item, const model::NvData& data);
// The same for `address`, its index put in the first data byte.
QByteArray NvItemRequest(Command command, model::NvAddress address, model::NvData data);
// The 128 data bytes of an NV packet: appended to `packet`, read at `at`.
void AppendNvData(QByteArray& packet, const model::NvData& data);
model::NvData NvDataAt(QByteArrayView packet, qsizetype at);
QByteArray SpcRequest(const QString& spc);

// The error reply `code` to `request`: the code, then the request echoed, as
// a handset answers a command it does not know (CmdBadCommand) or refuses.
QByteArray ErrorReply(Command code, QByteArrayView request);
bool IsBadCommand(QByteArrayView reply);

// Logs and event reports that the handset sends on its own, to be skipped
// while a reply is awaited.
bool IsUnsolicited(QByteArrayView reply);

// Whether `reply` answers `request` and not another one, such as a late
// reply to an earlier request: the same command (or an error reply that
// echoes this request), for an NV item the same item, and for an indexed
// item (`indexed`) the same index in the first data byte.
bool Answers(QByteArrayView request, QByteArrayView reply, bool indexed);

struct NvItemReply {
    uint16_t item = 0;
    model::NvData data{};
    uint16_t status = 0;
};

// Throws TessalyError unless `reply` answers `request` with `size` bytes at
// least.
void CheckReply(QByteArrayView request, QByteArrayView reply, qsizetype size);

NvItemReply ParseNvItem(QByteArrayView request, QByteArrayView reply);
uint32_t ParseEsn(QByteArrayView request, QByteArrayView reply);
// Whether the handset took the SPC.
bool ParseSpc(QByteArrayView request, QByteArrayView reply);

// The handset's side: the replies the parsers above read.
QByteArray EncodeNvItemReply(Command command, const NvItemReply& reply);
QByteArray EncodeEsnReply(uint32_t esn);
QByteArray EncodeSpcReply(bool taken);
// The reply of a locked handset to a command its SPC guards.
QByteArray SpcLockedReply();

using model::NvStatusText;

// An item that answers "busy" is asked again this many times, each after the
// wait: a handset busy with an item for a moment answers it then.
inline constexpr int BusyTries = 4;
inline constexpr std::chrono::milliseconds BusyWait{100};

} // namespace tessaly::link
