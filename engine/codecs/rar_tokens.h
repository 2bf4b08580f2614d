#pragma once

#include "engine/codecs/prefix_code.h"

namespace vantoro {

/// What a prefix code's symbol stands for, in one word whose lowest four bits hold the length of its code. 0 stands for
/// no symbol at all.
using RarWord = std::uint32_t;

/// A prefix code that gives words instead of symbols: what a loop needs to know comes with one look.
template <unsigned bits> class RarWordCode {
public:
    /// `words`: one a symbol, their lowest four bits 0; they outlive this.
    Result<void> build(std::span<const std::uint8_t> lengths, std::span<const RarWord> words)
    {
        m_words = words;
        TRY(m_code.build(lengths));
        for (std::size_t i = 0; i < m_quick.size();) {
            MsbBits start{nullptr, std::uint64_t{i} << (64 - bits), 64};
            const auto word = decodeOne(start);
            const auto length = 64 - start.count;
            const auto isShort = length > 0 && length <= bits;
            const auto count = isShort ? std::size_t{1} << (bits - length) : 1;
            std::fill_n(m_quick.begin() + static_cast<std::ptrdiff_t>(i), count, isShort ? word | length : 0);
            i += count;
        }
        return {};
    }
    /// Needs `bits` bits in the window and fills it; 0 for a code that was not given.
    RarWord fillAndDecode(MsbBits& in) const
    {
        const auto word = m_quick[in.window >> (64 - bits)]; // need not wait for the filling
        in.fill();
        if (word == 0) [[unlikely]]
            return decodeOne(in);
        in.skip(word & 15);
        return word;
    }
    /// Needs 15 bits.
    RarWord decodeOne(MsbBits& in) const
    {
        const auto symbol = m_code.decode(in);
        return symbol < m_words.size() ? m_words[symbol] : 0;
    }

protected:
    std::array<RarWord, std::size_t{1} << bits> m_quick{}; // 0: longer, or not given

private:
    PrefixCode m_code;
    std::span<const RarWord> m_words;
};

/// A word of the main code: one or two literals, or something else.
class RarToken {
public:
    enum class Kind : std::uint8_t {
        None, ///< a code that was not given
        Match,
        Short, ///< a match of two bytes
        Older, ///< a match at one of the last distances
        Again, ///< the last match once more
        BlockEnd,
        Filter
    };

    constexpr RarToken(RarWord word = 0) : m_word(word) {}
    static constexpr RarToken literal(std::uint8_t value) { return RarToken(1U << 4 | unsigned{value} << 8); }
    /// `base`: of a length or a distance to which `extra` bits are added, or the number of an older distance.
    static constexpr RarToken other(Kind kind, std::uint32_t base = 0, unsigned extra = 0)
    {
        return RarToken(extra << 8 | static_cast<unsigned>(kind) << 12 | base << 16);
    }
    constexpr RarWord word() const { return m_word; }

    unsigned codeLength() const { return m_word & 15; }
    unsigned literals() const { return m_word >> 4 & 3; }
    std::uint8_t first() const { return static_cast<std::uint8_t>(m_word >> 8); }
    std::uint8_t second() const { return static_cast<std::uint8_t>(m_word >> 16); }

    Kind kind() const { return static_cast<Kind>(m_word >> 12 & 15); } ///< when there are no literals
    unsigned extra() const { return m_word >> 8 & 15; }
    std::uint32_t base() const { return m_word >> 16; }

private:
    RarWord m_word;
};

/// The main code: where two literals fit into one look, they come together.
class RarTokenCode : public RarWordCode<11> {
public:
    Result<void> build(std::span<const std::uint8_t> lengths, std::span<const RarWord> words);
    RarToken fillAndDecode(MsbBits& in) const { return RarWordCode::fillAndDecode(in); }
    /// Never two at once.
    RarToken decodeOne(MsbBits& in) const { return RarWordCode::decodeOne(in); }
};

/// A word of the distance code: the least distance of a slot and how many bits are added.
struct RarDistanceWord {
    static constexpr RarWord make(std::uint32_t least, unsigned extra) { return extra << 4 | least << 9; }
    static unsigned extra(RarWord word) { return word >> 4 & 31; }
    static std::uint32_t least(RarWord word) { return word >> 9; }
};

}
