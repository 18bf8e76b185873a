// halvane and tessaly-emu run from a test as a user runs them: halvane
// unattended, with its data folder in the test's own folder and the system
// bus pointed at the test's own, or at none, never the machine's; the
// emulator on a state file the test writes. The test's target defines
// HALVANE and TESSALY_EMU, the programs' paths.
#pragma once

#include "model/NvFile.h"

#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

struct Outcome {
    int status = -1;
    QString out;
    QString err;
};

// Runs halvane with `arguments` in `folder` (its data folder is
// `folder`/data); `environment` adds to or overrides its environment.
inline Outcome RunHalvane(const QString& folder, const QStringList& arguments,
                          const QProcessEnvironment& environment = {})
{
    QProcessEnvironment full = QProcessEnvironment::systemEnvironment();
    full.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    full.insert(QStringLiteral("XDG_DATA_HOME"), folder + QStringLiteral("/data"));
    full.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), QStringLiteral("unix:path=%1/no-bus").arg(folder));
    full.insert(environment);
    QProcess process;
    process.setProcessEnvironment(full);
    process.start(QStringLiteral(HALVANE), arguments);
    EXPECT_TRUE(process.waitForFinished(120000)) << "halvane waits for someone";
    // Qt's word on a missing runtime folder is not halvane's.
    static const QRegularExpression runtime(QStringLiteral("QStandardPaths:[^\n]*\n"));
    return {process.exitCode(), QString::fromLocal8Bit(process.readAllStandardOutput()),
            QString::fromLocal8Bit(process.readAllStandardError()).remove(runtime)};
}

// Starts `emulator` on the state file `state`, written from `items` unless
// they are none, with `options`; gives the terminal's path.
inline QString StartEmulator(QProcess& emulator, const QString& state, const tessaly::model::NvFile& items,
                             const QStringList& options = {})
{
    if (!items.entries.empty()) {
        EXPECT_EQ(tessaly::model::WriteNvFile(state, items), "");
    }
    emulator.start(QStringLiteral(TESSALY_EMU), QStringList{QStringLiteral("--state"), state} + options);
    EXPECT_TRUE(emulator.waitForReadyRead(5000)) << qPrintable(emulator.readAllStandardError());
    return QString::fromLocal8Bit(emulator.readLine()).trimmed();
}
