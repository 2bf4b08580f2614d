#include "engine/codecs/wavpack.h"

#include "engine/codecs/late_wavpack.h"

#include <limits>
#include <optional>

namespace vantoro {

namespace {

constexpr std::uint32_t kValues = 64 << 10; ///< samples unpacked at once, over all channels
constexpr int kMostChannels = 4096; ///< of the format
constexpr std::uint64_t kMostInput = 64 << 20; ///< that the library may take, and hold, without giving a sample

/// What the library reads from: forwards only. It knows no errors but the end of the input, so the true one is kept.
class WavPackInput {
public:
    WavPackInput(StreamPtr packed, CancelToken cancel) : m_in(std::move(packed)), m_cancel(std::move(cancel)) {}

    /// Before each call that makes the library read.
    void allowMore() { m_allowed = kMostInput; }
    const Result<void>& state() const { return m_state; }
    bool hasEnded() const { return m_hasEnded; }

    static std::int32_t read(void* id, void* into, std::int32_t count)
    {
        auto& self = of(id);
        const auto size = static_cast<std::size_t>(std::max(count, 0));
        std::size_t got = 0;
        if (self.m_state)
            self.m_state = guarded([&] { return self.fill({static_cast<std::byte*>(into), size}, got); });
        return static_cast<std::int32_t>(got);
    }
    static std::int64_t position(void* id) { return static_cast<std::int64_t>(of(id).m_position); }
    static int pushBack(void* id, int value)
    {
        auto& self = of(id);
        if (self.m_position == 0)
            return EOF;
        const auto byte = static_cast<std::byte>(value);
        self.m_in.unread({&byte, 1});
        --self.m_position;
        return value;
    }

private:
    static WavPackInput& of(void* id) { return *static_cast<WavPackInput*>(id); }

    Result<void> fill(Bytes into, std::size_t& got)
    {
        TRY(m_cancel.check());
        if (into.size() > m_allowed)
            return Error{ErrorCode::LimitExceeded, "wavpack: too much between two samples"};
        while (got < into.size()) {
            const auto block = TRY(m_in.peek());
            m_hasEnded = block.empty();
            if (m_hasEnded)
                break;
            const auto part = block.first(std::min(block.size(), into.size() - got));
            std::memcpy(into.data() + got, part.data(), part.size());
            m_in.consume(part.size());
            got += part.size();
            m_position += part.size();
            m_allowed -= part.size();
        }
        return {};
    }

    BufferedInput m_in;
    CancelToken m_cancel;
    Result<void> m_state;
    std::uint64_t m_position = 0;
    std::uint64_t m_allowed = 0;
    bool m_hasEnded = false;
};

WavpackStreamReader64 inputCallbacks{
    .read_bytes = &WavPackInput::read,
    .write_bytes = nullptr, // of tags, which are not read
    .get_pos = &WavPackInput::position,
    .set_pos_abs = [](void*, std::int64_t) { return -1; },
    .set_pos_rel = [](void*, std::int64_t, int) { return -1; },
    .push_back_byte = &WavPackInput::pushBack,
    .get_length = [](void*) { return std::int64_t{0}; },
    .can_seek = [](void*) { return 0; },
    .truncate_here = nullptr,
    .close = [](void*) { return 0; },
};

/// As they lie in a wave file: lowest byte first, bytes alone without a sign.
template <unsigned Size> void storeSamples(std::span<const std::int32_t> values, std::vector<std::byte>& out)
{
    out.resize(values.size() * Size);
    auto* to = out.data();
    for (const auto signedValue : values) {
        const auto value = static_cast<std::uint32_t>(signedValue) + (Size == 1 ? 128 : 0);
        for (unsigned i = 0; i < Size; ++i)
            *to++ = static_cast<std::byte>(value >> 8 * i);
    }
}

constexpr std::array kStoreSamples{&storeSamples<1>, &storeSamples<2>, &storeSamples<3>, &storeSamples<4>};

class WavPackDecoder final : public Decoder {
public:
    WavPackDecoder(StreamPtr packed, std::uint64_t size, const CodecParams& params)
        : Decoder(params.cancel)
        , m_input(std::move(packed), params.cancel)
        , m_size(size)
    {
    }

