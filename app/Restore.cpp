#include "Restore.h"

#include "link/Backup.h"

#include <cstdio>

namespace halvane {

int RestoreFromBackup(const QString& path, Handset& handset, bool allItems)
{
    try {
        const auto backup = tessaly::link::Backup::Load(path);
        const bool whole = tessaly::link::RestoreBackup(backup, *handset.live, [](const QString& outcome) {
            std::printf("%s\n", qPrintable(outcome));
            std::fflush(stdout);
        }, allItems);
        return whole ? 0 : 1;
    } catch (const TessalyError& error) {
        std::fprintf(stderr, "halvane: %s Nothing was written to the handset.\n", qPrintable(error.description()));
        return 1;
    }
}

} // namespace halvane
