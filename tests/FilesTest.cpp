// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane's work with the handset's file system against tessaly-emu: folders
// listed, files copied out and written in, the file system kept in a full
// backup and written back by its rules; and the full backup's scan, which
// asks a busy item again, keeps one that stays busy and tells it.
#include "model/NvFile.h"
#include "support/Programs.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace tessaly::model;

namespace {

const QString Blob = QStringLiteral("/nv/rf_cal/rfcal_blob.bin"); // the factory tree's largest file
const QString Locked = QStringLiteral("/nv/item_files/modem/uim/mmgsdi/perso_lock"); // mode 0000

class FilesTest : public HandsetRunTest {
protected:
    QString startFactory(const QStringList& faults = {}) { return emulator.startOn(state(), {}, faults); }

    // The bytes the emulator keeps at `path`, from the file beside its state.
    QByteArray kept(const QString& path)
    {
        QFile file(state() + QStringLiteral(".efs.json"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << "the emulator keeps its tree once it changed";
        for (const QJsonValue entry : QJsonDocument::fromJson(file.readAll())[QLatin1String("entries")].toArray())
            if (entry[QLatin1String("path")].toString() == path)
                return QByteArray::fromBase64(entry[QLatin1String("data")].toString().toLatin1());
        ADD_FAILURE() << "no " << qPrintable(path);
        return {};
    }

    QByteArray local(const QString& path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
        return file.readAll();
    }

    void writeLocal(const char* name, const QByteArray& bytes)
    {
        QFile out(file(name));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }

    NvFile backupFile(const QString& path)
    {
        NvFile nv;
        EXPECT_EQ(ReadNvFile(path, NvFileKind::FullBackup, nv), "");
        return nv;
    }
};

const EfsEntry* Find(const std::vector<EfsEntry>& entries, const QString& path)
{
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const EfsEntry& e) { return e.path == path; });
    return found == entries.end() ? nullptr : &*found;
}

} // namespace

TEST_F(FilesTest, FoldersAreListedFilesCopiedOutAndWrittenInKeepingWhatWasThere)
{
    const QString port = startFactory();
    Outcome run = halvane({"--port", port, "--efs-list", "/"});
    ASSERT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_TRUE(run.out.contains(QRegularExpression(QStringLiteral("^drwxr-xr-x +0 \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d nv$"),
                                                    QRegularExpression::MultilineOption)))
        << qPrintable(run.out);
    EXPECT_TRUE(run.out.contains(QRegularExpression(QStringLiteral("^l[rwx-]{9} .* -> /"),
                                                    QRegularExpression::MultilineOption)))
        << "a link with its target: " << qPrintable(run.out);

    // A file copied out whole, its size as the listing gives it.
    run = halvane({"--port", port, "--efs-list", "/nv/rf_cal", "--json"});
    ASSERT_EQ(run.status, 0) << qPrintable(run.err);
    const QJsonArray listed = QJsonDocument::fromJson(run.out.toUtf8()).array();
    const auto blob = std::find_if(listed.begin(), listed.end(),
                                   [](const QJsonValue& entry) { return entry[QLatin1String("path")] == Blob; });
    ASSERT_NE(blob, listed.end()) << qPrintable(run.out);
    EXPECT_EQ((*blob)[QLatin1String("mode")].toInt() & 0170000, 0100000) << "a file";
    run = halvane({"--port", port, "--efs-get", Blob, file("blob.bin")});
    ASSERT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_EQ(local(file("blob.bin")).size(), (*blob)[QLatin1String("size")].toInt());
    EXPECT_GE(local(file("blob.bin")).size(), 64 * 1024);

    // Written in where no folder was yet, then over itself: the first bytes
    // kept in the backups folder, the new ones read back.
    const QString path = QStringLiteral("/nv/item_files/tests/deep/value");
    writeLocal("first", "first bytes");
    run = halvane({"--port", port, "--efs-put", file("first"), path});
    ASSERT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_EQ(kept(path), "first bytes");
    EXPECT_EQ(kept(Blob), local(file("blob.bin"))) << "copied out byte for byte";
    writeLocal("second", QByteArray(3000, 'x'));
    run = halvane({"--port", port, "--efs-put", file("second"), path});
    ASSERT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_TRUE(run.out.contains(QLatin1String("read back the same, 3000 bytes"))) << qPrintable(run.out);
    EXPECT_EQ(kept(path), QByteArray(3000, 'x'));
    ASSERT_EQ(backups().size(), 0) << "kept in a folder of its own";
    const QStringList before = QDir(folder.filePath(QStringLiteral("data/Halvane/backups")))
                                   .entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    ASSERT_EQ(before.size(), 1);
    EXPECT_EQ(local(folder.filePath(QStringLiteral("data/Halvane/backups/") + before[0] + path)), "first bytes");
}

