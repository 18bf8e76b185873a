// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// tessaly-emu's file system through EFS2, over a real pseudo-terminal and
// the link's own encoders and decoders: the factory tree as a walk finds it,
// files and folders made, read, renamed and removed, links, the errnos of a
// missing path, a locked file and a full disk, the tree kept across a
// restart, and a busy NV item.
#include "link/DiagPackets.h"
#include "link/Efs2.h"
#include "link/SerialLink.h"
#include "model/Catalogue.h"
#include "model/NvFile.h"
#include "support/Emulator.h"
#include "support/RuntimeErrors.h"

#include <tessaly/TessalyError.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>

using namespace tessaly;
using namespace tessaly::link;
using namespace std::chrono_literals;

namespace {

class EmulatorEfsTest : public ::testing::Test {
protected:
    // Starts the emulator with `arguments` on the factory NV items in
    // `folder` (this test's own by default); its file system is kept beside.
    void start(const QStringList& arguments = {}, const QString& in = {})
    {
        line.reset();
        model::NvFile file;
        for (const auto& [address, data] : model::Catalogue::BuiltIn().factory())
            file.entries.push_back({address, model::NvStatus::Done, data});
        const QString state = QDir(in.isEmpty() ? folder.path() : in).filePath(QStringLiteral("handset.json"));
        line = std::make_unique<SerialLink>(emulator.startOn(state, file, arguments), 1s);
    }

    EfsReply call(const EfsRequest& request)
    {
        const QByteArray bytes = EncodeEfsRequest(request);
        return ParseEfsReply(bytes, line->transact(bytes));
    }

    EfsReply open(const QString& path, int32_t flags, int32_t mode = 0644)
    {
        return call({.command = EfsOpen, .flags = flags, .mode = mode, .path = path});
    }

    int32_t stat(const QString& path) { return call({.command = EfsStat, .path = path}).error; }

    // The file's bytes, asked 4 KB at a time; each reply gives 1024 at most.
    QByteArray readWhole(const QString& path)
    {
        const EfsReply opened = open(path, EfsReadOnly);
        EXPECT_EQ(opened.error, EfsOk) << qPrintable(path);
        QByteArray whole;
        while (true) {
            const EfsReply part
                = call({.command = EfsRead, .fd = opened.fd, .size = 4096, .offset = uint32_t(whole.size())});
            EXPECT_EQ(part.error, EfsOk);
            EXPECT_LE(part.count, 1024);
            if (part.error != EfsOk || part.count <= 0)
                break;
            whole += part.data;
        }
        EXPECT_EQ(call({.command = EfsClose, .fd = opened.fd}).error, EfsOk);
        return whole;
    }

    // The entries of `path` by readdir, until the handset says there are no
    // more; its opendir's errno in `error`.
    std::vector<EfsReply> list(const QString& path, int32_t* error = nullptr)
    {
        const EfsReply opened = call({.command = EfsOpendir, .path = path});
        if (error)
            *error = opened.error;
        std::vector<EfsReply> entries;
        if (opened.error != EfsOk)
            return entries;
        for (int32_t sequence = 1;; ++sequence) {
            EfsReply entry = call({.command = EfsReaddir, .folder = opened.folder, .sequence = sequence});
            if (entry.error == EfsDirEntryNotFound)
                break;
            EXPECT_EQ(entry.error, EfsOk);
            entries.push_back(std::move(entry));
        }
        EXPECT_EQ(call({.command = EfsClosedir, .folder = opened.folder}).error, EfsOk);
        return entries;
    }

    QTemporaryDir folder;
    Emulator emulator;
    std::unique_ptr<SerialLink> line;
};

} // namespace

