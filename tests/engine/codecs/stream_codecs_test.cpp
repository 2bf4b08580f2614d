// Every codec of a single compressed stream, held against the same list of rough treatments.
#include "engine/codecs/brotli.h"
#include "engine/codecs/bzip2.h"
#include "engine/codecs/compress.h"
#include "engine/codecs/deflate.h"
#include "engine/codecs/gzip.h"
#include "engine/codecs/lz4.h"
#include "engine/codecs/lzip.h"
#include "engine/codecs/lzma.h"
#include "engine/codecs/lzo.h"
#include "engine/codecs/xz.h"
#include "engine/codecs/zstd.h"
#include "tests/support/packers.h"
#include "tests/support/streams.h"

#include <gtest/gtest.h>

using namespace vantoro;
using vantoro::testing::drain;
using vantoro::testing::textStream;

namespace {

Result<StreamPtr> openXzWithIndex(StreamPtr packed, const CodecParams& params)
{
    const auto all = drain(*packed);
    const auto source = memorySource(all.data);
    return openXz(windowStream(source), params, readXzBlocks(*source, params.limits));
}

struct Codec {
    const char* name;
    std::string (*pack)(std::string_view);
    Result<StreamPtr> (*open)(StreamPtr, const CodecParams&);
    bool hasChecksum = true;
    bool knowsItsEnd = true;
    bool joins = true; // streams one behind the other are one
    bool noticesTrailingData = true;
};

const Codec kCodecs[] = {
    {"gzip", [](std::string_view data) { return packers::gzip(data, {.name = "a.txt", .headerCrc = true}); },
     &openGzip},
    {"deflate", [](std::string_view data) { return packers::deflate(data); }, &openDeflate, false, true, false, false},
    {"zlib", [](std::string_view data) { return packers::zlib(data); }, &openZlib, true, true, false, false},
    {"bzip2", [](std::string_view data) { return packers::bzip2(data, 1); }, &openBzip2},
    {"xz", [](std::string_view data) { return packers::xz(data); }, &openXzWithIndex},
    {"xzBlocks", [](std::string_view data) { return packers::xz(data, 40'000); }, &openXzWithIndex},
    {"lzma", [](std::string_view data) { return packers::lzmaAlone(data); }, &openLzmaAlone, false, true, false, false},
    {"lzip", [](std::string_view data) { return packers::lzip(data); }, &openLzip},
    {"zstd", [](std::string_view data) { return packers::zstd(data); }, &openZstd},
    {"lz4", [](std::string_view data) { return packers::lz4(data); }, &openLz4},
    {"lz4Legacy", [](std::string_view data) { return packers::lz4Legacy(data); }, &openLz4, false, false, true, false},
    {"lzop", [](std::string_view data) { return packers::lzop(data); }, &openLzop},
    {"brotli", [](std::string_view data) { return packers::brotli(data); }, &openBrotli, false, true, false},
    {"compress", [](std::string_view data) { return packers::compress(data); }, &openCompress, false, false, false,
     false},
    {"compressOld", [](std::string_view data) { return packers::compress(data, 12, false); }, &openCompress, false,
     false, false, false},
    {"compress9", [](std::string_view data) { return packers::compress(data, 9, true); }, &openCompress, false, false,
     false, false},
};

class StreamCodecs : public ::testing::TestWithParam<Codec> {
protected:
    static vantoro::testing::Drained unpack(const std::string& packed, unsigned threads = 1,
                                            std::size_t inPiece = std::size_t{1} << 30, std::size_t outPiece = 64 << 10)
    {
        auto stream = GetParam().open(textStream(packed, inPiece), {.threads = threads});
        if (!stream)
            return {.data = {}, .outcome = stream.error()};
        return drain(**stream, outPiece, 64 << 20);
    }
};

INSTANTIATE_TEST_SUITE_P(All, StreamCodecs, ::testing::ValuesIn(kCodecs),
                         [](const auto& codec) { return std::string(codec.param.name); });

TEST_P(StreamCodecs, givesBackWhatWentIn)
{
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{70'000}, std::size_t{3'000'000}}) {
        const auto data = packers::sampleData(size);
        const auto packed = GetParam().pack(data);
        for (const unsigned threads : {1U, 2U}) {
            const auto result = unpack(packed, threads);
            EXPECT_TRUE(result.outcome) << (result.outcome ? "" : result.outcome.error().what);
            EXPECT_TRUE(result.data == data) << size << " bytes, " << threads << " threads, got " << result.data.size();
            if (GetParam().hasChecksum) {
                EXPECT_EQ(result.verified, size);
            }
        }
    }
}

TEST_P(StreamCodecs, doesNotCareHowTheBytesComeAndGo)
{
    const auto data = packers::sampleData(20'000);
    const auto packed = GetParam().pack(data);
    EXPECT_TRUE(unpack(packed, 1, 1).data == data);
    EXPECT_TRUE(unpack(packed, 2, 7, 3).data == data);
    EXPECT_TRUE(unpack(packed, 1, 1000, 1).data == data);
}

TEST_P(StreamCodecs, saysThatACutStreamIsCutAndSavesWhatCameBefore)
{
    const auto data = packers::sampleData(3000);
    const auto packed = GetParam().pack(data);
    for (std::size_t length = 0; length < packed.size(); ++length) {
        const auto result = unpack(packed.substr(0, length));
        EXPECT_TRUE(data.starts_with(result.data)) << "cut at " << length;
        if (GetParam().knowsItsEnd) {
            ASSERT_FALSE(result.outcome) << "cut at " << length << " of " << packed.size();
            EXPECT_EQ(result.outcome.error().code, ErrorCode::Truncated) << result.outcome.error().what << length;
        }
    }
    EXPECT_FALSE(unpack("").outcome);
}

TEST_P(StreamCodecs, noticesEveryBrokenByteThatAChecksumCovers)
{
    const auto data = packers::sampleData(2500);
    const auto packed = GetParam().pack(data);
    for (std::size_t at = 0; at < packed.size(); ++at) {
        auto broken = packed;
        broken[at] = static_cast<char>(broken[at] ^ (1 << (at % 8)));
        const auto result = unpack(broken);
        if (GetParam().hasChecksum && result.outcome) {
            EXPECT_TRUE(result.data == data) << "byte " << at << " of " << packed.size();
        }
        if (!result.outcome && GetParam().hasChecksum) {
            EXPECT_TRUE(result.verified == 0
                        || result.data.substr(0, result.verified) == data.substr(0, result.verified));
        }
    }
}

TEST_P(StreamCodecs, readsStreamsThatWereJoined)
{
    if (!GetParam().joins)
        GTEST_SKIP() << "streams of this kind are not joined";
    const auto one = packers::sampleData(30'000);
    const auto two = packers::sampleData(9'000);
    const auto result = unpack(GetParam().pack(one) + GetParam().pack(two));
    EXPECT_TRUE(result.outcome);
    EXPECT_TRUE(result.data == one + two);
}

TEST_P(StreamCodecs, tellsForeignBytesBehindTheEndFromDamage)
{
    if (!GetParam().noticesTrailingData)
        GTEST_SKIP() << "the end of this kind cannot be told, or is not looked behind";
    const auto data = packers::sampleData(5'000);
    const auto result = unpack(GetParam().pack(data) + "-- signed by nobody --");
    EXPECT_TRUE(result.data == data);
    ASSERT_FALSE(result.outcome);
    EXPECT_EQ(result.outcome.error().code, ErrorCode::TrailingData) << result.outcome.error().what;
}

TEST_P(StreamCodecs, stopsWhenAskedTo)
{
    CodecParams params;
    auto stream = GetParam().open(textStream(GetParam().pack(packers::sampleData(100'000))), params);
    ASSERT_TRUE(stream);
    std::string buffer(100, '\0');
    ASSERT_TRUE((*stream)->read(std::as_writable_bytes(std::span(buffer))));
    params.cancel.cancel();
    const auto result = drain(**stream);
    ASSERT_FALSE(result.outcome);
    EXPECT_EQ(result.outcome.error().code, ErrorCode::Cancelled);
    EXPECT_TRUE(result.data.empty());
}

ErrorCode outcomeUnder(const Limits& limits, Result<StreamPtr> (*open)(StreamPtr, const CodecParams&),
                       const std::string& packed)
{
    auto stream = open(textStream(packed), {.limits = limits});
    if (!stream)
        return stream.error().code;
    const auto result = drain(**stream);
    return result.outcome ? ErrorCode::Internal : result.outcome.error().code;
}

TEST(StreamCodecLimits, refuseADictionaryLargerThanAllowed)
{
    const auto data = packers::sampleData(100'000);
    const Limits limits{.dictionary = 1 << 20};
    // Presets 9: 64 MiB; the zstd frame's window is as large as its content.
    EXPECT_EQ(outcomeUnder(limits, &openXzWithIndex, packers::xz(data, 0, 9)), ErrorCode::LimitExceeded);
    EXPECT_EQ(outcomeUnder(limits, &openLzmaAlone, packers::lzmaAlone(data, 9)), ErrorCode::LimitExceeded);
    auto lzip = packers::lzip(data);
    lzip[5] = 29; // a dictionary of 2^29
    EXPECT_EQ(outcomeUnder(limits, &openLzip, lzip), ErrorCode::LimitExceeded);
    EXPECT_EQ(outcomeUnder({.dictionary = 1 << 16}, &openZstd, packers::zstd(packers::sampleData(3'000'000), 9)),
              ErrorCode::LimitExceeded);
}

TEST(Gzip, takesZerosBehindTheEndForPadding)
{
    const auto data = packers::sampleData(1000);
    auto stream = openGzip(textStream(packers::gzip(data) + std::string(5000, '\0')));
    ASSERT_TRUE(stream);
    const auto result = drain(**stream);
    EXPECT_TRUE(result.outcome);
    EXPECT_EQ(result.data, data);
}

TEST(Gzip, readsNameAndTimeOfTheHeader)
{
    // Signature, deflate, flags extra + name + comment, time 0x5E0BE100, effort, system, then "AB" as 2 bytes of extra.
    const std::string header("\x1F\x8B\x08\x1C\x00\xE1\x0B\x5E\x00\x03\x02\x00"
                             "ABname.txt\0a comment\0",
                             12 + 2 + 9 + 10);
    BufferedInput in(textStream(header + "rest"));
    const auto fields = readGzipHeader(in);
    ASSERT_TRUE(fields);
    EXPECT_EQ(fields->name, "name.txt");
    EXPECT_EQ(fields->modified, 0x5E0BE100U);
    EXPECT_EQ(asText(*in.peek()), "rest");
}

TEST(Xz, vouchesForTheBlocksBeforeADamagedOne)
{
    const auto data = packers::sampleData(200'000);
    auto packed = packers::xz(data, 50'000);
    const auto source = memorySource(packed);
    const auto blocks = readXzBlocks(*source, {});
    ASSERT_EQ(blocks.all.size(), 4U);
    ASSERT_EQ(blocks.size(), 200'000U);
    packed[packed.size() * 5 / 8] ^= 1; // in the third block
    for (const unsigned threads : {1U, 2U}) {
        auto stream = openXz(textStream(packed), {.threads = threads}, blocks);
        const auto result = drain(**stream);
        EXPECT_FALSE(result.outcome);
        EXPECT_EQ(result.verified, 100'000U);
        EXPECT_GE(result.data.size(), 100'000U);
        EXPECT_TRUE(data.starts_with(result.data.substr(0, 100'000)));
    }
}

TEST(LzmaChain, undoesConvertersAndDictionariesAsContainersStoreThem)
{
    const auto data = packers::sampleData(50'000);
    const auto alone = packers::lzmaAlone(data);
    const auto properties = asBytes(alone).first(5);
    const LzmaFilterStep steps[] = {{LzmaFilter::Lzma1, properties}};
    for (const auto size : {std::optional<std::uint64_t>(), std::optional<std::uint64_t>(data.size())}) {
        auto stream = openLzmaChain(textStream(alone.substr(13)), steps, size);
        ASSERT_TRUE(stream);
        const auto result = drain(**stream);
        EXPECT_TRUE(result.outcome);
        EXPECT_TRUE(result.data == data);
    }
    // A delta converter with distance 1 (stored as 0): decoding adds each byte to the one before.
    const std::byte distance{0};
    const LzmaFilterStep withDelta[] = {{LzmaFilter::Delta, ConstBytes(&distance, 1)}, {LzmaFilter::Lzma1, properties}};
    auto stream = openLzmaChain(textStream(alone.substr(13)), withDelta, data.size());
    ASSERT_TRUE(stream);
    auto expected = data;
    for (std::size_t i = 1; i < expected.size(); ++i)
        expected[i] = static_cast<char>(expected[i] + expected[i - 1]);
    EXPECT_TRUE(drain(**stream).data == expected);
}

TEST(Lz4, passesOverSkippableFrames)
{
    const auto data = packers::sampleData(4'000);
    const std::string skippable("\x53\x2A\x4D\x18\x05\0\0\0hello", 13);
    auto stream = openLz4(
        textStream(skippable + packers::lz4(data) + skippable + packers::lz4Legacy(data) + packers::lz4(data)));
    ASSERT_TRUE(stream);
    const auto result = drain(**stream);
    EXPECT_TRUE(result.outcome);
    EXPECT_TRUE(result.data == data + data + data);
}

}
