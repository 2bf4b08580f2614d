#include "engine/formats/zip/zip.h"

#include "engine/codecs/wavpack.h"
#include "engine/formats/zip/parallel_read.h"
#include "engine/formats/zip/passwords.h"
#include "engine/formats/zip/salvage.h"

namespace vantoro {

namespace zip {

namespace {

class ZipArchive final : public Archive {
public:
    ZipArchive(VolumeSet volumes, Directory directory, const OpenContext& context)
        : m_source(std::move(volumes.source))
        , m_directory(std::move(directory))
        , m_context(context)
    {
        m_info.format = "zip";
        m_info.volumes = std::move(volumes.names);
        m_info.missingVolume = std::move(volumes.missing);
        if (volumes.end)
            m_info.comment = std::move(volumes.end->comment);
        if (m_directory.isDamaged())
            m_info.damage = Error{ErrorCode::Corrupt, "zip: the directory is missing or damaged"};
    }

    const ArchiveInfo& info() const override { return m_info; }

    Result<void> list(EntryVisitor& visitor) override
    {
        EntryView view;
        constexpr std::size_t kStep = 1024; // entries between two looks at the stop flag
        for (std::size_t i = 0; i < m_directory.size(); ++i) {
            if (i % kStep == 0)
                TRY(m_context.cancel.check());
            const auto header = m_directory[i];
            const bool isCredible = m_directory.isSizeCredible(i, header, m_source->size());
            TRY(visitor.visit(view.fill(i, header, isCredible)));
        }
        return {};
    }

    Result<void> read(const ReadRequest& request, Lanes& lanes) override
    {
        const auto chosen = request.chosen(m_directory.size());
        TRY(m_passwords.prepare(m_source, m_directory, m_context, chosen));
        const ReadShared shared{.source = m_source,
                                .directory = m_directory,
                                .limits = m_context.limits,
                                .cancel = m_context.cancel,
                                .password = m_passwords.text(),
                                .isPasswordProven = m_passwords.isProven(),
                                .packedBytesRead = request.packedBytesRead,
                                .decoderThreads = chosen.size() == 1 ? lanes.count() : 1};
        return readParallel(shared, chosen, lanes);
    }

private:
    SourcePtr m_source;
    Directory m_directory;
    OpenContext m_context;
    Passwords m_passwords;
    ArchiveInfo m_info;
};

Result<Directory> openDirectory(const VolumeSet& volumes, const OpenContext& context)
{
    if (volumes.end) {
        auto directory = Directory::load(volumes, context.limits);
        if (directory && !directory->isDamaged())
            return directory;
        if (!directory && directory.error().code == ErrorCode::LimitExceeded)
            return directory;
        if (!volumes.missing.empty()) // a search would stumble over the gap
            return directory ? std::move(directory) : Error{ErrorCode::MissingVolume, "zip: part with the directory"};
    }
    return salvage(*volumes.source, context.limits, context.cancel);
}

Result<ArchivePtr> open(SourcePtr source, const OpenContext& context)
{
    auto volumes = TRY(openVolumes(std::move(source), context));
    auto directory = TRY(openDirectory(volumes, context));
    TRY(checkOverlaps(directory, *volumes.source));
    // While files can be opened; without the library such entries fail one by one.
    if (directory.hasWavPack())
        (void)preloadWavPack();
    return ArchivePtr(std::make_unique<ZipArchive>(std::move(volumes), std::move(directory), context));
}

/// A local header, an end record of an empty archive, or either behind the mark of a split set.
bool startsLikeZip(ConstBytes head)
{
    ByteReader in(head);
    auto signature = in.le32();
    if (signature == kDescriptorSignature || signature == kSingleSegmentSignature) {
        head = head.subspan(4);
        signature = in.le32();
    }
    if (signature == kEndSignature)
        return head.size() >= kEndSize;
    const auto local = LocalHeader::parse(head);
    return local && isPlausible(*local);
}

Match probe(const ProbeInput& input)
{
    if (!input.source)
        return Match::No; // the directory is at the end
    if (startsLikeZip(input.head))
        return Match::Sure;
    const auto end = findEndRecord(*input.source);
    if (end && *end && ((*end)->entries > 0 || (*end)->disk > 0))
        return Match::Stub;
    return isPartName(input.name) ? Match::ByName : Match::No;
}

constexpr std::string_view kExtensions[]
    = {"zip", "zipx", "z01", "zx01", "jar", "war", "ear", "apk",   "aar", "cbz",  "docx", "xlsx", "pptx", "odt",
       "ods", "odp",  "odg", "epub", "xpi", "ipa", "crx", "nupkg", "whl", "vsix", "kmz",  "maff", "oxt",  "sfx"};

}

}

constinit const FormatRow kZipFormat = {"zip", "Zip archive", zip::kExtensions, &zip::probe, &zip::open, nullptr};

}