    Result<void> open()
    {
        constexpr std::size_t kMessage = 80; // what the library writes at most
        char message[kMessage] = "";
        m_input.allowMore();
        m_context.reset(WavpackOpenFileInputEx64(&inputCallbacks, &m_input, nullptr, message,
                                                 OPEN_WRAPPER | OPEN_ALT_TYPES | OPEN_DSD_NATIVE, 0));
        TRY(m_input.state());
        if (!m_context && m_input.hasEnded())
            return Error{ErrorCode::Truncated, "wavpack: no samples before the end"};
        if (!m_context || WavpackGetNumErrors(m_context.get()) > 0)
            return Error{ErrorCode::Corrupt, "wavpack: damaged header"};
        TRY(checkKind());
        m_values.resize(kValues);
        return takeHeader();
    }

private:
    struct Closer {
        void operator()(WavpackContext* context) const { WavpackCloseFile(context); }
    };

    Result<void> checkKind()
    {
        constexpr int kOtherOrder = 0xFF; // the flags of sample orders that no wave file has
        if ((WavpackGetQualifyMode(m_context.get()) & kOtherOrder) != 0)
            return Error{ErrorCode::UnsupportedMethod, "wavpack: not of a wave file"};
        if ((WavpackGetMode(m_context.get()) & MODE_LOSSLESS) == 0)
            return Error{ErrorCode::UnsupportedMethod, "wavpack: lossy without its correction"};
        const auto channels = WavpackGetNumChannels(m_context.get());
        const auto size = WavpackGetBytesPerSample(m_context.get());
        if (channels < 1 || channels > kMostChannels || size < 1 || size > static_cast<int>(kStoreSamples.size()))
            return Error{ErrorCode::Corrupt, "wavpack: form of the samples"};
        m_channels = static_cast<std::uint32_t>(channels);
        m_sampleSize = static_cast<std::uint32_t>(size);
        if (const auto frames = WavpackGetNumSamples64(m_context.get()); frames >= 0)
            m_declared = static_cast<std::uint64_t>(frames);
        return {};
    }

    Result<void> takeHeader()
    {
        takeWrapper();
        if (m_ready.empty())
            TRY(makeHeader());
        m_made = m_ready.size();
        return {};
    }

    /// What the stream holds of the file beside its samples.
    void takeWrapper()
    {
        const auto size = WavpackGetWrapperBytes(m_context.get());
        const auto* bytes = reinterpret_cast<const std::byte*>(WavpackGetWrapperData(m_context.get()));
        m_ready.assign(bytes, bytes + size);
        m_used = 0;
        if (size > 0)
            WavpackFreeWrapper(m_context.get());
    }

    Result<void> makeHeader()
    {
        constexpr std::uint32_t kFormatSize = 16, kHeaderSize = 44, kPcm = 1, kFloat = 3;
        if (WavpackGetFileFormat(m_context.get()) != WP_FORMAT_WAV || !m_declared)
            return Error{ErrorCode::UnsupportedMethod, "wavpack: no header to go by"};
        const auto frameSize = m_channels * m_sampleSize;
        if (*m_declared > (std::numeric_limits<std::uint32_t>::max() - kHeaderSize) / frameSize)
            return Error{ErrorCode::UnsupportedMethod, "wavpack: too large for a plain header"};
        const auto dataSize = static_cast<std::uint32_t>(*m_declared) * frameSize;
        const auto rate = WavpackGetSampleRate(m_context.get());
        putText("RIFF");
        put(kHeaderSize - 8 + dataSize + dataSize % 2, 4);
        putText("WAVEfmt ");
        put(kFormatSize, 4);
        put((WavpackGetMode(m_context.get()) & MODE_FLOAT) != 0 ? kFloat : kPcm, 2);
        put(m_channels, 2);
        put(rate, 4);
        put(rate * frameSize, 4);
        put(frameSize, 2);
        put(8 * m_sampleSize, 2);
        putText("data");
        put(dataSize, 4);
        return {};
    }

