// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "FullBackup.h"

#include "link/EfsTreeRead.h"
#include "link/ItemScan.h"

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
std::optional<link::EfsTree> ReadFiles(const Options& options, Handset& handset, ProgressLine& line, QString& said)
{
    link::EfsClient client(*handset.line, options.inFlight, options.replyTime);
    try {
        client.hello();
    } catch (const TessalyError& error) {
        if (error.number() != link::errHandsetRefused)
            throw;
        said = QStringLiteral("no file system");
        return {};
    }
    const bool terminal = isatty(STDERR_FILENO);
    link::EfsTree tree = link::ReadEfsTree(client, QStringLiteral("/"), [&](size_t files, qint64 bytes) {
        if (terminal)
            line.showFiles(files, bytes);
    });
    said = QStringLiteral("%1 files, %2 MB").arg(tree.files()).arg(double(tree.bytes) / 1e6, 0, 'f', 1);
    if (!tree.gaps.empty())
        said += QStringLiteral(", %1 not read").arg(tree.gaps.size());
    return tree;
}

} // namespace

int SaveFullBackup(const Options& options, Handset& handset)
{
    link::ItemScan scan(*handset.line, options.inFlight, options.replyTime);
    ProgressLine line;
    if (isatty(STDERR_FILENO))
        scan.setProgress([&line](const link::ScanProgress& progress) { line.show(progress); });
    QElapsedTimer clock;
    clock.start();
    try {
        link::Backup backup = scan.run(options.firstItem, options.lastItem);
        QString files = QStringLiteral("files left out");
        std::optional<link::EfsTree> tree;
        if (!options.noFiles) {
            try {
                tree = ReadFiles(options, handset, line, files);
            } catch (const TessalyError& error) {
                throw TessalyError(error.number(), QStringLiteral("The full backup stopped while reading the "
                                                                  "handset's files: %1 Nothing was kept.")
                                                       .arg(error.description()));
            }
        }
        line.end();
        if (tree)
            backup.files = std::move(tree->entries);
        const QString path = backup.save(link::BackupFolder());
        std::printf("%s\n", qPrintable(path));
        for (const auto& [address, gap] : scan.gaps())
            std::printf("%s: %s\n", qPrintable(model::Describe(address)), qPrintable(gap));
        for (const auto& [file, gap] : tree ? tree->gaps : std::vector<std::pair<QString, QString>>{})
            std::printf("%s: %s\n", qPrintable(file), qPrintable(gap));
        const link::ScanCounts& counts = scan.counts();
        std::printf("Items %u to %u: %zu held, %zu lacking, %zu busy, %zu refused (%zu entries with their indexes); "
                    "%s; %.1f s\n",
                    options.firstItem, options.lastItem, counts.held, counts.lacking, counts.busy, counts.refused,
                    counts.entries, qPrintable(files), double(clock.nsecsElapsed()) / 1e9);
        // A busy item is a gap in the backup: a script must know.
        return counts.busy > 0 ? 1 : 0;
    } catch (const TessalyError& error) {
        line.end();
        std::fprintf(stderr, "halvane: %s\n", qPrintable(error.description()));
        return 1;
    }
}

} // namespace halvane
