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

bool DelayedReplies::awaitInput(int stop)
{
    while (true) {
        sendDue();
        pollfd waited[2] = {{m_fd, POLLIN, 0}, {stop, POLLIN, 0}};
        int ready = 0;
        if (m_held.empty()) {
            ready = ::poll(waited, 2, -1);
        } else {
            const auto wait = std::chrono::duration_cast<std::chrono::nanoseconds>(m_held.front().due - Clock::now());
            const timespec timeout{time_t(std::max<int64_t>(0, wait.count()) / 1000000000),
                                   long(std::max<int64_t>(0, wait.count()) % 1000000000)};
            ready = ::ppoll(waited, 2, &timeout, nullptr);
        }
        if (ready <= 0)
            continue; // a reply fell due, or a signal came
        if (waited[1].revents != 0)
            return false;
        if (waited[0].revents != 0)
            return true;
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
