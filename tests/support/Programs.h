// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane run from a test as a user runs it: unattended, with its data and
// runtime folders in the test's own folder and the system bus pointed at the
// test's own, or at none, never the machine's. The test's target defines HALVANE,
// the program's path.
#pragma once

#include "support/Emulator.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

struct Outcome {
    int status = -1;
    QString out;
    QString err;
};

// Runs halvane with `arguments` in `folder` (its data folder is
// `folder`/data, its runtime folder `folder`/runtime, where it finds no
// emulator's announcement); `environment` adds to or overrides its
// environment.
inline Outcome RunHalvane(const QString& folder, const QStringList& arguments,
                          const QProcessEnvironment& environment = {})
{
    QProcessEnvironment full = QProcessEnvironment::systemEnvironment();
    full.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    full.insert(QStringLiteral("XDG_DATA_HOME"), folder + QStringLiteral("/data"));
    const QString runtimeFolder = folder + QStringLiteral("/runtime");
    QDir().mkpath(runtimeFolder);
    QFile::setPermissions(runtimeFolder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    full.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtimeFolder);
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

// A test that runs halvane against one emulator, both in a folder of its own.
class HandsetRunTest : public ::testing::Test {
public:
    using Items = std::map<tessaly::model::NvAddress, tessaly::model::NvEntry>;

protected:
    // Starts the emulator on `items`, with `faults`; gives its terminal's path.
    QString start(const Items& items, const QStringList& faults = {})
    {
        tessaly::model::NvFile file;
        for (const auto& [address, entry] : items)
            file.entries.push_back(entry);
        return emulator.startOn(state(), file, faults);
    }

    Outcome halvane(const QStringList& arguments) { return RunHalvane(folder.path(), arguments); }

    QString state() const { return folder.filePath(QStringLiteral("handset.json")); }
    QString file(const char* name) const { return folder.filePath(QLatin1String(name)); }
    // The items of an NV file of that kind, by address.
    static Items read(const QString& path, tessaly::model::NvFileKind kind)
    {
        tessaly::model::NvFile nv;
        EXPECT_EQ(tessaly::model::ReadNvFile(path, kind, nv), "");
        Items items;
        for (const tessaly::model::NvEntry& entry : nv.entries)
            items[entry.address] = entry;
        return items;
    }
    // The backups halvane kept, by name.
    QStringList backups() const
    {
        const QDir dir(folder.filePath(QStringLiteral("data/Halvane/backups")));
        QStringList paths;
        for (const QString& name : dir.entryList(QDir::Files, QDir::Name))
            paths << dir.filePath(name);
        return paths;
    }

    QTemporaryDir folder;
    Emulator emulator;
};
