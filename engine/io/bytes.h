#pragma once

#include "engine/io/result.h"

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <limits>
#include <span>
#include <string_view>

namespace vantoro {

using Bytes = std::span<std::byte>;
using ConstBytes = std::span<const std::byte>;

inline ConstBytes asBytes(std::string_view text) { return std::as_bytes(std::span(text.data(), text.size())); }
inline std::string_view asText(ConstBytes bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

/// Crosses between integer types; nothing when the value does not fit.
template <std::integral To, std::integral From> constexpr Result<To> checkedCast(From value)
{
    if (!std::in_range<To>(value))
        return Error{ErrorCode::LimitExceeded, "number out of range"};
    return static_cast<To>(value);
}

template <std::unsigned_integral T> constexpr Result<T> checkedAdd(T a, T b)
{
    if (a > std::numeric_limits<T>::max() - b)
        return Error{ErrorCode::Corrupt, "number overflows"};
    return static_cast<T>(a + b);
}

/// Reads fields from a block in memory. A read past the end gives 0 and makes ok() false for good, so that a parser
/// reads like the format's table and checks once.
class ByteReader {
public:
    explicit ByteReader(ConstBytes block) : m_block(block) {}

    bool ok() const { return m_ok; }
    std::size_t position() const { return m_position; }
    std::size_t remaining() const { return m_block.size() - m_position; }
    void seek(std::size_t position)
    {
        m_ok = m_ok && position <= m_block.size();
        if (m_ok)
            m_position = position;
    }
    void skip(std::size_t count) { take(count); }

    std::uint8_t u8() { return unsignedLe<std::uint8_t>(); }
    std::uint16_t le16() { return unsignedLe<std::uint16_t>(); }
    std::uint32_t le32() { return unsignedLe<std::uint32_t>(); }
    std::uint64_t le64() { return unsignedLe<std::uint64_t>(); }
    std::uint16_t be16() { return unsignedBe<std::uint16_t>(); }
    std::uint32_t be32() { return unsignedBe<std::uint32_t>(); }
    std::uint64_t be64() { return unsignedBe<std::uint64_t>(); }

    /// The next bytes where they lie; empty and ok() false when there are not that many.
    ConstBytes take(std::size_t count)
    {
        if (!m_ok || count > remaining()) {
            m_ok = false;
            return {};
        }
        const auto part = m_block.subspan(m_position, count);
        m_position += count;
        return part;
    }
    std::string_view text(std::size_t count) { return asText(take(count)); }
    ConstBytes rest() { return take(remaining()); }

private:
    template <class T> T unsignedLe()
    {
        const auto part = take(sizeof(T));
        if (part.empty())
            return 0;
        T value;
        std::memcpy(&value, part.data(), sizeof value);
        if constexpr (std::endian::native == std::endian::big)
            value = swapped(value);
        return value;
    }
    template <class T> T unsignedBe()
    {
        const auto part = take(sizeof(T));
        if (part.empty())
            return 0;
        T value;
        std::memcpy(&value, part.data(), sizeof value);
        if constexpr (std::endian::native == std::endian::little)
            value = swapped(value);
        return value;
    }
    template <class T> static T swapped(T value)
    {
        T result = 0;
        for (std::size_t i = 0; i < sizeof(T); ++i) {
            result = static_cast<T>((static_cast<std::uint64_t>(result) << 8) | (value & 0xFF));
            value = static_cast<T>(static_cast<std::uint64_t>(value) >> 8);
        }
        return result;
    }

    ConstBytes m_block;
    std::size_t m_position = 0;
    bool m_ok = true;
};

}
