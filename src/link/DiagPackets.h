// The requests and replies of the handset's diagnostic protocol, as frame
// payloads: the version, the ESN, reading and writing one NV item, and
// unlocking with the service programming code (SPC). A reply is checked
// against its request; an error reply or a reply to something else becomes a
// TessalyError that says what happened and what to do.
#pragma once

#include "model/NvMemory.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <cstdint>

namespace tessaly::link {

enum Command : uint8_t {
    CmdVersion = 0x00,
    CmdEsn = 0x01,
    CmdNvRead = 0x26,
    CmdNvWrite = 0x27,
    CmdSpc = 0x41,
};

// The numbers of the link's TessalyErrors.
enum LinkError : int32_t {
    errHandsetRefused = 2001, // an error reply of the handset
    errSpcLocked = 2002, // the handset wants its SPC first
    errWrongReply = 2003, // a reply that does not answer the request
    errBadSpc = 2004, // an SPC that is not six digits
};

// An NV item request or reply: command, item number, 128 data bytes, status.
inline constexpr qsizetype NvPacketSize = 133;

QByteArray VersionRequest();
QByteArray EsnRequest();
// A read or write of `item`; a read sends its data too, with the index of an
// indexed item in its first byte.
QByteArray NvItemRequest(Command command, uint16_t item, const model::NvData& data);
QByteArray SpcRequest(const QString& spc);

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

NvItemReply ParseNvItem(QByteArrayView request, QByteArrayView reply);
QString ParseVersion(QByteArrayView request, QByteArrayView reply);
uint32_t ParseEsn(QByteArrayView request, QByteArrayView reply);
// Whether the handset took the SPC.
bool ParseSpc(QByteArrayView request, QByteArrayView reply);

// What an NV status means, for the user.
QString NvStatusText(uint16_t status);

} // namespace tessaly::link
