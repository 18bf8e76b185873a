// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/PortProbe.h"

#include "link/DiagPackets.h"
#include "link/FrameCodec.h"
#include "link/IdentityText.h"

#include <tessaly/TessalyError.h>

#include <QDeadlineTimer>
#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace tessaly::link {

namespace {

// One port under probe: its descriptor, its settings as found and where its
// exchange stands.
struct Probe {
    enum class Step { Version, Build, Esn, Meid, Done };

    int fd = -1;
    termios found{};
    Step step = Step::Version;
    FrameDecoder decoder;
    VersionInfo version; // once it gave its version
    std::optional<ExtendedBuildId> build; // once it gave a build id it could read
    bool strangeFrames = false;
    bool lost = false; // the line closed or failed
    ProbeResult* result = nullptr;

    QByteArray request() const
    {
        switch (step) {
        case Step::Version: return BareRequest(CmdVersion);
        case Step::Build: return BareRequest(CmdExtBuildId);
        case Step::Meid: return NvItemRequest(CmdNvRead, model::MeidItem, {});
        default: return EsnRequest();
        }
    }
};

void Send(const Probe& probe)
{
    const QByteArray frame = EncodeFrame(probe.request());
    // A frame of a few bytes fits in the line's buffer; one that does not go
    // out whole is told by the silence that follows.
    [[maybe_unused]] const ssize_t written = ::write(probe.fd, frame.constData(), size_t(frame.size()));
}

// Opens the node raw at 115200 baud without waiting for a carrier, and
// keeps its settings to put back.
bool Open(Probe& probe, const QString& node)
{
    probe.fd = ::open(QFile::encodeName(node).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (probe.fd < 0) {
        probe.result->failure = QStringLiteral("cannot be opened: %1").arg(QString::fromLocal8Bit(std::strerror(errno)));
        return false;
    }
    if (::tcgetattr(probe.fd, &probe.found) != 0) {
        probe.result->failure = QStringLiteral("is not a serial port");
        ::close(probe.fd);
        probe.fd = -1;
        return false;
    }
    termios raw = probe.found;
    ::cfmakeraw(&raw);
    raw.c_cflag |= CLOCAL | CREAD;
    ::cfsetspeed(&raw, B115200);
    ::tcflush(probe.fd, TCIFLUSH);
    ::tcsetattr(probe.fd, TCSANOW, &raw);
    return true;
}

// Takes what came in; moves on to the build id once the version is in, and
// to the ESN once the build id is in (an older handset answers it "bad
// command", which is no fault).
void Take(Probe& probe)
{
    char buffer[512];
    ssize_t n;
    while ((n = ::read(probe.fd, buffer, sizeof buffer)) != 0) {
        if (n < 0) {
            probe.lost = errno != EAGAIN && errno != EINTR;
            break;
        }
        for (const QByteArray& frame : probe.decoder.feed(QByteArrayView(buffer, n))) {
            if (probe.step == Probe::Step::Done || IsUnsolicited(frame))
                continue;
            if (!Answers(probe.request(), frame, false)) {
                probe.strangeFrames = true;
                continue;
            }
            if (probe.step == Probe::Step::Version) {
                try {
                    probe.version = ParseVersion(BareRequest(CmdVersion), frame);
                } catch (const TessalyError&) {
                    probe.strangeFrames = true;
                    continue;
                }
                probe.step = Probe::Step::Build;
                Send(probe);
            } else if (probe.step == Probe::Step::Build) {
                if (!IsBadCommand(frame)) {
                    try {
                        probe.build = ParseExtendedBuildId(BareRequest(CmdExtBuildId), frame);
                    } catch (const TessalyError&) {
                    }
                }
                probe.step = Probe::Step::Esn;
                Send(probe);
            } else if (probe.step == Probe::Step::Esn) {
                probe.result->handset = IdentityOf(probe.version, probe.build);
                try {
                    probe.result->esn = ParseEsn(EsnRequest(), frame);
                } catch (const TessalyError&) {
                }
                probe.step = Probe::Step::Meid;
                Send(probe);
            } else {
                // A handset without a MEID holds no such item, or refuses it.
                try {
                    if (const NvItemReply meid = ParseNvItem(probe.request(), frame); meid.status == 0)
                        probe.result->handset->meid = MeidHex(meid.data);
                } catch (const TessalyError&) {
                }
                probe.step = Probe::Step::Done;
            }
        }
    }
    if (n == 0)
        probe.lost = true;
    if (probe.lost && probe.step != Probe::Step::Done) {
        probe.step = Probe::Step::Done;
        probe.result->failure = QStringLiteral("the line closed");
    }
}

// Leaves the port as found: what is pending either way is dropped (a close
// with output pending would wait for it), the settings are put back.
void Close(Probe& probe)
{
    ::tcflush(probe.fd, TCIOFLUSH);
    ::tcsetattr(probe.fd, TCSANOW, &probe.found);
    ::close(probe.fd);
}

void Conclude(Probe& probe)
{
    if (probe.result->handset || probe.lost)
        return;
    if (probe.step != Probe::Step::Version) { // it gave its version, not all the rest
        probe.result->handset = IdentityOf(probe.version, probe.build);
        return;
    }
    probe.result->failure = probe.strangeFrames || probe.decoder.rejected() > 0
        ? QStringLiteral("answered, but not as a handset does")
        : QStringLiteral("no answer");
}

} // namespace

std::vector<ProbeResult> ProbePorts(const std::vector<QString>& nodes, std::chrono::milliseconds within)
{
    const QDeadlineTimer deadline(within);
    std::vector<ProbeResult> results(nodes.size());
    std::vector<Probe> probes(nodes.size());
    for (size_t i = 0; i < nodes.size(); ++i) {
        results[i].node = nodes[i];
        probes[i].result = &results[i];
        if (Open(probes[i], nodes[i]))
            Send(probes[i]);
    }
    while (true) {
        std::vector<pollfd> waiting;
        for (const Probe& probe : probes)
            if (probe.fd >= 0 && probe.step != Probe::Step::Done)
                waiting.push_back({probe.fd, POLLIN, 0});
        const qint64 left = deadline.remainingTime();
        if (waiting.empty() || left <= 0)
            break;
        if (::poll(waiting.data(), nfds_t(waiting.size()), int(left)) <= 0)
            continue;
        for (Probe& probe : probes)
            if (probe.fd >= 0 && probe.step != Probe::Step::Done)
                Take(probe);
    }
    for (Probe& probe : probes) {
        if (probe.fd < 0)
            continue;
        Close(probe);
        Conclude(probe);
    }
    return results;
}

} // namespace tessaly::link
