#include "engine/codecs/lzo.h"

#include "engine/crypto/crc32.h"

#include <algorithm>
#include <array>

namespace vantoro {

namespace {

/// One block of LZO1X. An instruction copies a match and then up to three literals; how many there were decides what
/// the next instruction below 16 means. Source: the description of the format in the documentation of the Linux kernel.
class Lzo1xBlock {
public:
    Lzo1xBlock(ConstBytes packed, Bytes out) : m_in(packed), m_out(out) {}

    Result<void> decode()
    {
        TRY(begin());
        for (;;) {
            const unsigned code = m_in.u8();
            if (!m_in.ok())
                return Error{ErrorCode::Corrupt, "lzo: no end of the block"};
            if (code < 16 && m_literals == 0) {
                TRY(copyLiterals(3 + longer(code, 15)));
                m_literals = kLongRun;
                continue;
            }
            if (TRY(match(code)))
                break;
        }
        if (m_used != m_out.size())
            return Error{ErrorCode::SizeMismatch, "lzo: block shorter than declared"};
        return {};
    }

private:
    static constexpr unsigned kLongRun = 4; // four literals or more

    /// The first byte may be a run of literals of its own kind.
    Result<void> begin()
    {
        const auto before = m_in.position();
        const unsigned code = m_in.u8();
        if (code <= 17) {
            m_in.seek(before);
            return {};
        }
        TRY(copyLiterals(code - 17));
        m_literals = std::min(code - 17, kLongRun);
        return {};
    }

    /// A length of `field`; 0 means more than the field holds: 255 for each zero byte that follows, and a last byte.
    std::size_t longer(unsigned field, std::size_t largest)
    {
        if (field != 0)
            return field;
        std::size_t length = largest;
        unsigned byte = m_in.u8();
        for (; byte == 0 && m_in.ok(); byte = m_in.u8())
            length += 255;
        return length + byte;
    }

    /// True for the end mark.
    Result<bool> match(unsigned code)
    {
        std::size_t length = 0;
        std::size_t distance = 0;
        unsigned literals = code & 3;
        if (code >= 64) {
            length = code >= 128 ? 5 + (code >> 5 & 3) : 3 + (code >> 5 & 1);
            distance = (std::size_t{m_in.u8()} << 3) + (code >> 2 & 7) + 1;
        } else if (code >= 32) {
            length = 2 + longer(code & 31, 31);
            const unsigned word = m_in.le16();
            distance = (word >> 2) + 1;
            literals = word & 3;
        } else if (code >= 16) {
            length = 2 + longer(code & 7, 7);
            const unsigned word = m_in.le16();
            distance = 16384 + (std::size_t{code & 8} << 11) + (word >> 2);
            literals = word & 3;
            if (distance == 16384 && m_in.ok())
                return true;
        } else {
            const std::size_t near = (std::size_t{m_in.u8()} << 2) + (code >> 2) + 1;
            length = m_literals == kLongRun ? 3 : 2;
            distance = m_literals == kLongRun ? near + 2048 : near;
        }
        TRY(copyMatch(distance, length));
        TRY(copyLiterals(literals));
        m_literals = literals;
        return false;
    }

    Result<void> copyMatch(std::size_t distance, std::size_t length)
    {
        if (!m_in.ok() || distance > m_used || length > m_out.size() - m_used)
            return Error{ErrorCode::Corrupt, "lzo: match outside the block"};
        auto* const to = m_out.data() + m_used;
        const auto* const from = to - distance;
        if (distance >= length) {
            std::memcpy(to, from, length);
        } else {
            for (std::size_t i = 0; i < length; ++i)
                to[i] = from[i];
        }
        m_used += length;
        return {};
    }

    Result<void> copyLiterals(std::size_t length)
    {
        const auto literals = m_in.take(length);
        if (!m_in.ok() || length > m_out.size() - m_used)
            return Error{ErrorCode::Corrupt, "lzo: literals outside the block"};
        if (length > 0)
            std::memcpy(m_out.data() + m_used, literals.data(), length);
        m_used += length;
        return {};
    }

