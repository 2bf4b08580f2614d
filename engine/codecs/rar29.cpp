#include "engine/codecs/msb_bit_input.h"
#include "engine/codecs/ppmd.h"
#include "engine/codecs/rar29_filters.h"
#include "engine/codecs/rar_codec.h"
#include "engine/codecs/rar_tables.h"
#include "engine/codecs/rar_tokens.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr unsigned kMainSymbols = 299;
constexpr unsigned kDistanceSymbols = 60;
constexpr unsigned kLowSymbols = 17;
constexpr unsigned kRepeatSymbols = 28;
constexpr unsigned kAllSymbols = kMainSymbols + kDistanceSymbols + kLowSymbols + kRepeatSymbols;
constexpr unsigned kLevelSymbols = 20;
constexpr std::size_t kTableBytes = 2048; // more than any set of tables takes
constexpr std::size_t kSymbolBytes = 64; // more than any symbol but a filter takes
constexpr std::uint8_t kFirstEscape = 2;
constexpr std::uint64_t kMaxMissing = 4; // bytes that the range decoder may ask for behind the end

constexpr auto kMainWords = [] {
    using Kind = RarToken::Kind;
    std::array<RarWord, kMainSymbols> words{};
    for (unsigned i = 0; i < words.size(); ++i) {
        const auto token = i < 256 ? RarToken::literal(static_cast<std::uint8_t>(i))
            : i == 256             ? RarToken::other(Kind::BlockEnd)
            : i == 257             ? RarToken::other(Kind::Filter)
            : i == 258             ? RarToken::other(Kind::Again)
            : i < 263              ? RarToken::other(Kind::Older, i - 259)
            : i < 271
            ? RarToken::other(Kind::Short, kRarShortDistances[i - 263].base + 1, kRarShortDistances[i - 263].bits)
            : RarToken::other(Kind::Match, kRarLengths[i - 271].base + 3, kRarLengths[i - 271].bits);
        words[i] = token.word();
    }
    return words;
}();
constexpr auto kDistanceWords = [] {
    std::array<RarWord, kDistanceSymbols> words{};
    for (std::size_t i = 0; i < words.size(); ++i)
        words[i] = RarDistanceWord::make(kRarDistances[i].base + 1, kRarDistances[i].bits);
    return words;
}();

/// What matches refer to.
struct RarPast {
    std::uint32_t first = 0, second = 0, third = 0, fourth = 0; ///< distances, newest first
    std::uint32_t length = 0;
    std::uint32_t lowDistance = 0;
    unsigned lowRepeats = 0;

    void remember(std::uint32_t distance)
    {
        fourth = third;
        third = second;
        second = first;
        first = distance;
    }
    /// Makes one of them the newest. Without branches: which one it is cannot be foretold.
    void recall(unsigned which)
    {
        const auto near = which < 1 ? first : second;
        const auto far = which < 3 ? third : fourth;
        const auto found = which < 2 ? near : far;
        fourth = which < 3 ? fourth : third;
        third = which < 2 ? third : second;
        second = which < 1 ? second : first;
        first = found;
    }
};

/// Hands the bytes behind a block header to the range decoder.
class RangeInput final : public PpmdInput {
public:
    explicit RangeInput(MsbBitInput& in) : m_in(in) {}
    std::uint8_t next() override { return m_in.takeByte(); }

private:
    MsbBitInput& m_in;
};

/// Source: the format note of rar 2.9 to 4, LZ and PPMd blocks in one stream.
class Rar29 final : public RarCodec {
public:
    Result<void> decode(ByteStream& packed, const RarCodecEntry& entry, ByteSink& out) override
    {
        m_in.start(packed);
        TRY(m_out.begin(entry, out));
        if (!entry.isSolid)
            reset();
        m_filters.beginEntry();
        m_atEnd = false;
        auto outcome = decodeBlocks(entry.leadsOn);
        TRY(m_out.finish());
        return outcome;
    }

private:
    enum class Block : std::uint8_t { None, Lz, Ppmd };

    void reset();
    Result<void> decodeBlocks(bool leadsOn);
    void readTail();
    Result<void> readBlockHeader();
    Result<void> readTables();
    Result<void> readPpmdHeader();
    Result<void> decodeLz();
    Result<void> readEndMark();
    Result<void> readFilter();
    Result<bool> crossEdge(std::size_t sound);
    bool readMatch(MsbBits& bits, RarPast& past, RarToken token) const;
    std::uint32_t readDistance(MsbBits& bits, RarPast& past) const;
    Result<void> decodePpmd();
    Result<void> ppmdEscape(RarCursor& out);
    Result<unsigned> ppmdByte();
    template <class NextByte> Result<void> declareFilter(NextByte nextByte);

