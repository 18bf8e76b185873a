// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// What a handset sends on its own, each layout written out here byte by
// byte from the public descriptions: event reports (osmo-qcdiag's
// diag_event.c), log packets (osmo-qcdiag's protocol.h) with the 1X channel
// messages they carry (libqcdm's log-items.h, 3GPP2 C.S0005), the 64-bit
// time stamp, and the MIN of the status reply (C.S0005 2.3.1.1).
#include "link/Cdma1xLogItems.h"
#include "link/DiagEvents.h"
#include "link/DiagIdentity.h"
#include "link/DiagLogPackets.h"
#include "link/DiagLogging.h"
#include "link/DiagPackets.h"
#include "link/DiagTimeStamp.h"
#include "support/Packets.h"

#include <gtest/gtest.h>

using namespace tessaly::link;
using namespace std::chrono_literals;

namespace {

// The stamp 0x0000_0B21_3C5A_8000: tick 0x0B213C5A, two thirds of a tick in.
constexpr uint64_t Stamp = 0x00000B213C5A8000;

} // namespace

TEST(DiagReports, EventReportCarriesEachEventsIdFlagsStampAndPayloadInAllFourSizes)
{
    const QByteArray report = Hex("60" "2300"
                                  "1221" "00805a3c210b0000" "01"             // slotted mode, 1 byte, full stamp
                                  "09c1" "5b3c" "0111"                       // message received, 2 bytes, short stamp
                                  "3061" "00805a3c210b0000" "03" "01a800"    // paging channel acquired, length byte
                                  "4581" "5c3c");                            // power down, no payload, short stamp
    const std::optional<std::vector<DiagEvent>> events = ReadEventReport(report);
    ASSERT_TRUE(events);
    const std::vector<DiagEvent> expected{{EventSlottedMode, Stamp, false, Hex("01")},
                                          {EventMessageReceived, 0x3C5B0000, true, Hex("0111")},
                                          {EventPagingChannelAcquired, Stamp, false, Hex("01a800")},
                                          {EventPowerDown, 0x3C5C0000, true, {}}};
    EXPECT_EQ(*events, expected);
    EXPECT_EQ(EncodeEventReport(expected), report);
    // A short stamp sends bits 16 to 31 of the full one alone.
    EXPECT_EQ(EncodeEventReport({{EventPowerDown, Stamp + (1 << 16), true, {}}}), Hex("60040045815b3c"));

    // Events are passed over while a reply is awaited; a report of none
    // answers the switch.
    EXPECT_FALSE(Answers(EventReportRequest(true), report, false));
    EXPECT_TRUE(Answers(EventReportRequest(true), EncodeEventReport({}), false));
    EXPECT_FALSE(Answers(BareRequest(CmdVersion), report, false));
    EXPECT_EQ(ReadEventReport(EncodeEventReportReply()), std::vector<DiagEvent>{});
}

TEST(DiagReports, EventReportWhoseLengthOrEventsDoNotAddUpIsNoReport)
{
    for (const char* hex : {"6000ff",                        // a length of 0xFF00 with nothing after it
                            "600300" "1221" "00",            // a stamp cut short
                            "600c00" "1261" "00805a3c210b0000" "05" "01", // a payload cut short
                            "600400" "12a1" "5a3c",           // its one byte of payload missing
                            "13" "6000"})                      // another packet
        EXPECT_FALSE(ReadEventReport(Hex(hex))) << hex;
}

TEST(DiagReports, LogPacketCarriesItsHeaderAndThePagingChannelMessageItHeard)
{
    const QByteArray packet = Hex("10" "00" "1100" "1100" "0710" "00805a3c210b0000" "0511149e80");
    const std::optional<LogPacket> log = ReadLogPacket(packet);
    ASSERT_TRUE(log);
    EXPECT_EQ(*log, (LogPacket{0, LogPagingChannelMessage, Stamp, Hex("0511149e80")}));
    EXPECT_EQ(EncodeLogPacket(*log), packet);
    EXPECT_EQ(std::tuple(LogEquipment(log->code), LogItem(log->code)), std::tuple(1u, 7u));
    EXPECT_EQ(ChannelMessageType(log->payload), GeneralPageMessageType);
    EXPECT_EQ(EncodeGeneralPage({5, 9}), log->payload);
    EXPECT_FALSE(Answers(BareRequest(CmdStatus), packet, false));

    // The lengths must agree with each other and with the packet.
    for (const char* hex : {"10001200110007100080" "5a3c210b00000511149e80",
                            "100011001200071000805a3c210b00000511149e80",
                            "100011001100071000805a3c210b00000511149e", "1000"})
        EXPECT_FALSE(ReadLogPacket(Hex(hex))) << hex;
}

