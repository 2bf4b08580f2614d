// Speed of what zip needs of its own: MB/s of decoded data of its codecs and ciphers, and keys a second. The archives
// are made with 7z; without it the codecs are left out.
#include "engine/codecs/deflate64.h"
#include "engine/codecs/ppmd.h"
#include "engine/crypto/pbkdf2.h"
#include "engine/crypto/zip_cipher.h"
#include "tests/support/mixed_data.h"
#include "tests/support/tools.h"

#include <benchmark/benchmark.h>

using namespace vantoro;

namespace {

constexpr std::size_t kSize = 16 << 20;

/// The data of the only entry of a zip that 7z packs by `method`.
std::string packedBy(const std::string& method)
{
    const test::TempFolder folder;
    folder.write("data", test::mixedData(kSize));
    if (!folder.run("7z a -tzip -mm=" + method + " a.zip data"))
        return {};
    const auto zip = folder.read("a.zip");
    ByteReader in(asBytes(zip));
    in.skip(26);
    const auto nameLength = in.le16();
    const auto extraLength = in.le16();
    return zip.substr(30U + nameLength + extraLength);
}

template <class Open> void decodeAll(benchmark::State& state, const std::string& packed, Open open)
{
    if (packed.empty())
        return state.SkipWithError("needs the tool 7z");
    const auto source = memorySource(packed);
    std::vector<std::byte> buffer(512 << 10);
    std::size_t total = 0;
    for (auto _ : state) {
        const StreamPtr stream = open(windowStream(source));
        for (std::size_t got = 1; got > 0; total += got) {
            const auto result = stream->read(buffer);
            if (!result)
                return state.SkipWithError(result.error().what);
            got = *result;
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(total));
}

void deflate64(benchmark::State& state)
{
    decodeAll(state, packedBy("Deflate64"), [](StreamPtr packed) { return openDeflate64(std::move(packed)); });
}

void ppmd(benchmark::State& state)
{
    decodeAll(state, packedBy("PPMd"),
              [](StreamPtr packed) { return openZipPpmd(std::move(packed), kSize, kSize * 16); });
}

void classicCipher(benchmark::State& state)
{
    std::vector<std::byte> bytes(1 << 20);
    ZipCipher cipher("password");
    for (auto _ : state)
        cipher.decrypt(bytes);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(bytes.size()));
}

/// The keys of one entry with AES-256.
void aesKeys(benchmark::State& state)
{
    const auto engine = static_cast<Sha1Engine>(state.range(0));
    if (engine != Sha1Engine::Portable && bestSha1Engine() != engine)
        return state.SkipWithError("the processor has no SHA instructions");
    std::array<std::byte, 66> keys;
    for (auto _ : state)
        pbkdf2Sha1(asBytes("password"), asBytes("0123456789abcdef"), 1000, keys, 0, engine);
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(deflate64)->Unit(benchmark::kMillisecond);
BENCHMARK(ppmd)->Unit(benchmark::kMillisecond);
BENCHMARK(classicCipher)->Unit(benchmark::kMillisecond);
BENCHMARK(aesKeys)
    ->Arg(static_cast<int>(Sha1Engine::Portable))
    ->Arg(static_cast<int>(Sha1Engine::Instructions))
    ->Unit(benchmark::kMicrosecond);

}
