#include "engine/backends/lhasa_archive.h"

#include "engine/backends/lhasa_decoder.h"
#include "engine/codecs/lh_dynamic.h"
#include "engine/crypto/crc16.h"
#include "engine/formats/lha_header.h"

#include <algorithm>
#include <array>

namespace vantoro {

namespace {

constexpr std::size_t kDecodeStep = 64 << 10; // the stop flag is asked between steps
constexpr std::size_t kMacBinaryHeader = 128;

/// Where an entry lies in its member's decoded data: all of it, or one of the forks that a Mac put into one file.
struct Part {
    EntryKind kind = EntryKind::File;
    std::uint64_t offset = 0, size = 0;
};

struct MacBinary {
    std::uint64_t dataSize = 0, resourceSize = 0;

    /// The header that Mac OS archivers put before the data; nothing when the bytes are none, or do not fit `size`.
    static std::optional<MacBinary> parse(ConstBytes head, std::uint64_t size)
    {
        const auto at = [&](std::size_t position) { return std::to_integer<unsigned>(head[position]); };
        if (head.size() < kMacBinaryHeader || at(0) != 0 || at(1) == 0 || at(1) > 63 || at(74) != 0 || at(82) != 0)
            return std::nullopt;
        ByteReader in(head);
        in.seek(83);
        MacBinary header;
        header.dataSize = in.be32();
        header.resourceSize = in.be32();
        const auto needed = header.resourceOffset() + header.resourceSize;
        if (header.resourceSize == 0 ? kMacBinaryHeader + header.dataSize > size : needed > size)
            return std::nullopt;
        return needed + kMacBinaryHeader > size ? std::optional(header) : std::nullopt;
    }
    std::uint64_t resourceOffset() const
    {
        return kMacBinaryHeader + (dataSize + kMacBinaryHeader - 1) / kMacBinaryHeader * kMacBinaryHeader;
    }
};

class LhasaArchive final : public Archive {
public:
    LhasaArchive(SourcePtr source, const OpenContext& context)
        : m_source(std::move(source))
        , m_cancel(context.cancel)
        , m_limits(context.limits)
    {
        m_info.format = "lha";
    }

    /// Reads all headers from `position` on. What is damaged behind the first entry is told, and ends the listing.
    Result<void> scan(std::uint64_t position)
    {
        while (true) {
            TRY(m_cancel.check());
            auto header = LhaHeader::read(*m_source, position);
            if (!header && m_members.empty())
                return header.error();
            if (!header) {
                if (header.error().code == ErrorCode::Io)
                    return header.error();
                m_info.damage = header.error();
                return {};
            }
            if (!*header)
                return {};
            position = (*header)->end();
            if (position < (*header)->dataPosition)
                return Error{ErrorCode::Corrupt, "lha: packed size"};
            if (m_members.size() == m_limits.entries)
                return Error{ErrorCode::LimitExceeded, "lha: too many entries"};
            if ((*header)->method != "-pms-") // the stub of a self-extractor
                addMember(*std::move(*header));
        }
    }

    const ArchiveInfo& info() const override { return m_info; }

    Result<void> list(EntryVisitor& visitor) override
    {
        for (std::size_t i = 0; i < m_entries.size(); ++i) {
            TRY(m_cancel.check());
            TRY(visitor.visit(describe(i)));
        }
        return {};
    }

    Result<void> read(const ReadRequest& request, Lanes& lanes) override
    {
        for (const auto chosen : request.chosen(m_entries.size())) {
            const auto index = static_cast<std::size_t>(chosen);
            TRY(m_cancel.check());
            TRY(readEntry(index, lanes.lane(0)));
            if (request.packedBytesRead)
                request.packedBytesRead->fetch_add(memberOf(index).packedSize, std::memory_order_relaxed);
        }
        return {};
    }

private:
    struct Place {
        std::size_t member = 0;
        Part part;
    };

    const LhaHeader& memberOf(std::size_t index) const { return m_members[m_entries[index].member]; }

    void addMember(LhaHeader header)
    {
        const auto member = m_members.size();
        m_members.push_back(std::move(header));
        const auto& added = m_members.back();
        if (added.system == 'm' && added.method != "-lhd-") {
            if (const auto forks = MacBinary::parse(firstBytes(added), added.size)) {
                m_entries.push_back({member, {EntryKind::File, kMacBinaryHeader, forks->dataSize}});
                if (forks->resourceSize > 0)
                    m_entries.push_back(
                        {member, {EntryKind::ResourceFork, forks->resourceOffset(), forks->resourceSize}});
                return;
            }
        }
        auto kind = added.linkTarget ? EntryKind::SymbolicLink : EntryKind::File;
        if (added.isFolder())
            kind = EntryKind::Folder;
        m_entries.push_back({member, {kind, 0, added.size}});
    }

    std::vector<std::byte> firstBytes(const LhaHeader& header) const
    {
        std::vector<std::byte> head(kMacBinaryHeader);
        const auto stream = openData(header);
        const auto count = stream ? readFully(**stream, head) : stream.error();
        head.resize(count.value_or(0U));
        return head;
    }

    Entry describe(std::size_t index) const
    {
        const auto& header = memberOf(index);
        const auto& part = m_entries[index].part;
        Entry entry;
        entry.index = index;
        entry.name = header.name;
        entry.nameCharset = header.nameCharset;
        constexpr std::string_view kUnixLike = "UAm9KJ";
        entry.pathStyle = kUnixLike.find(header.system) != std::string_view::npos && header.system != 0
            ? PathStyle::Unix
            : PathStyle::Dos;
        entry.kind = part.kind;
        if (part.kind == EntryKind::File || part.kind == EntryKind::ResourceFork) {
            entry.size = part.size;
            entry.packedSize = header.packedSize;
            entry.method = std::string_view(header.method).substr(1, 3);
        }
        entry.modified = header.modified;
        entry.created = header.created;
        entry.accessed = header.accessed;
        entry.mode = header.mode;
        entry.owner = header.owner;
        entry.group = header.group;
        entry.comment = header.comment;
        if (header.linkTarget)
            entry.linkTarget = *header.linkTarget;
        return entry;
    }