    void putText(std::string_view text)
    {
        const auto bytes = std::as_bytes(std::span(text));
        m_ready.insert(m_ready.end(), bytes.begin(), bytes.end());
    }
    void put(std::uint32_t value, unsigned bytes)
    {
        for (unsigned i = 0; i < bytes; ++i)
            m_ready.push_back(static_cast<std::byte>(value >> 8 * i));
    }

    Result<void> decode(SpanWriter& out) override
    {
        while (out.room() > 0) {
            if (m_used == m_ready.size())
                TRY(refill());
            if (m_ready.empty())
                break;
            const auto rest = ConstBytes(m_ready).subspan(m_used);
            const auto part = rest.first(std::min(rest.size(), out.room()));
            out.put(part);
            m_used += part.size();
        }
        return {};
    }

    /// The next stretch of the file; nothing at its end.
    Result<void> refill()
    {
        m_ready.clear();
        m_used = 0;
        TRY(m_input.state());
        if (WavpackGetNumChannels(m_context.get()) != static_cast<int>(m_channels))
            return Error{ErrorCode::Corrupt, "wavpack: number of channels"};
        m_input.allowMore();
        const auto frames = WavpackUnpackSamples(m_context.get(), m_values.data(), kValues / m_channels);
        if (WavpackGetNumErrors(m_context.get()) > 0)
            return Error{ErrorCode::Corrupt, "wavpack: damaged block"};
        if (frames == 0) {
            TRY(m_input.state());
            return takeTrailer();
        }
        m_frames += frames;
        kStoreSamples[m_sampleSize - 1](std::span(m_values).first(std::size_t{frames} * m_channels), m_ready);
        m_made += m_ready.size();
        return {};
    }

    Result<void> takeTrailer()
    {
        if (m_declared && m_frames < *m_declared)
            return Error{m_input.hasEnded() ? ErrorCode::Truncated : ErrorCode::Corrupt,
                         "wavpack: samples are missing"};
        takeWrapper();
        // Older packers keep the padding with what follows, newer ones nowhere, and some files have none.
        const auto padding = missingPadding();
        if (padding > 0 && m_size - m_made == m_ready.size() + padding)
            m_ready.insert(m_ready.begin(), padding, std::byte{0});
        m_made += m_ready.size();
        return {};
    }

    std::size_t missingPadding() const
    {
        const std::uint64_t alignment = WavpackGetFileFormat(m_context.get()) == WP_FORMAT_W64 ? 8 : 2;
        const auto over = m_frames * m_channels * m_sampleSize % alignment;
        return static_cast<std::size_t>(over == 0 ? 0 : alignment - over);
    }

    WavPackInput m_input;
    std::unique_ptr<WavpackContext, Closer> m_context; // reads m_input
    std::uint32_t m_channels = 0, m_sampleSize = 0;
    std::optional<std::uint64_t> m_declared; // samples of a channel
    std::uint64_t m_frames = 0;
    std::uint64_t m_made = 0, m_size; // bytes of the file: up to the end of m_ready, and declared
    std::vector<std::int32_t> m_values;
    std::vector<std::byte> m_ready;
    std::size_t m_used = 0; // of m_ready
};

}

Result<StreamPtr> openWavPack(StreamPtr packed, std::uint64_t size, const CodecParams& params)
{
    if (!preloadWavPack())
        return Error{ErrorCode::UnsupportedMethod, "wavpack: the library is not installed"};
    auto decoder = std::make_unique<WavPackDecoder>(std::move(packed), size, params);
    TRY(decoder->open());
    return StreamPtr(std::move(decoder));
}

bool preloadWavPack() { return wavpackLibrary.load(); }

}