TEST_F(EmulatorEfsTest, FactoryTreeAsAWalkFindsItBehindHelloAndTheSameOnEveryFreshHandset)
{
    start();
    const EfsReply hello = call({.command = EfsHello, .window = {1, 1024, 1, 1024, 1, 1024, 1, 1, 1, 0}});
    EXPECT_EQ(hello.window.targetBytes / hello.window.targetPackets, 1024u) << "a packet of a read's largest piece";
    EXPECT_EQ(hello.window.version, 1u);
    EXPECT_GT(call({.command = EfsQuery}).limits.maxPath, 0);

    int files = 0;
    int64_t bytes = 0;
    int32_t largest = 0;
    std::vector<QString> items, links, locked;
    std::vector<QString> folders{QStringLiteral("/")};
    while (!folders.empty()) {
        const QString at = folders.back();
        folders.pop_back();
        int32_t error = EfsOk;
        for (const EfsReply& entry : list(at, &error)) {
            const QString path = EfsPath(at, entry.name);
            if (entry.entryType == EfsEntryFolder) {
                folders.push_back(path);
            } else if (entry.entryType == EfsEntryLink) {
                links.push_back(path);
            } else {
                ++files;
                bytes += entry.attributes.size;
                largest = std::max(largest, entry.attributes.size);
                if (path.startsWith(QLatin1String("/nv/item_files/")) && !path.endsWith(QLatin1String(".conf")))
                    items.push_back(path);
            }
        }
        if (error != EfsOk)
            locked.push_back(at + QStringLiteral(": ") + EfsErrorText(error));
    }
    EXPECT_GE(files, 300);
    EXPECT_GE(bytes, 1024 * 1024);
    EXPECT_GE(largest, 64 * 1024);
    EXPECT_GE(items.size(), 200u);
    EXPECT_GE(links.size(), 3u);
    EXPECT_EQ(locked, std::vector<QString>{"/safe/sfs: Permission denied (EACCES)"});

    // A .conf file lists item files that are there.
    const QList<QByteArray> listed = readWhole(QStringLiteral("/nv/item_files/conf/mmode.conf")).split('\n');
    ASSERT_GT(listed.size(), 10);
    EXPECT_TRUE(std::find(items.begin(), items.end(), QString::fromLatin1(listed[0])) != items.end());
    const QByteArray value = readWhole(QString::fromLatin1(listed[0]));
    EXPECT_TRUE(value.size() >= 1 && value.size() <= 64) << value.size();

    QTemporaryDir other;
    start({}, other.path());
    EXPECT_EQ(readWhole(QString::fromLatin1(listed[0])), value) << "the factory bytes come from a fixed seed";
}

TEST_F(EmulatorEfsTest, FileWrittenIsReadBackWholeAcrossReadsThenRenamedAndUnlinked)
{
    start();
    QByteArray bytes;
    for (int i = 0; i < 3000; ++i)
        bytes.append(char(i * 7 % 251));
    const QString path = QStringLiteral("/data/notes.bin");
    const EfsReply made = open(path, EfsWriteOnly | EfsCreate | EfsExclusive);
    ASSERT_EQ(made.error, EfsOk);
    for (int at = 0; at < bytes.size(); at += 1000) {
        const EfsReply written = call({.command = EfsWrite, .fd = made.fd, .offset = uint32_t(at),
                                       .data = bytes.mid(at, 1000)});
        EXPECT_EQ(std::tuple(written.error, written.count), std::tuple(EfsOk, 1000));
    }
    EXPECT_EQ(call({.command = EfsFstat, .fd = made.fd}).attributes.size, 3000);
    EXPECT_EQ(call({.command = EfsRead, .fd = made.fd, .size = 10}).error, EfsBadFile) << "opened to write only";
    EXPECT_EQ(call({.command = EfsClose, .fd = made.fd}).error, EfsOk);
    EXPECT_EQ(call({.command = EfsClose, .fd = made.fd}).error, EfsBadFile);
    EXPECT_EQ(readWhole(path), bytes);
    EXPECT_EQ(open(path, EfsWriteOnly | EfsCreate | EfsExclusive).error, EfsExists);

    // Appending goes to the end whatever the offset; truncating empties.
    const EfsReply appending = open(path, EfsWriteOnly | EfsAppend);
    call({.command = EfsWrite, .fd = appending.fd, .offset = 0, .data = "end"});
    call({.command = EfsClose, .fd = appending.fd});
    EXPECT_EQ(readWhole(path), bytes + "end");

    const QString renamed = QStringLiteral("/data/ds_profile/notes.bin");
    EXPECT_EQ(call({.command = EfsRename, .path = path, .path2 = renamed}).error, EfsOk);
    EXPECT_EQ(stat(path), EfsNoEntry);
    EXPECT_EQ(readWhole(renamed), bytes + "end");
    const EfsReply truncating = open(renamed, EfsReadWrite | EfsTruncate);
    EXPECT_EQ(call({.command = EfsFstat, .fd = truncating.fd}).attributes.size, 0);
    call({.command = EfsClose, .fd = truncating.fd});
    EXPECT_EQ(call({.command = EfsUnlink, .path = renamed}).error, EfsOk);
    EXPECT_EQ(stat(renamed), EfsNoEntry);
    EXPECT_EQ(call({.command = EfsUnlink, .path = renamed}).error, EfsNoEntry);
}

