#include "FullBackup.h"

#include "link/ItemScan.h"

#include <QElapsedTimer>

#include <cstdio>
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
        std::fprintf(stderr, "\r%zu of %zu items read, %zu held, %.0f items/s, %.0f s left\033[K", progress.done,
                     progress.total, progress.held, rate, left);
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

int SaveFullBackup(const Options& options, Handset& handset)
{
    link::ItemScan scan(*handset.line, options.inFlight, options.replyTime);
    ProgressLine line;
    if (isatty(STDERR_FILENO))
        scan.setProgress([&line](const link::ScanProgress& progress) { line.show(progress); });
    QElapsedTimer clock;
    clock.start();
    try {
        const link::Backup backup = scan.run(options.firstItem, options.lastItem);
        line.end();
        const QString path = backup.save(link::BackupFolder());
        std::printf("%s\n", qPrintable(path));
        for (const auto& [address, gap] : scan.gaps())
            std::printf("%s: %s\n", qPrintable(model::Describe(address)), qPrintable(gap));
        const link::ScanCounts& counts = scan.counts();
        std::printf("Items %u to %u: %zu held, %zu lacking, %zu busy, %zu refused (%zu entries with their indexes); "
                    "%.1f s\n",
                    options.firstItem, options.lastItem, counts.held, counts.lacking, counts.busy, counts.refused,
                    counts.entries, double(clock.nsecsElapsed()) / 1e9);
        // A busy item is a gap in the backup: a script must know.
        return counts.busy > 0 ? 1 : 0;
    } catch (const TessalyError& error) {
        line.end();
        std::fprintf(stderr, "halvane: %s\n", qPrintable(error.description()));
        return 1;
    }
}

} // namespace halvane
