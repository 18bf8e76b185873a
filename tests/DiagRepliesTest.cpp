// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The reply layouts of the diagnostic protocol, each decoded from the bytes a
// handset sends, written out here from the protocol's public descriptions;
// and the emulator's encoders giving those same bytes back.
#include "link/DiagControl.h"
#include "link/DiagIdentity.h"
#include "link/DiagLogging.h"
#include "link/DiagPackets.h"
#include "link/DiagSubsystem.h"
#include "support/Packets.h"

#include <tessaly/TessalyError.h>

#include <QStringList>

#include <gtest/gtest.h>

using namespace tessaly;
using namespace tessaly::link;

namespace {

// A version reply: the dates and times, "HV800" as the version directory,
// station class mark 0xEA, CAI revision 6, model 60, firmware 231 (E7 00),
// slot cycle index 2, hardware 1.2.
const QByteArray VersionReply
    = QByteArray("\0Mar 18 202414:02:37Mar 20 202409:30:00HV800\0\0\0", 47) + Hex("ea063ce7000201" "02");

} // namespace

TEST(DiagReplies, VersionReplyIsDecodedByItsFieldsNeverAsOneString)
{
    ASSERT_EQ(VersionReply.size(), VersionReplySize);
    const VersionInfo version = ParseVersion(BareRequest(CmdVersion), VersionReply);
    EXPECT_EQ(QStringList({version.compileDate, version.compileTime, version.releaseDate, version.releaseTime,
                           version.versionDirectory}),
              QStringList({"Mar 18 2024", "14:02:37", "Mar 20 2024", "09:30:00", "HV800"}));
    EXPECT_EQ(std::tuple(version.stationClassMark, version.modelNumber, version.firmwareRevision, version.hardwareMajor,
                         version.hardwareMinor),
              std::tuple(0xEA, 60, 231, 1, 2));
    EXPECT_EQ(EncodeVersion(version), VersionReply) << "the emulator sends the same bytes";

    // The short string reply of old emulators is refused, not read as a name.
    EXPECT_EQ(ErrorOf([] { ParseVersion(BareRequest(CmdVersion), QByteArray(1, '\0') + "TESSALY-EMU 1.0"); }),
              errWrongReply);
}

TEST(DiagReplies, ExtendedBuildIdGivesTheModelStringAndSoftware)
{
    const QByteArray reply = Hex("7c010000" "e1100b00" "3c000000") + QByteArray("HV800-2.31.07\0Halvane SIM-800\0", 30);
    const ExtendedBuildId build = ParseExtendedBuildId(BareRequest(CmdExtBuildId), reply);
    EXPECT_EQ(std::tuple(build.msmHardwareVersion, build.modelId), std::tuple(0x000B10E1u, 60u));
    EXPECT_EQ(QStringList({build.software, build.model}), QStringList({"HV800-2.31.07", "Halvane SIM-800"}));
    EXPECT_EQ(EncodeExtendedBuildId(build), reply);
    // A handset that ends the packet instead of the last NUL.
    EXPECT_EQ(ParseExtendedBuildId(BareRequest(CmdExtBuildId), reply.chopped(1)).model, "Halvane SIM-800");

}

TEST(DiagReplies, DiagVersionAndStatus)
{
    EXPECT_EQ(ParseDiagVersion(BareRequest(CmdDiagVersion), Hex("1c0800")), 8);
    // ESN 8F3A21C4 at 4, RF mode 1, receive state 3, channel 283 (1B 01),
    // SID 4139 (2B 10), NID 65535.
    QByteArray status = Hex("0c000000" "c4213a8f" "0100") + QByteArray(12, '\0') + Hex("00" "0300")
        + QByteArray(7, '\0') + Hex("0000" "1b01" "00" "0000" "2b10" "ffff") + QByteArray(5, '\0');
    ASSERT_EQ(status.size(), StatusReplySize);
    const StationStatus station = ParseStatus(BareRequest(CmdStatus), status);
    EXPECT_EQ(std::tuple(station.esn, station.rfMode, station.cdmaRxState, station.channel, station.sid, station.nid),
              std::tuple(0x8F3A21C4u, 1, 3, 283, 4139, 65535));
    EXPECT_EQ(EncodeStatus(station), status);
}

