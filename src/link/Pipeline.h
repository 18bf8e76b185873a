// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Reads of many NV items with several requests on the serial link at once.
// A handset behind USB answers each request a round trip after it was sent;
// with several on the way, the round trips overlap and the line stays busy.
//
// Replies are matched to their requests by item number and, for an indexed
// item, the index in the reply's first data byte, never by their order; a
// reply that answers nothing on the way (a late one, a second one) is passed
// over. A handset takes a bounded number of requests at a time and drops the
// rest without a word: a request that replies to two later requests have
// overtaken, or the reply to the newest request on the way, is taken as
// dropped and sent again, and so is the oldest one when a reply arrives
// damaged, and one left unanswered for several round trips (the last
// requests of a read have none after them to overtake them). A handset that
// stays silent for the reply time gets every request on the way once more;
// then the read fails.
#pragma once

#include "link/DiagPackets.h"
#include "link/SerialLink.h"

#include <functional>
#include <vector>

namespace tessaly::link {

// What the handset answered for one address: its reply, or why it refused to
// read that item alone (an error reply for a bad parameter or for its
// security mode, which some handsets give for items they guard).
struct ItemAnswer {
    NvItemReply reply;
    QString refused; // empty when answered
};

class Pipeline {
public:
    // `inFlight`: how many requests at most are on the way at once, 1 to 8.
    Pipeline(SerialLink& link, int inFlight, std::chrono::milliseconds replyTime);

    // Reads every address; `take` gets each answer in the order of
    // `addresses` as soon as it and all before it are in. Throws TessalyError
    // when the handset stops answering or refuses reads altogether; what
    // `take` got until then stands.
    void read(const std::vector<model::NvAddress>& addresses,
              const std::function<void(size_t position, const ItemAnswer& answer)>& take);

    // Requests sent again, for the benchmarks and tests: drops noticed.
    int resent() const { return m_resent; }

private:
    SerialLink& m_link;
    int m_inFlight;
    std::chrono::milliseconds m_replyTime;
    int m_resent = 0;
};

} // namespace tessaly::link
