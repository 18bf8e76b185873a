// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The faults of real lines and handsets that tessaly-emu makes on request:
// what happens to the reply of each request. Fixed faults come from the
// command line (--slow, --late, --bad-crc, --events, --dead-after); a chaos
// schedule (Chaos.h) mixes them at random.
#pragma once

#include <chrono>

namespace emu {

// What befalls one reply.
struct ReplyPlan {
    bool silent = false;      // no reply at all: the line is dead
    std::chrono::milliseconds delay{0};
    bool eventFirst = false;  // an event report goes out before it, while reporting is on
    bool badCrc = false;      // its CRC is broken on the way
    bool garbledRead = false; // an NV read's reply carries other bytes than are kept
};

struct Faults {
    int slowMs = 0;      // each reply waits so long
    int badCrcEvery = 0; // every Nth reply goes out with a broken CRC
    bool events = false; // reporting is on at start, an event report before each reply
    int deadAfter = 0;   // the line goes dead after so many requests
    int lateAt = 0;      // the reply to this request comes late, by lateMs
    int lateMs = 0;

    int replies = 0;     // the replies sent so far, counted by planFor

    // The plan for request number `request`, counted from 1.
    ReplyPlan planFor(int request);
};

} // namespace emu
