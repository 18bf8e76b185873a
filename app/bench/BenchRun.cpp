// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "BenchRun.h"

#include "FullBackup.h"
#include "Restore.h"

#include "link/Backup.h"
#include "link/IdentityText.h"
#include "link/LiveNvMemory.h"
#include "model/Catalogue.h"
#include "model/ErrorNumbers.h"

#include <tessaly/TessalyError.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QThread>

namespace halvane {

using namespace tessaly;

namespace {

// A backup --restore-backup offers, known by the handset it was taken from.
struct Offered {
    QString path;
    link::Backup backup;
};

// The backups of `path`, a backup file or a folder of them, newest first;
// those that cannot be read go into `unreadable`, each with why.
std::vector<Offered> OfferedBackups(const QString& path, QStringList& unreadable)
{
    QStringList files;
    if (QFileInfo(path).isDir()) {
        const QDir folder(path);
        for (const QString& name : folder.entryList({QStringLiteral("*.json"), QStringLiteral("*.xqcn")}, QDir::Files))
            files << folder.filePath(name);
    } else {
        files << path;
    }
    std::vector<Offered> offered;
    for (const QString& file : files) {
        try {
            offered.push_back({file, link::Backup::Load(file)});
        } catch (const TessalyError& error) {
            unreadable << QStringLiteral("%1: %2").arg(file, error.description());
        }
    }
    std::stable_sort(offered.begin(), offered.end(),
        [](const Offered& a, const Offered& b) { return a.backup.time > b.backup.time; });
    return offered;
}

// The newest offered backup taken from the handset `identity` names.
const Offered* BackupOf(const std::vector<Offered>& offered, const link::HandsetIdentity& identity)
{
    const QString esn = link::EsnHex(identity.esn);
    for (const Offered& candidate : offered)
        if (candidate.backup.esn.compare(esn, Qt::CaseInsensitive) == 0
            && candidate.backup.meid.compare(identity.meid, Qt::CaseInsensitive) == 0)
            return &candidate;
    return nullptr;
}

// The catalogue's items read from the handset, as an NV Read reads them, and
// kept as a backup; gives its path.
QString ReadCatalogue(link::LiveNvMemory& memory)
{
    model::NvData data{};
    for (const model::NvAddress& address : model::Catalogue::BuiltIn().addresses()) {
        const model::NvStatus status = memory.read(address, data);
        if (status != model::NvStatus::Done && !model::Lacks(status))
            throw TessalyError(model::errItemUnreadable,
                QStringLiteral("%1: the handset answered: %2")
                    .arg(model::Describe(address), model::NvStatusText(uint16_t(status))));
    }
    memory.readDone();
    return memory.lastBackup();
}

// Hands what a run on its own thread has to tell to the run's thread, the
// progress at most ten times a second.
class Teller {
public:
    Teller(BenchRun& run, QString device)
        : m_run(run)
        , m_device(std::move(device))
    {
    }

