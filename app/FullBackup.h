// halvane --read --all-items: every NV item of a range kept in one full
// backup, with its progress on a terminal.
#pragma once

#include "Handset.h"

namespace halvane {

// Scans the real handset's items as the options say, saves the full backup
// and prints its path and a summary line on standard output; on a terminal,
// standard error shows one line of progress that rewrites itself. Gives the
// exit status: 0 when the whole range was read and kept, items the handset
// refused to read told and counted.
int SaveFullBackup(const Options& options, Handset& handset);

} // namespace halvane
