// Packs the input with our bzip2 encoder; our decoder, which shares no code with it, must give it back. First byte: the
// level; the next: into what pieces the input is cut, and how often it is repeated.
#include "engine/codecs/bzip2.h"
#include "engine/codecs/bzip2_encoder.h"

#include <cstdlib>

namespace {

using namespace vantoro;

constexpr std::size_t kMostPlain = 150'000; // a block and a half of the lowest level

std::vector<std::byte> packed(ConstBytes plain, unsigned level, std::size_t piece)
{
    Bzip2BlockInput block(level);
    Bzip2Encoder encoder;
    Bzip2File file(level);
    const auto pack = [&] {
        file.add(encoder.encode(block));
        block.clear();
    };
    while (!plain.empty()) {
        plain = plain.subspan(block.add(plain.first(std::min(piece, plain.size()))));
        if (block.isFull())
            pack();
    }
    if (!block.isEmpty())
        pack();
    file.end();
    return file.take();
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 3)
        return 0;
    const auto unit = std::as_bytes(std::span(data + 2, size - 2));
    std::vector<std::byte> plain;
    for (unsigned i = 0; i <= data[1] % 32U * (data[1] >= 224 ? 40U : 1U) && plain.size() < kMostPlain; ++i)
        plain.insert(plain.end(), unit.begin(), unit.end());
    const auto file = packed(plain, 1 + data[0] % 9U, 1 + data[1] / 32U * 1000U);
    const auto stream = openBzip2(windowStream(memorySource(file)));
    if (!stream)
        std::abort();
    std::vector<std::byte> back(plain.size() + 1);
    std::size_t total = 0;
    for (;;) {
        const auto got = (*stream)->read(std::span(back).subspan(total));
        if (!got)
            std::abort();
        if (*got == 0)
            break;
        total += *got;
    }
    if (total != plain.size() || !std::equal(plain.begin(), plain.end(), back.begin()))
        std::abort();
    return 0;
}
