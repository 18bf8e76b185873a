// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane on a bench of handsets from the command line: every handset backed
// up at once, one that falls silent or is not there costing the others
// nothing; each handset given its own backup back from a folder; lists that
// name a device twice, and benches where no handset answers, refused; "all"
// finding every emulated handset while each sends its reports and logs.
#include "model/Catalogue.h"
#include "model/NvFile.h"
#include "support/Programs.h"

#include <QFileInfo>
#include <QSet>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace tessaly::model;

namespace {

// The factory's items, with the ESN `esn`, and items 3999 and 4000 beyond the
// catalogue, `first` the first byte of 4000's value.
NvFile Handset(uint32_t esn, uint8_t first = 0)
{
    NvFile file;
    for (auto [address, data] : Catalogue::BuiltIn().factory()) {
        if (address.item == EsnItem)
            for (int i = 0; i < 4; ++i)
                data[size_t(i)] = uint8_t(esn >> (8 * i));
        file.entries.push_back({address, NvStatus::Done, data});
    }
    file.entries.push_back({{3999, -1}, NvStatus::Done, {0x40}});
    file.entries.push_back({{4000, -1}, NvStatus::Done, {first}});
    return file;
}

class BenchCommandTest : public HandsetRunTest {
protected:
    // Starts handset `n` of the bench with the ESN `esn`; gives its terminal.
    QString plug(size_t n, uint32_t esn, uint8_t first = 0, const QStringList& faults = {})
    {
        while (bench.size() <= n)
            bench.push_back(std::make_unique<Emulator>());
        return bench[n]->startOn(stateOf(n), Handset(esn, first), faults);
    }
    QString stateOf(size_t n) const { return folder.filePath(QStringLiteral("handset-%1.json").arg(n)); }
    // The first byte of item 4000 on handset `n`.
    uint8_t firstByteOn(size_t n) const { return read(stateOf(n), NvFileKind::Memory).at({4000, -1}).data[0]; }

    std::vector<std::unique_ptr<Emulator>> bench;
};

TEST_F(BenchCommandTest, EveryHandsetIsBackedUpOnItsOwnAndOneThatFailsCostsTheOthersNothing)
{
    const QString a = plug(0, 0x11111111);
    const QString b = plug(1, 0x22222222);
    const QString silent = plug(2, 0x33333333, 0, {"--dead-after", "400"});
    const QString missing = folder.filePath(QStringLiteral("ttyUSB9"));
    const QStringList ports{a, b, silent, missing};
    const Outcome run = halvane({"--port", ports.join(','), "--read", "--items", "0-3999", "--no-files", "--reply-time",
                                 "300", "--json"});
    EXPECT_EQ(run.status, 1) << "one handset failed";

    const QJsonArray handsets = QJsonDocument::fromJson(run.out.toUtf8()).array();
    ASSERT_EQ(handsets.size(), 4) << qPrintable(run.out) << qPrintable(run.err);
    const char* esns[] = {"11111111", "22222222", "33333333"};
    for (int i = 0; i < 4; ++i) {
        const QJsonObject handset = handsets[i].toObject();
        SCOPED_TRACE(qPrintable(QJsonDocument(handset).toJson()));
        EXPECT_EQ(handset["port"].toString(), ports[i]) << "in the order given";
        EXPECT_EQ(handset["succeeded"].toBool(), i < 2);
        if (i < 3) {
            EXPECT_EQ(handset["esn"].toString(), esns[i]);
        }
    }
    for (int i = 0; i < 2; ++i) {
        const QString backup = handsets[i].toObject()["backup"].toString();
        EXPECT_TRUE(QFileInfo(backup).fileName().startsWith(esns[i])) << qPrintable(backup);
        EXPECT_EQ(read(backup, NvFileKind::FullBackup).count({3999, -1}), 1u) << "the whole range was kept";
    }
    EXPECT_TRUE(handsets[2].toObject()["backup"].isNull()) << "a scan that stopped keeps nothing";
    EXPECT_TRUE(handsets[2].toObject()["outcome"].toString().contains(silent));
    EXPECT_TRUE(handsets[3].toObject()["outcome"].toString().contains(missing));
    EXPECT_EQ(backups().size(), 2);

    // Without --json, one line per handset after what each had to tell.
    const Outcome text = halvane({"--port", QStringList{a, b}.join(','), "--read"});
    EXPECT_EQ(text.status, 0) << qPrintable(text.err);
    const QStringList lines = text.out.trimmed().split('\n');
    ASSERT_EQ(lines.size(), 2) << qPrintable(text.out);
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(lines[i].startsWith(QStringList{a, b}[i])) << qPrintable(lines[i]);
        EXPECT_TRUE(lines[i].contains(QString::fromLatin1(esns[i]).toUpper())) << qPrintable(lines[i]);
        EXPECT_TRUE(lines[i].contains(QLatin1String("backed up"))) << qPrintable(lines[i]);
    }
}

