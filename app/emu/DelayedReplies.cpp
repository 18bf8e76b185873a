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

bool DelayedReplies::awaitInput(Clock::time_point until)
{
    while (true) {
        sendDue();
        const Clock::time_point wake = m_held.empty() ? until : std::min(until, m_held.front().due);
        pollfd input{m_fd, POLLIN, 0};
        if (wake == Clock::time_point::max()) {
            ::poll(&input, 1, -1);
            return true;
        }
        const auto wait = std::chrono::duration_cast<std::chrono::nanoseconds>(wake - Clock::now());
        const int64_t nanos = std::max<int64_t>(0, wait.count());
        const timespec timeout{time_t(nanos / 1000000000), long(nanos % 1000000000)};
        if (::ppoll(&input, 1, &timeout, nullptr) > 0 && (input.revents & POLLIN))
            return true;
        if (Clock::now() >= until)
            return false;
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
