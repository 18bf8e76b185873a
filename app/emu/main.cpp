// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// tessaly-emu: a CDMA handset on a pseudo-terminal, answering the diagnostic
// protocol from an NV memory file of the simulated handset's format, and
// serving its file system through EFS2 from a file beside it
// ("<state>.efs.json", EfsStateFile.h; the factory tree of FactoryEfs.h when
// there is none) and its roaming list from another ("<state>.prl"). It prints the terminal's path, then serves until it is
// stopped. The handset's model (--model, or the state file's "handset"
// fields) says what it says of itself and which commands it knows
// (HandsetAnswers.h); switches make the faults of real handsets and lines
// (Faults.h, and --garble and --busy for single items), or mix them at random
// from a seed (--chaos); --efs-size makes a full disk; --latency and --queue
// make a handset behind USB (DelayedReplies.h).
#include "Chaos.h"
#include "DelayedReplies.h"
#include "EfsStateFile.h"
#include "FactoryEfs.h"
#include "Faults.h"
#include "HandsetAnswers.h"
#include "HandsetProfile.h"

#include "link/FrameCodec.h"
#include "model/Catalogue.h"
#include "model/FileNvMemory.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <optional>
#include <thread>

using namespace tessaly;

namespace {

// The bytes that go out for `payload`, the reply to `request`, as `plan`
// says, after its delay.
QByteArray Deliver(const QByteArray& request, QByteArray payload, const emu::ReplyPlan& plan)
{
    if (plan.garbledRead && uint8_t(payload[0]) == link::CmdNvRead && payload.size() == link::NvPacketSize) {
        link::NvItemReply item = link::ParseNvItem(request, payload);
        item.data.back() ^= 0xA5;
        payload = link::EncodeNvItemReply(link::CmdNvRead, item);
    }
    std::this_thread::sleep_for(plan.delay);
    QByteArray frame = link::EncodeFrame(payload);
    if (plan.badCrc)
        frame[frame.size() - 2] = char(frame[frame.size() - 2] ^ 0x01);
    return plan.eventFirst ? link::EncodeFrame(QByteArray::fromHex("6000ff")) + frame : frame;
}

// Opens a pseudo-terminal in raw mode and gives its controlling side; the
// other side's path is printed for the client.
int OpenTerminal()
{
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) {
        std::perror("tessaly-emu: pseudo-terminal");
        return -1;
    }
    const char* path = ptsname(master);
    // Held open so that the line stays up while clients come and go.
    const int slave = ::open(path, O_RDWR | O_NOCTTY);
    termios raw{};
    tcgetattr(slave, &raw);
    cfmakeraw(&raw);
    tcsetattr(slave, TCSANOW, &raw);
    std::printf("%s\n", path);
    std::fflush(stdout);
    return master;
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
    const QCommandLineOption events = option("events", QStringLiteral("Send an event report before each reply."));
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
    options.addOptions({state, model, spc, slow, badCrc, events, dead, garble, busy, late, efsSize, chaos, latency,
                        queue});
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
    bool seeded = true;
    const uint32_t seed = options.isSet(chaos) ? options.value(chaos).toUInt(&seeded) : 0;
    if (!seeded)
        std::fprintf(stderr, "tessaly-emu: --chaos wants a whole number of 0 or more, not \"%s\"\n",
                     qPrintable(options.value(chaos)));
    if (!slowMs || !badEvery || !deadAfter || !lateRequest || !lateMs || !garbled || !busyItem || !busyReads
        || !efsBytes || !latencyUs || !held || !seeded)
        return 2;

    const int master = OpenTerminal();
    if (master < 0)
        return 1;
    model::FileNvMemory memory(options.value(state), model::Catalogue::BuiltIn().factory());
    QString problem = memory.lastProblem();
    profile = emu::WithFields(*profile, memory.fields()[QLatin1String("handset")].toObject(), problem);
    const QString efsPath = emu::EfsPathBeside(options.value(state));
    emu::EfsTree files(emu::LoadEfs(efsPath, problem), *efsBytes);
    if (garbledFile)
        files.garbleWritesTo(options.value(garble));
    if (!problem.isEmpty()) {
        std::fprintf(stderr, "tessaly-emu: %s\n", qPrintable(problem));
        return 1;
    }
    emu::Faults faults{*slowMs, *badEvery, options.isSet(events), *deadAfter, *lateRequest, *lateMs};
    std::unique_ptr<emu::ChaosSchedule> schedule;
    if (options.isSet(chaos))
        schedule = std::make_unique<emu::ChaosSchedule>(seed);
    emu::HandsetAnswers handset(memory, *profile, options.value(spc), {*garbled, *busyItem, *busyReads}, files);
    if (const QString unkept = handset.keepRoamingListIn(options.value(state) + QStringLiteral(".prl")); !unkept.isEmpty())
        std::fprintf(stderr, "tessaly-emu: %s\n", qPrintable(unkept));
    DelayedReplies delayed(master, std::chrono::microseconds(*latencyUs), size_t(*held));

    link::FrameDecoder decoder;
    int requests = 0;
    char buffer[4096];
    while (true) {
        delayed.awaitInput();
        const ssize_t n = ::read(master, buffer, sizeof buffer);
        if (n <= 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            continue;
        }
        for (const QByteArray& request : decoder.feed(QByteArrayView(buffer, n))) {
            ++requests;
            if (request.isEmpty())
                continue;
            const emu::ReplyPlan plan = schedule ? schedule->next(emu::ChaosSchedule::Clock::now()) : faults.planFor(requests);
            if (plan.silent || !delayed.admit())
                continue;
            const std::optional<QByteArray> reply = handset.answer(request);
            // Kept before the reply goes out, so that what the client was
            // told is what a restart finds.
            if (files.takeChanged())
                if (const QString unsaved = emu::SaveEfs(efsPath, files); !unsaved.isEmpty())
                    std::fprintf(stderr, "tessaly-emu: the file system could not be saved to %s: %s\n",
                                 qPrintable(efsPath), qPrintable(unsaved));
            if (reply)
                delayed.send(Deliver(request, *reply, plan));
        }
    }
}
