// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "FullBackup.h"

#include "link/EfsTreeRead.h"
#include "link/ErrorNumbers.h"
#include "link/ItemScan.h"

#include <tessaly/TessalyError.h>

#include <QElapsedTimer>

#include <cstdio>
#include <optional>
#include <unistd.h>

namespace halvane {

using namespace tessaly;

namespace {

// Rewrites the progress line at most ten times a second: a scan of fast
// items would otherwise spend its time on the terminal.
class ProgressLine {
public:
    void show(const link::ScanProgress& progress)
    {
        if (progress.done < progress.total && m_shown.isValid() && m_shown.elapsed() < 100)
            return;
        m_shown.start();
        const double seconds = progress.elapsed.count();
        const double rate = seconds > 0 ? double(progress.done) / seconds : 0;
        const double left = rate > 0 ? double(progress.total - progress.done) / rate : 0;
        std::fprintf(stderr, "\r%zu of %zu items read, %zu kept, %.0f items/s, %.0f s left\033[K", progress.done,
                     progress.total, progress.kept, rate, left);
        std::fflush(stderr);
    }
    void showFiles(size_t files, qint64 bytes)
    {
        if (m_shown.isValid() && m_shown.elapsed() < 100)
            return;
        m_shown.start();
        std::fprintf(stderr, "\r%zu files read, %.1f MB\033[K", files, double(bytes) / 1e6);
        std::fflush(stderr);
    }
    void end()
    {
        if (m_shown.isValid())
            std::fprintf(stderr, "\r\033[K");
    }

private:
    QElapsedTimer m_shown;
};

} // namespace

namespace {

// The handset's file system for the backup, or none when the handset offers
// none over its diagnostic port; `said` tells which for the summary.
std::optional<link::EfsTree> ReadFiles(const Options& options, link::SerialLink& line,
                                       const std::function<void(size_t, qint64)>& progress, QString& said)
{
    link::EfsClient client(line, options.inFlight, options.replyTime);
    try {
        client.hello();
    } catch (const TessalyError& error) {
        if (error.number() != link::errHandsetRefused)
            throw;
        said = QStringLiteral("no file system");
        return {};
    }
    link::EfsTree tree = link::ReadEfsTree(client, QStringLiteral("/"), progress);
    said = QStringLiteral("%1 files, %2 MB").arg(tree.files()).arg(double(tree.bytes) / 1e6, 0, 'f', 1);
    if (!tree.gaps.empty())
        said += QStringLiteral(", %1 not read").arg(tree.gaps.size());
    return tree;
}

} // namespace

FullBackupTaken TakeFullBackup(const Options& options, link::SerialLink& line, const FullBackupProgress& progress)
{
    link::ItemScan scan(line, options.inFlight, options.replyTime);
    if (progress.items)
        scan.setProgress(progress.items);
    QElapsedTimer clock;
    clock.start();
    link::Backup backup = scan.run(options.firstItem, options.lastItem);
    QString files = QStringLiteral("files left out");
    std::optional<link::EfsTree> tree;
    if (!options.noFiles) {
        try {
            tree = ReadFiles(options, line, progress.files ? progress.files : [](size_t, qint64) {}, files);
        } catch (const TessalyError& error) {
            throw TessalyError(error.number(), QStringLiteral("The full backup stopped while reading the "
                                                              "handset's files: %1 Nothing was kept.")
                                                   .arg(error.description()));
        }
    }
    FullBackupTaken taken;
    if (tree)
        backup.files = std::move(tree->entries);
    taken.path = backup.save(link::BackupFolder());
    for (const auto& [address, gap] : scan.gaps())
        taken.gaps << QStringLiteral("%1: %2").arg(model::Describe(address), gap);
    if (tree)
        for (const auto& [file, gap] : tree->gaps)
            taken.gaps << QStringLiteral("%1: %2").arg(file, gap);
    const link::ScanCounts& counts = scan.counts();
    taken.summary = QStringLiteral("Items %1 to %2: %3 held, %4 lacking, %5 busy, %6 refused (%7 entries with their "
                                   "indexes); %8; %9 s")
                        .arg(options.firstItem)
                        .arg(options.lastItem)
                        .arg(counts.held)
                        .arg(counts.lacking)
                        .arg(counts.busy)
                        .arg(counts.refused)
                        .arg(counts.entries)
                        .arg(files)
                        .arg(double(clock.nsecsElapsed()) / 1e9, 0, 'f', 1);
    taken.busy = counts.busy > 0;
    return taken;
}

int SaveFullBackup(const Options& options)
{
    ProgressLine line;
    FullBackupProgress progress;
    if (isatty(STDERR_FILENO)) {
        progress.items = [&line](const link::ScanProgress& done) { line.show(done); };
        progress.files = [&line](size_t files, qint64 bytes) { line.showFiles(files, bytes); };
    }
    try {
        link::SerialLink serial(options.port, options.replyTime);
        const FullBackupTaken taken = TakeFullBackup(options, serial, progress);
        line.end();
        std::printf("%s\n", qPrintable(taken.path));
        for (const QString& gap : taken.gaps)
            std::printf("%s\n", qPrintable(gap));
        std::printf("%s\n", qPrintable(taken.summary));
        // A busy item is a gap in the backup: a script must know.
        return taken.busy ? 1 : 0;
    } catch (const TessalyError& error) {
        line.end();
        std::fprintf(stderr, "halvane: %s\n", qPrintable(error.description()));
        return 1;
    }
}

} // namespace halvane
