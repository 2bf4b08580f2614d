#include "engine/extract/job.h"

#include "engine/extract/lane.h"
#include "engine/io/processors.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::size_t kKeptProblems = 10'000;
constexpr unsigned kMostLanes = 16;

unsigned laneCount(const ExtractOptions& options)
{
    const auto wished = options.lanes > 0 ? options.lanes : processorCount();
    return std::clamp(wished, 1U, kMostLanes);
}

}

Job::Job(const ExtractOptions& options, const CancelToken& cancel, Mailbox& mailbox, Placer& placer, BombGuard& guard,
         EntryNames& names, WriterSettings& settings, ExtractReport& report)
    : m_cancel(cancel)
    , m_mailbox(mailbox)
    , m_placer(placer)
    , m_guard(guard)
    , m_names(names)
    , m_settings(settings)
    , m_report(report)
{
    for (unsigned i = 0; i < laneCount(options); ++i)
        m_lanes.push_back(std::make_unique<Lane>(*this));
}

Job::~Job() = default;

LaneReceiver& Job::lane(unsigned index) { return *m_lanes[index]; }

Result<void> Job::passOn(const Result<void>& outcome)
{
    if (outcome || outcome.error().code == ErrorCode::EntryRefused)
        return outcome;
    const std::lock_guard lock(m_mutex);
    if (!m_failure)
        m_failure = outcome.error();
    m_hasFailed.store(true, std::memory_order_relaxed);
    return *m_failure;
}

std::optional<Error> Job::failure()
{
    const std::lock_guard lock(m_mutex);
    return m_failure;
}

Result<void> Job::stillWanted()
{
    if (m_hasFailed.load(std::memory_order_relaxed))
        return *failure();
    return m_cancel.isCancelled() ? passOn(m_cancel.check()) : Result<void>();
}

Result<void> Job::refuse(EntryNote note, const Error& error)
{
    const EntryProblem problem{std::move(note), error};
    bool goesOn = true;
    m_mailbox.ask([&](ExtractDelegate& delegate) {
        ++m_report.problemCount;
        if (m_report.problems.size() < kKeptProblems)
            m_report.problems.push_back(problem);
        goesOn = delegate.entryFailed(problem);
    });
    if (!goesOn)
        return passOn(Error{ErrorCode::Cancelled, "stopped at a damaged entry"});
    return {};
}

Result<void> Job::entryFailed(const FilePlan& plan, const Error& error)
{
    const bool neverRight = plan.isEncrypted && !m_readsEncrypted.load();
    if (error.code == ErrorCode::Cancelled || error.code == ErrorCode::PasswordNeeded
        || (error.code == ErrorCode::WrongPassword && neverRight))
        return passOn(error);
    return refuse(plan.note, error);
}

void Job::entryWritten(const FilePlan& plan, std::uint64_t)
{
    if (plan.isEncrypted)
        m_readsEncrypted.store(true);
    countEntry();
}

Result<void> Job::refuseLink(EntryNote note, const Error& error)
{
    const std::lock_guard lock(m_mutex);
    ++m_refusedLinks;
    if (!m_firstRefusedLink)
        m_firstRefusedLink = EntryProblem{std::move(note), error};
    return {};
}

Result<void> Job::tellOfLinks()
{
    if (m_refusedLinks == 0)
        return {};
    if (m_refusedLinks > 1) {
        m_mailbox.ask([&](ExtractDelegate&) {
            m_report.problemCount += m_refusedLinks - 1;
            m_report.notes.push_back(std::to_string(m_refusedLinks)
                                     + " links that lead out of the extracted folder were not made");
        });
    }
    return refuse(m_firstRefusedLink->entry, m_firstRefusedLink->error);
}

Error Job::stopForCharset(std::uint64_t index)
{
    const std::lock_guard lock(m_mutex);
    m_charsetStop = std::min(index, m_charsetStop.value_or(index));
    return Error{ErrorCode::EncodingNeeded, "a name that must wait for the others"};
}

Result<void> Job::settle(const Result<void>& readOutcome)
{
    Result<void> outcome;
    for (const auto& lane : m_lanes) {
        if (const auto settled = lane->settle(readOutcome); !settled)
            outcome = settled;
    }
    return outcome;
}

}