TEST(DiagReports, SyncAndSystemParametersMessagesPackTheirFieldsMostSignificantBitFirst)
{
    // Pilot 168, sequence 5, SID 4139, NID 65535, zone 12, one zone with the
    // shortest timer, base station 0x1C2D.
    const QByteArray parameters = Hex("0d01" "540a40affffc0309070b40");
    EXPECT_EQ(EncodeSystemParameters({168, 5, 4139, 65535, 12, 0x1C2D}), parameters);
    const std::optional<SystemParameters> read = ReadSystemParameters(parameters);
    ASSERT_TRUE(read);
    EXPECT_EQ(std::tuple(read->pilotPn, read->configSequence, read->sid, read->nid, read->registrationZone,
                         read->baseId),
              std::tuple(168, 5, 4139, 65535, 12, 0x1C2D));

    // Revision 6, least revision 3, then the same system, then the time
    // fields, zero.
    const QByteArray sync = Hex("1701" "06032057fffea8") + QByteArray(14, '\0');
    EXPECT_EQ(EncodeSyncChannelMessage({6, 3, 4139, 65535, 168}), sync);
    const std::optional<SyncChannelMessage> heard = ReadSyncChannelMessage(sync);
    ASSERT_TRUE(heard);
    EXPECT_EQ(std::tuple(heard->protocolRevision, heard->sid, heard->pilotPn), std::tuple(6, 4139, 168));

    EXPECT_FALSE(ReadSystemParameters(Hex("0e01540a40affffc0309070b40"))) << "a length byte that is not its size";
    EXPECT_FALSE(ReadSystemParameters(EncodeGeneralPage({5, 9}))) << "another message";
    EXPECT_FALSE(ReadSystemParameters(Hex("0401540a"))) << "fields cut short";
}

TEST(DiagReports, TimeStampCountsTicksOfAMillisecondAndAQuarterSinceTheGpsEpochAndChipsWithin)
{
    const DiagClock::time_point gpsEpoch{315964800s};
    EXPECT_EQ(DiagTimeStamp(gpsEpoch + 1250us + 625us), uint64_t(1) << 16 | 24576) << "half a tick in";
    // 18 March 2024, 14:02:37 UTC.
    const DiagClock::time_point day{1710770557s};
    EXPECT_EQ(DiagTimeStamp(day), uint64_t(1394805757) * 800 << 16);
    EXPECT_EQ(TimeOfStamp(DiagTimeStamp(day + 3ms + 7us)), day + 3ms + 7us);
    EXPECT_EQ(TimeOfStamp(Stamp), gpsEpoch + 0x0B213C5A * 1250us + 833us);
}

TEST(DiagReports, StatusCarriesTheMinOfTheDirectoryNumberAsAnalogAndCdma)
{
    // 858 555 0143: MIN2 858 - 111; MIN1 555 - 111, the thousands digit 0
    // counted as 10, 143 - 111. Zeros count as ten in the three-digit groups.
    const std::optional<MobileIdNumber> min = MinOfNumber(u"8585550143");
    ASSERT_TRUE(min);
    EXPECT_EQ(std::tuple(min->min1, min->min2), std::tuple(444u << 14 | 10u << 10 | 32u, 747));
    const std::optional<MobileIdNumber> zeros = MinOfNumber(u"2020000000");
    ASSERT_TRUE(zeros);
    EXPECT_EQ(std::tuple(zeros->min1, zeros->min2), std::tuple(999u << 14 | 10u << 10 | 999u, 191));
    EXPECT_FALSE(MinOfNumber(u"858555014"));
    EXPECT_FALSE(MinOfNumber(u"85855501a3"));

    StationStatus status;
    status.min1 = 0x6F2820;
    status.min2 = 0x02EB;
    const QByteArray reply = EncodeStatus(status);
    EXPECT_EQ(reply.mid(10, 12).toHex(), "20286f0020286f00eb02eb02");
    const StationStatus read = ParseStatus(BareRequest(CmdStatus), reply);
    EXPECT_EQ(std::tuple(read.min1, read.min2), std::tuple(0x6F2820u, 0x02EB));
}
