// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Many handsets worked on at once: each device on its own thread with its
// own link, so that the scans interleave and one handset's fault (silence,
// unplugging, a refused SPC, an item that stays busy) ends its own run only.
// What each does follows from the options: --info asks who it is, --read an
// NV Read's backup, --read --all-items the full backup with its files, and
// --restore-backup gives each handset its own backup back.
#pragma once

#include "Options.h"

#include "link/HandsetIdentity.h"

#include <QObject>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

class QThread;

namespace halvane {

// Where one handset's run stands, for a person to follow.
struct BenchProgress {
    enum class Stage { Identifying, Items, Files, Restoring } stage = Stage::Identifying;
    size_t done = 0;  // items read of `total`
    size_t total = 0;
    size_t files = 0; // files read
    qint64 bytes = 0;
    double rate = 0;        // items a second
    double secondsLeft = 0; // of the items, at that rate
};

// How one handset's run ended.
struct BenchOutcome {
    QString device;
    std::optional<tessaly::link::HandsetIdentity> identity; // when it answered
    bool succeeded = false;
    QString outcome;    // "backed up", "restored", "identified", or why it failed
    QString backupPath; // the backup kept, when one was
    QStringList told;   // what the run had to say on the way: gaps, each item's outcome
};

class BenchRun : public QObject {
    Q_OBJECT
public:
    explicit BenchRun(Options options, QObject* parent = nullptr);
    ~BenchRun() override;

    // Starts the work on every device of `devices`, each on its own thread;
    // a run starts once. A restore gives each handset the newest backup of
    // its own (same ESN and MEID) of those --restore-backup names, a file or
    // a folder of them; a handset with none fails, and the backups that could
    // not be read are told in unreadable().
    void start(const QStringList& devices);
    bool running() const;
    // The outcomes of the runs that ended, in the order of the devices.
    const std::vector<BenchOutcome>& outcomes() const { return m_outcomes; }
    // The files of --restore-backup passed over, each with why.
    const QStringList& unreadable() const { return m_unreadable; }

signals:
    void identified(const QString& device, const tessaly::link::HandsetIdentity& identity);
    void progressed(const QString& device, const halvane::BenchProgress& progress);
    void finished(const halvane::BenchOutcome& outcome);
    void allFinished();

private:
    void ended(size_t index, BenchOutcome outcome);

    Options m_options;
    std::vector<std::unique_ptr<QThread>> m_threads;
    std::vector<BenchOutcome> m_outcomes;
    QStringList m_unreadable;
    size_t m_left = 0;
};

} // namespace halvane

Q_DECLARE_METATYPE(tessaly::link::HandsetIdentity)
Q_DECLARE_METATYPE(halvane::BenchProgress)
Q_DECLARE_METATYPE(halvane::BenchOutcome)
