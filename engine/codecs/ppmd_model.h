#pragma once

#include "engine/codecs/ppmd_arena.h"

namespace vantoro {

/// The context model of PPMd, in its variants H and I. What is decoded next depends on every count in it, so all sums
/// wrap as they always did: 16 bits for sums, 8 for frequencies.
///
/// Layout in the arena, common to both:
///   context  u16 number of states (I: u8 number - 1, u8 flags); u16 sum; u32 states; u32 suffix
///   state    u8 symbol; u8 frequency; u32 successor; the only state of a context lies over its sum and states
/// A successor is 0, an address in the text (what follows there is not a context yet) or a context.
template <PpmdParams::Variant variant> class PpmdModel {
public:
    using Arena = PpmdArena<variant>;
    using Address = typename Arena::Address;

    Result<void> reserve(const PpmdParams& params);
    void restart(unsigned order);

    template <class Coder> int decode(Coder& coder);

private:
    static constexpr bool kIsI = Arena::kIsI;
    static constexpr unsigned kMaxFrequency = 124, kBinaryBits = 14, kPeriodBits = 7;
    static constexpr std::uint32_t kStateSize = 6;
    static constexpr unsigned kBinaryRows = kIsI ? 25 : 128;
    static constexpr unsigned kSeeRows = kIsI ? 24 : 25, kSeeColumns = kIsI ? 32 : 16;

    /// Estimates how likely an escape is; adapts its own speed.
    struct See {
        std::uint16_t sum = 0;
        std::uint8_t shift = 0, count = 0;
    };

    // Fields of contexts and states.
    unsigned count(Address c) const { return kIsI ? m_arena.u8(c) + 1U : m_arena.u16(c); }
    void setCount(Address c, unsigned n)
    {
        if constexpr (kIsI)
            m_arena.setU8(c, n - 1);
        else
            m_arena.setU16(c, n);
    }
    unsigned flags(Address c) const { return m_arena.u8(c + 1); }
    void setFlags(Address c, unsigned value) { m_arena.setU8(c + 1, value); }
    unsigned sum(Address c) const { return m_arena.u16(c + 2); }
    void setSum(Address c, unsigned value) { m_arena.setU16(c + 2, value); }
    Address states(Address c) const { return m_arena.u32(c + 4); }
    void setStates(Address c, Address s) { m_arena.setU32(c + 4, s); }
    Address suffix(Address c) const { return m_arena.u32(c + 8); }
    void setSuffix(Address c, Address s) { m_arena.setU32(c + 8, s); }
    static Address onlyState(Address c) { return c + 2; }
    unsigned symbol(Address s) const { return m_arena.u8(s); }
    unsigned frequency(Address s) const { return m_arena.u8(s + 1); }
    void setFrequency(Address s, unsigned value) { m_arena.setU8(s + 1, value); }
    Address successor(Address s) const { return m_arena.u32(s + 2); }
    void setSuccessor(Address s, Address value) { m_arena.setU32(s + 2, value); }
    void setState(Address s, unsigned sym, unsigned freq, Address succ)
    {
        m_arena.setU8(s, sym);
        m_arena.setU8(s + 1, freq);
        m_arena.setU32(s + 2, succ);
    }
    void copyState(Address to, Address from) { m_arena.move(to, from, kStateSize); }
    void swapStates(Address a, Address b);
    static unsigned isHigh(unsigned sym) { return sym >= 64 ? 1 : 0; }
    /// The state of `c` for `sym`, which every suffix of a context that knows it has; 0 guards against a broken model.
    Address find(Address c, unsigned sym) const;

    void initTables();
    void clearMask();
    void mask(Address firstState, unsigned n);

    template <class Coder> int decodeBinary(Coder& coder);
    template <class Coder> int decodeFirst(Coder& coder);
    template <class Coder> int decodeEscaped(Coder& coder);
    std::uint16_t& binarySlot(Address state);
    See& seeSlot(unsigned n, unsigned masked);
    void raise(Address state);
    /// After a symbol: on to the context it leads to, which may have to be made first.
    void next()
    {
        const auto succ = successor(m_found);
        if (m_orderFall == 0 && (kIsI ? succ >= m_arena.unitsStart : succ > m_arena.text))
            m_minContext = m_maxContext = succ;
        else
            update();
    }
    void rescale();
    void collapse(Address c, unsigned oldCount, unsigned escape);
    unsigned highFlag(Address firstState, unsigned n) const;

    void update();
    Address raiseInSuffix(unsigned sym);
    bool updateH(Address fs);
    void updateI(Address fs);
    bool grow(Address c, unsigned oldCount);
    bool addStates(Address first, Address fs, unsigned freq, std::uint32_t rest, unsigned minCount,
                   Address newSuccessor);
    void append(Address c, unsigned sym, unsigned freq, std::uint32_t rest, Address newSuccessor);
    Address createSuccessors(bool skipFound, Address given, Address c);
    unsigned inheritedFrequency(Address c, unsigned sym) const;
    Address reduceOrder(Address given, Address c);
    void restore(Address upTo);
    void refresh(Address c, std::uint32_t oldUnits, unsigned scale);
    Address cutOff(Address c, unsigned order);

    Arena m_arena;
    bool m_cutsOff = false;
    unsigned m_maxOrder = 0;
    Address m_minContext = 0, m_maxContext = 0, m_found = 0;
    unsigned m_orderFall = 0, m_initEscape = 0, m_prevSuccess = 0, m_hiBits = 0;
    int m_runLength = 0, m_initRunLength = 0;
    std::array<std::uint8_t, 256> m_binaryColumn{}; // by the number of states of the suffix
    std::array<std::uint8_t, 260> m_quant{};
    std::array<std::array<std::uint16_t, 64>, kBinaryRows> m_binary{};
    std::array<std::array<See, kSeeColumns>, kSeeRows> m_see{};
    See m_noSee;
    std::array<std::uint8_t, 256> m_masked{}; // equal to m_maskStamp: masked
    std::uint8_t m_maskStamp = 0;
};

}
