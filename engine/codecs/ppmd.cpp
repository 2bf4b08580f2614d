#include "engine/codecs/ppmd.h"

#include "engine/codecs/ppmd_model.h"
#include "engine/codecs/ppmd_range.h"

#include <algorithm>

namespace vantoro {

namespace {
/// How far an escape estimate is started off, by the top bits of the binary chance.
constexpr std::array<std::uint8_t, 16> kEscapeStart = {25, 14, 9, 7, 5, 5, 4, 4, 4, 3, 3, 3, 2, 2, 2, 2};
}

template <PpmdParams::Variant variant> template <class Coder> int PpmdModel<variant>::decode(Coder& coder)
{
    return count(m_minContext) == 1 ? decodeBinary(coder) : decodeFirst(coder);
}

template <PpmdParams::Variant variant> std::uint16_t& PpmdModel<variant>::binarySlot(Address state)
{
    const auto below = suffix(m_minContext);
    unsigned column = m_prevSuccess + m_binaryColumn[count(below) - 1] + (m_runLength < 0 ? 32U : 0U);
    if constexpr (kIsI) {
        column += flags(m_minContext);
        return m_binary[m_quant[frequency(state) - 1U]][column & 63];
    } else {
        m_hiBits = 8 * isHigh(symbol(m_found));
        column += m_hiBits + 16 * isHigh(symbol(state));
        return m_binary[(frequency(state) - 1) & 127][column & 63];
    }
}

template <PpmdParams::Variant variant> template <class Coder> int PpmdModel<variant>::decodeBinary(Coder& coder)
{
    const auto state = onlyState(m_minContext);
    auto& chance = binarySlot(state);
    const unsigned mean = (chance + 32U) >> kPeriodBits;
    const auto sym = static_cast<int>(symbol(state));
    if (!coder.second(chance)) {
        chance = static_cast<std::uint16_t>(chance + (1U << kPeriodBits) - mean);
        m_found = state;
        if (const auto freq = frequency(state); freq < (kIsI ? 196 : 128))
            setFrequency(state, freq + 1);
        m_prevSuccess = 1;
        ++m_runLength;
        next();
        return sym;
    }
    chance = static_cast<std::uint16_t>(chance - mean);
    m_initEscape = kEscapeStart[chance >> 10 & 15];
    clearMask();
    m_masked[static_cast<unsigned>(sym)] = m_maskStamp;
    m_prevSuccess = 0;
    return decodeEscaped(coder);
}

/// Four more for the found state; in a context of several states.
template <PpmdParams::Variant variant> void PpmdModel<variant>::raise(Address state)
{
    m_found = state;
    setSum(m_minContext, sum(m_minContext) + 4);
    setFrequency(state, frequency(state) + 4);
}

template <PpmdParams::Variant variant> template <class Coder> int PpmdModel<variant>::decodeFirst(Coder& coder)
{
    const auto c = m_minContext;
    const std::uint32_t total = sum(c);
    if (total == 0)
        return PpmdDecoder::kDamaged;
    const auto code = coder.threshold(total);
    auto s = states(c);
    auto reached = frequency(s);
    if (code < reached) {
        coder.decode(0, reached);
        const auto sym = static_cast<int>(symbol(s));
        m_prevSuccess = (kIsI ? 2 * reached >= total : 2 * reached > total) ? 1 : 0;
        m_runLength += static_cast<int>(m_prevSuccess);
        raise(s);
        if (frequency(s) > kMaxFrequency)
            rescale();
        next();
        return sym;
    }
    m_prevSuccess = 0;
    const auto n = count(c);
    for (unsigned i = 1; i < n; ++i) {
        s += kStateSize;
        const auto freq = frequency(s);
        reached += freq;
        if (reached <= code)
            continue;
        coder.decode(reached - freq, freq);
        const auto sym = static_cast<int>(symbol(s));
        raise(s);
        if (frequency(s) > frequency(s - kStateSize)) {
            swapStates(s, s - kStateSize);
            m_found = s - kStateSize;
            if (frequency(m_found) > kMaxFrequency)
                rescale();
        }
        next();
        return sym;
    }
    if (code >= total)
        return PpmdDecoder::kDamaged;
    if constexpr (!kIsI)
        m_hiBits = 8 * isHigh(symbol(m_found));
    coder.decode(reached, total - reached);
    clearMask();
    mask(states(c), n);
    return decodeEscaped(coder);
}

template <PpmdParams::Variant variant> void PpmdModel<variant>::mask(Address firstState, unsigned n)
{
    for (unsigned i = 0; i < n; ++i)
        m_masked[symbol(firstState + i * kStateSize)] = m_maskStamp;
}

/// The escape estimate for the context, of whose `n` states `masked` are known not to follow.
template <PpmdParams::Variant variant> auto PpmdModel<variant>::seeSlot(unsigned n, unsigned masked) -> See&
{
    if (n == 256) {
        m_noSee = {1, 0, 1}; // the weight is always 1, and nothing is learnt
        return m_noSee;
    }
    const auto c = m_minContext;
    const auto below = count(suffix(c));
    if constexpr (kIsI) {
        const unsigned column = (sum(c) > 11 * n ? 1U : 0U) + (2 * n < below + masked ? 2U : 0U) + flags(c);
        return m_see[std::min<unsigned>(m_quant[n + 1] - 3U, kSeeRows - 1)][column & 31];
    } else {
        const auto open = n - masked;
        const unsigned column = (open < below - n ? 1U : 0U) + (sum(c) < 11 * n ? 2U : 0U) + (masked > open ? 4U : 0U);
        return m_see[std::min<unsigned>(m_quant[open - 1], kSeeRows - 1)][(column + m_hiBits) & 15];
    }
}

template <PpmdParams::Variant variant> template <class Coder> int PpmdModel<variant>::decodeEscaped(Coder& coder)
{
    auto masked = count(m_minContext);
    for (;;) {
        do {
            ++m_orderFall;
            m_minContext = suffix(m_minContext);
            if (m_minContext == 0)
                return PpmdDecoder::kEnd;
        } while (count(m_minContext) == masked);
        const auto n = count(m_minContext);
        const auto first = states(m_minContext);
        std::array<Address, 256> open;
        unsigned opened = 0;
        std::uint32_t weight = 0;
        for (unsigned i = 0; i < n; ++i) {
            const auto s = first + i * kStateSize;
            if (m_masked[symbol(s)] != m_maskStamp) {
                weight += frequency(s);
                open[opened++] = s;
            }
        }
        auto& see = seeSlot(n, masked);
        const auto mean = static_cast<unsigned>(see.sum) >> see.shift;
        if (n != 256)
            see.sum = static_cast<std::uint16_t>(see.sum - mean);
        const std::uint32_t total = weight + std::max(mean, 1U);
        const auto code = coder.threshold(total);
        if (code >= total)
            return PpmdDecoder::kDamaged;
        if (code >= weight) {
            coder.decode(weight, total - weight);
            if (n != 256)
                see.sum = static_cast<std::uint16_t>(see.sum + total);
            for (unsigned i = 0; i < opened; ++i)
                m_masked[symbol(open[i])] = m_maskStamp;
            masked = n;
            continue;
        }
        std::uint32_t reached = 0;
        unsigned at = 0;
        for (; (reached += frequency(open[at])) <= code; ++at) {}
        const auto s = open[at];
        const auto sym = static_cast<int>(symbol(s));
        coder.decode(reached - frequency(s), frequency(s));
        if (n != 256 && see.shift < kPeriodBits && --see.count == 0) {
            see.sum = static_cast<std::uint16_t>(see.sum << 1);
            see.count = static_cast<std::uint8_t>(3U << see.shift++);
        }
        raise(s);
        if (frequency(s) > kMaxFrequency)
            rescale();
        m_runLength = m_initRunLength;
        update();
        return sym;
    }
}

namespace {

template <PpmdParams::Variant variant, class Coder> class PpmdDecoderOf final : public PpmdDecoder {
public:
    Result<void> reserve(const PpmdParams& params) { return m_model.reserve(params); }
    void restart(unsigned order) override { m_model.restart(order); }
    bool startCoder(PpmdInput& in) override { return m_coder.start(in); }
    int decodeByte() override { return m_model.decode(m_coder); }
    std::size_t decode(Bytes out, int& stop) override
    {
        std::size_t done = 0;
        for (; done < out.size(); ++done) {
            const auto symbol = m_model.decode(m_coder);
            if (symbol < 0) {
                stop = symbol;
                break;
            }
            out[done] = static_cast<std::byte>(symbol);
        }
        return done;
    }
    bool isCoderAtRest() const override { return m_coder.isAtRest(); }

private:
    PpmdModel<variant> m_model;
    Coder m_coder;
};

template <PpmdParams::Variant variant, class Coder>
Result<std::unique_ptr<PpmdDecoder>> makeOf(const PpmdParams& params)
{
    auto decoder = std::make_unique<PpmdDecoderOf<variant, Coder>>();
    TRY(decoder->reserve(params));
    return std::unique_ptr<PpmdDecoder>(std::move(decoder));
}

/// Counts what is read beyond the end.
class StreamInput final : public PpmdInput {
public:
    explicit StreamInput(StreamPtr packed) : m_in(std::move(packed)) {}
    std::uint8_t next() override
    {
        auto value = m_in.next();
        if (value)
            return std::to_integer<std::uint8_t>(*value);
        if (m_missing == 0)
            m_error = value.error();
        ++m_missing;
        return 0;
    }
    /// The coder looks up to four bytes ahead.
    Result<void> check() const
    {
        if (m_missing > 4 || (m_missing > 0 && m_error.code != ErrorCode::Truncated))
            return m_error;
        return {};
    }

