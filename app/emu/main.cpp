// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// tessaly-emu: a CDMA handset on a pseudo-terminal, answering the diagnostic
// protocol from an NV memory file of the simulated handset's format, and
// serving its file system through EFS2 from a file beside it
// ("<state>.efs.json", EfsStateFile.h; the factory tree of FactoryEfs.h when
// there is none) and its roaming list from another ("<state>.prl",
// PrlAnswers.h; the factory list of model/FactoryPrl.h when there is none). With --count N it serves a bench of N handsets, each with
// a state file, an identity and a terminal of its own (BenchHandset.h), each
// on a thread of its own (ServedHandset.h). It prints the terminals' paths,
// one a line, then serves until SIGTERM, SIGINT or SIGHUP; meanwhile it
// announces them in the user's runtime folder (Announcements.h), where
// halvane's port listing finds them. The handset's model (--model, or the
// state file's "handset" fields) says what it says of itself and which
// commands it knows (HandsetAnswers.h); switches make the faults of real
// handsets and lines (Faults.h, and --garble and --busy for single items), or
// mix them at random from a seed (--chaos); --efs-size makes a full disk;
// --latency and --queue make a handset behind USB (DelayedReplies.h).
// Between its replies each handset sends event reports and log packets of
// its own while a tool has turned them on (EventSource.h, LogSource.h),
// every --report-pace.
#include "Announcements.h"
#include "BenchHandset.h"
#include "FactoryEfs.h"
#include "ServedHandset.h"

#include "model/Catalogue.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

using namespace tessaly;

