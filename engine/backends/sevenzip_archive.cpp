#include "engine/backends/sevenzip_archive.h"

#include "engine/backends/sevenzip_extract.h"

#include <algorithm>

#include <string.h>

namespace vantoro::sevenzip {

namespace {

constexpr std::string_view kMissingVolume = "Missing volume : ";

/// Orders names of volumes by the numbers in them: "disk2.cab" before "disk10.cab".
bool comesBefore(const std::string& a, const std::string& b) { return ::strverscmp(a.c_str(), b.c_str()) < 0; }

std::vector<SourcePtr> filesOf(const SourcePtr& opened, const Session& session)
{
    std::vector<SourcePtr> files{opened};
    files.insert(files.end(), session.volumeSources().begin(), session.volumeSources().end());
    return files;
}

class SevenZipArchive final : public PartsArchive {
public:
    SevenZipArchive(const Format& format, std::unique_ptr<Session> session, Opened opened, const SourcePtr& source)
        : m_format(format)
        , m_session(std::move(session))
        , m_handler(std::move(opened.handler))
        , m_items(format, m_handler, filesOf(source, *m_session))
    {
        m_info.format = format.id;
        m_info.hasEncryptedNames = opened.hasEncryptedNames;
    }
    ~SevenZipArchive() override { m_handler->close(); }

    Result<void> load()
    {
        TRY(m_items.load(m_session->context().limits, m_session->context().cancel));
        readInfo();
        return {};
    }

    const ArchiveInfo& info() const override { return m_info; }

    Result<void> list(EntryVisitor& visitor) override
    {
        Item item;
        for (std::uint64_t entry = 0; entry < m_items.count(); ++entry) {
            TRY(m_session->context().cancel.check());
            TRY(m_items.fill(entry, item));
            TRY(visitor.visit(item.entry));
        }
        return {};
    }

    Result<void> read(const ReadRequest& request, Lanes& lanes) override
    {
        countInto(request.packedBytesRead);
        const auto result = guarded([&]() -> Result<void> {
            return extractItems(*m_handler.raw(), m_format, m_items, *m_session, request, lanes.lane(0));
        });
        countInto(nullptr);
        return result;
    }

    /// This archive reads from inside `outer`.
    void keep(std::unique_ptr<SevenZipArchive> outer) { m_outer = std::move(outer); }

    SourcePtr part(std::uint64_t entry) const override
    {
        return entry < m_items.count() ? itemSource(m_items.handlerIndex(entry)) : nullptr;
    }

    /// The one thing inside a disk image that is worth opening in its place.
    SourcePtr mainPart() const
    {
        Variant index;
        if (m_handler->archiveProperty(property::kMainSubfile, &index) != kOk || !index.isNumber())
            return nullptr;
        return itemSource(static_cast<std::uint32_t>(index.number()));
    }

private:
    SourcePtr itemSource(std::uint32_t item) const
    {
        const auto parts = m_handler.query<SubStreams>();
        SequentialInStream* found = nullptr;
        if (!parts || parts->itemStream(item, &found) != kOk || !found)
            return nullptr;
        const auto stream = Ref<SequentialInStream>::adopt(found).query<InStream>();
        return stream ? streamSource(stream) : nullptr;
    }

    /// Packed are the bytes of the file, not those of a partition in it.
    void countInto(std::atomic<std::uint64_t>* counter)
    {
        if (m_outer)
            m_outer->countInto(counter);
        else
            m_session->input()->countInto(counter);
    }

    void readInfo()
    {
        Variant value;
        if (m_handler->archiveProperty(property::kComment, &value) == kOk)
            m_info.comment = value.rawText();
        value.clear();
        if (m_handler->archiveProperty(property::kSolid, &value) == kOk)
            m_info.isSolid = value.isTrue();
        readVolumes();
        readDamage();
    }

    void readVolumes()
    {
        m_info.missingVolume = m_session->missingVolume();
        Variant value;
        if (m_handler->archiveProperty(property::kErrorText, &value) == kOk) {
            const auto text = value.rawText();
            if (const auto at = text.find(kMissingVolume); at != std::string::npos)
                m_info.missingVolume = text.substr(at + kMissingVolume.size());
        }
        if (m_session->volumeNames().empty())
            return;
        m_info.volumes = m_session->volumeNames();
        m_info.volumes.push_back(m_session->context().name);
        std::sort(m_info.volumes.begin(), m_info.volumes.end(), comesBefore);
    }

    void readDamage()
    {
        Variant value;
        if (!m_info.missingVolume.empty()) {
            m_info.damage = Error{ErrorCode::MissingVolume, "7-Zip: a volume is missing"};
            return;
        }
        if (m_handler->archiveProperty(property::kErrorFlags, &value) != kOk)
            return;
        const auto flags = value.number();
        constexpr auto kDamaged = error_flag::kHeaders | error_flag::kEncryptedHeaders | error_flag::kUnavailableStart
            | error_flag::kData | error_flag::kChecksum;
        if (flags & error_flag::kUnexpectedEnd)
            m_info.damage = Error{ErrorCode::Truncated, "7-Zip: the archive ends too early"};
        else if (flags & kDamaged)
            m_info.damage = Error{ErrorCode::Corrupt, "7-Zip: the archive's headers are damaged"};
    }

    const Format& m_format;
    std::unique_ptr<SevenZipArchive> m_outer; // outlives all that reads from it
    std::unique_ptr<Session> m_session; // outlives the handler, which keeps callbacks of ours
    Ref<InArchive> m_handler;
    Items m_items;
    ArchiveInfo m_info;
};

Result<std::unique_ptr<SevenZipArchive>> openOne(const Format& format, const SourcePtr& source,
                                                 const OpenContext& context)
{
    auto session = std::make_unique<Session>(context);
    auto opened = TRY(openHandler(format, source, *session));
    auto archive = std::make_unique<SevenZipArchive>(format, std::move(session), std::move(opened), source);
    TRY(archive->load());
    return archive;
}

}

Result<std::unique_ptr<PartsArchive>> openLayer(const Format& format, const SourcePtr& source,
                                                const OpenContext& context)
{
    return std::unique_ptr<PartsArchive>(TRY(openOne(format, source, context)));
}

Result<ArchivePtr> openArchive(const Format& format, SourcePtr source, const OpenContext& context)
{
    return guarded([&]() -> Result<ArchivePtr> {
        auto archive = TRY(openOne(format, source, context));
        bool isImage = format.isImage;
        for (unsigned depth = 0; isImage && depth < context.limits.depth; ++depth) {
            const auto part = archive->mainPart();
            const auto* inner = part ? findImageFormat(*part) : nullptr;
            if (!inner)
                break;
            auto opened = openOne(*inner, part, context);
            if (!opened)
                break; // a file system that cannot be read: the partition itself can
            isImage = inner->isImage;
            (*opened)->keep(std::move(archive));
            archive = std::move(*opened);
        }
        return ArchivePtr(std::move(archive));
    });
}

}
