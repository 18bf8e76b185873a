// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Asks serial ports at once whether a handset answers on them: each gets a
// version request, then, when it answers, an extended build id request, an
// ESN request and a read of the MEID's item, all within one reply time. The
// MEID is the one step a handset may leave unanswered. Nothing is written to the
// handset's memory. Each port is left as it was found: its line settings put
// back, what it sent and what was still to go out dropped.
#pragma once

#include "link/HandsetIdentity.h"

#include <QString>

#include <chrono>
#include <optional>
#include <vector>

namespace tessaly::link {

struct ProbeResult {
    QString node;
    std::optional<HandsetIdentity> handset; // when a handset answered, with its MEID when it has one
    std::optional<uint32_t> esn; // when it answered that too
    QString failure; // otherwise why not: cannot be opened, no answer, an answer that is not a handset's
};

// The probe of `nodes`, in their order; the whole probe takes no longer than
// `within`.
std::vector<ProbeResult> ProbePorts(const std::vector<QString>& nodes, std::chrono::milliseconds within);

} // namespace tessaly::link
