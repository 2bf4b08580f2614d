#include "engine/codecs/msb_bit_input.h"
#include "engine/codecs/prefix_code.h"
#include "engine/codecs/rar_codec.h"
#include "engine/codecs/rar_output.h"
#include "engine/codecs/rar_tables.h"

#include <algorithm>
#include <cstdlib>

namespace vantoro {

namespace {

constexpr unsigned kMainSymbols = 298;
constexpr unsigned kDistanceSymbols = 48;
constexpr unsigned kRepeatSymbols = 28;
constexpr unsigned kLzSymbols = kMainSymbols + kDistanceSymbols + kRepeatSymbols;
constexpr unsigned kAudioSymbols = 257;
constexpr unsigned kLevelSymbols = 19;
constexpr std::size_t kTableBytes = 4000; // more than any set of tables takes
constexpr std::size_t kSymbolBytes = 64; // more than any symbol takes

/// Predicts the samples of one channel from those before and adapts to what it missed.
struct AudioChannel {
    std::array<int, 5> weights{};
    std::array<int, 4> deltas{};
    int delta = 0;
    int last = 0;
    unsigned count = 0;
    std::array<std::uint32_t, 11> errors{};

    /// The sample that `coded` stands for. `cross` is the change of the sample before, of whatever channel.
    std::uint8_t decode(std::uint8_t coded, int& cross);

private:
    void adapt();
};

std::uint8_t AudioChannel::decode(std::uint8_t coded, int& cross)
{
    ++count;
    deltas = {delta, delta - deltas[0], deltas[1], deltas[2]};
    int sum = 8 * last + weights[4] * cross;
    for (std::size_t i = 0; i < deltas.size(); ++i)
        sum += weights[i] * deltas[i];
    const auto out = static_cast<std::uint8_t>((sum >> 3) - coded);

    const int miss = 8 * static_cast<std::int8_t>(coded);
    errors[0] += static_cast<std::uint32_t>(std::abs(miss));
    for (std::size_t i = 0; i < 5; ++i) {
        const int part = i < 4 ? deltas[i] : cross;
        errors[2 * i + 1] += static_cast<std::uint32_t>(std::abs(miss - part));
        errors[2 * i + 2] += static_cast<std::uint32_t>(std::abs(miss + part));
    }
    delta = cross = static_cast<std::int8_t>(static_cast<std::uint8_t>(out - last));
    last = out;
    if (count % 32 == 0)
        adapt();
    return out;
}

void AudioChannel::adapt()
{
    const auto best = static_cast<std::size_t>(std::min_element(errors.begin(), errors.end()) - errors.begin());
    errors.fill(0);
    if (best == 0)
        return;
    auto& weight = weights[(best - 1) / 2];
    if (best % 2 == 1 && weight >= -16)
        --weight;
    else if (best % 2 == 0 && weight < 16)
        ++weight;
}

/// Source: the format note of rar 2.0, LZ and audio blocks.
class Rar20 final : public RarCodec {
public:
    Result<void> decode(ByteStream& packed, const RarCodecEntry& entry, ByteSink& out) override
    {
        m_in.start(packed);
        TRY(m_out.begin(entry, out));
        if (!entry.isSolid)
            reset();
        m_sound = m_out.cursor().position;
        auto outcome = decodeEntry();
        TRY(m_out.finish());
        if (outcome && entry.leadsOn)
            readTail();
        return outcome;
    }

private:
    void reset();
    Result<void> decodeEntry();
    Result<void> readTables();
    Result<void> decodeLz();
    Result<void> decodeAudio();
    Result<void> nextSymbol();
    void readTail();

    MsbBitInput m_in;
    RarOutput m_out;
    std::size_t m_sound = 0; // position behind the last symbol that was certainly whole
    bool m_hasTables = false;
    bool m_isAudio = false;
    std::array<std::uint8_t, kAudioSymbols * std::size_t{4}> m_lengths{};
    PrefixCode m_main, m_distance, m_repeat;
    std::array<std::uint64_t, 4> m_distances{}; // newest first
    unsigned m_lastLength = 0;

