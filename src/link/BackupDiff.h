// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Two backups of a handset compared, as a technician compares the handset
// after a repair with the backup taken before it: every NV item and every
// file that differs, was added or is gone, with the values the catalogue
// reads in the items it knows. A pure function over two loaded backups
// (link/Backup.h), of any kind: an NV Read's, a full backup, an XQCN file.
#pragma once

#include "link/Backup.h"

#include <optional>

namespace tessaly::link {

enum class Change { Differs, Added, Gone };

// A value of the panel whose text differs; none on the side that has no
// such value (an item added or gone, or not held there).
struct ValueChange {
    QString name; // as model::ColumnName gives it
    std::optional<QString> before;
    std::optional<QString> after;
};

struct ItemDifference {
    Change change = Change::Differs;
    model::NvAddress address;
    std::optional<model::NvEntry> before; // none: added
    std::optional<model::NvEntry> after;  // none: gone
    std::vector<ValueChange> values;      // the catalogue's values that differ
};

struct FileDifference {
    Change change = Change::Differs;
    QString path;
    std::optional<model::EfsEntry> before;
    std::optional<model::EfsEntry> after;
    // Of the bytes both files hold: how many differ and the first that does
    // (-1: none, the sizes alone may differ).
    qsizetype differingBytes = 0;
    qsizetype firstDifference = -1;
};

struct BackupDifference {
    // The ESN or the MEID differs: the backups are of two handsets.
    bool otherHandsets = false;
    // One backup holds the catalogue's items alone (an NV Read's), the other
    // every item: the items the catalogue does not list are not compared.
    bool catalogueItemsAlone = false;
    // One backup holds no file system (an NV Read's, or a full backup taken
    // without it): the files are not compared.
    bool filesCompared = true;
    std::vector<ItemDifference> items; // by address
    std::vector<FileDifference> files; // by path
    size_t itemsCompared = 0;          // addresses held by either backup and compared
    size_t filesComparedCount = 0;

    bool same() const { return items.empty() && files.empty(); }
};

// Compares `after` with `before`. Two entries of an item differ when their
// statuses do, or when both hold the item (done or read-only) and any of
// their 128 bytes differ. An item one backup keeps as lacking (inactive or
// a bad parameter, which a full backup counts and does not keep) and the
// other does not list is the same in both. Files differ in their kind and
// mode, a link's target, or a file's bytes; their times are not compared, as
// XQCN files do not keep them.
BackupDifference CompareBackups(const Backup& before, const Backup& after);

} // namespace tessaly::link
