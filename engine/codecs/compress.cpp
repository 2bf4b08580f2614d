#include "engine/codecs/compress.h"

#include <array>
#include <optional>

namespace vantoro {

namespace {

constexpr unsigned kClear = 256;
constexpr unsigned kFirstWidth = 9;
constexpr unsigned kLargestWidth = 16;
constexpr std::size_t kTable = std::size_t{1} << kLargestWidth;

/// Codes come in groups of eight, which take as many bytes as a code has bits; the rest of a group is skipped when
/// the width changes or the table is cleared.
class CodeGroup {
public:
    unsigned width() const { return m_width; }
    void begin(unsigned width)
    {
        m_width = width;
        m_bits = 0; // drops the group
    }
    /// Nothing at the end of the input; a piece shorter than a code is padding.
    Result<std::optional<unsigned>> next(BufferedInput& in)
    {
        if (m_at + m_width > m_bits && !TRY(fill(in)))
            return std::optional<unsigned>();
        const auto byte = m_at / 8;
        const auto word = static_cast<unsigned>(m_group[byte]) | static_cast<unsigned>(m_group[byte + 1]) << 8
            | static_cast<unsigned>(m_group[byte + 2]) << 16;
        const auto code = word >> (m_at % 8) & ((1U << m_width) - 1);
        m_at += m_width;
        return std::optional(code);
    }

private:
    Result<bool> fill(BufferedInput& in)
    {
        m_at = 0;
        m_bits = 0;
        std::size_t have = 0;
        while (have < m_width) {
            const auto packed = TRY(in.peek());
            if (packed.empty())
                break;
            const auto part = packed.first(std::min<std::size_t>(packed.size(), m_width - have));
            std::memcpy(m_group.data() + have, part.data(), part.size());
            in.consume(part.size());
            have += part.size();
        }
        m_bits = static_cast<unsigned>(have) * 8;
        return m_bits >= m_width;
    }
    std::array<std::uint8_t, kLargestWidth + 2> m_group{};
    unsigned m_width = kFirstWidth;
    unsigned m_bits = 0; // in the group
    unsigned m_at = 0; // the next code's first bit
};

class CompressDecoder final : public Decoder {
public:
    CompressDecoder(StreamPtr packed, const CodecParams& params) : Decoder(params.cancel), m_in(std::move(packed)) {}

private:
    Result<void> decode(SpanWriter& out) override
    {
        if (!m_started)
            TRY(readHeader());
        while (out.room() > 0) {
            if (m_pending == 0) {
                const auto code = TRY(m_codes.next(m_in));
                if (!code)
                    break;
                TRY(takeCode(*code));
            }
            const auto part = std::min(out.room(), m_pending);
            for (std::size_t i = 0; i < part; ++i)
                out.put(m_string[--m_pending]);
        }
        return {};
    }

    Result<void> readHeader()
    {
        if (TRY(m_in.next()) != std::byte{0x1F} || TRY(m_in.next()) != std::byte{0x9D})
            return Error{ErrorCode::Corrupt, "compress: signature"};
        const auto flags = std::to_integer<unsigned>(TRY(m_in.next()));
        m_largestWidth = flags & 0x1F;
        if (m_largestWidth < kFirstWidth || m_largestWidth > kLargestWidth || (flags & 0x60) != 0)
            return Error{ErrorCode::UnsupportedMethod, "compress: width of the codes"};
        m_hasClear = (flags & 0x80) != 0;
        m_free = m_hasClear ? kClear + 1 : kClear;
        m_started = true;
        return {};
    }

    Result<void> takeCode(unsigned code)
    {
        if (code == kClear && m_hasClear) {
            m_codes.begin(kFirstWidth);
            m_free = kClear + 1;
            m_old = kNone;
            return {};
        }
        if (m_old == kNone) {
            if (code > 0xFF)
                return Error{ErrorCode::Corrupt, "compress: first code is not a byte"};
            m_first = static_cast<std::byte>(code);
            m_string[m_pending++] = m_first;
        } else {
            if (code > m_free || code == 1U << m_largestWidth)
                return Error{ErrorCode::Corrupt, "compress: code not yet defined"};
            spell(code);
            define();
        }
        m_old = code;
        return {};
    }

    /// Puts the string of a code, last byte first, on the stack. Links go down in code number, so that it ends.
    void spell(unsigned code)
    {
        if (code == m_free) {
            m_string[m_pending++] = m_first;
            code = m_old;
        }
        while (code > 0xFF) {
            m_string[m_pending++] = m_suffix[code];
            code = m_prefix[code];
        }
        m_first = static_cast<std::byte>(code);
        m_string[m_pending++] = m_first;
    }

    void define()
    {
        if (m_free < 1U << m_largestWidth) {
            m_prefix[m_free] = static_cast<std::uint16_t>(m_old);
            m_suffix[m_free] = m_first;
            ++m_free;
        }
        // With a limit of 9 bits the width still grows to 10, although no such code exists.
        const auto mostWidth = m_largestWidth == kFirstWidth ? kFirstWidth + 1 : m_largestWidth;
        if (m_free > (1U << m_codes.width()) - 1 && m_codes.width() < mostWidth)
            m_codes.begin(m_codes.width() + 1);
    }

    static constexpr unsigned kNone = ~0U;
    BufferedInput m_in;
    CodeGroup m_codes;
    bool m_started = false;
    bool m_hasClear = false;
    unsigned m_largestWidth = 0;
    unsigned m_free = 0; // the code to be defined next
    unsigned m_old = kNone;
    std::byte m_first{};
    std::vector<std::uint16_t> m_prefix = std::vector<std::uint16_t>(kTable);
    std::vector<std::byte> m_suffix = std::vector<std::byte>(kTable);
    std::vector<std::byte> m_string = std::vector<std::byte>(kTable + 1);
    std::size_t m_pending = 0; // bytes on the stack
};

}

Result<StreamPtr> openCompress(StreamPtr packed, const CodecParams& params)
{
    return StreamPtr(std::make_unique<CompressDecoder>(std::move(packed), params));
}

}
