// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// What tessaly-emu sends on its own, read off the line as a capture tool
// reads it and decoded with the link's decoders: event reports only while
// reporting is on, log packets only for the codes a mask turns on, masks
// that keep the handset's range, and the call manager and status replies
// that agree with each other.
#include "link/Cdma1xLogItems.h"
#include "link/DiagControl.h"
#include "link/DiagEvents.h"
#include "link/DiagIdentity.h"
#include "link/DiagLogPackets.h"
#include "link/DiagLogging.h"
#include "link/DiagPackets.h"
#include "link/DiagSubsystem.h"
#include "link/DiagTimeStamp.h"
#include "link/SerialLink.h"
#include "model/Catalogue.h"
#include "model/NvFile.h"
#include "support/Emulator.h"
#include "support/Packets.h"

#include <QDeadlineTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

using namespace tessaly;
using namespace tessaly::link;
using namespace std::chrono_literals;

namespace {

class EmulatorReportsTest : public ::testing::Test {
protected:
    // The emulator on the factory items, reporting every 5 ms once on.
    std::unique_ptr<SerialLink> start(const QStringList& arguments = {})
    {
        model::NvFile file;
        for (const auto& [address, data] : model::Catalogue::BuiltIn().factory())
            file.entries.push_back({address, model::NvStatus::Done, data});
        return std::make_unique<SerialLink>(
            emulator.startOn(folder.filePath(QStringLiteral("handset.json")), file,
                             QStringList{QStringLiteral("--report-pace"), QStringLiteral("5")} + arguments),
            1000ms);
    }

    // The frames that come in until `enough` says so of them, or until
    // `within` has passed.
    static std::vector<QByteArray> collect(SerialLink& line, std::chrono::milliseconds within,
                                           const std::function<bool(const std::vector<QByteArray>&)>& enough)
    {
        std::vector<QByteArray> frames;
        const QDeadlineTimer deadline(within);
        while (!deadline.hasExpired() && !enough(frames)) {
            int damaged = 0;
            for (QByteArray& frame : line.receive(20ms, damaged))
                frames.push_back(std::move(frame));
            EXPECT_EQ(damaged, 0);
        }
        return frames;
    }
    // Whatever comes in over forty paces: nothing, where nothing is to come.
    static std::vector<QByteArray> quiet(SerialLink& line)
    {
        return collect(line, 200ms, [](const auto&) { return false; });
    }
    // Sends `request` and collects its reply and what comes after it until
    // a frame is `awaited`; gives that frame, or nothing. (A report that
    // follows the reply closely may come in with it.)
    static QByteArray exchange(SerialLink& line, const QByteArray& request,
                               const std::function<bool(const QByteArray&)>& awaited)
    {
        line.send(request);
        const std::vector<QByteArray> frames = collect(line, 5s, [&](const std::vector<QByteArray>& frames) {
            return std::any_of(frames.begin(), frames.end(), awaited);
        });
        const auto found = std::find_if(frames.begin(), frames.end(), awaited);
        return found == frames.end() ? QByteArray() : *found;
    }
    static std::function<bool(const std::vector<QByteArray>&)> atLeast(int count)
    {
        return [count](const std::vector<QByteArray>& frames) { return int(frames.size()) >= count; };
    }

    QTemporaryDir folder;
    Emulator emulator;
};

std::vector<DiagEvent> EventsIn(const std::vector<QByteArray>& frames)
{
    std::vector<DiagEvent> events;
    for (const QByteArray& frame : frames) {
        const std::optional<std::vector<DiagEvent>> report = ReadEventReport(frame);
        EXPECT_TRUE(report && !report->empty()) << frame.toHex().constData();
        if (report)
            events.insert(events.end(), report->begin(), report->end());
    }
    return events;
}

} // namespace

