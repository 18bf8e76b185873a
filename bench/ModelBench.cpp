// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The simulated handset end to end, without a pace: a full NV Read into a
// bound panel, and a full NV Write from it back into the memory file, in NV
// items per second. Nothing stands beside them: Qt has no handset memory.
#include "model/Catalogue.h"
#include "model/FileNvMemory.h"
#include "model/SimulatedHandset.h"

#include <tessaly/Tessaly.h>

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

using namespace tessaly::model;

// A panel bound to a new handset whose memory is a file of its own.
struct Bench {
    QTemporaryDir folder;
    FileNvMemory memory{folder.filePath(QStringLiteral("nv-memory.json")), Catalogue::BuiltIn().factory()};
    Tessaly panel;
    SimulatedHandset handset{panel, memory};
    int32_t items = 0; // the total of the last command

    Bench()
    {
        panel.SetModelDLL(&handset);
        QObject::connect(&handset, &IBaseModelEvents::GetTotalProgressCount,
                         [this](int32_t total, int32_t) { items = total; });
    }
};

void SimulatedHandsetNVRead(benchmark::State& state)
{
    Bench bench;
    for (auto _ : state)
        bench.handset.NVRead();
    state.SetItemsProcessed(state.iterations() * int64_t(Catalogue::BuiltIn().addresses().size()));
}
BENCHMARK(SimulatedHandsetNVRead)->Unit(benchmark::kMillisecond);

void SimulatedHandsetNVWrite(benchmark::State& state)
{
    Bench bench;
    bench.handset.NVRead();
    for (auto _ : state)
        bench.handset.NVWrite();
    state.SetItemsProcessed(state.iterations() * bench.items);
}
BENCHMARK(SimulatedHandsetNVWrite)->Unit(benchmark::kMillisecond);

} // namespace
