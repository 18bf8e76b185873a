// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// tessaly-emu on a state of its own in a scratch folder, for the benchmarks
// of the link; stopped when it is let go. The target defines TESSALY_EMU.
#pragma once

#include <QProcess>
#include <QTemporaryDir>

class Emulator {
public:
    explicit Emulator(const QStringList& options = {})
    {
        m_process.start(QStringLiteral(TESSALY_EMU),
                        QStringList{QStringLiteral("--state"), m_folder.filePath(QStringLiteral("nv.json"))} + options);
        m_process.waitForReadyRead(5000);
        m_port = QString::fromLocal8Bit(m_process.readLine()).trimmed();
    }
    // Stopped as a user stops it, so that it takes back the announcement of
    // its terminal from the user's runtime folder.
    ~Emulator()
    {
        m_process.terminate();
        if (!m_process.waitForFinished(5000)) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }
    const QString& port() const { return m_port; }

private:
    QTemporaryDir m_folder;
    QProcess m_process;
    QString m_port;
};
