// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The full backup: every NV item number of a range read from the handset,
// with every index the catalogue names for an indexed item (per NAM, per
// profile), several requests on the way at once (link/Pipeline.h).
//
// Every status the handset answers is kept with the bytes it sent, except
// "inactive" and "bad parameter", which say that it holds no such item. An
// item that answers "busy" is asked again a few times after a short wait; one
// that stays busy is kept as busy, and the scan goes on. Items whose read the
// handset refuses (error replies for a bad parameter or its security mode)
// are listed with the reason. A line that dies or a handset that falls silent
// keeps nothing: the scan says at which item it stopped.
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
    size_t kept = 0;  // of them, entries kept
    std::chrono::duration<double> elapsed{};
};

// What a scan found, by item number: each number of the range counts once,
// under the first of busy, refused, held and lacking that any of its indexes
// answered. Held items answered with their bytes (statuses "done" and
// "read-only"); refused ones with an error reply or a status that tells of a
// fault. `entries` counts the backup's entries, an indexed item's indexes
// each.
struct ScanCounts {
    size_t held = 0;
    size_t lacking = 0;
    size_t busy = 0;
    size_t refused = 0;
    size_t entries = 0;
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

    // After a run: the counts, and every address not kept plainly with what
    // befell it ("not kept: ...", "kept as busy", "kept with the status:
    // ..."), in order.
    const ScanCounts& counts() const { return m_counts; }
    const std::vector<std::pair<model::NvAddress, QString>>& gaps() const { return m_gaps; }
    int resent() const { return m_resent; }

private:
    SerialLink& m_link;
    int m_inFlight;
    std::chrono::milliseconds m_replyTime;
    std::function<void(const ScanProgress&)> m_progress;
    ScanCounts m_counts;
    std::vector<std::pair<model::NvAddress, QString>> m_gaps;
    int m_resent = 0;
};

} // namespace tessaly::link
