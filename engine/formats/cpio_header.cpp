#include "engine/formats/cpio_header.h"

#include <charconv>

namespace vantoro {

namespace {

/// Numbers of a fixed width in a text header.
class DigitReader {
public:
    DigitReader(ConstBytes bytes, int base) : m_in(bytes), m_base(base) {}
    std::uint64_t number(std::size_t width)
    {
        const auto text = m_in.text(width);
        std::uint64_t value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, m_base);
        m_ok = m_ok && m_in.ok() && error == std::errc() && end == text.data() + text.size();
        return value;
    }
    std::uint32_t small(std::size_t width) { return static_cast<std::uint32_t>(number(width)); } // of 8 digits at most
    bool ok() const { return m_ok; }

private:
    ByteReader m_in;
    int m_base;
    bool m_ok = true;
};

bool parseNewc(ConstBytes bytes, CpioHeader& header)
{
    DigitReader in(bytes.subspan(6), 16);
    header.inode = in.number(8);
    header.mode = in.small(8);
    in.number(16); // owner and group: numbers without names
    header.links = in.small(8);
    header.modified = in.small(8);
    header.size = in.number(8);
    header.device = in.number(16);
    in.number(16); // of a device file
    header.nameSize = static_cast<std::size_t>(in.number(8));
    header.sum = in.small(8);
    return in.ok();
}

bool parseOdc(ConstBytes bytes, CpioHeader& header)
{
    DigitReader in(bytes.subspan(6), 8);
    header.device = in.number(6);
    header.inode = in.number(6);
    header.mode = in.small(6);
    in.number(12);
    header.links = in.small(6);
    in.number(6);
    header.modified = static_cast<std::uint32_t>(in.number(11));
    header.nameSize = static_cast<std::size_t>(in.number(6));
    header.size = in.number(11);
    return in.ok();
}

void parseBinary(ConstBytes bytes, CpioHeader& header)
{
    ByteReader in(bytes.subspan(2));
    const auto half = [&] { return header.kind == CpioHeader::Kind::BigEndian ? in.be16() : in.le16(); };
    const auto whole = [&] { // the upper half comes first whatever the byte order
        const std::uint32_t upper = half();
        return upper << 16 | half();
    };
    header.device = half();
    header.inode = half();
    header.mode = half();
    in.skip(4);
    header.links = half();
    in.skip(2);
    header.modified = whole();
    header.nameSize = half();
    header.size = whole();
}

std::optional<CpioHeader::Kind> kindOf(ConstBytes bytes)
{
    const auto text = asText(bytes);
    if (text.starts_with("070701"))
        return CpioHeader::Kind::Newc;
    if (text.starts_with("070702"))
        return CpioHeader::Kind::Crc;
    if (text.starts_with("070707"))
        return CpioHeader::Kind::Odc;
    if (text.starts_with("\xC7\x71"))
        return CpioHeader::Kind::LittleEndian;
    if (text.starts_with("\x71\xC7"))
        return CpioHeader::Kind::BigEndian;
    return std::nullopt;
}

}

std::size_t CpioHeader::length() const
{
    switch (kind) {
    case Kind::Newc:
    case Kind::Crc:
        return 110;
    case Kind::Odc:
        return 76;
    default:
        return 26;
    }
}

std::size_t CpioHeader::padding(std::uint64_t bytes) const
{
    const unsigned alignment = storesDataOnce() ? 4 : kind == Kind::Odc ? 1 : 2;
    return static_cast<std::size_t>((alignment - bytes % alignment) % alignment);
}

Result<CpioHeader> CpioHeader::parse(ConstBytes bytes)
{
    CpioHeader header;
    const auto kind = kindOf(bytes);
    if (!kind)
        return bytes.size() < 6 ? Error{ErrorCode::Truncated, "cpio: the end mark is missing"}
                                : Error{ErrorCode::Corrupt, "cpio: no header where one should be"};
    header.kind = *kind;
    if (bytes.size() < header.length())
        return Error{ErrorCode::Truncated, "cpio: header"};
    bytes = bytes.first(header.length());
    bool isSound = true;
    if (header.storesDataOnce())
        isSound = parseNewc(bytes, header);
    else if (header.kind == Kind::Odc)
        isSound = parseOdc(bytes, header);
    else
        parseBinary(bytes, header);
    if (!isSound || header.nameSize == 0)
        return Error{ErrorCode::Corrupt, "cpio: numbers of a header"};
    return header;
}

}
