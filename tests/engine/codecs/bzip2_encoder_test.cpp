#include "engine/codecs/bzip2.h"
#include "engine/codecs/bzip2_encoder.h"
#include "engine/codecs/bzip2_tables.h"
#include "tests/support/packers.h"
#include "tests/support/streams.h"

#include <bzlib.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

using namespace vantoro;
using vantoro::testing::drain;
using vantoro::testing::textStream;

namespace {

std::string pack(std::string_view data, unsigned level, std::size_t atOnce)
{
    Bzip2File file(level);
    Bzip2BlockInput block(level);
    Bzip2Encoder encoder;
    auto rest = std::as_bytes(std::span(data));
    while (!rest.empty()) {
        block.clear();
        while (!rest.empty() && !block.isFull())
            rest = rest.subspan(block.add(rest.first(std::min(rest.size(), atOnce))));
        file.add(encoder.encode(block));
    }
    file.end();
    const auto bytes = file.take();
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// By the library, which is not ours.
std::string unpackElsewhere(std::string packed, std::size_t size)
{
    std::string data(size + 1, '\0');
    auto length = static_cast<unsigned>(data.size());
    const int result
        = BZ2_bzBuffToBuffDecompress(data.data(), &length, packed.data(), static_cast<unsigned>(packed.size()), 0, 0);
    EXPECT_EQ(result, BZ_OK);
    data.resize(length);
    return data;
}

void expectRoundTrip(std::string_view data, unsigned level, std::size_t atOnce, std::string_view what)
{
    const auto packed = pack(data, level, atOnce);
    EXPECT_TRUE(unpackElsewhere(packed, data.size()) == data) << what << ", " << data.size() << " bytes";
    const auto stream = openBzip2(textStream(packed), {});
    const auto own = drain(**stream);
    EXPECT_TRUE(own.outcome && own.data == data) << what << ", " << data.size() << " bytes, by ourselves";
}

std::string noise(std::size_t size, unsigned values, unsigned seed)
{
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    for (auto& c : bytes)
        c = static_cast<char>(random() % values);
    return bytes;
}

std::string repeated(std::string_view piece, std::size_t size)
{
    std::string text;
    while (text.size() < size)
        text += piece;
    text.resize(size);
    return text;
}

TEST(Bzip2Encoder, isReadByOthersWhateverTheData)
{
    expectRoundTrip("", 9, 1, "nothing");
    for (const auto size : std::vector<std::size_t>{1, 2, 3, 4, 5, 254, 255, 256, 257, 510, 511, 100'000})
        expectRoundTrip(std::string(size, 'a'), 9, 1 << 20, "one byte again and again");
    for (const auto size : std::vector<std::size_t>{2, 3, 600, 601, 99'999, 250'000}) {
        expectRoundTrip(repeated("ab", size), 1, 1000, "two bytes by turns");
        expectRoundTrip(repeated("abcaabcaab", size), 1, 1000, "ten bytes again and again");
        expectRoundTrip(repeated(std::string(300, 'x') + "y", size), 1, 7, "long runs");
        expectRoundTrip(repeated(noise(4001, 256, 2), size), 1, 1000, "a long period");
    }
    std::string all(256, '\0');
    std::iota(all.begin(), all.end(), '\0');
    expectRoundTrip(all, 9, 100, "every byte once");
    expectRoundTrip(std::string(all.rbegin(), all.rend()), 9, 100, "every byte once, backwards");
    expectRoundTrip(noise(300'000, 256, 1), 2, 4096, "noise");
    expectRoundTrip(noise(300'000, 2, 1), 2, 4096, "noise of two values");
    expectRoundTrip(packers::sampleData(2'000'000), 9, 1 << 20, "text");
}

TEST(Bzip2Encoder, fillsBlocksToTheirLimitAndNotFurther)
{
    for (std::size_t size = 99'975; size <= 100'003; ++size)
        expectRoundTrip(noise(size, 256, 3), 1, 5000, "noise");
    // Four equal bytes become five: where the block ends they must not be torn from their count.
    for (std::size_t size = 79'980; size <= 79'990; ++size)
        expectRoundTrip(repeated("aaaabbbb", size), 1, 5000, "runs of four");
}

TEST(Bzip2Encoder, countsRunsWhereverTheInputIsCut)
{
    const auto data = repeated(std::string(7, 'a') + "bcd" + std::string(260, 'e') + "fgggghhhh", 20'000);
    const auto whole = pack(data, 1, data.size());
    for (const auto atOnce : std::vector<std::size_t>{1, 2, 3, 5, 8, 9, 31})
        EXPECT_TRUE(pack(data, 1, atOnce) == whole) << atOnce;
    expectRoundTrip(data, 1, 3, "runs");
}

/// Against the rotations sorted as they stand.
void expectSorted(Bzip2Sorter& sorter, const std::string& text)
{
    auto column = text;
    const auto origin = sorter.sort(std::as_writable_bytes(std::span(column)));
    std::vector<std::string> rows;
    for (std::size_t i = 0; i < text.size(); ++i)
        rows.push_back(text.substr(i) + text.substr(0, i));
    std::sort(rows.begin(), rows.end());
    std::string expected;
    for (const auto& row : rows)
        expected += row.back();
    ASSERT_EQ(column, expected) << text;
    ASSERT_LT(origin, rows.size()) << text;
    ASSERT_EQ(rows[origin], text);
}

TEST(Bzip2Sorter, sortsAllRotations)
{
    Bzip2Sorter sorter;
    for (std::size_t size = 1; size <= 11; ++size) { // every text of two letters
        for (unsigned number = 0; number < 1U << size; ++number) {
            std::string text;
            for (std::size_t i = 0; i < size; ++i)
                text += (number >> i & 1) != 0 ? 'b' : 'a';
            expectSorted(sorter, text);
        }
    }
    for (unsigned round = 0; round < 400; ++round) {
        const auto size = 1 + round * 7 % 500;
        expectSorted(sorter, noise(size, 2 + round % 5, round));
        expectSorted(sorter, repeated(noise(1 + round % 13, 3, round), size)); // pieces of pieces are equal
        expectSorted(sorter, noise(size, 256, round));
    }
}

TEST(Bzip2Tables, keepsCodesCompleteAndShort)
{
    // Counts that grow as fast as Fibonacci's make the deepest tree. They are counts of places in the list of recent
    // bytes, so the bytes are found by keeping such a list.
    std::string places;
    std::size_t now = 1, next = 1;
    for (char place = 1; places.size() + now < 890'000; ++place) {
        places.append(now, place);
        next += std::exchange(now, next);
    }
    std::shuffle(places.begin(), places.end(), std::mt19937(1));
    std::string recent(32, '\0'), bytes;
    std::iota(recent.begin(), recent.end(), '\0');
    for (const auto place : places) {
        bytes += recent[static_cast<std::size_t>(place)];
        std::rotate(recent.begin(), recent.begin() + place, recent.begin() + place + 1);
    }
    Bzip2Symbols symbols;
    symbols.make(std::as_bytes(std::span(bytes)));
    const auto tables = chooseBzip2Tables(symbols);
    EXPECT_EQ(tables.codes, 6U);
    EXPECT_EQ(tables.choices.size(), (symbols.symbols().size() + 49) / 50);
    for (std::size_t code = 0; code < tables.codes; ++code) {
        std::uint32_t used = 0;
        for (std::size_t symbol = 0; symbol < symbols.alphabetSize(); ++symbol) {
            ASSERT_GE(tables.lengths[code][symbol], 1);
            ASSERT_LE(tables.lengths[code][symbol], 17);
            used += 1U << (17 - tables.lengths[code][symbol]);
        }
        EXPECT_EQ(used, 1U << 17) << "a code is not complete";
    }
}

}
