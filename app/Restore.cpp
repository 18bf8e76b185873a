// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "Restore.h"

#include "link/Backup.h"
#include "link/Restore.h"
#include "link/EfsRestore.h"

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
bool RestoreFiles(const link::Backup& backup, const Options& options, Handset& handset)
{
    link::EfsClient client(*handset.line, options.inFlight, options.replyTime);
    client.hello();
    const link::EfsTree now = link::ReadEfsTree(client);
    link::Backup before{backup.esn, backup.meid, QDateTime::currentDateTime(), {}, true, now.entries};
    Tell(QStringLiteral("What the handset's files held before is kept in %1").arg(before.save(link::BackupFolder())));
    return link::RestoreFiles(backup.files, now, client, options.allItems, Tell);
}

} // namespace

int RestoreFromBackup(const Options& options, Handset& handset)
{
    link::Backup backup;
    bool whole = false;
    try {
        backup = link::Backup::Load(options.restoreBackup);
        for (const QString& stream : backup.passedOver)
            std::fprintf(stderr, "halvane: %s is passed over: halvane does not know what it holds\n",
                         qPrintable(stream));
        whole = link::RestoreBackup(backup, *handset.live, Tell, options.allItems);
    } catch (const TessalyError& error) {
        std::fprintf(stderr, "halvane: %s Nothing was written to the handset.\n", qPrintable(error.description()));
        return 1;
    }
    try {
        if (!backup.files.empty())
            whole = RestoreFiles(backup, options, handset) && whole;
    } catch (const TessalyError& error) {
        std::fprintf(stderr, "halvane: %s The handset's files were not restored.\n", qPrintable(error.description()));
        return 1;
    }
    return whole && backup.passedOver.isEmpty() ? 0 : 1;
}

} // namespace halvane