namespace {

// The pipe that tells the serving threads to stop: a signal writes to it,
// and every thread waits on its other end beside its terminal.
int stopPipe[2] = {-1, -1};

extern "C" void OnStop(int)
{
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(stopPipe[1], &byte, 1);
}

bool CatchStopSignals()
{
    if (::pipe2(stopPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return false;
    struct sigaction action {};
    action.sa_handler = OnStop;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaction(signal, &action, nullptr);
    return true;
}

// Waits until a stop signal has come.
void AwaitStop()
{
    pollfd stop{stopPipe[0], POLLIN, 0};
    while (::poll(&stop, 1, -1) <= 0) {
    }
}

// The whole number `text` of option `name`, at least `least`; told on
// standard error when it is not one.
std::optional<int> Number(const QString& name, const QString& text, int least)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    if (ok && value >= least)
        return value;
    std::fprintf(stderr, "tessaly-emu: %s wants a whole number of %d or more, not \"%s\"\n", qPrintable(name), least,
                 qPrintable(text));
    return {};
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tessaly-emu"));
    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("A CDMA handset on a pseudo-terminal, for halvane --port."));
    options.addHelpOption();
    const auto option = [](const char* name, const QString& help, const char* value = nullptr,
                           const char* byDefault = nullptr) {
        return value ? QCommandLineOption(QLatin1String(name), help, QLatin1String(value), QLatin1String(byDefault))
                     : QCommandLineOption(QLatin1String(name), help);
    };
    const QCommandLineOption state = option("state", QStringLiteral("The NV memory <file>."), "file");
    const QCommandLineOption model(
        QStringLiteral("model"),
        QStringLiteral("The handset's model <name>: %1.").arg(emu::ProfileNames().join(QStringLiteral(", "))),
        QStringLiteral("name"), emu::ProfileNames().first());
    const QCommandLineOption spc
        = option("spc", QStringLiteral("Lock writes and mode changes until this <code> is given."), "code");
    const QCommandLineOption slow = option("slow", QStringLiteral("Answer each request after <ms>."), "ms", "0");
    const QCommandLineOption badCrc
        = option("bad-crc", QStringLiteral("Break the CRC of every <n>th reply."), "n", "0");
    const QCommandLineOption events = option(
        "events", QStringLiteral("Start with event reporting on, as an earlier client left it, and send an event "
                                 "report before each reply while it is on."));
    const QCommandLineOption logs = option(
        "logs", QStringLiteral("Start with every 1X log code on, as an earlier client left the log mask."));
    const QCommandLineOption dead = option("dead-after", QStringLiteral("Go silent after <n> requests."), "n", "0");
    const QCommandLineOption garble
        = option("garble", QStringLiteral("Keep other bytes than were written to NV <item>, or to the file <item> "
                                          "when it is a path."),
                 "item", "-1");
    const QCommandLineOption late
        = option("late", QStringLiteral("Answer request <n> only after <ms>."), "n:ms", "0:0");
    const QCommandLineOption busy = option(
        "busy", QStringLiteral("Answer the first <n> reads of NV <item> with status 1, busy; no n or 0: every read."),
        "item[:n]");
    const QCommandLineOption efsSize = option(
        "efs-size", QStringLiteral("Give the file system room for <bytes> (the factory files and 512 KB by default)."),
        "bytes");
    const QCommandLineOption chaos = option("chaos", QStringLiteral("Make the faults at random, from <seed>."), "seed");
    const QCommandLineOption latency = option(
        "latency", QStringLiteral("Send each reply <us> microseconds after its request, taking further requests meanwhile."),
        "us", "0");
    const QCommandLineOption queue
        = option("queue", QStringLiteral("With --latency, hold <n> requests at most; drop the rest."), "n", "4");
    const QCommandLineOption count = option(
        "count", QStringLiteral("Serve <n> handsets, each on its own terminal with its own state file and identity."),
        "n", "1");
    const QCommandLineOption reportPace = option(
        "report-pace", QStringLiteral("Send an event report and a log packet every <ms> while they are on."), "ms",
        "300");
    options.addOptions({state, model, spc, slow, badCrc, events, logs, dead, garble, busy, late, efsSize, chaos,
                        latency, queue, reportPace, count});
    // A wrong option is bad usage, exit status 2; process() would exit with 1.
    if (!options.parse(QCoreApplication::arguments())) {
        std::fprintf(stderr, "tessaly-emu: %s\n", qPrintable(options.errorText()));
        return 2;
    }
    options.process(app); // --help and --help-all
    if (!options.isSet(state)) {
        std::fprintf(stderr, "tessaly-emu: --state FILE is needed\n");
        return 2;
    }
    std::optional<emu::HandsetProfile> profile = emu::ProfileByName(options.value(model));
    if (!profile) {
        std::fprintf(stderr, "tessaly-emu: no handset model \"%s\"; there are %s\n", qPrintable(options.value(model)),
                     qPrintable(emu::ProfileNames().join(QStringLiteral(", "))));
        return 2;
    }

    const QStringList lateness = options.value(late).split(QLatin1Char(':'));
    const std::optional<int> slowMs = Number(QStringLiteral("--slow"), options.value(slow), 0);
    const std::optional<int> badEvery = Number(QStringLiteral("--bad-crc"), options.value(badCrc), 0);
    const std::optional<int> deadAfter = Number(QStringLiteral("--dead-after"), options.value(dead), 0);
    const std::optional<int> lateRequest = Number(QStringLiteral("--late"), lateness.value(0), 0);
    const std::optional<int> lateMs = Number(QStringLiteral("--late"), lateness.value(1), 0);
    const bool garbledFile = options.value(garble).startsWith(QLatin1Char('/'));
    const std::optional<int> garbled
        = garbledFile ? std::optional<int>(-1) : Number(QStringLiteral("--garble"), options.value(garble), -1);
    const QStringList busyness = options.value(busy).split(QLatin1Char(':'));
    const std::optional<int> busyItem
        = options.isSet(busy) ? Number(QStringLiteral("--busy"), busyness.value(0), 0) : std::optional<int>(-1);
    const std::optional<int> busyReads = Number(QStringLiteral("--busy"), busyness.value(1, QStringLiteral("0")), 0);
    const std::optional<int> efsBytes = options.isSet(efsSize)
        ? Number(QStringLiteral("--efs-size"), options.value(efsSize), 0)
        : std::optional<int>(emu::FactoryEfsCapacity());
    const std::optional<int> latencyUs = Number(QStringLiteral("--latency"), options.value(latency), 0);
    const std::optional<int> held = Number(QStringLiteral("--queue"), options.value(queue), 1);
    const std::optional<int> handsets = Number(QStringLiteral("--count"), options.value(count), 1);
    const std::optional<int> paceMs = Number(QStringLiteral("--report-pace"), options.value(reportPace), 1);
    bool seeded = true;
    const uint32_t seed = options.isSet(chaos) ? options.value(chaos).toUInt(&seeded) : 0;
    if (!seeded)
        std::fprintf(stderr, "tessaly-emu: --chaos wants a whole number of 0 or more, not \"%s\"\n",
                     qPrintable(options.value(chaos)));
    if (!slowMs || !badEvery || !deadAfter || !lateRequest || !lateMs || !garbled || !busyItem || !busyReads
        || !efsBytes || !latencyUs || !held || !handsets || !paceMs || !seeded)
        return 2;

    emu::ServingOptions serving;
    serving.profile = *profile;
    serving.spc = options.value(spc);
    serving.faults = {*slowMs, *badEvery, options.isSet(events), *deadAfter, *lateRequest, *lateMs};
    serving.itemFaults = {*garbled, *busyItem, *busyReads};
    if (garbledFile)
        serving.garbledFile = options.value(garble);
    serving.efsCapacity = *efsBytes;
    serving.latency = std::chrono::microseconds(*latencyUs);
    serving.queue = size_t(*held);
    // The faults of event reports meet a handset that an earlier client left
    // reporting.
    serving.leftOn = {options.isSet(events) || options.isSet(chaos), options.isSet(logs)};
    serving.reportPace = std::chrono::milliseconds(*paceMs);

    if (!CatchStopSignals()) {
        std::perror("tessaly-emu: pipe");
        return 1;
    }
    // Without --count, one handset on the state file as given; with it,
    // handset k on its own file and, while that is new, its own identity.
    // Each runs its chaos schedule from the seed plus its number, so that
    // handsets of one seed do not fail in step.
    const model::NvImage& factory = model::Catalogue::BuiltIn().factory();
    std::vector<std::unique_ptr<emu::ServedHandset>> bench;
    for (int k = 1; k <= *handsets; ++k) {
        const bool alone = !options.isSet(count);
        if (options.isSet(chaos))
            serving.chaosSeed = seed + uint32_t(alone ? 0 : k - 1);
        const QString path = alone ? options.value(state) : emu::BenchStatePath(options.value(state), k);
        bench.push_back(
            std::make_unique<emu::ServedHandset>(path, alone ? factory : emu::BenchFactory(factory, k), serving));
        if (const QString& problem = bench.back()->problem(); !problem.isEmpty()) {
            std::fprintf(stderr, "tessaly-emu: %s\n", qPrintable(problem));
            return 1;
        }
    }
    // Announced before the paths are printed: whoever reads them finds the
    // announcements there.
    emu::Announcements announced(link::EmulatorAnnouncementFolder());
    for (size_t k = 0; k < bench.size(); ++k) {
        const emu::ServedHandset& handset = *bench[k];
        const QString unannounced = announced.announce({handset.terminal(), QCoreApplication::applicationPid(),
                                                        int(k + 1), handset.model(), handset.esnHex(),
                                                        handset.meidHex().value_or(QString())});
        if (!unannounced.isEmpty())
            std::fprintf(stderr, "tessaly-emu: %s is not announced, and halvane --port auto will not find it: %s\n",
                         qPrintable(handset.terminal()), qPrintable(unannounced));
    }
    for (const auto& handset : bench)
        std::printf("%s\n", qPrintable(handset->terminal()));
    std::fflush(stdout);

    std::vector<std::thread> threads;
    for (const auto& handset : bench)
        threads.emplace_back([&handset] { handset->serve(stopPipe[0]); });
    AwaitStop();
    announced.withdraw();
    for (std::thread& thread : threads)
        thread.join();
    return 0;
}