TEST_F(EmulatorReportsTest, EventReportsComeOnlyWhileReportingIsOnAndTellAModeChange)
{
    const auto line = start();
    EXPECT_EQ(quiet(*line).size(), 0u) << "reporting is off";
    ASSERT_EQ(line->transact(EventReportRequest(true)), Hex("600000"));

    const std::vector<DiagEvent> idle = EventsIn(collect(*line, 5s, atLeast(8)));
    ASSERT_GE(idle.size(), 8u);
    // Each report opens with a full stamp of now; an idle handset wakes for
    // its slot and hears pages.
    ASSERT_FALSE(idle.front().shortTime);
    EXPECT_LT(std::chrono::abs(TimeOfStamp(idle.front().time) - DiagClock::now()), 60s);
    EXPECT_TRUE(std::any_of(idle.begin(), idle.end(), [](const DiagEvent& event) {
        return event.id == EventMessageReceived && event.payload == Hex("0111");
    }));

    const auto modeTold = [](const QByteArray& frame) {
        const std::optional<std::vector<DiagEvent>> report = ReadEventReport(frame);
        return report && !report->empty() && report->front().id == EventOperatingModeChange;
    };
    QByteArray frame = exchange(*line, ControlRequest(ControlMode::OfflineDigital), modeTold);
    ASSERT_TRUE(modeTold(frame));
    const std::vector<DiagEvent> told = *ReadEventReport(frame);
    EXPECT_EQ(told, (std::vector<DiagEvent>{{EventOperatingModeChange, told.front().time, false,
                                             QByteArray(1, char(ControlMode::OfflineDigital))}}));
    frame = exchange(*line, ControlRequest(ControlMode::Online), modeTold);
    ASSERT_TRUE(modeTold(frame));
    const std::vector<DiagEvent> back = *ReadEventReport(frame);
    ASSERT_EQ(back.size(), 6u) << "the mode, the paging channel, SID, NID, channel, registration";
    EXPECT_EQ(back[2], (DiagEvent{EventSidChange, back[2].time, true, Hex("2b10")})) << "SID 4139 found again";
    EXPECT_EQ(back[5], (DiagEvent{EventRegistration, back[5].time, true, Hex("01")})) << "a power-up registration";

    ASSERT_EQ(line->transact(EventReportRequest(false)), Hex("600000"));
    EXPECT_EQ(quiet(*line).size(), 0u) << "reporting is off again";
}

TEST_F(EmulatorReportsTest, EventsFaultSendsRealReportsUnaskedUntilATurnsThemOff)
{
    const auto line = start({"--events"});
    EXPECT_GE(EventsIn(collect(*line, 5s, atLeast(3))).size(), 3u) << "left on by an earlier client";
    ASSERT_EQ(line->transact(EventReportRequest(false)), Hex("600000"));
    EXPECT_EQ(ParseVersion(BareRequest(CmdVersion), line->transact(BareRequest(CmdVersion))).versionDirectory, "HV800");
    EXPECT_EQ(quiet(*line).size(), 0u) << "none before a reply either";
}

