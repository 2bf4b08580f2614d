#pragma once

#include "engine/codecs/ppmd.h"

#include <array>

namespace vantoro {

/// The memory of a PPMd model. Which block an allocation returns decides when it runs full and hence when the model is
/// restarted, so the order of every free list is part of the format.
///
/// Addresses are offsets from the start of the memory; 0 means none. From the bottom: text, a gap, the units (12 bytes
/// each). State arrays are taken from lo upwards, contexts from hi downwards, rare blocks from unitsStart downwards.
template <PpmdParams::Variant variant> class PpmdArena {
public:
    using Address = std::uint32_t;
    static constexpr std::uint32_t kUnit = 12;
    static constexpr bool kIsI = variant == PpmdParams::Variant::I;

    bool reserve(std::uint32_t size);
    void reset();

    std::uint8_t u8(Address at) const { return m_memory[at]; }
    void setU8(Address at, unsigned value) { m_memory[at] = static_cast<std::uint8_t>(value); }
    std::uint16_t u16(Address at) const { return load<std::uint16_t>(at); }
    void setU16(Address at, unsigned value) { store(at, static_cast<std::uint16_t>(value)); }
    std::uint32_t u32(Address at) const { return load<std::uint32_t>(at); }
    void setU32(Address at, std::uint32_t value) { store(at, value); }
    void move(Address to, Address from, std::size_t count)
    {
        std::memmove(m_memory.get() + to, m_memory.get() + from, count);
    }

    /// Class of the smallest block of at least `units` (1 to 128).
    static unsigned classOf(std::uint32_t units);
    Address allocClass(unsigned cls);
    Address allocUnits(std::uint32_t units) { return allocClass(classOf(units)); }
    Address allocContext();
    void freeClass(Address block, unsigned cls) { insert(block, cls); }
    void freeUnits(Address block, std::uint32_t units) { insert(block, classOf(units)); }
    Address shrink(Address block, std::uint32_t oldUnits, std::uint32_t newUnits);
    /// Variant I: the block lower down if a free one is there, so that the text can grow.
    Address moveUp(Address block, std::uint32_t units);
    void specialFree(Address unit);
    void expandText();
    std::uint32_t used() const;

    Address bottom() const { return kBottom; }
    std::uint32_t size() const { return m_size; }
    /// Whether a context may stand there.
    bool holdsContext(Address at) const { return at >= unitsStart && at <= kBottom + m_size - kUnit; }

    Address text = 0, unitsStart = 0;
    std::uint32_t glueCount = 0;

private:
    static constexpr Address kBottom = 16; // so that no address in use is 0
    static constexpr unsigned kClasses = 38;
    static constexpr std::uint32_t kFreeStamp = 0xFFFFFFFF;

    template <class T> T load(Address at) const
    {
        T value;
        std::memcpy(&value, m_memory.get() + at, sizeof value);
        return value;
    }
    template <class T> void store(Address at, T value) { std::memcpy(m_memory.get() + at, &value, sizeof value); }

    static std::uint32_t unitsOf(unsigned cls);
    void insert(Address block, unsigned cls);
    Address remove(unsigned cls);
    void putFree(Address block, std::uint32_t units);
    void putFreeLarge(Address block, std::uint32_t units);
    void split(Address block, unsigned oldClass, unsigned newClass);
    Address allocRare(unsigned cls);
    void glue();
    void glueH();
    void glueI();

    std::unique_ptr<std::uint8_t[]> m_memory;
    std::uint32_t m_size = 0;
    Address m_lo = 0, m_hi = 0;
    std::array<Address, kClasses> m_free{};
    std::array<std::uint32_t, kClasses> m_freeCount{}; // variant I only
};

}
