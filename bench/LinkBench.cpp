// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The serial link's framing: encoding and decoding NV item packets (133 bytes,
// as a read or write of one item carries), in megabytes of payload a second.
// There is no Qt counterpart; 115200 baud moves about 0.0115 MB a second.
#include "link/FrameCodec.h"
#include "link/LiveNvMemory.h"
#include "model/Catalogue.h"
#include "model/NvFile.h"

#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

QByteArray Packet(int seed)
{
    QByteArray packet(133, Qt::Uninitialized);
    for (int i = 0; i < packet.size(); ++i)
        packet[i] = char((i * 31 + seed * 7) & 0xFF); // every byte value, flags and escapes included
    return packet;
}

void LinkEncodeFrames(benchmark::State& state)
{
    const QByteArray packet = Packet(1);
    for (auto _ : state)
        benchmark::DoNotOptimize(tessaly::link::EncodeFrame(packet));
    state.SetBytesProcessed(state.iterations() * packet.size());
}
BENCHMARK(LinkEncodeFrames);

void LinkDecodeFrames(benchmark::State& state)
{
    QByteArray line;
    for (int i = 0; i < 64; ++i)
        line += tessaly::link::EncodeFrame(Packet(i));
    tessaly::link::FrameDecoder decoder;
    for (auto _ : state)
        benchmark::DoNotOptimize(decoder.feed(line));
    state.SetBytesProcessed(state.iterations() * 64 * 133);
}
BENCHMARK(LinkDecodeFrames);

} // namespace

namespace {

// A full read of the catalogue's items from the emulator on a pseudo-terminal:
// the time the protocol stack adds per item, where a real line at 115200 baud
// needs about 24 ms for the 272 bytes of a request and its reply. The
// argument is one item in so many that the handset lacks (status 8, not
// valid), 0 for none: the items a handset lacks cost nothing extra.
void LinkReadCatalogueThroughEmulator(benchmark::State& state)
{
    using namespace tessaly::model;
    QTemporaryDir folder;
    const QString statePath = folder.filePath(QStringLiteral("nv.json"));
    NvFile file;
    for (const auto& [address, data] : Catalogue::BuiltIn().factory()) {
        const bool lacking = state.range(0) > 0 && qsizetype(file.entries.size()) % state.range(0) == 0;
        file.entries.push_back({address, lacking ? NvStatus::NotValid : NvStatus::Done, data});
    }
    WriteNvFile(statePath, file);
    QProcess emulator;
    emulator.start(QStringLiteral(TESSALY_EMU), {QStringLiteral("--state"), statePath});
    emulator.waitForReadyRead(5000);
    tessaly::link::SerialLink line(QString::fromLocal8Bit(emulator.readLine()).trimmed());
    tessaly::link::LiveNvMemory memory(line, {});
    const auto& addresses = Catalogue::BuiltIn().addresses();
    for (auto _ : state) {
        for (const NvAddress& address : addresses) {
            NvData data{};
            memory.read(address, data);
        }
    }
    state.SetItemsProcessed(state.iterations() * qsizetype(addresses.size()));
    emulator.kill();
    emulator.waitForFinished();
}
BENCHMARK(LinkReadCatalogueThroughEmulator)->Arg(0)->Arg(20)->Unit(benchmark::kMillisecond);

} // namespace
