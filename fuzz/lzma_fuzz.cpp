// Decodes LZMA2 with our decoder and with liblzma, which must agree to the byte. First byte: whether the input is
// packed data or something to be packed first; the next: the parameters; two more: where packed data are damaged.
#include "engine/codecs/lzma2_decoder.h"

#include <lzma.h>

#include <cstdlib>
#include <cstring>

namespace {

using namespace vantoro;

constexpr std::uint32_t kDictionary = 4096;
constexpr std::size_t kMostOutput = 128 << 10;

struct Outcome {
    bool isWhole = false;
    std::vector<std::byte> data;
};

void require(bool holds)
{
    if (!holds)
        std::abort();
}

lzma_options_lzma optionsFor(unsigned parameters)
{
    lzma_options_lzma options;
    lzma_lzma_preset(&options, parameters % 7);
    options.dict_size = kDictionary;
    options.lc = parameters % 5;
    options.lp = parameters / 5 % (5 - options.lc);
    options.pb = parameters / 25 % 5;
    return options;
}

std::vector<std::byte> packed(ConstBytes plain, unsigned parameters)
{
    auto options = optionsFor(parameters);
    const lzma_filter filters[]{{LZMA_FILTER_LZMA2, &options}, {LZMA_VLI_UNKNOWN, nullptr}};
    std::vector<std::byte> out(plain.size() * 2 + 1024);
    std::size_t size = 0;
    require(lzma_raw_buffer_encode(filters, nullptr, reinterpret_cast<const std::uint8_t*>(plain.data()), plain.size(),
                                   reinterpret_cast<std::uint8_t*>(out.data()), &size, out.size())
            == LZMA_OK);
    out.resize(size);
    return out;
}

Outcome byLibrary(ConstBytes input)
{
    auto options = optionsFor(0);
    const lzma_filter filters[]{{LZMA_FILTER_LZMA2, &options}, {LZMA_VLI_UNKNOWN, nullptr}};
    lzma_stream stream = LZMA_STREAM_INIT;
    require(lzma_raw_decoder(&stream, filters) == LZMA_OK);
    Outcome outcome{false, std::vector<std::byte>(kMostOutput)};
    stream.next_in = reinterpret_cast<const std::uint8_t*>(input.data());
    stream.avail_in = input.size();
    stream.next_out = reinterpret_cast<std::uint8_t*>(outcome.data.data());
    stream.avail_out = outcome.data.size();
    outcome.isWhole = lzma_code(&stream, LZMA_FINISH) == LZMA_STREAM_END;
    outcome.data.resize(outcome.data.size() - stream.avail_out);
    lzma_end(&stream);
    return outcome;
}

Outcome byOurs(ConstBytes input, std::size_t step)
{
    std::vector<std::byte> withMargin(input.begin(), input.end());
    withMargin.resize(input.size() + LzmaDecoder::kMargin);
    PackedBlock block(ConstBytes(withMargin).first(input.size()));
    auto window = LzmaWindow::ring(kDictionary);
    require(window.has_value());
    Lzma2Decoder decoder(block, *window);
    Outcome outcome;
    while (outcome.data.size() < kMostOutput) {
        const auto went = decoder.step(std::min(step, kMostOutput - outcome.data.size()));
        const auto fresh = decoder.fresh();
        outcome.data.insert(outcome.data.end(), fresh.begin(), fresh.end());
        if (!went)
            return outcome;
        if (!*went) {
            outcome.isWhole = true;
            return outcome;
        }
    }
    return outcome;
}

void compare(ConstBytes input, std::size_t step)
{
    const auto theirs = byLibrary(input);
    const auto ours = byOurs(input, step);
    if (theirs.data.size() == kMostOutput || ours.data.size() == kMostOutput)
        return; // how it ends was not seen
    require(theirs.isWhole == ours.isWhole);
    // Behind a fault either may have come a little further.
    const auto common = std::min(theirs.data.size(), ours.data.size());
    require(common == 0 || std::memcmp(theirs.data.data(), ours.data.data(), common) == 0);
    require(!ours.isWhole || ours.data.size() == theirs.data.size());
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 4)
        return 0;
    const auto input = std::as_bytes(std::span(data + 4, size - 4));
    const std::size_t step = 1 + data[1] * 257U;
    if ((data[0] & 1) == 0) {
        compare(input, step);
        return 0;
    }
    auto stream = packed(input, data[1]);
    const auto whole = byOurs(stream, step);
    require(whole.isWhole == (input.size() < kMostOutput) || input.size() == kMostOutput);
    require(whole.data.size() == input.size() && std::equal(input.begin(), input.end(), whole.data.begin()));
    const auto where = (data[2] + 256U * data[3]) % stream.size();
    stream[where] ^= static_cast<std::byte>(1U << (data[0] >> 5));
    compare(stream, step);
    return 0;
}
