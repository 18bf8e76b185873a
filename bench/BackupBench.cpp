// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The full backup through tessaly-emu on a pseudo-terminal: every item number
// from 0 to 65535 (the catalogue's indexed items once per index) read by
// halvane's scan, beside a minimal blocking client written here (write a
// request, read until its reply, no event loop, one at a time) on the same
// line in the same iteration. The scan's argument is the requests it keeps
// on the way. Then the same with a latency of 1 ms a reply, as a handset
// behind USB answers, over items 0 to 4095 to keep the run short.
#include "Emulator.h"

#include "link/DiagPackets.h"
#include "link/FrameCodec.h"
#include "link/ItemScan.h"

#include <QElapsedTimer>

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <time.h>
#include <termios.h>
#include <unistd.h>

namespace {

using namespace tessaly;

constexpr uint16_t LatencyLast = 4095;

// The least a client can do: one request written, its reply read with
// blocking reads, the next request.
size_t ReadBlocking(const QString& port, const std::vector<model::NvAddress>& addresses)
{
    const int fd = ::open(port.toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
    termios raw{};
    tcgetattr(fd, &raw);
    cfmakeraw(&raw);
    tcsetattr(fd, TCSANOW, &raw);
    link::FrameDecoder decoder;
    char buffer[4096];
    size_t held = 0;
    for (const model::NvAddress& address : addresses) {
        model::NvData data{};
        if (address.index >= 0)
            data[0] = uint8_t(address.index);
        const QByteArray frame = link::EncodeFrame(link::NvItemRequest(link::CmdNvRead, address.item, data));
        if (::write(fd, frame.constData(), size_t(frame.size())) != frame.size())
            break;
        std::vector<QByteArray> replies;
        while (replies.empty()) {
            const ssize_t n = ::read(fd, buffer, sizeof buffer);
            if (n <= 0)
                break;
            replies = decoder.feed(QByteArrayView(buffer, n));
        }
        held += !replies.empty() && replies[0].size() > 131 && replies[0][131] == 0;
    }
    ::close(fd);
    return held;
}

// Each iteration runs the minimal client and then the scan on the same
// emulator, so that both meet the same load of the machine: the time is the
// scan's, "minimal_ms" the client's and "ratio" the one over the other;
// "cpu_us" and "minimal_cpu_us" are each one's processor time an item, which
// a busy machine sways less than the time on the clock.
double ThreadSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
}

void BackupFullRangeBesideMinimalClient(benchmark::State& state)
{
    Emulator emulator;
    link::SerialLink line(emulator.port());
    const std::vector<model::NvAddress> addresses = link::ScanAddresses(0, 65535);
    double minimal = 0;
    double scanned = 0;
    double minimalCpu = 0;
    double scannedCpu = 0;
    int resent = 0;
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        double cpu = ThreadSeconds();
        benchmark::DoNotOptimize(ReadBlocking(emulator.port(), addresses));
        const double first = double(clock.nsecsElapsed()) / 1e9;
        minimalCpu += ThreadSeconds() - cpu;
        clock.restart();
        cpu = ThreadSeconds();
        link::ItemScan scan(line, int(state.range(0)), std::chrono::seconds(3));
        benchmark::DoNotOptimize(scan.run(0, 65535));
        const double second = double(clock.nsecsElapsed()) / 1e9;
        scannedCpu += ThreadSeconds() - cpu;
        resent += scan.resent();
        minimal += first;
        scanned += second;
        state.SetIterationTime(second);
    }
    state.SetItemsProcessed(state.iterations() * qsizetype(addresses.size()));
    state.counters["minimal_ms"] = benchmark::Counter(1000 * minimal, benchmark::Counter::kAvgIterations);
    state.counters["ratio"] = scanned / minimal;
    const double items = double(state.iterations()) * double(addresses.size()) / 1e6;
    state.counters["cpu_us"] = scannedCpu / items;
    state.counters["minimal_cpu_us"] = minimalCpu / items;
    state.counters["resent"] = benchmark::Counter(resent, benchmark::Counter::kAvgIterations);
}
BENCHMARK(BackupFullRangeBesideMinimalClient)
    ->Arg(1)
    ->Arg(4)
    ->Arg(8)
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

void Scan(benchmark::State& state, const QStringList& options, uint16_t last)
{
    Emulator emulator(options);
    link::SerialLink line(emulator.port());
    int resent = 0;
    for (auto _ : state) {
        link::ItemScan scan(line, int(state.range(0)), std::chrono::seconds(3));
        benchmark::DoNotOptimize(scan.run(0, last));
        resent += scan.resent();
    }
    state.SetItemsProcessed(state.iterations() * qsizetype(link::ScanAddresses(0, last).size()));
    state.counters["resent"] = benchmark::Counter(resent, benchmark::Counter::kAvgIterations);
}

void BackupLatencyScan(benchmark::State& state)
{
    Scan(state, {QStringLiteral("--latency"), QStringLiteral("1000")}, LatencyLast);
}
BENCHMARK(BackupLatencyScan)
    ->Arg(1)
    ->Arg(2)
    ->Arg(4)
    ->Arg(6)
    ->Arg(8)
    ->Iterations(2)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace
