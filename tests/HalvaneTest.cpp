// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane itself, unattended, against tessaly-emu on a pseudo-terminal: for
// each fault of a real handset, its exit status, what it tells on standard
// error, the emulator's memory afterwards and the backups it leaves.
#include "model/Catalogue.h"
#include "model/NvFile.h"
#include "support/Programs.h"

#include <QFileInfo>

#include <gtest/gtest.h>

using namespace tessaly::model;

namespace {

class HalvaneTest : public HandsetRunTest {
protected:
    // Starts the emulator on the factory items, with `status` for some of
    // them, and gives its terminal's path.
    QString start(const QStringList& faults = {}, const std::map<NvAddress, NvStatus>& status = {})
    {
        Items items;
        for (const auto& [address, data] : Catalogue::BuiltIn().factory())
            items[address] = {address, status.count(address) ? status.at(address) : NvStatus::Done, data};
        return HandsetRunTest::start(items, faults);
    }
    // The emulator's memory now.
    Items memory() const { return read(state(), NvFileKind::Memory); }
    // A backup of the handset with `change` made to it, and its path.
    QString changedBackup(const QString& from, const std::function<void(NvFile&)>& change)
    {
        NvFile file;
        EXPECT_EQ(ReadNvFile(from, NvFileKind::Backup, file), "");
        change(file);
        const QString path = folder.filePath(QStringLiteral("changed.json"));
        EXPECT_EQ(WriteNvFile(path, file), "");
        return path;
    }
};

NvEntry& EntryOf(NvFile& file, NvAddress address)
{
    return *std::find_if(file.entries.begin(), file.entries.end(),
                         [&](const NvEntry& entry) { return entry.address == address; });
}

const NvAddress Mdn{178, 0};
const NvAddress LifeTime{55, -1};
const NvAddress NamName{43, 0};

// A backup's change that a restore writes in two steps: NV item 43, then the MDN.
void ChangeNamNameThenMdn(NvFile& file)
{
    EntryOf(file, NamName).data[1] = 'X';
    EntryOf(file, Mdn).data[1] = '9';
}

} // namespace

TEST_F(HalvaneTest, ReadKeepsABackupOfItemsTheHandsetLacksAndTellsThemOnce)
{
    const QString port = start({}, {{{MeidItem, -1}, NvStatus::NotValid}, {{43, 1}, NvStatus::ReadOnly}});
    const Outcome run = halvane({"--port", port, "--read"});
    EXPECT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_EQ(run.err.count(QLatin1String("halvane: information: The handset does not have 2 of the items")), 1)
        << qPrintable(run.err);
    ASSERT_EQ(backups().size(), 1);
    EXPECT_EQ(run.out.trimmed(), backups()[0]);
    NvFile backup;
    ASSERT_EQ(ReadNvFile(backups()[0], NvFileKind::Backup, backup), "");
    EXPECT_EQ(EntryOf(backup, {MeidItem, -1}).status, NvStatus::NotValid);
}

