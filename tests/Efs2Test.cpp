// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The EFS2 packets of the diagnostic protocol: each command's request and
// reply written out here byte for byte from the open description of their
// layout (libopenpst's qc/diag_efs.h), encoded and decoded both ways; packets
// cut short, error replies and replies to another request.
#include "link/DiagPackets.h"
#include "link/Efs2.h"
#include "support/Packets.h"

#include <tessaly/TessalyError.h>

#include <gtest/gtest.h>

using namespace tessaly;
using namespace tessaly::link;

namespace {

struct Exchange {
    EfsRequest request;
    const char* requestHex;
    EfsReply reply;
    const char* replyHex;
};

// The times of the attributes below: 0x65F5E100 and the two seconds after.
#define TIMES "00e1f565" "01e1f565" "02e1f565"

// One exchange of each command, as a backup, a restore and a file copy make
// them. Paths: "/" 2f, "/a" 2f61, "/b" 2f62, "/d" 2f64, "/l" 2f6c, "/nv"
// 2f6e76, each ended by 00.
const Exchange Exchanges[] = {
    // The host's window (1 MiB of packets and bytes each way, version 1)
    // and the handset's answer.
    {{.command = EfsHello, .window = {0x100000, 0x100000, 0x100000, 0x100000, 0x100000, 0x100000, 1, 1, 1, 0}},
     "4b130000" "00001000" "00001000" "00001000" "00001000" "00001000" "00001000" "01000000" "01000000" "01000000"
     "00000000",
     {.command = EfsHello, .window = {10, 0x2000, 1, 0x400, 10, 0x2000, 1, 1, 2, 0}},
     "4b130000" "0a000000" "00200000" "01000000" "00040000" "0a000000" "00200000" "01000000" "01000000" "02000000"
     "00000000"},
    {{.command = EfsQuery}, "4b130100",
     {.command = EfsQuery, .limits = {128, 1024, 8, 0x7FFFFFFF, 512, 4}},
     "4b130100" "80000000" "00040000" "08000000" "ffffff7f" "00020000" "04000000"},
    // Write only, create, truncate (0101 octal), mode 0100644.
    {{.command = EfsOpen, .flags = EfsWriteOnly | EfsCreate | EfsTruncate, .mode = 0100644, .path = "/a"},
     "4b130200" "41020000" "a4810000" "2f6100",
     {.command = EfsOpen, .fd = 3}, "4b130200" "03000000" "00000000"},
    {{.command = EfsClose, .fd = 3}, "4b130300" "03000000", {.command = EfsClose}, "4b130300" "00000000"},
    // 512 bytes wanted at offset 1024; three came.
    {{.command = EfsRead, .fd = 3, .size = 512, .offset = 1024}, "4b130400" "03000000" "00020000" "00040000",
     {.command = EfsRead, .fd = 3, .offset = 1024, .count = 3, .data = "abc"},
     "4b130400" "03000000" "00040000" "03000000" "00000000" "616263"},
    {{.command = EfsWrite, .fd = 4, .offset = 16, .data = Hex("0102")}, "4b130500" "04000000" "10000000" "0102",
     {.command = EfsWrite, .fd = 4, .offset = 16, .count = 2}, "4b130500" "04000000" "10000000" "02000000" "00000000"},
    // The link /l to /a: the target first. It exists already (EEXIST).
    {{.command = EfsSymlink, .path = "/a", .path2 = "/l"}, "4b130600" "2f6100" "2f6c00",
     {.command = EfsSymlink, .error = EfsExists}, "4b130600" "11000000"},
    {{.command = EfsReadlink, .path = "/l"}, "4b130700" "2f6c00",
     {.command = EfsReadlink, .name = "/a"}, "4b130700" "00000000" "2f6100"},
    {{.command = EfsUnlink, .path = "/a"}, "4b130800" "2f6100",
     {.command = EfsUnlink, .error = EfsNoEntry}, "4b130800" "02000000"},
    // The mode in 16 bits: 0777.
    {{.command = EfsMkdir, .mode = 0777, .path = "/d"}, "4b130900" "ff01" "2f6400",
     {.command = EfsMkdir}, "4b130900" "00000000"},
    {{.command = EfsRmdir, .path = "/d"}, "4b130a00" "2f6400",
     {.command = EfsRmdir, .error = EfsNotEmpty}, "4b130a00" "27000000"},
    {{.command = EfsOpendir, .path = "/"}, "4b130b00" "2f00",
     {.command = EfsOpendir, .folder = 7}, "4b130b00" "07000000" "00000000"},
    // Entry 1 of folder 7: the folder "nv".
    {{.command = EfsReaddir, .folder = 7, .sequence = 1}, "4b130c00" "07000000" "01000000",
     {.command = EfsReaddir, .folder = 7, .sequence = 1, .entryType = EfsEntryFolder,
      .attributes = {040755, 512, 0, 0x65F5E100, 0x65F5E101, 0x65F5E102}, .name = "nv"},
     "4b130c00" "07000000" "01000000" "00000000" "01000000" "ed410000" "00020000" TIMES "6e7600"},
    {{.command = EfsClosedir, .folder = 7}, "4b130d00" "07000000", {.command = EfsClosedir}, "4b130d00" "00000000"},
    {{.command = EfsRename, .path = "/a", .path2 = "/b"}, "4b130e00" "2f6100" "2f6200",
     {.command = EfsRename}, "4b130e00" "00000000"},
    {{.command = EfsStat, .path = "/nv"}, "4b130f00" "2f6e7600",
     {.command = EfsStat, .attributes = {040755, 512, 2, 0x65F5E100, 0x65F5E101, 0x65F5E102}}, "4b130f00" "00000000" "ed410000" "00020000" "02000000" TIMES},
    // A link's own mode, 0120777, and no size or link count.
    {{.command = EfsLstat, .path = "/l"}, "4b131000" "2f6c00",
     {.command = EfsLstat, .attributes = {.mode = 0120777, .atime = 0x65F5E100, .mtime = 0x65F5E101,
                                          .ctime = 0x65F5E102}},
     "4b131000" "00000000" "ffa10000" TIMES},
    {{.command = EfsFstat, .fd = 3}, "4b131100" "03000000",
     {.command = EfsFstat, .attributes = {0100644, 3, 1, 0x65F5E100, 0x65F5E101, 0x65F5E102}},
     "4b131100" "00000000" "a4810000" "03000000" "01000000" TIMES},
    {{.command = EfsChmod, .mode = 0644, .path = "/a"}, "4b131200" "a401" "2f6100",
     {.command = EfsChmod, .error = EfsDenied}, "4b131200" "0d000000"},
    // Volume 1 of type "EFS2" in its 8 bytes, blocks of 512 bytes.
    {{.command = EfsStatfs, .path = "/"}, "4b131300" "2f00",
     {.command = EfsStatfs, .volume = {1, "EFS2", 512, 1024, 768, 760, 0x100000, 64, 4096}},
     "4b131300" "00000000" "01000000" "4546533200000000" "00020000" "00040000" "00030000" "f8020000" "00001000"
     "40000000" "00100000"},
};

QByteArray RequestOf(EfsCommand command)
{
    for (const Exchange& exchange : Exchanges)
        if (exchange.request.command == command)
            return Hex(exchange.requestHex);
    return {};
}

} // namespace

