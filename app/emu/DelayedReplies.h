// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The emulator's replies held back as a USB link holds them: each goes out a
// fixed time after its request came in, while the handset keeps taking the
// requests that follow. Its queue of requests is bounded, as a handset's is:
// a request that comes while it is full is dropped without a reply, and the
// client has to notice and ask again. Without a latency every reply goes out
// at once and nothing is dropped.
#pragma once

#include <QByteArray>

#include <chrono>
#include <deque>

class DelayedReplies {
public:
    using Clock = std::chrono::steady_clock;

    // `fd`: the pseudo-terminal the replies go out on.
    DelayedReplies(int fd, std::chrono::microseconds latency, size_t queue);

    enum class Wake { Input, Stopped, Due };
    // Waits until the line has bytes to read (Input), `stop` (a file
    // descriptor) is readable (Stopped), or the time `until` comes, when the
    // handset has something of its own to send (Due); replies that fall due
    // meanwhile go out.
    Wake awaitInput(int stop, Clock::time_point until = Clock::time_point::max());
    // Whether a request that just came in is taken; false: it is dropped.
    bool admit() const;
    // Sends the reply to the request taken last, at once or when it is due.
    void send(const QByteArray& reply);
    // Sends what the handset sends on its own at once, whole frames between
    // the replies.
    void sendNow(const QByteArray& frames);

private:
    struct Held {
        Clock::time_point due;
        QByteArray reply;
    };

    void sendDue();

    int m_fd;
    std::chrono::microseconds m_latency;
    size_t m_queue;
    std::deque<Held> m_held; // in the order they fall due
};