TEST_F(HalvaneTest, SilentHandsetFailsTheReadOnceNamingItemAndPort)
{
    EXPECT_TRUE(halvane({"--port", "/dev/no-such-port", "--read"}).err.contains(QLatin1String("There is no port")));
    const QString port = start({"--dead-after", "10"});
    const Outcome run = halvane({"--port", port, "--read", "--reply-time", "100"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err.count(QLatin1String("halvane: warning:")), 1) << qPrintable(run.err);
    EXPECT_TRUE(run.err.contains(QStringLiteral("NV Read failed at NV item")));
    EXPECT_TRUE(run.err.contains(QStringLiteral("The handset on %1 does not answer").arg(port))) << qPrintable(run.err);
    EXPECT_TRUE(backups().isEmpty());
}

TEST_F(HalvaneTest, LateDamagedAndUnaskedRepliesAreWaitedThrough)
{
    const QString port = start({"--late", "20:300", "--bad-crc", "9", "--events"});
    const Outcome run = halvane({"--port", port, "--read", "--reply-time", "200"});
    EXPECT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_EQ(run.err.count(QLatin1String("halvane: ")), 0) << qPrintable(run.err);
}

TEST_F(HalvaneTest, RestoreKeepsTheHandsetFirstAndWritesOnlyWhatItMay)
{
    const QString port = start({"--spc", "123456"});
    ASSERT_EQ(halvane({"--port", port, "--read"}).status, 0);
    const QString backup = changedBackup(backups()[0], [](NvFile& file) {
        EntryOf(file, Mdn).data[1] = '9';
        EntryOf(file, LifeTime).data[0] = 1;
        // As a backup of a handset that lacked the item then keeps it: not
        // bytes to write, though this handset holds other ones.
        NvEntry& lacked = EntryOf(file, NamName);
        lacked.status = NvStatus::NotValid;
        lacked.data = {0};
    });
    const Outcome locked = halvane({"--port", port, "--restore-backup", backup});
    EXPECT_EQ(locked.status, 1);
    EXPECT_TRUE(locked.out.contains(QLatin1String("failed (The handset is locked and no SPC was given)")));
    const Outcome run = halvane({"--port", port, "--restore-backup", backup, "--spc", "123456"});
    EXPECT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_TRUE(run.out.contains(QLatin1String("NV item 178 (index 0): restored"))) << qPrintable(run.out);
    EXPECT_TRUE(run.out.contains(QLatin1String("NV item 55: skipped (counter)")));
    EXPECT_TRUE(run.out.contains(QLatin1String("NV item 43 (index 0): skipped (kept with the status")))
        << qPrintable(run.out);
    EXPECT_TRUE(run.out.contains(QLatin1String("NV item 71: unchanged"))) << qPrintable(run.out);
    EXPECT_EQ(backups().size(), 3) << "one read, and what each restore found";
    EXPECT_EQ(memory()[Mdn].data[1], '9');
    EXPECT_EQ(memory()[LifeTime].data, Catalogue::BuiltIn().factory().at(LifeTime));
    EXPECT_EQ(memory()[NamName].data, Catalogue::BuiltIn().factory().at(NamName));

    // What the handset held is kept before the first write: the old MDN.
    static const QRegularExpression kept(QStringLiteral("What the handset held before is kept in (\\S+)"));
    const QRegularExpressionMatch match = kept.match(run.out);
    ASSERT_TRUE(match.hasMatch()) << qPrintable(run.out);
    EXPECT_EQ(read(match.captured(1), NvFileKind::Backup)[Mdn].data, Catalogue::BuiltIn().factory().at(Mdn));
}

TEST_F(HalvaneTest, BackupOfAnotherHandsetOrWithABadEntryIsRefusedBeforeAnyWrite)
{
    const QString port = start();
    ASSERT_EQ(halvane({"--port", port, "--read"}).status, 0);
    // Either half of the identity differing is another handset.
    for (const char* field : {"esn", "meid"}) {
        const QString backup = changedBackup(backups()[0], [field](NvFile& file) {
            EntryOf(file, Mdn).data[1] = '9';
            QString identity = file.fields[QLatin1String(field)].toString();
            identity.back() = identity.back() == u'0' ? u'1' : u'0';
            file.fields[QLatin1String(field)] = identity;
        });
        EXPECT_TRUE(halvane({"--port", port, "--restore-backup", backup}).err.contains(QLatin1String("another handset")))
            << field;
    }
    const QString backup = changedBackup(backups()[0], [](NvFile& file) { EntryOf(file, Mdn).data[1] = '9'; });
    QFile text(backup);
    ASSERT_TRUE(text.open(QIODevice::ReadWrite));
    const QByteArray bad = text.readAll().replace("\"item\": 82,", "\"item\": 70000,");
    text.resize(0);
    text.write(bad);
    text.close();
    const Outcome run = halvane({"--port", port, "--restore-backup", backup});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains(QLatin1String("is refused: its entry"))) << qPrintable(run.err);
    EXPECT_EQ(memory()[Mdn].data, Catalogue::BuiltIn().factory().at(Mdn));
}

TEST_F(HalvaneTest, WriteThatReadsBackDifferentStopsTheRestoreAndEveryOutcomeIsTold)
{
    const QString port = start({"--garble", "43"});
    ASSERT_EQ(halvane({"--port", port, "--read"}).status, 0);
    const QString backup = changedBackup(backups()[0], ChangeNamNameThenMdn);
    const Outcome run = halvane({"--port", port, "--restore-backup", backup});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.out.contains(QLatin1String("NV item 43 (index 0): failed (NV item 43 (index 0) reads back different")))
        << qPrintable(run.out);
    EXPECT_TRUE(run.out.contains(QLatin1String("NV item 178 (index 0): not written (the restore stopped at NV item 43")));
    EXPECT_EQ(memory()[Mdn].data, Catalogue::BuiltIn().factory().at(Mdn));
}

