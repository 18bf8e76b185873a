// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "link/EfsRestore.h"

#include "link/DiagPackets.h"

#include <tessaly/TessalyError.h>

#include <map>

namespace tessaly::link {

bool RestoreFiles(const std::vector<model::EfsEntry>& files, const EfsTree& onHandset, EfsClient& client,
                  bool createMissing, const std::function<void(const QString&)>& tell)
{
    std::map<QString, const model::EfsEntry*> held;
    for (const model::EfsEntry& entry : onHandset.entries)
        held[entry.path] = &entry;
    std::map<QString, QString> unread(onHandset.gaps.begin(), onHandset.gaps.end());

    bool whole = true;
    QString stopped;
    for (const model::EfsEntry& entry : files) {
        const auto found = held.find(entry.path);
        const model::EfsEntry* now = found == held.end() ? nullptr : found->second;
        const auto say = [&](const QString& outcome) { tell(entry.path + QStringLiteral(": ") + outcome); };
        if (!stopped.isEmpty()) {
            say(QStringLiteral("not written (%1)").arg(stopped));
            continue;
        }
        const bool same = now && (now->mode & model::EfsModeKind) == (entry.mode & model::EfsModeKind)
            && now->data == entry.data && now->target == entry.target;
        if (same) {
            if (!model::IsEfsFolder(entry))
                say(QStringLiteral("unchanged"));
            continue;
        }
        if (const auto gap = unread.find(entry.path); gap != unread.end()) {
            say(QStringLiteral("skipped (the handset's own could not be read: %1)").arg(gap->second));
            continue;
        }
        if (!now && !createMissing) {
            say(QStringLiteral("skipped (not on the handset: made only with --all-items)"));
            continue;
        }
        try {
            if (model::IsEfsFolder(entry)) {
                client.makeFolders(entry.path);
                say(QStringLiteral("made"));
                continue;
            }
            client.makeFolders(EfsParent(entry.path));
            if (model::IsEfsLink(entry)) {
                if (now)
                    client.call({.command = EfsUnlink, .path = entry.path});
                if (const int32_t error
                    = client.call({.command = EfsSymlink, .path = entry.target, .path2 = entry.path}).error;
                    error != EfsOk)
                    ThrowEfsError(error, entry.path, QStringLiteral("linked"));
            } else {
                client.write(entry.path, entry.data, int32_t(entry.mode & 07777));
                if (client.read(entry.path) != entry.data) {
                    whole = false;
                    say(QStringLiteral("failed (it reads back different from what was written)"));
                    continue;
                }
            }
            say(now ? QStringLiteral("restored") : QStringLiteral("made"));
        } catch (const TessalyError& error) {
            whole = false;
            say(QStringLiteral("failed (%1)").arg(error.description()));
            if (error.number() != errEfsRefused)
                stopped = QStringLiteral("the restore stopped at %1").arg(entry.path);
        }
    }
    return whole;
}

} // namespace tessaly::link
