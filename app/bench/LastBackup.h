// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The newest backup kept of a handset, found by the names backups are saved
// under (link/Backup.h): "<ESN>-<yyyyMMdd-HHmmss>[-full][-<n>].json".
#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace halvane {

struct KeptBackup {
    QString path;
    QDateTime time; // as its name tells it
};

// The newest backup in `folder` of the handset with ESN `esn` (eight
// upper-case hexadecimal digits); of two taken in the same second, the one
// saved last. Nothing when there is none.
std::optional<KeptBackup> NewestBackup(const QString& folder, const QString& esn);

} // namespace halvane
