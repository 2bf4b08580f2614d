#include "engine/codecs/rar29_filters.h"
#include "engine/codecs/rar_codec.h"
#include "tests/support/mixed_data.h"
#include "tests/support/rar_builder.h"
#include "tests/support/rar_packer.h"
#include "tests/support/streams.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace vantoro {

namespace {

using namespace test;

class StringSink final : public ByteSink {
public:
    Result<void> write(ConstBytes block) override
    {
        text += asText(block);
        return {};
    }
    Result<void> finish() override { return {}; }
    std::string text;
};

/// A canonical prefix code, for writing.
class Code {
public:
    Code(std::size_t symbols, const std::map<unsigned, unsigned>& used) : lengths(symbols)
    {
        for (const auto& [symbol, length] : used)
            lengths[symbol] = length;
        unsigned next = 0;
        for (unsigned length = 1; length <= 15; ++length, next <<= 1) {
            for (const auto& [symbol, own] : used) {
                if (own == length)
                    m_codes[symbol] = {next++, length};
            }
        }
    }
    void put(MsbWriter& out, unsigned symbol) const
    {
        const auto [code, length] = m_codes.at(symbol);
        out.put(code, length);
    }
    std::vector<unsigned> lengths;

private:
    std::map<unsigned, std::pair<unsigned, unsigned>> m_codes;
};

/// The lengths of all codes of a block, through a level code for the lengths 0 to 4 and runs of zeros. `levels` is 20
/// (rar 2.9, rar 5: runs are symbols 18 and 19) or 19 (rar 2.0: 17 and 18).
void putTables(MsbWriter& out, unsigned levels, const std::vector<const Code*>& codes)
{
    const unsigned shortRun = levels - 2;
    const unsigned longRun = levels - 1;
    const Code level(levels, {{0, 3}, {1, 3}, {2, 3}, {3, 3}, {4, 3}, {shortRun, 3}, {longRun, 3}});
    for (const auto length : level.lengths)
        out.put(length, 4);
    std::vector<unsigned> all;
    for (const auto* code : codes)
        all.insert(all.end(), code->lengths.begin(), code->lengths.end());
    for (std::size_t i = 0; i < all.size();) {
        const auto zeros = static_cast<std::size_t>(
            std::find_if(all.begin() + static_cast<std::ptrdiff_t>(i), all.end(), [](unsigned l) { return l != 0; })
            - (all.begin() + static_cast<std::ptrdiff_t>(i)));
        if (zeros >= 11) {
            level.put(out, longRun);
            out.put(std::min<std::size_t>(zeros, 138) - 11, 7);
            i += std::min<std::size_t>(zeros, 138);
        } else if (zeros >= 3) {
            level.put(out, shortRun);
            out.put(zeros - 3, 3);
            i += zeros;
        } else {
            level.put(out, all[i++]);
        }
    }
}

struct Decoded {
    std::string text;
    Result<void> result;
};

Decoded decode(RarCodec& codec, std::string_view packed, RarCodecEntry entry)
{
    testing::PiecewiseStream stream(std::string(packed), packed.size() < 1000 ? 1 : 77'777);
    StringSink sink;
    if (entry.window == 0)
        entry.window = 1 << 18;
    auto result = codec.decode(stream, entry, sink);
    return {sink.text, result};
}

/// Whatever is cut off, what comes out is a part of the whole, and only the whole has no error.
void expectPrefixesWhenCut(const std::function<std::unique_ptr<RarCodec>()>& make, const std::string& packed,
                           const std::string& whole, std::size_t needed)
{
    for (std::size_t size = 0; size < packed.size(); ++size) {
        const auto cut = decode(*make(), packed.substr(0, size), {.size = whole.size()});
        EXPECT_EQ(cut.text, whole.substr(0, cut.text.size())) << size;
        EXPECT_EQ(cut.result && cut.text.size() == whole.size(), size >= needed) << size;
    }
}

// Codes of rar 5 for: the letters a and b, a filter, the last length, the newest distance, new distances with the
// lengths 2 and 6.
const Code kMain50(306, {{'a', 3}, {'b', 3}, {256, 3}, {257, 3}, {258, 3}, {262, 3}, {266, 3}});
const Code kDistance50(64, {{0, 2}, {1, 2}, {3, 2}, {34, 2}});
const Code kAlign50(16, {{0, 1}, {5, 1}});
const Code kLength50(44, {{1, 1}});

class Rar50Block {
public:
    explicit Rar50Block(bool withTables = true) : m_hasTables(withTables)
    {
        if (withTables)
            putTables(m_bits, 20, {&kMain50, &kDistance50, &kAlign50, &kLength50});
    }
    Rar50Block& text(std::string_view letters)
    {
        for (const auto letter : letters)
            kMain50.put(m_bits, static_cast<unsigned char>(letter));
        return *this;
    }
    Rar50Block& symbol(unsigned symbol)
    {
        kMain50.put(m_bits, symbol);
        return *this;
    }
    Rar50Block& distance(unsigned slot)
    {
        kDistance50.put(m_bits, slot);
        return *this;
    }
    MsbWriter& bits() { return m_bits; }
    std::string bytes(bool isLast) const
    {
        const auto size = m_bits.bytes().size();
        const auto flags = static_cast<unsigned>((m_bits.bits() + 7) % 8) | 1U << 3 | (isLast ? 0x40U : 0)
            | (m_hasTables ? 0x80U : 0);
        const auto check = 0x5AU ^ flags ^ (size & 0xFF) ^ (size >> 8);
        return le(flags, 1) + le(check, 1) + le(size, 2) + m_bits.bytes();
    }

private:
    bool m_hasTables;
    MsbWriter m_bits;
};

const auto kMake50 = [] { return makeRar50Codec(false); };

TEST(Rar50, decodesLiteralsAndAllKindsOfMatches)
{
    Rar50Block first;
    first.text("ab").symbol(266).distance(1); // 6 at distance 2
    first.symbol(257); // the same once more
    first.symbol(262).distance(0); // 2 at distance 1
    Rar50Block second(false);
    second.symbol(258); // the newest distance, length by its own code: 3
    kLength50.put(second.bits(), 1);
    second.text("a");
    const auto packed = first.bytes(false) + second.bytes(true);
    const std::string whole = "ababababababab"
                              "bb"
                              "bbb"
                              "a";
    const auto decoded = decode(*kMake50(), packed, {.size = whole.size()});
    EXPECT_TRUE(decoded.result);
    EXPECT_EQ(decoded.text, whole);
    EXPECT_EQ(decode(*kMake50(), packed, {}).text, whole) << "without a declared size the last block ends it";
    EXPECT_EQ(decode(*kMake50(), packed, {.size = 5}).text, "ababa") << "never more than declared";
    expectPrefixesWhenCut(kMake50, packed, whole, packed.size());
}

TEST(Rar50, fillsDistancesBeyondTheStartWithZeros)
{
    // Slot 34: 17 bits of distance, the low four through the align code.
    Rar50Block block;
    block.text("a").symbol(266).distance(34).bits().put(3, 12);
    kAlign50.put(block.bits(), 5);
    const auto decoded = decode(*kMake50(), block.bytes(true), {.size = 8});
    EXPECT_TRUE(decoded.result);
    EXPECT_EQ(decoded.text, std::string("a") + std::string(7, '\0'))
        << "a distance over 0x10000 makes the match a byte or two longer";
}

TEST(Rar50, solidEntriesGoOnWithWindowTablesAndDistances)
{
    const auto codec = kMake50();
    Rar50Block first;
    first.text("abb").symbol(266).distance(3); // 6 at distance 4: one byte too far, so zeros
    Rar50Block tail; // tables behind the last byte, for the entry that follows
    const auto one = decode(*codec, first.bytes(false) + tail.bytes(true), {.size = 9, .leadsOn = true});
    EXPECT_EQ(one.text, std::string("abb") + std::string(6, '\0'));
    Rar50Block second(false);
    second.symbol(266).distance(1).symbol(257).text("a");
    const auto two = decode(*codec, second.bytes(true), {.size = 13, .isSolid = true});
    EXPECT_TRUE(two.result);
    EXPECT_EQ(two.text, std::string(12, '\0') + "a");
    EXPECT_FALSE(decode(*codec, second.bytes(true), {.size = 13}).result) << "a fresh entry has no tables";
}

TEST(Rar50, growsTheWindowOfAChainAndKeepsItsContents)
{
    const auto codec = kMake50();
    EXPECT_EQ(decode(*codec, Rar50Block().text("abab").bytes(true), {.size = 4, .window = 4}).text, "abab");
    Rar50Block next(false);
    next.symbol(262).distance(3).text("b"); // 2 at distance 4
    EXPECT_EQ(decode(*codec, next.bytes(true), {.size = 3, .window = 1 << 20, .isSolid = true}).text, "abb");
}

TEST(Rar50, runsFiltersOverTheirBlocksOnly)
{
    const auto filter = [](Rar50Block& block, unsigned start, unsigned length, unsigned kind) {
        block.symbol(256).bits().put(0, 2).put(start, 8).put(0, 2).put(length, 8).put(kind, 3);
        if (kind == 0)
            block.bits().put(1, 5); // two channels
    };
    Rar50Block block;
    block.text("a");
    filter(block, 1, 4, 0); // Delta over "abab", which starts a byte further on
    block.text("babab");
    const auto decoded = decode(*kMake50(), block.bytes(true), {.size = 6});
    EXPECT_TRUE(decoded.result);
    // Channel 1 is "ab", channel 2 "ab": each byte is the one before less what is coded.
    EXPECT_EQ(decoded.text, std::string("ab\x9F\x9F\x3D\x3D"));

    Rar50Block unknown;
    filter(unknown, 0, 4, 5);
    EXPECT_EQ(decode(*kMake50(), unknown.bytes(true), {.size = 4}).result.error().code, ErrorCode::UnsupportedMethod);
    Rar50Block overlapping;
    filter(overlapping, 0, 4, 1);
    filter(overlapping, 3, 4, 1);
    EXPECT_EQ(decode(*kMake50(), overlapping.bytes(true), {.size = 4}).result.error().code, ErrorCode::Corrupt);
}

TEST(Rar50, refusesDamagedBlocks)
{
    const auto good = Rar50Block().text("ab").bytes(true);
    for (std::size_t at = 0; at < 4; ++at) {
        auto bad = good;
        bad[at] = static_cast<char>(bad[at] ^ 0x20);
        EXPECT_FALSE(decode(*kMake50(), bad, {.size = 2}).result) << at;
    }
    Rar50Block notGiven;
    notGiven.bits().put(0xFFFF, 16); // seven codes of three bits: 111 is nobody's
    EXPECT_EQ(decode(*kMake50(), notGiven.bytes(true), {.size = 2}).result.error().code, ErrorCode::Corrupt);
}

// Codes of rar 2.9 for: a, b, the end mark, the last length, the newest distance, a short distance, length 3 and more.
const Code kMain29(299, {{'a', 3}, {'b', 3}, {256, 3}, {258, 3}, {259, 3}, {263, 3}, {271, 3}});
const Code kDistance29(60, {{1, 1}, {30, 1}});
const Code kLow29(17, {{7, 1}, {16, 1}});
const Code kRepeat29(28, {{2, 1}});
const auto kMake29 = [] { return makeRar29Codec(); };

TEST(Rar29, decodesLiteralsMatchesAndRepeatedLowDistances)
{
    MsbWriter bits;
    bits.put(0, 2); // an LZ block, no lengths kept
    putTables(bits, 20, {&kMain29, &kDistance29, &kLow29, &kRepeat29});
    const auto symbol = [&](unsigned value) { kMain29.put(bits, value); };
    symbol('a'), symbol('b');
    symbol(271), kDistance29.put(bits, 1); // 3 at distance 2
    symbol(258); // once more
    symbol(259), kRepeat29.put(bits, 2); // 4 at the newest distance
    symbol(263), bits.put(2, 2); // 2 at the short distance 3
    // Slot 30: 14 bits of distance and a low part: 7, then the same 15 times.
    symbol(271), kDistance29.put(bits, 30), bits.put(0, 10), kLow29.put(bits, 7);
    symbol(271), kDistance29.put(bits, 30), bits.put(0, 10), kLow29.put(bits, 16);
    symbol(271), kDistance29.put(bits, 30), bits.put(0, 10);
    symbol(256), bits.put(0, 2); // the end; tables stay
    const auto zeros = std::string(4 * 3, '\0'); // distances over 0x8000: a byte longer, before the start
    const auto whole = "ababababababba" + zeros;
    const auto packed = bits.bytes();
    for (const auto size : {std::optional<std::uint64_t>(whole.size()), std::optional<std::uint64_t>()}) {
        const auto decoded = decode(*kMake29(), packed, {.size = size});
        EXPECT_TRUE(decoded.result);
        EXPECT_EQ(decoded.text, whole);
    }
    // The end mark may be missing.
    expectPrefixesWhenCut(kMake29, packed, whole, (bits.bits() - 5 + 7) / 8);

    const auto codec = kMake29();
    EXPECT_EQ(decode(*codec, packed, {.size = whole.size(), .leadsOn = true}).text, whole);
    MsbWriter next;
    kMain29.put(next, 'a');
    kMain29.put(next, 263), next.put(3, 2); // 2 at distance 4: zeros of the entry before
    EXPECT_EQ(decode(*codec, next.bytes(), {.size = 3, .isSolid = true}).text, std::string("a\0\0", 3));
}

TEST(Rar29, literalsEndWithTheEntry)
{
    std::string whole;
    MsbWriter bits;
    bits.put(0, 2);
    putTables(bits, 20, {&kMain29, &kDistance29, &kLow29, &kRepeat29});
    for (unsigned i = 0; i < 600; ++i) {
        whole += i * i % 7 < 3 ? 'a' : 'b';
        kMain29.put(bits, static_cast<unsigned char>(whole.back()));
    }
    expectPrefixesWhenCut(kMake29, bits.bytes(), whole, bits.bytes().size());

    MsbWriter next;
    kMain29.put(next, 263), next.put(0, 2); // 2 at distance 1
    for (std::size_t end = 100; end < 120; ++end) { // what follows does not belong to the entry
        const auto codec = kMake29();
        EXPECT_EQ(decode(*codec, bits.bytes(), {.size = end, .leadsOn = true}).text, whole.substr(0, end));
        EXPECT_EQ(decode(*codec, next.bytes(), {.size = 2, .isSolid = true}).text, std::string(2, whole[end - 1]));
    }
}

TEST(Rar29, endMarkMayAskForNewTables)
{
    const auto codec = kMake29();
    const auto entry = [&](bool newTables) {
        MsbWriter bits;
        bits.put(0, 2);
        putTables(bits, 20, {&kMain29, &kDistance29, &kLow29, &kRepeat29});
        kMain29.put(bits, 'b');
        kMain29.put(bits, 256), bits.put(newTables ? 1 : 0, 2);
        return bits.bytes();
    };
    EXPECT_EQ(decode(*codec, entry(true), {.size = 1, .leadsOn = true}).text, "b");
    EXPECT_EQ(decode(*codec, entry(true), {.size = 1, .isSolid = true, .leadsOn = true}).text, "b");
    EXPECT_FALSE(decode(*codec, std::string("\x80\0\0\0\0\0\0", 7), {.size = 1, .isSolid = true}).result)
        << "a PPMd block without a model";
}

/// A filter program in the machine's code.
class Assembler {
public:
    using Op = RarVmProgram::Op;
    Assembler() { m_bits.put(0, 1); } // no static data
    Assembler& op(Op op, std::optional<bool> isByte = std::nullopt)
    {
        const auto number = static_cast<unsigned>(op);
        number < 8 ? m_bits.put(number, 4) : m_bits.put(number + 24, 6);
        if (isByte)
            m_bits.put(*isByte, 1);
        return *this;
    }
    Assembler& reg(unsigned number)
    {
        m_bits.put(1, 1).put(number, 3);
        return *this;
    }
    Assembler& at(unsigned number)
    {
        m_bits.put(2, 3).put(number, 3);
        return *this;
    }
    Assembler& value(std::uint32_t value)
    {
        m_bits.put(0, 2).put(3, 2).put(value, 32);
        return *this;
    }
    std::string code() const
    {
        char check = 0;
        for (const auto byte : m_bits.bytes())
            check = static_cast<char>(check ^ byte);
        return std::string(1, check) + m_bits.bytes();
    }

private:
    MsbWriter m_bits;
};

TEST(Rar29Filters, runForeignPrograms)
{
    using Op = RarVmProgram::Op;
    // For each byte at R0 below R4: add R1; then leave by jumping out of the program.
    Assembler program;
    program.op(Op::Cmp, false).reg(0).reg(4);
    program.op(Op::Jae).value(256 + 1000);
    program.op(Op::Add, true).at(0).reg(1);
    program.op(Op::Inc, false).reg(0);
    program.op(Op::Jmp).value(256 + 0);
    const auto code = program.code();

    const auto record = [&](unsigned start, unsigned length, bool defines) {
        MsbWriter bits;
        const auto number = [&](unsigned value) { bits.put(2, 2).put(value, 16); };
        number(1); // the first program
        number(start);
        number(length);
        bits.put(2, 7), number(5); // R1
        if (defines) {
            number(static_cast<unsigned>(code.size()));
            for (const auto byte : code)
                bits.put(static_cast<unsigned char>(byte), 8);
        }
        return std::vector<std::uint8_t>(bits.bytes().begin(), bits.bytes().end());
    };
    RarOutput out;
    StringSink sink;
    ASSERT_TRUE(out.begin({.size = 12, .window = 1024}, sink));
    Rar29Filters filters;
    constexpr std::uint8_t kFlags = 0x80 | 0x20 | 0x10;
    ASSERT_TRUE(filters.declare(kFlags, record(2, 4, true), out));
    ASSERT_TRUE(filters.declare(kFlags, record(2, 4, false), out)); // the same block twice
    ASSERT_TRUE(filters.declare(kFlags, record(10, 4, false), out)); // never complete
    for (const char letter : std::string_view("aaaaaaaaaaaa"))
        out.cursor().put(static_cast<std::uint8_t>(letter));
    ASSERT_TRUE(out.finish());
    EXPECT_EQ(sink.text, "aakkkkaaaaaa");

    auto wrong = record(2, 4, true);
    wrong[wrong.size() - 3] ^= 1;
    filters.reset();
    EXPECT_FALSE(filters.declare(kFlags, wrong, out)) << "the check byte";
    EXPECT_FALSE(filters.declare(kFlags, record(2, 4, false), out)) << "the program is not there";
}

TEST(RarCodecs, decodeWhatAPackerMadeOfMixedData)
{
    for (const std::size_t size : {0U, 1U, 5'000U, 3'000'000U}) {
        const auto data = mixedData(size, static_cast<unsigned>(size));
        for (const auto windowSize : {std::uint64_t{4} << 20, std::uint64_t{1} << 22}) {
            const RarCodecEntry entry{.size = data.size(), .window = windowSize};
            EXPECT_TRUE(decode(*makeRar50Codec(false), packRar50(data), entry).text == data) << size;
            EXPECT_TRUE(decode(*makeRar29Codec(), packRar29(data), entry).text == data) << size;
        }
    }
}

TEST(RarCodecs, wrapTheWindowAnywhere)
{
    // Distances of the packer stay below 4 MiB, so the window goes round several times.
    auto data = mixedData(700'000, 3);
    while (data.size() < 14'000'000)
        data += data.substr(data.size() / 3, 1'111'111);
    const auto packed = packRar50(data);
    for (const auto extra : {0U, 1U, 777U, 50'000U}) {
        const RarCodecEntry entry{.size = data.size(), .window = (4 << 20) + extra};
        EXPECT_TRUE(decode(*makeRar50Codec(false), packed, entry).text == data) << extra;
    }
    EXPECT_TRUE(decode(*makeRar29Codec(), packRar29(data), {.size = data.size(), .window = 4 << 20}).text == data);
}

TEST(RarVm, stopsProgramsThatDoNotEnd)
{
    const auto code = Assembler().op(RarVmProgram::Op::Jmp).value(256).code();
    const auto program = RarVmProgram::parse({reinterpret_cast<const std::uint8_t*>(code.data()), code.size()}).value();
    RarVm vm;
    std::uint64_t budget = 1000;
    EXPECT_EQ(vm.run(program, budget).error().code, ErrorCode::LimitExceeded);
}

TEST(Rar20, decodesLiteralsAndMatches)
{
    const Code main(298, {{'a', 3}, {'b', 3}, {256, 3}, {257, 3}, {261, 3}, {269, 3}, {270, 3}});
    const Code distance(48, {{1, 1}});
    const Code repeat(28, {{2, 1}});
    MsbWriter bits;
    const auto tables = [&] {
        bits.put(0, 2); // LZ, no lengths kept
        putTables(bits, 19, {&main, &distance, &repeat});
    };
    tables();
    main.put(bits, 'a'), main.put(bits, 'b');
    main.put(bits, 270), distance.put(bits, 1); // 3 at distance 2
    main.put(bits, 256); // once more
    main.put(bits, 269); // new tables
    tables();
    main.put(bits, 257), repeat.put(bits, 2); // 4 at the newest distance
    main.put(bits, 261), bits.put(0, 2); // 2 at distance 1
    const std::string whole = "ababababababbb";
    const auto decoded = decode(*makeRar20Codec(), bits.bytes(), {.size = whole.size()});
    EXPECT_TRUE(decoded.result);
    EXPECT_EQ(decoded.text, whole);
    expectPrefixesWhenCut([] { return makeRar20Codec(); }, bits.bytes(), whole, bits.bytes().size());
}

TEST(RarFilters, callsAndBranchesBecomeRelativeAgain)
{
    std::vector<std::uint8_t> block{0x90, 0xE8, 0x10, 0x20, 0, 0, 0xE9, 1, 0, 0, 0};
    auto both = block;
    rarUndoCalls(block, 0x1000, false, RarCallWrap::At32Bits);
    EXPECT_EQ(block, (std::vector<std::uint8_t>{0x90, 0xE8, 0x0E, 0x10, 0, 0, 0xE9, 1, 0, 0, 0}));
    rarUndoCalls(both, 0x1000, true, RarCallWrap::At32Bits);
    EXPECT_EQ(both[7], 1 - 7 + 256);
    EXPECT_EQ(both[10], 0xFF);
    // Behind 16 MiB rar 5 counts anew, rar 2.9 does not.
    std::vector<std::uint8_t> far{0xE8, 2, 0, 0, 0};
    auto far5 = far;
    rarUndoCalls(far, 0x1000000, false, RarCallWrap::At32Bits);
    EXPECT_EQ(far, (std::vector<std::uint8_t>{0xE8, 1, 0, 0, 0xFF}));
    rarUndoCalls(far5, 0x1000000, false, RarCallWrap::At24Bits);
    EXPECT_EQ(far5, (std::vector<std::uint8_t>{0xE8, 1, 0, 0, 0}));
    std::vector<std::uint8_t> arm{0x10, 0, 0, 0xEB, 0x10, 0, 0, 0xEA};
    rarUndoArm(arm, 8);
    EXPECT_EQ(arm, (std::vector<std::uint8_t>{0x0E, 0, 0, 0xEB, 0x10, 0, 0, 0xEA}));
}

TEST(RarFilters, keepOffBlocksThatAreTooSmall)
{
    for (std::size_t size = 0; size < 40; ++size) {
        std::vector<std::uint8_t> block(size, 0xE8);
        rarUndoCalls(block, 0, true, RarCallWrap::At32Bits);
        rarUndoArm(block, 0);
        rarUndoItanium(block, 0);
        rarUndoDelta(block, 7);
        rarUndoAudio(block, 3);
        EXPECT_EQ(rarUndoRgb(block, 9, 0), size >= 9);
        EXPECT_EQ(block.size(), size);
    }
}

}

}