    Result<StreamPtr> openData(const LhaHeader& header) const
    {
        if (header.dataPosition > m_source->size())
            return Error{ErrorCode::Truncated, "lha: data past the end"};
        auto packed = windowStream(m_source, header.dataPosition, header.packedSize);
        if (header.method == "-lh2-")
            return openLhDynamic(std::move(packed), header.size); // liblhasa does not know it
        return openLhasaDecoder(header.method, std::move(packed), header.size);
    }

    Result<void> readEntry(std::size_t index, LaneReceiver& lane) const
    {
        const auto entry = describe(index);
        if (TRY(lane.begin(entry)) == LaneReceiver::Want::Skip)
            return {};
        if (entry.kind != EntryKind::File && entry.kind != EntryKind::ResourceFork)
            return lane.end({});
        bool stopsAll = false; // the receiver's wish or the user's, not this entry's damage
        const auto outcome = decode(memberOf(index), m_entries[index].part, lane, stopsAll);
        return stopsAll ? outcome : lane.end(outcome);
    }

    Result<void> decode(const LhaHeader& header, const Part& part, LaneReceiver& lane, bool& stopsAll) const
    {
        const auto stream = TRY(openData(header));
        std::uint64_t position = 0;
        std::uint16_t crc = 0;
        for (;;) {
            const auto goesOn = m_cancel.check();
            stopsAll = !goesOn;
            TRY(goesOn);
            const auto block = lane.room(kDecodeStep).first(kDecodeStep);
            const auto count = TRY(stream->read(block));
            if (count == 0)
                break;
            if (count > header.size - position)
                return Error{ErrorCode::SizeMismatch, "lha: more data than declared"};
            crc = crc16Arc(crc, block.first(count));
            const auto from = std::clamp(part.offset, position, position + count);
            const auto to = std::clamp(part.offset + part.size, position, position + count);
            position += count;
            if (from == to)
                continue;
            const auto taken = lane.data(block.subspan(static_cast<std::size_t>(from - (position - count)),
                                                       static_cast<std::size_t>(to - from)));
            stopsAll = !taken && taken.error().code != ErrorCode::EntryRefused;
            TRY(taken);
        }
        if (position < header.size && header.end() > m_source->size())
            return Error{ErrorCode::Truncated, "lha: data past the end"};
        if (position < header.size)
            return Error{ErrorCode::Corrupt, "lha: compressed data"};
        if (crc != header.crc)
            return Error{ErrorCode::ChecksumMismatch, "lha: CRC"};
        return {};
    }

    SourcePtr m_source;
    CancelToken m_cancel;
    Limits m_limits;
    ArchiveInfo m_info;
    std::vector<LhaHeader> m_members;
    std::vector<Place> m_entries;
};

bool isHeaderAt(const ProbeInput& input, std::size_t position)
{
    if (!LhaHeader::looksRight(input.head.subspan(position)))
        return false;
    const auto header = input.source ? LhaHeader::read(*input.source, position) : std::nullopt;
    return header && *header;
}

/// Where the archive starts behind a program.
std::optional<std::size_t> findBehindStub(const ProbeInput& input)
{
    const auto text = asText(input.head);
    for (auto at = text.find("-lh", 2); at != std::string_view::npos; at = text.find("-lh", at + 1)) {
        if (isHeaderAt(input, at - 2))
            return at - 2;
    }
    return std::nullopt;
}

bool mayBeProgram(const ProbeInput& input)
{
    std::string name(input.name.substr(input.name.size() - std::min<std::size_t>(4, input.name.size())));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return c < 128 ? std::tolower(c) : c; });
    return asText(input.head).starts_with("MZ") || name == ".com" || name == ".exe";
}

Match probe(const ProbeInput& input, std::string_view kinds)
{
    if (input.head.size() < 22 || !input.source)
        return Match::No;
    if (isHeaderAt(input, 0))
        return kinds.find(static_cast<char>(input.head[3])) != std::string_view::npos ? Match::Sure : Match::No;
    return kinds[0] == 'l' && mayBeProgram(input) && findBehindStub(input) ? Match::Stub : Match::No;
}

Match probeLha(const ProbeInput& input) { return probe(input, "l"); }
Match probePma(const ProbeInput& input) { return probe(input, "p"); }

Result<ArchivePtr> open(SourcePtr source, const OpenContext& context)
{
    const auto head = TRY(readBlock(*source, 0, 256 << 10));
    const ProbeInput input{head, source.get(), context.name};
    const auto start = isHeaderAt(input, 0) ? 0 : findBehindStub(input);
    if (!start)
        return Error{ErrorCode::NotAnArchive, "lha: no header"};
    auto archive = std::make_unique<LhasaArchive>(std::move(source), context);
    TRY(archive->scan(*start));
    return ArchivePtr(std::move(archive));
}

constexpr std::string_view kLhaExtensions[] = {"lha", "lzh", "lzs"};
constexpr std::string_view kPmaExtensions[] = {"pma"};

constexpr FormatRow kRows[] = {
    {"lha", "LHA archive", kLhaExtensions, &probeLha, &open},
    {"pma", "PMarc archive", kPmaExtensions, &probePma, &open},
};

}

std::span<const FormatRow> lhasaRows() { return kRows; }

}