TEST(DiagReplies, ModeChangesAndPasswordAreTakenOrRefusedWithTheirError)
{
    const QByteArray reset = ControlRequest(ControlMode::Reset);
    EXPECT_EQ(reset.toHex(), "290200");
    ParseControl(reset, Hex("290200"));
    EXPECT_EQ(ErrorOf([&] { ParseControl(reset, Hex("42")); }), errSpcLocked);
    EXPECT_EQ(ErrorOf([&] { ParseControl(reset, Hex("18290200")); }), errHandsetRefused) << "not offline";
    EXPECT_EQ(ErrorOf([&] { ParseControl(reset, Hex("290100")); }), errWrongReply);

    const QByteArray password = PasswordRequest(QStringLiteral("0123456789abcdef"));
    EXPECT_EQ(password.toHex(), "460123456789abcdef");
    EXPECT_TRUE(ParsePassword(password, Hex("4601")));
    EXPECT_FALSE(ParsePassword(password, Hex("4600")));
    for (const char* wrong : {"0123", "0123456789abcdeg", "0123456789abcdef0"})
        EXPECT_THROW(PasswordRequest(QLatin1String(wrong)), TessalyError) << wrong;
}

TEST(DiagReplies, EventLogAndMessageConfiguration)
{
    // The switch's answer is an event report of no events; one with events
    // came on its own.
    EXPECT_TRUE(Answers(EventReportRequest(true), Hex("600000"), false));
    EXPECT_FALSE(Answers(EventReportRequest(true), Hex("600300aabbcc"), false));
    EXPECT_FALSE(Answers(BareRequest(CmdVersion), Hex("600000"), false));

    // Log ranges: CDMA (equipment 1) up to item 0x5FF.
    QByteArray ranges = Hex("73000000" "01000000" "00000000" "00000000" "ff050000") + QByteArray(14 * 4, '\0');
    const LogConfig config = ParseLogConfig(LogConfigRequest(LogRetrieveRanges), ranges);
    EXPECT_EQ(std::tuple(config.status, config.lastItems[1], config.lastItems[2]), std::tuple(0u, 0x5FFu, 0u));
    // A mask of equipment 1, 10 items, items 0 and 9 on.
    const QByteArray maskReply = Hex("73000000" "04000000" "00000000" "01000000" "0a000000" "0102");
    const LogConfig mask = ParseLogConfig(LogConfigRequest(LogGetMask, {1, 0, {}}), maskReply);
    EXPECT_EQ(std::tuple(mask.mask.equipment, mask.mask.items, mask.mask.bits), std::tuple(1u, 10u, Hex("0102")));
    EXPECT_EQ(EncodeLogConfig(mask), maskReply);
    EXPECT_EQ(ErrorOf([&] { ParseLogConfig(LogConfigRequest(LogGetMask, {1, 0, {}}), maskReply.chopped(1)); }),
              errWrongReply);

    const std::optional<ExtendedLogMask> extended = ReadExtendedLogMask(Hex("5d0c00ff0f"));
    ASSERT_TRUE(extended);
    EXPECT_EQ(std::tuple(extended->bits, extended->mask), std::tuple(12, Hex("ff0f")));

    // Message ranges: ids 0 to 120 and 500 to 520.
    const MessageConfig ids = ParseMessageConfig(MessageConfigRequest({}), Hex("7d010100" "02000000" "00007800" "f401"
                                                                                "0802"));
    ASSERT_EQ(ids.ranges.size(), 2u);
    EXPECT_EQ(std::tuple(ids.ranges[1].first, ids.ranges[1].last), std::tuple(500, 520));
    MessageConfig all;
    all.operation = MsgSetAllMasks;
    all.masks = {0x1F};
    EXPECT_EQ(MessageConfigRequest(all).toHex(), "7d0500001f000000");
    EXPECT_EQ(ParseMessageConfig(MessageConfigRequest(all), Hex("7d0501001f000000")).masks.front(), 0x1Fu);
    MessageConfig range;
    range.operation = MsgRetrieveMasks;
    range.range = {10, 11};
    EXPECT_EQ(MessageConfigRequest(range).toHex(), "7d030a000b00");
    const MessageConfig some = ParseMessageConfig(MessageConfigRequest(range), Hex("7d03" "0a00" "0b00" "0100" "03000000" "1f000000"));
    EXPECT_EQ(some.range.first, 10);
    EXPECT_EQ(some.masks, (std::vector<uint32_t>{3, 0x1F}));
}

