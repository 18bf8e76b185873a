// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The handset's file system in an NV file: each kind of entry on its line and
// back, and a file with one damaged entry refused whole, naming it.
#include "model/NvFile.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tessaly::model;

namespace {

// A full backup of one item and `files`.
NvFile Backup(std::vector<EfsEntry> files)
{
    return {NvFileKind::FullBackup, {{"esn", "12345678"}}, {{{10, -1}, NvStatus::Done, {0x01}}}, std::move(files)};
}

// The text of a full backup whose file list is `files`, one entry a line.
QByteArray BackupText(const QByteArray& files)
{
    return "{\n  \"format\": \"Halvane NV full backup\",\n  \"version\": 1,\n  \"items\": [\n"
           "    {\"item\": 10, \"status\": 0, \"data\": \"01\"}\n  ],\n  \"files\": [\n"
        + files + "\n  ]\n}\n";
}

class NvFileTest : public ::testing::Test {
protected:
    // Writes `text` and reads it back as a full backup into `file`.
    QString read(const QByteArray& text, NvFile& file)
    {
        QFile out(path);
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(text);
        out.close();
        return ReadNvFile(path, NvFileKind::FullBackup, file);
    }

    QByteArray written() const
    {
        QFile in(path);
        EXPECT_TRUE(in.open(QIODevice::ReadOnly));
        return in.readAll();
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("backup.json"));
};

} // namespace

TEST_F(NvFileTest, EveryKindOfEntryIsWrittenOnItsLineAndReadBack)
{
    const std::vector<EfsEntry> files{
        {"/nv", 0040755, 1700000000, {}, {}},
        {"/nv/item_files/modem/mmode/sms_domain_pref", 0160644, 1700000001, QByteArray::fromHex("010203"), {}},
        {"/nv/empty", 0100600, -1, {}, {}},
        {"/nv/\"quoted\" %1 caf\u00e9", 0100644, 0, QByteArray("\0\xFF\n", 3), {}},
        {"/nv/mode", 0120777, 2, {}, "item_files/modem/mmode"},
    };
    ASSERT_EQ(WriteNvFile(path, Backup(files)), "");
    const QByteArray text = written();
    EXPECT_TRUE(text.contains("  ],\n  \"files\": [\n    {\"path\": \"/nv\", \"mode\": 16877, \"mtime\": 1700000000},\n"
                              "    {\"path\": \"/nv/item_files/modem/mmode/sms_domain_pref\", \"mode\": 57764, "
                              "\"mtime\": 1700000001, \"size\": 3, \"data\": \"AQID\"},\n"))
        << text.constData();
    EXPECT_TRUE(text.contains("    {\"path\": \"/nv/mode\", \"mode\": 41471, \"mtime\": 2, "
                              "\"target\": \"item_files/modem/mmode\"}\n  ]\n}\n"));

    NvFile back;
    ASSERT_EQ(ReadNvFile(path, NvFileKind::FullBackup, back), "");
    EXPECT_TRUE(back.files == files);
    EXPECT_EQ(back.fields.keys(), QStringList{"esn"}) << "the files are not a field";

    // A file of before the file system, or of a catalogue's backup: no list.
    ASSERT_EQ(WriteNvFile(path, Backup({})), "");
    EXPECT_FALSE(written().contains("files"));
    ASSERT_EQ(ReadNvFile(path, NvFileKind::FullBackup, back), "");
    EXPECT_TRUE(back.files.empty());
}

TEST_F(NvFileTest, DamagedFileEntryRefusesTheWholeFileNamingIt)
{
    const QByteArray good = R"(    {"path": "/nv/a", "mode": 33188, "mtime": 0, "size": 3, "data": "AQID"},)";
    struct Case {
        QByteArray entry;
        const char* told;
    };
    const Case cases[] = {
        {R"({"path": "nv/b", "mode": 16877, "mtime": 0})", "its file entry 2 has no absolute path"},
        {R"({"path": "/nv/../b", "mode": 16877, "mtime": 0})", "its file entry 2 has no absolute path"},
        {R"({"path": "/nv/./b", "mode": 16877, "mtime": 0})", "its file entry 2 has no absolute path"},
        {R"({"path": "/nv//b", "mode": 16877, "mtime": 0})", "its file entry 2 has no absolute path"},
        {R"({"path": "/nv/b/", "mode": 16877, "mtime": 0})", "its file entry 2 has no absolute path"},
        {R"({"path": "/nv/b\nc", "mode": 16877, "mtime": 0})", "its file entry 2 has no absolute path"},
        {R"({"path": "/nv/\u0100", "mode": 16877, "mtime": 0})", "its file entry 2 has no absolute path"},
        {R"({"mode": 16877, "mtime": 0})", "its file entry 2 has no absolute path"},
        {R"({"path": "/nv/b", "mode": 49572, "mtime": 0})", "its file entry 2 (/nv/b) has no mode of a folder"},
        {R"({"path": "/nv/b", "mode": 98724, "mtime": 0})", "its file entry 2 (/nv/b) has no mode of a folder"},
        {R"({"path": "/nv/b", "mode": 16877, "mtime": 0.5})", "its file entry 2 (/nv/b) has no time"},
        {R"({"path": "/nv/b", "mode": 16877, "mtime": 3000000000})", "its file entry 2 (/nv/b) has no time"},
        {R"({"path": "/nv/b", "mode": 33188, "mtime": 0, "size": 4, "data": "AQID"})",
         "its file entry 2 (/nv/b) holds 3 bytes where its size says 4"},
        {R"({"path": "/nv/b", "mode": 33188, "mtime": 0, "data": "AQID"})", "holds 3 bytes where its size says null"},
        {R"({"path": "/nv/b", "mode": 33188, "mtime": 0, "size": 3, "data": "AQI*"})",
         "its file entry 2 (/nv/b) is a file without data in base64"},
        {R"({"path": "/nv/b", "mode": 33188, "mtime": 0, "size": 2, "data": "AQI"})", "without data in base64"},
        {R"({"path": "/nv/b", "mode": 33188, "mtime": 0, "size": 0})", "without data in base64"},
        {R"({"path": "/nv/b", "mode": 41471, "mtime": 0})", "its file entry 2 (/nv/b) is a link without a target"},
        {R"({"path": "/nv/b", "mode": 41471, "mtime": 0, "target": "a", "size": 0, "data": ""})", "is a link without"},
        {R"({"path": "/nv/b", "mode": 16877, "mtime": 0, "size": 0, "data": ""})", "is a folder, with a size, data"},
        {R"({"path": "/nv/a", "mode": 16877, "mtime": 0})", "its file entry 2 repeats /nv/a"},
        {R"("/nv/b")", "its file entry 2 has no absolute path"},
    };
    for (const Case& c : cases) {
        NvFile file = Backup({{"/kept", 0040755, 0, {}, {}}});
        const QString problem = read(BackupText(good + "\n    " + c.entry), file);
        EXPECT_TRUE(problem.contains(QLatin1String(c.told))) << qPrintable(problem) << " for " << c.entry.constData();
        EXPECT_EQ(file.files.size(), 1u) << "nothing taken from a refused file";
    }
    NvFile file;
    EXPECT_EQ(read(BackupText(good.chopped(1)), file), "") << "the good entry alone is taken";
    EXPECT_EQ(read(BackupText("").replace("\"files\": [\n\n  ]", "\"files\": {}"), file), "its files are not a list");
}
