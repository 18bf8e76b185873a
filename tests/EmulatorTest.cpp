// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// tessaly-emu as the handset of a model, over a real pseudo-terminal: the
// SPC lock on mode changes, a reset that takes the line silent and keeps the
// memory, NV items by subscription, the older model's "bad command"s, and
// the configuration a tool sets and reads back.
#include "link/DiagControl.h"
#include "link/DiagIdentity.h"
#include "link/DiagLogging.h"
#include "link/DiagPackets.h"
#include "link/DiagSubsystem.h"
#include "link/SerialLink.h"
#include "model/Catalogue.h"
#include "model/NvFile.h"
#include "support/Emulator.h"
#include "support/RuntimeErrors.h"

#include <tessaly/TessalyError.h>

#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

using namespace tessaly;
using namespace tessaly::link;
using namespace std::chrono_literals;

namespace {

class EmulatorTest : public ::testing::Test {
protected:
    // Starts the emulator with `arguments` on a state file of the factory
    // items and `handset` as its handset's fields; gives a link to it.
    std::unique_ptr<SerialLink> start(const QStringList& arguments = {}, const QJsonObject& handset = {})
    {
        const QString state = folder.filePath(QStringLiteral("handset.json"));
        model::NvFile file;
        if (!handset.isEmpty())
            file.fields[QLatin1String("handset")] = handset;
        for (const auto& [address, data] : model::Catalogue::BuiltIn().factory())
            file.entries.push_back({address, model::NvStatus::Done, data});
        return std::make_unique<SerialLink>(emulator.startOn(state, file, arguments), 300ms);
    }

    QTemporaryDir folder;
    Emulator emulator;
};

} // namespace

TEST_F(EmulatorTest, ModeChangesWaitForTheSpcAndResetKeepsTheMemoryAfterASilence)
{
    const auto line = start({"--spc", "123456"});
    const auto control = [&](ControlMode mode) {
        const QByteArray request = ControlRequest(mode);
        return ErrorNumberOf<TessalyError>([&] { ParseControl(request, line->transact(request)); });
    };
    EXPECT_EQ(control(ControlMode::OfflineDigital), errSpcLocked);
    ASSERT_TRUE(ParseSpc(SpcRequest(QStringLiteral("123456")), line->transact(SpcRequest(QStringLiteral("123456")))));
    EXPECT_EQ(control(ControlMode::Reset), errHandsetRefused) << "a reset only from offline";
    EXPECT_EQ(control(ControlMode::OfflineDigital), 0);

    model::NvData mdn = model::Catalogue::BuiltIn().factory().at({178, 0});
    mdn[1] = '9';
    const QByteArray write = NvItemRequest(CmdNvWrite, 178, mdn);
    EXPECT_EQ(ParseNvItem(write, line->transact(write, true)).status, 0);
    EXPECT_EQ(control(ControlMode::Reset), 0);
    // Starting again, the handset says nothing, then comes back locked with
    // what was written.
    EXPECT_NE(ErrorNumberOf<TessalyError>([&] { line->transact(BareRequest(CmdVersion)); }), 0);
    QThread::msleep(1200);
    EXPECT_EQ(ParseVersion(BareRequest(CmdVersion), line->transact(BareRequest(CmdVersion))).versionDirectory, "HV800");
    EXPECT_EQ(ErrorNumberOf<TessalyError>([&] { ParseNvItem(write, line->transact(write, true)); }), errSpcLocked);
    model::NvData index0{};
    const QByteArray read = NvItemRequest(CmdNvRead, 178, index0);
    EXPECT_EQ(ParseNvItem(read, line->transact(read, true)).data[1], '9');
}

TEST_F(EmulatorTest, NvItemsBySubscriptionReadAndWriteTheIndexedItem)
{
    const auto line = start();
    SubscriptionNvItem asked;
    asked.item = 178;
    asked.data[0] = 1;
    const QByteArray read = EncodeSubscriptionNv(NvReadBySubscription, asked);
    const SubscriptionNvItem mdn = ParseSubscriptionNv(read, line->transact(read, true));
    EXPECT_EQ(mdn.status, 0);
    EXPECT_EQ(mdn.data[0], 1);
    EXPECT_EQ(QByteArray(reinterpret_cast<const char*>(mdn.data.data()) + 1, 10), "6195550172");

    SubscriptionNvItem changed = mdn;
    changed.data[10] = '9';
    const QByteArray write = EncodeSubscriptionNv(NvWriteBySubscription, changed);
    EXPECT_EQ(ParseSubscriptionNv(write, line->transact(write, true)).status, 0);
    model::NvData index1{};
    index1[0] = 1;
    const QByteArray plain = NvItemRequest(CmdNvRead, 178, index1);
    EXPECT_EQ(ParseNvItem(plain, line->transact(plain, true)).data[10], '9') << "one memory for both forms";

    asked.subscription = 1; // a second subscription this handset does not have
    const QByteArray other = EncodeSubscriptionNv(NvReadBySubscription, asked);
    EXPECT_EQ(ParseSubscriptionNv(other, line->transact(other, true)).status, uint16_t(model::NvStatus::BadParameter));

    const QByteArray state = SubsystemRequest(SubsysCallManager, CallManagerStateInfo);
    EXPECT_EQ(ParseCallManagerState(state, line->transact(state)).operatingMode, 5u) << "online";
}

