#include "engine/codecs/bzip2_block.h"

#include <algorithm>
#include <bit>

namespace vantoro {

std::uint64_t bitsAt(ConstBytes bytes, std::uint64_t bit, unsigned count)
{
    std::uint64_t value = 0;
    const auto first = static_cast<std::size_t>(bit / 8);
    for (std::size_t i = first; i < first + 7; ++i)
        value = value << 8 | (i < bytes.size() ? std::to_integer<std::uint64_t>(bytes[i]) : 0);
    return value >> (56 - bit % 8 - count) & ((std::uint64_t{1} << count) - 1);
}

namespace {

constexpr unsigned kGroup = 50; // symbols that share a code
constexpr unsigned kMostCodes = 6;
constexpr unsigned kMostSymbols = 258;
constexpr unsigned kLongestCode = 20;
constexpr std::size_t kLargestBlock = 900'000;
constexpr unsigned kRunA = 0;
constexpr unsigned kRunB = 1;

/// Bits in memory, first bit highest. Past the end it gives zeros; overrun() tells.
class BitInput {
public:
    BitInput(ConstBytes bytes, std::uint64_t bit) : m_bytes(bytes), m_next(static_cast<std::size_t>(bit / 8))
    {
        refill();
        drop(static_cast<unsigned>(bit % 8));
    }
    /// At least 56 bits are there afterwards.
    void refill()
    {
        if (m_next + 8 <= m_bytes.size()) [[likely]] {
            std::uint64_t word;
            std::memcpy(&word, m_bytes.data() + m_next, sizeof word);
            if constexpr (std::endian::native == std::endian::little)
                word = __builtin_bswap64(word);
            m_bits |= word >> m_count;
            m_next += (63 - m_count) >> 3;
            m_count |= 56;
            return;
        }
        for (; m_count <= 56; m_count += 8, ++m_next) {
            const auto byte = m_next < m_bytes.size() ? std::to_integer<std::uint64_t>(m_bytes[m_next]) : 0;
            m_bits |= byte << (56 - m_count);
        }
    }
    /// What is there, the next bit highest.
    std::uint64_t bits() const { return m_bits; }
    void drop(unsigned count)
    {
        m_bits <<= count;
        m_count -= count;
    }
    unsigned take(unsigned count) // 1 to 24
    {
        refill();
        const auto value = static_cast<unsigned>(m_bits >> (64 - count));
        drop(count);
        return value;
    }
    std::uint64_t position() const { return std::uint64_t{m_next} * 8 - m_count; }
    bool overrun() const { return position() > std::uint64_t{m_bytes.size()} * 8; }

private:
    ConstBytes m_bytes;
    std::size_t m_next;
    std::uint64_t m_bits = 0;
    unsigned m_count = 0;
};

/// Canonical Huffman code: short codes by one look into a table, the others by comparing with each length's limit.
class HuffmanCode {
public:
    void build(std::span<const std::uint8_t> lengths)
    {
        std::array<unsigned, kLongestCode + 2> counts{};
        for (const auto length : lengths)
            ++counts[length];
        std::array<unsigned, kLongestCode + 2> starts{};
        std::uint32_t code = 0;
        unsigned rank = 0;
        for (unsigned length = 1; length <= kLongestCode; ++length) {
            starts[length] = rank;
            m_offsets[length] = static_cast<std::int32_t>(rank) - static_cast<std::int32_t>(code);
            code += counts[length];
            rank += counts[length];
            // Compared with 20 bits of input; an overfull code passes 2^20 and then catches every input.
            m_limits[length] = static_cast<std::uint64_t>(code) << (kLongestCode - length);
            code <<= 1;
        }
        m_symbolCount = rank;
        for (unsigned symbol = 0; symbol < lengths.size(); ++symbol)
            m_symbols[starts[lengths[symbol]]++] = static_cast<std::uint16_t>(symbol);
        fillTable();
    }

