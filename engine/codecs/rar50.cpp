#include "engine/codecs/msb_bit_input.h"
#include "engine/codecs/prefix_code.h"
#include "engine/codecs/rar_codec.h"
#include "engine/codecs/rar_output.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr unsigned kMainSymbols = 306;
constexpr unsigned kAlignSymbols = 16;
constexpr unsigned kLengthSymbols = 44;
constexpr unsigned kLevelSymbols = 20;
constexpr std::size_t kTableBytes = 2048; // more than any set of tables takes
constexpr std::size_t kSymbolBytes = 64; // more than any symbol takes
constexpr std::uint64_t kMaxFilterBlock = 4 << 20;

enum class FilterKind : std::uint8_t { Delta, Calls, CallsAndJumps, Arm };

class Filter50 final : public RarFilter {
public:
    Filter50(FilterKind kind, unsigned channels) : m_kind(kind), m_channels(channels) {}
    Result<void> run(std::vector<std::uint8_t>& block, std::uint64_t offset) override
    {
        switch (m_kind) {
        case FilterKind::Delta:
            rarUndoDelta(block, m_channels);
            break;
        case FilterKind::Calls:
        case FilterKind::CallsAndJumps:
            rarUndoCalls(block, offset, m_kind == FilterKind::CallsAndJumps, RarCallWrap::At24Bits);
            break;
        case FilterKind::Arm:
            rarUndoArm(block, offset);
            break;
        }
        return {};
    }

private:
    FilterKind m_kind;
    unsigned m_channels;
};

/// Source: the format note of rar 5.0 and 7.0, LZ with blocks of known length.
class Rar50 final : public RarCodec {
public:
    explicit Rar50(bool manyDistances) : m_distanceSymbols(manyDistances ? 80 : 64) {}

    Result<void> decode(ByteStream& packed, const RarCodecEntry& entry, ByteSink& out) override
    {
        m_in.start(packed);
        TRY(m_out.begin(entry, out));
        if (!entry.isSolid) {
            m_hasTables = false;
            m_distances.fill(0);
            m_lastLength = 0;
        }
        m_filtersEnd = 0;
        auto outcome = decodeBlocks(entry.leadsOn);
        TRY(m_out.finish());
        return outcome;
    }

private:
    struct Block {
        std::uint64_t endBit = 0, nextByte = 0;
        bool isLast = false;
    };

    Result<void> decodeBlocks(bool leadsOn);
    Result<Block> readBlockHeader();
    Result<void> readTables();
    Result<void> decodeSymbols(std::uint64_t endBit);
    Result<void> readFilter();
    std::uint32_t filterNumber();

    /// Needs 9 bits in the window.
    static unsigned slotLength(MsbBits& bits, unsigned slot)
    {
        if (slot < 8)
            return slot + 2;
        const auto extra = slot / 4 - 1;
        return ((4 | (slot & 3)) << extra) + bits.take(extra) + 2;
    }
    std::uint64_t readDistance(MsbBits& bits, unsigned slot) const;

    const unsigned m_distanceSymbols;
    MsbBitInput m_in;
    RarOutput m_out;
    PrefixCode m_main, m_distance, m_align, m_length;
    bool m_hasTables = false;
    std::array<std::uint64_t, 4> m_distances{}; // newest first
    unsigned m_lastLength = 0;
    std::uint64_t m_filtersEnd = 0; // filters must not overlap
};

Result<void> Rar50::decodeBlocks(bool leadsOn)
{
    for (bool isLast = false; !isLast && !m_out.isFull();) {
        const auto block = TRY(readBlockHeader());
        TRY(decodeSymbols(block.endBit));
        isLast = block.isLast;
        TRY(m_in.skipTo(block.nextByte));
        // The next solid entry may use tables of blocks that stand behind the last byte of output.
        while (leadsOn && !isLast && m_out.isFull()) {
            const auto empty = readBlockHeader();
            if (!empty || !m_in.skipTo(empty->nextByte))
                return {}; // this entry is complete all the same
            isLast = empty->isLast;
        }
    }
    return {};
}

