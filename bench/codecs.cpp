// MB/s of plain data of each codec, over the same generated data. A change to a hot loop states the figures before
// and after.
#include "engine/codecs/brotli.h"
#include "engine/codecs/bzip2.h"
#include "engine/codecs/bzip2_encoder.h"
#include "engine/codecs/compress.h"
#include "engine/codecs/deflate.h"
#include "engine/codecs/gzip.h"
#include "engine/codecs/lz4.h"
#include "engine/codecs/lzip.h"
#include "engine/codecs/lzma.h"
#include "engine/codecs/rar_codec.h"
#include "engine/codecs/xz.h"
#include "engine/codecs/zstd.h"
#include "engine/crypto/blake2sp.h"
#include "tests/support/packers.h"
#include "tests/support/rar_packer.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

using namespace vantoro;

namespace {

/// Generated, or the file that VANTORO_BENCH_DATA names.
const std::string& data()
{
    static const std::string bytes = [] {
        if (const char* path = std::getenv("VANTORO_BENCH_DATA")) {
            std::ifstream file(path, std::ios::binary);
            return std::string(std::istreambuf_iterator<char>(file), {});
        }
        return packers::sampleData(std::size_t{24} << 20);
    }();
    return bytes;
}

using Open = Result<StreamPtr> (*)(StreamPtr, const CodecParams&);

void decodeAll(benchmark::State& state, const std::string& packed, Open open)
{
    const auto source = memorySource(packed);
    std::vector<std::byte> buffer(512 << 10);
    std::size_t total = 0;
    for (auto _ : state) {
        auto stream = open(windowStream(source), {.threads = static_cast<unsigned>(state.range(0))});
        for (std::size_t got = 1; stream && got > 0; total += got) {
            const auto result = (*stream)->read(buffer);
            if (!result)
                return state.SkipWithError(result.error().what);
            got = *result;
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(total));
}

void gzip(benchmark::State& state) { decodeAll(state, packers::gzip(data()), &openGzip); }
void deflate(benchmark::State& state) { decodeAll(state, packers::deflate(data()), &openDeflate); }
void bzip2(benchmark::State& state) { decodeAll(state, packers::bzip2(data()), &openBzip2); }
void bzip2Encode(benchmark::State& state)
{
    Bzip2BlockInput block(9);
    Bzip2Encoder encoder;
    for (auto _ : state) {
        for (auto rest = asBytes(data()); !rest.empty();) {
            block.clear();
            rest = rest.subspan(block.add(rest));
            benchmark::DoNotOptimize(encoder.encode(block));
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(data().size()));
}
void lzmaAlone(benchmark::State& state) { decodeAll(state, packers::lzmaAlone(data()), &openLzmaAlone); }
void lzip(benchmark::State& state) { decodeAll(state, packers::lzip(data()), &openLzip); }
void zstd(benchmark::State& state) { decodeAll(state, packers::zstd(data()), &openZstd); }
void lz4(benchmark::State& state) { decodeAll(state, packers::lz4(data()), &openLz4); }
void brotli(benchmark::State& state) { decodeAll(state, packers::brotli(data()), &openBrotli); }
void compress(benchmark::State& state) { decodeAll(state, packers::compress(data()), &openCompress); }
void xz(benchmark::State& state)
{
    const auto packed = packers::xz(data(), std::size_t{2} << 20);
    static XzBlocks blocks;
    blocks = readXzBlocks(*memorySource(packed), {});
    decodeAll(state, packed,
              [](StreamPtr in, const CodecParams& params) { return openXz(std::move(in), params, blocks); });
}

void decodeRar(benchmark::State& state, const std::string& packed, RarCodec& codec)
{
    struct Nothing final : ByteSink {
        Result<void> write(ConstBytes) override { return {}; }
        Result<void> finish() override { return {}; }
    } sink;
    const auto source = memorySource(packed);
    for (auto _ : state) {
        const auto stream = windowStream(source);
        const auto result = codec.decode(*stream, {.size = data().size(), .window = 4 << 20}, sink);
        if (!result)
            return state.SkipWithError(result.error().what);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(data().size()));
}

void rar5(benchmark::State& state) { decodeRar(state, test::packRar50(data()), *makeRar50Codec(false)); }
void rar3(benchmark::State& state) { decodeRar(state, test::packRar29(data()), *makeRar29Codec()); }
void blake2sp(benchmark::State& state)
{
    for (auto _ : state) {
        Blake2sp hash;
        hash.update(asBytes(data()));
        benchmark::DoNotOptimize(hash.finish());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(data().size()));
}

BENCHMARK(rar5)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(rar3)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(blake2sp)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(gzip)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(deflate)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(bzip2)->Arg(1)->Arg(2)->UseRealTime()->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
BENCHMARK(bzip2Encode)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(xz)->Arg(1)->Arg(2)->UseRealTime()->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
BENCHMARK(lzmaAlone)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(lzip)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(zstd)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(lz4)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(brotli)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(compress)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);

}
