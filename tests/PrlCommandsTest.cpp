// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane's roaming list commands against tessaly-emu: the handset's list
// read and shown, an edited list written, kept across the emulator's restart
// and read back whole, and damaged lists refused before a byte is sent, by
// halvane and by the handset alike; the list edited on the panel's pages
// written over the line the same way.
#include "link/Backup.h"
#include "link/ErrorNumbers.h"
#include "link/RoamingList.h"
#include "model/Catalogue.h"
#include "model/FactoryPrl.h"
#include "model/FileNvMemory.h"
#include "model/Prl.h"
#include "model/RoamingListPages.h"
#include "model/SimulatedHandset.h"
#include "support/DialogAnswerer.h"
#include "support/Packets.h"
#include "support/Programs.h"

#include <tessaly/Tessaly.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace tessaly;
using namespace tessaly::model;

namespace {

class PrlCommandsTest : public HandsetRunTest {
protected:
    QString startFactory(const QStringList& faults = {}) { return emulator.startOn(state(), {}, faults); }

    static QByteArray bytesOf(const QString& path)
    {
        QFile in(path);
        EXPECT_TRUE(in.open(QIODevice::ReadOnly)) << qPrintable(path);
        return in.readAll();
    }
    void writeLocal(const char* name, const QByteArray& bytes)
    {
        QFile out(file(name));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }
    // The list the emulator keeps beside its state.
    QByteArray handsetList() const { return bytesOf(state() + QStringLiteral(".prl")); }

    // The handset's list, read by halvane into `name`.
    QByteArray get(const QString& port, const char* name)
    {
        const Outcome run = halvane({"--port", port, "--prl-get", file(name)});
        EXPECT_EQ(run.status, 0) << qPrintable(run.err);
        return bytesOf(file(name));
    }
};

// The handset's list with one more system and a new PR_LIST_ID.
QByteArray Edited(const QByteArray& list)
{
    Prl edited = *DecodePrl(list).list;
    edited.listId = 20240;
    PrlSystem added;
    added.sid = 31092;
    added.nidIncluded = NidIncluded;
    added.nid = 65;
    added.roamingIndicator = 1;
    edited.systems.insert(edited.systems.begin(), added);
    edited.systems[1].sameRegion = true;
    return EncodePrl(edited);
}

} // namespace

