// Asks serial ports at once whether a handset answers on them: each gets a
// version request, then, when it answers, an ESN request, all within one
// reply time. Nothing is written to the handset's memory. Each port is left
// as it was found: its line settings put back, what it sent and what was
// still to go out dropped.
#pragma once

#include <QByteArrayView>
#include <QString>

#include <chrono>
#include <optional>
#include <vector>

namespace tessaly::link {

// Who answered, from its version and ESN replies.
struct HandsetIdentity {
    QString model;
    QString software;
    uint32_t esn = 0;
    bool hasEsn = false;
};

struct ProbeResult {
    QString node;
    std::optional<HandsetIdentity> handset; // when a handset answered
    QString failure; // otherwise why not: cannot be opened, no answer, an answer that is not a handset's
};

// The probe of `nodes`, in their order; the whole probe takes no longer than
// `within`.
std::vector<ProbeResult> ProbePorts(const std::vector<QString>& nodes, std::chrono::milliseconds within);

// The handset's identity from its replies to VersionRequest() and
// EsnRequest() (an empty `esnReply` when it gave none). Throws TessalyError
// when the version reply is not one.
HandsetIdentity IdentifyHandset(QByteArrayView versionReply, QByteArrayView esnReply);

} // namespace tessaly::link
