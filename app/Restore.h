// halvane --restore-backup: a backup written back to its own handset.
#pragma once

#include "Handset.h"

namespace halvane {

// Writes the backup at `path`, an NV file or an XQCN file, to the real handset, printing each item's
// outcome on standard output as it happens and any fault on standard error.
// Items the catalogue does not know are written only with `allItems`. Gives
// the exit status: 0 when every item that was to be written was.
int RestoreFromBackup(const QString& path, Handset& handset, bool allItems);

} // namespace halvane
