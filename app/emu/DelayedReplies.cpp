// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "DelayedReplies.h"

#include <poll.h>
#include <unistd.h>

namespace {

void WriteAll(int fd, const QByteArray& bytes)
{
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t n = ::write(fd, bytes.constData() + done, size_t(bytes.size() - done));
        if (n <= 0)
            return;
        done += n;
    }
}

} // namespace

DelayedReplies::DelayedReplies(int fd, std::chrono::microseconds latency, size_t queue)
    : m_fd(fd)
    , m_latency(latency)
    , m_queue(queue)
{
}

DelayedReplies::Wake DelayedReplies::awaitInput(int stop, Clock::time_point until)
{
    while (true) {
        sendDue();
        pollfd waited[2] = {{m_fd, POLLIN, 0}, {stop, POLLIN, 0}};
        const Clock::time_point wake = m_held.empty() ? until : std::min(until, m_held.front().due);
        int ready = 0;
        if (wake == Clock::time_point::max()) {
            ready = ::poll(waited, 2, -1);
        } else {
            const auto wait = std::chrono::duration_cast<std::chrono::nanoseconds>(wake - Clock::now());
            const int64_t nanos = std::max<int64_t>(0, wait.count());
            const timespec timeout{time_t(nanos / 1000000000), long(nanos % 1000000000)};
            ready = ::ppoll(waited, 2, &timeout, nullptr);
        }
        if (ready > 0 && waited[1].revents != 0)
            return Wake::Stopped;
        if (ready > 0 && waited[0].revents != 0)
            return Wake::Input;
        // Otherwise a held reply fell due, or a signal came.
        if (Clock::now() >= until)
            return Wake::Due;
    }
}

bool DelayedReplies::admit() const
{
    return m_latency.count() == 0 || m_held.size() < m_queue;
}

void DelayedReplies::send(const QByteArray& reply)
{
    if (m_latency.count() == 0) {
        WriteAll(m_fd, reply);
        return;
    }
    m_held.push_back({Clock::now() + m_latency, reply});
}

void DelayedReplies::sendNow(const QByteArray& frames)
{
    WriteAll(m_fd, frames);
}

void DelayedReplies::sendDue()
{
    QByteArray due;
    const Clock::time_point now = Clock::now();
    while (!m_held.empty() && m_held.front().due <= now) {
        due += m_held.front().reply;
        m_held.pop_front();
    }
    if (!due.isEmpty())
        WriteAll(m_fd, due);
}
