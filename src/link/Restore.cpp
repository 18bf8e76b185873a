// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/Restore.h"

#include "link/DiagPackets.h"
#include "link/IdentityText.h"
#include "model/Catalogue.h"

#include <tessaly/TessalyError.h>

#include <set>

namespace tessaly::link {

using model::Describe;
using model::EsnItem;
using model::MeidItem;
using model::NvStatus;

namespace {

// Why an entry of a backup is not written, or an empty string. `known`: the
// item numbers of the catalogue.
QString SkipReason(const model::NvEntry& entry, NvStatus onHandset, const std::set<uint16_t>* known)
{
    if (const QString protection = model::Catalogue::BuiltIn().protection(entry.address.item); !protection.isEmpty())
        return protection;
    if (known && !known->count(entry.address.item))
        return QStringLiteral("unknown to the catalogue: written only with --all-items");
    if (entry.status != NvStatus::Done)
        return QStringLiteral("kept with the status: %1").arg(NvStatusText(uint16_t(entry.status)));
    return HandsetRefusal(onHandset);
}

} // namespace

QString HandsetRefusal(NvStatus onHandset)
{
    // An inactive item exists but holds no value, as after a factory reset:
    // a write brings it back. The handset refuses the others, and one that
    // stays busy is not to be compared.
    if (onHandset != NvStatus::Done && onHandset != NvStatus::Inactive)
        return QStringLiteral("this handset: %1").arg(NvStatusText(uint16_t(onHandset)));
    return {};
}

bool RestoreBackup(const Backup& backup, LiveNvMemory& memory, const std::function<void(const QString&)>& tell,
                   bool allItems)
{
    std::vector<model::NvAddress> addresses = model::Catalogue::BuiltIn().addresses();
    std::set<uint16_t> known;
    std::set<model::NvAddress> listed(addresses.begin(), addresses.end());
    for (const model::NvAddress& address : addresses)
        known.insert(address.item);
    for (const model::NvEntry& entry : backup.items)
        if (listed.insert(entry.address).second)
            addresses.push_back(entry.address);
    if (backup.esn.isEmpty())
        throw TessalyError(errOtherHandset, QStringLiteral("The backup holds no ESN (NV item 0), so the handset it "
                                                           "was taken from cannot be told."));
    model::NvImage now;
    std::map<model::NvAddress, NvStatus> statuses;
    for (const model::NvAddress& address : addresses) {
        try {
            statuses[address] = memory.read(address, now[address]);
        } catch (const TessalyError& error) {
            // Told with the item, as every other failure of a restore is.
            throw TessalyError(error.number(), QStringLiteral("Reading %1 before the restore failed: %2")
                                                   .arg(Describe(address), error.description()));
        }
    }
    const QString esn = EsnHex(now[{EsnItem, -1}]);
    const QString meid = MeidHex(now[{MeidItem, -1}]);
    if (esn != backup.esn || meid != backup.meid)
        throw TessalyError(errOtherHandset, QStringLiteral("The backup was taken from another handset (ESN %1, MEID %2; "
                                                           "this one has ESN %3, MEID %4).")
                                                .arg(backup.esn, backup.meid, esn, meid));
    memory.readDone();
    if (!memory.lastBackup().isEmpty())
        tell(QStringLiteral("What the handset held before is kept in %1").arg(memory.lastBackup()));

    bool whole = true;
    QString stopped;
    for (const model::NvEntry& entry : backup.items) {
        const QString name = Describe(entry.address);
        if (!stopped.isEmpty()) {
            tell(name + QStringLiteral(": not written (%1)").arg(stopped));
        } else if (const QString reason = SkipReason(entry, statuses[entry.address], allItems ? nullptr : &known);
                   !reason.isEmpty()) {
            tell(name + QStringLiteral(": skipped (%1)").arg(reason));
        } else if (now[entry.address] == entry.data && statuses[entry.address] == NvStatus::Done) {
            tell(name + QStringLiteral(": unchanged"));
        } else {
            try {
                const NvStatus status = memory.write(entry.address, entry.data);
                whole = whole && status == NvStatus::Done;
                tell(name + (status == NvStatus::Done ? QStringLiteral(": restored")
                                                      : QStringLiteral(": refused (%1)").arg(NvStatusText(uint16_t(status)))));
            } catch (const TessalyError& error) {
                whole = false;
                stopped = QStringLiteral("the restore stopped at %1").arg(name);
                tell(name + QStringLiteral(": failed (%1)").arg(error.description()));
            }
        }
    }
    memory.commit();
    return whole;
}

} // namespace tessaly::link
