#include "engine/codecs/ppmd_model.h"

#include <algorithm>

namespace vantoro {

namespace {
constexpr std::array<std::uint16_t, 8> kInitialBinary
    = {0x3CDD, 0x1F3F, 0x59BF, 0x48F3, 0x64A1, 0x5ABC, 0x6632, 0x6051};
constexpr unsigned kMaxDepth = 64;
}

template <PpmdParams::Variant variant> Result<void> PpmdModel<variant>::reserve(const PpmdParams& params)
{
    constexpr std::uint32_t kLeast = 1 << 11, kMost = 0xFFFFFFFF - 12 * 3;
    if (params.order < 2 || params.order > kMaxDepth || params.memory < kLeast || params.memory > kMost)
        return Error{ErrorCode::Corrupt, "ppmd: order or memory out of bounds"};
    if (!m_arena.reserve(params.memory))
        return Error{ErrorCode::OutOfMemory, "ppmd: model memory"};
    m_cutsOff = params.restore == PpmdParams::Restore::CutOff;
    initTables();
    restart(params.order);
    return {};
}

template <PpmdParams::Variant variant> void PpmdModel<variant>::initTables()
{
    m_binaryColumn.fill(6);
    m_binaryColumn[0] = 0;
    m_binaryColumn[1] = 2;
    std::fill(m_binaryColumn.begin() + 2, m_binaryColumn.begin() + 11, std::uint8_t{4});
    constexpr unsigned kPlain = kIsI ? 5 : 3;
    unsigned value = 0, run = 1;
    for (unsigned i = 0; i < m_quant.size(); ++i) {
        m_quant[i] = static_cast<std::uint8_t>(value);
        if (i < kPlain) {
            ++value;
        } else if (--run == 0) {
            ++value;
            run = value - (kPlain - 1);
        }
    }
}

template <PpmdParams::Variant variant> void PpmdModel<variant>::restart(unsigned order)
{
    m_maxOrder = std::clamp(order, 2U, kMaxDepth);
    m_arena.reset();
    clearMask();
    m_orderFall = m_maxOrder;
    m_runLength = m_initRunLength = -static_cast<int>(std::min(m_maxOrder, 12U)) - 1;
    m_prevSuccess = 0;
    const auto root = m_arena.allocContext();
    const auto first = m_arena.allocUnits(256 / 2);
    m_minContext = m_maxContext = root;
    m_found = first;
    setCount(root, 256);
    if constexpr (kIsI)
        setFlags(root, 0);
    setSum(root, 257);
    setStates(root, first);
    setSuffix(root, 0);
    for (unsigned i = 0; i < 256; ++i)
        setState(first + i * kStateSize, i, 1, 0);

    unsigned step = 0;
    for (unsigned row = 0; row < kBinaryRows; ++row) {
        if constexpr (kIsI) {
            while (m_quant[step] == row)
                ++step;
        }
        const unsigned divisor = kIsI ? step + 1 : row + 2;
        for (unsigned k = 0; k < 64; ++k)
            m_binary[row][k] = static_cast<std::uint16_t>((1U << kBinaryBits) - kInitialBinary[k & 7] / divisor);
    }
    step = 0;
    for (unsigned row = 0; row < kSeeRows; ++row) {
        if constexpr (kIsI) {
            while (m_quant[step + 3] == row + 3)
                ++step;
        }
        const unsigned weight = kIsI ? 2 * step + 5 : 5 * row + 10;
        m_see[row].fill({static_cast<std::uint16_t>(weight << (kPeriodBits - 4)), kPeriodBits - 4, kIsI ? 7 : 4});
    }
}

template <PpmdParams::Variant variant> void PpmdModel<variant>::clearMask()
{
    if (++m_maskStamp == 0) {
        m_masked.fill(0);
        m_maskStamp = 1;
    }
}

template <PpmdParams::Variant variant> void PpmdModel<variant>::swapStates(Address a, Address b)
{
    const auto sym = symbol(a), freq = frequency(a);
    const auto succ = successor(a);
    copyState(a, b);
    setState(b, sym, freq, succ);
}

template <PpmdParams::Variant variant> auto PpmdModel<variant>::find(Address c, unsigned sym) const -> Address
{
    auto s = states(c);
    for (auto left = count(c); left > 0; --left, s += kStateSize) {
        if (symbol(s) == sym)
            return s;
    }
    return states(c); // cannot happen: a suffix knows all symbols of its context
}

/// Halves the counts of the context around the state found, so that it keeps adapting.
template <PpmdParams::Variant variant> void PpmdModel<variant>::rescale()
{
    const auto c = m_minContext;
    const auto first = states(c);
    const auto n = count(c);
    {
        const auto sym = symbol(m_found), freq = frequency(m_found);
        const auto succ = successor(m_found);
        m_arena.move(first + kStateSize, first, m_found - first);
        setState(first, sym, freq, succ);
    }
    const unsigned rounding = m_orderFall != 0 ? 1 : 0;
    auto escape = sum(c) - frequency(first);
    setFrequency(first, (frequency(first) + 4 + rounding) >> 1);
    auto total = frequency(first);
    for (unsigned i = 1; i < n; ++i) {
        const auto s = first + i * kStateSize;
        escape -= frequency(s);
        const auto freq = (frequency(s) + rounding) >> 1;
        setFrequency(s, freq);
        total += freq;
        if (freq <= frequency(s - kStateSize))
            continue;
        const auto sym = symbol(s);
        const auto succ = successor(s);
        auto to = s;
        do
            to -= kStateSize;
        while (to != first && freq > frequency(to - kStateSize));
        m_arena.move(to + kStateSize, to, s - to);
        setState(to, sym, freq, succ);
    }
    auto left = n;
    while (left > 1 && frequency(first + (left - 1) * kStateSize) == 0)
        --left;
    if (left != n) {
        escape += n - left;
        setCount(c, left);
        if (left == 1) {
            collapse(c, n, escape);
            return;
        }
        const auto oldUnits = (n + 1) / 2, newUnits = (left + 1) / 2;
        if (oldUnits != newUnits)
            setStates(c, m_arena.shrink(first, oldUnits, newUnits));
        if constexpr (kIsI)
            setFlags(c, (flags(c) & ~0x08U) | highFlag(states(c), left));
    }
    setSum(c, total + escape - (escape >> 1));
    if constexpr (kIsI)
        setFlags(c, flags(c) | 4);
    m_found = states(c);
}

/// One state is left: it moves into the context.
template <PpmdParams::Variant variant> void PpmdModel<variant>::collapse(Address c, unsigned oldCount, unsigned escape)
{
    const auto first = states(c);
    const auto sym = symbol(first);
    const auto succ = successor(first);
    auto freq = frequency(first);
    if constexpr (kIsI) {
        freq = std::min((2 * freq + escape - 1) / std::max(escape, 1U), kMaxFrequency / 3);
        setFlags(c, (flags(c) & 0x10) + 8 * isHigh(sym));
    } else {
        do {
            freq -= freq >> 1;
            escape >>= 1;
        } while (escape > 1);
    }
    m_arena.freeUnits(first, (oldCount + 1) / 2);
    m_found = onlyState(c);
    setState(m_found, sym, freq, succ);
}

template <PpmdParams::Variant variant> unsigned PpmdModel<variant>::highFlag(Address firstState, unsigned n) const
{
    for (unsigned i = 0; i < n; ++i) {
        if (isHigh(symbol(firstState + i * kStateSize)) != 0)
            return 8;
    }
    return 0;
}

template <PpmdParams::Variant variant> void PpmdModel<variant>::update()
{
    if constexpr (kIsI) {
        updateI(m_found);
        m_minContext = m_maxContext;
    } else if (!updateH(m_found)) {
        restart(m_maxOrder);
    }
}

/// The symbol's count in the suffix goes up too; returns its state there.
template <PpmdParams::Variant variant> auto PpmdModel<variant>::raiseInSuffix(unsigned sym) -> Address
{
    const auto c = suffix(m_minContext);
    if (count(c) == 1) {
        const auto s = onlyState(c);
        if (frequency(s) < 32)
            setFrequency(s, frequency(s) + 1);
        return s;
    }
    auto s = find(c, sym);
    if (s != states(c) && frequency(s) >= frequency(s - kStateSize)) {
        swapStates(s, s - kStateSize);
        s -= kStateSize;
    }
    if (frequency(s) < kMaxFrequency - 9) {
        setFrequency(s, frequency(s) + 2);
        setSum(c, sum(c) + 2);
    }
    return s;
}

/// False: out of memory, start again.
template <PpmdParams::Variant variant> bool PpmdModel<variant>::updateH(Address fs)
{
    const auto sym = symbol(fs);
    auto succ = successor(fs);
    if (frequency(fs) < kMaxFrequency / 4 && suffix(m_minContext) != 0)
        raiseInSuffix(sym);
    if (m_orderFall == 0) {
        const auto c = createSuccessors(true, 0, m_minContext);
        if (c == 0)
            return false;
        setSuccessor(fs, c);
        m_minContext = m_maxContext = c;
        return true;
    }
    m_arena.setU8(m_arena.text++, sym);
    auto newSuccessor = m_arena.text;
    if (m_arena.text >= m_arena.unitsStart)
        return false;
    if (succ != 0) {
        if (succ <= newSuccessor) {
            succ = createSuccessors(false, 0, m_minContext);
            if (succ == 0)
                return false;
        }
        if (--m_orderFall == 0) {
            newSuccessor = succ;
            m_arena.text -= m_maxContext != m_minContext ? 1 : 0;
        }
    } else {
        setSuccessor(fs, newSuccessor);
        succ = m_minContext;
    }
    const auto n = count(m_minContext);
    const std::uint32_t rest = sum(m_minContext) - n - (frequency(fs) - 1);
    if (!addStates(m_maxContext, fs, frequency(fs), rest, n, newSuccessor))
        return false;
    m_maxContext = m_minContext = succ;
    return true;
}

template <PpmdParams::Variant variant> void PpmdModel<variant>::updateI(Address fs)
{
    const auto sym = symbol(fs), freq = frequency(fs);
    auto succ = successor(fs);
    Address given = 0;
    if (freq < kMaxFrequency / 4 && suffix(m_minContext) != 0)
        given = raiseInSuffix(sym);
    const auto top = m_maxContext;
    if (m_orderFall == 0 && succ != 0) {
        const auto c = createSuccessors(true, given, m_minContext);
        setSuccessor(fs, c);
        if (c == 0)
            restore(top);
        else
            m_maxContext = c;
        return;
    }
    m_arena.setU8(m_arena.text++, sym);
    auto newSuccessor = m_arena.text;
    if (m_arena.text >= m_arena.unitsStart) {
        restore(top);
        return;
    }
    if (succ == 0)
        succ = reduceOrder(given, m_minContext);
    else if (succ < m_arena.unitsStart)
        succ = createSuccessors(false, given, m_minContext);
    if (succ == 0) {
        restore(top);
        return;
    }
    if (--m_orderFall == 0) {
        newSuccessor = succ;
        m_arena.text -= m_maxContext != m_minContext ? 1 : 0;
    }
    const auto n = count(m_minContext) - 1;
    const std::uint32_t rest = sum(m_minContext) - n - freq;
    if (addStates(top, fs, freq, rest, n, newSuccessor))
        m_maxContext = m_minContext = succ;
}

/// The symbol enters all contexts from the longest down to the one where it was found. `minCount` and `rest` describe
/// that one: its states, and the weight of its other symbols.
template <PpmdParams::Variant variant>
bool PpmdModel<variant>::addStates(Address first, Address fs, unsigned freq, std::uint32_t rest, unsigned minCount,
                                   Address newSuccessor)
{
    const auto sym = symbol(fs);
    for (auto c = first; c != m_minContext; c = suffix(c)) {
        const auto n = count(c);
        if (!grow(c, n)) {
            if constexpr (kIsI)
                restore(c);
            return false;
        }
        if (n == 1) {
            const auto only = states(c);
            const auto was = frequency(only);
            const auto doubled = was < kMaxFrequency / 4 - 1 ? 2 * was : kMaxFrequency - 4;
            setFrequency(only, doubled);
            setSum(c, doubled + m_initEscape + (minCount > (kIsI ? 2U : 3U) ? 1U : 0U));
        } else if constexpr (kIsI) {
            setSum(c, sum(c) + (3 * (n - 1) + 1 < minCount ? 1U : 0U));
        } else {
            const bool isSparse = 4 * n <= minCount && sum(c) <= 8 * n;
            setSum(c, sum(c) + (2 * n < minCount ? 1U : 0U) + (isSparse ? 2U : 0U));
        }
        append(c, sym, freq, rest, newSuccessor);
    }
    return true;
}

/// Room for one more state.
template <PpmdParams::Variant variant> bool PpmdModel<variant>::grow(Address c, unsigned oldCount)
{
    if (oldCount == 1) {
        const auto block = m_arena.allocClass(0);
        if (block == 0)
            return false;
        copyState(block, onlyState(c));
        setStates(c, block);
        return true;
    }
    if (oldCount % 2 != 0)
        return true;
    const auto units = oldCount / 2;
    const auto cls = Arena::classOf(units);
    if (cls == Arena::classOf(units + 1))
        return true;
    const auto block = m_arena.allocClass(cls + 1);
    if (block == 0)
        return false;
    const auto old = states(c);
    m_arena.move(block, old, std::size_t{units} * Arena::kUnit);
    m_arena.freeClass(old, cls);
    setStates(c, block);
    return true;
}

template <PpmdParams::Variant variant>
void PpmdModel<variant>::append(Address c, unsigned sym, unsigned freq, std::uint32_t rest, Address newSuccessor)
{
    const auto was = sum(c);
    const std::uint32_t share = 2 * freq * (was + 6);
    const std::uint32_t scale = rest + was;
    unsigned given;
    if (share < 6 * scale) {
        given = 1 + (share > scale ? 1U : 0U) + (share >= 4 * scale ? 1U : 0U);
        setSum(c, was + (kIsI ? 4 : 3));
    } else {
        const auto reaches = [&](unsigned times) { return kIsI ? share > times * scale : share >= times * scale; };
        given = 4 + (reaches(9) ? 1U : 0U) + (reaches(12) ? 1U : 0U) + (reaches(15) ? 1U : 0U);
        setSum(c, was + given);
    }
    const auto n = count(c);
    setState(states(c) + n * kStateSize, sym, given, newSuccessor);
    if constexpr (kIsI)
        setFlags(c, flags(c) | 8 * isHigh(sym));
    setCount(c, n + 1);
}

/// Makes the contexts that the text address in the found state stands for, one for each order down to the first that
/// exists; returns the longest, 0 when the memory is full. `given`: the state to take in the first suffix.
template <PpmdParams::Variant variant>
auto PpmdModel<variant>::createSuccessors(bool skipFound, Address given, Address c) -> Address
{
    const auto sym = symbol(m_found);
    const auto up = successor(m_found);
    std::array<Address, kMaxDepth + 1> pending;
    std::size_t count_ = 0;
    if (!skipFound)
        pending[count_++] = m_found;
    while (suffix(c) != 0) {
        c = suffix(c);
        Address s;
        if (given != 0) {
            s = given;
            given = 0;
        } else if (count(c) != 1) {
            s = find(c, sym);
            if (kIsI && frequency(s) < kMaxFrequency - 9) {
                setFrequency(s, frequency(s) + 1);
                setSum(c, sum(c) + 1);
            }
        } else {
            s = onlyState(c);
            if (kIsI && frequency(s) < 24 && suffix(c) != 0 && count(suffix(c)) == 1)
                setFrequency(s, frequency(s) + 1);
        }
        if (successor(s) != up) {
            c = successor(s);
            if (count_ == 0)
                return c;
            break;
        }
        if (count_ == pending.size())
            return 0;
        pending[count_++] = s;
    }
    if (!m_arena.holdsContext(c))
        return 0;
    const unsigned newSymbol = m_arena.u8(up);
    const auto freq = inheritedFrequency(c, newSymbol);
    while (count_ > 0) {
        const auto made = m_arena.allocContext();
        if (made == 0)
            return 0;
        setCount(made, 1);
        if constexpr (kIsI)
            setFlags(made, 0x10 * isHigh(sym) + 8 * isHigh(newSymbol));
        setState(onlyState(made), newSymbol, freq, up + 1);
        setSuffix(made, c);
        setSuccessor(pending[--count_], made);
        c = made;
    }
    return c;
}

template <PpmdParams::Variant variant> unsigned PpmdModel<variant>::inheritedFrequency(Address c, unsigned sym) const
{
    if (count(c) == 1)
        return frequency(onlyState(c));
    const std::uint32_t share = frequency(find(c, sym)) - 1;
    const std::uint32_t rest = sum(c) - (kIsI ? count(c) - 1 : count(c)) - share;
    if (2 * share <= rest)
        return 1 + (5 * share > rest ? 1U : 0U);
    if (rest == 0)
        return 1;
    return 1 + (kIsI ? (share + 2 * rest - 3) / rest : (2 * share + 3 * rest - 1) / (2 * rest));
}

/// Variant I: the found symbol has no successor yet. All shorter contexts get the text position until one knows better.
template <PpmdParams::Variant variant> auto PpmdModel<variant>::reduceOrder(Address given, Address c) -> Address
{
    const auto start = c;
    const auto sym = symbol(m_found);
    const auto up = m_arena.text;
    setSuccessor(m_found, up);
    ++m_orderFall;
    Address s;
    for (;;) {
        if (given != 0) {
            c = suffix(c);
            s = given;
            given = 0;
        } else {
            if (suffix(c) == 0)
                return c;
            c = suffix(c);
            if (count(c) != 1) {
                s = find(c, sym);
                if (frequency(s) < kMaxFrequency - 9) {
                    setFrequency(s, frequency(s) + 2);
                    setSum(c, sum(c) + 2);
                }
            } else {
                s = onlyState(c);
                if (frequency(s) < 32)
                    setFrequency(s, frequency(s) + 1);
            }
        }
        if (successor(s) != 0)
            break;
        setSuccessor(s, up);
        ++m_orderFall;
    }
    if (successor(s) <= up) {
        const auto found = m_found;
        m_found = s;
        setSuccessor(s, createSuccessors(false, 0, c));
        m_found = found;
    }
    if (m_orderFall == 1 && start == m_maxContext) {
        setSuccessor(m_found, successor(s));
        --m_arena.text;
    }
    return successor(s);
}

template class PpmdModel<PpmdParams::Variant::H>;
template class PpmdModel<PpmdParams::Variant::I>;

}
