// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The handset's whole file system read by a full backup's walk through
// tessaly-emu, its factory tree behind 1 ms of latency a reply as a handset
// behind USB answers: four requests on the way beside one at a time, on the
// same emulator in the same iteration. The time is the walk's with four;
// "one_ms" the walk's with one, and "ratio" the one over the other.
#include "Emulator.h"

#include "link/EfsTreeRead.h"

#include <QElapsedTimer>

#include <benchmark/benchmark.h>

namespace {

using namespace tessaly;

// Seconds to read the whole tree with `inFlight` requests on the way.
double ReadTree(link::SerialLink& line, int inFlight, size_t& files)
{
    QElapsedTimer clock;
    clock.start();
    link::EfsClient client(line, inFlight, std::chrono::seconds(3));
    client.hello();
    const link::EfsTree tree = link::ReadEfsTree(client);
    files = tree.files();
    return double(clock.nsecsElapsed()) / 1e9;
}

void EfsTreeFourBesideOne(benchmark::State& state)
{
    Emulator emulator({QStringLiteral("--latency"), QStringLiteral("1000")});
    link::SerialLink line(emulator.port());
    double one = 0;
    double four = 0;
    size_t files = 0;
    for (auto _ : state) {
        one += ReadTree(line, 1, files);
        const double seconds = ReadTree(line, 4, files);
        four += seconds;
        state.SetIterationTime(seconds);
    }
    state.SetItemsProcessed(state.iterations() * qsizetype(files));
    state.counters["one_ms"] = benchmark::Counter(1000 * one, benchmark::Counter::kAvgIterations);
    state.counters["ratio"] = four / one;
}
BENCHMARK(EfsTreeFourBesideOne)->Iterations(3)->Unit(benchmark::kMillisecond)->UseManualTime();

} // namespace