TEST_F(FilesTest, BadPathsAndFilesAreToldAndChangeNothing)
{
    const QString port = startFactory();
    writeLocal("bytes", "abc");
    writeLocal("there", "mine");
    const struct {
        QStringList arguments;
        int status;
        const char* told;
    } cases[] = {
        {{"--efs-list", "/no/such"}, 1, "/no/such could not be listed: No such file or directory (ENOENT)"},
        {{"--efs-get", Locked, file("out")}, 1, "could not be read: Permission denied (EACCES)"},
        {{"--efs-get", Blob, file("there")}, 1, "is there already; it is not written over"},
        {{"--efs-put", file("missing"), "/nv/x"}, 1, "cannot be read"},
        {{"--efs-put", file("bytes"), "/nv"}, 1, "/nv could not be written: Is a directory (EISDIR)"},
        {{"--efs-put", file("bytes"), "nv/x"}, 2, "is not a path on the handset"},
        {{"--efs-put", file("bytes"), Blob + QStringLiteral("/under")}, 1, "Not a directory (ENOTDIR)"},
    };
    for (const auto& [arguments, status, told] : cases) {
        const Outcome run = halvane(QStringList{"--port", port} + arguments);
        EXPECT_EQ(run.status, status) << qPrintable(arguments.join(' '));
        EXPECT_TRUE(run.err.contains(QLatin1String(told))) << qPrintable(run.err);
    }
    EXPECT_FALSE(QFileInfo::exists(file("out")));
    EXPECT_EQ(local(file("there")), "mine");
    EXPECT_FALSE(QFileInfo::exists(state() + QStringLiteral(".efs.json"))) << "the handset's tree never changed";
}

TEST_F(FilesTest, FullBackupKeepsTheFileSystemAndARestoreWritesBackOnlyWhatDiffers)
{
    QString port = startFactory();
    writeLocal("extra", "only on this handset");
    ASSERT_EQ(halvane({"--port", port, "--efs-put", file("extra"), "/data/extra"}).status, 0);
    Outcome run = halvane({"--port", port, "--read", "--all-items", "--items", "0-99"});
    ASSERT_EQ(run.status, 0) << qPrintable(run.err);
    const QString backup = run.out.section(QLatin1Char('\n'), 0, 0);
    EXPECT_TRUE(run.out.contains(Locked + QStringLiteral(": file not read: Permission denied (EACCES)")))
        << qPrintable(run.out);
    EXPECT_TRUE(run.out.contains(QRegularExpression(QStringLiteral("; \\d{3} files, 1\\.\\d MB, 2 not read; "))))
        << qPrintable(run.out);
    const std::vector<EfsEntry> files = backupFile(backup).files;
    ASSERT_NE(Find(files, Blob), nullptr);
    EXPECT_EQ(Find(files, Blob)->data, kept(Blob));
    EXPECT_EQ(Find(files, QStringLiteral("/data/extra"))->data, "only on this handset");
    EXPECT_TRUE(std::any_of(files.begin(), files.end(), [](const EfsEntry& e) { return IsEfsLink(e) && !e.target.isEmpty(); }));
    EXPECT_EQ(Find(files, Locked), nullptr) << "not read: not kept";

    // One file changed on the handset: the restore writes it alone back.
    writeLocal("changed", "changed");
    ASSERT_EQ(halvane({"--port", port, "--efs-put", file("changed"), Blob}).status, 0);
    run = halvane({"--port", port, "--restore-backup", backup});
    EXPECT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_TRUE(run.out.contains(Blob + QStringLiteral(": restored\n"))) << qPrintable(run.out);
    EXPECT_EQ(run.out.count(QLatin1String(": restored\n")), 1) << qPrintable(run.out);
    EXPECT_TRUE(run.out.contains(QLatin1String("What the handset's files held before is kept in")));
    EXPECT_EQ(kept(Blob), Find(files, Blob)->data);
    const QString before = run.out.section(QLatin1String("What the handset's files held before is kept in "), 1)
                               .section(QLatin1Char('\n'), 0, 0);
    EXPECT_EQ(Find(backupFile(before).files, Blob)->data, "changed");

    // A fresh handset of the same identity lacks the extra file: it is made
    // only with --all-items.
    QFile::remove(state() + QStringLiteral(".efs.json"));
    port = startFactory();
    run = halvane({"--port", port, "--restore-backup", backup});
    EXPECT_TRUE(run.out.contains(QLatin1String("/data/extra: skipped (not on the handset: made only with --all-items)")))
        << qPrintable(run.out);
    EXPECT_FALSE(QFileInfo::exists(state() + QStringLiteral(".efs.json"))) << "nothing written";
    run = halvane({"--port", port, "--restore-backup", backup, "--all-items"});
    EXPECT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_TRUE(run.out.contains(QLatin1String("/data/extra: made"))) << qPrintable(run.out);
    EXPECT_EQ(kept(QStringLiteral("/data/extra")), "only on this handset");

    run = halvane({"--port", port, "--read", "--all-items", "--items", "0-9", "--no-files"});
    EXPECT_TRUE(run.out.contains(QLatin1String("; files left out; "))) << qPrintable(run.out);
    EXPECT_TRUE(backupFile(run.out.section(QLatin1Char('\n'), 0, 0)).files.empty());
}

