#pragma once

#include "engine/codecs/lzma2_decoder.h"
#include "engine/codecs/lzma_streams.h"

#include "engine/io/cancel.h"

#include <lzma.h>

namespace vantoro {

/// Header of a block of an .xz file. Private to the codecs: it shows the library that reads it.
class XzBlockHeader {
public:
    /// `bytes`: the whole header, as long as its first byte says.
    static Result<std::unique_ptr<XzBlockHeader>> parse(ConstBytes bytes, lzma_check check);
    static std::size_t lengthOf(std::byte first) { return (std::to_integer<std::size_t>(first) + 1) * 4; }
    XzBlockHeader(const XzBlockHeader&) = delete;
    XzBlockHeader& operator=(const XzBlockHeader&) = delete;
    ~XzBlockHeader();

    /// LZMA2 alone, with a checksum that XzCheck knows. Anything else is left to the library.
    bool isPlain() const;
    std::uint64_t dictionary() const;
    /// For the library, which notes in it what it finds.
    lzma_block& block() { return m_block; }
    bool declares(std::uint64_t packed, std::uint64_t size) const;

private:
    XzBlockHeader() = default;
    std::array<lzma_filter, LZMA_FILTERS_MAX + 1> m_filters{};
    lzma_block m_block{};
};

/// The checksum of a block's data.
class XzCheck {
public:
    explicit XzCheck(lzma_check kind) : m_kind(kind) {}
    static bool knows(lzma_check kind);
    std::size_t size() const { return lzma_check_size(m_kind); }
    void add(ConstBytes bytes);
    bool matches(ConstBytes stored) const;

private:
    lzma_check m_kind;
    std::uint64_t m_value = 0;
};

/// Zeros that bring the data of a block to a multiple of four bytes.
inline std::size_t xzPadding(std::uint64_t packed) { return static_cast<std::size_t>((4 - packed % 4) % 4); }

}
