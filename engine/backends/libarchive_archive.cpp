#include "engine/backends/libarchive_archive.h"

#include <archive.h>
#include <archive_entry.h>
#include <sys/stat.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <map>

namespace vantoro {

namespace {

std::string_view text(const char* bytes) { return bytes ? std::string_view(bytes) : std::string_view(); }

Timestamp timestamp(bool isSet, time_t seconds, long nanoseconds)
{
    Timestamp time;
    time.isSet = isSet;
    time.seconds = seconds;
    time.nanoseconds = static_cast<std::uint32_t>(std::clamp(nanoseconds, 0L, 999'999'999L));
    return time;
}

EntryKind kindOf(archive_entry* header)
{
    if (archive_entry_hardlink(header))
        return EntryKind::HardLink;
    switch (archive_entry_filetype(header)) {
    case AE_IFDIR:
        return EntryKind::Folder;
    case AE_IFLNK:
        return EntryKind::SymbolicLink;
    case AE_IFREG:
    case 0:
        return EntryKind::File;
    default:
        return EntryKind::Other;
    }
}

/// The entry as views into `header`.
Entry describe(const LibarchiveFormat& format, archive_entry* header, std::vector<ExtendedAttribute>& attributes)
{
    Entry entry;
    entry.name = text(archive_entry_pathname(header));
    entry.nameCharset = format.nameCharset;
    entry.kind = kindOf(header);
    if (entry.kind == EntryKind::File && archive_entry_size_is_set(header))
        entry.size = static_cast<std::uint64_t>(std::max<la_int64_t>(archive_entry_size(header), 0));
    entry.modified
        = timestamp(archive_entry_mtime_is_set(header), archive_entry_mtime(header), archive_entry_mtime_nsec(header));
    entry.accessed
        = timestamp(archive_entry_atime_is_set(header), archive_entry_atime(header), archive_entry_atime_nsec(header));
    entry.created = timestamp(archive_entry_birthtime_is_set(header), archive_entry_birthtime(header),
                              archive_entry_birthtime_nsec(header));
    if (format.hasModes)
        entry.mode = archive_entry_mode(header);
    entry.owner = text(archive_entry_uname(header));
    entry.group = text(archive_entry_gname(header));
    if (entry.kind == EntryKind::HardLink)
        entry.linkTarget = text(archive_entry_hardlink(header));
    else if (entry.kind == EntryKind::SymbolicLink)
        entry.linkTarget = text(archive_entry_symlink(header));
    entry.isEncrypted = archive_entry_is_data_encrypted(header) > 0;
    attributes.clear();
    archive_entry_xattr_reset(header);
    const char* name = nullptr;
    const void* value = nullptr;
    std::size_t size = 0;
    while (archive_entry_xattr_next(header, &name, &value, &size) == ARCHIVE_OK)
        attributes.push_back({text(name), {static_cast<const std::byte*>(value), size}});
    entry.attributes = attributes;
    return entry;
}

using HeaderPtr = std::unique_ptr<archive_entry, decltype(&archive_entry_free)>;
using Step = std::function<Result<void>(archive_entry* header, bool hasData)>;

/// cpio's newer kinds store a file with several names as empty entries, and its bytes with the last one. Holds the
/// empty ones back until that arrives, and passes them on as hard links to it.
class LinkedNames {
public:
    /// True when the header was taken into keeping.
    bool hold(archive_entry* header)
    {
        const auto key = keyOf(header);
        const auto known = m_held.find(key);
        const bool isEmpty = archive_entry_size(header) == 0;
        if (archive_entry_nlink(header) < 2 || archive_entry_filetype(header) != AE_IFREG || !isEmpty)
            return false;
        if (const auto done = m_carriers.find(key); done != m_carriers.end()) {
            archive_entry_set_hardlink(header, done->second.c_str());
            return false;
        }
        if (archive_entry_hardlink(header) && known == m_held.end())
            return false;
        HeaderPtr copy(archive_entry_clone(header), &archive_entry_free);
        archive_entry_set_hardlink(copy.get(), nullptr);
        m_held[key].push_back(std::move(copy));
        return true;
    }
    /// The names that were waiting for this header's bytes; the header becomes the file itself.
    std::vector<HeaderPtr> releasedBy(archive_entry* header)
    {
        auto waiting = m_held.extract(keyOf(header));
        if (waiting.empty() || archive_entry_filetype(header) != AE_IFREG)
            return {};
        archive_entry_set_hardlink(header, nullptr);
        const std::string carrier(text(archive_entry_pathname(header)));
        m_carriers[waiting.key()] = carrier;
        return linkedTo(std::move(waiting.mapped()), carrier);
    }
    /// At the end: names whose file is really empty. The first one becomes the file.
    std::vector<HeaderPtr> rest()
    {
        std::vector<HeaderPtr> headers;
        for (auto& [key, waiting] : m_held) {
            const std::string carrier(text(archive_entry_pathname(waiting.front().get())));
            headers.push_back(std::move(waiting.front()));
            waiting.erase(waiting.begin());
            for (auto& link : linkedTo(std::move(waiting), carrier))
                headers.push_back(std::move(link));
        }
        m_held.clear();
        return headers;
    }

private:
    using Key = std::pair<std::uint64_t, std::int64_t>;
    static Key keyOf(archive_entry* header)
    {
        return {static_cast<std::uint64_t>(archive_entry_dev(header)), archive_entry_ino64(header)};
    }
    static std::vector<HeaderPtr> linkedTo(std::vector<HeaderPtr> headers, const std::string& carrier)
    {
        for (auto& header : headers)
            archive_entry_set_hardlink(header.get(), carrier.c_str());
        return headers;
    }
    std::map<Key, std::vector<HeaderPtr>> m_held;
    std::map<Key, std::string> m_carriers;
};

/// Entries that came out of a stream before a checksum had confirmed them.
class DoubtfulEntries {
public:
    explicit DoubtfulEntries(const LibarchiveInput& input) : m_input(input) {}
    /// `position`: where the entry starts, and with it the one before ends.
    void add(std::uint64_t index, std::uint64_t position)
    {
        m_entries.push_back({index, position});
        while (m_entries.size() > 1 && m_entries[1].position <= m_input.verifiedBytes())
            m_entries.pop_front();
    }
    std::optional<std::uint64_t> first() const
    {
        return m_entries.empty() ? std::nullopt : std::optional(m_entries.front().index);
    }

private:
    struct Mark {
        std::uint64_t index, position;
    };
    const LibarchiveInput& m_input;
    std::deque<Mark> m_entries;
};

class LibarchiveArchive final : public Archive {
public:
    LibarchiveArchive(const LibarchiveFormat& format, SourcePtr source, StreamFactory stream,
                      const OpenContext& context)
        : m_format(format)
        , m_source(std::move(source))
        , m_stream(std::move(stream))
        , m_cancel(context.cancel)
        , m_limits(context.limits)
    {
        m_info.format = format.id;
        m_info.listsCheaply = m_source != nullptr;
    }

