// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "ServedHandset.h"

#include "Chaos.h"
#include "DelayedReplies.h"
#include "EfsStateFile.h"
#include "EfsTree.h"
#include "EventSource.h"
#include "LogSource.h"

#include "link/FrameCodec.h"
#include "link/IdentityText.h"
#include "model/FileNvMemory.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <thread>

namespace emu {

using namespace tessaly;

namespace {

// The bytes that go out for `payload`, the reply to `request`, as `plan`
// says, after its delay; `event` is a report that goes out before it.
QByteArray Deliver(const QByteArray& request, QByteArray payload, const ReplyPlan& plan,
                   const std::optional<QByteArray>& event)
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
    return event ? link::EncodeFrame(*event) + frame : frame;
}

// A pseudo-terminal in raw mode: its controlling side, and the other side,
// whose path the client opens. Both -1, with `problem` saying why, when
// there is none to be had.
struct Terminal {
    int master = -1;
    int slave = -1;
    QString path;
};

Terminal OpenTerminal(QString& problem)
{
    Terminal terminal;
    terminal.master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (terminal.master < 0 || grantpt(terminal.master) != 0 || unlockpt(terminal.master) != 0) {
        problem = QStringLiteral("no pseudo-terminal: %1").arg(QString::fromLocal8Bit(std::strerror(errno)));
        return terminal;
    }
    char path[128] = {};
    ptsname_r(terminal.master, path, sizeof path);
    terminal.path = QString::fromLocal8Bit(path);
    // Held open so that the line stays up while clients come and go.
    terminal.slave = ::open(path, O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios raw{};
    tcgetattr(terminal.slave, &raw);
    cfmakeraw(&raw);
    tcsetattr(terminal.slave, TCSANOW, &raw);
    return terminal;
}

} // namespace

struct ServedHandset::Private {
    Private(const QString& state, const model::NvImage& factory, const ServingOptions& options);

    // Answers request number `number`, as the faults or the chaos schedule
    // plan its reply.
    void answer(const QByteArray& request, int number);
    // Sends what the handset sends on its own when it falls due, between
    // replies, after `requests` requests; nothing from a handset that is
    // starting or a line gone dead.
    void report(DelayedReplies::Clock::time_point now, int requests);

    QString problem;
    Terminal terminal;
    model::FileNvMemory memory;
    HandsetProfile profile;
    QString efsPath;
    EfsTree files;
    Faults faults;
    std::unique_ptr<ChaosSchedule> schedule;
    HandsetAnswers handset;
    DelayedReplies delayed;
    EventSource events;
    LogSource logs;
    QString esn;
    std::optional<QString> meid;
};

ServedHandset::Private::Private(const QString& state, const model::NvImage& factory, const ServingOptions& options)
    : terminal(OpenTerminal(problem))
    , memory(state, factory)
    , profile(WithFields(options.profile, memory.fields()[QLatin1String("handset")].toObject(), problem))
    , efsPath(EfsPathBeside(state))
    , files(LoadEfs(efsPath, problem), options.efsCapacity)
    , faults(options.faults)
    , schedule(options.chaosSeed ? std::make_unique<ChaosSchedule>(*options.chaosSeed) : nullptr)
    , handset(memory, profile, options.spc, options.itemFaults, files, options.leftOn)
    , delayed(terminal.master, options.latency, options.queue)
    , events(options.reportPace, DelayedReplies::Clock::now())
    , logs(options.reportPace, DelayedReplies::Clock::now())
{
    if (problem.isEmpty())
        problem = memory.lastProblem();
    if (const QString unkept = handset.keepRoamingListIn(state + QStringLiteral(".prl")); !unkept.isEmpty())
        std::fprintf(stderr, "tessaly-emu: %s\n", qPrintable(unkept));
    if (!options.garbledFile.isEmpty())
        files.garbleWritesTo(options.garbledFile);
    model::NvData data{};
    memory.read({model::EsnItem, -1}, data);
    esn = link::EsnHex(data);
    if (profile.hasMeid && memory.read({model::MeidItem, -1}, data) == model::NvStatus::Done)
        meid = link::MeidHex(data);
}

void ServedHandset::Private::answer(const QByteArray& request, int number)
{
    const ReplyPlan plan = schedule ? schedule->next(ChaosSchedule::Clock::now()) : faults.planFor(number);
    if (plan.silent || !delayed.admit())
        return;
    const std::optional<QByteArray> reply = handset.answer(request);
    // Kept before the reply goes out, so that what the client was told is
    // what a restart finds.
    if (files.takeChanged())
        if (const QString unsaved = SaveEfs(efsPath, files); !unsaved.isEmpty())
            std::fprintf(stderr, "tessaly-emu: the file system could not be saved to %s: %s\n", qPrintable(efsPath),
                         qPrintable(unsaved));
    if (reply)
        delayed.send(Deliver(request, *reply, plan, plan.eventFirst ? events.now(handset) : std::nullopt));
}

void ServedHandset::Private::report(DelayedReplies::Clock::time_point now, int requests)
{
    if (handset.silent() || (faults.deadAfter > 0 && requests > faults.deadAfter))
        return;
    QByteArray frames;
    if (const std::optional<QByteArray> report = events.due(now, handset))
        frames += link::EncodeFrame(*report);
    for (const QByteArray& packet : logs.due(now, handset))
        frames += link::EncodeFrame(packet);
    if (!frames.isEmpty())
        delayed.sendNow(frames);
}

ServedHandset::ServedHandset(const QString& state, const model::NvImage& factory, const ServingOptions& options)
    : d(std::make_unique<Private>(state, factory, options))
{
}

ServedHandset::~ServedHandset()
{
    for (const int fd : {d->terminal.slave, d->terminal.master})
        if (fd >= 0)
            ::close(fd);
}

const QString& ServedHandset::problem() const
{
    return d->problem;
}

const QString& ServedHandset::terminal() const
{
    return d->terminal.path;
}

QString ServedHandset::model() const
{
    const HandsetProfile& profile = d->profile;
    if (profile.hasBuildId && !profile.build.model.isEmpty())
        return profile.build.model;
    const link::VersionInfo& version = profile.version;
    return version.versionDirectory.isEmpty()
        ? QStringLiteral("Model %1").arg(version.modelNumber)
        : QStringLiteral("%1 (model %2)").arg(version.versionDirectory).arg(version.modelNumber);
}

QString ServedHandset::esnHex() const
{
    return d->esn;
}

std::optional<QString> ServedHandset::meidHex() const
{
    return d->meid;
}

void ServedHandset::serve(int stop)
{
    link::FrameDecoder decoder;
    int requests = 0;
    char buffer[4096];
    while (true) {
        const DelayedReplies::Wake woken
            = d->delayed.awaitInput(stop, std::min(d->events.nextAt(), d->logs.nextAt()));
        if (woken == DelayedReplies::Wake::Stopped)
            return;
        d->report(DelayedReplies::Clock::now(), requests);
        if (woken == DelayedReplies::Wake::Due)
            continue;
        const ssize_t n = ::read(d->terminal.master, buffer, sizeof buffer);
        if (n <= 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            continue;
        }
        for (const QByteArray& request : decoder.feed(QByteArrayView(buffer, n))) {
            ++requests;
            if (!request.isEmpty())
                d->answer(request, requests);
        }
    }
}

} // namespace emu
