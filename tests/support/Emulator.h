// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// tessaly-emu run from a test as a user runs it, on a state file the test
// writes, and stopped when the test lets it go. It announces its terminals
// in a runtime folder of its own unless the test gives one, never in the
// user's. The test's target defines TESSALY_EMU, the program's path.
#pragma once

#include "model/NvFile.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>

class Emulator : public QProcess {
public:
    // Announces in `runtime` (made with mode 0700), or in a folder of its
    // own when that is empty.
    explicit Emulator(const QString& runtime = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.isEmpty() ? m_runtime.path() : runtime);
        setProcessEnvironment(environment);
    }
    ~Emulator() override { stop(); }

    void stop()
    {
        kill();
        waitForFinished();
    }

    // Starts on the state file `state`, written from `items` unless they are
    // none, with `options`; gives the terminal's path.
    QString startOn(const QString& state, const tessaly::model::NvFile& items = {}, const QStringList& options = {})
    {
        stop();
        if (!items.entries.empty()) {
            EXPECT_EQ(tessaly::model::WriteNvFile(state, items), "");
        }
        return startBench(state, 0, options).value(0);
    }

    // Starts `count` handsets on `state` (with --count; 0: without it) and
    // gives their terminals' paths.
    QStringList startBench(const QString& state, int count, const QStringList& options = {})
    {
        stop();
        QStringList arguments{QStringLiteral("--state"), state};
        if (count > 0)
            arguments << QStringLiteral("--count") << QString::number(count);
        start(QStringLiteral(TESSALY_EMU), arguments + options);
        QStringList terminals;
        for (int k = 0; k < std::max(count, 1); ++k) {
            while (!canReadLine())
                if (!waitForReadyRead(5000)) {
                    ADD_FAILURE() << "tessaly-emu printed no terminal: " << readAllStandardError().constData();
                    return terminals;
                }
            terminals << QString::fromLocal8Bit(readLine()).trimmed();
        }
        return terminals;
    }

private:
    QTemporaryDir m_runtime;
};
