// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The diagnostic protocol's roaming list commands: the handset's preferred
// roaming list read (0x49) and written (0x48) in blocks of 120 bytes, each
// with its sequence number, a "more" flag and its length in bits, for one
// NAM. Layouts as the open CDMA DEV TERM project (cdmaDevLib, Prl.vb)
// describes them:
//
//   read request:  command, sequence, NAM
//   read reply:    command, status, NV status (16), sequence, more,
//                  bits (16), 120 data bytes
//   write request: command, sequence, more, NAM, bits (16), 120 data bytes
//   write reply:   command, status, NV status (16)
//
// Numbers little-endian; a block shorter than 120 bytes is padded with zeros.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <vector>

namespace tessaly::link {

inline constexpr uint8_t CmdPrListWrite = 0x48;
inline constexpr uint8_t CmdPrListRead = 0x49;
inline constexpr qsizetype PrlBlockSize = 120;
inline constexpr qsizetype PrlReadReplySize = 8 + PrlBlockSize;
inline constexpr qsizetype PrlWriteRequestSize = 6 + PrlBlockSize;

// The status of a read reply: 0 and 2 (the list is of IS-683-A) are
// answers, 1 and 3 an NV fault.
enum PrlReadStatus : uint8_t { PrlReadOk = 0, PrlReadNvFault = 1, PrlReadOkStandard = 2, PrlReadNvFaultStandard = 3 };
// The status of a write reply: a block taken, the list complete, a block
// out of sequence, a list too big for the handset.
enum PrlWriteStatus : uint8_t { PrlWriteOk = 0, PrlWriteDone = 1, PrlWriteOutOfSequence = 2, PrlWriteOverflow = 3 };

// One block of the list, either way.
struct PrlBlock {
    uint8_t sequence = 0;
    bool more = false;
    uint8_t nam = 0;
    QByteArray data; // PrlBlockSize bytes at most
};

struct PrlReadReply {
    uint8_t status = PrlReadOk;
    uint16_t nvStatus = 0;
    PrlBlock block;
};

struct PrlWriteReply {
    uint8_t status = PrlWriteOk;
    uint16_t nvStatus = 0;
};

QByteArray PrlReadRequest(uint8_t sequence, uint8_t nam);
QByteArray PrlWriteRequest(const PrlBlock& block);
// Throw TessalyError unless `reply` answers `request`: another command, a
// block of another sequence number, a length past the block.
PrlReadReply ParsePrlReadReply(QByteArrayView request, QByteArrayView reply);
PrlWriteReply ParsePrlWriteReply(QByteArrayView request, QByteArrayView reply);

// The handset's side. The requests as it reads them, none when they are of
// a wrong length; in the write's block `more` and the bytes its bit count
// gives.
bool ReadPrlReadRequest(QByteArrayView request, PrlBlock& block);
bool ReadPrlWriteRequest(QByteArrayView request, PrlBlock& block);
QByteArray EncodePrlReadReply(const PrlReadReply& reply);
QByteArray EncodePrlWriteReply(const PrlWriteReply& reply);

// The list's blocks as a writer sends them: sequence numbers from 0, "more"
// on all but the last.
std::vector<PrlBlock> PrlBlocks(const QByteArray& list, uint8_t nam);

} // namespace tessaly::link
