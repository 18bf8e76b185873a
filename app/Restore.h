// halvane --restore-backup: a backup written back to its own handset.
#pragma once

#include "Handset.h"

namespace halvane {

// Writes the backup at `path` to the real handset, printing each item's
// outcome on standard output as it happens and any fault on standard error.
// Gives the exit status: 0 when every item that was to be written was.
int RestoreFromBackup(const QString& path, Handset& handset);

} // namespace halvane