TEST(DiagReplies, SubsystemNvBySubscriptionAndCallManagerState)
{
    SubscriptionNvItem asked;
    asked.item = 178;
    asked.data[0] = 1; // index 1 of an indexed item
    const QByteArray request = EncodeSubscriptionNv(NvReadBySubscription, asked);
    ASSERT_EQ(request.size(), SubscriptionNvPacketSize);
    EXPECT_EQ(request.left(9).toHex(), "4b300100b200000001");

    QByteArray reply = request;
    reply.replace(9, 10, "6195550172");
    const SubscriptionNvItem item = ParseSubscriptionNv(request, reply);
    EXPECT_EQ(std::tuple(item.item, item.data[0], item.data[1], item.status), std::tuple(178, 1, '6', 0));
    // A reply for another index, subscription or subsystem is waited past.
    QByteArray otherIndex = reply;
    otherIndex[8] = 0;
    QByteArray otherSubscription = reply;
    otherSubscription[6] = 1;
    EXPECT_TRUE(Answers(request, reply, true));
    EXPECT_FALSE(Answers(request, otherIndex, true));
    EXPECT_FALSE(Answers(request, otherSubscription, true));
    EXPECT_FALSE(Answers(request, SubsystemRequest(SubsysCallManager, CallManagerStateInfo), true));
    EXPECT_EQ(ErrorOf([&] { ParseSubscriptionNv(request, Hex("13") + request); }), errHandsetRefused);

    // Online (5), CDMA (2), automatic mode (4).
    const QByteArray state = Hex("4b0f0000" "00000000" "05000000" "02000000" "04000000" "ffffff3f" "ff000000"
                                 "02000000" "00000000" "00000000" "00000000");
    const CallManagerState cm = ParseCallManagerState(SubsystemRequest(SubsysCallManager, CallManagerStateInfo), state);
    EXPECT_EQ(std::tuple(cm.operatingMode, cm.systemMode, cm.bandPreference), std::tuple(5u, 2u, 0x3FFFFFFFu));
    EXPECT_EQ(EncodeCallManagerState(cm), state);
}

TEST(DiagReplies, EsnSpcAndNvItemRepliesAreTheBytesTheirParsersRead)
{
    // The ESN 8F3A21C4, little-endian after the command.
    EXPECT_EQ(EncodeEsnReply(0x8F3A21C4), Hex("01" "c4213a8f"));
    EXPECT_EQ(ParseEsn(EsnRequest(), Hex("01" "c4213a8f")), 0x8F3A21C4u);
    // The SPC taken, refused, and the reply of a handset still locked.
    EXPECT_EQ(EncodeSpcReply(true), Hex("4101"));
    EXPECT_EQ(EncodeSpcReply(false), Hex("4100"));
    EXPECT_EQ(SpcLockedReply(), Hex("42"));
    // NV item 178 (0xB2) with its first data bytes, status 5 (inactive).
    model::NvData data{};
    data[0] = 0x31;
    data[127] = 0x7E;
    const QByteArray reply = Hex("26" "b200" "31") + QByteArray(126, '\0') + Hex("7e" "0500");
    EXPECT_EQ(EncodeNvItemReply(CmdNvRead, {178, data, 5}), reply);
    const NvItemReply parsed = ParseNvItem(NvItemRequest(CmdNvRead, uint16_t(178), {}), reply);
    EXPECT_EQ(parsed.item, 178);
    EXPECT_EQ(parsed.data, data);
    EXPECT_EQ(parsed.status, 5);
}