    ByteReader m_in;
    Bytes m_out;
    std::size_t m_used = 0;
    unsigned m_literals = 0; // that the last instruction copied
};

constexpr std::size_t kInput = 256 << 10;
constexpr std::size_t kLargestBlock = 64 << 20; // as in lzop
constexpr std::string_view kMagic("\x89LZO\0\r\n\x1A\n", 9);
constexpr unsigned kFirstWithLevel = 0x0940; // version of lzop

enum Flag : std::uint32_t {
    kAdlerData = 0x1,
    kAdlerPacked = 0x2,
    kExtraField = 0x40,
    kCrcData = 0x100,
    kCrcPacked = 0x200,
    kFilter = 0x800,
    kHeaderCrc = 0x1000,
};

class LzopDecoder final : public Decoder {
public:
    LzopDecoder(StreamPtr packed, const CodecParams& params)
        : Decoder(params.cancel)
        , m_in(std::move(packed), kInput)
        , m_limits(params.limits)
    {
    }

private:
    Result<void> decode(SpanWriter& out) override
    {
        while (out.room() > 0 && !m_ended) {
            if (m_given < m_block.size()) {
                const auto part = std::min(out.room(), m_block.size() - m_given);
                out.put(ConstBytes(m_block).subspan(m_given, part));
                m_given += part;
                if (m_given == m_block.size() && (m_flags & (kAdlerData | kCrcData)) != 0)
                    markVerified(out);
            } else if (m_insideMember) {
                TRY(readBlock());
            } else {
                TRY(beginMember());
            }
        }
        return {};
    }

    Result<void> take(Bytes into)
    {
        for (std::size_t done = 0; done < into.size();) {
            const auto packed = TRY(m_in.peek());
            if (packed.empty())
                return Error{ErrorCode::Truncated, "lzop: the file ends too early"};
            const auto part = packed.first(std::min(packed.size(), into.size() - done));
            std::memcpy(into.data() + done, part.data(), part.size());
            m_in.consume(part.size());
            done += part.size();
        }
        return {};
    }

    Result<std::uint32_t> be32()
    {
        std::array<std::byte, 4> bytes;
        TRY(take(bytes));
        return ByteReader(bytes).be32();
    }

    /// A field of the header, which the header's checksum covers.
    Result<std::uint32_t> field(std::size_t size)
    {
        const auto at = m_header.size();
        m_header.resize(at + size);
        TRY(take(Bytes(m_header).subspan(at)));
        std::uint32_t value = 0;
        for (const auto byte : ConstBytes(m_header).subspan(at))
            value = value << 8 | std::to_integer<std::uint32_t>(byte);
        return value;
    }

    Result<void> beginMember()
    {
        if (m_members > 0) {
            const auto rest = TRY(m_in.peek());
            m_ended = rest.empty();
            if (m_ended)
                return {};
            if (rest.front() != static_cast<std::byte>(kMagic.front()))
                return Error{ErrorCode::TrailingData, "lzop: no member after the end"};
        }
        std::array<std::byte, kMagic.size()> magic;
        TRY(take(magic));
        if (asText(magic) != kMagic)
            return Error{ErrorCode::Corrupt, "lzop: signature"};
        TRY(readHeader());
        m_insideMember = true;
        ++m_members;
        return {};
    }

