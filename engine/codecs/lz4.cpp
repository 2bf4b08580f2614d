#include "engine/codecs/lz4.h"

#include <lz4.h>
#include <lz4frame.h>

#include <array>
#include <optional>
#include <string_view>

namespace vantoro {

namespace {

constexpr std::size_t kInput = 256 << 10;
constexpr std::uint32_t kFrame = 0x184D2204;
constexpr std::uint32_t kLegacy = 0x184C2102;
constexpr std::uint32_t kSkippable = 0x184D2A50; // the last four bits are free
constexpr std::size_t kLegacyBlock = 8 << 20; // decoded; every block but the last has this size

struct FreeContext {
    void operator()(LZ4F_dctx* context) const { LZ4F_freeDecompressionContext(context); }
};
using ContextPtr = std::unique_ptr<LZ4F_dctx, FreeContext>;

class Lz4Decoder final : public Decoder {
public:
    Lz4Decoder(StreamPtr packed, const CodecParams& params, ContextPtr context)
        : Decoder(params.cancel)
        , m_in(std::move(packed), kInput)
        , m_context(std::move(context))
    {
    }

private:
    enum class State : std::uint8_t { Between, Frame, Legacy, End };

    Result<void> decode(SpanWriter& out) override
    {
        while (out.room() > 0 && m_state != State::End) {
            if (m_state == State::Between) {
                TRY(beginFrame());
            } else if (m_state == State::Frame) {
                TRY(decodeFrame(out));
            } else {
                TRY(decodeLegacy(out));
            }
        }
        return {};
    }

    Result<std::uint32_t> le32()
    {
        std::uint32_t value = 0;
        for (unsigned i = 0; i < 4; ++i)
            value |= std::to_integer<std::uint32_t>(TRY(m_in.next())) << (8 * i);
        return value;
    }

    Result<void> beginFrame()
    {
        if (m_frames > 0 && TRY(m_in.peek()).empty()) {
            m_state = State::End;
            return {};
        }
        const auto word = le32();
        if (!word && m_frames == 0)
            return word.error();
        const auto magic = word.value_or(0); // fewer than four bytes are no frame either
        if ((magic & ~0xFU) == kSkippable)
            return skipFrame();
        if (magic == kLegacy) {
            m_state = State::Legacy;
        } else if (magic == kFrame) {
            m_in.unread(std::as_bytes(std::span(kFrameBytes)));
            m_state = State::Frame;
        } else if (m_frames > 0) {
            return Error{ErrorCode::TrailingData, "lz4: no frame after the end"};
        } else {
            return Error{ErrorCode::Corrupt, "lz4: signature"};
        }
        return {};
    }

    Result<void> skipFrame()
    {
        for (std::size_t left = TRY(le32()); left > 0;) {
            const auto part = std::min(left, TRY(m_in.peek()).size());
            if (part == 0)
                return Error{ErrorCode::Truncated, "lz4: skippable frame"};
            m_in.consume(part);
            left -= part;
        }
        ++m_frames;
        return {};
    }

    Result<void> decodeFrame(SpanWriter& out)
    {
        const auto packed = TRY(m_in.peek());
        auto inSize = packed.size();
        auto outSize = out.room();
        const auto status
            = LZ4F_decompress(m_context.get(), out.free().data(), &outSize, packed.data(), &inSize, nullptr);
        if (LZ4F_isError(status))
            return fault(status);
        m_in.consume(inSize);
        out.advance(outSize);
        if (status == 0) {
            ++m_frames;
            m_state = State::Between;
            markVerified(out);
        } else if (packed.empty() && outSize == 0) {
            return Error{ErrorCode::Truncated, "lz4: the input ends inside a frame"};
        }
        return {};
    }

    static Error fault(std::size_t status)
    {
        const std::string_view name = LZ4F_getErrorName(status);
        if (name.find("hecksum_invalid") != std::string_view::npos)
            return {ErrorCode::ChecksumMismatch, "lz4: checksum"};
        if (name.find("allocation") != std::string_view::npos)
            return {ErrorCode::OutOfMemory, "lz4: no memory"};
        if (name.find("frameSize_wrong") != std::string_view::npos)
            return {ErrorCode::SizeMismatch, "lz4: size of the content"};
        return {ErrorCode::Corrupt, "lz4: damaged frame"};
    }

    /// A block is a length and that many bytes; another frame's signature ends the blocks.
    Result<void> decodeLegacy(SpanWriter& out)
    {
        if (m_blockUsed == m_blockSize && !TRY(readLegacyBlock()))
            return {};
        const auto part = std::min(out.room(), m_blockSize - m_blockUsed);
        out.put(ConstBytes(m_block).subspan(m_blockUsed, part));
        m_blockUsed += part;
        return {};
    }

    Result<bool> readLegacyBlock()
    {
        if (TRY(m_in.peek()).empty()) {
            ++m_frames;
            m_state = State::End;
            return false;
        }
        const std::size_t length = TRY(le32());
        if (length > static_cast<std::size_t>(LZ4_compressBound(kLegacyBlock))) {
            std::array<std::byte, 4> word;
            for (unsigned i = 0; i < 4; ++i)
                word[i] = static_cast<std::byte>(length >> (8 * i) & 0xFF);
            m_in.unread(word);
            ++m_frames;
            m_state = State::Between;
            return false;
        }
        m_packedBlock.resize(length);
        for (std::size_t done = 0; done < length;) {
            const auto packed = TRY(m_in.peek());
            if (packed.empty())
                return Error{ErrorCode::Truncated, "lz4: legacy block"};
            const auto part = packed.first(std::min(packed.size(), length - done));
            std::memcpy(m_packedBlock.data() + done, part.data(), part.size());
            m_in.consume(part.size());
            done += part.size();
        }
        m_block.resize(kLegacyBlock);
        const auto size = LZ4_decompress_safe(reinterpret_cast<const char*>(m_packedBlock.data()),
                                              reinterpret_cast<char*>(m_block.data()), static_cast<int>(length),
                                              static_cast<int>(m_block.size()));
        if (size <= 0)
            return Error{ErrorCode::Corrupt, "lz4: legacy block"};
        m_blockSize = static_cast<std::size_t>(size);
        m_blockUsed = 0;
        return true;
    }

    static constexpr std::array<std::uint8_t, 4> kFrameBytes{0x04, 0x22, 0x4D, 0x18};
    BufferedInput m_in;
    ContextPtr m_context;
    State m_state = State::Between;
    std::uint64_t m_frames = 0;
    std::vector<std::byte> m_packedBlock;
    std::vector<std::byte> m_block;
    std::size_t m_blockSize = 0;
    std::size_t m_blockUsed = 0;
};

}

Result<StreamPtr> openLz4(StreamPtr packed, const CodecParams& params)
{
    LZ4F_dctx* context = nullptr;
    if (LZ4F_isError(LZ4F_createDecompressionContext(&context, LZ4F_VERSION)))
        return Error{ErrorCode::OutOfMemory, "lz4: decoder"};
    return StreamPtr(std::make_unique<Lz4Decoder>(std::move(packed), params, ContextPtr(context)));
}

}