TEST_F(FilesTest, BusyItemIsAskedAgainThenKeptAsBusyToldAndNeverRestored)
{
    Outcome run = halvane({"--port", startFactory({"--busy", "71:2"}), "--read", "--items", "60-80", "--no-files"});
    EXPECT_EQ(run.status, 0) << "busy twice, then read: " << qPrintable(run.out + run.err);
    EXPECT_TRUE(run.out.contains(QLatin1String(", 0 busy, "))) << qPrintable(run.out);

    const QString port = startFactory({"--busy", "71"});
    run = halvane({"--port", port, "--read", "--items", "60-80", "--no-files"});
    EXPECT_EQ(run.status, 1) << "a gap: a script must know";
    EXPECT_TRUE(run.out.contains(QLatin1String("NV item 71: kept as busy"))) << qPrintable(run.out);
    EXPECT_TRUE(run.out.contains(QLatin1String("Items 60 to 80: "))
                && run.out.contains(QLatin1String(", 1 busy, 0 refused")))
        << qPrintable(run.out);
    const QString backup = run.out.section(QLatin1Char('\n'), 0, 0);
    const NvFile nv = backupFile(backup);
    const auto busy = std::find_if(nv.entries.begin(), nv.entries.end(),
                                   [](const NvEntry& entry) { return entry.address.item == 71; });
    ASSERT_NE(busy, nv.entries.end()) << "kept, with its status";
    EXPECT_EQ(busy->status, NvStatus::Busy);

    run = halvane({"--port", port, "--restore-backup", backup, "--all-items"});
    EXPECT_TRUE(run.out.contains(QLatin1String("NV item 71: skipped (kept with the status:"))) << qPrintable(run.out);
}

TEST_F(FilesTest, HandsetWithoutAFileSystemIsBackedUpWithItsItemsAlone)
{
    const Outcome run
        = halvane({"--port", startFactory({"--model", "SIM-300"}), "--read", "--all-items", "--items", "0-9"});
    EXPECT_EQ(run.status, 0) << qPrintable(run.err);
    EXPECT_TRUE(run.out.contains(QLatin1String("; no file system; "))) << qPrintable(run.out);
}

TEST_F(FilesTest, FileThatReadsBackDifferentIsToldAsFailed)
{
    const QString path = QStringLiteral("/data/flaky");
    const QString port = startFactory({"--garble", path});
    writeLocal("bytes", "what was sent");
    Outcome run = halvane({"--port", port, "--efs-put", file("bytes"), path});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains(path + QStringLiteral(" reads back different from what was written")))
        << qPrintable(run.err);

    // A backup that holds the file: its restore writes it, reads it back
    // different, and tells it as failed.
    run = halvane({"--port", port, "--read", "--items", "0-9"});
    const QString backup = run.out.section(QLatin1Char('\n'), 0, 0);
    NvFile nv = backupFile(backup);
    for (EfsEntry& entry : nv.files)
        if (entry.path == path)
            entry.data = "what the backup holds";
    ASSERT_EQ(WriteNvFile(backup, nv), "");
    run = halvane({"--port", port, "--restore-backup", backup});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.out.contains(path + QStringLiteral(": failed (it reads back different from what was written)")))
        << qPrintable(run.out);
}

