#include "support/PseudoTerminal.h"

#include <QByteArray>

#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

PseudoTerminal::PseudoTerminal(Behaviour behaviour)
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
    if (behaviour == Behaviour::Garbage)
        m_answerer = std::thread([this] { answerWithNoise(); });
}

PseudoTerminal::~PseudoTerminal()
{
    m_stop = true;
    if (m_answerer.joinable())
        m_answerer.join();
    ::close(m_near);
    ::close(m_far);
}

// Each request gets bytes that hold flags but no frame with a right CRC.
void PseudoTerminal::answerWithNoise()
{
    const QByteArray noise = QByteArray::fromHex("7e0102037e41424344457e7d7e00ff7e");
    while (!m_stop) {
        pollfd far{m_far, POLLIN, 0};
        if (::poll(&far, 1, 20) <= 0)
            continue;
        char buffer[256];
        if (::read(m_far, buffer, sizeof buffer) > 0) {
            [[maybe_unused]] const ssize_t written = ::write(m_far, noise.constData(), size_t(noise.size()));
        }
    }
}
