#include "engine/formats/arj_volumes.h"

#include <algorithm>
#include <cctype>

namespace vantoro::arj {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Number of a volume by its extension: .arj 0, .a01 1 … .a99 99, .100 100 …; nothing for other names.
std::optional<unsigned> volumeNumber(std::string_view name)
{
    if (name.size() < 4 || name[name.size() - 4] != '.')
        return std::nullopt;
    const auto extension = name.substr(name.size() - 3);
    if (!isDigit(extension[1]) || !isDigit(extension[2]))
        return std::nullopt;
    const auto low = static_cast<unsigned>((extension[1] - '0') * 10 + (extension[2] - '0'));
    if (extension[0] == 'a' || extension[0] == 'A')
        return low;
    return isDigit(extension[0]) ? std::optional(static_cast<unsigned>(extension[0] - '0') * 100 + low) : std::nullopt;
}

std::string volumeName(std::string_view firstName, unsigned number)
{
    if (number == 0)
        return std::string(firstName);
    const auto stem = std::string(firstName.substr(0, firstName.size() - 4));
    const auto digits = std::to_string(number);
    return number < 100 ? stem + ".a" + std::string(2 - digits.size(), '0') + digits : stem + '.' + digits;
}

class SetReader {
public:
    explicit SetReader(const OpenContext& context) : m_context(context) {}

    Result<Contents> read(SourcePtr opened)
    {
        auto number = volumeNumber(m_context.name).value_or(0);
        m_firstName = number == 0 ? m_context.name : m_context.name.substr(0, m_context.name.size() - 4) + ".arj";
        auto source = std::move(opened);
        if (number > 0) {
            if (auto first = openVolume(0)) {
                source = std::move(first);
                number = 0;
            }
        }
        bool hasMore = TRY(readVolume(std::move(source), number));
        while (hasMore && m_firstName.size() > 4) {
            auto next = openVolume(++number);
            if (!next)
                break;
            auto more = readVolume(std::move(next), number);
            if (!more) {
                m_contents.damage = more.error();
                break;
            }
            hasMore = *more;
        }
        if (!m_contents.members.empty()) {
            auto& last = m_contents.members.back();
            last.isCutShort = last.parts.back().header.flags & kMoreVolumes;
        }
        return std::move(m_contents);
    }

private:
    SourcePtr openVolume(unsigned number)
    {
        const auto name = volumeName(m_firstName, number);
        if (m_context.volumes) {
            if (auto source = m_context.volumes->openVolume(name))
                return *source;
        }
        if (m_contents.missingVolume.empty())
            m_contents.missingVolume = name;
        return nullptr;
    }

    /// Whether another volume follows.
    Result<bool> readVolume(SourcePtr source, unsigned number)
    {
        const auto start = findStart(*source);
        if (!start)
            return Error{ErrorCode::NotAnArchive, "arj: no main header"};
        const auto main = TRY(readHeader(*source, *start));
        if (!main)
            return Error{ErrorCode::Corrupt, "arj: no main header"};
        const bool isFirst = m_contents.volumes.empty();
        if (isFirst)
            m_contents.archive = *main;
        const auto& volume = *m_contents.volumes.emplace_back(std::move(source));
        m_contents.volumeNames.push_back(volumeName(m_firstName, number));
        if (const auto entries = readEntries(volume, main->dataPosition); !entries) {
            if (entries.error().code == ErrorCode::Cancelled || entries.error().code == ErrorCode::LimitExceeded)
                return entries.error();
            m_contents.damage = entries.error();
        }
        return (main->flags & kMoreVolumes) != 0;
    }

    Result<void> readEntries(const ByteSource& source, std::uint64_t position)
    {
        for (;;) {
            TRY(m_context.cancel.check());
            auto header = TRY(readHeader(source, position));
            if (!header)
                return {};
            position = header->dataPosition + header->packedSize;
            const bool hasData = header->kind != Kind::Label && header->kind != Kind::Chapter;
            if (hasData)
                TRY(add(*std::move(header)));
            if (position > source.size())
                return Error{ErrorCode::Truncated, "arj: the data of an entry are cut off"};
        }
    }

    Result<void> add(Header header)
    {
        auto& members = m_contents.members;
        const bool continues = (header.flags & kContinued) && !members.empty()
            && (members.back().parts.back().header.flags & kMoreVolumes) && members.back().first().name == header.name
            && members.back().parts.back().volume + 1 == m_contents.volumes.size() - 1;
        if (!continues) {
            if (members.size() >= m_context.limits.entries)
                return Error{ErrorCode::LimitExceeded, "arj: too many entries"};
            members.emplace_back();
        }
        members.back().parts.push_back({m_contents.volumes.size() - 1, std::move(header)});
        return {};
    }

    const OpenContext& m_context;
    std::string m_firstName;
    Contents m_contents;
};

}

std::uint64_t Member::size() const
{
    std::uint64_t sum = 0;
    for (const auto& part : parts)
        sum += part.header.size;
    return sum;
}

std::uint64_t Member::packedSize() const
{
    std::uint64_t sum = 0;
    for (const auto& part : parts)
        sum += part.header.packedSize;
    return sum;
}

Result<Contents> readContents(SourcePtr source, const OpenContext& context)
{
    return SetReader(context).read(std::move(source));
}

}
