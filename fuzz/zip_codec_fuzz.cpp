// Decodes the input with one of the codecs that zip alone has or with PPMd. First byte: which codec; the next: its
// parameters.
#include "engine/codecs/deflate64.h"
#include "engine/codecs/implode.h"
#include "engine/codecs/ppmd.h"
#include "engine/codecs/reduce.h"
#include "engine/codecs/shrink.h"
#include "engine/codecs/wavpack.h"

#include <cstdlib>

namespace {

using namespace vantoro;

constexpr std::uint64_t kDeclared = 1 << 20;

class ByteInput final : public PpmdInput {
public:
    explicit ByteInput(ConstBytes bytes) : m_bytes(bytes) {}
    std::uint8_t next() override
    {
        if (m_bytes.empty())
            return 0;
        const auto value = std::to_integer<std::uint8_t>(m_bytes.front());
        m_bytes = m_bytes.subspan(1);
        return value;
    }

private:
    ConstBytes m_bytes;
};

/// The model alone, started again in the middle as rar does. Small, so that it runs full.
void decodePpmd(ConstBytes packed, unsigned parameters)
{
    PpmdParams params;
    params.variant = (parameters & 1) != 0 ? PpmdParams::Variant::I : PpmdParams::Variant::H;
    params.coder = (parameters & 2) != 0 ? PpmdParams::Coder::SevenZip : PpmdParams::Coder::Carryless;
    params.restore = (parameters & 4) != 0 ? PpmdParams::Restore::CutOff : PpmdParams::Restore::Restart;
    params.order = 2 + (parameters >> 3);
    params.memory = 8 << 10;
    auto decoder = PpmdDecoder::make(params);
    if (!decoder)
        return;
    std::vector<std::byte> out(128 << 10);
    for (int round = 0; round < 2; ++round) {
        ByteInput input(packed.subspan(round == 0 ? 0 : packed.size() / 2));
        int stop = 0;
        if (!(*decoder)->startCoder(input) || (*decoder)->decode(out, stop) < out.size())
            (*decoder)->restart(params.order);
    }
}

StreamPtr open(unsigned codec, unsigned parameters, StreamPtr packed)
{
    switch (codec) {
    case 0:
        return openShrink(std::move(packed), kDeclared);
    case 1:
        return openReduce(std::move(packed), 1 + parameters % 4, kDeclared);
    case 2: {
        const bool hasLiteralTree = (parameters & 2) != 0;
        return openImplode(std::move(packed),
                           {.hasLargeWindow = (parameters & 1) != 0,
                            .hasLiteralTree = hasLiteralTree,
                            .leastMatch = hasLiteralTree ? 3U : 2U,
                            .size = kDeclared});
    }
    case 3:
        return openDeflate64(std::move(packed));
    case 6: {
        auto stream = openWavPack(std::move(packed), kDeclared);
        return stream ? std::move(*stream) : windowStream(memorySource(std::vector<std::byte>()));
    }
    default:
        return openZipPpmd(std::move(packed), kDeclared, 2 << 20);
    }
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2)
        return 0;
    const auto packed = std::as_bytes(std::span(data + 2, size - 2));
    const auto codec = data[0] % 7U;
    if (codec == 5) {
        decodePpmd(packed, data[1]);
        return 0;
    }
    const auto stream = open(codec, data[1], windowStream(memorySource(std::vector(packed.begin(), packed.end()))));
    std::vector<std::byte> block(1 + data[1] * 300U);
    std::uint64_t total = 0;
    while (total < 4 * kDeclared) {
        const auto got = stream->read(block);
        if (!got || *got == 0)
            break;
        total += *got;
    }
    if (codec != 3 && codec != 6 && total > kDeclared)
        std::abort();
    return 0;
}
