// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The framing of the handset's serial link: known vectors, frames cut into
// every possible chunking, damaged frames and random noise.
#include "link/DiagPackets.h"
#include "link/FrameCodec.h"
#include "support/RuntimeErrors.h"

#include <tessaly/TessalyError.h>

#include <gtest/gtest.h>

#include <random>

using namespace tessaly::link;

namespace {

std::vector<QByteArray> FeedInChunks(FrameDecoder& decoder, const QByteArray& line, qsizetype chunk)
{
    std::vector<QByteArray> frames;
    for (qsizetype at = 0; at < line.size(); at += chunk)
        for (QByteArray& frame : decoder.feed(QByteArrayView(line).sliced(at, std::min(chunk, line.size() - at))))
            frames.push_back(std::move(frame));
    return frames;
}

} // namespace

TEST(FrameCodec, KnownVectors)
{
    EXPECT_EQ(Crc16("123456789"), 0x906E);
    EXPECT_EQ(EncodeFrame(QByteArray::fromHex("01020304")).toHex(), "010203049139" "7e");
    // Flags and escapes inside the payload travel escaped.
    EXPECT_EQ(EncodeFrame(QByteArray::fromHex("7e7d")).left(4).toHex(), "7d5e7d5d");
}

TEST(FrameCodec, EveryChunkingGivesTheSameFramesAndAStrayFlagIsAccepted)
{
    const QByteArray first = QByteArray::fromHex("26b2000d7e7d0102");
    const QByteArray second = QByteArray::fromHex("00");
    const QByteArray line = FrameEnd + EncodeFrame(first) + EncodeFrame(second); // two frames in one read
    for (qsizetype chunk = 1; chunk <= line.size(); ++chunk) {
        FrameDecoder decoder;
        const std::vector<QByteArray> frames = FeedInChunks(decoder, line, chunk);
        ASSERT_EQ(frames.size(), 2u) << "chunks of " << chunk;
        EXPECT_EQ(frames[0], first);
        EXPECT_EQ(frames[1], second);
        EXPECT_EQ(decoder.rejected(), 0);
    }
}

TEST(FrameCodec, DamagedFramesAndNoiseAreDroppedAndDecodingResumesAtTheNextFlag)
{
    QByteArray bad = EncodeFrame("hello");
    bad[2] = char(bad[2] ^ 0x01);
    const QByteArray good = EncodeFrame("world");
    FrameDecoder decoder;
    std::vector<QByteArray> frames = decoder.feed(bad + QByteArray("\x7d\x7e", 2) + good);
    ASSERT_EQ(frames.size(), 1u);
    EXPECT_EQ(frames[0], "world");
    EXPECT_EQ(decoder.rejected(), 2) << "a bad CRC, and a frame broken off in an escape";
    EXPECT_TRUE(decoder.feed(QByteArray("\x01", 1) + FrameEnd).empty()) << "too short for a CRC";

    // A line without flags is dropped as it comes, and random noise is
    // survived; after either, the next frame passes.
    const QByteArray noise(FrameDecoder::MaxFrame + 1, 'x');
    for (int i = 0; i < 64; ++i)
        EXPECT_TRUE(decoder.feed(noise).empty());
    std::mt19937 random(7);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int round = 0; round < 2000; ++round) {
        QByteArray junk(std::uniform_int_distribution<int>(0, 64)(random), Qt::Uninitialized);
        for (char& b : junk)
            b = char(byte(random));
        decoder.feed(junk);
    }
    frames = decoder.feed(FrameEnd + good);
    ASSERT_FALSE(frames.empty());
    EXPECT_EQ(frames.back(), "world");
}

TEST(DiagPackets, RequestsRepliesAndEveryErrorReplyWithItsMessage)
{
    using namespace tessaly;
    model::NvData data{};
    data[0] = 1; // an indexed item's index travels in its first byte
    const QByteArray read = NvItemRequest(CmdNvRead, 178, data);
    ASSERT_EQ(read.size(), NvPacketSize);
    EXPECT_EQ(read.left(4).toHex(), "26b20001");

    QByteArray reply = read;
    reply[3] = 1;
    reply[4] = '8';
    reply[131] = 5; // inactive: never written
    const NvItemReply answer = ParseNvItem(read, reply);
    EXPECT_EQ(answer.item, 178);
    EXPECT_EQ(answer.data[1], '8');
    EXPECT_TRUE(NvStatusText(answer.status).contains(QLatin1String("inactive")));
    EXPECT_TRUE(NvStatusText(7).contains(QLatin1String("read-only")));

    const auto numberOf = [](QByteArrayView request, QByteArrayView wrong) {
        return ErrorNumberOf<TessalyError>([&] { ParseNvItem(request, wrong); });
    };
    QByteArray otherItem = reply;
    otherItem[1] = char(0xB3);
    EXPECT_EQ(numberOf(read, otherItem), errWrongReply);
    // The link waits past replies to other requests: another item, another
    // index of an indexed item, another command, an error echoing another request.
    QByteArray otherIndex = reply;
    otherIndex[3] = 0;
    EXPECT_TRUE(Answers(read, reply, true));
    EXPECT_FALSE(Answers(read, otherItem, true));
    EXPECT_FALSE(Answers(read, otherIndex, true));
    EXPECT_TRUE(Answers(read, otherIndex, false));
    EXPECT_FALSE(Answers(read, QByteArray::fromHex("01c4213a8f"), true));
    EXPECT_TRUE(Answers(read, QByteArray(1, 0x14) + read, true));
    EXPECT_FALSE(Answers(read, QByteArray(1, 0x14) + otherItem, true));
    EXPECT_EQ(numberOf(read, reply.left(40)), errWrongReply);
    EXPECT_EQ(numberOf(read, QByteArray(1, char(0x42))), errSpcLocked);
    for (char code : {0x13, 0x14, 0x15, 0x16, 0x18, 0x47})
        EXPECT_EQ(numberOf(read, QByteArray(1, code) + read), errHandsetRefused) << int(code);

    EXPECT_EQ(ParseEsn(EsnRequest(), QByteArray::fromHex("01c4213a8f")), 0x8F3A21C4u);
    EXPECT_THROW(SpcRequest(QStringLiteral("12345")), TessalyError);
    // Log and event reports are no replies.
    EXPECT_TRUE(IsUnsolicited(QByteArray::fromHex("1000ff")) && IsUnsolicited(QByteArray::fromHex("60")));
}