    std::array<PrefixCode, 4> m_channelCodes;
    std::array<AudioChannel, 4> m_channels;
    unsigned m_channelCount = 1;
    unsigned m_channel = 0;
    int m_cross = 0;
};

void Rar20::reset()
{
    m_hasTables = false;
    m_isAudio = false;
    m_lengths.fill(0);
    m_distances.fill(0);
    m_lastLength = 0;
    m_channels = {};
    m_channelCount = 1;
    m_channel = 0;
    m_cross = 0;
}

Result<void> Rar20::decodeEntry()
{
    while (!m_out.isFull()) {
        if (!m_hasTables)
            TRY(readTables());
        TRY(m_isAudio ? decodeAudio() : decodeLz());
    }
    return {};
}

Result<void> Rar20::readTables()
{
    TRY(m_in.ready(kTableBytes));
    m_isAudio = m_in.take(1) != 0;
    if (m_in.take(1) == 0)
        m_lengths.fill(0);
    std::size_t total = kLzSymbols;
    if (m_isAudio) {
        m_channelCount = m_in.take(2) + 1;
        if (m_channel >= m_channelCount)
            m_channel = 0;
        total = std::size_t{kAudioSymbols} * m_channelCount;
    }
    std::array<std::uint8_t, kLevelSymbols> levels{};
    for (auto& length : levels)
        length = static_cast<std::uint8_t>(m_in.take(4));
    PrefixCode level;
    TRY(level.build(levels));
    for (std::size_t i = 0; i < total;) {
        m_in.bits().fill();
        const auto symbol = level.decode(m_in.bits());
        if (symbol < 16) {
            m_lengths[i] = (m_lengths[i] + symbol) & 15;
            ++i;
            continue;
        }
        if (symbol >= kLevelSymbols || (symbol == 16 && i == 0))
            return Error{ErrorCode::Corrupt, "rar2: code lengths"};
        const auto count = symbol == 16 ? 3 + m_in.take(2) : symbol == 17 ? 3 + m_in.take(3) : 11 + m_in.take(7);
        const auto value = symbol == 16 ? m_lengths[i - 1] : std::uint8_t{0};
        for (const auto end = std::min<std::size_t>(total, i + count); i < end; ++i)
            m_lengths[i] = value;
    }
    TRY(m_in.ready(1));
    const auto lengths = std::span(std::as_const(m_lengths));
    if (m_isAudio) {
        for (std::size_t i = 0; i < m_channelCount; ++i)
            TRY(m_channelCodes[i].build(lengths.subspan(i * kAudioSymbols, kAudioSymbols)));
    } else {
        TRY(m_main.build(lengths.first(kMainSymbols)));
        TRY(m_distance.build(lengths.subspan(kMainSymbols, kDistanceSymbols)));
        TRY(m_repeat.build(lengths.subspan(kMainSymbols + kDistanceSymbols, kRepeatSymbols)));
    }
    m_hasTables = true;
    return {};
}

/// Makes room for a symbol and its output, takes back what came of a symbol that was cut.
Result<void> Rar20::nextSymbol()
{
    auto& out = m_out.cursor();
    if (auto ready = m_in.ready(kSymbolBytes); !ready) {
        out.position = m_sound;
        return ready;
    }
    if (out.position >= out.stop)
        TRY(m_out.flush());
    m_sound = out.position;
    return {};
}

Result<void> Rar20::decodeLz()
{
    auto& bits = m_in.bits();
    auto& out = m_out.cursor();
    for (;;) {
        TRY(nextSymbol());
        if (m_out.isFull())
            return {};
        bits.fill();
        const auto symbol = m_main.decode(bits);
        if (symbol < 256) {
            out.put(static_cast<std::uint8_t>(symbol));
            continue;
        }
        unsigned length;
        std::uint64_t distance;
        if (symbol >= 270) {
            if (symbol == PrefixCode::kInvalid)
                return Error{ErrorCode::Corrupt, "rar2: code"};
            length = kRarLengths[symbol - 270].base + 3 + bits.take(kRarLengths[symbol - 270].bits);
            const auto index = m_distance.decode(bits);
            if (index == PrefixCode::kInvalid)
                return Error{ErrorCode::Corrupt, "rar2: distance code"};
            bits.fill();
            distance = kRarDistances[index].base + 1 + bits.take(kRarDistances[index].bits);
            length += (distance >= 0x2000 ? 1U : 0U) + (distance >= 0x40000 ? 1U : 0U);
        } else if (symbol == 269) {
            m_hasTables = false;
            return {};
        } else if (symbol >= 261) {
            const auto slot = kRarShortDistances[symbol - 261];
            distance = slot.base + 1 + bits.take(slot.bits);
            length = 2;
        } else if (symbol >= 257) {
            distance = m_distances[symbol - 257];
            const auto index = m_repeat.decode(bits);
            if (index == PrefixCode::kInvalid)
                return Error{ErrorCode::Corrupt, "rar2: length code"};
            length = kRarLengths[index].base + 2 + bits.take(kRarLengths[index].bits);
            length += (distance >= 0x101 ? 1U : 0U) + (distance >= 0x2000 ? 1U : 0U) + (distance >= 0x40000 ? 1U : 0U);
        } else {
            distance = m_distances[0];
            length = m_lastLength;
        }
        m_distances = {distance, m_distances[0], m_distances[1], m_distances[2]};
        m_lastLength = length;
        out.copy(distance, length);
    }
}

Result<void> Rar20::decodeAudio()
{
    auto& bits = m_in.bits();
    auto& out = m_out.cursor();
    for (;;) {
        TRY(nextSymbol());
        if (m_out.isFull())
            return {};
        bits.fill();
        const auto symbol = m_channelCodes[m_channel].decode(bits);
        if (symbol == PrefixCode::kInvalid)
            return Error{ErrorCode::Corrupt, "rar2: audio code"};
        if (symbol == 256) {
            m_hasTables = false;
            return {};
        }
        out.put(m_channels[m_channel].decode(static_cast<std::uint8_t>(symbol), m_cross));
        if (++m_channel == m_channelCount)
            m_channel = 0;
    }
}

/// The tables of the next solid entry may stand behind the last byte of output. What is wrong here does not concern
/// this entry.
void Rar20::readTail()
{
    if (!m_hasTables || m_in.hasFewerThan(8) || !m_in.ready(kSymbolBytes))
        return;
    m_in.bits().fill();
    const auto symbol = m_isAudio ? m_channelCodes[m_channel].decode(m_in.bits()) : m_main.decode(m_in.bits());
    if (symbol == (m_isAudio ? 256U : 269U))
        m_hasTables = readTables().has_value();
}

}

std::unique_ptr<RarCodec> makeRar20Codec() { return std::make_unique<Rar20>(); }

}
