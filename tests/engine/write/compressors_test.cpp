#include "engine/codecs/bzip2.h"
#include "engine/codecs/gzip.h"
#include "engine/codecs/lz4.h"
#include "engine/codecs/xz.h"
#include "engine/codecs/zstd.h"
#include "engine/io/source.h"
#include "engine/write/compressors.h"
#include "tests/support/packers.h"
#include "tests/support/streams.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace vantoro;
using vantoro::testing::drain;
using vantoro::testing::textStream;

namespace {

class TextSink final : public ByteSink {
public:
    Result<void> write(ConstBytes block) override
    {
        text.append(reinterpret_cast<const char*>(block.data()), block.size());
        return {};
    }
    Result<void> finish() override { return {}; }
    std::string text;
};

std::string compressed(std::string_view method, std::string_view data, std::optional<unsigned> level, unsigned threads,
                       std::uint64_t expectedSize)
{
    TextSink out;
    const auto sink = makeCompressor(method, out, level, threads, expectedSize, {}).value();
    constexpr std::size_t kAtOnce = 10'007;
    for (auto rest = std::as_bytes(std::span(data)); !rest.empty();) {
        const auto part = rest.first(std::min(rest.size(), kAtOnce));
        EXPECT_TRUE(sink->write(part));
        rest = rest.subspan(part.size());
    }
    EXPECT_TRUE(sink->finish());
    return out.text;
}

TEST(Compressors, makeFilesThatGiveTheSameBytesBack)
{
    using Open = Result<StreamPtr> (*)(StreamPtr, const CodecParams&);
    const Open openXzStream
        = [](StreamPtr packed, const CodecParams& params) { return openXz(std::move(packed), params, {}); };
    const auto data = packers::sampleData(2'800'000);
    for (const auto& [method, open] : std::vector<std::pair<std::string_view, Open>>{
             {"gz", &openGzip}, {"bz2", &openBzip2}, {"xz", openXzStream}, {"zst", &openZstd}, {"lz4", &openLz4}}) {
        for (const unsigned threads : {1U, 2U, 5U}) {
            for (const auto size : {std::size_t{0}, std::size_t{1}, data.size()}) {
                const auto text = std::string_view(data).substr(0, size);
                const auto stream = open(textStream(compressed(method, text, 1, threads, size)), {});
                const auto result = drain(**stream);
                EXPECT_TRUE(result.outcome) << method << ' ' << threads << ' ' << size;
                EXPECT_TRUE(result.data == text) << method << ' ' << threads << ' ' << size;
            }
        }
    }
}

TEST(Compressors, leaveSmallBlocksOfXzForTheEnd)
{
    constexpr std::uint64_t kExpected = 5 << 20; // at level 0 a block is of 1 MiB
    for (const auto size : {kExpected, kExpected - 300'000, kExpected + 900'000}) { // it was only expected
        const auto data = packers::sampleData(size);
        const auto packed = compressed("xz", data, 0, 2, kExpected);
        const auto result = drain(**openXz(textStream(packed)));
        EXPECT_TRUE(result.outcome && result.data == data) << size;
        std::vector<std::uint64_t> sizes;
        for (const auto& block : readXzBlocks(*memorySource(packed), {}).all)
            sizes.push_back(block.size);
        ASSERT_GE(sizes.size(), 7U);
        // Three rounds of two: two whole ones, then the third cut into large and small blocks.
        for (std::size_t i = 1; i < 4; ++i)
            EXPECT_EQ(sizes[i], sizes[0]);
        EXPECT_EQ(sizes[4], sizes[0] - sizes[0] / 4);
        EXPECT_EQ(sizes[5], sizes[4]);
        EXPECT_LE(sizes[6], sizes[0] / 4);
    }
}

}
