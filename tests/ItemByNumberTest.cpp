// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane --nv-read and --nv-write against tessaly-emu: an item the catalogue
// knows and one it does not, read as xxd shows bytes; a write kept first,
// read back and told; what the catalogue protects and what the handset
// refuses left alone; a bad item or bad bytes refused before the port is
// even opened.
#include "model/Catalogue.h"
#include "model/NvFile.h"
#include "support/Programs.h"

#include <gtest/gtest.h>

using namespace tessaly::model;

namespace {

const NvAddress SecondMdn{178, 1};
const NvAddress Unknown{4000, -1};
const NvAddress Meid{1943, -1};
const NvAddress Lacked{4001, -1};

class ItemByNumberTest : public HandsetRunTest {
protected:
    // The factory items and one the catalogue does not know, with `faults`;
    // the MEID as a handset without one answers it.
    QString start(const QStringList& faults = {})
    {
        Items items;
        for (const auto& [address, data] : Catalogue::BuiltIn().factory())
            items[address] = {address, address == Meid ? NvStatus::NotValid : NvStatus::Done, data};
        NvEntry unknown{Unknown, NvStatus::Done, {}};
        for (uint8_t i = 0; i < 20; ++i)
            unknown.data[i] = uint8_t(0x41 + i);
        unknown.data[127] = 0xFF;
        items[Unknown] = unknown;
        items[Lacked] = {Lacked, NvStatus::NotValid, {}};
        return HandsetRunTest::start(items, faults);
    }
    Items memory() const { return read(state(), NvFileKind::Memory); }
};

} // namespace

TEST_F(ItemByNumberTest, ReadShowsTheStatusTheBytesAsXxdDoesAndTheCataloguesValues)
{
    const QString port = start();
    Outcome run = halvane({"--port", port, "--nv-read", "178:1"});
    ASSERT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_EQ(run.out.section(QLatin1Char('\n'), 0, 1),
              "NV item 178 (index 1), \"Mobile Directory Number (MDN)\" on the page System NAM2: done\n"
              "00000000: 0136 3139 3535 3530 3137 3200 0000 0000  .6195550172.....");
    EXPECT_TRUE(run.out.contains("\n00000070: 0000 0000 0000 0000 0000 0000 0000 0000  ................\n"))
        << "all 128 bytes, 8 rows";
    EXPECT_TRUE(run.out.endsWith("Mobile Directory Number (MDN): 6195550172\n")) << qPrintable(run.out);

    run = halvane({"--port", port, "--nv-read", "4000"});
    ASSERT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_TRUE(run.out.contains("00000010: 5152 5354 0000 0000 0000 0000 0000 0000  QRST............"));
    EXPECT_TRUE(run.out.contains("00000070: 0000 0000 0000 0000 0000 0000 0000 00ff  ................"));
    EXPECT_TRUE(run.out.contains("The catalogue does not know NV item 4000: its bytes alone are shown."));

    run = halvane({"--port", port, "--nv-read", "1943"});
    EXPECT_EQ(run.status, 1) << "no bytes of an item the handset lacks";
    EXPECT_EQ(run.out, "NV item 1943, \"MEID\" on the page Basic Information: the item does not exist on this handset\n");
}