    MsbBitInput m_in;
    RarOutput m_out;
    Rar29Filters m_filters;
    RangeInput m_range{m_in};

    Block m_block = Block::None; // None: a block header comes next
    bool m_atEnd = false; // the entry's end mark was seen
    std::array<std::uint8_t, kAllSymbols> m_lengths{};
    RarTokenCode m_main;
    RarWordCode<10> m_distance;
    PrefixCode m_low, m_repeat;
    RarPast m_past;

    std::unique_ptr<PpmdDecoder> m_model;
    std::uint32_t m_modelMemory = 0;
    bool m_isModelValid = false;
    std::uint8_t m_escape = kFirstEscape;
};

void Rar29::reset()
{
    m_block = Block::None;
    m_lengths.fill(0);
    m_past = {};
    m_isModelValid = false;
    m_escape = kFirstEscape;
    m_filters.reset();
}

Result<void> Rar29::decodeBlocks(bool leadsOn)
{
    while (!m_out.isFull() && !m_atEnd) {
        if (m_block == Block::None)
            TRY(readBlockHeader());
        TRY(m_block == Block::Lz ? decodeLz() : decodePpmd());
    }
    if (leadsOn && !m_atEnd)
        readTail();
    return {};
}

/// Behind the last byte of output stand the end mark and perhaps tables for the next solid entry. What is wrong
/// here does not concern this entry.
void Rar29::readTail()
{
    while (!m_atEnd && !m_in.hasFewerThan(1)) {
        if (m_block == Block::None && !readBlockHeader())
            return;
        if (m_block == Block::Lz) {
            if (!m_in.ready(kSymbolBytes))
                return;
            m_in.bits().fill();
            const auto token = m_main.decodeOne(m_in.bits());
            const auto isEnd = token.kind() == RarToken::Kind::BlockEnd;
            if (token.literals() > 0 || (!isEnd && token.kind() != RarToken::Kind::Filter))
                return;
            if (!(isEnd ? readEndMark() : readFilter()))
                return;
            if (m_in.isOverrun()) // it was padding
                m_block = Block::Lz;
        } else {
            auto unused = m_out.cursor();
            const auto byte = ppmdByte();
            const auto before = unused.position;
            if (!byte || *byte != m_escape || !ppmdEscape(unused) || unused.position != before)
                return;
        }
    }
}

Result<void> Rar29::readBlockHeader()
{
    TRY(m_in.ready(16));
    m_in.alignToByte();
    if (m_in.take(1) != 0)
        return readPpmdHeader();
    return readTables();
}

Result<void> Rar29::readTables()
{
    TRY(m_in.ready(kTableBytes));
    m_past.lowDistance = 0;
    m_past.lowRepeats = 0;
    if (m_in.take(1) == 0)
        m_lengths.fill(0);
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
    for (std::size_t i = 0; i < kAllSymbols;) {
        m_in.bits().fill();
        const auto symbol = level.decode(m_in.bits());
        if (symbol < 16) {
            m_lengths[i] = (m_lengths[i] + symbol) & 15;
            ++i;
            continue;
        }
        if (symbol >= kLevelSymbols || (symbol < 18 && i == 0))
            return Error{ErrorCode::Corrupt, "rar3: code lengths"};
        const auto count = symbol % 2 == 0 ? 3 + m_in.take(3) : 11 + m_in.take(7);
        const auto value = symbol < 18 ? m_lengths[i - 1] : std::uint8_t{0};
        for (const auto end = std::min<std::size_t>(kAllSymbols, i + count); i < end; ++i)
            m_lengths[i] = value;
    }
    TRY(m_in.ready(1));
    const auto lengths = std::span(std::as_const(m_lengths));
    TRY(m_main.build(lengths.first(kMainSymbols), kMainWords));
    TRY(m_distance.build(lengths.subspan(kMainSymbols, kDistanceSymbols), kDistanceWords));
    TRY(m_low.build(lengths.subspan(kMainSymbols + kDistanceSymbols, kLowSymbols)));
    TRY(m_repeat.build(lengths.last(kRepeatSymbols)));
    m_block = Block::Lz;
    return {};
}