    static constexpr unsigned kNone = 0xFFFF;
    unsigned decode(BitInput& in) const
    {
        const auto entry = m_table[static_cast<std::size_t>(in.bits() >> (64 - kTableBits))];
        if (entry != 0) [[likely]] {
            in.drop(entry & 0x1F);
            return entry >> 5;
        }
        return decodeSlowly(in);
    }

private:
    static constexpr unsigned kTableBits = 10;
    void fillTable()
    {
        for (unsigned index = 0; index < m_table.size(); ++index) {
            const auto window = std::uint64_t{index} << (kLongestCode - kTableBits);
            m_table[index] = 0;
            for (unsigned length = 1; length <= kTableBits; ++length) {
                if (window >= m_limits[length])
                    continue;
                const auto symbol = symbolFor(window, length);
                if (symbol != kNone)
                    m_table[index] = static_cast<std::uint16_t>(symbol << 5 | length);
                break;
            }
        }
    }
    unsigned symbolFor(std::uint64_t window, unsigned length) const
    {
        const auto index = static_cast<std::int32_t>(window >> (kLongestCode - length)) + m_offsets[length];
        return index >= 0 && static_cast<unsigned>(index) < m_symbolCount ? m_symbols[static_cast<unsigned>(index)]
                                                                          : kNone;
    }
    unsigned decodeSlowly(BitInput& in) const
    {
        const auto window = in.bits() >> (64 - kLongestCode);
        for (unsigned length = 1; length <= kLongestCode; ++length) {
            if (window < m_limits[length]) {
                in.drop(length);
                return symbolFor(window, length);
            }
        }
        return kNone;
    }

    std::array<std::uint64_t, kLongestCode + 1> m_limits{};
    std::array<std::int32_t, kLongestCode + 1> m_offsets{};
    std::array<std::uint16_t, kMostSymbols> m_symbols{};
    std::array<std::uint16_t, 1U << kTableBits> m_table{}; // symbol << 5 | length; 0: a longer code, or none
    unsigned m_symbolCount = 0;
};

class MoveToFront {
public:
    std::uint8_t& operator[](std::size_t index) { return m_order[index]; }
    std::uint8_t front() const { return m_order[0]; }
    std::uint8_t pull(unsigned index)
    {
        const auto value = m_order[index];
        if (index < 8) {
            std::uint64_t word;
            std::memcpy(&word, m_order.data(), sizeof word);
            const auto mask = ~std::uint64_t{0} >> (56 - 8 * index);
            word = (((word << 8) | value) & mask) | (word & ~mask);
            std::memcpy(m_order.data(), &word, sizeof word);
        } else {
            std::memmove(m_order.data() + 1, m_order.data(), index);
            m_order[0] = value;
        }
        return value;
    }

private:
    static_assert(std::endian::native == std::endian::little, "pull() moves bytes inside a word");
    std::array<std::uint8_t, 256> m_order{};
};

}

/// The entropy-coded part of a block, in the order in which it is stored.
class Bzip2BlockParser {
public:
    Bzip2BlockParser(ConstBytes packed, std::uint64_t bit, Bzip2Block& block) : m_in(packed, bit), m_block(block) {}

    Result<std::uint64_t> parse()
    {
        const auto outcome = parseAll();
        if (m_in.overrun())
            return Error{ErrorCode::Truncated, "bzip2: the input ends inside a block"};
        if (!outcome)
            return outcome.error();
        return m_in.position();
    }

private:
    Result<void> parseAll()
    {
        const std::uint64_t magic = std::uint64_t{m_in.take(24)} << 24 | m_in.take(24);
        if (magic != kBzip2BlockMagic)
            return Error{ErrorCode::Corrupt, "bzip2: no block where one should begin"};
        m_block.m_checksum = m_in.take(16) << 16;
        m_block.m_checksum |= m_in.take(16);
        m_block.m_isRandomised = m_in.take(1) != 0;
        m_block.m_origin = m_in.take(24);
        TRY(readBytesInUse());
        TRY(readSelectors());
        TRY(readCodes());
        TRY(readSymbols());
        if (m_block.m_origin >= m_block.m_length)
            return Error{ErrorCode::Corrupt, "bzip2: origin outside the block"};
        return {};
    }

    Result<void> readBytesInUse()
    {
        const auto rows = m_in.take(16);
        for (unsigned row = 0; row < 16; ++row) {
            if ((rows >> (15 - row) & 1) == 0)
                continue;
            const auto columns = m_in.take(16);
            for (unsigned column = 0; column < 16; ++column) {
                if ((columns >> (15 - column) & 1) != 0)
                    m_order[m_bytesInUse++] = static_cast<std::uint8_t>(row * 16 + column);
            }
        }
        if (m_bytesInUse == 0)
            return Error{ErrorCode::Corrupt, "bzip2: no byte in use"};
        return {};
    }

