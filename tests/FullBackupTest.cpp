// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane's full backup against tessaly-emu: every item number read, items
// beyond the catalogue kept with every byte and restored to a fresh handset
// of the same identity, directly and through XQCN; a line that dies half-way
// or an item that fails keeps nothing; no file is written over; damaged
// files of each kind are refused whole.
#include "link/ItemScan.h"
#include "model/Catalogue.h"
#include "model/NvFile.h"
#include "model/Xqcn.h"
#include "support/Programs.h"

#include <QFileInfo>

#include <set>

#include <gtest/gtest.h>

using namespace tessaly::model;

namespace {

using Items = HandsetRunTest::Items;

NvEntry Held(NvAddress address, std::initializer_list<uint8_t> head, uint8_t last = 0)
{
    NvEntry entry{address, NvStatus::Done, {}};
    std::copy(head.begin(), head.end(), entry.data.begin());
    entry.data[127] = last;
    return entry;
}

// A handset with the catalogue's items and some beyond it, near both ends of
// the numbering, with trailing zero bytes and with a non-zero last byte.
Items Original()
{
    Items items;
    for (const auto& [address, data] : Catalogue::BuiltIn().factory())
        items[address] = {address, NvStatus::Done, data};
    for (const NvEntry& entry : {Held({1, -1}, {0x11}), Held({2, -1}, {}, 0x80), Held({4000, -1}, {0x40}),
                                 Held({65533, -1}, {'a', 'b', 'c'}), Held({65535, -1}, {0x7E, 0x7D, 0xA5}, 0x01)})
        items[entry.address] = entry;
    items[{65534, -1}] = {{65534, -1}, NvStatus::NotValid, {}};
    return items;
}

// A new handset of the same identity: factory values, the same items beyond
// the catalogue but with zero bytes, except 4000, which it holds as inactive
// (never written), as after a factory reset.
Items Fresh()
{
    Items items = Original();
    for (auto& [address, entry] : items)
        if (!Catalogue::BuiltIn().factory().count(address))
            entry.data.fill(0);
    items.erase({4000, -1});
    return items;
}

// The items that differ between `a` and `b`, named, or an empty string.
std::string Differences(const Items& a, const Items& b)
{
    std::set<NvAddress> addresses;
    for (const Items* items : {&a, &b})
        for (const auto& [address, entry] : *items)
            addresses.insert(address);
    QStringList differ;
    for (const NvAddress& address : addresses)
        if (!a.count(address) || !b.count(address) || !(a.at(address) == b.at(address)))
            differ << Describe(address);
    return differ.join(QLatin1String(", ")).toStdString();
}

class FullBackupTest : public HandsetRunTest {
protected:
    // Restores `backup` to a fresh handset and gives what it holds then.
    Items restoreToFresh(const QString& backup)
    {
        const QString port = start(Fresh());
        const Outcome careful = halvane({"--port", port, "--restore-backup", backup});
        EXPECT_EQ(careful.status, 0) << qPrintable(careful.err);
        EXPECT_TRUE(careful.out.contains(
            QLatin1String("NV item 65535: skipped (unknown to the catalogue: written only with --all-items)")))
            << qPrintable(careful.out);
        EXPECT_EQ(Differences(read(state(), NvFileKind::Memory), Fresh()), "") << "nothing beyond the catalogue written";

        const Outcome all = halvane({"--port", port, "--restore-backup", backup, "--all-items"});
        EXPECT_EQ(all.status, 0) << qPrintable(all.err);
        EXPECT_TRUE(all.out.contains(QLatin1String("NV item 65535: restored"))) << qPrintable(all.out);
        EXPECT_TRUE(all.out.contains(QLatin1String("NV item 4000: restored"))) << "inactive on the fresh handset: "
                                                                                 "brought back";
        EXPECT_TRUE(all.out.contains(QLatin1String("NV item 65534: skipped (kept with the status:")))
            << qPrintable(all.out);
        return read(state(), NvFileKind::Memory);
    }
};

} // namespace