Result<void> Rar29::readEndMark()
{
    m_block = Block::None;
    if (m_in.take(1) != 0)
        return {};
    m_atEnd = true;
    if (m_in.take(1) == 0)
        m_block = Block::Lz; // the next solid entry goes on with these tables
    return {};
}

/// 0 when a code was not given: no distance is 0.
[[gnu::always_inline]] inline std::uint32_t Rar29::readDistance(MsbBits& bits, RarPast& past) const
{
    const auto word = m_distance.fillAndDecode(bits);
    const auto extra = RarDistanceWord::extra(word);
    const auto least = RarDistanceWord::least(word);
    if (extra < 4) [[unlikely]]
        return least + bits.take(extra);
    const auto distance = least + (bits.take(extra - 4) << 4);
    if (past.lowRepeats > 0) {
        --past.lowRepeats;
        return distance + past.lowDistance;
    }
    const auto low = m_low.decode(bits);
    if (low == 16)
        past.lowRepeats = 15;
    else if (low == PrefixCode::kInvalid)
        return 0;
    else
        past.lowDistance = low;
    return distance + past.lowDistance;
}

/// Leaves distance and length in the past. False when this is no match, or none that can be.
[[gnu::always_inline]] inline bool Rar29::readMatch(MsbBits& bits, RarPast& past, RarToken token) const
{
    switch (token.kind()) {
    case RarToken::Kind::Match: {
        const auto length = token.base() + bits.take(token.extra());
        const auto distance = readDistance(bits, past);
        if (distance == 0) [[unlikely]]
            return false;
        past.length = length + ((0x1FFF - distance) >> 31) + ((0x3FFFF - distance) >> 31);
        past.remember(distance);
        return true;
    }
    case RarToken::Kind::Short:
        past.length = 2;
        past.remember(token.base() + bits.take(token.extra()));
        return true;
    case RarToken::Kind::Older: {
        past.recall(token.base());
        const auto index = m_repeat.decode(bits);
        if (index == PrefixCode::kInvalid) [[unlikely]]
            return false;
        past.length = kRarLengths[index].base + 2 + bits.take(kRarLengths[index].bits);
        return true;
    }
    case RarToken::Kind::Again:
        return true;
    default:
        return false;
    }
}

/// Near the end of what is buffered or of the room for output. False when the entry is complete.
Result<bool> Rar29::crossEdge(std::size_t sound)
{
    if (auto ready = m_in.ready(kSymbolBytes); !ready) {
        m_out.cursor().position = sound; // the symbol was cut
        return ready.error();
    }
    if (m_out.cursor().position >= m_out.cursor().stop)
        TRY(m_out.flush());
    return !m_out.isFull();
}

// Both decoding loops are kept out of what calls them, so that they have the registers to themselves.
[[gnu::noinline]] Result<void> Rar29::decodeLz()
{
    auto bits = m_in.bits();
    auto out = m_out.cursor();
    auto past = m_past;
    const auto store = [&] {
        m_in.bits() = bits;
        m_out.cursor() = out;
        m_past = past;
    };
    const std::uint8_t* soft = nullptr;
    auto sound = out.position; // behind the last symbol that was certainly whole
    for (;;) {
        RarToken token;
        if (bits.next >= soft || out.position + 1 >= out.stop) [[unlikely]] { // two literals may come at once
            store();
            if (!TRY(crossEdge(sound)))
                return {};
            bits = m_in.bits();
            out = m_out.cursor();
            sound = out.position;
            soft = m_in.softEnd(kSymbolBytes);
            bits.fill();
            token = m_main.decodeOne(bits);
        } else {
            token = m_main.fillAndDecode(bits);
        }
        if (const auto literals = token.literals(); literals > 0) [[likely]] {
            out.put(token.first(), token.second(), literals);
        } else if (readMatch(bits, past, token)) [[likely]] {
            out.copy(past.first, past.length);
        } else {
            store();
            if (token.kind() == RarToken::Kind::BlockEnd)
                return readEndMark();
            if (token.kind() != RarToken::Kind::Filter)
                return Error{ErrorCode::Corrupt, "rar3: code that was not given"};
            TRY(readFilter());
            bits = m_in.bits();
            soft = nullptr;
        }
    }
}

