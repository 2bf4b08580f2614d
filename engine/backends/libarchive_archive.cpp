#include "engine/backends/libarchive_archive.h"

#include "engine/backends/late_libarchive.h"

#include <algorithm>
#include <deque>
#include <functional>

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

using Step = std::function<Result<void>(archive_entry* header)>;

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
        return walk(*session, [&](archive_entry* header) -> Result<void> {
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
        auto outcome = walk(*session, [&](archive_entry* header) -> Result<void> {
            const auto current = index++;
            doubtful.add(current, session->headerPosition());
            if (request.selection) {
                if (chosen == request.selection->size() || (*request.selection)[chosen] != current)
                    return {};
                ++chosen;
            }
            auto entry = describe(m_format, header, m_attributes);
            entry.index = current;
            return readEntry(*session, entry, lanes.lane(0));
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
        while (archive_entry* header = TRY(session.nextHeader())) {
            TRY(m_cancel.check());
            if (!m_format.isTable || !m_format.isTable(text(archive_entry_pathname(header))))
                TRY(step(header));
        }
        if (session.skippedHeader())
            m_info.damage = session.skippedHeader();
        return {};
    }

    Result<void> readEntry(LibarchiveSession& session, const Entry& entry, LaneReceiver& lane)
    {
        if (TRY(lane.begin(entry)) == LaneReceiver::Want::Skip)
            return {};
        if (entry.kind != EntryKind::File)
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

Result<ArchivePtr> open(const LibarchiveFormat& format, SourcePtr source, StreamFactory stream,
                        const OpenContext& context)
{
    if (!libarchiveLibrary.load())
        return Error{ErrorCode::UnsupportedFeature, "libarchive: not installed"};
    return ArchivePtr(std::make_unique<LibarchiveArchive>(format, std::move(source), std::move(stream), context));
}

}

Result<ArchivePtr> openWithLibarchive(const LibarchiveFormat& format, SourcePtr source, const OpenContext& context)
{
    return open(format, std::move(source), nullptr, context);
}

Result<ArchivePtr> openWithLibarchive(const LibarchiveFormat& format, StreamFactory stream, const OpenContext& context)
{
    return open(format, nullptr, std::move(stream), context);
}

}
