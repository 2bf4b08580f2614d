// What the model does when its memory is full.
#include "engine/codecs/ppmd_model.h"

namespace vantoro {

/// Variant I, memory full: start again or cut the longest contexts off. The contexts from the longest to `upTo` have
/// got the new state already and lose it.
template <PpmdParams::Variant variant> void PpmdModel<variant>::restore(Address upTo)
{
    m_arena.text = m_arena.bottom();
    auto c = m_maxContext;
    for (; c != upTo; c = suffix(c)) {
        const auto n = count(c) - 1;
        setCount(c, n);
        if (n > 1) {
            refresh(c, (n + 2) / 2, 0);
            continue;
        }
        const auto first = states(c);
        setFlags(c, (flags(c) & 0x10) + 8 * isHigh(symbol(first)));
        copyState(onlyState(c), first);
        m_arena.specialFree(first);
        setFrequency(onlyState(c), (frequency(onlyState(c)) + 11) >> 3);
    }
    for (; c != m_minContext; c = suffix(c)) {
        const auto n = count(c);
        if (n == 1) {
            const auto s = onlyState(c);
            setFrequency(s, frequency(s) - (frequency(s) >> 1));
            continue;
        }
        setSum(c, sum(c) + 4);
        if (sum(c) > 128 + 4 * (n - 1))
            refresh(c, (n + 1) / 2, 1);
    }
    if (!m_cutsOff || m_arena.used() < m_arena.size() / 2) {
        restart(m_maxOrder);
        return;
    }
    while (suffix(m_maxContext) != 0)
        m_maxContext = suffix(m_maxContext);
    unsigned rounds = 0;
    do {
        if (++rounds > 256) { // each round takes the leaves: more of them than any order has cannot be
            restart(m_maxOrder);
            return;
        }
        cutOff(m_maxContext, 0);
        m_arena.expandText();
    } while (m_arena.used() > m_arena.size() / 4 * 3);
    m_arena.glueCount = 0;
    m_orderFall = m_maxOrder;
}

template <PpmdParams::Variant variant>
void PpmdModel<variant>::refresh(Address c, std::uint32_t oldUnits, unsigned scale)
{
    const auto n = count(c);
    const auto first = m_arena.shrink(states(c), oldUnits, (n + 1) / 2);
    setStates(c, first);
    auto escape = sum(c);
    unsigned total = 0;
    for (unsigned i = 0; i < n; ++i) {
        const auto s = first + i * kStateSize;
        escape -= frequency(s);
        setFrequency(s, (frequency(s) + scale) >> scale);
        total += frequency(s);
    }
    setFlags(c, (flags(c) & (0x10 + 4 * scale)) | highFlag(first, n));
    setSum(c, total + ((escape + scale) >> scale));
}

/// Drops everything below `c` that leads nowhere; 0 when nothing is left of it.
template <PpmdParams::Variant variant> auto PpmdModel<variant>::cutOff(Address c, unsigned order) -> Address
{
    const auto follow = [&](Address s) { setSuccessor(s, order < m_maxOrder ? cutOff(successor(s), order + 1) : 0); };
    const auto n = count(c);
    if (n == 1) {
        const auto s = onlyState(c);
        if (successor(s) >= m_arena.unitsStart) {
            follow(s);
            if (successor(s) != 0 || order <= 9)
                return c;
        }
        m_arena.specialFree(c);
        return 0;
    }
    const auto units = (n + 1) / 2;
    const auto first = m_arena.moveUp(states(c), units);
    setStates(c, first);
    auto kept = n;
    for (auto k = n; k-- > 0;) {
        const auto s = first + k * kStateSize;
        if (successor(s) < m_arena.unitsStart) {
            setSuccessor(s, 0);
            swapStates(s, first + --kept * kStateSize);
        } else {
            follow(s);
        }
    }
    if (kept == n || order == 0)
        return c;
    if (kept == 0) {
        m_arena.freeUnits(first, units);
        m_arena.specialFree(c);
        return 0;
    }
    setCount(c, kept);
    if (kept == 1) {
        setFlags(c, (flags(c) & 0x10) + 8 * isHigh(symbol(first)));
        copyState(onlyState(c), first);
        m_arena.freeUnits(first, units);
        setFrequency(onlyState(c), (frequency(onlyState(c)) + 11) >> 3);
    } else {
        refresh(c, units, sum(c) > 16 * (kept - 1) ? 1 : 0);
    }
    return c;
}

template void PpmdModel<PpmdParams::Variant::H>::restore(Address);
template void PpmdModel<PpmdParams::Variant::I>::restore(Address);

}
