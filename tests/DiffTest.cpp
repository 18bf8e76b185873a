// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane --diff: a full backup beside the XQCN file of the same handset,
// what a repair changed told with its bytes marked and its values side by
// side, as text and as JSON, two handsets told at the top, and a missing or
// damaged file named with exit status 2, as diff gives for trouble.
#include "model/NvFile.h"
#include "model/Xqcn.h"
#include "support/Programs.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace tessaly::model;

namespace {

class DiffTest : public ::testing::Test {
protected:
    Outcome halvane(const QStringList& arguments) { return RunHalvane(folder.path(), arguments); }
    QString file(const char* name) const { return folder.filePath(QLatin1String(name)); }

    // A full backup of a handset whose MDN ends in `mdnEnd`, with its ESN
    // `esn` and one file.
    NvFile Backup(const char* mdnEnd, const char* esn = "c4213a8f", const QByteArray& band = "\x01\x02")
    {
        NvFile backup{NvFileKind::FullBackup, {{"esn", QString::fromLatin1(esn).toUpper()}, {"meid", ""}}, {}, {}};
        NvEntry esnItem{{0, -1}, NvStatus::Done, {}};
        const QByteArray esnBytes = QByteArray::fromHex(esn);
        std::reverse_copy(esnBytes.begin(), esnBytes.end(), esnItem.data.begin());
        NvEntry mdn{{178, 0}, NvStatus::Done, {}};
        const QByteArray digits = QByteArray("85855501") + mdnEnd;
        std::copy(digits.begin(), digits.end(), mdn.data.begin() + 1);
        backup.entries = {esnItem, mdn};
        backup.files = {{"/nv/band_pref", 0100644, 1, band, {}}};
        return backup;
    }
    QString Write(const char* name, const NvFile& backup)
    {
        EXPECT_EQ(WriteNvFile(file(name), backup), "");
        return file(name);
    }
    QString WriteXqcnFile(const char* name, const NvFile& backup)
    {
        QFile out(file(name));
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(WriteXqcn(backup.entries, backup.files));
        return file(name);
    }

    QTemporaryDir folder;
};

} // namespace

TEST_F(DiffTest, FullBackupBesideTheXqcnFileOfTheSameHoldsTheSame)
{
    const QString json = Write("before.json", Backup("43"));
    const QString xqcn = WriteXqcnFile("before.xqcn", Backup("43"));
    const Outcome run = halvane({"--diff", json, xqcn});
    EXPECT_EQ(run.status, 0) << qPrintable(run.out + run.err);
    EXPECT_TRUE(run.out.endsWith("A and B hold the same: 2 items, 1 files compared.\n")) << qPrintable(run.out);
    EXPECT_FALSE(run.out.contains("different handsets")) << "the XQCN file's identity is that of its items";
}

TEST_F(DiffTest, WhatDiffersIsMarkedByteByByteWithTheValuesSideBySide)
{
    const QString before = Write("before.json", Backup("43"));
    NvFile repaired = Backup("99", "c4213a90", "\x01\x03");
    repaired.entries.push_back({{4000, -1}, NvStatus::Done, {0x41}});
    const QString after = WriteXqcnFile("after.xqcn", repaired);
    const Outcome run = halvane({"--diff", before, after});
    EXPECT_EQ(run.status, 1) << qPrintable(run.err);
    const QStringList lines = run.out.split(QLatin1Char('\n'));
    ASSERT_GE(lines.size(), 3);
    EXPECT_EQ(lines[2], "The two are of different handsets: ESN C4213A8F, MEID none and ESN C4213A90, MEID none.");
    EXPECT_TRUE(run.out.contains(
        "NV item 178 (index 0), \"Mobile Directory Number (MDN)\" on the page System NAM1: 2 of its 128 bytes differ\n"
        "  A 00000000: 0038 3538 3535 3530 3134 3300 0000 0000  .8585550143.....\n"
        "  B 00000000: 0038 3538 3535 3530 3139 3900 0000 0000  .8585550199.....\n"
        "                                    ^^ ^^                       ^^\n"
        "  Mobile Directory Number (MDN): 8585550143 | 8585550199\n"))
        << qPrintable(run.out);
    EXPECT_TRUE(run.out.contains("NV item 4000: added, done\n  B 00000000: 4100 "));
    EXPECT_TRUE(run.out.contains("/nv/band_pref: 1 bytes differ, the first at byte 1\n"));
    EXPECT_TRUE(run.out.endsWith("Items: 2 differ, 1 added, 0 gone of 3; files: 1 differ, 0 added, 0 gone of 1.\n"));

    const Outcome json = halvane({"--diff", before, after, "--json"});
    EXPECT_EQ(json.status, 1);
    const QJsonObject root = QJsonDocument::fromJson(json.out.toUtf8()).object();
    EXPECT_FALSE(root["sameHandset"].toBool());
    EXPECT_EQ(root["b"]["kind"].toString(), "an XQCN file");
    const QJsonArray items = root["items"].toArray();
    ASSERT_EQ(items.size(), 3);
    const QJsonObject mdn = items[1].toObject();
    EXPECT_EQ(mdn["item"].toInt(), 178);
    EXPECT_EQ(mdn["index"].toInt(), 0);
    EXPECT_EQ(mdn["differingBytes"].toArray(), (QJsonArray{9, 10}));
    EXPECT_EQ(mdn["values"][0]["after"].toString(), "8585550199");
    EXPECT_EQ(items[2]["change"].toString(), "added");
    EXPECT_EQ(root["files"][0]["firstDifference"].toInt(), 1);
}

TEST_F(DiffTest, MissingOrDamagedFileIsNamedWithWhyAndNothingIsCompared)
{
    const QString good = Write("good.json", Backup("43"));
    QFile damaged(file("damaged.xqcn"));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("<?xml version=\"1.0\"?><QCN><Storage");
    damaged.close();

    Outcome run = halvane({"--diff", good, file("damaged.xqcn")});
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(run.out.isEmpty());
    EXPECT_TRUE(run.err.startsWith("halvane: The XQCN file " + file("damaged.xqcn") + " is refused: "))
        << qPrintable(run.err);

    run = halvane({"--diff", file("missing.json"), good});
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(run.err.contains(file("missing.json"))) << qPrintable(run.err);

    run = halvane({"--diff", good});
    EXPECT_EQ(run.status, 2) << "B is wanted";
}
