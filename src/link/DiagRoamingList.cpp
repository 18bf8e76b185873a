// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/DiagRoamingList.h"

#include "link/DiagPackets.h"
#include "link/PacketBytes.h"

#include <tessaly/TessalyError.h>

namespace tessaly::link {

namespace {

// The bytes a count of bits covers, no more than a block holds.
qsizetype BlockBytes(uint16_t bits)
{
    return (qsizetype(bits) + 7) / 8;
}

void AppendData(QByteArray& packet, const QByteArray& data)
{
    packet.append(data.left(PrlBlockSize));
    packet.append(QByteArray(PrlBlockSize - std::min(data.size(), PrlBlockSize), '\0'));
}

} // namespace

QByteArray PrlReadRequest(uint8_t sequence, uint8_t nam)
{
    QByteArray packet(1, char(CmdPrListRead));
    packet.append(char(sequence));
    packet.append(char(nam));
    return packet;
}

QByteArray PrlWriteRequest(const PrlBlock& block)
{
    QByteArray packet(1, char(CmdPrListWrite));
    packet.append(char(block.sequence));
    packet.append(char(block.more ? 1 : 0));
    packet.append(char(block.nam));
    AppendLittle16(packet, uint16_t(std::min(block.data.size(), PrlBlockSize) * 8));
    AppendData(packet, block.data);
    return packet;
}

PrlReadReply ParsePrlReadReply(QByteArrayView request, QByteArrayView reply)
{
    CheckReply(request, reply, PrlReadReplySize);
    PrlReadReply answer;
    answer.status = uint8_t(reply[1]);
    answer.nvStatus = Little16(reply, 2);
    answer.block.sequence = uint8_t(reply[4]);
    answer.block.more = reply[5] != 0;
    answer.block.nam = uint8_t(request[2]);
    const uint16_t bits = Little16(reply, 6);
    if (answer.block.sequence != uint8_t(request[1]))
        throw TessalyError(errWrongReply, QStringLiteral("The handset sent block %1 of its roaming list when asked "
                                                         "for block %2.")
                                              .arg(answer.block.sequence)
                                              .arg(uint8_t(request[1])));
    if (BlockBytes(bits) > PrlBlockSize)
        throw TessalyError(errWrongReply, QStringLiteral("The handset sent a block of its roaming list of %1 bits; a "
                                                         "block holds %2 bytes.")
                                              .arg(bits)
                                              .arg(PrlBlockSize));
    answer.block.data = reply.sliced(8, BlockBytes(bits)).toByteArray();
    return answer;
}

PrlWriteReply ParsePrlWriteReply(QByteArrayView request, QByteArrayView reply)
{
    CheckReply(request, reply, 4);
    return {uint8_t(reply[1]), Little16(reply, 2)};
}

bool ReadPrlReadRequest(QByteArrayView request, PrlBlock& block)
{
    if (request.size() != 3)
        return false;
    block.sequence = uint8_t(request[1]);
    block.nam = uint8_t(request[2]);
    return true;
}

bool ReadPrlWriteRequest(QByteArrayView request, PrlBlock& block)
{
    if (request.size() != PrlWriteRequestSize || BlockBytes(Little16(request, 4)) > PrlBlockSize)
        return false;
    block.sequence = uint8_t(request[1]);
    block.more = request[2] != 0;
    block.nam = uint8_t(request[3]);
    block.data = request.sliced(6, BlockBytes(Little16(request, 4))).toByteArray();
    return true;
}

QByteArray EncodePrlReadReply(const PrlReadReply& reply)
{
    QByteArray packet(1, char(CmdPrListRead));
    packet.append(char(reply.status));
    AppendLittle16(packet, reply.nvStatus);
    packet.append(char(reply.block.sequence));
    packet.append(char(reply.block.more ? 1 : 0));
    AppendLittle16(packet, uint16_t(std::min(reply.block.data.size(), PrlBlockSize) * 8));
    AppendData(packet, reply.block.data);
    return packet;
}

QByteArray EncodePrlWriteReply(const PrlWriteReply& reply)
{
    QByteArray packet(1, char(CmdPrListWrite));
    packet.append(char(reply.status));
    AppendLittle16(packet, reply.nvStatus);
    return packet;
}

std::vector<PrlBlock> PrlBlocks(const QByteArray& list, uint8_t nam)
{
    std::vector<PrlBlock> blocks;
    for (qsizetype at = 0; at < list.size() || blocks.empty(); at += PrlBlockSize)
        blocks.push_back({uint8_t(blocks.size()), at + PrlBlockSize < list.size(), nam, list.mid(at, PrlBlockSize)});
    return blocks;
}

} // namespace tessaly::link
