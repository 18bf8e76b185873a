// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// A bench of handsets: halvane backing up the items 0 to 8191 of eight
// emulated handsets behind 1 ms latency at once (--port LIST), beside the same
// backup of one of them alone, in the same iteration; each run is halvane as
// a user starts it, timed by the wall clock, its peak resident memory taken
// from the kernel's account of the child.
#include "Emulator.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>

namespace {

struct HalvaneRun {
    double seconds = 0;
    double peakMb = 0;
    bool succeeded = false;
};

// halvane with `arguments`, its data in `data`, its output dropped.
HalvaneRun RunHalvane(const QStringList& arguments, const QString& data)
{
    std::vector<QByteArray> words{QByteArrayLiteral(HALVANE)};
    for (const QString& argument : arguments)
        words.push_back(argument.toLocal8Bit());
    std::vector<char*> argv;
    for (QByteArray& word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    QByteArray home = "XDG_DATA_HOME=" + data.toLocal8Bit();
    QByteArray platform = "QT_QPA_PLATFORM=offscreen";
    QByteArray runtime = "XDG_RUNTIME_DIR=" + data.toLocal8Bit();
    char* envp[] = {home.data(), platform.data(), runtime.data(), nullptr};

    QElapsedTimer clock;
    clock.start();
    const pid_t child = fork();
    if (child == 0) {
        const int null = ::open("/dev/null", O_WRONLY);
        dup2(null, STDOUT_FILENO);
        dup2(null, STDERR_FILENO);
        execve(argv[0], argv.data(), envp);
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    return {double(clock.nsecsElapsed()) / 1e9, double(usage.ru_maxrss) / 1024.0,
            WIFEXITED(status) && WEXITSTATUS(status) == 0};
}

void BM_BenchOfEightBesideOne(benchmark::State& state)
{
    std::vector<std::unique_ptr<Emulator>> handsets;
    QStringList ports;
    for (int i = 0; i < 8; ++i) {
        handsets.push_back(std::make_unique<Emulator>(QStringList{QStringLiteral("--latency"), QStringLiteral("1000")}));
        ports << handsets.back()->port();
    }
    const QStringList backup{QStringLiteral("--read"), QStringLiteral("--items"), QStringLiteral("0-8191"),
                             QStringLiteral("--no-files")};
    QTemporaryDir data;
    HalvaneRun one;
    HalvaneRun eight;
    for (auto _ : state) {
        one = RunHalvane(QStringList{QStringLiteral("--port"), ports.first()} + backup, data.path());
        eight = RunHalvane(QStringList{QStringLiteral("--port"), ports.join(QLatin1Char(','))} + backup, data.path());
        state.SetIterationTime(one.seconds + eight.seconds);
        if (!one.succeeded || !eight.succeeded)
            state.SkipWithError("a backup failed");
    }
    state.counters["one_s"] = one.seconds;
    state.counters["eight_s"] = eight.seconds;
    state.counters["time_ratio"] = eight.seconds / one.seconds;
    state.counters["one_MB"] = one.peakMb;
    state.counters["eight_MB"] = eight.peakMb;
    state.counters["memory_ratio"] = eight.peakMb / one.peakMb;
}
BENCHMARK(BM_BenchOfEightBesideOne)->UseManualTime()->Unit(benchmark::kSecond)->Iterations(1);

} // namespace