    Result<void> readSelectors()
    {
        m_codeCount = m_in.take(3);
        const auto count = m_in.take(15);
        if (m_codeCount < 2 || m_codeCount > kMostCodes || count == 0)
            return Error{ErrorCode::Corrupt, "bzip2: number of codes"};
        std::array<std::uint8_t, kMostCodes> order{0, 1, 2, 3, 4, 5};
        m_selectors.resize(count);
        for (auto& selector : m_selectors) {
            unsigned index = 0;
            while (m_in.take(1) != 0) {
                if (++index == m_codeCount)
                    return Error{ErrorCode::Corrupt, "bzip2: selector"};
            }
            std::rotate(order.begin(), order.begin() + index, order.begin() + index + 1);
            selector = order[0];
        }
        return {};
    }

    Result<void> readCodes()
    {
        const auto symbols = m_bytesInUse + 2;
        std::array<std::uint8_t, kMostSymbols> lengths{};
        for (unsigned code = 0; code < m_codeCount; ++code) {
            auto length = m_in.take(5);
            for (unsigned symbol = 0; symbol < symbols; ++symbol) {
                for (;;) {
                    if (length < 1 || length > kLongestCode)
                        return Error{ErrorCode::Corrupt, "bzip2: length of a code"};
                    if (m_in.take(1) == 0)
                        break;
                    length = m_in.take(1) == 0 ? length + 1 : length - 1;
                }
                lengths[symbol] = static_cast<std::uint8_t>(length);
            }
            m_codes[code].build(std::span(lengths).first(symbols));
        }
        return {};
    }

    Result<void> readSymbols()
    {
        m_block.m_links.resize(kLargestBlock + 1);
        m_block.m_bytes.resize(kLargestBlock);
        m_block.m_counts.fill(0);
        auto* const links = m_block.m_links.data();
        const unsigned endSymbol = m_bytesInUse + 1;
        std::size_t length = 0;
        std::size_t run = 0; // of the byte in front, digits so far
        unsigned runBit = 0;
        for (const auto selector : m_selectors) {
            const auto& code = m_codes[selector];
            for (unsigned i = 0; i < kGroup; ++i) {
                m_in.refill();
                const auto symbol = code.decode(m_in);
                if (symbol <= kRunB) {
                    if (runBit > 20)
                        return Error{ErrorCode::Corrupt, "bzip2: run too long"};
                    run += std::size_t{symbol == kRunA ? 1U : 2U} << runBit++;
                    continue;
                }
                if (run > 0) {
                    if (run > kLargestBlock - length)
                        return Error{ErrorCode::Corrupt, "bzip2: block too long"};
                    const auto byte = m_order.front();
                    m_block.m_counts[byte] += static_cast<std::uint32_t>(run);
                    std::fill_n(links + length, run, byte);
                    length += run;
                    run = 0;
                    runBit = 0;
                }
                if (symbol >= endSymbol) {
                    m_block.m_length = length;
                    if (symbol != endSymbol)
                        return Error{ErrorCode::Corrupt, "bzip2: invalid code"};
                    return {};
                }
                if (length == kLargestBlock)
                    return Error{ErrorCode::Corrupt, "bzip2: block too long"};
                const auto byte = m_order.pull(symbol - 1);
                ++m_block.m_counts[byte];
                links[length++] = byte;
            }
            if (m_in.overrun())
                break;
        }
        return Error{ErrorCode::Corrupt, "bzip2: no end of the block"};
    }

    BitInput m_in;
    Bzip2Block& m_block;
    MoveToFront m_order;
    unsigned m_bytesInUse = 0;
    unsigned m_codeCount = 0;
    std::vector<std::uint8_t> m_selectors;
    std::array<HuffmanCode, kMostCodes> m_codes;
};

Result<std::uint64_t> Bzip2Block::parse(ConstBytes packed, std::uint64_t bit)
{
    m_length = 0;
    return Bzip2BlockParser(packed, bit, *this).parse();
}

}
