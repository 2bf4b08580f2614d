#include "engine/codecs/wavpack.h"
#include "tests/support/streams.h"
#include "tests/support/wave_packer.h"

#include <gtest/gtest.h>

#include <wavpack/wavpack.h>

namespace vantoro {

namespace {

using packers::packedWave;
using packers::Wave;
using testing::Drained;
using testing::textStream;

const std::string kOddChunk("note\3\0\0\0abc", 11);

Drained decode(const packers::PackedWave& wave, std::size_t inputPiece = 1 << 20, std::size_t piece = 64 << 10)
{
    auto stream = openWavPack(textStream(wave.packed, inputPiece), wave.file.size());
    if (!stream)
        return {{}, stream.error(), 0};
    return testing::drain(**stream, piece);
}

ErrorCode refusal(const Wave& wave)
{
    const auto drained = decode(packedWave(wave));
    return drained.outcome ? ErrorCode::Internal : drained.outcome.error().code;
}

class WavPackKinds : public ::testing::TestWithParam<Wave> {};

TEST_P(WavPackKinds, givesTheFile)
{
    const auto wave = packedWave(GetParam());
    for (const auto& [inputPiece, piece] : {std::pair<std::size_t, std::size_t>{1 << 20, 64 << 10}, {7, 1000}}) {
        const auto drained = decode(wave, inputPiece, piece);
        EXPECT_TRUE(drained.outcome) << drained.outcome.error().what;
        EXPECT_TRUE(drained.data == wave.file) << drained.data.size() << " of " << wave.file.size();
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, WavPackKinds,
    ::testing::Values(Wave{.trailer = kOddChunk}, Wave{.channels = 1, .bits = 8, .frames = 30'001},
                      Wave{.channels = 1, .bits = 8, .frames = 1, .trailer = kOddChunk},
                      Wave{.channels = 1, .bits = 24, .frames = 30'001, .trailer = kOddChunk, .keepsPadding = true},
                      Wave{.channels = 6, .bits = 24}, Wave{.bits = 32},
                      Wave{.bits = 32, .isFloat = true, .keepsHeader = false},
                      Wave{.channels = 1, .bits = 24, .frames = 30'001, .keepsHeader = false},
                      // More than the library hands over at once.
                      Wave{.frames = 9, .trailer = std::string(17 << 20, 't')}));

TEST(WavPack, aFileWithoutItsPaddingGetsNone)
{
    auto wave = packedWave({.channels = 1, .bits = 8, .frames = 30'001});
    wave.file.pop_back();
    EXPECT_TRUE(decode(wave).data == wave.file);
}

TEST(WavPack, refusesWhatGivesNoWaveFile)
{
    EXPECT_EQ(refusal({.flags = CONFIG_HYBRID_FLAG}), ErrorCode::UnsupportedMethod);
    EXPECT_EQ(refusal({.order = QMODE_BIG_ENDIAN}), ErrorCode::UnsupportedMethod);
    EXPECT_EQ(refusal({.bits = 8, .order = QMODE_DSD_MSB_FIRST}), ErrorCode::UnsupportedMethod);
}

TEST(WavPack, whatIsCutGivesItsBeginningAndAnError)
{
    const auto wave = packedWave({});
    for (std::size_t size = 0; size < wave.packed.size(); size += 611) {
        const auto drained = decode({wave.file, wave.packed.substr(0, size)});
        ASSERT_FALSE(drained.outcome) << size;
        EXPECT_EQ(drained.outcome.error().code, ErrorCode::Truncated) << size;
        EXPECT_TRUE(wave.file.starts_with(drained.data)) << size;
    }
}

TEST(WavPack, flippedBitsAreErrorsOrHarmless)
{
    const auto wave = packedWave({.frames = 9000});
    unsigned errors = 0, tried = 0;
    for (std::size_t at = 0; at < wave.packed.size(); at += at < 200 ? 1 : 97, ++tried) {
        auto damaged = wave;
        damaged.packed[at] = static_cast<char>(damaged.packed[at] ^ 1 << at % 8);
        const auto drained = decode(damaged);
        errors += drained.outcome ? 0U : 1U;
        EXPECT_LE(drained.data.size(), wave.file.size() + (1 << 20)) << at;
    }
    EXPECT_GT(errors, tried * 9 / 10);
}

/// `head`, then the same block over and over.
class EndlessStream final : public ByteStream {
public:
    EndlessStream(std::string head, std::string block) : m_rest(std::move(head)), m_block(std::move(block)) {}
    Result<std::size_t> read(Bytes into) override
    {
        if (m_rest.empty())
            m_rest = m_block;
        const auto count = std::min(into.size(), m_rest.size());
        std::memcpy(into.data(), m_rest.data(), count);
        m_rest.erase(0, count);
        given += count;
        return count;
    }
    std::uint64_t given = 0;

private:
    std::string m_rest, m_block;
};

TEST(WavPack, endlessBlocksWithoutSamplesEnd)
{
    const auto wave = packedWave({.frames = 100, .trailer = "abcd"});
    const auto last = wave.packed.rfind("wvpk"); // the block with the trailer
    ASSERT_GT(last, 0U);
    auto block = wave.packed.substr(last, 32);
    block[4] = 24; // nothing but its header
    auto input = std::make_unique<EndlessStream>(wave.packed.substr(0, last), block);
    const auto& given = input->given;
    auto stream = openWavPack(std::move(input), wave.file.size());
    ASSERT_TRUE(stream);
    const auto drained = testing::drain(**stream);
    ASSERT_FALSE(drained.outcome);
    EXPECT_EQ(drained.outcome.error().code, ErrorCode::LimitExceeded);
    EXPECT_LT(given, 80U << 20);
}

TEST(WavPack, stopsWhenAsked)
{
    const auto wave = packedWave({});
    CodecParams params;
    auto stream = openWavPack(textStream(wave.packed), wave.file.size(), params);
    ASSERT_TRUE(stream);
    params.cancel.cancel();
    const auto drained = testing::drain(**stream);
    ASSERT_FALSE(drained.outcome);
    EXPECT_EQ(drained.outcome.error().code, ErrorCode::Cancelled);
    const auto late = openWavPack(textStream(wave.packed), wave.file.size(), params);
    ASSERT_FALSE(late);
    EXPECT_EQ(late.error().code, ErrorCode::Cancelled);
}

}

}
