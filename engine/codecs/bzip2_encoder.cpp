#include "engine/codecs/bzip2_encoder.h"

#include "engine/codecs/bzip2_block.h"
#include "engine/codecs/bzip2_tables.h"
#include "engine/codecs/late_isal.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace vantoro {

namespace {

constexpr std::size_t kBlockUnit = 100'000;
constexpr std::size_t kSpare = 19; // the usual encoder leaves so many bytes of a block unused; a run may need two
constexpr unsigned kRunLength = 4; // bytes of a run that stand for themselves; then comes a count
constexpr unsigned kMostRepeats = 251;

/// Whether no byte of the eight equals the one before it, `last` for the first.
bool differsThroughout(const std::byte* bytes, std::byte last)
{
    if constexpr (std::endian::native != std::endian::little)
        return false;
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof(word));
    const auto change = word ^ (word << 8 | std::to_integer<std::uint64_t>(last));
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    return ((change - kOnes) & ~change & (kOnes << 7)) == 0;
}

/// Bits into bytes, first bit highest. Holds fewer than 32 between calls.
class BitWriter {
public:
    explicit BitWriter(std::vector<std::byte>& out) : m_out(out) {}
    /// At most 32 bits.
    void put(std::uint32_t bits, unsigned count)
    {
        m_bits = m_bits << count | bits;
        m_count += count;
        if (m_count >= 32) {
            m_count -= 32;
            store(static_cast<std::uint32_t>(m_bits >> m_count));
        }
    }
    std::uint64_t position() const { return std::uint64_t{m_used} * 8 + m_count; }
    void finish()
    {
        if (m_count > 0)
            store(static_cast<std::uint32_t>(m_bits << (32 - m_count)));
        m_out.resize(m_used);
    }

private:
    void store(std::uint32_t word)
    {
        if (m_used + sizeof(word) > m_out.size())
            m_out.resize(m_out.size() * 2 + 1024);
        word = __builtin_bswap32(word);
        std::memcpy(m_out.data() + m_used, &word, sizeof(word));
        m_used += sizeof(word);
    }
    std::vector<std::byte>& m_out;
    std::size_t m_used = 0;
    std::uint64_t m_bits = 0;
    unsigned m_count = 0;
};

void writeUsedBytes(BitWriter& out, const std::array<bool, 256>& used)
{
    std::uint32_t rows = 0;
    std::array<std::uint32_t, 16> columns{};
    for (std::size_t value = 0; value < used.size(); ++value)
        columns[value / 16] = columns[value / 16] << 1 | (used[value] ? 1 : 0);
    for (const auto column : columns)
        rows = rows << 1 | (column != 0 ? 1 : 0);
    out.put(rows, 16);
    for (const auto column : columns) {
        if (column != 0)
            out.put(column, 16);
    }
}

void writeChoices(BitWriter& out, const Bzip2Tables& tables)
{
    out.put(static_cast<std::uint32_t>(tables.codes), 3);
    out.put(static_cast<std::uint32_t>(tables.choices.size()), 15);
    std::array<std::uint8_t, Bzip2Tables::kMostCodes> order{0, 1, 2, 3, 4, 5};
    for (const auto choice : tables.choices) {
        const auto found = std::find(order.begin(), order.end(), choice);
        const auto place = static_cast<unsigned>(found - order.begin());
        out.put((1U << (place + 1)) - 2, place + 1);
        std::rotate(order.begin(), found, found + 1);
    }
}

void writeLengths(BitWriter& out, const Bzip2Tables::Lengths& lengths, std::size_t count)
{
    unsigned current = lengths[0];
    out.put(current, 5);
    for (std::size_t symbol = 0; symbol < count; ++symbol) {
        for (; current < lengths[symbol]; ++current)
            out.put(2, 2);
        for (; current > lengths[symbol]; --current)
            out.put(3, 2);
        out.put(0, 1);
    }
}

/// Code and length of each symbol; codes of one length follow each other.
struct Code {
    std::uint32_t bits = 0;
    std::uint32_t count = 0;
};
using CodeBook = std::array<Code, Bzip2Symbols::kMost>;

CodeBook assignCodes(const Bzip2Tables::Lengths& lengths, std::size_t count)
{
    CodeBook book{};
    const auto longest = *std::max_element(lengths.begin(), lengths.begin() + static_cast<std::ptrdiff_t>(count));
    std::uint32_t next = 0;
    for (std::uint32_t length = 1; length <= longest; ++length, next <<= 1) {
        for (std::size_t symbol = 0; symbol < count; ++symbol) {
            if (lengths[symbol] == length)
                book[symbol] = {next++, length};
        }
    }
    return book;
}

void writeSymbols(BitWriter& out, const Bzip2Symbols& symbols, const Bzip2Tables& tables)
{
    std::array<CodeBook, Bzip2Tables::kMostCodes> books;
    for (std::size_t code = 0; code < tables.codes; ++code)
        books[code] = assignCodes(tables.lengths[code], symbols.alphabetSize());
    auto rest = symbols.symbols();
    for (const auto choice : tables.choices) {
        const auto& book = books[choice];
        const auto group = rest.first(std::min(rest.size(), Bzip2Tables::kGroup));
        rest = rest.subspan(group.size());
        for (const auto symbol : group)
            out.put(book[symbol].bits, book[symbol].count);
    }
}

}