    /// Why the code made no sense: mostly because it has no end.
    Error failure() const
    {
        return m_missing > 0 ? m_error : Error{ErrorCode::Corrupt, "ppmd: escape out of the root or code out of range"};
    }

private:
    BufferedInput m_in;
    unsigned m_missing = 0;
    Error m_error;
};

class ZipPpmdDecoder final : public Decoder {
public:
    ZipPpmdDecoder(StreamPtr packed, std::uint64_t size, std::uint64_t memoryLimit)
        : m_in(std::move(packed))
        , m_left(size)
        , m_memoryLimit(memoryLimit)
    {
    }

private:
    Result<void> decode(SpanWriter& out) override
    {
        if (m_left == 0)
            return {};
        if (!m_decoder)
            TRY(start());
        // In pieces, so that input that ended is noticed before much is made of nothing.
        while (out.room() > 0 && m_left > 0) {
            const auto wanted = std::min({std::uint64_t{1024}, std::uint64_t{out.room()}, m_left});
            int stop = 0;
            const auto got = m_decoder->decode(out.free().first(static_cast<std::size_t>(wanted)), stop);
            TRY(m_in.check());
            out.advance(got);
            m_left -= got;
            if (got < wanted)
                return m_in.failure();
        }
        return {};
    }

    /// u16: order - 1 in 4 bits, memory - 1 in MiB in 8, restore method in 4.
    Result<void> start()
    {
        const unsigned low = m_in.next();
        const unsigned fields = low | static_cast<unsigned>(m_in.next()) << 8;
        TRY(m_in.check());
        PpmdParams params{.variant = PpmdParams::Variant::I};
        params.order = (fields & 15) + 1;
        params.memory = ((fields >> 4 & 255) + 1) << 20;
        if (fields >> 12 > 1)
            return Error{ErrorCode::UnsupportedMethod, "ppmd: restore method"};
        params.restore = fields >> 12 == 1 ? PpmdParams::Restore::CutOff : PpmdParams::Restore::Restart;
        if (params.memory > m_memoryLimit)
            return Error{ErrorCode::LimitExceeded, "ppmd: model memory"};
        m_decoder = TRY(PpmdDecoder::make(params));
        if (!m_decoder->startCoder(m_in))
            return Error{ErrorCode::Corrupt, "ppmd: start of the code"};
        return m_in.check();
    }

    StreamInput m_in;
    std::uint64_t m_left, m_memoryLimit;
    std::unique_ptr<PpmdDecoder> m_decoder;
};

}

Result<std::unique_ptr<PpmdDecoder>> PpmdDecoder::make(const PpmdParams& params)
{
    using Variant = PpmdParams::Variant;
    const bool isCarryless = params.coder == PpmdParams::Coder::Carryless;
    if (params.variant == Variant::I)
        return isCarryless ? makeOf<Variant::I, PpmdCarrylessCoder>(params)
                           : makeOf<Variant::I, PpmdSevenZipCoder>(params);
    return isCarryless ? makeOf<Variant::H, PpmdCarrylessCoder>(params) : makeOf<Variant::H, PpmdSevenZipCoder>(params);
}

StreamPtr openZipPpmd(StreamPtr packed, std::uint64_t size, std::uint64_t memoryLimit)
{
    return std::make_unique<ZipPpmdDecoder>(std::move(packed), size, memoryLimit);
}

}
