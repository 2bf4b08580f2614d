// Our decoder of LZMA2 and xz, held against the encoder of liblzma.
#include "engine/codecs/lzma.h"
#include "engine/codecs/lzma2_decoder.h"
#include "engine/codecs/xz.h"
#include "tests/support/packers.h"
#include "tests/support/streams.h"

#include <gtest/gtest.h>
#include <lzma.h>

#include <random>

using namespace vantoro;
using vantoro::testing::drain;
using vantoro::testing::textStream;

namespace {

/// What the encoder does with the data: text, runs, repetitions near and far, noise (which it stores).
std::string variedData(std::size_t size)
{
    std::minstd_rand random(7);
    auto data = packers::sampleData(size / 3);
    while (data.size() < size) {
        const auto length = 1 + random() % 4000;
        switch (random() % 4) {
        case 0:
            data.append(length, static_cast<char>(random()));
            break;
        case 1:
            for (unsigned i = 0; i < length; ++i)
                data.push_back(static_cast<char>(random() >> 8));
            break;
        default:
            data += std::string(data, random() % data.size(), length);
        }
    }
    data.resize(size);
    return data;
}

std::string run(lzma_stream& stream, std::string_view data)
{
    std::string packed(data.size() + data.size() / 8 + 100'000, '\0');
    stream.next_in = reinterpret_cast<const std::uint8_t*>(data.data());
    stream.avail_in = data.size();
    stream.next_out = reinterpret_cast<std::uint8_t*>(packed.data());
    stream.avail_out = packed.size();
    lzma_ret code = LZMA_OK;
    while (code == LZMA_OK)
        code = lzma_code(&stream, LZMA_FINISH);
    EXPECT_EQ(code, LZMA_STREAM_END);
    packed.resize(stream.total_out);
    lzma_end(&stream);
    return packed;
}

std::string packBlocks(std::string_view data, const lzma_filter* filters, lzma_check check, std::uint64_t blockSize)
{
    lzma_stream stream = LZMA_STREAM_INIT;
    lzma_mt options{};
    options.threads = 1;
    options.block_size = blockSize;
    options.filters = filters;
    options.check = check;
    EXPECT_EQ(lzma_stream_encoder_mt(&stream, &options), LZMA_OK);
    return run(stream, data);
}

struct Choice {
    std::uint32_t lc = 3, lp = 0, pb = 2;
    lzma_mode mode = LZMA_MODE_NORMAL;
};

lzma_options_lzma optionsOf(const Choice& choice)
{
    lzma_options_lzma options{};
    lzma_lzma_preset(&options, 1);
    options.dict_size = 64 << 10; // far smaller than the data: the ring goes round
    options.lc = choice.lc;
    options.lp = choice.lp;
    options.pb = choice.pb;
    options.mode = choice.mode;
    return options;
}

std::string packLzma2(std::string_view data, const Choice& choice, std::uint64_t blockSize,
                      lzma_check check = LZMA_CHECK_CRC64)
{
    auto options = optionsOf(choice);
    const lzma_filter filters[] = {{LZMA_FILTER_LZMA2, &options}, {LZMA_VLI_UNKNOWN, nullptr}};
    return packBlocks(data, filters, check, blockSize);
}

vantoro::testing::Drained unpack(const std::string& packed, unsigned threads, std::size_t outPiece = 64 << 10)
{
    const auto source = memorySource(packed);
    auto stream = openXz(textStream(packed, 5000), {.threads = threads}, readXzBlocks(*source, {}));
    return drain(**stream, outPiece, 64 << 20);
}

TEST(Lzma2, decodesWhatAnyModelEncoded)
{
    const auto data = variedData(700'000);
    for (const auto& choice : {Choice{}, Choice{0, 0, 0}, Choice{4, 0, 4}, Choice{0, 4, 1}, Choice{1, 3, 3},
                               Choice{3, 1, 2, LZMA_MODE_FAST}}) {
        for (const auto check : {LZMA_CHECK_NONE, LZMA_CHECK_CRC32, LZMA_CHECK_CRC64, LZMA_CHECK_SHA256}) {
            const auto packed = packLzma2(data, choice, 200'000, check);
            for (const unsigned threads : {1U, 3U}) {
                const auto result = unpack(packed, threads, 10'007);
                EXPECT_TRUE(result.outcome) << (result.outcome ? "" : result.outcome.error().what);
                EXPECT_TRUE(result.data == data) << choice.lc << choice.lp << choice.pb << " check " << check;
                EXPECT_EQ(result.verified, data.size());
            }
        }
    }
}

TEST(Lzma1, decodesWhatAnyModelEncoded)
{
    const auto data = variedData(300'000);
    for (const auto& choice : {Choice{}, Choice{0, 0, 0}, Choice{4, 0, 4}, Choice{0, 4, 1}, Choice{1, 3, 3}}) {
        lzma_options_lzma options = optionsOf(choice);
        lzma_stream encoder = LZMA_STREAM_INIT;
        ASSERT_EQ(lzma_alone_encoder(&encoder, &options), LZMA_OK);
        auto packed = run(encoder, data);
        for (const bool isSizeKnown : {false, true}) { // the end mark is there in any case
            for (unsigned i = 0; isSizeKnown && i < 8; ++i)
                packed[5 + i] = static_cast<char>(data.size() >> 8 * i);
            auto stream = openLzmaAlone(textStream(packed, 777), {});
            ASSERT_TRUE(stream);
            const auto result = drain(**stream, 10'007);
            EXPECT_TRUE(result.outcome) << (result.outcome ? "" : result.outcome.error().what);
            EXPECT_TRUE(result.data == data) << choice.lc << choice.lp << choice.pb;
        }
    }
}

TEST(Lzma2, leavesConvertersToTheLibrary)
{
    const auto data = variedData(300'000);
    lzma_options_lzma options{};
    lzma_lzma_preset(&options, 1);
    lzma_options_delta delta{};
    delta.type = LZMA_DELTA_TYPE_BYTE;
    delta.dist = 3;
    const lzma_filter filters[] = {{LZMA_FILTER_DELTA, &delta},
                                   {LZMA_FILTER_X86, nullptr},
                                   {LZMA_FILTER_LZMA2, &options},
                                   {LZMA_VLI_UNKNOWN, nullptr}};
    const auto packed = packBlocks(data, filters, LZMA_CHECK_CRC64, 100'000);
    for (const unsigned threads : {1U, 2U}) {
        const auto result = unpack(packed, threads);
        EXPECT_TRUE(result.outcome);
        EXPECT_TRUE(result.data == data);
        EXPECT_EQ(result.verified, data.size());
    }
}

/// Without a checksum nothing but the decoder itself stands between damaged data and memory.
TEST(Lzma2, agreesWithTheLibraryOnDamagedData)
{
    const auto data = variedData(60'000);
    const auto packed = packLzma2(data, {}, 0, LZMA_CHECK_NONE);
    std::minstd_rand random(11);
    unsigned kept = 0;
    for (int round = 0; round < 600; ++round) {
        auto broken = packed;
        for (auto bits = 1 + random() % 3; bits > 0; --bits)
            broken[24 + random() % (packed.size() - 64)] ^= static_cast<char>(1 << random() % 8);
        std::string expected(data.size() * 2, '\0');
        std::uint64_t memory = 64 << 20;
        std::size_t in = 0, out = 0;
        const auto code = lzma_stream_buffer_decode(
            &memory, 0, nullptr, reinterpret_cast<std::uint8_t*>(broken.data()), &in, broken.size(),
            reinterpret_cast<std::uint8_t*>(expected.data()), &out, expected.size());
        const auto result = unpack(broken, 1);
        ASSERT_EQ(result.outcome.has_value(), code == LZMA_OK) << round;
        if (code == LZMA_OK) {
            ASSERT_TRUE(result.data == expected.substr(0, out)) << round;
            ++kept;
        }
    }
    EXPECT_LT(kept, 600U);
}

TEST(XzBlocks, areNotBelievedWhenTheyDoNotFitTheFile)
{
    const auto data = variedData(300'000);
    const auto packed = packLzma2(data, {}, 100'000);
    const auto blocks = readXzBlocks(*memorySource(packed), {});
    ASSERT_EQ(blocks.all.size(), 3U);
    const auto outcome = [&](auto change) {
        auto changed = blocks;
        change(changed.all[1]);
        auto stream = openXz(textStream(packed), {.threads = 2}, changed);
        const auto result = drain(**stream);
        EXPECT_TRUE(data.starts_with(result.data.substr(0, 100'000)));
        EXPECT_LE(result.verified, 100'000U);
        return result.outcome;
    };
    EXPECT_FALSE(outcome([](auto& block) { block.size -= 1; }));
    EXPECT_FALSE(outcome([](auto& block) { block.size += 1; }));
    EXPECT_FALSE(outcome([](auto& block) { block.packedSize -= 4; }));
    EXPECT_FALSE(outcome([](auto& block) { block.offset += 4; }));
    EXPECT_FALSE(outcome([](auto& block) { block.check = LZMA_CHECK_CRC32; }));
    EXPECT_FALSE(outcome([&](auto& block) { block.packedSize = packed.size(); }));
}

/// One stream of the parts, each with a dictionary of its own, as encoders with threads make them.
std::string packParts(const std::vector<std::string>& parts)
{
    auto options = optionsOf({});
    const lzma_filter filters[] = {{LZMA_FILTER_LZMA2, &options}, {LZMA_VLI_UNKNOWN, nullptr}};
    std::string packed;
    for (const auto& part : parts) {
        std::string one(part.size() + part.size() / 8 + 1000, '\0');
        std::size_t size = 0;
        EXPECT_EQ(lzma_raw_buffer_encode(filters, nullptr, reinterpret_cast<const std::uint8_t*>(part.data()),
                                         part.size(), reinterpret_cast<std::uint8_t*>(one.data()), &size, one.size()),
                  LZMA_OK);
        packed += one.substr(0, size - 1); // without the end
    }
    return packed + '\0';
}

vantoro::testing::Drained unpackParts(const std::string& packed, unsigned threads)
{
    const std::byte dictionary{8}; // 64 KiB
    const LzmaFilterStep steps[] = {{LzmaFilter::Lzma2, ConstBytes(&dictionary, 1)}};
    auto stream = openLzmaChain(textStream(packed, 9'000), steps, std::nullopt, {.threads = threads});
    return drain(**stream, 10'007);
}

TEST(Lzma2Parts, areDecodedSideBySide)
{
    const auto data = variedData(400'000);
    const auto tooLarge = data.substr(0, 1000) + std::string(34 << 20, 'x') + data;
    const std::vector<std::string> kinds[] = {{data},
                                              {data, data.substr(0, 1), data.substr(7), data, data.substr(100'000)},
                                              {data, tooLarge, data},
                                              {tooLarge},
                                              {}};
    for (const auto& parts : kinds) {
        std::string whole;
        for (const auto& part : parts)
            whole += part;
        const auto packed = packParts(parts);
        for (const unsigned threads : {1U, 3U}) {
            const auto result = unpackParts(packed, threads);
            EXPECT_TRUE(result.outcome) << (result.outcome ? "" : result.outcome.error().what);
            EXPECT_TRUE(result.data == whole) << parts.size() << " parts, " << threads << " threads";
        }
    }
}

TEST(Lzma2Parts, giveWhatComesBeforeDamage)
{
    const auto data = variedData(150'000);
    const auto packed = packParts({data, data, data});
    const auto whole = data + data + data;
    for (std::size_t length = 0; length < packed.size(); length += 997) {
        const auto result = unpackParts(packed.substr(0, length), 3);
        ASSERT_FALSE(result.outcome) << length;
        EXPECT_EQ(result.outcome.error().code, ErrorCode::Truncated) << length;
        EXPECT_TRUE(whole.starts_with(result.data)) << length;
    }
    auto broken = packed;
    broken[packed.size() / 3] = 0x40; // the control byte of the second part
    const auto result = unpackParts(broken, 3);
    ASSERT_FALSE(result.outcome);
    EXPECT_EQ(result.outcome.error().code, ErrorCode::Corrupt);
    EXPECT_TRUE(result.data == data);
}

TEST(Lzma2, knowsTheDictionaryBehindEachProperty)
{
    EXPECT_EQ(lzma2Dictionary(0), 4096U);
    EXPECT_EQ(lzma2Dictionary(22), 8U << 20);
    EXPECT_EQ(lzma2Dictionary(23), 12U << 20);
    EXPECT_EQ(lzma2Dictionary(40), 0xFFFFFFFFU);
    EXPECT_FALSE(lzma2Dictionary(41));
}

}
