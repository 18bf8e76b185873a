// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The port listing of this machine: sysfs's ttys and one pass over every
// process's descriptors in /proc, as halvane --list-ports and --port auto
// read them before any probe.
#include "link/PortList.h"

#include <benchmark/benchmark.h>

namespace {

void PortListThisMachine(benchmark::State& state)
{
    const auto& known = tessaly::link::KnownDiagInterfaces();
    for (auto _ : state)
        benchmark::DoNotOptimize(tessaly::link::ListPorts(QStringLiteral("/"), known));
}
BENCHMARK(PortListThisMachine)->Unit(benchmark::kMillisecond);

} // namespace
