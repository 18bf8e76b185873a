// The full backup: every NV item number of a range read from the handset,
// with every index the catalogue names for an indexed item (per NAM, per
// profile), several requests on the way at once (link/Pipeline.h). Items the
// handset holds are kept whole, all 128 bytes; items it lacks (statuses 5 to
// 8) are counted; items whose read it refuses (error replies for a bad
// parameter or its security mode) are listed with the reason. The result is
// whole or nothing: a scan that stops keeps nothing and says at which item it
// stopped.
#pragma once

#include "link/Backup.h"
#include "link/SerialLink.h"

#include <chrono>
#include <functional>

namespace tessaly::link {

// Where a scan stands, for a person to follow.
struct ScanProgress {
    size_t done = 0;  // addresses read
    size_t total = 0;
    size_t held = 0;  // of them, items the handset holds
    std::chrono::duration<double> elapsed{};
};

// The addresses a scan of the items `first` to `last` reads, in order: each
// item number once, or once for each index the catalogue names for it.
std::vector<model::NvAddress> ScanAddresses(uint16_t first, uint16_t last);

class ItemScan {
public:
    ItemScan(SerialLink& link, int inFlight, std::chrono::milliseconds replyTime);

    // Called after each address read.
    void setProgress(std::function<void(const ScanProgress&)> progress) { m_progress = std::move(progress); }

    // Reads the items `first` to `last`, and the ESN and MEID when the range
    // leaves them out, into a full backup. Throws TessalyError naming the item
    // where the scan stopped.
    Backup run(uint16_t first, uint16_t last);

    // After a run: items the handset lacked, items whose read it refused and
    // why, and requests sent again.
    size_t lacking() const { return m_lacking; }
    const std::vector<std::pair<model::NvAddress, QString>>& refused() const { return m_refused; }
    int resent() const { return m_resent; }

private:
    SerialLink& m_link;
    int m_inFlight;
    std::chrono::milliseconds m_replyTime;
    std::function<void(const ScanProgress&)> m_progress;
    size_t m_lacking = 0;
    std::vector<std::pair<model::NvAddress, QString>> m_refused;
    int m_resent = 0;
};

} // namespace tessaly::link