TEST(Efs2, EachCommandIsTheBytesOfItsLayoutBothWays)
{
    for (const Exchange& exchange : Exchanges) {
        const QByteArray request = Hex(exchange.requestHex);
        const QByteArray reply = Hex(exchange.replyHex);
        SCOPED_TRACE(exchange.request.command);
        EXPECT_EQ(EncodeEfsRequest(exchange.request).toHex(), request.toHex());
        EXPECT_EQ(ReadEfsRequest(request), exchange.request);
        EXPECT_EQ(EncodeEfsReply(exchange.reply).toHex(), reply.toHex()) << "the emulator sends these bytes";
        EXPECT_EQ(ReadEfsReply(reply), exchange.reply);
        EXPECT_TRUE(EfsAnswers(request, reply));
        EXPECT_EQ(ParseEfsReply(request, reply), exchange.reply);
    }
}

TEST(Efs2, PacketsCutShortOrOfAnotherKindGiveNothing)
{
    for (const Exchange& exchange : Exchanges) {
        const QByteArray request = Hex(exchange.requestHex);
        const QByteArray reply = Hex(exchange.replyHex);
        SCOPED_TRACE(exchange.request.command);
        // A write's data runs to the packet's end: a shorter one is a write
        // of less.
        if (exchange.request.command != EfsWrite) {
            for (qsizetype size = 0; size < request.size(); ++size)
                EXPECT_FALSE(ReadEfsRequest(request.first(size))) << size;
        }
        for (qsizetype size = 0; size < reply.size(); ++size)
            EXPECT_FALSE(ReadEfsReply(reply.first(size))) << size;
    }
    // A read reply whose data is shorter than its count, in the middle of
    // its data, is refused too.
    EXPECT_EQ(ErrorOf([] { ParseEfsReply(RequestOf(EfsRead), Hex("4b130400" "03000000" "00040000" "03000000"
                                                                 "00000000" "6162")); }),
              errWrongReply);

    // Another subsystem (NV by subscription), a command not listed here
    // (access, 20), another code.
    for (const char* other : {"4b300100" "b2000000", "4b131400" "2f6100", "13" "4b130f00" "2f6e7600"}) {
        EXPECT_FALSE(ReadEfsRequest(Hex(other))) << other;
        EXPECT_FALSE(ReadEfsReply(Hex(other))) << other;
    }
}