TEST_F(EmulatorTest, OlderModelAnswersWhatItLacksWithBadCommandEchoingTheRequest)
{
    const auto line = start({"--model", "SIM-300"}, {{"model", "Bench SIM-300"}, {"firmwareRevision", 113}});
    const QByteArray build = BareRequest(CmdExtBuildId);
    EXPECT_EQ(line->transact(build), QByteArray(1, char(CmdBadCommand)) + build);
    const QByteArray nv = EncodeSubscriptionNv(NvReadBySubscription, {});
    EXPECT_EQ(line->transact(nv), QByteArray(1, char(CmdBadCommand)) + nv);
    // Its lack of an MEID and its version reply show in halvane's --info.
    EXPECT_EQ(ParseVersion(BareRequest(CmdVersion), line->transact(BareRequest(CmdVersion))).firmwareRevision, 113)
        << "from the state file";
    // A command no handset knows, on any model.
    const QByteArray unknown = QByteArray::fromHex("3a0102");
    EXPECT_EQ(line->transact(unknown), QByteArray(1, char(CmdBadCommand)) + unknown);
}

TEST_F(EmulatorTest, LogAndMessageMasksAreKeptAsSet)
{
    const auto line = start();
    const QByteArray events = EventReportRequest(true);
    EXPECT_EQ(line->transact(events), EncodeEventReportReply());

    const QByteArray ranges = LogConfigRequest(LogRetrieveRanges);
    const uint32_t last = ParseLogConfig(ranges, line->transact(ranges)).lastItems[1];
    ASSERT_GT(last, 16u);
    const QByteArray set = LogConfigRequest(LogSetMask, {1, 16, QByteArray::fromHex("0180")});
    EXPECT_EQ(ParseLogConfig(set, line->transact(set)).status, 0u);
    const QByteArray get = LogConfigRequest(LogGetMask, {1, 0, {}});
    const LogConfig mask = ParseLogConfig(get, line->transact(get));
    EXPECT_EQ(std::tuple(mask.mask.items, mask.mask.bits.left(2)),
              std::tuple(last + 1, QByteArray::fromHex("0180")))
        << "the handset's whole range";
    const QByteArray unknownEquipment = LogConfigRequest(LogGetMask, {3, 0, {}});
    EXPECT_NE(ParseLogConfig(unknownEquipment, line->transact(unknownEquipment)).status, 0u);

    const QByteArray extended = EncodeExtendedLogMask({0, {}});
    EXPECT_GT(ReadExtendedLogMask(line->transact(extended))->bits, 0);

    MessageConfig all;
    all.operation = MsgSetAllMasks;
    all.masks = {0x1E};
    line->transact(MessageConfigRequest(all));
    MessageConfig some;
    some.operation = MsgRetrieveMasks;
    some.range = {500, 501};
    const MessageConfig masks = ParseMessageConfig(MessageConfigRequest(some), line->transact(MessageConfigRequest(some)));
    EXPECT_EQ(masks.status, 1);
    EXPECT_EQ(masks.masks, (std::vector<uint32_t>{0x1E, 0x1E}));
}

TEST_F(EmulatorTest, HandsetFieldOfTheWrongKindOrAnUnknownModelStopsItWithTheReason)
{
    const QString state = folder.filePath(QStringLiteral("handset.json"));
    model::NvFile file;
    file.fields[QLatin1String("handset")] = QJsonObject{{"modelNumber", "sixty"}};
    ASSERT_EQ(model::WriteNvFile(state, file), "");
    emulator.start(QStringLiteral(TESSALY_EMU), {"--state", state});
    ASSERT_TRUE(emulator.waitForFinished(5000));
    EXPECT_EQ(emulator.exitCode(), 1);
    EXPECT_TRUE(emulator.readAllStandardError().contains("\"modelNumber\" is not a number"));

    emulator.start(QStringLiteral(TESSALY_EMU), {"--state", state, "--model", "SIM-900"});
    ASSERT_TRUE(emulator.waitForFinished(5000));
    EXPECT_EQ(emulator.exitCode(), 2);
    EXPECT_TRUE(emulator.readAllStandardError().contains("SIM-800, SIM-300"));
}
