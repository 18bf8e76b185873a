// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "BenchTable.h"

#include "link/Backup.h"
#include "link/IdentityText.h"

#include <QDir>
#include <QFileInfo>


namespace halvane {

namespace {

QString IdentityText(const BenchRow& row)
{
    QString text = row.esnKnown ? tessaly::link::EsnHex(row.identity.esn) : QString();
    if (!row.identity.meid.isEmpty())
        text += QStringLiteral(" / ") + row.identity.meid;
    return text;
}

// The time and the file's name: the folder of every backup is the same (the
// window's summary names it), the name is what tells one apart. A screen
// reader gets the `whole` path.
QString BackupText(const BenchRow& row, bool whole)
{
    if (row.backupPath.isEmpty())
        return QStringLiteral("none");
    return row.backupTime.toString(QStringLiteral("yyyy-MM-dd HH:mm")) + QStringLiteral("  ")
        + (whole ? row.backupPath : QFileInfo(row.backupPath).fileName());
}

// A failure's first sentence, to be read at a glance; the whole reason is
// the cell's tooltip and what a screen reader reads.
QString FirstSentence(const QString& reason)
{
    const qsizetype end = reason.indexOf(QLatin1String(". "));
    return end < 0 ? reason : reason.left(end + 1);
}

// The backup's progress: how many items of how many, then files.
QString ProgressWords(const BenchProgress& progress)
{
    switch (progress.stage) {
    case BenchProgress::Stage::Identifying: return QStringLiteral("identifying");
    case BenchProgress::Stage::Items:
        return QStringLiteral("items %1 of %2").arg(progress.done).arg(progress.total);
    case BenchProgress::Stage::Files: return QStringLiteral("files %1").arg(progress.files);
    case BenchProgress::Stage::Restoring:
        return QStringLiteral("restoring %1 of %2").arg(progress.done).arg(progress.total);
    }
    return {};
}

} // namespace

QString StateText(const BenchRow& row)
{
    switch (row.state) {
    case BenchState::Idle: return QStringLiteral("idle");
    case BenchState::Reading: return QStringLiteral("reading");
    case BenchState::Done: return QStringLiteral("done");
    case BenchState::Failed: return QStringLiteral("failed: ") + row.reason;
    case BenchState::Gone: return QStringLiteral("gone");
    }
    return {};
}

BenchTable::BenchTable(QString backups, QObject* parent)
    : QAbstractTableModel(parent)
    , m_backups(std::move(backups))
{
}

void BenchTable::lookUpBackup(BenchRow& row) const
{
    if (!row.esnKnown)
        return;
    const std::vector<tessaly::link::KeptBackup> kept
        = tessaly::link::KeptBackups(m_backups, tessaly::link::EsnHex(row.identity.esn));
    if (!kept.empty()) {
        row.backupPath = kept.front().path;
        row.backupTime = kept.front().time;
    }
}

void BenchTable::found(const QString& device, const QString& node, const tessaly::link::HandsetIdentity& identity,
                       bool esnKnown)
{
    BenchRow fresh{device, node, identity, esnKnown};
    lookUpBackup(fresh);
    if (const int row = rowOf(device); row >= 0) {
        m_rows[size_t(row)] = std::move(fresh);
        changedRow(row);
        return;
    }
    const int row = int(m_rows.size());
    beginInsertRows({}, row, row);
    m_rows.push_back(std::move(fresh));
    endInsertRows();
}

void BenchTable::gone(const QString& device)
{
    const int row = rowOf(device);
    if (row < 0 || m_rows[size_t(row)].state == BenchState::Gone)
        return;
    m_rows[size_t(row)].state = BenchState::Gone;
    changedRow(row);
}

int BenchTable::rowOf(const QString& port) const
{
    for (size_t row = 0; row < m_rows.size(); ++row)
        if (m_rows[row].device == port || m_rows[row].node == port)
            return int(row);
    return -1;
}

void BenchTable::started(int row)
{
    BenchRow& bench = m_rows[size_t(row)];
    bench.state = BenchState::Reading;
    bench.reason.clear();
    bench.percent = 0;
    bench.progress = ProgressWords({});
    changedRow(row);
}

void BenchTable::identified(int row, const tessaly::link::HandsetIdentity& identity)
{
    BenchRow& bench = m_rows[size_t(row)];
    bench.identity = identity;
    bench.esnKnown = true;
    if (bench.backupPath.isEmpty())
        lookUpBackup(bench);
    changedRow(row);
}

void BenchTable::progressed(int row, const BenchProgress& progress)
{
    BenchRow& bench = m_rows[size_t(row)];
    if (progress.stage == BenchProgress::Stage::Items && progress.total > 0)
        bench.percent = int(progress.done * 100 / progress.total);
    else if (progress.stage == BenchProgress::Stage::Files)
        bench.percent = 100; // every item read; the files have no total to measure by
    bench.progress = ProgressWords(progress);
    changedRow(row);
}

void BenchTable::finished(int row, const BenchOutcome& outcome)
{
    BenchRow& bench = m_rows[size_t(row)];
    if (outcome.identity)
        identified(row, *outcome.identity);
    // A handset unplugged in the middle stays gone, with why its run ended.
    if (bench.state != BenchState::Gone)
        bench.state = outcome.succeeded ? BenchState::Done : BenchState::Failed;
    bench.reason = outcome.succeeded ? QString() : outcome.outcome;
    if (outcome.succeeded) {
        bench.percent = 100;
        bench.progress = outcome.outcome;
    }
    if (!outcome.backupPath.isEmpty()) {
        bench.backupPath = outcome.backupPath;
        const std::vector<tessaly::link::KeptBackup> kept
            = tessaly::link::KeptBackups(m_backups, tessaly::link::EsnHex(bench.identity.esn));
        bench.backupTime = !kept.empty() && kept.front().path == outcome.backupPath ? kept.front().time
                                                                                    : QDateTime::currentDateTime();
    }
    changedRow(row);
}

void BenchTable::changedRow(int row)
{
    emit dataChanged(index(row, 0), index(row, Columns - 1));
}

int BenchTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int BenchTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : Columns;
}

QVariant BenchTable::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const BenchRow& row = m_rows[size_t(index.row())];
    if (role == PercentRole)
        return index.column() == Progress ? QVariant(row.percent) : QVariant();
    if (role == Qt::ToolTipRole) {
        if (index.column() == State && !row.reason.isEmpty())
            return row.reason;
        if (index.column() == LastBackup && !row.backupPath.isEmpty())
            return row.backupPath;
        return {};
    }
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
        return {};
    switch (Column(index.column())) {
    case Port: return row.device;
    case Model: return row.identity.model;
    case Esn: return IdentityText(row);
    case Software: return row.identity.softwareVersion;
    case State:
        return role == Qt::DisplayRole && row.state == BenchState::Failed
            ? QStringLiteral("failed: ") + FirstSentence(row.reason)
            : StateText(row);
    case Progress:
        if (row.percent < 0)
            return QString();
        return row.progress.isEmpty() ? QStringLiteral("%1 %").arg(row.percent)
                                      : QStringLiteral("%1 %, %2").arg(row.percent).arg(row.progress);
    case LastBackup: return BackupText(row, role == Qt::AccessibleTextRole);
    case Columns: break;
    }
    return {};
}

QVariant BenchTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    static const char* const titles[Columns] = {"Port", "Model", "ESN / MEID", "Software", "State", "Progress",
                                                "Last backup"};
    return section >= 0 && section < Columns ? QString::fromLatin1(titles[section]) : QVariant();
}

} // namespace halvane
