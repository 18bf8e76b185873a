// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// A pseudo-terminal that stands for a line with no handset behind it: a
// silent one, one that answers every request with noise, or one that
// answers as the test tells it. The test holds its far end, and the near end
// open too, so that the line stays up while programs come and go.
#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>
#include <thread>

class PseudoTerminal {
public:
    enum class Behaviour { Silent, Garbage };

    // What the far end writes back for the bytes it read; asked with none
    // once the line has been quiet for 20 ms.
    using Answer = std::function<QByteArray(QByteArrayView received)>;

    explicit PseudoTerminal(Behaviour behaviour = Behaviour::Silent);
    explicit PseudoTerminal(Answer answer);
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    // The near end, for --port.
    const QString& path() const { return m_path; }
    // A descriptor of the near end, to look at its settings and queues.
    int nearEnd() const { return m_near; }

private:
    void serve(const Answer& answer);

    int m_far = -1;
    int m_near = -1;
    QString m_path;
    std::atomic<bool> m_stop{false};
    std::thread m_answerer;
};
