// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "support/PseudoTerminal.h"

#include <QByteArray>

#include <algorithm>
#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

// Each request on a noisy line gets bytes that hold flags but no frame with
// a right CRC.
PseudoTerminal::PseudoTerminal(Behaviour behaviour)
    : PseudoTerminal(behaviour == Behaviour::Silent ? Answer() : [](QByteArrayView received) {
        return received.empty() ? QByteArray() : QByteArray::fromHex("7e0102037e41424344457e7d7e00ff7e");
    })
{
}

PseudoTerminal::PseudoTerminal(Answer answer)
{
    m_far = posix_openpt(O_RDWR | O_NOCTTY);
    if (m_far < 0 || grantpt(m_far) != 0 || unlockpt(m_far) != 0)
        std::abort();
    m_path = QString::fromLocal8Bit(ptsname(m_far));
    m_near = ::open(ptsname(m_far), O_RDWR | O_NOCTTY);
    termios raw{};
    tcgetattr(m_near, &raw);
    cfmakeraw(&raw);
    tcsetattr(m_near, TCSANOW, &raw);
    if (answer)
        m_answerer = std::thread([this, answer] { serve(answer); });
}

PseudoTerminal::~PseudoTerminal()
{
    m_stop = true;
    if (m_answerer.joinable())
        m_answerer.join();
    ::close(m_near);
    ::close(m_far);
}

void PseudoTerminal::serve(const Answer& answer)
{
    char buffer[4096];
    while (!m_stop) {
        pollfd far{m_far, POLLIN, 0};
        const ssize_t read = ::poll(&far, 1, 20) > 0 ? ::read(m_far, buffer, sizeof buffer) : 0;
        const QByteArray reply = answer(QByteArrayView(buffer, std::max<ssize_t>(read, 0)));
        for (qsizetype done = 0; done < reply.size();)
            done += std::max<ssize_t>(0, ::write(m_far, reply.constData() + done, size_t(reply.size() - done)));
    }
}