Result<Rar50::Block> Rar50::readBlockHeader()
{
    TRY(m_in.ready(16));
    m_in.alignToByte();
    const auto flags = m_in.take(8);
    auto check = m_in.take(8) ^ flags ^ 0x5A;
    const auto sizeBytes = (flags >> 3 & 3) + 1;
    if (sizeBytes > 3)
        return Error{ErrorCode::Corrupt, "rar5: block header"};
    std::uint32_t size = 0;
    for (unsigned i = 0; i < sizeBytes; ++i) {
        const auto byte = m_in.take(8);
        check ^= byte;
        size |= byte << (8 * i);
    }
    TRY(m_in.ready(1)); // Truncated rather than Corrupt when there was no header at all
    if (check != 0 || size == 0)
        return Error{ErrorCode::Corrupt, "rar5: block header"};
    Block block;
    const auto start = m_in.bitPosition();
    block.endBit = start + (std::uint64_t{size} - 1) * 8 + (flags & 7) + 1;
    block.nextByte = start / 8 + size;
    block.isLast = (flags & 0x40) != 0;
    if ((flags & 0x80) != 0)
        TRY(readTables());
    else if (!m_hasTables)
        return Error{ErrorCode::Corrupt, "rar5: first block without tables"};
    return block;
}

Result<void> Rar50::readTables()
{
    TRY(m_in.ready(kTableBytes));
    m_hasTables = false;
    std::array<std::uint8_t, kLevelSymbols> levels{};
    for (unsigned i = 0; i < kLevelSymbols; ++i) {
        const auto length = m_in.take(4);
        const auto zeros = length == 15 ? m_in.take(4) : 0;
        if (zeros > 0)
            i += zeros + 1; // this one and the zeros + 1 that follow
        else
            levels[i] = static_cast<std::uint8_t>(length);
    }
    PrefixCode level;
    TRY(level.build(levels));

    std::array<std::uint8_t, kMainSymbols + 80 + kAlignSymbols + kLengthSymbols> all{};
    const auto lengths = std::span(all).first(kMainSymbols + m_distanceSymbols + kAlignSymbols + kLengthSymbols);
    for (std::size_t i = 0; i < lengths.size();) {
        m_in.bits().fill();
        const auto symbol = level.decode(m_in.bits());
        if (symbol < 16) {
            lengths[i++] = static_cast<std::uint8_t>(symbol);
            continue;
        }
        if (symbol >= kLevelSymbols || (symbol < 18 && i == 0))
            return Error{ErrorCode::Corrupt, "rar5: code lengths"};
        const auto count = symbol % 2 == 0 ? 3 + m_in.take(3) : 11 + m_in.take(7);
        const auto value = symbol < 18 ? lengths[i - 1] : std::uint8_t{0};
        const auto end = std::min<std::size_t>(lengths.size(), i + count);
        std::fill(lengths.begin() + static_cast<std::ptrdiff_t>(i), lengths.begin() + static_cast<std::ptrdiff_t>(end),
                  value);
        i = end;
    }
    TRY(m_in.ready(1));
    TRY(m_main.build(lengths.first(kMainSymbols)));
    TRY(m_distance.build(lengths.subspan(kMainSymbols, m_distanceSymbols)));
    TRY(m_align.build(lengths.subspan(kMainSymbols + m_distanceSymbols, kAlignSymbols)));
    TRY(m_length.build(lengths.last(kLengthSymbols)));
    m_hasTables = true;
    return {};
}

/// 0 when a code was not given: no distance is 0.
std::uint64_t Rar50::readDistance(MsbBits& bits, unsigned slot) const
{
    if (slot < 4)
        return slot + 1;
    if (slot >= m_distanceSymbols)
        return 0;
    const auto extra = slot / 2 - 1;
    auto distance = std::uint64_t{2 | (slot & 1)} << extra;
    bits.fill();
    if (extra < 4)
        return distance + bits.take(extra) + 1;
    auto high = extra - 4;
    if (high > 24) { // so that the align code's 15 bits are left in any case
        distance += std::uint64_t{bits.take(high - 24)} << 28;
        bits.fill();
        high = 24;
    }
    distance += std::uint64_t{bits.take(high)} << 4;
    const auto low = m_align.decode(bits);
    return low == PrefixCode::kInvalid ? 0 : distance + low + 1;
}

