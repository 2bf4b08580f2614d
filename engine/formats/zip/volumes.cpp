#include "engine/formats/zip/volumes.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace vantoro::zip {

namespace {

constexpr std::uint32_t kMostParts = 10'000;

/// Stands for a part that is not there.
class MissingSource final : public ByteSource {
public:
    explicit MissingSource(std::uint64_t size) : m_size(size) {}
    std::uint64_t size() const override { return m_size; }
    Result<std::size_t> readAt(std::uint64_t position, Bytes) const override
    {
        if (position >= m_size)
            return std::size_t{0};
        return Error{ErrorCode::MissingVolume, "zip: the entry lies in a part that is not there"};
    }

private:
    std::uint64_t m_size;
};

/// How the parts of a set are called.
struct PartNames {
    std::string stem; ///< with the dot
    std::string partPrefix; ///< "z" or "zx", in the letter case of the name
    std::string lastExtension; ///< "zip" or "zipx"

    std::string part(std::uint32_t number) const ///< from 1
    {
        char digits[16];
        std::snprintf(digits, sizeof digits, "%02u", number);
        return stem + partPrefix + digits;
    }
    std::string last() const { return stem + lastExtension; }
};

/// The mark of a split set's first part, which a last part alone cannot begin with.
bool startsLikeFirstPart(const ByteSource& source)
{
    std::byte bytes[8];
    if (!source.readExactly(0, bytes))
        return false;
    ByteReader in(bytes);
    return in.le32() == kDescriptorSignature && in.le32() == kLocalSignature;
}

char lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

std::optional<PartNames> namesOfPart(std::string_view name)
{
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos || dot + 1 >= name.size() || lower(name[dot + 1]) != 'z')
        return {};
    const auto extension = name.substr(dot + 1);
    const std::size_t prefix = extension.size() > 1 && lower(extension[1]) == 'x' ? 2 : 1;
    const auto digits = extension.substr(prefix);
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (digits.size() < 2 || digits.size() > 4 || !std::all_of(digits.begin(), digits.end(), isDigit))
        return {};
    return PartNames{std::string(name.substr(0, dot + 1)), std::string(extension.substr(0, prefix)),
                     prefix == 2 ? "zipx" : "zip"};
}

PartNames namesOfLast(std::string_view name)
{
    const auto dot = name.rfind('.');
    const auto extension = dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
    const auto stem = std::string(name.substr(0, name.size() - extension.size()));
    const bool isZipx = extension.size() == 4 && lower(extension[3]) == 'x';
    return {stem, isZipx ? "zx" : "z", std::string(extension)};
}

Result<SourcePtr> openPart(const OpenContext& context, const std::string& name)
{
    if (!context.volumes)
        return Error{ErrorCode::MissingVolume, "zip: nobody can open the other parts"};
    return context.volumes->openVolume(name);
}

}

bool isPartName(std::string_view name) { return namesOfPart(name).has_value(); }

std::optional<std::uint64_t> VolumeSet::locate(std::uint64_t disk, std::uint64_t offset) const
{
    if (disk >= starts.size() || offset >= source->size())
        return {};
    return starts[static_cast<std::size_t>(disk)] + offset;
}

Result<VolumeSet> openVolumes(SourcePtr opened, const OpenContext& context)
{
    VolumeSet set;
    const auto partNames = namesOfPart(context.name);
    auto last = partNames ? TRY(openPart(context, partNames->last())) : std::move(opened);
    set.end = TRY(findEndRecord(*last));
    if (!set.end || set.end->disk == 0) {
        set.source = std::move(last);
        set.starts = {0};
        return set;
    }
    if (set.end->disk > kMostParts)
        return Error{ErrorCode::LimitExceeded, "zip: number of parts"};

    if (startsLikeFirstPart(*last)) { // all parts in one file: their offsets mean nothing any more
        set.source = std::move(last);
        set.starts = {0};
        set.end.reset();
        return set;
    }
    const auto names = partNames.value_or(namesOfLast(context.name));
    std::vector<SourcePtr> parts;
    std::uint64_t knownSize = 0;
    for (std::uint32_t number = 1; number <= set.end->disk; ++number) {
        set.names.push_back(names.part(number));
        auto part = openPart(context, set.names.back());
        if (!part && part.error().code != ErrorCode::MissingVolume)
            return part.error();
        if (!part && set.missing.empty())
            set.missing = set.names.back();
        if (part)
            knownSize = std::max(knownSize, (*part)->size());
        parts.push_back(part ? *std::move(part) : nullptr);
    }
    set.names.push_back(names.last());
    parts.push_back(std::move(last));
    std::uint64_t start = 0;
    for (auto& part : parts) {
        // All parts but the last are of one size.
        if (!part)
            part = std::make_shared<MissingSource>(std::max<std::uint64_t>(knownSize, 1));
        set.starts.push_back(start);
        start += part->size();
    }
    set.source = joinedSource(std::move(parts));
    set.end->position += set.starts.back();
    return set;
}

}