TEST_F(BenchCommandTest, EachHandsetGetsItsOwnBackupBackFromAFolderAndNoOtherOne)
{
    const QString a = plug(0, 0xAAAA0001, 0xA1);
    const QString b = plug(1, 0xBBBB0002, 0xB1);
    const Outcome saved = halvane({"--port", a + ',' + b, "--read", "--items", "3990-4010", "--no-files"});
    ASSERT_EQ(saved.status, 0) << qPrintable(saved.out) << qPrintable(saved.err);
    const QString kept = folder.filePath(QStringLiteral("data/Halvane/backups"));

    // After repairs, each handset holds other bytes; a third has no backup.
    plug(0, 0xAAAA0001, 0xA2);
    plug(1, 0xBBBB0002, 0xB2);
    const QString c = plug(2, 0xCCCC0003, 0xC1);
    const Outcome restored = halvane({"--port", QStringList{a, b, c}.join(','), "--restore-backup", kept,
                                      "--all-items", "--json"});
    EXPECT_EQ(restored.status, 1) << "the third handset had no backup";
    const QJsonArray handsets = QJsonDocument::fromJson(restored.out.toUtf8()).array();
    ASSERT_EQ(handsets.size(), 3) << qPrintable(restored.out) << qPrintable(restored.err);
    EXPECT_EQ(firstByteOn(0), 0xA1);
    EXPECT_EQ(firstByteOn(1), 0xB1);
    EXPECT_EQ(firstByteOn(2), 0xC1);
    EXPECT_TRUE(handsets[0].toObject()["succeeded"].toBool());
    EXPECT_TRUE(handsets[1].toObject()["backup"].toString().contains(QLatin1String("BBBB0002")));
    EXPECT_TRUE(handsets[2].toObject()["outcome"].toString().startsWith(QLatin1String("no backup of this handset")));

    // A folder where nothing belongs to a handset on the bench is told so.
    QDir(kept).removeRecursively();
    ASSERT_EQ(halvane({"--port", c, "--read"}).status, 0);
    const Outcome none = halvane({"--port", a + ',' + b, "--restore-backup", kept});
    EXPECT_EQ(none.status, 1);
    EXPECT_TRUE(none.err.contains(QLatin1String("belongs to a handset on the bench"))) << qPrintable(none.err);
    EXPECT_EQ(firstByteOn(0), 0xA1) << "nothing written";
}

TEST_F(BenchCommandTest, ListsNamingADeviceTwiceOrNoCommandAndBenchesWithoutHandsetsAreRefused)
{
    const QString a = plug(0, 0x11111111);
    for (const QStringList& wrong : {QStringList{"--port", a + ',' + a, "--read"}, {"--port", a + ",," + a, "--info"},
                                     {"--port", a + ",all", "--info"}, {"--port", a + ",/dev/null"}}) {
        const Outcome refused = halvane(wrong);
        EXPECT_EQ(refused.status, 2) << qPrintable(wrong.join(' '));
        EXPECT_FALSE(refused.err.isEmpty());
    }
    EXPECT_TRUE(halvane({"--port", a + ',' + a, "--read"}).err.contains(QLatin1String("names " + a.toLatin1() + " twice")));
    EXPECT_TRUE(backups().isEmpty());

    QProcessEnvironment bare;
    bare.insert(QStringLiteral("TESSALY_SYSTEM_ROOT"), folder.filePath(QStringLiteral("empty")));
    bare.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder.filePath(QStringLiteral("empty")));
    QDir(folder.path()).mkdir(QStringLiteral("empty"));
    const Outcome nobody = RunHalvane(folder.path(), {"--port", "all", "--info"}, bare);
    EXPECT_EQ(nobody.status, 1);
    EXPECT_TRUE(nobody.err.contains(QLatin1String("There is no serial port"))) << qPrintable(nobody.err);
}

TEST_F(BenchCommandTest, AllTakesEveryEmulatedHandsetThatAnswersThroughItsReportsAndLogs)
{
    const QString runtime = folder.filePath(QStringLiteral("runtime"));
    QDir().mkpath(runtime);
    QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    Emulator emulators(runtime);
    const QStringList terminals = emulators.startBench(stateOf(0), 3, {"--events", "--logs", "--report-pace", "5"});
    ASSERT_EQ(terminals.size(), 3);
    QProcessEnvironment bare; // no serial port of the machine's
    bare.insert(QStringLiteral("TESSALY_SYSTEM_ROOT"), folder.filePath(QStringLiteral("empty")));
    QDir(folder.path()).mkdir(QStringLiteral("empty"));

    const Outcome run = RunHalvane(folder.path(), {"--port", "all", "--read", "--items", "0-300", "--json"}, bare);
    EXPECT_EQ(run.status, 0) << qPrintable(run.err);
    const QJsonArray handsets = QJsonDocument::fromJson(run.out.toUtf8()).array();
    ASSERT_EQ(handsets.size(), 3) << qPrintable(run.out) << qPrintable(run.err);
    QSet<QString> esns;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(handsets[i].toObject()["port"].toString(), terminals[i]);
        EXPECT_TRUE(handsets[i].toObject()["succeeded"].toBool());
        esns << handsets[i].toObject()["esn"].toString();
    }
    EXPECT_EQ(esns.size(), 3) << "each handset is one of its own";
    EXPECT_EQ(backups().size(), 3);
}

} // namespace