TEST_F(FullBackupTest, EveryItemIsKeptAndRestoredToAFreshHandsetByteForByteDirectlyAndThroughXqcn)
{
    const Outcome run = halvane({"--port", start(Original()), "--read", "--all-items", "--no-files"});
    ASSERT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_EQ(run.err, "") << "not on a terminal: no progress";
    const QStringList lines = run.out.trimmed().split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 3) << qPrintable(run.out);
    const QString backup = lines[0];
    EXPECT_EQ(backups(), QStringList{backup});
    EXPECT_TRUE(backup.endsWith(QLatin1String("-full.json")));
    EXPECT_EQ(QFileInfo(backup).permissions() & 0x0FFF, QFile::ReadUser | QFile::WriteUser) << "mode 0600";
    EXPECT_TRUE(lines[1].startsWith(QLatin1String("NV item 65534: kept with the status: "))) << qPrintable(lines[1]);
    // Every status but inactive and bad parameter is kept; each item number
    // counts once, whatever its indexes.
    const Items kept = Original();
    std::set<uint16_t> held;
    for (const auto& [address, entry] : kept)
        if (entry.status == NvStatus::Done)
            held.insert(address.item);
    EXPECT_EQ(lines[2].section(QLatin1String("; "), 0, 1),
              QStringLiteral("Items 0 to 65535: %1 held, %2 lacking, 0 busy, 1 refused (%3 entries with their indexes); files left out")
                  .arg(held.size())
                  .arg(65536 - held.size() - 1)
                  .arg(kept.size()));
    EXPECT_EQ(Differences(read(backup, NvFileKind::FullBackup), kept), "");

    // Through XQCN and back: the same items, bytes and statuses.
    ASSERT_EQ(halvane({"--convert", backup, file("backup.xqcn")}).status, 0);
    ASSERT_EQ(halvane({"--convert", file("backup.xqcn"), file("back.json")}).status, 0);
    EXPECT_EQ(Differences(read(file("back.json"), NvFileKind::FullBackup), kept), "");
    EXPECT_EQ(QFileInfo(file("backup.xqcn")).permissions() & 0x0FFF, QFile::ReadUser | QFile::WriteUser);

    EXPECT_EQ(Differences(restoreToFresh(backup), Original()), "");
    EXPECT_EQ(Differences(restoreToFresh(file("backup.xqcn")), Original()), "");
}