TEST(Efs2, ErrorRepliesAndAnswersToAnotherRequestAreRefused)
{
    const QByteArray stat = RequestOf(EfsStat);
    // "Bad command" echoing the request: the handset has no file system here.
    EXPECT_TRUE(EfsAnswers(stat, Hex("13") + stat));
    EXPECT_FALSE(EfsAnswers(stat, Hex("13") + RequestOf(EfsLstat)));
    try {
        ParseEfsReply(stat, Hex("13") + stat);
        ADD_FAILURE() << "bad command taken";
    } catch (const TessalyError& error) {
        EXPECT_EQ(error.number(), errHandsetRefused);
        EXPECT_TRUE(error.description().contains("file system")) << error.description().toStdString();
    }
    // An errno is an answer, not an error.
    EXPECT_EQ(ParseEfsReply(stat, Hex("4b130f00" "02000000" "00000000" "00000000" "00000000" TIMES)).error, EfsNoEntry);
    // The reply of another command, or of another subsystem.
    EXPECT_FALSE(EfsAnswers(stat, Hex("4b131000" "00000000" "ffa10000" TIMES)));
    EXPECT_EQ(ErrorOf([&] { ParseEfsReply(stat, Hex("4b131000" "00000000" "ffa10000" TIMES)); }), errWrongReply);
    EXPECT_EQ(ErrorOf([&] { ParseEfsReply(stat, Hex("4b300f00" "00000000")); }), errWrongReply);

    // A late read reply, for another offset or another file, is waited past.
    const QByteArray read = RequestOf(EfsRead);
    for (const char* late : {"4b130400" "03000000" "00020000" "03000000" "00000000" "616263",
                             "4b130400" "04000000" "00040000" "03000000" "00000000" "616263"}) {
        EXPECT_FALSE(EfsAnswers(read, Hex(late))) << late;
        EXPECT_EQ(ErrorOf([&] { ParseEfsReply(read, Hex(late)); }), errWrongReply) << late;
    }
    // And a write's, several of which may be on the way at once.
    const QByteArray write = RequestOf(EfsWrite);
    for (const char* late : {"4b130500" "04000000" "20000000" "02000000" "00000000",
                             "4b130500" "05000000" "10000000" "02000000" "00000000"}) {
        EXPECT_FALSE(EfsAnswers(write, Hex(late))) << late;
        EXPECT_EQ(ErrorOf([&] { ParseEfsReply(write, Hex(late)); }), errWrongReply) << late;
    }
    // So is the reply for another entry of a folder, or another folder.
    const QByteArray readdir = RequestOf(EfsReaddir);
    for (const char* late : {"4b130c00" "07000000" "02000000", "4b130c00" "08000000" "01000000"}) {
        const QByteArray reply = Hex(late) + Hex("00000000" "00000000" "a4810000" "03000000" TIMES "6100");
        EXPECT_FALSE(EfsAnswers(readdir, reply)) << late;
        EXPECT_EQ(ErrorOf([&] { ParseEfsReply(readdir, reply); }), errWrongReply) << late;
    }
}

TEST(Efs2, ErrorTextNamesTheErrno)
{
    EXPECT_EQ(EfsErrorText(EfsNoEntry), "No such file or directory (ENOENT)");
    EXPECT_EQ(EfsErrorText(EfsNotEmpty), "Directory not empty (ENOTEMPTY)");
    EXPECT_EQ(EfsErrorText(EfsDirEntryNotFound), "No more directory entries (0x40000004)");
    EXPECT_EQ(EfsErrorText(1234), "error 1234");
}
