#include "engine/backends/sevenzip_cab_names.h"

#include <algorithm>

namespace vantoro::sevenzip {

namespace {

constexpr std::uint16_t kNameIsUtf8 = 0x80; // of a file's attributes
constexpr std::size_t kLongestName = 256;
constexpr std::size_t kFileHeader = 16;

// [MS-CAB] 2.1 and 2.3
void readNames(const ByteSource& cabinet, CabNames& names)
{
    const auto header = readBlock(cabinet, 0, 36);
    if (!header)
        return;
    ByteReader in(*header);
    in.seek(16);
    const auto filesAt = in.le32();
    in.seek(28);
    const auto files = in.le16();
    if (!in.ok())
        return;
    const auto table = readBlock(cabinet, filesAt, std::size_t{files} * (kFileHeader + kLongestName + 1));
    if (!table)
        return;
    ByteReader file(*table);
    for (unsigned i = 0; i < files; ++i) {
        file.skip(kFileHeader - 2);
        const auto attributes = file.le16();
        CabName name{{}, (attributes & kNameIsUtf8) != 0};
        while (file.ok() && file.remaining() > 0) {
            const auto c = static_cast<char>(file.u8());
            if (c == 0)
                break;
            name.bytes.push_back(c);
        }
        if (!file.ok())
            return;
        auto given = name.bytes;
        std::replace(given.begin(), given.end(), '\\', '/');
        names.emplace(std::move(given), std::move(name));
    }
}

}

CabNames readCabNames(std::span<const SourcePtr> cabinets)
{
    CabNames names;
    for (const auto& cabinet : cabinets)
        readNames(*cabinet, names);
    return names;
}

}