template <class NextByte> Result<void> Rar29::declareFilter(NextByte nextByte)
{
    const auto flags = static_cast<std::uint8_t>(TRY(nextByte()));
    std::size_t size = (flags & 7U) + 1;
    if (size == 7) {
        size = TRY(nextByte()) + 7;
    } else if (size == 8) {
        size = TRY(nextByte()) << 8;
        size |= TRY(nextByte());
    }
    std::vector<std::uint8_t> record;
    while (record.size() < size)
        record.push_back(static_cast<std::uint8_t>(TRY(nextByte())));
    return m_filters.declare(flags, record, m_out);
}

Result<void> Rar29::readFilter()
{
    return declareFilter([this]() -> Result<unsigned> {
        TRY(m_in.ready(16));
        return m_in.take(8);
    });
}

Result<void> Rar29::readPpmdHeader()
{
    const auto flags = m_in.take(7);
    const auto resets = (flags & 0x20) != 0;
    const auto memory = resets ? m_in.take(8) : 0;
    if ((flags & 0x40) != 0)
        m_escape = static_cast<std::uint8_t>(m_in.take(8));
    TRY(m_in.ready(8));
    m_in.alignToByte();
    if (resets) {
        m_isModelValid = false;
        auto order = (flags & 0x1F) + 1;
        if (order > 16)
            order = 16 + (order - 16) * 3;
        if (order < 2)
            return Error{ErrorCode::Corrupt, "rar3: PPMd order"};
        const auto size = (memory + 1) << 20;
        if (!m_model || m_modelMemory != size) {
            m_model.reset(); // before the new memory is claimed
            m_model = TRY(PpmdDecoder::make(
                {PpmdParams::Variant::H, PpmdParams::Coder::Carryless, PpmdParams::Restore::Restart, order, size}));
            m_modelMemory = size;
        }
        m_model->restart(order);
    } else if (!m_isModelValid) {
        return Error{ErrorCode::Corrupt, "rar3: PPMd block without a model"};
    }
    m_isModelValid = m_model->startCoder(m_range);
    if (!m_isModelValid)
        return Error{ErrorCode::Corrupt, "rar3: PPMd start"};
    m_block = Block::Ppmd;
    return {};
}

Result<unsigned> Rar29::ppmdByte()
{
    const auto byte = m_model->decodeByte();
    if (byte < 0) {
        m_isModelValid = false;
        m_block = Block::None;
        return Error{ErrorCode::Corrupt, "rar3: PPMd data"};
    }
    return static_cast<unsigned>(byte);
}

[[gnu::noinline]] Result<void> Rar29::decodePpmd()
{
    auto out = m_out.cursor();
    auto& model = *m_model;
    while (m_block == Block::Ppmd && !m_atEnd) {
        if (out.position >= out.stop) [[unlikely]] {
            m_out.cursor() = out;
            TRY(m_out.flush());
            out = m_out.cursor();
            if (m_out.isFull())
                return {};
            if (m_in.missingBytes() > kMaxMissing)
                return Error{ErrorCode::Truncated, "rar3: PPMd data end too early"};
        }
        const auto byte = model.decodeByte();
        if (byte >= 0 && byte != m_escape) [[likely]] {
            out.put(static_cast<std::uint8_t>(byte));
            continue;
        }
        m_out.cursor() = out;
        if (byte < 0) {
            m_isModelValid = false;
            m_block = Block::None;
            return Error{ErrorCode::Corrupt, "rar3: PPMd data"};
        }
        TRY(ppmdEscape(out));
        m_out.cursor() = out;
    }
    return {};
}

/// What follows the escape byte. Symbols that produce output move `out` on.
Result<void> Rar29::ppmdEscape(RarCursor& out)
{
    if (m_in.missingBytes() > kMaxMissing)
        return Error{ErrorCode::Truncated, "rar3: PPMd data end too early"};
    switch (TRY(ppmdByte())) {
    case 0:
        m_block = Block::None;
        break;
    case 2:
        m_block = Block::None;
        m_atEnd = true;
        break;
    case 3:
        TRY(declareFilter([this] { return ppmdByte(); }));
        out = m_out.cursor();
        break;
    case 4: {
        std::uint64_t distance = TRY(ppmdByte());
        distance = distance << 8 | TRY(ppmdByte());
        distance = (distance << 8 | TRY(ppmdByte())) + 2;
        out.copy(distance, TRY(ppmdByte()) + 32);
        break;
    }
    case 5:
        out.copy(1, TRY(ppmdByte()) + 4);
        break;
    default:
        out.put(m_escape);
    }
    return {};
}

}

std::unique_ptr<RarCodec> makeRar29Codec() { return std::make_unique<Rar29>(); }

}
