#include "engine/codecs/arj_fastest.h"
#include "engine/codecs/lh_static.h"
#include "tests/support/streams.h"

#include <gtest/gtest.h>

#include <string>

namespace vantoro {

namespace {

using testing::drain;

/// Bytes of a text of 0 and 1; other characters only set groups apart.
std::string bits(std::string_view text)
{
    std::string bytes;
    unsigned used = 0;
    for (const char c : text) {
        if (c != '0' && c != '1')
            continue;
        if (used++ % 8 == 0)
            bytes.push_back('\0');
        if (c == '1')
            bytes.back() = static_cast<char>(bytes.back() | 0x80 >> (used - 1) % 8);
    }
    return bytes;
}

StreamPtr packed(const std::string& bytes) { return windowStream(memorySource(std::string_view(bytes))); }

TEST(LhStatic, aBlockOfOneSymbolTakesNoBitsForIt)
{
    // 3 codes; length code: none, 0; literals: none, 'x'; distances: none, 0
    const auto block = bits("0000000000000011 00000 00000 000000000 001111000 00000 00000");
    for (const std::size_t step : {std::size_t{1}, std::size_t{64}}) {
        auto stream = openLhStatic(packed(block), {.distanceSymbols = 17, .distanceCountBits = 5}, 3);
        const auto decoded = drain(*stream, step);
        EXPECT_TRUE(decoded.outcome);
        EXPECT_EQ(decoded.data, "xxx");
    }
}

TEST(LhStatic, copiesFromBeforeTheStartAreTheFillByte)
{
    // 1 code: a copy of 3 (symbol 256) from distance 1.
    const auto block = bits("0000000000000001 00000 00000 000000000 100000000 00000 00000");
    auto stream = openLhStatic(packed(block), {.distanceSymbols = 17, .distanceCountBits = 5}, 3);
    EXPECT_EQ(drain(*stream, 64).data, "   ");
}

TEST(LhStatic, refusesCodesThatAreNone)
{
    const LhStaticParams params{.distanceSymbols = 17, .distanceCountBits = 5};
    const char* const broken[] = {
        "0000000000000001 00011 001 001 001 00 000000000 001111000 00000 00000", // three codes of one bit
        "0000000000000001 00010 010 010 000000000 001111000 00000 00000", // two of two bits: incomplete
        "0000000000000001 11111 000 000 000 00", // more symbols than there are
        "0000000000000001 00000 00000 000000000 111111111 00000 00000", // a literal past the last
        "0000000000000001 00000 00000 000000000 100000000 00000 10001", // a distance past the last
    };
    for (const auto* text : broken) {
        auto stream = openLhStatic(packed(bits(text)), params, 100);
        const auto decoded = drain(*stream, 64);
        ASSERT_FALSE(decoded.outcome) << text;
        EXPECT_EQ(decoded.outcome.error().code, ErrorCode::Corrupt) << text;
    }
    auto cut = openLhStatic(packed(bits("0000000000000011")), params, 100);
    EXPECT_EQ(drain(*cut, 64).outcome.error().code, ErrorCode::Truncated);
}

TEST(ArjFastest, decodesLiteralsAndCopies)
{
    // 'a', 'b' as literals; length class 1 (value 1 or 2: 3 or 4 bytes), distance class 0.
    const auto text = bits("0 01100001  0 01100010  10 1 0 000000001  0 00100001");
    for (const std::size_t step : {std::size_t{1}, std::size_t{64}}) {
        auto stream = openArjFastest(packed(text), 7);
        const auto decoded = drain(*stream, step);
        EXPECT_TRUE(decoded.outcome);
        EXPECT_EQ(decoded.data, "ababab!");
    }
    auto shorter = openArjFastest(packed(text), 4); // a copy is cut off at the size
    EXPECT_EQ(drain(*shorter, 64).data, "abab");
    auto tooFar = openArjFastest(packed(bits("0 01100001  10 1 0 000000001")), 5);
    EXPECT_EQ(drain(*tooFar, 64).outcome.error().code, ErrorCode::Corrupt);
    auto cut = openArjFastest(packed(text.substr(0, 2)), 70);
    EXPECT_EQ(drain(*cut, 64).outcome.error().code, ErrorCode::Truncated);
}

}

}
