#include "engine/codecs/bzip2.h"
#include "tests/support/packers.h"
#include "tests/support/streams.h"

#include <gtest/gtest.h>

using namespace vantoro;
using vantoro::testing::drain;
using vantoro::testing::textStream;

namespace {

vantoro::testing::Drained unpack(const std::string& packed, unsigned threads)
{
    auto stream = openBzip2(textStream(packed), {.threads = threads});
    return drain(**stream);
}

std::string toBits(std::string_view bytes)
{
    std::string bits;
    for (const char c : bytes) {
        for (int bit = 7; bit >= 0; --bit)
            bits.push_back((static_cast<unsigned char>(c) >> bit & 1) != 0 ? '1' : '0');
    }
    return bits;
}

std::string fromBits(std::string bits)
{
    while (bits.size() % 8 != 0)
        bits.push_back('0');
    std::string bytes;
    for (std::size_t at = 0; at < bits.size(); at += 8)
        bytes.push_back(static_cast<char>(std::stoi(bits.substr(at, 8), nullptr, 2)));
    return bytes;
}

const std::string kMagicBits = toBits("\x31\x41\x59\x26\x53\x59");

/// Adds selectors that no symbol uses and whose bits are a block's magic: a block may hold that many.
std::string withFalseMagic(const std::string& packed)
{
    auto bits = toBits(packed);
    std::size_t at = 32 + 48 + 32 + 1 + 24; // header, magic, checksum, randomised, origin
    const auto rows = bits.substr(at, 16);
    at += 16 + 16 * static_cast<std::size_t>(std::count(rows.begin(), rows.end(), '1'));
    const auto codes = std::stoi(bits.substr(at, 3), nullptr, 2);
    EXPECT_GE(codes, 3) << "two ones in a row would be no selector";
    at += 3;
    const auto count = std::stoi(bits.substr(at, 15), nullptr, 2);
    auto end = at + 15;
    for (int selector = 0; selector < count; ++selector)
        end = bits.find('0', end) + 1;
    const auto added = kMagicBits + '0'; // ends in 1
    const auto more = std::count(added.begin(), added.end(), '0');
    std::string number;
    for (int bit = 14; bit >= 0; --bit)
        number.push_back(((count + more) >> bit & 1) != 0 ? '1' : '0');
    bits.insert(end, added);
    bits.replace(at, 15, number);
    // The padding at the end moves: 80 bits of end mark stand behind the last block wherever it ends.
    const auto endMark = bits.rfind(toBits("\x17\x72\x45\x38\x50\x90"));
    return fromBits(bits.substr(0, endMark + 80));
}

TEST(Bzip2, decodesManyBlocksSideBySide)
{
    const auto data = packers::sampleData(2'500'000);
    for (const int level : {1, 5, 9}) {
        const auto packed = packers::bzip2(data, level);
        for (const unsigned threads : {1U, 2U, 5U}) {
            const auto result = unpack(packed, threads);
            EXPECT_TRUE(result.outcome) << (result.outcome ? "" : result.outcome.error().what);
            EXPECT_TRUE(result.data == data) << level << ' ' << threads;
        }
    }
}

TEST(Bzip2, isNotMisledByAMagicInsideABlock)
{
    const auto first = packers::sampleData(60'000);
    const auto packed = withFalseMagic(packers::bzip2(first, 1));
    const auto rest = packers::sampleData(700'000);
    for (const unsigned threads : {1U, 2U}) {
        const auto result = unpack(packed + packers::bzip2(rest, 1) + packed, threads);
        EXPECT_TRUE(result.outcome) << (result.outcome ? "" : result.outcome.error().what);
        EXPECT_TRUE(result.data == first + rest + first);
    }
}

TEST(Bzip2, expandsRunsOfEveryLength)
{
    std::string data;
    for (std::size_t length = 1; length < 600; ++length) {
        data.append(length, static_cast<char>('a' + length % 3));
        data.push_back('|');
    }
    data.append(3'000'000, '\0');
    EXPECT_TRUE(unpack(packers::bzip2(data, 1), 2).data == data);
}

TEST(Bzip2, handsOutTheBlocksBeforeADamagedOne)
{
    const auto data = packers::sampleData(1'000'000);
    auto packed = packers::bzip2(data, 1);
    packed[packed.size() / 2] ^= 0x10;
    for (const unsigned threads : {1U, 2U}) {
        const auto result = unpack(packed, threads);
        ASSERT_FALSE(result.outcome);
        EXPECT_GT(result.verified, 300'000U);
        EXPECT_LT(result.verified, 700'000U);
        EXPECT_TRUE(data.starts_with(result.data.substr(0, result.verified)));
    }
}

TEST(Bzip2, handsOutWholeBlocksBeforeAFaultOfTheMedium)
{
    class FailingStream final : public ByteStream {
    public:
        explicit FailingStream(std::string data) : m_data(textStream(std::move(data))) {}
        Result<std::size_t> read(Bytes into) override
        {
            const auto got = TRY(m_data->read(into));
            if (got == 0)
                return Error{ErrorCode::Io, "medium", 5};
            return got;
        }

    private:
        StreamPtr m_data;
    };
    const auto data = packers::sampleData(400'000);
    const auto packed = packers::bzip2(data, 1);
    auto stream = openBzip2(std::make_unique<FailingStream>(packed.substr(0, packed.size() * 3 / 4)), {.threads = 2});
    const auto result = drain(**stream);
    ASSERT_FALSE(result.outcome);
    EXPECT_EQ(result.outcome.error().code, ErrorCode::Io);
    EXPECT_GT(result.data.size(), 100'000U);
    EXPECT_TRUE(data.starts_with(result.data));
}

}
