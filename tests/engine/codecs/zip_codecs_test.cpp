#include "engine/codecs/block_inflate.h"
#include "engine/codecs/deflate64.h"
#include "engine/codecs/implode.h"
#include "engine/codecs/reduce.h"
#include "engine/codecs/shrink.h"
#include "tests/support/mixed_data.h"
#include "tests/support/tools.h"

#include <gtest/gtest.h>

#include <functional>

namespace vantoro {

namespace {

using namespace test;

/// Writes bits lowest first.
class BitWriter {
public:
    void put(std::uint32_t value, unsigned bits)
    {
        for (unsigned i = 0; i < bits; ++i, ++m_count) {
            if (m_count % 8 == 0)
                m_bytes.push_back('\0');
            m_bytes.back()
                = static_cast<char>(static_cast<unsigned char>(m_bytes.back()) | (value >> i & 1) << m_count % 8);
        }
    }
    /// A code word, its first bit highest.
    void putCode(std::uint32_t code, unsigned bits)
    {
        for (unsigned i = bits; i-- > 0;)
            put(code >> i & 1, 1);
    }
    const std::string& bytes() const { return m_bytes; }

private:
    std::string m_bytes;
    std::size_t m_count = 0;
};

/// Hands out a byte at a time.
class DrippingStream final : public ByteStream {
public:
    explicit DrippingStream(std::string_view data) : m_data(data) {}
    Result<std::size_t> read(Bytes into) override
    {
        if (m_data.empty() || into.empty())
            return std::size_t{0};
        into[0] = static_cast<std::byte>(m_data.front());
        m_data.erase(0, 1);
        return std::size_t{1};
    }

private:
    std::string m_data;
};

struct Codec {
    const char* name;
    std::string packed, plain;
    std::function<StreamPtr(StreamPtr)> open;
};

struct Outcome {
    std::string data;
    Result<void> result;
};

Outcome drain(StreamPtr stream, std::size_t step)
{
    Outcome outcome;
    std::vector<std::byte> block(step);
    for (;;) {
        const auto got = stream->read(block);
        if (!got) {
            outcome.result = got.error();
            return outcome;
        }
        if (*got == 0)
            return outcome;
        outcome.data += asText(ConstBytes(block).first(*got));
    }
}

/// "abab…": strings, the string that refers to itself, a wider code, and a partial clear after which entries refer to
/// freed ones.
Codec shrinkCase()
{
    BitWriter out;
    out.put('a', 9);
    out.put('b', 9); // 257: ab
    out.put(257, 9); // 258: ba; ab
    out.put(259, 9); // 259: ab+a, entered in this moment; aba
    out.put(256, 9);
    out.put(1, 9); // codes of 10 bits
    out.put('c', 10); // 260: abac; c
    out.put(256, 10);
    out.put(2, 10); // frees 258, 259 and 260, which nothing refers to; 257 is the beginning of 259
    out.put('d', 10); // 258: cd; d
    out.put(257, 10); // 259: da; ab
    out.put(258, 10); // 260: abc; cd
    return {"shrink", out.bytes(), "abababacdabcd", [](StreamPtr packed) { return openShrink(std::move(packed), 13); }};
}

/// Byte 'x' is followed by 'y' or 'z'; a repeat, a long one, and the marker itself.
Codec reduceCase()
{
    BitWriter out;
    for (int i = 255; i >= 0; --i) {
        if (i == 'x') {
            out.put(2, 6);
            out.put('y', 8);
            out.put('z', 8);
        } else {
            out.put(0, 6);
        }
    }
    const auto plain = [&](unsigned byte) { out.put(byte, 8); };
    plain('x');
    out.put(0, 1); // a follower
    out.put(1, 1); // the second: z
    plain('x');
    out.put(1, 1); // none
    out.put('q', 8);
    plain(144); // factor 2: 6 bits of length
    plain(1); // length 1 + 3, distance high 0
    plain(3); // distance 4: xzxq
    plain(144);
    plain(0); // the byte 144
    plain(144);
    plain(63); // longest: more follows
    plain(10); // 73 + 3
    plain(0); // distance 1
    return {"reduce", out.bytes(), "xzxqxzxq" + std::string(1 + 76, '\x90'),
            [](StreamPtr packed) { return openReduce(std::move(packed), 2, 8 + 77); }};
}

/// Three trees: literals all of 8 bits, lengths and distances of 6; codes are inverted.
Codec implodeCase()
{
    BitWriter out;
    out.put(15, 8);
    for (int i = 0; i < 16; ++i)
        out.put(0xF7, 8); // 16 symbols of 8 bits
    for (int tree = 0; tree < 2; ++tree) {
        out.put(3, 8);
        for (int i = 0; i < 4; ++i)
            out.put(0xF5, 8); // 16 symbols of 6 bits
    }
    const auto literal = [&](unsigned char byte) {
        out.put(1, 1);
        out.putCode(~byte & 0xFFU, 8);
    };
    const auto match = [&](unsigned distance, unsigned length) {
        out.put(0, 1);
        out.put((distance - 1) & 127, 7);
        out.putCode(~((distance - 1) >> 7) & 63, 6);
        const auto symbol = std::min(length - 3, 63U);
        out.putCode(~symbol & 63, 6);
        if (symbol == 63)
            out.put(length - 3 - 63, 8);
    };
    for (const auto c : {'i', 'm', 'p'})
        literal(static_cast<unsigned char>(c));
    match(3, 6);
    match(1, 200);
    match(5000, 4); // before the start: zeros
    return {"implode", out.bytes(), "impimpimp" + std::string(200, 'p') + std::string(4, '\0'), [](StreamPtr packed) {
                return openImplode(std::move(packed),
                                   {.hasLargeWindow = true, .hasLiteralTree = true, .leastMatch = 3, .size = 213});
            }};
}

/// A fixed block with what deflate does not have: a length of 65538 by code 285, and distance code 30.
Codec deflate64Case()
{
    BitWriter out;
    out.put(0, 1);
    out.put(0, 2); // stored
    out.put(0, 5);
    out.put(2, 16);
    out.put(0xFFFD, 16);
    out.put('6', 8);
    out.put('4', 8);
    out.put(1, 1);
    out.put(1, 2);
    out.putCode(0xC0 + 285 - 280, 8);
    out.put(65535, 16);
    out.putCode(1, 5); // distance 2
    out.putCode(257 - 256, 7); // length 3
    out.putCode(30, 5);
    out.put(65540 - 49153, 14);
    out.putCode(0, 7);
    std::string plain;
    while (plain.size() < 65540 + 3)
        plain += "64";
    plain.resize(65543);
    return {"deflate64", out.bytes(), plain, [](StreamPtr packed) { return openDeflate64(std::move(packed)); }};
}

class ZipCodecs : public testing::TestWithParam<Codec (*)()> {};

TEST_P(ZipCodecs, decodesAHandMadeStreamInAnySteps)
{
    const auto codec = GetParam()();
    for (const std::size_t step : {std::size_t{1}, std::size_t{7}, std::size_t{1} << 20}) {
        const auto whole = drain(codec.open(windowStream(memorySource(codec.packed))), step);
        EXPECT_TRUE(whole.result) << codec.name << ' ' << whole.result.error().what;
        EXPECT_EQ(whole.data, codec.plain) << codec.name;
        EXPECT_EQ(drain(codec.open(std::make_unique<DrippingStream>(codec.packed)), step).data, codec.plain);
    }
}

TEST_P(ZipCodecs, handsOutWhatCameBeforeACutAndThenSaysSo)
{
    const auto codec = GetParam()();
    for (std::size_t cut = 0; cut + 1 < codec.packed.size(); ++cut) {
        const auto part = drain(codec.open(windowStream(memorySource(codec.packed.substr(0, cut)))), 64);
        ASSERT_FALSE(part.result) << codec.name << " cut at " << cut;
        EXPECT_EQ(part.result.error().code, ErrorCode::Truncated) << codec.name << " cut at " << cut;
    }
}

TEST_P(ZipCodecs, survivesDamage)
{
    const auto codec = GetParam()();
    for (std::size_t at = 0; at < codec.packed.size(); ++at) {
        for (const char flip : {'\x01', '\x10', '\xFF'}) {
            auto damaged = codec.packed;
            damaged[at] = static_cast<char>(damaged[at] ^ flip);
            EXPECT_LE(drain(codec.open(windowStream(memorySource(damaged))), 4096).data.size(), std::size_t{1} << 22);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, ZipCodecs, testing::Values(shrinkCase, reduceCase, implodeCase, deflate64Case));

TEST(Deflate64, decodesWhatAnotherPackerWrote)
{
    REQUIRE_TOOL("7z");
    TempFolder folder;
    const auto plain = mixedData(3'000'000, 5) + std::string(200'000, 'r');
    folder.write("data", plain);
    ASSERT_TRUE(folder.run("7z a -tzip -mm=Deflate64 -mx=9 a.zip data"));
    const auto zip = folder.read("a.zip");
    const auto at = [&](std::size_t position) { return static_cast<unsigned char>(zip[position]); };
    const auto start = 30U + at(26) + at(28);
    auto stream = openDeflate64(windowStream(memorySource(std::string_view(zip).substr(start))));
    EXPECT_TRUE(drain(std::move(stream), 64 << 10).data == plain);
}

TEST(Implode, refusesTreesThatDoNotAddUp)
{
    std::string packed = "\x00\xF5"; // 16 symbols instead of 64
    packed.resize(200);
    packed[0] = 0;
    const auto outcome = drain(openImplode(windowStream(memorySource(packed)), {.leastMatch = 2, .size = 10}), 64);
    ASSERT_FALSE(outcome.result);
    EXPECT_EQ(outcome.result.error().code, ErrorCode::Corrupt);
}

TEST(BlockInflate, tellsTooMuchFromDamage)
{
    const std::string packed = "\x4b\x4c\x4c\x4c\x04\x00"; // "aaaa", a fixed block
    BlockInflater inflater;
    std::array<std::byte, 8> room;
    const auto made = inflater.inflate(asBytes(std::string_view(packed.data(), 6)), room);
    ASSERT_TRUE(made);
    EXPECT_EQ(asText(ConstBytes(room).first(*made)), "aaaa");
    EXPECT_EQ(inflater.inflate(asBytes(std::string_view(packed.data(), 6)), Bytes(room).first(3)).error().code,
              ErrorCode::SizeMismatch);
    EXPECT_EQ(inflater.inflate(asBytes(std::string_view(packed.data(), 3)), room).error().code, ErrorCode::Corrupt);
}

}

}
