// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "Restore.h"

#include "link/Backup.h"
#include "link/Restore.h"
#include "link/EfsRestore.h"

#include <tessaly/TessalyError.h>

#include <cstdio>

namespace halvane {

using namespace tessaly;

namespace {

void Tell(const QString& outcome)
{
    std::printf("%s\n", qPrintable(outcome));
    std::fflush(stdout);
}

// Writes the backup's files back, after what the handset holds is read and
// kept as a backup of its own. Gives whether every file to be written was.
bool RestoreFiles(const link::Backup& backup, const Options& options, link::SerialLink& line,
                  const std::function<void(const QString&)>& tell)
{
    link::EfsClient client(line, options.inFlight, options.replyTime);
    client.hello();
    const link::EfsTree now = link::ReadEfsTree(client);
    link::Backup before{backup.esn, backup.meid, QDateTime::currentDateTime(), {}, true, now.entries};
    tell(QStringLiteral("What the handset's files held before is kept in %1").arg(before.save(link::BackupFolder())));
    return link::RestoreFiles(backup.files, now, client, options.allItems, tell);
}

// The failure `error` with what it left undone said after it.
TessalyError Undone(const TessalyError& error, const char* undone)
{
    return TessalyError(error.number(), error.description() + QLatin1Char(' ') + QLatin1String(undone));
}

} // namespace

bool RestoreItemsAndFiles(const Options& options, const link::Backup& backup, link::SerialLink& line,
                          link::LiveNvMemory& memory, const std::function<void(const QString&)>& tell)
{
    bool whole = false;
    try {
        whole = link::RestoreBackup(backup, memory, tell, options.allItems);
    } catch (const TessalyError& error) {
        throw Undone(error, "Nothing was written to the handset.");
    }
    try {
        if (!backup.files.empty())
            whole = RestoreFiles(backup, options, line, tell) && whole;
    } catch (const TessalyError& error) {
        throw Undone(error, "The handset's files were not restored.");
    }
    return whole;
}

int RestoreFromBackup(const Options& options)
{
    try {
        link::SerialLink line(options.port, options.replyTime);
        const QString spc = options.spc;
        link::LiveNvMemory memory(line, [spc] { return spc; });
        memory.setBackupFolder(link::BackupFolder()); // what the handset held is kept first
        link::Backup backup;
        try {
            backup = link::Backup::Load(options.restoreBackup);
        } catch (const TessalyError& error) {
            throw Undone(error, "Nothing was written to the handset.");
        }
        for (const QString& stream : backup.passedOver)
            std::fprintf(stderr, "halvane: %s is passed over: halvane does not know what it holds\n",
                         qPrintable(stream));
        const bool whole = RestoreItemsAndFiles(options, backup, line, memory, Tell);
        return whole && backup.passedOver.isEmpty() ? 0 : 1;
    } catch (const TessalyError& error) {
        std::fprintf(stderr, "halvane: %s\n", qPrintable(error.description()));
        return 1;
    }
}

} // namespace halvane
