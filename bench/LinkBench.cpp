// The serial link's framing: encoding and decoding NV item packets (133 bytes,
// as a read or write of one item carries), in megabytes of payload a second.
// There is no Qt counterpart; 115200 baud moves about 0.0115 MB a second.
#include "link/FrameCodec.h"

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
