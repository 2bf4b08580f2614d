#include "engine/codecs/xz_block.h"

#include "engine/codecs/late_isal.h"
#include "engine/codecs/liblzma.h"
#include "engine/crypto/crc32.h"

namespace vantoro {

Result<std::unique_ptr<XzBlockHeader>> XzBlockHeader::parse(ConstBytes bytes, lzma_check check)
{
    std::unique_ptr<XzBlockHeader> header(new XzBlockHeader);
    header->m_filters.fill({LZMA_VLI_UNKNOWN, nullptr});
    auto& block = header->m_block;
    block.version = 1;
    block.check = check;
    block.header_size = static_cast<std::uint32_t>(bytes.size());
    block.filters = header->m_filters.data();
    const auto code = lzma_block_header_decode(&block, nullptr, reinterpret_cast<const std::uint8_t*>(bytes.data()));
    if (code != LZMA_OK)
        return lzmaError(code);
    return header;
}

XzBlockHeader::~XzBlockHeader() { lzma_filters_free(m_filters.data(), nullptr); }

bool XzBlockHeader::isPlain() const
{
    return m_filters[0].id == LZMA_FILTER_LZMA2 && m_filters[1].id == LZMA_VLI_UNKNOWN && XzCheck::knows(m_block.check);
}

std::uint64_t XzBlockHeader::dictionary() const
{
    return static_cast<const lzma_options_lzma*>(m_filters[0].options)->dict_size;
}

bool XzBlockHeader::declares(std::uint64_t packed, std::uint64_t size) const
{
    const auto fits
        = [](lzma_vli declared, std::uint64_t got) { return declared == LZMA_VLI_UNKNOWN || declared == got; };
    return fits(m_block.compressed_size, packed) && fits(m_block.uncompressed_size, size);
}

bool XzCheck::knows(lzma_check kind)
{
    return kind == LZMA_CHECK_NONE || kind == LZMA_CHECK_CRC32 || kind == LZMA_CHECK_CRC64;
}

void XzCheck::add(ConstBytes bytes)
{
    if (m_kind == LZMA_CHECK_CRC32)
        m_value = crc32(static_cast<std::uint32_t>(m_value), bytes);
    else if (m_kind == LZMA_CHECK_CRC64)
        m_value = crc64_ecma_refl(m_value, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
}

bool XzCheck::matches(ConstBytes stored) const
{
    ByteReader in(stored);
    switch (m_kind) {
    case LZMA_CHECK_CRC32:
        return in.le32() == m_value;
    case LZMA_CHECK_CRC64:
        return in.le64() == m_value;
    default:
        return true;
    }
}

}
