#include "engine/codecs/ppmd_arena.h"

#include <new>

namespace vantoro {

namespace {

struct ClassTable {
    std::array<std::uint8_t, 38> units{};
    std::array<std::uint8_t, 129> classOf{};
};

constexpr ClassTable makeClasses()
{
    ClassTable table;
    unsigned units = 0;
    for (unsigned i = 0; i < table.units.size(); ++i) {
        units += i < 4 ? 1 : i < 8 ? 2 : i < 12 ? 3 : 4;
        table.units[i] = static_cast<std::uint8_t>(units);
    }
    unsigned cls = 0;
    for (unsigned n = 1; n <= 128; ++n) {
        if (table.units[cls] < n)
            ++cls;
        table.classOf[n] = static_cast<std::uint8_t>(cls);
    }
    return table;
}

constexpr ClassTable kTable = makeClasses();

// Fields of a free block. H has no room of its own for them: the list link lies at 0, and only while blocks are
// glued do they look like { u16 stamp 0, u16 units, u32 next }.
constexpr std::uint32_t kNextI = 4, kUnitsI = 8;
constexpr std::uint32_t kUnitsH = 2, kNextGluedH = 4;

}

template <PpmdParams::Variant variant> unsigned PpmdArena<variant>::classOf(std::uint32_t units)
{
    return kTable.classOf[units];
}

template <PpmdParams::Variant variant> std::uint32_t PpmdArena<variant>::unitsOf(unsigned cls)
{
    return kTable.units[cls];
}

template <PpmdParams::Variant variant> bool PpmdArena<variant>::reserve(std::uint32_t size)
{
    // Left as it comes, so that pages are taken only when the model reaches them.
    m_memory.reset(new (std::nothrow) std::uint8_t[std::size_t{kBottom} + size + kUnit]);
    m_size = size;
    if (m_memory)
        std::memset(m_memory.get() + kBottom + size, 0, kUnit);
    return m_memory != nullptr;
}

template <PpmdParams::Variant variant> void PpmdArena<variant>::reset()
{
    m_free.fill(0);
    m_freeCount.fill(0);
    text = kBottom;
    m_hi = kBottom + m_size;
    m_lo = unitsStart = m_hi - m_size / 8 / kUnit * 7 * kUnit;
    glueCount = 0;
}

template <PpmdParams::Variant variant> void PpmdArena<variant>::insert(Address block, unsigned cls)
{
    if constexpr (kIsI) {
        setU32(block, kFreeStamp);
        setU32(block + kNextI, m_free[cls]);
        setU32(block + kUnitsI, unitsOf(cls));
        ++m_freeCount[cls];
    } else {
        setU32(block, m_free[cls]);
    }
    m_free[cls] = block;
}

template <PpmdParams::Variant variant> auto PpmdArena<variant>::remove(unsigned cls) -> Address
{
    const auto block = m_free[cls];
    m_free[cls] = u32(kIsI ? block + kNextI : block);
    --m_freeCount[cls];
    return block;
}

/// A block of a size between two classes becomes two blocks.
template <PpmdParams::Variant variant> void PpmdArena<variant>::putFree(Address block, std::uint32_t units)
{
    auto cls = classOf(units);
    if (unitsOf(cls) != units) {
        --cls;
        const auto front = unitsOf(cls);
        insert(block + front * kUnit, classOf(units - front));
    }
    insert(block, cls);
}

template <PpmdParams::Variant variant> void PpmdArena<variant>::putFreeLarge(Address block, std::uint32_t units)
{
    for (; units > 128; units -= 128, block += 128 * kUnit)
        insert(block, kClasses - 1);
    putFree(block, units);
}

template <PpmdParams::Variant variant>
void PpmdArena<variant>::split(Address block, unsigned oldClass, unsigned newClass)
{
    putFree(block + unitsOf(newClass) * kUnit, unitsOf(oldClass) - unitsOf(newClass));
}

template <PpmdParams::Variant variant> auto PpmdArena<variant>::allocClass(unsigned cls) -> Address
{
    if (m_free[cls] != 0)
        return remove(cls);
    const auto bytes = unitsOf(cls) * kUnit;
    if (bytes <= m_hi - m_lo) {
        const auto block = m_lo;
        m_lo += bytes;
        return block;
    }
    return allocRare(cls);
}

template <PpmdParams::Variant variant> auto PpmdArena<variant>::allocRare(unsigned cls) -> Address
{
    if (glueCount == 0) {
        glue();
        if (m_free[cls] != 0)
            return remove(cls);
    }
    for (auto larger = cls + 1; larger < kClasses; ++larger) {
        if (m_free[larger] == 0)
            continue;
        const auto block = remove(larger);
        split(block, larger, cls);
        return block;
    }
    --glueCount;
    const auto bytes = unitsOf(cls) * kUnit;
    if (unitsStart - text <= bytes)
        return 0;
    unitsStart -= bytes;
    return unitsStart;
}

template <PpmdParams::Variant variant> auto PpmdArena<variant>::allocContext() -> Address
{
    if (m_hi != m_lo) {
        m_hi -= kUnit;
        return m_hi;
    }
    return m_free[0] != 0 ? remove(0) : allocRare(0);
}

template <PpmdParams::Variant variant>
auto PpmdArena<variant>::shrink(Address block, std::uint32_t oldUnits, std::uint32_t newUnits) -> Address
{
    const auto oldClass = classOf(oldUnits);
    const auto newClass = classOf(newUnits);
    if (oldClass == newClass)
        return block;
    if (m_free[newClass] == 0) {
        split(block, oldClass, newClass);
        return block;
    }
    const auto moved = remove(newClass);
    move(moved, block, newUnits * kUnit);
    insert(block, oldClass);
    return moved;
}

template <PpmdParams::Variant variant> void PpmdArena<variant>::glue()
{
    if constexpr (kIsI)
        glueI();
    else
        glueH();
}

/// Joins neighbouring free blocks. Contexts and state arrays never start with a zero word, free blocks do meanwhile.
template <PpmdParams::Variant variant> void PpmdArena<variant>::glueH()
{
    glueCount = 255;
    const Address end = kBottom + m_size;
    if (m_lo != m_hi)
        setU16(m_lo, 1);
    setU16(end, 1);
    Address head = 0;
    for (unsigned cls = 0; cls < kClasses; ++cls) {
        for (auto block = m_free[cls]; block != 0;) {
            const auto next = u32(block);
            setU16(block, 0);
            setU16(block + kUnitsH, unitsOf(cls));
            setU32(block + kNextGluedH, head);
            head = block;
            block = next;
        }
        m_free[cls] = 0;
    }
    for (auto block = head; block != 0; block = u32(block + kNextGluedH)) {
        std::uint32_t units = u16(block + kUnitsH);
        if (units == 0) // absorbed by the block before it
            continue;
        for (;;) {
            const auto next = block + units * kUnit;
            if (u16(next) != 0 || units + u16(next + kUnitsH) >= 0x10000)
                break;
            units += u16(next + kUnitsH);
            setU16(next + kUnitsH, 0);
            setU16(block + kUnitsH, units);
        }
    }
    // Absorbed blocks leave the list before any is put back, which may overwrite their links.
    Address live = 0;
    for (auto block = head; block != 0; block = u32(block + kNextGluedH)) {
        if (u16(block + kUnitsH) == 0)
            continue;
        if (live == 0)
            head = block;
        else
            setU32(live + kNextGluedH, block);
        live = block;
    }
    if (live != 0)
        setU32(live + kNextGluedH, 0);
    for (auto block = head; block != 0;) {
        const auto next = u32(block + kNextGluedH);
        putFreeLarge(block, u16(block + kUnitsH));
        block = next;
    }
}

template <PpmdParams::Variant variant> void PpmdArena<variant>::glueI()
{
    glueCount = 1 << 13;
    m_freeCount.fill(0);
    if (m_lo != m_hi)
        setU32(m_lo, 0);
    Address head = 0, last = 0;
    for (auto& list : m_free) {
        for (auto block = list; block != 0; block = u32(block + kNextI)) {
            auto units = u32(block + kUnitsI);
            if (units == 0)
                continue;
            if (last == 0)
                head = block;
            else
                setU32(last + kNextI, block);
            last = block;
            // What it absorbs stood before it in the list or never gets there, so that the second pass meets it first.
            for (auto next = block + units * kUnit; u32(next) == kFreeStamp; next = block + units * kUnit) {
                units += u32(next + kUnitsI);
                setU32(next + kUnitsI, 0);
            }
            setU32(block + kUnitsI, units);
        }
        list = 0;
    }
    if (last != 0)
        setU32(last + kNextI, 0);
    for (auto block = head; block != 0;) {
        const auto next = u32(block + kNextI);
        if (const auto units = u32(block + kUnitsI); units != 0)
            putFreeLarge(block, units);
        block = next;
    }
}

template <PpmdParams::Variant variant> auto PpmdArena<variant>::moveUp(Address block, std::uint32_t units) -> Address
{
    const auto cls = classOf(units);
    if (block > unitsStart + 16384 || block > m_free[cls])
        return block;
    const auto moved = remove(cls);
    move(moved, block, units * kUnit);
    if (block != unitsStart)
        insert(block, cls);
    else
        unitsStart += unitsOf(cls) * kUnit;
    return moved;
}

template <PpmdParams::Variant variant> void PpmdArena<variant>::specialFree(Address unit)
{
    if (unit != unitsStart)
        insert(unit, 0);
    else
        unitsStart += kUnit;
}

/// Gives the free blocks at the start of the units to the text.
template <PpmdParams::Variant variant> void PpmdArena<variant>::expandText()
{
    std::array<std::uint32_t, kClasses> taken{};
    if (m_lo != m_hi)
        setU32(m_lo, 0);
    while (u32(unitsStart) == kFreeStamp) {
        setU32(unitsStart, 0);
        const auto units = u32(unitsStart + kUnitsI);
        ++taken[classOf(units)];
        unitsStart += units * kUnit;
    }
    for (unsigned cls = 0; cls < kClasses; ++cls) {
        Address before = 0;
        for (auto block = m_free[cls]; taken[cls] != 0 && block != 0;) {
            const auto next = u32(block + kNextI);
            if (u32(block) == 0) {
                if (before == 0)
                    m_free[cls] = next;
                else
                    setU32(before + kNextI, next);
                --m_freeCount[cls];
                --taken[cls];
            } else {
                before = block;
            }
            block = next;
        }
    }
}

template <PpmdParams::Variant variant> std::uint32_t PpmdArena<variant>::used() const
{
    std::uint32_t freeUnits = 0;
    for (unsigned cls = 0; cls < kClasses; ++cls)
        freeUnits += m_freeCount[cls] * unitsOf(cls);
    return m_size - (m_hi - m_lo) - (unitsStart - text) - freeUnits * kUnit;
}

template class PpmdArena<PpmdParams::Variant::H>;
template class PpmdArena<PpmdParams::Variant::I>;

}
