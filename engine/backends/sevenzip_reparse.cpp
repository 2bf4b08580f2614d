#include "engine/backends/sevenzip_reparse.h"

#include "engine/backends/sevenzip_com.h"

#include <algorithm>

namespace vantoro::sevenzip {

namespace {

constexpr std::uint32_t kMountPoint = 0xA0000003;
constexpr std::uint32_t kSymbolicLink = 0xA000000C;
constexpr std::uint32_t kUnixLink = 0xA000001D;

std::string utf16Text(ConstBytes bytes)
{
    std::wstring units;
    ByteReader in(bytes);
    while (in.remaining() >= 2)
        units.push_back(static_cast<wchar_t>(in.le16()));
    return unicodeTextOf(units.data(), units.size());
}

}

std::string linkOfReparsePoint(ConstBytes data)
{
    ByteReader in(data);
    const auto tag = in.le32();
    const std::size_t length = in.le16();
    in.skip(2);
    const auto body = in.take(length);
    ByteReader fields(body);
    if (tag == kUnixLink) {
        fields.skip(4); // version
        return std::string(asText(fields.rest()));
    }
    if (!in.ok() || (tag != kMountPoint && tag != kSymbolicLink))
        return {};
    const std::size_t substituteAt = fields.le16();
    const std::size_t substituteSize = fields.le16();
    const std::size_t printAt = fields.le16();
    const std::size_t printSize = fields.le16();
    if (tag == kSymbolicLink)
        fields.skip(4); // whether it is relative
    const auto paths = fields.rest();
    const auto part = [&](std::size_t at, std::size_t size) {
        ByteReader reader(paths);
        reader.seek(at);
        return utf16Text(reader.take(size));
    };
    auto target = part(printAt, printSize);
    if (target.empty())
        target = part(substituteAt, substituteSize);
    std::replace(target.begin(), target.end(), '\\', '/');
    return target;
}

}