TEST_F(EmulatorEfsTest, FoldersAndLinksKeepToTheirKinds)
{
    start();
    const QString logs = QStringLiteral("/data/logs");
    EXPECT_EQ(call({.command = EfsMkdir, .mode = 0755, .path = logs}).error, EfsOk);
    EXPECT_EQ(call({.command = EfsMkdir, .mode = 0755, .path = logs}).error, EfsExists);
    EXPECT_EQ(call({.command = EfsMkdir, .mode = 0755, .path = "/data/none/logs"}).error, EfsNoEntry);
    call({.command = EfsClose, .fd = open(logs + "/1.log", EfsWriteOnly | EfsCreate).fd});
    EXPECT_EQ(call({.command = EfsRmdir, .path = logs}).error, EfsNotEmpty);
    EXPECT_EQ(call({.command = EfsRmdir, .path = logs + "/1.log"}).error, EfsNotFolder);
    EXPECT_EQ(call({.command = EfsUnlink, .path = logs}).error, EfsIsFolder);
    EXPECT_EQ(open(logs, EfsWriteOnly).error, EfsIsFolder);
    EXPECT_EQ(stat(logs + "/1.log/x"), EfsNotFolder);
    EXPECT_EQ(call({.command = EfsUnlink, .path = logs + "/1.log"}).error, EfsOk);
    EXPECT_EQ(call({.command = EfsRmdir, .path = logs}).error, EfsOk);
    EXPECT_EQ(stat(logs), EfsNoEntry);

    // A link answers for its target in stat and open, for itself in lstat,
    // readlink and unlink; a relative target is taken from the link's folder.
    const QString link = QStringLiteral("/data/policy.xml");
    const QString target = QStringLiteral("../policyman/carrier_policy.xml");
    EXPECT_EQ(call({.command = EfsSymlink, .path = target, .path2 = link}).error, EfsOk);
    EXPECT_EQ(call({.command = EfsReadlink, .path = link}).name, target);
    EXPECT_EQ(call({.command = EfsReadlink, .path = "/data/eri.bin"}).error, EfsInvalid);
    const EfsReply own = call({.command = EfsLstat, .path = link});
    const EfsReply through = call({.command = EfsStat, .path = link});
    EXPECT_EQ(own.attributes.mode & EfsKindMask, EfsKindLink);
    EXPECT_EQ(through.attributes.mode & EfsKindMask, EfsKindFile);
    EXPECT_EQ(readWhole(link), readWhole(QStringLiteral("/policyman/carrier_policy.xml")));
    EXPECT_TRUE(readWhole(link).startsWith("<?xml"));
    EXPECT_EQ(call({.command = EfsUnlink, .path = link}).error, EfsOk);
    EXPECT_EQ(stat(QStringLiteral("/policyman/carrier_policy.xml")), EfsOk) << "the target stays";
    // A factory link to a folder leads into it.
    EXPECT_EQ(stat(QStringLiteral("/cfg/mmode.conf")), EfsOk);
}

TEST_F(EmulatorEfsTest, MissingLockedAndFullGiveTheirErrnos)
{
    start();
    EXPECT_EQ(stat(QStringLiteral("/nv/item_files/modem/mmode/nothing")), EfsNoEntry);
    EXPECT_EQ(open(QStringLiteral("/nothing/x"), EfsWriteOnly | EfsCreate).error, EfsNoEntry);
    const QString lock = QStringLiteral("/nv/item_files/modem/uim/mmgsdi/perso_lock");
    EXPECT_EQ(stat(lock), EfsOk) << "there, but its mode is 0000";
    EXPECT_EQ(open(lock, EfsReadOnly).error, EfsDenied);
    EXPECT_EQ(stat(QStringLiteral("/safe/sfs/seed.bin")), EfsDenied) << "its folder may not be entered";
    EXPECT_EQ(call({.command = EfsChmod, .mode = 0644, .path = lock}).error, EfsOk);
    EXPECT_EQ(readWhole(lock).size(), 24) << "its mode changed, it opens";

    // Room for the factory files and 512 KB: a write that would grow a file
    // past it is refused whole.
    const EfsReply blob = open(QStringLiteral("/data/blob"), EfsWriteOnly | EfsCreate);
    EXPECT_EQ(call({.command = EfsWrite, .fd = blob.fd, .offset = 600 * 1024, .data = "x"}).error, EfsNoSpace);
    EXPECT_EQ(call({.command = EfsFstat, .fd = blob.fd}).attributes.size, 0);
    EXPECT_EQ(call({.command = EfsWrite, .fd = blob.fd, .offset = 400 * 1024, .data = "x"}).error, EfsOk);
    EXPECT_EQ(call({.command = EfsWrite, .fd = 99, .data = "x"}).error, EfsBadFile);
    std::vector<int32_t> opened{blob.fd};
    for (EfsReply more; (more = open(QStringLiteral("/data/eri.bin"), EfsReadOnly)).error == EfsOk;)
        opened.push_back(more.fd);
    EXPECT_EQ(open(QStringLiteral("/data/eri.bin"), EfsReadOnly).error, EfsTooManyOpen);
    EXPECT_EQ(opened.size(), 64u);

    start({"--efs-size", "1000000"}); // less than the factory files: a full disk
    const EfsReply volume = call({.command = EfsStatfs, .path = "/"});
    EXPECT_EQ(volume.volume.availableBlocks, 0);
    const EfsReply note = open(QStringLiteral("/data/note"), EfsWriteOnly | EfsCreate);
    EXPECT_EQ(call({.command = EfsWrite, .fd = note.fd, .data = "x"}).error, EfsNoSpace);
}

