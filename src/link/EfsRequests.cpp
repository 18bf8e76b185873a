// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "link/EfsRequests.h"

#include <QDeadlineTimer>

#include <algorithm>

namespace tessaly::link {

namespace {

// Whether a reply of `command` names the request it answers.
bool Keyed(EfsCommand command)
{
    return command == EfsRead || command == EfsWrite || command == EfsReaddir;
}

} // namespace

EfsRequests::EfsRequests(SerialLink& link, int inFlight, std::chrono::milliseconds replyTime)
    : m_link(link)
    , m_inFlight(std::clamp(inFlight, 1, 8))
    , m_replyTime(replyTime)
{
}

void EfsRequests::post(const EfsRequest& request, Done done)
{
    m_waiting.push_back({EncodeEfsRequest(request), request.command, std::move(done)});
}

bool EfsRequests::mayGo(const Request& request, Clock::time_point now) const
{
    if (Keyed(request.command))
        return true;
    const auto quiet = m_quietUntil.find(request.command);
    return (quiet == m_quietUntil.end() || now >= quiet->second)
        && std::none_of(m_onTheWay.begin(), m_onTheWay.end(),
                        [&](const Request& other) { return other.command == request.command; });
}

bool EfsRequests::take(const QByteArray& frame)
{
    const auto answered = std::find_if(m_onTheWay.begin(), m_onTheWay.end(),
                                       [&](const Request& request) { return EfsAnswers(request.bytes, frame); });
    if (answered == m_onTheWay.end())
        return false; // a log, an event, a late or second reply
    Request request = std::move(*answered);
    m_onTheWay.erase(answered);
    if (request.doubled && !Keyed(request.command))
        m_quietUntil[request.command] = Clock::now() + m_replyTime;
    request.done(ParseEfsReply(request.bytes, frame));
    return true;
}

void EfsRequests::run()
{
    QDeadlineTimer deadline(m_replyTime);
    int silences = 0;
    while (!m_waiting.empty() || !m_onTheWay.empty()) {
        const Clock::time_point now = Clock::now();
        for (auto waiting = m_waiting.begin();
             waiting != m_waiting.end() && m_onTheWay.size() < size_t(m_inFlight);) {
            if (!mayGo(*waiting, now)) {
                ++waiting;
                continue;
            }
            m_link.send(waiting->bytes);
            m_onTheWay.push_back(std::move(*waiting));
            waiting = m_waiting.erase(waiting);
        }
        if (m_onTheWay.empty()) {
            // Everything waits for a quiet spell: late replies are taken in
            // and passed over meanwhile.
            int damaged = 0;
            m_link.receive(std::chrono::milliseconds(10), damaged);
            deadline.setRemainingTime(m_replyTime);
            continue;
        }
        int damaged = 0;
        const std::vector<QByteArray> frames = m_link.receive(
            std::chrono::milliseconds(std::max<qint64>(1, deadline.remainingTime())), damaged);
        bool answered = false;
        for (const QByteArray& frame : frames)
            answered = take(frame) || answered;
        const auto again = [&](Request& request, bool doubled) {
            request.doubled = request.doubled || doubled;
            ++m_resent;
            m_link.send(request.bytes);
        };
        // A handset answers in order: each damaged reply was that of the
        // oldest request unanswered, which is asked again with no second
        // reply to come, and goes behind the others, where its reply will now
        // come. A close is not: the handset has closed the descriptor and may
        // lend it to the next open, which a second close would take away.
        const size_t unanswered = m_onTheWay.size();
        for (size_t n = 0; n < size_t(damaged) && n < unanswered; ++n) {
            Request oldest = std::move(m_onTheWay.front());
            m_onTheWay.erase(m_onTheWay.begin());
            if (oldest.command == EfsClose || oldest.command == EfsClosedir) {
                oldest.done(EfsReply{.command = oldest.command});
                answered = true;
                continue;
            }
            again(oldest, false);
            m_onTheWay.push_back(std::move(oldest));
        }
        if (answered) {
            silences = 0;
            deadline.setRemainingTime(m_replyTime);
        } else if (deadline.hasExpired()) {
            if (++silences >= 2)
                FailSilent(m_link.portName(), m_replyTime);
            for (Request& request : m_onTheWay)
                again(request, true);
            deadline.setRemainingTime(m_replyTime);
        }
    }
}

} // namespace tessaly::link
