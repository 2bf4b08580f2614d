#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

/// Tars block by block, every field as a test wants it.
namespace vantoro::testing {

struct TarFields {
    std::string name;
    char type = '0';
    std::string size = ""; ///< the raw field; empty: octal of the data's length
    std::string mode = "0000644";
    std::string modified = "07470000000"; ///< 1021313024 seconds
    std::string linkName = "";
    std::string magic = std::string("ustar\0"
                                    "00",
                                    8);
    std::string owner = "", group = "";
    std::string tail = ""; ///< what stands from byte 345 on: prefix, or what other dialects put there
};

inline std::string octal(std::uint64_t value, int digits)
{
    char text[32];
    std::snprintf(text, sizeof text, "%0*llo", digits, static_cast<unsigned long long>(value));
    return text;
}

inline void putField(std::string& block, std::size_t position, std::string_view text)
{
    block.replace(position, text.size(), text);
}

inline std::string withChecksum(std::string block)
{
    putField(block, 148, "        ");
    unsigned sum = 0;
    for (const char c : block.substr(0, 512))
        sum += static_cast<unsigned char>(c);
    putField(block, 148, octal(sum, 6) + std::string("\0 ", 2));
    return block;
}

inline std::string tarHeader(const TarFields& fields, std::uint64_t dataLength)
{
    std::string block(512, '\0');
    putField(block, 0, fields.name);
    putField(block, 100, fields.mode);
    putField(block, 108, "0001750");
    putField(block, 116, "0001750");
    putField(block, 124, fields.size.empty() ? octal(dataLength, 11) : fields.size);
    putField(block, 136, fields.modified);
    block[156] = fields.type;
    putField(block, 157, fields.linkName);
    putField(block, 257, fields.magic);
    putField(block, 265, fields.owner);
    putField(block, 297, fields.group);
    putField(block, 345, fields.tail);
    return withChecksum(block);
}

inline std::string padded(std::string data)
{
    data.resize((data.size() + 511) / 512 * 512, '\0');
    return data;
}

inline std::string tarMember(const TarFields& fields, const std::string& data = {})
{
    return tarHeader(fields, data.size()) + padded(data);
}

/// "25 path=some/where/a.txt\n"
inline std::string paxRecord(const std::string& key, const std::string& value)
{
    const auto rest = " " + key + "=" + value + "\n";
    auto length = rest.size() + 1;
    while (std::to_string(length).size() + rest.size() != length)
        ++length;
    return std::to_string(length) + rest;
}

inline std::string paxHeader(const std::string& records, char type = 'x')
{
    return tarMember({.name = "PaxHeaders/x", .type = type}, records);
}

inline std::string tarEnd() { return std::string(1024, '\0'); }

}