TEST_F(FullBackupTest, LineDyingHalfWayKeepsNothingAndTellsWhereItStopped)
{
    const Outcome run
        = halvane({"--port", start(Original(), {"--dead-after", "3000"}), "--read", "--all-items", "--reply-time", "100"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains(QLatin1String("halvane: The full backup stopped at NV item ")));
    EXPECT_TRUE(run.err.contains(QLatin1String("does not answer")) && run.err.contains(QLatin1String("Nothing was kept")))
        << qPrintable(run.err);
    EXPECT_EQ(run.out, "");
    EXPECT_TRUE(backups().isEmpty());
}

TEST_F(FullBackupTest, ItemOfAFaultStatusIsKeptWithItToldCountedAndNeverRestored)
{
    Items failing = Original();
    failing[{2, -1}].status = NvStatus::Failed;
    const QString port = start(failing);
    Outcome run = halvane({"--port", port, "--read", "--items", "0-100", "--no-files"});
    EXPECT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_TRUE(run.out.contains(QLatin1String("NV item 2: kept with the status: the NV memory failed\n")))
        << qPrintable(run.out);
    EXPECT_TRUE(run.out.contains(QLatin1String(", 0 busy, 1 refused ("))) << qPrintable(run.out);
    const QString backup = run.out.section(QLatin1Char('\n'), 0, 0);
    EXPECT_EQ(read(backup, NvFileKind::FullBackup).at({2, -1}).status, NvStatus::Failed);

    run = halvane({"--port", port, "--restore-backup", backup, "--all-items"});
    EXPECT_TRUE(run.out.contains(QLatin1String("NV item 2: skipped (kept with the status: the NV memory failed)")))
        << qPrintable(run.out);
}

// A backup or a conversion never takes the place of a file already there:
// two backups of one handset within the same second are both kept.
TEST_F(FullBackupTest, NoBackupOrConversionIsWrittenOverAnEarlierFile)
{
    tessaly::link::Backup backup = tessaly::link::Backup::FromItems({Held({0, -1}, {0xC4, 0x21, 0x3A, 0x8F})});
    backup.time = QDateTime(QDate(2024, 3, 20), QTime(9, 30));
    const QString first = backup.save(folder.path());
    backup.items[0].data[127] = 1;
    const QString second = backup.save(folder.path());
    EXPECT_NE(first.toStdString(), second.toStdString());
    const NvAddress esn{0, -1};
    EXPECT_EQ(read(first, NvFileKind::FullBackup)[esn].data[127], 0) << "the first one as it was";
    EXPECT_EQ(read(second, NvFileKind::FullBackup)[esn].data[127], 1);

    QFile taken(file("taken.xqcn"));
    ASSERT_TRUE(taken.open(QIODevice::WriteOnly));
    taken.write("someone else's");
    taken.close();
    const Outcome run = halvane({"--convert", first, file("taken.xqcn")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains(QLatin1String("is there already"))) << qPrintable(run.err);
    ASSERT_TRUE(taken.open(QIODevice::ReadOnly));
    EXPECT_EQ(taken.readAll(), "someone else's");
}

TEST_F(FullBackupTest, DamagedFileOfEitherKindIsRefusedWholeAndNothingIsWritten)
{
    NvFile nv;
    for (const auto& [address, entry] : Original())
        nv.entries.push_back(entry);
    QByteArray xqcn = WriteXqcn(nv.entries);
    // Item 0's record made one for item 65536.
    xqcn.replace("88 00 01 00 00 00 00 00", "88 00 01 00 00 00 01 00");
    QFile bad(file("bad.xqcn"));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write(xqcn);
    bad.close();
    // A file's bytes cut short in their XQCN stream.
    const std::vector<EfsEntry> files{{QStringLiteral("/nv/item_files/x"), 0100644, 0, "abc", {}}};
    QByteArray cut = WriteXqcn(nv.entries, files);
    ASSERT_TRUE(cut.contains("Length=\"3\" Name=\"00000000\" Value=\"61 62 63\""));
    cut.replace("Value=\"61 62 63\"", "Value=\"61 62\"");
    ASSERT_EQ(WriteWhole(file("cut.xqcn"), cut), "");
    // A backup whose file entry's size is not its bytes'.
    nv.kind = NvFileKind::FullBackup;
    nv.files = files;
    nv.files[0].data = "ab";
    ASSERT_EQ(WriteNvFile(file("files.json"), nv), "");
    QFile sized(file("files.json"));
    ASSERT_TRUE(sized.open(QIODevice::ReadWrite));
    QByteArray text = sized.readAll();
    ASSERT_TRUE(text.contains("\"size\": 2"));
    text.replace("\"size\": 2", "\"size\": 3");
    sized.seek(0);
    sized.write(text);
    sized.close();
    nv.files.clear();
    nv.entries.push_back({{70, 1}, NvStatus::Done, {}});
    nv.entries.back().address.index = 300;
    ASSERT_EQ(WriteNvFile(file("bad.json"), nv), "");

    Outcome run = halvane({"--convert", file("bad.xqcn"), file("out.json")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains(QLatin1String("NV_ITEM_ARRAY (line 6): its record 1 (byte 0) is for item 65536")))
        << qPrintable(run.err);
    run = halvane({"--convert", file("bad.json"), file("out.xqcn")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("is refused: its entry %1").arg(nv.entries.size())))
        << qPrintable(run.err);
    EXPECT_FALSE(QFileInfo::exists(file("out.json")) || QFileInfo::exists(file("out.xqcn")));

    const QString port = start(Fresh());
    for (const char* name : {"bad.xqcn", "bad.json", "cut.xqcn", "files.json"}) {
        run = halvane({"--port", port, "--restore-backup", file(name), "--all-items"});
        EXPECT_EQ(run.status, 1);
        EXPECT_TRUE(run.err.contains(QLatin1String("Nothing was written to the handset"))) << qPrintable(run.err);
        EXPECT_EQ(run.out, "") << name;
    }
    EXPECT_EQ(Differences(read(state(), NvFileKind::Memory), Fresh()), "");
    EXPECT_TRUE(backups().isEmpty()) << "refused before the handset was read";
}