Result<void> Rar50::decodeSymbols(std::uint64_t endBit)
{
    auto bits = m_in.bits();
    auto out = m_out.cursor();
    auto distances = m_distances;
    auto lastLength = m_lastLength;
    const std::uint8_t* soft = nullptr;
    auto sound = out.position; // behind the last symbol that was certainly whole
    const auto store = [&] {
        m_in.bits() = bits;
        m_out.cursor() = out;
        m_distances = distances;
        m_lastLength = lastLength;
    };
    for (;;) {
        if (bits.next >= soft) [[unlikely]] {
            store();
            if (auto ready = m_in.ready(kSymbolBytes); !ready) {
                m_out.cursor().position = sound; // the symbol was cut
                return ready;
            }
            sound = out.position;
            if (m_in.bitPosition() >= endBit)
                break;
            bits = m_in.bits();
            soft = std::min(m_in.softEnd(kSymbolBytes), m_in.clampedAddress(endBit / 8));
        }
        if (out.position >= out.stop) [[unlikely]] {
            store();
            TRY(m_out.flush());
            out = m_out.cursor();
            sound = out.position;
            if (m_out.isFull())
                break;
        }
        bits.fill();
        const auto symbol = m_main.decode(bits);
        if (symbol < 256) [[likely]] {
            out.put(static_cast<std::uint8_t>(symbol));
            continue;
        }
        unsigned length;
        std::uint64_t distance;
        if (symbol >= 262) {
            if (symbol == PrefixCode::kInvalid) {
                store();
                return Error{ErrorCode::Corrupt, "rar5: code"};
            }
            length = slotLength(bits, symbol - 262);
            distance = readDistance(bits, m_distance.decode(bits));
            if (distance == 0) {
                store();
                return Error{ErrorCode::Corrupt, "rar5: distance code"};
            }
            length += (distance > 0x100 ? 1U : 0U) + (distance > 0x2000 ? 1U : 0U) + (distance > 0x40000 ? 1U : 0U);
            distances = {distance, distances[0], distances[1], distances[2]};
        } else if (symbol >= 258) {
            const auto which = symbol - 258;
            distance = distances[which];
            for (auto i = which; i > 0; --i)
                distances[i] = distances[i - 1];
            distances[0] = distance;
            const auto slot = m_length.decode(bits);
            if (slot == PrefixCode::kInvalid) {
                store();
                return Error{ErrorCode::Corrupt, "rar5: length code"};
            }
            length = slotLength(bits, slot);
        } else if (symbol == 257) {
            if (lastLength == 0)
                continue;
            length = lastLength;
            distance = distances[0];
        } else {
            store();
            TRY(readFilter());
            bits = m_in.bits();
            continue;
        }
        lastLength = length;
        out.copy(distance, length);
    }
    store();
    // What the last symbol produced may fill the entry.
    if (m_out.cursor().position >= m_out.cursor().stop)
        TRY(m_out.flush());
    return {};
}

std::uint32_t Rar50::filterNumber()
{
    const auto bytes = m_in.take(2) + 1;
    std::uint32_t value = 0;
    for (unsigned i = 0; i < bytes; ++i)
        value |= m_in.take(8) << (8 * i);
    return value;
}

Result<void> Rar50::readFilter()
{
    const auto start = m_out.produced() + filterNumber();
    const std::uint64_t length = filterNumber();
    const auto kind = m_in.take(3);
    const auto channels = kind == 0 ? m_in.take(5) + 1 : 1;
    if (kind > static_cast<unsigned>(FilterKind::Arm))
        return Error{ErrorCode::UnsupportedMethod, "rar5: filter"};
    if (length > kMaxFilterBlock || start < m_filtersEnd)
        return Error{ErrorCode::Corrupt, "rar5: filter block"};
    m_filtersEnd = start + length;
    return m_out.addFilter(start, length, std::make_unique<Filter50>(static_cast<FilterKind>(kind), channels));
}

}

std::unique_ptr<RarCodec> makeRar50Codec(bool manyDistances) { return std::make_unique<Rar50>(manyDistances); }

}
