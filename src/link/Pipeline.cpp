// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/Pipeline.h"

#include "link/PacketBytes.h"

#include <tessaly/TessalyError.h>

#include <QDeadlineTimer>

#include <map>

namespace tessaly::link {

using model::NvAddress;

namespace {

using Clock = std::chrono::steady_clock;

// Replies to later requests that overtake a request before it counts as
// dropped: one is allowed for, as a handset may answer a little out of turn.
constexpr int Overtakes = 2;
// Times a request is sent again before the read gives up.
constexpr int MaxResends = 32;
// A request left unanswered for this many round trips is sent again, and
// then after twice as long each time: the last requests of a read have no
// later ones to overtake them.
constexpr double LateRoundTrips = 4;
constexpr std::chrono::microseconds LeastLateness(1000);

// A request on the way.
struct Pending {
    size_t position = 0;
    QByteArray request;
    uint64_t sent = 0; // the send's number: later sends have greater ones
    Clock::time_point sentAt{};
    int overtaken = 0;
    int resends = 0;
    int lateResends = 0;
};

// The request on the way that `reply` answers, if any: by the item number, and
// for an indexed item the index in the first data byte. An error reply
// carries the request it refuses after its code.
std::map<NvAddress, Pending>::iterator Answered(std::map<NvAddress, Pending>& pending, QByteArrayView reply)
{
    const qsizetype at = uint8_t(reply[0]) == CmdNvRead ? 0 : 1;
    if (reply.size() < at + 4 || uint8_t(reply[at]) != CmdNvRead)
        return pending.end();
    const uint16_t item = Little16(reply, at + 1);
    auto found = pending.find({item, -1});
    if (found == pending.end())
        found = pending.find({item, int16_t(uint8_t(reply[at + 3]))});
    return found;
}

// The answer of `reply`; an error reply that concerns this item alone is a
// refusal, any other one throws.
ItemAnswer Answer(const QByteArray& request, const QByteArray& reply)
{
    try {
        return {ParseNvItem(request, reply), {}};
    } catch (const TessalyError& error) {
        if (uint8_t(reply[0]) != CmdBadParameter && uint8_t(reply[0]) != CmdBadSecurityMode)
            throw;
        return {{}, error.description()};
    }
}

} // namespace

Pipeline::Pipeline(SerialLink& link, int inFlight, std::chrono::milliseconds replyTime)
    : m_link(link)
    , m_inFlight(std::clamp(inFlight, 1, 8))
    , m_replyTime(replyTime)
{
}

void Pipeline::read(const std::vector<NvAddress>& addresses,
                    const std::function<void(size_t position, const ItemAnswer& answer)>& take)
{
    std::map<NvAddress, Pending> pending;
    std::map<size_t, ItemAnswer> early; // answered before one ahead of them
    size_t next = 0;      // the next address to send
    size_t delivered = 0; // addresses given to `take`
    uint64_t sends = 0;
    int silences = 0;
    QDeadlineTimer deadline(m_replyTime);
    std::chrono::duration<double> roundTrip{0}; // smoothed, of requests answered at their first send

    const auto send = [&](Pending& request) {
        request.sent = ++sends;
        request.sentAt = Clock::now();
        request.overtaken = 0;
        m_link.send(request.request);
    };
    // When a request unanswered so far counts as late; never before a
    // round trip is known.
    const auto lateAt = [&](const Pending& request) {
        if (roundTrip.count() == 0)
            return Clock::time_point::max();
        const auto wait = std::max<std::chrono::duration<double>>(LeastLateness, LateRoundTrips * roundTrip)
            * double(1 << std::min(request.lateResends, 20));
        return request.sentAt + std::chrono::duration_cast<Clock::duration>(wait);
    };
    const auto resend = [&](const NvAddress& address, Pending& request) {
        if (++request.resends > MaxResends)
            throw TessalyError(errRequestsDropped, QStringLiteral("The handset on %1 keeps dropping the request for "
                                                                  "%2, asked %3 times.")
                                                       .arg(m_link.portName(), model::Describe(address))
                                                       .arg(request.resends));
        ++m_resent;
        send(request);
    };

    while (delivered < addresses.size()) {
        while (next < addresses.size() && pending.size() < size_t(m_inFlight)) {
            const NvAddress address = addresses[next];
            Pending& request = pending[address];
            request = {next++, NvItemRequest(CmdNvRead, address, {})};
            send(request);
        }

        qint64 wait = deadline.remainingTime();
        for (const auto& [address, request] : pending) {
            const Clock::time_point late = lateAt(request);
            if (late != Clock::time_point::max())
                wait = std::min<qint64>(
                    wait, std::chrono::ceil<std::chrono::milliseconds>(late - Clock::now()).count());
        }
        int damaged = 0;
        const std::vector<QByteArray> frames
            = m_link.receive(std::chrono::milliseconds(std::max<qint64>(1, wait)), damaged);
        bool answered = false;
        for (const QByteArray& frame : frames) {
            const auto found = Answered(pending, frame);
            if (found == pending.end() || !Answers(found->second.request, frame, found->first.index >= 0))
                continue; // a log, an event, a late or second reply
            const Pending request = found->second;
            pending.erase(found);
            if (request.resends == 0) {
                const std::chrono::duration<double> sample = Clock::now() - request.sentAt;
                roundTrip = roundTrip.count() == 0 ? sample : 0.875 * roundTrip + 0.125 * sample;
            }
            early[request.position] = Answer(request.request, frame);
            answered = true;
            // Overtaken twice, or by the newest request on the way, after
            // which no reply is to come that could overtake it again.
            const bool newest = std::none_of(pending.begin(), pending.end(),
                                             [&](const auto& other) { return other.second.sent > request.sent; });
            for (auto& [address, other] : pending)
                if (other.sent < request.sent && (++other.overtaken >= Overtakes || newest))
                    resend(address, other);
        }
        for (auto& [address, request] : pending) {
            if (Clock::now() >= lateAt(request)) {
                ++request.lateResends;
                resend(address, request);
            }
        }
        if (damaged > 0 && !pending.empty()) {
            auto oldest = std::min_element(pending.begin(), pending.end(),
                                           [](const auto& a, const auto& b) { return a.second.sent < b.second.sent; });
            resend(oldest->first, oldest->second);
        }
        for (auto ready = early.begin(); ready != early.end() && ready->first == delivered; ready = early.erase(ready))
            take(delivered++, ready->second);

        if (answered) {
            silences = 0;
            deadline.setRemainingTime(m_replyTime);
        } else if (deadline.hasExpired()) {
            if (++silences >= 2)
                FailSilent(m_link.portName(), m_replyTime);
            for (auto& [address, request] : pending)
                send(request);
            deadline.setRemainingTime(m_replyTime);
        }
    }
}

} // namespace tessaly::link
