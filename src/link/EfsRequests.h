// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Requests to the handset's file system (link/Efs2.h) kept on the serial link
// several at a time, so that the round trips of many small files overlap.
//
// A reply is matched to its request by what it carries: a read's by the
// descriptor and offset, a write's the same, a readdir's by the folder handle
// and sequence number. The replies of the other commands carry nothing of
// their request (an open's only the descriptor the handset chose), so only one
// request of each such command is on the way at a time, and after one was
// sent again while its first reply might still come, none of its command goes
// until that reply would have come: a reply is never taken for another
// request's.
//
// A handset answers in the order it was asked. A damaged reply was the
// oldest request's, which is sent again, except a close, which was done. (When
// it was an open, the handset holds a descriptor the client never learns of,
// until it restarts.) A handset silent for the reply time gets every request
// on the way once more; then the work fails.
#pragma once

#include "link/Efs2.h"
#include "link/SerialLink.h"

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <vector>

namespace tessaly::link {

class EfsRequests {
public:
    using Done = std::function<void(const EfsReply&)>;

    // `inFlight`: how many requests at most are on the way at once, 1 to 8.
    EfsRequests(SerialLink& link, int inFlight, std::chrono::milliseconds replyTime);

    // Queues `request`; `done` gets its reply and may queue further requests.
    void post(const EfsRequest& request, Done done);

    // Sends and receives until every request queued, and every one queued
    // meanwhile, is answered. Throws TessalyError when the handset falls
    // silent or refuses the file system's commands; what was not answered
    // then is dropped.
    void run();

    // Requests sent again, for the tests and benchmarks.
    int resent() const { return m_resent; }

private:
    using Clock = std::chrono::steady_clock;

    struct Request {
        QByteArray bytes;
        EfsCommand command = EfsHello;
        Done done;
        bool doubled = false; // sent again while its first reply may still come
    };

    bool mayGo(const Request& request, Clock::time_point now) const;
    // Takes `frame` as the reply of a request on the way, if it is one.
    bool take(const QByteArray& frame);

    SerialLink& m_link;
    int m_inFlight;
    std::chrono::milliseconds m_replyTime;
    std::deque<Request> m_waiting;
    std::vector<Request> m_onTheWay; // in the order their replies are to come
    std::map<EfsCommand, Clock::time_point> m_quietUntil;
    int m_resent = 0;
};

} // namespace tessaly::link