    const ArchiveInfo& info() const override { return m_info; }

    Result<void> list(EntryVisitor& visitor) override
    {
        const auto session = TRY(open(nullptr));
        std::uint64_t index = 0;
        return walk(*session, [&](archive_entry* header, bool) -> Result<void> {
            auto entry = describe(m_format, header, m_attributes);
            entry.index = index++;
            return visitor.visit(entry);
        });
    }

    Result<void> read(const ReadRequest& request, Lanes& lanes) override
    {
        const auto session = TRY(open(request.packedBytesRead));
        DoubtfulEntries doubtful(session->input());
        std::uint64_t index = 0;
        std::size_t chosen = 0; // how many of the selection have been passed
        auto outcome = walk(*session, [&](archive_entry* header, bool hasData) -> Result<void> {
            const auto current = index++;
            doubtful.add(current, session->headerPosition());
            if (request.selection) {
                if (chosen == request.selection->size() || (*request.selection)[chosen] != current)
                    return {};
                ++chosen;
            }
            auto entry = describe(m_format, header, m_attributes);
            entry.index = current;
            return readEntry(*session, entry, hasData, lanes.lane(0));
        });
        if (!outcome && !session->input().failure())
            return outcome;
        const auto atEnd = outcome ? session->input().drain() : outcome;
        if (atEnd || atEnd.error().code == ErrorCode::Cancelled)
            return atEnd;
        m_info.damage = atEnd.error();
        if (atEnd.error().code != ErrorCode::TrailingData)
            m_info.firstDoubtfulEntry = doubtful.first();
        return outcome;
    }

private:
    Result<std::unique_ptr<LibarchiveSession>> open(std::atomic<std::uint64_t>* packedBytesRead) const
    {
        if (m_source)
            return LibarchiveSession::start(m_format, {m_source, m_cancel, packedBytesRead}, m_limits);
        return LibarchiveSession::start(m_format, {TRY(m_stream()), m_cancel}, m_limits);
    }

