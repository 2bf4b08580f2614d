#include "engine/formats/rar/rar.h"

#include "engine/formats/rar/archive.h"
#include "engine/formats/rar/opener.h"

#include <algorithm>
#include <array>

namespace vantoro {

namespace {

constexpr std::array<std::string_view, 11> kExtensions{"rar", "cbr", "r00", "r01", "r02", "r03",
                                                       "r04", "r05", "r06", "r07", "r08"};

/// Programs may be longer in front of the marker than the head that every probe sees.
bool isProgram(ConstBytes head)
{
    const auto text = asText(head);
    return text.starts_with("MZ")
        || text.starts_with("\x7F"
                            "ELF")
        || text.starts_with("#!");
}

Match probe(const ProbeInput& input)
{
    auto mark = findRarMark(input.head);
    if (!mark && input.source && isProgram(input.head)) {
        if (const auto found = findRarMark(*input.source))
            mark = *found;
    }
    if (!mark)
        return Match::No;
    return mark->offset == 0 ? Match::Sure : Match::Stub;
}

Result<ArchivePtr> open(SourcePtr source, const OpenContext& context)
{
    auto keys = std::make_unique<RarKeyRing>(context.passwords, context.cancel);
    RarVolumeFacts firstVolume;
    auto catalog = TRY(openRarSet(std::move(source), context, *keys, firstVolume));
    auto archive = std::make_unique<RarArchive>(std::move(catalog), std::move(keys), context);
    archive->readComment(firstVolume);
    return ArchivePtr(std::move(archive));
}

}

const FormatRow kRarFormat{"rar", "RAR archive", kExtensions, &probe, &open};

}
