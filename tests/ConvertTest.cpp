// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane --convert between NV files and XQCN files: a full backup's items
// and file system through XQCN and back, and an XQCN file with streams halvane
// does not know refused with each named, nothing written.
#include "model/NvFile.h"
#include "model/Xqcn.h"
#include "support/Programs.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace tessaly::model;

namespace {

class ConvertTest : public ::testing::Test {
protected:
    Outcome halvane(const QStringList& arguments) { return RunHalvane(folder.path(), arguments); }
    QString file(const char* name) const { return folder.filePath(QLatin1String(name)); }

    QTemporaryDir folder;
};

} // namespace

TEST_F(ConvertTest, FullBackupGoesThroughXqcnAndBackWithItsFiles)
{
    NvFile backup{NvFileKind::FullBackup, {{"esn", "12345678"}}, {{{4000, -1}, NvStatus::Done, {0x01, 0x02}}},
                  {{"/nv", 0040755, 1700000000, {}, {}},
                   {"/nv/item_files/modem/mmode/sms_domain_pref", 0160644, 1700000001, QByteArray::fromHex("01"), {}},
                   {"/nv/item_files/rfnv/00020000", 0100644, 5, QByteArray::fromHex("7E7D00"), {}},
                   {"/nv/empty folder", 0040700, 6, {}, {}},
                   {"/nv/mode", 0120777, 7, {}, "item_files/modem/mmode"}}};
    ASSERT_EQ(WriteNvFile(file("backup.json"), backup), "");

    Outcome run = halvane({"--convert", file("backup.json"), file("backup.xqcn")});
    ASSERT_EQ(run.status, 0) << qPrintable(run.err);
    run = halvane({"--convert", file("backup.xqcn"), file("back.json")});
    ASSERT_EQ(run.status, 0) << qPrintable(run.err);

    NvFile back;
    ASSERT_EQ(ReadNvFile(file("back.json"), NvFileKind::FullBackup, back), "");
    EXPECT_TRUE(back.entries == backup.entries);
    EXPECT_TRUE(back.files == backup.files) << "every entry, its kind, mode, time, bytes and target";
}

TEST_F(ConvertTest, StreamsPassedOverAreNamedAndTheConversionIsNotWhole)
{
    QByteArray xqcn = WriteXqcn({{{10, -1}, NvStatus::Done, {0x01}}});
    // The handset's model and the tool that wrote it, as other tools add it.
    xqcn.replace("</Storage>\n    </Storage>\n    <Stream Length=\"6\" Name=\"File_Version\"",
                 "<Stream Length=\"2\" Name=\"Mobile_Property_Info\" Value=\"0D D0\"/>\n"
                 "        </Storage>\n    </Storage>\n    <Stream Length=\"6\" Name=\"File_Version\"");
    ASSERT_TRUE(xqcn.contains("Mobile_Property_Info"));
    QFile out(file("other.xqcn"));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(xqcn);
    out.close();

    const Outcome run = halvane({"--convert", file("other.xqcn"), file("out.json")});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, QStringLiteral("halvane: the stream 00000000/default/Mobile_Property_Info of %1 is passed over: "
                                      "halvane does not know it\n")
                           .arg(file("other.xqcn")));
    NvFile converted;
    ASSERT_EQ(ReadNvFile(file("out.json"), NvFileKind::FullBackup, converted), "") << "what it knows is converted";
    EXPECT_EQ(converted.entries.size(), 1u);
}
