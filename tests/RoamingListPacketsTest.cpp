// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The roaming list commands' packets, written out byte by byte from the open
// descriptions of the protocol: blocks read and written with their sequence
// numbers, "more" flags and bit counts, and a list cut into blocks.
#include "link/DiagPackets.h"
#include "link/DiagRoamingList.h"
#include "support/Packets.h"

#include <gtest/gtest.h>

using namespace tessaly::link;

namespace {

// Block 2 of a list, more to come: status 0, NV status 0, sequence 2, more
// 1, 64 bits (40 00), eight bytes, the rest of the 120 zero.
const QByteArray ReadReply = Hex("49 00 0000 02 01 4000 0011223344556677") + QByteArray(112, '\0');

} // namespace

TEST(RoamingListPackets, ReadBlockIsAskedAndAnsweredWithItsSequence)
{
    const QByteArray request = PrlReadRequest(2, 0);
    EXPECT_EQ(request, Hex("490200"));
    ASSERT_EQ(ReadReply.size(), PrlReadReplySize);
    const PrlReadReply reply = ParsePrlReadReply(request, ReadReply);
    EXPECT_EQ(reply.status, PrlReadOk);
    EXPECT_EQ(reply.block.sequence, 2);
    EXPECT_TRUE(reply.block.more);
    EXPECT_EQ(reply.block.data, Hex("0011223344556677")) << "as many bytes as the bit count says";
    EXPECT_EQ(EncodePrlReadReply(reply), ReadReply);

    // A late reply for block 1 is not this request's: passed over while
    // waiting, and refused if it came as the answer.
    QByteArray late = ReadReply;
    late[4] = 1;
    EXPECT_FALSE(Answers(request, late, false));
    EXPECT_TRUE(Answers(request, ReadReply, false));
    EXPECT_EQ(ErrorOf([&] { ParsePrlReadReply(request, late); }), errWrongReply);
    // A bit count past the block.
    QByteArray overlong = ReadReply;
    overlong[6] = char(0xC8);
    overlong[7] = char(0x03); // 968 bits
    EXPECT_EQ(ErrorOf([&] { ParsePrlReadReply(request, overlong); }), errWrongReply);
    EXPECT_EQ(ErrorOf([&] { ParsePrlReadReply(request, ReadReply.first(20)); }), errWrongReply);
}

TEST(RoamingListPackets, WriteBlockCarriesMoreNamAndBitCount)
{
    // Block 1, the last (more 0), NAM 0, 24 bits (18 00), three bytes.
    const QByteArray request = PrlWriteRequest({1, false, 0, Hex("aabbcc")});
    EXPECT_EQ(request, Hex("48 01 00 00 1800 aabbcc") + QByteArray(117, '\0'));
    PrlBlock block;
    ASSERT_TRUE(ReadPrlWriteRequest(request, block));
    EXPECT_EQ(std::tuple(block.sequence, block.more, block.nam, block.data), std::tuple(1, false, 0, Hex("aabbcc")));
    EXPECT_FALSE(ReadPrlWriteRequest(request.chopped(1), block));

    // The list taken whole, but refused: NV status 6.
    const PrlWriteReply reply = ParsePrlWriteReply(request, Hex("48 01 0600"));
    EXPECT_EQ(std::tuple(reply.status, reply.nvStatus), std::tuple(PrlWriteDone, 6));
    EXPECT_EQ(EncodePrlWriteReply(reply), Hex("48 01 0600"));
    EXPECT_EQ(ErrorOf([&] { ParsePrlWriteReply(request, Hex("42")); }), errSpcLocked);
}

TEST(RoamingListPackets, ListIsCutIntoNumberedBlocks)
{
    QByteArray list(250, '\0');
    for (qsizetype i = 0; i < list.size(); ++i)
        list[i] = char(i);
    const std::vector<PrlBlock> blocks = PrlBlocks(list, 0);
    ASSERT_EQ(blocks.size(), 3u);
    EXPECT_EQ(std::tuple(blocks[0].sequence, blocks[0].more, blocks[0].data.size()), std::tuple(0, true, 120));
    EXPECT_EQ(std::tuple(blocks[2].sequence, blocks[2].more, blocks[2].data), std::tuple(2, false, list.mid(240)));
    EXPECT_EQ(blocks[1].data, list.mid(120, 120));
    // A list of exactly one block's size is one block, the last.
    EXPECT_EQ(PrlBlocks(list.first(120), 0).size(), 1u);
    EXPECT_FALSE(PrlBlocks(list.first(120), 0)[0].more);
}
