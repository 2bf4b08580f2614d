#include "cli/commands.h"
#include "cli/output.h"

#include "engine/io/processors.h"

#include <mutex>

namespace vantoro::cli {

namespace {

/// What the lanes of one archive found together.
struct Findings {
    std::mutex mutex;
    std::uint64_t entries = 0;
    std::uint64_t bad = 0;
    std::optional<Error> question; // a password that was not to be had
};

/// Decodes entries and drops the data.
class DroppingLane final : public LaneReceiver {
public:
    DroppingLane(const std::string& archive, Findings& findings) : m_archive(archive), m_findings(findings) {}

    Result<Want> begin(const Entry& entry) override
    {
        const bool hasData = entry.kind == EntryKind::File || entry.kind == EntryKind::SymbolicLink
            || entry.kind == EntryKind::ResourceFork;
        m_name = shownName(entry.name, charsetOf(entry, kCharsetUnknown, kCharsetUtf8), entry.pathStyle);
        const std::lock_guard lock(m_findings.mutex);
        ++m_findings.entries;
        return hasData ? Want::Data : Want::Skip;
    }
    Bytes room(std::size_t least) override
    {
        if (m_room.size() < least)
            m_room.resize(std::max(least, std::size_t{256} << 10));
        return m_room;
    }
    Result<void> data(ConstBytes) override { return {}; }
    Result<void> hole(std::uint64_t) override { return {}; }
    Result<void> end(Result<void> outcome) override
    {
        if (outcome)
            return {};
        const std::lock_guard lock(m_findings.mutex);
        ++m_findings.bad;
        complain(m_archive, m_name, sentence(outcome.error()));
        if (statusOf(outcome.error()) == kUnanswered)
            m_findings.question = outcome.error();
        return {};
    }

private:
    const std::string& m_archive;
    Findings& m_findings;
    std::string m_name;
    std::vector<std::byte> m_room;
};

class DroppingLanes final : public Lanes {
public:
    DroppingLanes(const std::string& archive, Findings& findings)
    {
        for (unsigned i = 0; i < processorCount(); ++i)
            m_lanes.push_back(std::make_unique<DroppingLane>(archive, findings));
    }
    unsigned count() const override { return static_cast<unsigned>(m_lanes.size()); }
    LaneReceiver& lane(unsigned index) override { return *m_lanes[index]; }

private:
    std::vector<std::unique_ptr<DroppingLane>> m_lanes;
};

int testOne(const Arguments& arguments, const std::string& path, PasswordSource& passwords, const CancelToken& cancel)
{
    passwords.begin(path);
    std::string missing;
    auto opened = openArchive(path, {&passwords, cancel, limitsOf(arguments), &missing});
    if (!opened) {
        complain(path, {}, sentence(opened.error(), missing));
        return statusOf(opened.error());
    }
    Findings findings;
    DroppingLanes lanes(path, findings);
    auto& archive = (*opened)->archive();
    const auto result = archive.read({}, lanes);
    const auto& info = archive.info();
    if (!result) {
        complain(path, {}, sentence(result.error(), info.missingVolume));
        return statusOf(result.error());
    }
    if (info.damage)
        complain(path, {}, sentence(*info.damage, info.missingVolume));
    if (findings.question)
        return kUnanswered;
    const bool isWhole = findings.bad == 0 && !info.damage && info.missingVolume.empty();
    Output out;
    out.put(path + ": " + std::to_string(findings.entries) + (findings.entries == 1 ? " entry, " : " entries, ")
            + (isWhole ? "all whole\n" : std::to_string(findings.bad) + " damaged\n"));
    return isWhole ? kWhole : kDamaged;
}

}

int runTest(const Arguments& arguments, const CancelToken& cancel)
{
    PasswordSource passwords(arguments);
    int status = kWhole;
    for (const auto& path : arguments.archives) {
        if (cancel.isCancelled())
            break;
        status = std::max(status, testOne(arguments, path, passwords, cancel));
    }
    return status;
}

}