TEST_F(EmulatorEfsTest, TreeIsKeptAcrossARestartAndADamagedOneIsSetAside)
{
    start();
    call({.command = EfsMkdir, .mode = 0700, .path = "/data/kept"});
    const EfsReply made = open(QStringLiteral("/data/kept/value"), EfsWriteOnly | EfsCreate);
    call({.command = EfsWrite, .fd = made.fd, .data = "fifty"});
    call({.command = EfsClose, .fd = made.fd});
    call({.command = EfsUnlink, .path = "/data/eri.bin"});

    start();
    EXPECT_EQ(readWhole(QStringLiteral("/data/kept/value")), "fifty");
    EXPECT_EQ(call({.command = EfsStat, .path = "/data/kept"}).attributes.mode, int32_t(EfsKindFolder | 0700));
    EXPECT_EQ(stat(QStringLiteral("/data/eri.bin")), EfsNoEntry);

    line.reset();
    emulator.stop();
    const QString kept = folder.filePath(QStringLiteral("handset.json.efs.json"));
    QFile damaged(kept);
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly | QIODevice::Truncate));
    damaged.write("{\"format\": \"tessaly-emu file system\", \"entries\": [{\"path\": \"/x\"}]}");
    damaged.close();
    emulator.start(QStringLiteral(TESSALY_EMU), {"--state", folder.filePath(QStringLiteral("handset.json"))});
    ASSERT_TRUE(emulator.waitForFinished(5000));
    EXPECT_EQ(emulator.exitCode(), 1);
    EXPECT_TRUE(emulator.readAllStandardError().contains("entry 1 (/x) has no mode")) << "what is wrong, and where";
    EXPECT_FALSE(QFile::exists(kept));
    EXPECT_EQ(QDir(folder.path()).entryList({"handset.json.efs.json.damaged-*"}).size(), 1);
}

TEST_F(EmulatorEfsTest, BusyItemAnswersBusyForItsFirstReadsAndBadValuesAreRefused)
{
    start({"--busy", "178:2"});
    model::NvData index0{};
    const QByteArray read = NvItemRequest(CmdNvRead, 178, index0);
    std::vector<uint16_t> statuses;
    for (int i = 0; i < 3; ++i)
        statuses.push_back(ParseNvItem(read, line->transact(read, true)).status);
    EXPECT_EQ(statuses, (std::vector<uint16_t>{1, 1, 0}));
    const QByteArray other = NvItemRequest(CmdNvRead, 71, index0);
    EXPECT_EQ(ParseNvItem(other, line->transact(other)).status, 0) << "only the busy item";

    start({"--busy", "71"});
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(ParseNvItem(other, line->transact(other)).status, 1);

    line.reset();
    emulator.stop();
    for (const QStringList& bad : {QStringList{"--busy", "mdn"}, QStringList{"--busy", "178:-1"},
                                   QStringList{"--efs-size", "big"}}) {
        emulator.start(QStringLiteral(TESSALY_EMU), QStringList{"--state", folder.filePath("handset.json")} + bad);
        ASSERT_TRUE(emulator.waitForFinished(5000));
        EXPECT_EQ(emulator.exitCode(), 2) << qPrintable(bad.join(u' '));
    }
}

TEST_F(EmulatorEfsTest, RequestsCutShortOrToAnOlderModelGetErrorReplies)
{
    start();
    const QByteArray cut = QByteArray::fromHex("4b130200" "0100");
    EXPECT_EQ(line->transact(cut), ErrorReply(CmdBadLength, cut));
    const QByteArray unknown = QByteArray::fromHex("4b136300");
    EXPECT_EQ(line->transact(unknown), ErrorReply(CmdBadCommand, unknown));

    start({"--model", "SIM-300"});
    EXPECT_EQ(ErrorNumberOf<TessalyError>([&] { call({.command = EfsHello}); }), errHandsetRefused);
}
