#include "engine/codecs/gzip.h"

#include "engine/codecs/inflater.h"
#include "engine/crypto/crc32.h"

namespace vantoro {

namespace {

constexpr std::size_t kInput = 256 << 10;
constexpr std::size_t kLongestName = 64 << 10;

enum Flag : unsigned { kHeaderCrc = 2, kExtra = 4, kName = 8, kComment = 16, kReserved = 0xE0 };

/// Reads header bytes and keeps the CRC over them.
class HeaderInput {
public:
    explicit HeaderInput(BufferedInput& in) : m_in(in) {}
    Result<unsigned> byte()
    {
        const auto value = TRY(m_in.next());
        m_crc = crc32(m_crc, ConstBytes(&value, 1));
        return std::to_integer<unsigned>(value);
    }
    Result<std::uint32_t> littleEndian(unsigned bytes)
    {
        std::uint32_t value = 0;
        for (unsigned i = 0; i < bytes; ++i)
            value |= static_cast<std::uint32_t>(TRY(byte())) << (8 * i);
        return value;
    }
    /// Up to the closing NUL; `keep` may be null.
    Result<void> text(std::string* keep)
    {
        for (std::size_t length = 0;; ++length) {
            const auto value = TRY(byte());
            if (value == 0)
                return {};
            if (length == kLongestName)
                return Error{ErrorCode::LimitExceeded, "gzip: name or comment too long"};
            if (keep)
                keep->push_back(static_cast<char>(value));
        }
    }
    std::uint32_t crc() const { return m_crc; }

private:
    BufferedInput& m_in;
    std::uint32_t m_crc = 0;
};

class GzipDecoder final : public Decoder {
public:
    GzipDecoder(StreamPtr packed, const CodecParams& params)
        : Decoder(params.cancel)
        , m_in(std::move(packed), kInput)
        , m_inflater(Inflater::Checksum::Crc32)
    {
    }

private:
    Result<void> decode(SpanWriter& out) override
    {
        while (out.room() > 0) {
            if (!m_insideMember && !TRY(beginMember()))
                break;
            if (TRY(m_inflater.inflate(m_in, out))) {
                TRY(endMember());
                markVerified(out);
            }
        }
        return {};
    }

    Result<bool> beginMember()
    {
        if (m_members > 0 && !TRY(anotherMemberFollows()))
            return false;
        TRY(readGzipHeader(m_in));
        m_inflater.reset();
        m_insideMember = true;
        ++m_members;
        return true;
    }

    Result<bool> anotherMemberFollows()
    {
        auto rest = TRY(m_in.peek());
        bool padded = false;
        while (!rest.empty() && rest.front() == std::byte{0}) {
            padded = true;
            m_in.consume(1);
            rest = TRY(m_in.peek());
        }
        if (rest.empty())
            return false;
        if (padded || rest.front() != std::byte{0x1F})
            return Error{ErrorCode::TrailingData, "gzip: neither padding nor a member after the end"};
        return true;
    }

    Result<void> endMember()
    {
        HeaderInput in(m_in);
        const auto crc = TRY(in.littleEndian(4));
        const auto length = TRY(in.littleEndian(4));
        if (crc != m_inflater.checksum())
            return Error{ErrorCode::ChecksumMismatch, "gzip: CRC-32"};
        if (length != m_inflater.length())
            return Error{ErrorCode::SizeMismatch, "gzip: length"};
        m_insideMember = false;
        return {};
    }

    BufferedInput m_in;
    Inflater m_inflater;
    std::uint64_t m_members = 0;
    bool m_insideMember = false;
};

}

Result<GzipHeader> readGzipHeader(BufferedInput& packed)
{
    HeaderInput in(packed);
    GzipHeader header;
    if (TRY(in.byte()) != 0x1F || TRY(in.byte()) != 0x8B)
        return Error{ErrorCode::Corrupt, "gzip: signature"};
    if (TRY(in.byte()) != 8)
        return Error{ErrorCode::UnsupportedMethod, "gzip: method other than deflate"};
    const auto flags = TRY(in.byte());
    if ((flags & kReserved) != 0)
        return Error{ErrorCode::Corrupt, "gzip: reserved flags"};
    header.modified = TRY(in.littleEndian(4));
    TRY(in.littleEndian(2)); // effort and operating system: nothing depends on them
    if ((flags & kExtra) != 0) {
        for (auto left = TRY(in.littleEndian(2)); left > 0; --left)
            TRY(in.byte());
    }
    if ((flags & kName) != 0)
        TRY(in.text(&header.name));
    if ((flags & kComment) != 0)
        TRY(in.text(nullptr));
    if ((flags & kHeaderCrc) != 0) {
        const auto crc = in.crc() & 0xFFFF;
        if (TRY(in.littleEndian(2)) != crc)
            return Error{ErrorCode::ChecksumMismatch, "gzip: header checksum"};
    }
    return header;
}

Result<StreamPtr> openGzip(StreamPtr packed, const CodecParams& params)
{
    return StreamPtr(std::make_unique<GzipDecoder>(std::move(packed), params));
}

}
