#include "engine/formats/rar/opener.h"

#include <algorithm>
#include <set>

namespace vantoro {

namespace {

constexpr std::size_t kMostVolumes = 65535;

std::string lowered(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return result;
}

/// Puts a volume's entries into the catalog.
class Filler final : public RarMemberSink {
public:
    Filler(RarCatalog& catalog, const Limits& limits) : m_catalog(catalog), m_limits(limits) {}
    Result<bool> member(RarMember member, bool continues, bool goesOn) override
    {
        TRY(m_catalog.add(std::move(member), continues, goesOn, m_limits));
        return true;
    }
    void damage(const Error& error) override { m_catalog.noteDamage(error); }

private:
    RarCatalog& m_catalog;
    const Limits& m_limits;
};

/// Stops at the first entry: what is in front of it tells about the volume.
class FirstLook final : public RarMemberSink {
public:
    Result<bool> member(RarMember member, bool, bool) override
    {
        name = std::move(member.name);
        return false;
    }
    void damage(const Error&) override {}
    std::string name;
};

struct Candidate {
    RarVolume volume;
    RarMark mark;
    RarVolumeFacts facts;
    std::string firstEntry;
};

class SetOpener {
public:
    SetOpener(const OpenContext& context, RarKeyRing& keys) : m_context(context), m_keys(keys) {}
    Result<RarCatalog> run(SourcePtr source, RarVolumeFacts& firstVolume);

private:
    RarScanContext scanContext() const
    {
        return {&m_keys, m_context.cancel, m_context.limits, static_cast<std::uint32_t>(m_catalog.volumes.size())};
    }
    Result<Candidate> look(RarVolume volume);
    /// Nothing when no file of that name is there, or it is no volume of this generation.
    Result<std::optional<Candidate>> find(const std::string& name);
    Result<Candidate> findFirst(Candidate opened);
    Result<std::optional<Candidate>> findNext(RarNaming naming);
    void noteMissing(const std::vector<std::string>& names);
    Result<RarVolumeFacts> take(const Candidate& candidate);

    const OpenContext& m_context;
    RarKeyRing& m_keys;
    RarCatalog m_catalog;
    RarVolume m_opened;
    std::set<std::string> m_used; // names in lower case: no file is read twice
    std::optional<std::uint64_t> m_number; // of the volume taken last
};

Result<Candidate> SetOpener::look(RarVolume volume)
{
    const auto mark = TRY(findRarMark(*volume.source));
    if (!mark)
        return Error{ErrorCode::NotAnArchive, "rar: no marker"};
    FirstLook first;
    RarHeaderInput in(volume.source);
    auto facts = TRY(scanRar(in, *mark, scanContext(), first));
    return Candidate{std::move(volume), *mark, std::move(facts), std::move(first.name)};
}

Result<std::optional<Candidate>> SetOpener::find(const std::string& name)
{
    if (m_used.contains(lowered(name)))
        return std::optional<Candidate>();
    auto volume = m_opened;
    if (lowered(name) != lowered(m_opened.name)) {
        if (!m_context.volumes)
            return std::optional<Candidate>();
        auto source = m_context.volumes->openVolume(name);
        if (!source && source.error().code == ErrorCode::MissingVolume)
            return std::optional<Candidate>();
        volume = {name, TRY(std::move(source))};
    }
    auto candidate = look(std::move(volume));
    if (!candidate) {
        const auto code = candidate.error().code;
        if (code == ErrorCode::NotAnArchive || code == ErrorCode::Corrupt || code == ErrorCode::Truncated)
            return std::optional<Candidate>();
        return candidate.error();
    }
    if (!candidate->facts.isVolume || candidate->mark.generation != m_catalog.generation)
        return std::optional<Candidate>();
    return std::optional(*std::move(candidate));
}

void SetOpener::noteMissing(const std::vector<std::string>& names)
{
    if (!names.empty() && m_catalog.missingVolume.empty())
        m_catalog.missingVolume = names.front();
}

Result<Candidate> SetOpener::findFirst(Candidate opened)
{
    const auto& facts = opened.facts;
    if (!facts.isVolume || facts.isFirst)
        return opened;
    const auto isLater = facts.continues || facts.number.value_or(0) > 0;
    const auto names = firstRarVolumes(m_opened.name, facts.naming);
    const auto looksFirst = facts.naming == RarNaming::Letters && lowered(m_opened.name).ends_with(".rar");
    if (!isLater && (looksFirst || names.empty()))
        return opened;
    for (const auto& name : names) {
        auto candidate = TRY(find(name));
        if (candidate && !candidate->facts.continues && candidate->facts.number.value_or(0) == 0)
            return *std::move(candidate);
    }
    if (isLater)
        noteMissing(names);
    return opened;
}

Result<std::optional<Candidate>> SetOpener::findNext(RarNaming naming)
{
    const auto names = nextRarVolumes(m_catalog.volumes.back().name, naming);
    for (const auto& name : names) {
        auto candidate = TRY(find(name));
        if (!candidate)
            continue;
        // A file that only happens to have the name does not go on where this volume ends.
        if (m_number && candidate->facts.number != *m_number + 1)
            continue;
        if (m_catalog.isOpen()
            && (!candidate->facts.continues || candidate->firstEntry != m_catalog.members.back().name))
            continue;
        return candidate;
    }
    noteMissing(names);
    return std::optional<Candidate>();
}

Result<RarVolumeFacts> SetOpener::take(const Candidate& candidate)
{
    const auto context = scanContext();
    m_catalog.volumes.push_back(candidate.volume);
    m_used.insert(lowered(candidate.volume.name));
    m_number = candidate.facts.number;
    Filler filler(m_catalog, m_context.limits);
    RarHeaderInput in(candidate.volume.source);
    return scanRar(in, candidate.mark, context, filler);
}

Result<RarCatalog> SetOpener::run(SourcePtr source, RarVolumeFacts& firstVolume)
{
    m_opened = {m_context.name, std::move(source)};
    auto opened = TRY(look(m_opened));
    m_catalog.generation = opened.mark.generation;
    const auto first = TRY(findFirst(std::move(opened)));
    firstVolume = TRY(take(first));
    m_catalog.isVolumeSet = firstVolume.isVolume;
    m_catalog.isSolid = firstVolume.isSolid;
    m_catalog.hasEncryptedHeaders = firstVolume.hasEncryptedHeaders;
    auto goesOn = firstVolume.isVolume && firstVolume.goesOn;
    while ((goesOn || m_catalog.isOpen()) && m_catalog.volumes.size() < kMostVolumes) {
        const auto next = TRY(findNext(firstVolume.naming));
        if (!next)
            break;
        goesOn = TRY(take(*next)).goesOn;
    }
    m_catalog.close();
    return std::move(m_catalog);
}

}

Result<RarCatalog> openRarSet(SourcePtr source, const OpenContext& context, RarKeyRing& keys,
                              RarVolumeFacts& firstVolume)
{
    return SetOpener(context, keys).run(std::move(source), firstVolume);
}

}
