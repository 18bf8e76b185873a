// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The bench as a table: one row per handset found on a port, with who it is,
// where its backup stands and the last backup kept of it. The texts are the
// ones a screen reader reads; the progress column carries its percentage for
// the delegate that draws it as a bar.
#pragma once

#include "bench/BenchRun.h"

#include "link/HandsetIdentity.h"

#include <QAbstractTableModel>
#include <QDateTime>

#include <vector>

namespace halvane {

enum class BenchState { Idle, Reading, Done, Failed, Gone };

struct BenchRow {
    QString device; // as the user names the port
    QString node;   // what is opened
    tessaly::link::HandsetIdentity identity;
    bool esnKnown = false;
    BenchState state = BenchState::Idle;
    QString reason{};  // why it failed
    int percent = -1;  // of the backup under way or last run; -1 before any
    QString progress{}; // the same in words
    QString backupPath{}; // the newest backup kept
    QDateTime backupTime{};
};

class BenchTable : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Port, Model, Esn, Software, State, Progress, LastBackup, Columns };
    // The progress column's percentage, -1 when there is none to draw.
    static constexpr int PercentRole = Qt::UserRole;

    // `backups` is the folder where the last backups are looked for.
    explicit BenchTable(QString backups, QObject* parent = nullptr);

    // The handset found on `device`: a new row, or its row made anew when it
    // was there before (gone and plugged in again).
    void found(const QString& device, const QString& node, const tessaly::link::HandsetIdentity& identity,
               bool esnKnown);
    // The device went: its row stays, marked gone.
    void gone(const QString& device);
    // The row of a device, by the name the user gives it or its node; -1.
    int rowOf(const QString& port) const;
    const BenchRow& at(int row) const { return m_rows[size_t(row)]; }
    // The folder the backups are kept in.
    const QString& backupFolder() const { return m_backups; }

    // What a backup run tells of the handset on row `row`.
    void started(int row);
    void identified(int row, const tessaly::link::HandsetIdentity& identity);
    void progressed(int row, const BenchProgress& progress);
    void finished(int row, const BenchOutcome& outcome);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void changedRow(int row);
    void lookUpBackup(BenchRow& row) const;

    QString m_backups;
    std::vector<BenchRow> m_rows;
};

// "done", "failed: the handset does not answer"...: the state column's text.
QString StateText(const BenchRow& row);

} // namespace halvane
