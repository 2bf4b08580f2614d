#include "engine/formats/iso.h"

#include "engine/formats/iso_reader.h"

namespace vantoro {

namespace {

class IsoArchive final : public Archive {
public:
    IsoArchive(SourcePtr source, const IsoVolume& volume, const OpenContext& context)
        : m_source(std::move(source))
        , m_volume(volume)
        , m_cancel(context.cancel)
        , m_limits(context.limits)
    {
        m_info.format = "iso";
    }

    const ArchiveInfo& info() const override { return m_info; }

    Result<void> list(EntryVisitor& visitor) override
    {
        IsoWalker walker(*m_source, m_volume, m_limits);
        const IsoReader reader(m_source, m_volume, m_cancel);
        while (const auto* item = TRY(walker.next())) {
            TRY(m_cancel.check());
            TRY(visitor.visit(reader.describe(*item)));
        }
        m_info.damage = walker.damage();
        return {};
    }

    Result<void> read(const ReadRequest& request, Lanes& lanes) override
    {
        IsoWalker walker(*m_source, m_volume, m_limits);
        TRY(IsoReader(m_source, m_volume, m_cancel).readAll(walker, request, lanes));
        m_info.damage = walker.damage();
        return {};
    }

private:
    SourcePtr m_source;
    IsoVolume m_volume;
    CancelToken m_cancel;
    Limits m_limits;
    ArchiveInfo m_info;
};

Match probeIso(const ProbeInput& input)
{
    constexpr std::size_t kFirst = kIsoDescriptors, kLast = 32 * kIsoSector;
    if (input.head.size() < kFirst + kIsoSector || asText(input.head.subspan(kFirst + 1, 5)) != "CD001")
        return Match::No;
    for (std::size_t at = kFirst; at < kLast && at + kIsoSector <= input.head.size(); at += kIsoSector) {
        const auto id = asText(input.head.subspan(at + 1, 5));
        if (id == "NSR02" || id == "NSR03")
            return Match::Likely;
    }
    return Match::Sure;
}

Result<ArchivePtr> openIso(SourcePtr source, const OpenContext& context)
{
    const auto volume = TRY(IsoVolume::open(*source));
    return ArchivePtr(std::make_unique<IsoArchive>(std::move(source), volume, context));
}

constexpr std::string_view kExtensions[] = {"iso", "cdr"};

}

constexpr FormatRow kIsoFormat{"iso", "ISO 9660 disc image", kExtensions, &probeIso, &openIso};

}