TEST_F(ItemByNumberTest, WriteKeepsWhatWasThereAsksTheSpcReadsBackAndTellsTheValues)
{
    const QString port = start({"--spc", "123456"});
    const QStringList write{"--port", port, "--nv-write", "178:1", "01 38 35 38", "3535", "35 30 31 39 39"};
    const Outcome locked = halvane(write);
    EXPECT_EQ(locked.status, 1);
    EXPECT_EQ(locked.err, "halvane: The handset is locked and no SPC was given\n");
    EXPECT_EQ(memory()[SecondMdn].data, Catalogue::BuiltIn().factory().at(SecondMdn));

    const Outcome run = halvane(write + QStringList{"--spc", "123456"});
    ASSERT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_TRUE(run.out.contains("NV item 178 (index 1), \"Mobile Directory Number (MDN)\" on the page System NAM2: "
                                 "written and read back the same (11 bytes given, zeros after them)\n"
                                 "Mobile Directory Number (MDN): 6195550172 -> 8585550199\n"))
        << qPrintable(run.out);
    NvData expected{};
    const char* given = "\x01" "8585550199";
    std::copy(given, given + 11, expected.begin());
    EXPECT_EQ(memory()[SecondMdn].data, expected);

    // Each attempt kept the handset's item before it wrote: the old MDN with
    // the identity it was taken under.
    EXPECT_EQ(backups().size(), 2);
    static const QRegularExpression keptIn(QStringLiteral("^What the handset held is kept in (\\S+)\n"));
    const QRegularExpressionMatch match = keptIn.match(run.out);
    ASSERT_TRUE(match.hasMatch()) << qPrintable(run.out);
    EXPECT_TRUE(backups().contains(match.captured(1)));
    const Items kept = read(match.captured(1), NvFileKind::Backup);
    EXPECT_EQ(kept.at(SecondMdn).data, Catalogue::BuiltIn().factory().at(SecondMdn));
    EXPECT_EQ(kept.count({0, -1}), 1u);

    const Outcome again = halvane(write + QStringList{"--spc", "123456"});
    EXPECT_EQ(again.status, 0);
    EXPECT_TRUE(again.out.endsWith("unchanged: the handset holds these bytes already\n")) << qPrintable(again.out);
    EXPECT_EQ(backups().size(), 2) << "nothing written, nothing to keep";
}

TEST_F(ItemByNumberTest, WhatTheHandsetRefusesOrGivesBackDifferentFails)
{
    const QString port = start({"--garble", "4000"});
    Outcome run = halvane({"--port", port, "--nv-write", "1943", "01"});
    EXPECT_EQ(run.status, 2) << "identity: refused before anything is sent";
    run = halvane({"--port", port, "--nv-write", "4001", "00"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "NV item 4001: not written (this handset: the item does not exist on this handset)\n");
    EXPECT_TRUE(backups().isEmpty()) << "nothing to write, nothing kept";
    run = halvane({"--port", port, "--nv-write", "4000", "00"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "halvane: NV item 4000 reads back different from what was written\n");
    EXPECT_EQ(backups().size(), 1) << "kept before the write";
}

TEST_F(ItemByNumberTest, BadItemIndexOrBytesAreRefusedBeforeThePortIsOpened)
{
    // A port that is not there: a request checked first never gets to it.
    const QString port = folder.filePath("no-such-port");
    const std::pair<QStringList, const char*> cases[] = {
        {{"--nv-read", "65536"}, "--nv-read wants ITEM or ITEM:INDEX, an item number of 0 to 65535 and an index of 0 "
                                 "to 255, not \"65536\""},
        {{"--nv-read", "178:256"}, "not \"178:256\""},
        {{"--nv-read", "0x10"}, "not \"0x10\""},
        {{"--nv-read", "178"}, "NV item 178 is kept once per NAM or MIP profile: give its index, as 178:0 (the "
                               "catalogue names 0 to 1)"},
        {{"--nv-read", "71:0"}, "NV item 71 takes no index"},
        {{"--nv-write", "0", "00"}, "NV item 0, \"ESN\" on the page Basic Information is never written: the catalogue "
                                    "keeps it as identity"},
        {{"--nv-write", "55", "00"}, "keeps it as counter"},
        {{"--nv-write", "71"}, "--nv-write wants the item's bytes in hexadecimal"},
        {{"--nv-write", "71", "4G"}, "\"4G\" is not hexadecimal"},
        {{"--nv-write", "71", "41 4"}, "\"41 4\" has 3 hexadecimal digits: each byte takes two"},
        {{"--nv-write", "71", QString(258, QLatin1Char('0'))}, "129 bytes were given: an NV item holds 128 at most"},
        {{"--nv-write", "178:1", "00 38"}, "the first byte of an indexed item is its index: 01 for 178:1, not 00"},
    };
    for (const auto& [arguments, message] : cases) {
        const Outcome run = halvane(QStringList{"--port", port} + arguments);
        EXPECT_EQ(run.status, 2) << qPrintable(arguments.join(' '));
        EXPECT_TRUE(run.err.contains(QLatin1String(message))) << qPrintable(run.err);
        EXPECT_FALSE(run.err.contains("no-such-port")) << qPrintable(run.err);
    }
    EXPECT_TRUE(backups().isEmpty());
}