TEST_F(PrlCommandsTest, HandsetListIsReadIntoANewFileAndShown)
{
    const QString port = startFactory();
    const QByteArray list = get(port, "handset.prl");
    EXPECT_EQ(list, handsetList());
    EXPECT_GT(list.size(), 120) << "more than one block";
    const PrlDecoding decoding = DecodePrl(list);
    ASSERT_EQ(decoding.problem, "");

    Outcome run = halvane({"--prl-show", file("handset.prl")});
    ASSERT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_TRUE(run.out.startsWith(QStringLiteral("Roaming list %1, IS-683-A, %2 bytes, CRC ")
                                       .arg(decoding.list->listId)
                                       .arg(list.size())))
        << qPrintable(run.out);
    EXPECT_TRUE(run.out.contains(QRegularExpression(QStringLiteral("\n +0  PCS CDMA, blocks +blocks A, B, C, D, E, F\n"))))
        << qPrintable(run.out);
    EXPECT_TRUE(run.out.contains(QRegularExpression(QStringLiteral("\n +0 +4139 +1  preferred +1  more +3  1 \\(home\\)\n"))))
        << qPrintable(run.out);

    run = halvane({"--prl-show", file("handset.prl"), "--json"});
    ASSERT_EQ(run.status, 0) << qPrintable(run.err);
    const QJsonObject json = QJsonDocument::fromJson(run.out.toUtf8()).object();
    EXPECT_EQ(json["acquisitions"].toArray().size(), qsizetype(decoding.list->acquisitions.size()));
    const QJsonArray systems = json["systems"].toArray();
    ASSERT_EQ(systems.size(), qsizetype(decoding.list->systems.size()));
    EXPECT_GE(systems.size(), 24) << "a few dozen systems";
    EXPECT_EQ(systems[4]["preferred"], false);
    EXPECT_EQ(systems[4]["nid"], "any");
    EXPECT_FALSE(systems[4].toObject().contains("roamingIndicator"));
    EXPECT_EQ(json["acquisitions"][3]["channels"][0], 25);

    // A file that is there is never written over.
    writeLocal("taken.prl", "mine");
    run = halvane({"--port", port, "--prl-get", file("taken.prl")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains("is there already")) << qPrintable(run.err);
    EXPECT_EQ(bytesOf(file("taken.prl")), "mine");
}

TEST_F(PrlCommandsTest, EditedListIsWrittenKeptAcrossRestartAndReadBackWhole)
{
    QString port = startFactory();
    const QByteArray factory = get(port, "factory.prl");
    const QByteArray edited = Edited(factory);
    writeLocal("edited.prl", edited);

    const Outcome run = halvane({"--port", port, "--prl-put", file("edited.prl")});
    ASSERT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_TRUE(run.out.contains("Roaming list 20240 written and read back the same")) << qPrintable(run.out);
    // The handset's list was kept first, under its ESN and the time.
    ASSERT_EQ(backups().size(), 1);
    EXPECT_TRUE(backups()[0].endsWith(".prl"));
    EXPECT_EQ(bytesOf(backups()[0]), factory);

    port = startFactory(); // a restart
    EXPECT_EQ(get(port, "again.prl"), edited);
}

TEST_F(PrlCommandsTest, DamagedListIsRefusedWithNothingWritten)
{
    const QString port = startFactory();
    const QByteArray factory = get(port, "factory.prl");
    QByteArray damaged = Edited(factory);
    damaged[40] = char(damaged[40] ^ 0x04);
    writeLocal("crc.prl", damaged);
    writeLocal("short.prl", Edited(factory).chopped(7));
    // An IS-683-A list of 11 bytes with one acquisition record, of type 15
    // (1111), and its CRC right: PR_LIST_SIZE 11, PR_LIST_ID 1, PREF_ONLY 0,
    // DEF_ROAM_IND 0, NUM_ACQ_RECS 1, NUM_SYS_RECS 0, ACQ_TYPE 1111.
    QByteArray unknown = Hex("000b0001 00004000 f0");
    const uint16_t crc = PrlCrc(unknown);
    unknown.append(char(crc >> 8));
    unknown.append(char(crc & 0xFF));
    writeLocal("unknown.prl", unknown);

    for (const auto& [name, why] : {std::pair{"crc.prl", "CRC"}, {"short.prl", "size field"}, {"unknown.prl", "type 15"}}) {
        const Outcome run = halvane({"--port", port, "--prl-put", file(name)});
        EXPECT_EQ(run.status, 1) << name;
        EXPECT_TRUE(run.err.contains(why) && run.err.contains("Nothing was written")) << qPrintable(run.err);
        EXPECT_EQ(run.out, "") << "not even a backup was taken";
    }
    EXPECT_EQ(handsetList(), factory);
    EXPECT_TRUE(backups().isEmpty());

    // --prl-show shows what it can read, and says what is wrong.
    Outcome run = halvane({"--prl-show", file("unknown.prl")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.out.contains("Unknown type 15")) << qPrintable(run.out);
    EXPECT_TRUE(run.err.contains("Acquisition record 0 is of type 15")) << qPrintable(run.err);
    run = halvane({"--prl-show", file("short.prl")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains("size field says")) << qPrintable(run.err);
}

TEST_F(PrlCommandsTest, HandsetRefusesADamagedListAndALockedOneWantsItsSpc)
{
    const QString port = startFactory({"--spc", "123456"});
    const QByteArray factory = get(port, "factory.prl");
    const QByteArray edited = Edited(factory);
    writeLocal("edited.prl", edited);

    Outcome run = halvane({"--port", port, "--prl-put", file("edited.prl")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains("locked")) << qPrintable(run.err);
    EXPECT_EQ(handsetList(), factory);

    // Sent past halvane's checks, the handset checks the list itself.
    emulator.stop();
    const QString open = startFactory();
    {
        link::SerialLink line(open);
        QByteArray damaged = edited;
        damaged[40] = char(damaged[40] ^ 0x04);
        EXPECT_EQ(ErrorOf([&] { link::WriteRoamingList(line, damaged, 0, {}); }), link::errRoamingListRefused);
    }
    EXPECT_EQ(handsetList(), factory);

    emulator.stop();
    run = halvane({"--port", startFactory({"--spc", "123456"}), "--prl-put", file("edited.prl"), "--spc", "123456"});
    EXPECT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_EQ(handsetList(), edited);
}

// The panel's roaming list pages over the line: the handset's list shown, an
// edited SID written by NV Write as a new list with its size and CRC, the
// handset's list kept first.
TEST_F(PrlCommandsTest, AListEditedOnThePanelIsWrittenToTheHandsetAndKeptFirst)
{
    const QString port = startFactory();
    const QByteArray factory = EncodePrl(FactoryPrl());
    qputenv("XDG_DATA_HOME", folder.filePath(QStringLiteral("data")).toLocal8Bit()); // the backups' folder

    Tessaly panel;
    panel.show();
    FileNvMemory memory(file("nv-memory.json"), Catalogue::BuiltIn().factory());
    SimulatedHandset handset(panel, memory);
    link::SerialLink line(port);
    link::HandsetRoamingList list(line, 0, [] { return QString(); });
    const int16_t systems = panel.AddTab(QStringLiteral("Roaming List"), RoamingListPages::SystemColumns);
    const int16_t acquisitions
        = panel.AddTab(QStringLiteral("Acquisition Table"), RoamingListPages::AcquisitionColumns);
    RoamingListPages pages(panel, systems, acquisitions);
    handset.setRoamingListPages(&pages, &list);
    panel.SetModelDLL(&handset);

    DialogAnswerer answerer;
    handset.NVRead();
    ASSERT_TRUE(handset.succeeded()) << qPrintable(answerer.texts().join(u'\n'));
    EXPECT_EQ(panel.GetItemFromGrd(systems, 1, RoamingListPages::SidColumn - 1), "4139");
    panel.AddItemToGrd(systems, QString(), true, false, QString(), QStringLiteral("4150"), 1,
                       RoamingListPages::SidColumn);
    handset.NVWrite();
    ASSERT_TRUE(handset.succeeded()) << qPrintable(answerer.texts().join(u'\n'));
    EXPECT_TRUE(answerer.texts().isEmpty()) << qPrintable(answerer.texts().join(u'\n'));

    const PrlDecoding written = DecodePrl(handsetList());
    ASSERT_TRUE(written.list && written.problem.isEmpty()) << qPrintable(written.problem);
    EXPECT_EQ(written.crcField, written.crc);
    Prl expected = *DecodePrl(factory).list;
    expected.systems[0].sid = 4150;
    EXPECT_EQ(*written.list, expected);
    const QStringList kept = QDir(link::BackupFolder()).entryList({QStringLiteral("*.prl")}, QDir::Files);
    ASSERT_EQ(kept.size(), 1);
    EXPECT_EQ(bytesOf(QDir(link::BackupFolder()).filePath(kept[0])), factory);
    qunsetenv("XDG_DATA_HOME");
}