TEST_F(EmulatorReportsTest, LogPacketsComeForTheCodesAMaskTurnsOnWhichKeepsTheHandsetsRange)
{
    const auto line = start();
    const QByteArray ranges = LogConfigRequest(LogRetrieveRanges);
    const std::array<uint32_t, 16> last = ParseLogConfig(ranges, line->transact(ranges)).lastItems;
    EXPECT_EQ(last, (std::array<uint32_t, 16>{0, 0x5FF})) << "1X alone on a CDMA handset";
    EXPECT_EQ(quiet(*line).size(), 0u) << "every code off";

    // The paging channel (item 7) of 46 items set; the mask read back spans
    // the handset's range.
    QByteArray bits(6, '\0');
    bits[0] = char(0x80);
    bits[5] = char(0x3F);
    const QByteArray set = LogConfigRequest(LogSetMask, {1, 46, bits});
    const LogConfig taken = ParseLogConfig(set, line->transact(set));
    const QByteArray get = LogConfigRequest(LogGetMask, {1, 0, {}});
    const LogConfig kept = ParseLogConfig(get, line->transact(get));
    EXPECT_EQ(kept.mask.items, 0x600u);
    EXPECT_EQ(kept.mask.bits, bits + QByteArray(0xC0 - 6, '\0'));
    EXPECT_EQ(taken.mask.bits, kept.mask.bits);

    const std::vector<QByteArray> heard = collect(*line, 5s, atLeast(6));
    ASSERT_GE(heard.size(), 6u);
    int parameters = 0;
    for (const QByteArray& frame : heard) {
        const std::optional<LogPacket> log = ReadLogPacket(frame);
        ASSERT_TRUE(log) << frame.toHex().constData();
        EXPECT_EQ(log->code, LogPagingChannelMessage);
        if (const std::optional<SystemParameters> message = ReadSystemParameters(log->payload)) {
            ++parameters;
            EXPECT_EQ(std::tuple(message->sid, message->nid), std::tuple(4139, 65535));
        } else {
            EXPECT_EQ(ChannelMessageType(log->payload), GeneralPageMessageType);
        }
    }
    EXPECT_GE(parameters, 1);

    // The sync channel by the extended mask, heard when the handset finds
    // its system again.
    ExtendedLogMask extended{8, QByteArray(1, char(0xC0))};
    EXPECT_EQ(ReadExtendedLogMask(line->transact(EncodeExtendedLogMask(extended)))->bits, 0x600);
    const QByteArray offline = ControlRequest(ControlMode::OfflineDigital);
    ParseControl(offline, line->transact(offline));
    const QByteArray acquired = exchange(*line, ControlRequest(ControlMode::Online), [](const QByteArray& frame) {
        const std::optional<LogPacket> log = ReadLogPacket(frame);
        return log && log->code == LogSyncChannelMessage;
    });
    ASSERT_TRUE(ReadLogPacket(acquired));
    EXPECT_EQ(ReadLogPacket(acquired)->pending, 1) << "the paging channel's packet behind it";
    const std::optional<SyncChannelMessage> sync = ReadSyncChannelMessage(ReadLogPacket(acquired)->payload);
    ASSERT_TRUE(sync);
    EXPECT_EQ(std::tuple(sync->sid, sync->pilotPn), std::tuple(4139, 168));

    const QByteArray off = LogConfigRequest(LogDisable);
    EXPECT_EQ(ParseLogConfig(off, line->transact(off)).status, 0u);
    EXPECT_EQ(quiet(*line).size(), 0u) << "logging off";
}

TEST_F(EmulatorReportsTest, CallManagerAndStatusTellOneIdleHandsetInTheirOwnCodesAndTheFactoryPasswordOpens)
{
    const auto line = start();
    const QByteArray state = SubsystemRequest(SubsysCallManager, CallManagerStateInfo);
    const CallManagerState manager = ParseCallManagerState(state, line->transact(state));
    EXPECT_EQ(std::tuple(manager.callState, manager.operatingMode, manager.systemMode, manager.modePreference),
              std::tuple(0u, 5u, 2u, 2u))
        << "idle, online, CDMA, automatic";
    const StationStatus status = ParseStatus(BareRequest(CmdStatus), line->transact(BareRequest(CmdStatus)));
    EXPECT_EQ(status.cdmaRxState, RxPagingChannel) << "idle on the paging channel";
    EXPECT_EQ(std::tuple(status.min1, status.min2), std::tuple(0x6F2820u, 747)) << "of 858 555 0143";

    EXPECT_TRUE(ParsePassword(PasswordRequest(QStringLiteral("FFFFFFFFFFFFFFFE")),
                              line->transact(PasswordRequest(QStringLiteral("FFFFFFFFFFFFFFFE")))));
    EXPECT_FALSE(ParsePassword(PasswordRequest(QStringLiteral("0000000000000000")),
                               line->transact(PasswordRequest(QStringLiteral("0000000000000000")))));

    const QByteArray wcdma = LogConfigRequest(LogGetMask, {4, 0, {}});
    EXPECT_NE(ParseLogConfig(wcdma, line->transact(wcdma)).status, 0u) << "no WCDMA equipment";
}