Bzip2BlockInput::Bzip2BlockInput(unsigned level) : m_bytes(level * kBlockUnit), m_limit(level * kBlockUnit - kSpare) {}

void Bzip2BlockInput::clear()
{
    m_length = 0;
    m_run = 0;
    m_checksum = 0;
}

/// The bytes up to where a run gets its count.
std::size_t Bzip2BlockInput::addPlain(ConstBytes bytes)
{
    const auto most = std::min(bytes.size(), m_limit - m_length);
    auto* const into = m_bytes.data() + m_length;
    std::size_t i = 0;
    while (i < most) {
        if (most - i >= sizeof(std::uint64_t) && differsThroughout(bytes.data() + i, m_last)) {
            std::memcpy(into + i, bytes.data() + i, sizeof(std::uint64_t));
            i += sizeof(std::uint64_t);
            m_last = bytes[i - 1];
            m_run = 1;
            continue;
        }
        m_run = bytes[i] == m_last ? m_run + 1 : 1;
        m_last = into[i] = bytes[i];
        ++i;
        if (m_run == kRunLength) {
            into[i] = std::byte{0};
            ++m_length;
            break;
        }
    }
    m_length += i;
    return i;
}

/// Bytes that go into the count of a run, which is the last byte collected.
std::size_t Bzip2BlockInput::addRun(ConstBytes bytes)
{
    auto repeats = std::to_integer<unsigned>(m_bytes[m_length - 1]);
    std::size_t i = 0;
    for (; i < bytes.size() && bytes[i] == m_last && repeats < kMostRepeats; ++i)
        ++repeats;
    m_bytes[m_length - 1] = std::byte(repeats);
    if (repeats == kMostRepeats)
        m_run = 0; // the next one begins a run of its own
    return i;
}

std::size_t Bzip2BlockInput::add(ConstBytes bytes)
{
    const auto* const begin = bytes.data();
    auto rest = bytes;
    while (!rest.empty() && !isFull())
        rest = rest.subspan(m_run >= kRunLength && rest.front() == m_last ? addRun(rest) : addPlain(rest));
    const auto taken = static_cast<std::size_t>(rest.data() - begin);
    m_checksum = crc32_ieee(m_checksum, reinterpret_cast<const unsigned char*>(begin), taken);
    return taken;
}

Bzip2Bits Bzip2Encoder::encode(Bzip2BlockInput& block)
{
    const auto origin = m_sorter.sort(block.bytes());
    m_symbols.make(block.bytes());
    const auto tables = chooseBzip2Tables(m_symbols);

    Bzip2Bits packed{std::vector<std::byte>(block.bytes().size() / 2), 0, block.checksum()};
    BitWriter out(packed.bytes);
    out.put(static_cast<std::uint32_t>(kBzip2BlockMagic >> 24), 24);
    out.put(static_cast<std::uint32_t>(kBzip2BlockMagic & 0xFFFFFF), 24);
    out.put(packed.checksum, 32);
    out.put(0, 1); // not randomised
    out.put(origin, 24);
    writeUsedBytes(out, m_symbols.usedBytes());
    writeChoices(out, tables);
    for (std::size_t code = 0; code < tables.codes; ++code)
        writeLengths(out, tables.lengths[code], m_symbols.alphabetSize());
    writeSymbols(out, m_symbols, tables);
    packed.count = out.position();
    out.finish();
    return packed;
}

Bzip2File::Bzip2File(unsigned level)
{
    for (const auto character : {'B', 'Z', 'h', static_cast<char>('0' + level)})
        put(static_cast<unsigned char>(character), 8);
}

void Bzip2File::add(const Bzip2Bits& block)
{
    m_checksum = std::rotl(m_checksum, 1) ^ block.checksum;
    const auto whole = static_cast<std::size_t>(block.count / 8);
    const auto rest = static_cast<unsigned>(block.count % 8);
    m_bytes.reserve(m_bytes.size() + whole + 1);
    for (const auto byte : ConstBytes(block.bytes).first(whole))
        put(std::to_integer<std::uint32_t>(byte), 8);
    if (rest > 0)
        put(std::to_integer<std::uint32_t>(block.bytes[whole]) >> (8 - rest), rest);
}

void Bzip2File::end()
{
    put(static_cast<std::uint32_t>(kBzip2EndMagic >> 24), 24);
    put(static_cast<std::uint32_t>(kBzip2EndMagic & 0xFFFFFF), 24);
    put(m_checksum, 32);
    if (m_openCount > 0)
        put(0, 8 - m_openCount);
}

std::vector<std::byte> Bzip2File::take() { return std::exchange(m_bytes, {}); }

/// At most 32 bits.
void Bzip2File::put(std::uint32_t bits, unsigned count)
{
    m_open = m_open << count | bits;
    m_openCount += count;
    for (; m_openCount >= 8; m_openCount -= 8)
        m_bytes.push_back(static_cast<std::byte>(m_open >> (m_openCount - 8) & 0xFF));
}

}
