#include "engine/codecs/zisofs.h"

#include <libdeflate.h>

#include <algorithm>
#include <array>

namespace vantoro {

namespace {

constexpr std::string_view kMagic("\x37\xE4\x53\x96\xC9\xDB\xD6\x07", 8);
constexpr std::size_t kHeaderSize = 16;
constexpr unsigned kLeastBlockLog = 15, kMostBlockLog = 17;

struct Header {
    std::uint32_t size = 0;
    std::size_t headerSize = 0;
    unsigned blockLog = 0;

    static Result<Header> parse(ConstBytes bytes)
    {
        ByteReader in(bytes);
        Header header;
        const auto magic = in.text(kMagic.size());
        header.size = in.le32();
        header.headerSize = std::size_t{in.u8()} * 4;
        header.blockLog = in.u8();
        if (magic != kMagic || header.headerSize < kHeaderSize)
            return Error{ErrorCode::Corrupt, "zisofs: header"};
        if (header.blockLog < kLeastBlockLog || header.blockLog > kMostBlockLog)
            return Error{ErrorCode::UnsupportedMethod, "zisofs: block size"};
        return header;
    }
};

class ZisofsDecoder final : public Decoder {
public:
    ZisofsDecoder(SourcePtr packed, const Header& header, CancelToken cancel)
        : Decoder(std::move(cancel))
        , m_packed(std::move(packed))
        , m_header(header)
        , m_inflater(libdeflate_alloc_decompressor())
        , m_block(std::size_t{1} << header.blockLog)
    {
    }
    ~ZisofsDecoder() override
    {
        if (m_inflater)
            libdeflate_free_decompressor(m_inflater);
    }

private:
    Result<void> decode(SpanWriter& out) override
    {
        while (out.room() > 0) {
            if (m_used == m_filled) {
                if (m_done == m_header.size)
                    break;
                TRY(decodeBlock());
            }
            const auto part = ConstBytes(m_block).subspan(m_used, std::min(m_filled - m_used, out.room()));
            out.put(part);
            m_used += part.size();
        }
        return {};
    }

    Result<void> decodeBlock()
    {
        std::array<std::byte, 8> pointers;
        const std::uint64_t index = m_done >> m_header.blockLog;
        TRY(m_packed->readExactly(m_header.headerSize + index * 4, pointers));
        ByteReader in(pointers);
        const std::uint32_t start = in.le32(), end = in.le32();
        m_used = 0;
        m_filled = static_cast<std::size_t>(std::min<std::uint64_t>(m_block.size(), m_header.size - m_done));
        m_done += m_filled;
        if (start == end) {
            std::fill(m_block.begin(), m_block.end(), std::byte{0});
            return {};
        }
        if (end < start || end - start > 2 * m_block.size()) // deflate never grows data by that much
            return failed({ErrorCode::Corrupt, "zisofs: block positions"});
        m_input.resize(end - start);
        if (const auto got = m_packed->readExactly(start, m_input); !got)
            return failed(got.error());
        if (!m_inflater)
            return failed({ErrorCode::OutOfMemory, "zisofs: no decompressor"});
        if (libdeflate_zlib_decompress(m_inflater, m_input.data(), m_input.size(), m_block.data(), m_filled, nullptr)
            != LIBDEFLATE_SUCCESS)
            return failed({ErrorCode::Corrupt, "zisofs: block data"});
        return {};
    }

    Error failed(Error error)
    {
        m_filled = 0; // nothing of this block is handed out
        return error;
    }

    SourcePtr m_packed;
    Header m_header;
    libdeflate_decompressor* m_inflater;
    std::vector<std::byte> m_block, m_input;
    std::size_t m_used = 0, m_filled = 0;
    std::uint64_t m_done = 0; // bytes decoded, this block included
};

}

Result<StreamPtr> openZisofs(SourcePtr packed, std::uint64_t size, CancelToken cancel)
{
    std::array<std::byte, kHeaderSize> block;
    TRY(packed->readExactly(0, block));
    const auto header = TRY(Header::parse(block));
    if (header.size != size)
        return Error{ErrorCode::Corrupt, "zisofs: size differs from the directory's"};
    return StreamPtr(std::make_unique<ZisofsDecoder>(std::move(packed), header, std::move(cancel)));
}

}
