// Decodes the input with one of rar's codecs, as one entry or as two solid ones. First byte: which codec, whether
// solid; the next two: the declared size in units of 64 bytes.
#include "engine/codecs/rar_codec.h"

#include <cstdlib>

namespace {

using namespace vantoro;

class CountingSink final : public ByteSink {
public:
    Result<void> write(ConstBytes block) override
    {
        count += block.size();
        return {};
    }
    Result<void> finish() override { return {}; }
    std::uint64_t count = 0;
};

std::unique_ptr<RarCodec> codecOf(unsigned number)
{
    switch (number % 5) {
    case 0:
        return makeRar15Codec();
    case 1:
        return makeRar20Codec();
    case 2:
        return makeRar29Codec();
    case 3:
        return makeRar50Codec(false);
    default:
        return makeRar50Codec(true);
    }
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 3)
        return 0;
    const auto codec = codecOf(data[0] & 0x7FU);
    const auto isSolid = (data[0] & 0x80) != 0;
    const auto declared = (std::uint64_t{data[1]} << 8 | data[2]) * 64;
    const auto* const bytes = reinterpret_cast<const std::byte*>(data) + 3;
    const auto packed = memorySource(std::vector<std::byte>(bytes, bytes + size - 3));
    const auto half = isSolid ? packed->size() / 2 : packed->size();
    for (int part = 0; part < (isSolid ? 2 : 1); ++part) {
        const auto stream = windowStream(packed, part == 0 ? 0 : half, part == 0 ? half : packed->size() - half);
        CountingSink sink;
        RarCodecEntry entry;
        entry.size = declared;
        entry.window = 256 << 10;
        entry.isSolid = part > 0;
        entry.leadsOn = isSolid && part == 0;
        (void)codec->decode(*stream, entry, sink);
        if (sink.count > declared)
            std::abort();
    }
    return 0;
}