    void identified(const link::HandsetIdentity& identity) const
    {
        QMetaObject::invokeMethod(
            &m_run, [run = &m_run, device = m_device, identity] { emit run->identified(device, identity); },
            Qt::QueuedConnection);
    }
    void progressed(const BenchProgress& progress, bool last = false)
    {
        if (!last && m_told.isValid() && m_told.elapsed() < 100)
            return;
        m_told.start();
        QMetaObject::invokeMethod(
            &m_run, [run = &m_run, device = m_device, progress] { emit run->progressed(device, progress); },
            Qt::QueuedConnection);
    }

private:
    BenchRun& m_run;
    QString m_device;
    QElapsedTimer m_told;
};

// One handset's whole run, on its own thread: whatever befalls it ends up in
// its outcome, never beyond.
BenchOutcome Work(const Options& options, const QString& device, const std::vector<Offered>& offered, Teller& teller)
{
    BenchOutcome outcome;
    outcome.device = device;
    try {
        link::SerialLink line(device, options.replyTime);
        outcome.identity = link::QueryIdentity(line);
        teller.identified(*outcome.identity);
        if (options.info) {
            const link::HandsetIdentity& who = *outcome.identity;
            outcome.told << QStringLiteral("Model: ") + who.model
                         << QStringLiteral("Software version: ") + who.softwareVersion
                         << QStringLiteral("Compiled: ") + who.compiled << QStringLiteral("Released: ") + who.released;
            if (!who.meid.isEmpty())
                outcome.told << QStringLiteral("MEID: ") + who.meid;
            outcome.succeeded = true;
            outcome.outcome = QStringLiteral("identified");
            return outcome;
        }
        const QString spc = options.spc;
        link::LiveNvMemory memory(line, [spc] { return spc; });
        memory.setBackupFolder(link::BackupFolder());
        if (!options.restoreBackup.isEmpty()) {
            const Offered* own = BackupOf(offered, *outcome.identity);
            if (!own) {
                outcome.outcome = QStringLiteral("no backup of this handset in %1").arg(options.restoreBackup);
                return outcome;
            }
            teller.progressed({BenchProgress::Stage::Restoring}, true);
            outcome.backupPath = own->path;
            for (const QString& stream : own->backup.passedOver)
                outcome.told << QStringLiteral("%1 is passed over: halvane does not know what it holds").arg(stream);
            const auto tell = [&outcome](const QString& said) { outcome.told << said; };
            const bool whole = RestoreItemsAndFiles(options, own->backup, line, memory, tell);
            outcome.succeeded = whole && own->backup.passedOver.isEmpty();
            outcome.outcome
                = outcome.succeeded ? QStringLiteral("restored") : QStringLiteral("restored in part: see what it told");
            return outcome;
        }
        if (!options.allItems) {
            teller.progressed({BenchProgress::Stage::Items}, true);
            outcome.backupPath = ReadCatalogue(memory);
            outcome.succeeded = true;
            outcome.outcome = QStringLiteral("backed up");
            return outcome;
        }
        BenchProgress now;
        FullBackupProgress progress;
        progress.items = [&](const link::ScanProgress& scan) {
            const double seconds = scan.elapsed.count();
            now = {BenchProgress::Stage::Items, scan.done, scan.total, 0, 0, 0, 0};
            now.rate = seconds > 0 ? double(scan.done) / seconds : 0;
            now.secondsLeft = now.rate > 0 ? double(scan.total - scan.done) / now.rate : 0;
            teller.progressed(now, scan.done == scan.total);
        };
        progress.files = [&](size_t files, qint64 bytes) {
            now.stage = BenchProgress::Stage::Files;
            now.files = files;
            now.bytes = bytes;
            teller.progressed(now);
        };
        const FullBackupTaken taken = TakeFullBackup(options, line, progress);
        outcome.backupPath = taken.path;
        outcome.told = taken.gaps;
        outcome.told << taken.summary;
        outcome.succeeded = !taken.busy;
        outcome.outcome
            = taken.busy ? QStringLiteral("backed up with items busy: run it again") : QStringLiteral("backed up");
    } catch (const TessalyError& error) {
        outcome.succeeded = false;
        outcome.outcome = error.description();
    }
    return outcome;
}

} // namespace

BenchRun::BenchRun(Options options, QObject* parent)
    : QObject(parent)
    , m_options(std::move(options))
{
    qRegisterMetaType<link::HandsetIdentity>();
    qRegisterMetaType<BenchProgress>();
    qRegisterMetaType<BenchOutcome>();
}

BenchRun::~BenchRun()
{
    for (const std::unique_ptr<QThread>& thread : m_threads)
        thread->wait();
}

void BenchRun::start(const QStringList& devices)
{
    auto offered = std::make_shared<std::vector<Offered>>();
    if (!m_options.restoreBackup.isEmpty())
        *offered = OfferedBackups(m_options.restoreBackup, m_unreadable);
    m_outcomes.resize(size_t(devices.size()));
    m_left = m_outcomes.size();
    for (qsizetype i = 0; i < devices.size(); ++i) {
        m_outcomes[size_t(i)].device = devices[i];
        std::unique_ptr<QThread> thread(
            QThread::create([this, options = m_options, device = devices[i], offered, index = size_t(i)] {
                Teller teller(*this, device);
                BenchOutcome outcome = Work(options, device, *offered, teller);
                QMetaObject::invokeMethod(
                    this, [this, index, outcome = std::move(outcome)]() mutable { ended(index, std::move(outcome)); },
                    Qt::QueuedConnection);
            }));
        thread->start();
        m_threads.push_back(std::move(thread));
    }
    if (m_left == 0)
        QMetaObject::invokeMethod(this, &BenchRun::allFinished, Qt::QueuedConnection);
}

bool BenchRun::running() const
{
    return m_left > 0;
}

void BenchRun::ended(size_t index, BenchOutcome outcome)
{
    m_outcomes[index] = std::move(outcome);
    emit finished(m_outcomes[index]);
    if (--m_left == 0)
        emit allFinished();
}

} // namespace halvane