TEST_F(HalvaneTest, LineDyingMidRestoreTellsEveryOutcome)
{
    const auto reads = qsizetype(Catalogue::BuiltIn().addresses().size());
    // The read asks four questions of the handset's identity before its
    // items; the restore reads the items, then writes and reads back one.
    const QString port = start({"--dead-after", QString::number((reads + 4) + reads + 2)});
    ASSERT_EQ(halvane({"--port", port, "--read"}).status, 0);
    const QString backup = changedBackup(backups()[0], ChangeNamNameThenMdn);
    const Outcome run = halvane({"--port", port, "--restore-backup", backup, "--reply-time", "100"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.out.contains(QLatin1String("NV item 43 (index 0): restored"))) << qPrintable(run.out);
    EXPECT_TRUE(run.out.contains(QLatin1String("NV item 178 (index 0): failed (The handset on"))) << qPrintable(run.out);
    EXPECT_EQ(memory()[NamName].data[1], 'X');
}

TEST_F(HalvaneTest, UnattendedScreenshotTellsEachBoxOnceAndNeverWaits)
{
    const QString picture = folder.filePath(QStringLiteral("nam1.png"));
    QFile damaged(state());
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("{\"format\": \"Halvane NV memory\", \"version\": 1, \"items\": [{\"item\": 178, \"data\": 7}]}");
    damaged.close();
    Outcome run = halvane({"--state", state(), "--page", "System NAM1", "--edit", "1,1", "--screenshot", picture});
    EXPECT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_EQ(run.err.count(QLatin1String("was damaged")), 1) << qPrintable(run.err);
    EXPECT_TRUE(run.err.contains(QLatin1String("halvane: message: LOCK_CODE would be changed according to MDN")));
    EXPECT_TRUE(QFileInfo::exists(picture));

    run = halvane({"--state", state(), "--page", "Nowhere"});
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(run.err.contains(QLatin1String("System NAM1, System NAM2"))) << qPrintable(run.err);
}

TEST_F(HalvaneTest, InfoPrintsWhatTheHandsetSaysOfItselfWithOrWithoutBuildId)
{
    Outcome run = halvane({"--port", start(), "--info"});
    EXPECT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_EQ(run.out, "Model: Halvane SIM-800\nSoftware version: HV800-2.31.07\nCompiled: Mar 18 2024 14:02:37\n"
                       "Released: Mar 20 2024 09:30:00\nESN: 8F3A21C4\nMEID: A0000031F4C2D9\n");
    // An older handset: its version reply's fields, and no MEID.
    run = halvane({"--port", start({"--model", "SIM-300"}), "--info"});
    EXPECT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_EQ(run.out, "Model: HV300 (model 30)\nSoftware version: HV300 rev 112\nCompiled: Jun 02 2005 11:47:10\n"
                       "Released: Jun 03 2005 16:00:00\nESN: 8F3A21C4\n");
    EXPECT_EQ(halvane({"--info"}).status, 2) << "it needs a port";
}

// halvane reads and restores over and over against a handset whose line
// makes every fault at random. After each run every item the handset holds
// is whole, its old bytes or the restore's; a run that fails names the item
// it stopped at; none hangs (the helper bounds each run). TESSALY_CHAOS_RUNS
// makes the run longer than the few of the normal test run, and
// TESSALY_CHAOS_SEED picks another schedule.
TEST_F(HalvaneTest, ChaosRunLeavesEveryItemWholeAndTellsEveryFailure)
{
    const int runs = qEnvironmentVariableIsSet("TESSALY_CHAOS_RUNS") ? qEnvironmentVariableIntValue("TESSALY_CHAOS_RUNS")
                                                                     : 4;
    const QString seed = qEnvironmentVariable("TESSALY_CHAOS_SEED", QStringLiteral("21"));
    ASSERT_EQ(halvane({"--port", start(), "--read"}).status, 0); // the backup to restore, on a quiet line
    const QString base = backups()[0];
    const QString port = start({"--chaos", seed});

    int failed = 0;
    for (int run = 0; run < runs; ++run) {
        const bool restore = run % 2 == 1;
        Items target;
        QStringList arguments{"--port", port, "--reply-time", "400"};
        if (restore) {
            const char mark = run % 4 == 1 ? 'X' : 'Y';
            const QString backup = changedBackup(base, [mark](NvFile& file) {
                EntryOf(file, NamName).data[1] = mark;
                EntryOf(file, {43, 1}).data[2] = mark;
                EntryOf(file, Mdn).data[1] = mark == 'X' ? '9' : '7';
            });
            target = read(backup, NvFileKind::Backup);
            arguments << "--restore-backup" << backup;
        } else {
            arguments << "--read";
        }
        const Items before = memory();
        const Outcome outcome = halvane(arguments);
        const Items after = memory();
        ASSERT_EQ(after.size(), before.size()) << "run " << run;
        for (const auto& [address, entry] : after) {
            const bool old = entry.data == before.at(address).data;
            const bool written = target.count(address) && entry.data == target.at(address).data;
            EXPECT_TRUE(old || written) << qPrintable(Describe(address)) << " torn in run " << run;
        }
        if (outcome.status != 0) {
            ++failed;
            EXPECT_TRUE((outcome.out + outcome.err).contains(QLatin1String("NV item")))
                << "run " << run << " failed without naming its item:\n" << qPrintable(outcome.out + outcome.err);
        }
    }
    RecordProperty("failedRuns", failed);
}
