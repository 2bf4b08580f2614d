#include "engine/formats/sevenzip/blocks.h"

#include "engine/codecs/lzma.h"
#include "engine/codecs/lzma2_decoder.h"
#include "engine/io/counted_stream.h"

#include <algorithm>
#include <bit>

namespace vantoro::seven {

namespace {

constexpr std::uint64_t kCopy = 0x00;
constexpr std::uint64_t kLzma2 = 0x21;
constexpr std::uint64_t kLzma = 0x030101;
constexpr std::uint64_t kDelta = 0x03;
constexpr std::size_t kMostCoders = 4;

struct Method {
    std::uint64_t id;
    const char* name;
    LzmaFilter filter;
};
constexpr Method kMethods[] = {
    {kLzma, "LZMA", LzmaFilter::Lzma1},         {kLzma2, "LZMA2", LzmaFilter::Lzma2},
    {kDelta, "Delta", LzmaFilter::Delta},       {0x04, "BCJ", LzmaFilter::X86},
    {0x03030103, "BCJ", LzmaFilter::X86},       {0x05, "PPC", LzmaFilter::PowerPc},
    {0x03030205, "PPC", LzmaFilter::PowerPc},   {0x06, "IA64", LzmaFilter::Ia64},
    {0x03030401, "IA64", LzmaFilter::Ia64},     {0x07, "ARM", LzmaFilter::Arm},
    {0x03030501, "ARM", LzmaFilter::Arm},       {0x08, "ARMT", LzmaFilter::ArmThumb},
    {0x03030701, "ARMT", LzmaFilter::ArmThumb}, {0x09, "SPARC", LzmaFilter::Sparc},
    {0x03030805, "SPARC", LzmaFilter::Sparc},   {0x0A, "ARM64", LzmaFilter::Arm64},
};

const Method* findMethod(std::uint64_t id)
{
    const auto* const found
        = std::find_if(std::begin(kMethods), std::end(kMethods), [id](const auto& method) { return method.id == id; });
    return found == std::end(kMethods) ? nullptr : found;
}

bool isLzma(std::uint64_t method) { return method == kLzma || method == kLzma2; }

std::optional<std::uint64_t> dictionaryOf(const Coder& coder)
{
    ByteReader in(coder.properties);
    const auto first = in.u8();
    if (coder.method == kLzma2)
        return in.ok() && in.remaining() == 0 ? lzma2Dictionary(first) : std::nullopt;
    const std::uint64_t size = in.le32();
    return in.ok() && in.remaining() == 0 ? std::optional(size) : std::nullopt;
}

std::string sizeText(std::uint64_t size)
{
    if (std::has_single_bit(size))
        return std::to_string(std::bit_width(size) - 1);
    if (size % (1 << 20) == 0)
        return std::to_string(size >> 20) + "m";
    return size % (1 << 10) == 0 ? std::to_string(size >> 10) + "k" : std::to_string(size) + "b";
}

std::string textOf(const Coder& coder)
{
    if (coder.method == kCopy)
        return "Copy";
    std::string text = findMethod(coder.method)->name;
    if (coder.method == kDelta)
        return text + ":" + std::to_string(std::to_integer<unsigned>(coder.properties[0]) + 1);
    if (isLzma(coder.method))
        text += ":" + sizeText(dictionaryOf(coder).value_or(0));
    if (coder.method == kLzma) {
        const auto model = std::to_integer<unsigned>(coder.properties[0]);
        const unsigned lc = model % 9, lp = model / 9 % 5, pb = model / 45;
        text += lc != 3 ? ":lc" + std::to_string(lc) : "";
        text += lp != 0 ? ":lp" + std::to_string(lp) : "";
        text += pb != 2 ? ":pb" + std::to_string(pb) : "";
    }
    return text;
}

}

bool isReadable(const Block& block)
{
    const auto& coders = block.coders;
    if (coders.size() == 1 && coders[0].method == kCopy)
        return block.packedSize == block.size;
    if (coders.empty() || coders.size() > kMostCoders || !isLzma(coders.back().method) || !dictionaryOf(coders.back()))
        return false;
    return std::all_of(coders.begin(), coders.end() - 1, [](const Coder& coder) {
        const bool hasProperty = coder.properties.size() == (coder.method == kDelta ? 1U : 0U);
        return hasProperty && !isLzma(coder.method) && findMethod(coder.method);
    });
}

std::uint64_t dictionaryOf(const Block& block) { return dictionaryOf(block.coders.back()).value_or(0); }

std::string methodOf(const Block& block)
{
    std::string text;
    for (const auto& coder : block.coders)
        text += (text.empty() ? "" : " ") + textOf(coder);
    return text;
}

Result<StreamPtr> openBlock(const SourcePtr& source, const Block& block, std::atomic<std::uint64_t>* packedBytesRead,
                            const CodecParams& params)
{
    auto packed = windowStream(source, block.packedPosition, block.packedSize);
    if (packedBytesRead)
        packed = countedStream(std::move(packed), *packedBytesRead);
    if (block.coders[0].method == kCopy)
        return packed;
    std::vector<LzmaFilterStep> steps;
    for (const auto& coder : block.coders)
        steps.push_back({findMethod(coder.method)->filter, coder.properties});
    return openLzmaChain(std::move(packed), steps, block.innerSize, params);
}

}