    /// Calls `step` for each entry in the order of the listing; data can be read from the session during the call.
    Result<void> walk(LibarchiveSession& session, const Step& step)
    {
        LinkedNames links;
        while (archive_entry* header = TRY(session.nextHeader())) {
            TRY(m_cancel.check());
            if (m_format.isTable && m_format.isTable(text(archive_entry_pathname(header))))
                continue;
            if (m_format.dataComesWithLastName) {
                if (links.hold(header))
                    continue;
                const auto released = links.releasedBy(header);
                TRY(step(header, true));
                for (const auto& link : released)
                    TRY(step(link.get(), false));
                continue;
            }
            TRY(step(header, true));
        }
        for (const auto& header : links.rest())
            TRY(step(header.get(), false));
        if (session.skippedHeader())
            m_info.damage = session.skippedHeader();
        return {};
    }

    Result<void> readEntry(LibarchiveSession& session, const Entry& entry, bool hasData, LaneReceiver& lane)
    {
        if (TRY(lane.begin(entry)) == LaneReceiver::Want::Skip)
            return {};
        if (entry.kind != EntryKind::File || !hasData)
            return lane.end({});
        bool receiverFailed = false;
        const auto outcome = copyData(session, entry, lane, receiverFailed);
        if (receiverFailed && outcome.error().code != ErrorCode::EntryRefused)
            return outcome;
        TRY(lane.end(outcome));
        if (!outcome && !receiverFailed && !session.canGoOn())
            return outcome;
        return {};
    }

    Result<void> copyData(LibarchiveSession& session, const Entry& entry, LaneReceiver& lane, bool& receiverFailed)
    {
        const auto passOn = [&](Result<void> answer) {
            receiverFailed = !answer.has_value();
            return answer;
        };
        std::uint64_t position = 0;
        while (const auto block = TRY(session.nextBlock())) {
            TRY(m_cancel.check());
            if (block->position < position)
                return Error{ErrorCode::Corrupt, "libarchive: data out of order"};
            const auto end = TRY(checkedAdd<std::uint64_t>(block->position, block->bytes.size()));
            if (entry.size && end > *entry.size)
                return Error{ErrorCode::SizeMismatch, "libarchive: more data than declared"};
            if (block->position > position)
                TRY(passOn(lane.hole(block->position - position)));
            if (!block->bytes.empty())
                TRY(passOn(lane.data(block->bytes)));
            position = end;
        }
        if (entry.size && position != *entry.size)
            return Error{ErrorCode::SizeMismatch, "libarchive: fewer data than declared"};
        return {};
    }

    const LibarchiveFormat& m_format;
    SourcePtr m_source;
    StreamFactory m_stream;
    CancelToken m_cancel;
    Limits m_limits;
    ArchiveInfo m_info;
    std::vector<ExtendedAttribute> m_attributes; // of the entry in hand
};

}

Result<ArchivePtr> openWithLibarchive(const LibarchiveFormat& format, SourcePtr source, const OpenContext& context)
{
    return ArchivePtr(std::make_unique<LibarchiveArchive>(format, std::move(source), nullptr, context));
}

Result<ArchivePtr> openWithLibarchive(const LibarchiveFormat& format, StreamFactory stream, const OpenContext& context)
{
    return ArchivePtr(std::make_unique<LibarchiveArchive>(format, nullptr, std::move(stream), context));
}

}
