#include "engine/codecs/shrink.h"

#include "engine/codecs/lsb_bits.h"

#include <array>
#include <bitset>

namespace vantoro {

namespace {

constexpr unsigned kCodes = 8192, kControl = 256, kFirstString = 257, kLeastWidth = 9, kMostWidth = 13;
constexpr std::uint16_t kFree = 0xFFFF;

class ShrinkDecoder final : public Decoder {
public:
    ShrinkDecoder(StreamPtr packed, std::uint64_t size, const CodecParams& params)
        : Decoder(params.cancel)
        , m_bits(std::move(packed))
        , m_left(size)
    {
        m_prefix.fill(kFree);
        m_stack.reserve(kCodes);
    }

private:
    Result<void> decode(SpanWriter& out) override
    {
        while (out.room() > 0 && m_left > 0) {
            if (m_stack.empty()) {
                TRY(readString());
                TRY(m_bits.check());
                continue;
            }
            out.put(m_stack.back());
            m_stack.pop_back();
            --m_left;
        }
        return {};
    }

    /// One code: the bytes of its string on the stack, last one first, or a change of the table.
    Result<void> readString()
    {
        TRY(m_bits.fill());
        const auto code = m_bits.take(m_width);
        if (!m_hasPrevious) {
            if (code >= kControl)
                return Error{ErrorCode::Corrupt, "shrink: first code"};
            m_hasPrevious = true;
            m_previous = code;
            m_first = static_cast<std::byte>(code);
            m_stack.push_back(m_first);
            return {};
        }
        if (code == kControl)
            return obey(m_bits.take(m_width));
        // The new string is entered before the code is expanded, which may mean that very string, or, after a partial
        // clear, one whose own beginning is gone.
        while (m_next < kCodes && m_prefix[m_next] != kFree)
            ++m_next;
        if (m_next < kCodes) {
            m_prefix[m_next] = static_cast<std::uint16_t>(m_previous);
            m_last[m_next] = m_first;
        }
        TRY(expand(code));
        m_first = m_stack.back();
        if (m_next < kCodes)
            m_last[m_next++] = m_first;
        m_previous = code;
        return {};
    }

    Result<void> expand(unsigned code)
    {
        for (; code > kControl; code = m_prefix[code]) {
            if (m_prefix[code] == kFree || m_stack.size() >= kCodes)
                return Error{ErrorCode::Corrupt, "shrink: code without a string"};
            m_stack.push_back(m_last[code]);
        }
        if (code == kControl)
            return Error{ErrorCode::Corrupt, "shrink: code without a string"};
        m_stack.push_back(static_cast<std::byte>(code));
        return {};
    }

    Result<void> obey(unsigned command)
    {
        if (command == 1 && m_width < kMostWidth) {
            ++m_width;
            return {};
        }
        if (command != 2)
            return Error{ErrorCode::Corrupt, "shrink: control code"};
        // Frees the strings that are no prefix of another.
        std::bitset<kCodes> isPrefix;
        for (unsigned i = kFirstString; i < kCodes; ++i) {
            if (m_prefix[i] != kFree)
                isPrefix.set(m_prefix[i]);
        }
        for (unsigned i = kFirstString; i < kCodes; ++i) {
            if (!isPrefix.test(i))
                m_prefix[i] = kFree;
        }
        m_next = kFirstString;
        return {};
    }

    LsbBits m_bits;
    std::uint64_t m_left;
    std::array<std::uint16_t, kCodes> m_prefix;
    std::array<std::byte, kCodes> m_last{};
    std::vector<std::byte> m_stack;
    unsigned m_width = kLeastWidth, m_next = kFirstString, m_previous = 0;
    std::byte m_first{};
    bool m_hasPrevious = false;
};

}

StreamPtr openShrink(StreamPtr packed, std::uint64_t size, const CodecParams& params)
{
    return std::make_unique<ShrinkDecoder>(std::move(packed), size, params);
}

}
