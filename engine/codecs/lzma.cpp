#include "engine/codecs/lzma.h"

#include "engine/codecs/liblzma.h"
#include "engine/codecs/lzma_streams.h"

#include <array>
#include <cstdlib>

namespace vantoro {

namespace {

constexpr std::size_t kMostFilters = LZMA_FILTERS_MAX;

lzma_vli libraryId(LzmaFilter filter)
{
    switch (filter) {
    case LzmaFilter::Lzma1:
        return LZMA_FILTER_LZMA1EXT;
    case LzmaFilter::Lzma2:
        return LZMA_FILTER_LZMA2;
    case LzmaFilter::Delta:
        return LZMA_FILTER_DELTA;
    case LzmaFilter::X86:
        return LZMA_FILTER_X86;
    case LzmaFilter::PowerPc:
        return LZMA_FILTER_POWERPC;
    case LzmaFilter::Ia64:
        return LZMA_FILTER_IA64;
    case LzmaFilter::Arm:
        return LZMA_FILTER_ARM;
    case LzmaFilter::ArmThumb:
        return LZMA_FILTER_ARMTHUMB;
    case LzmaFilter::Sparc:
        return LZMA_FILTER_SPARC;
    case LzmaFilter::Arm64:
        return LZMA_FILTER_ARM64;
    }
    return LZMA_VLI_UNKNOWN;
}

/// The library's description of a chain; owns the options that the library allocates.
class FilterChain {
public:
    FilterChain() { m_filters.fill({LZMA_VLI_UNKNOWN, nullptr}); }
    FilterChain(const FilterChain&) = delete;
    FilterChain& operator=(const FilterChain&) = delete;
    ~FilterChain()
    {
        for (auto& filter : m_filters)
            std::free(filter.options);
    }

    Result<void> add(const LzmaFilterStep& step, std::optional<std::uint64_t> size)
    {
        if (m_count == kMostFilters)
            return Error{ErrorCode::UnsupportedMethod, "lzma: more than four filters"};
        auto& filter = m_filters[m_count];
        filter.id = libraryId(step.filter);
        const auto* properties = reinterpret_cast<const std::uint8_t*>(step.properties.data());
        const auto code = lzma_properties_decode(&filter, nullptr, properties, step.properties.size());
        if (code != LZMA_OK) {
            filter = {LZMA_VLI_UNKNOWN, nullptr};
            return lzmaError(code);
        }
        ++m_count;
        if (step.filter == LzmaFilter::Lzma1)
            setSize(*static_cast<lzma_options_lzma*>(filter.options), size);
        return {};
    }
    const lzma_filter* data() const { return m_filters.data(); }

private:
    static void setSize(lzma_options_lzma& options, std::optional<std::uint64_t> size)
    {
        const auto length = size.value_or(LZMA_VLI_UNKNOWN);
        options.ext_flags = LZMA_LZMA1EXT_ALLOW_EOPM;
        options.ext_size_low = static_cast<std::uint32_t>(length);
        options.ext_size_high = static_cast<std::uint32_t>(length >> 32);
    }
    std::array<lzma_filter, kMostFilters + 1> m_filters;
    std::size_t m_count = 0;
};

class ChainDecoder final : public LibLzmaDecoder {
public:
    ChainDecoder(StreamPtr packed, std::unique_ptr<FilterChain> chain, const CodecParams& params)
        : LibLzmaDecoder(std::move(packed), params)
        , m_chain(std::move(chain))
    {
    }

private:
    Result<void> begin(lzma_stream& lzma) override
    {
        const auto needed = lzma_raw_decoder_memusage(m_chain->data());
        if (needed == UINT64_MAX)
            return Error{ErrorCode::UnsupportedMethod, "lzma: chain of filters"};
        if (needed > memoryLimit())
            return Error{ErrorCode::LimitExceeded, "lzma: dictionary larger than allowed", 0, needed};
        if (const auto code = lzma_raw_decoder(&lzma, m_chain->data()); code != LZMA_OK)
            return lzmaError(code);
        return {};
    }
    Result<bool> finished(BufferedInput&, SpanWriter&) override { return false; }
    std::unique_ptr<FilterChain> m_chain;
};

}

Result<StreamPtr> openLzmaAlone(StreamPtr packed, const CodecParams& params)
{
    std::array<std::byte, 13> header;
    if (TRY(readFully(*packed, header)) < header.size())
        return Error{ErrorCode::Truncated, "lzma: header"};
    ByteReader in(header);
    const auto properties = in.take(5);
    const auto size = in.le64();
    constexpr auto kUnknown = ~std::uint64_t{0};
    return openLzma1(std::move(packed), properties, size == kUnknown ? std::nullopt : std::optional(size), params);
}

Result<StreamPtr> openLzmaChain(StreamPtr packed, std::span<const LzmaFilterStep> steps,
                                std::optional<std::uint64_t> size, const CodecParams& params)
{
    if (steps.size() == 1 && steps[0].filter == LzmaFilter::Lzma1)
        return openLzma1(std::move(packed), steps[0].properties, size, params);
    if (steps.size() == 1 && steps[0].filter == LzmaFilter::Lzma2)
        return openLzma2(std::move(packed), steps[0].properties, params);
    auto chain = std::make_unique<FilterChain>();
    for (const auto& step : steps)
        TRY(chain->add(step, size));
    return StreamPtr(std::make_unique<ChainDecoder>(std::move(packed), std::move(chain), params));
}

}
