// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// tessaly-emu run from a test as a user runs it, on a state file the test
// writes, and stopped when the test lets it go. The test's target defines
// TESSALY_EMU, the program's path.
#pragma once

#include "model/NvFile.h"

#include <QProcess>

#include <gtest/gtest.h>

class Emulator : public QProcess {
public:
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
        start(QStringLiteral(TESSALY_EMU), QStringList{QStringLiteral("--state"), state} + options);
        EXPECT_TRUE(waitForReadyRead(5000)) << qPrintable(readAllStandardError());
        return QString::fromLocal8Bit(readLine()).trimmed();
    }
};