    Result<void> readHeader()
    {
        m_header.clear();
        const auto version = TRY(field(2));
        TRY(field(2)); // of the library
        if (version >= kFirstWithLevel)
            TRY(field(2)); // needed to read
        const auto method = TRY(field(1));
        if (version >= kFirstWithLevel)
            TRY(field(1)); // effort
        m_flags = TRY(field(4));
        const auto filter = (m_flags & kFilter) != 0 ? TRY(field(4)) : 0;
        TRY(field(4)); // mode
        TRY(field(version >= kFirstWithLevel ? 8 : 4)); // time
        const auto nameLength = TRY(field(1));
        TRY(field(nameLength));
        const auto sum = (m_flags & kHeaderCrc) != 0 ? crc32(0, m_header) : adler32(1, m_header);
        if (TRY(be32()) != sum)
            return Error{ErrorCode::ChecksumMismatch, "lzop: checksum of the header"};
        if (method < 1 || method > 3 || filter != 0)
            return Error{ErrorCode::UnsupportedMethod, "lzop: method or filter"};
        if ((m_flags & kExtraField) != 0) {
            for (std::uint64_t left = std::uint64_t{TRY(be32())} + 4; left > 0; --left)
                TRY(m_in.next());
        }
        return {};
    }

    Result<void> readBlock()
    {
        const std::size_t size = TRY(be32());
        if (size == 0) {
            m_insideMember = false;
            return {};
        }
        const std::size_t packedSize = TRY(be32());
        constexpr std::size_t kMostRatio = 256; // a byte of a length stands for 255 at most
        if (size > kLargestBlock || packedSize > size || size / kMostRatio > packedSize)
            return Error{ErrorCode::Corrupt, "lzop: size of a block"};
        if (size > m_limits.dictionary)
            return Error{ErrorCode::LimitExceeded, "lzop: size of a block"};
        const auto adlerData = (m_flags & kAdlerData) != 0 ? TRY(be32()) : 0;
        const auto crcData = (m_flags & kCrcData) != 0 ? TRY(be32()) : 0;
        const bool isStored = packedSize == size;
        const auto adlerPacked = !isStored && (m_flags & kAdlerPacked) != 0 ? TRY(be32()) : 0;
        const auto crcPacked = !isStored && (m_flags & kCrcPacked) != 0 ? TRY(be32()) : 0;
        TRY(takeGrowing(packedSize));
        m_given = 0;
        m_block.clear();
        if (isStored) {
            std::swap(m_block, m_packed);
        } else {
            if (((m_flags & kAdlerPacked) != 0 && adler32(1, m_packed) != adlerPacked)
                || ((m_flags & kCrcPacked) != 0 && crc32(0, m_packed) != crcPacked))
                return Error{ErrorCode::ChecksumMismatch, "lzop: checksum of a packed block"};
            m_block.resize(size);
            if (const auto decoded = decodeLzo1x(m_packed, m_block); !decoded) {
                m_block.clear();
                return decoded;
            }
        }
        if (((m_flags & kAdlerData) != 0 && adler32(1, m_block) != adlerData)
            || ((m_flags & kCrcData) != 0 && crc32(0, m_block) != crcData)) {
            m_block.clear();
            return Error{ErrorCode::ChecksumMismatch, "lzop: checksum of a block"};
        }
        return {};
    }

    /// Memory grows with the bytes that come, not with the size that is claimed.
    Result<void> takeGrowing(std::size_t size)
    {
        m_packed.clear();
        while (m_packed.size() < size) {
            const auto before = m_packed.size();
            m_packed.resize(before + std::min(size - before, kInput));
            TRY(take(Bytes(m_packed).subspan(before)));
        }
        return {};
    }

    BufferedInput m_in;
    Limits m_limits;
    std::vector<std::byte> m_header, m_packed, m_block;
    std::size_t m_given = 0; // bytes of m_block that are handed out
    std::uint32_t m_flags = 0;
    std::uint64_t m_members = 0;
    bool m_insideMember = false;
    bool m_ended = false;
};

}

Result<void> decodeLzo1x(ConstBytes packed, Bytes out) { return Lzo1xBlock(packed, out).decode(); }

Result<StreamPtr> openLzop(StreamPtr packed, const CodecParams& params)
{
    return StreamPtr(std::make_unique<LzopDecoder>(std::move(packed), params));
}

}
