#pragma once

#include "engine/extract/entry_names.h"
#include "engine/extract/entry_sink.h"
#include "engine/extract/mailbox.h"
#include "engine/extract/options.h"
#include "engine/io/cancel.h"

#include <vector>

namespace vantoro {

class Lane;

/// What the lanes of one extraction share: where entries go, what has been reported, and whether it is over.
class Job final : public Lanes, public SinkObserver {
public:
    Job(const ExtractOptions& options, const CancelToken& cancel, Mailbox& mailbox, Placer& placer, BombGuard& guard,
        EntryNames& names, WriterSettings& settings, ExtractReport& report);
    ~Job() override;

    unsigned count() const override { return static_cast<unsigned>(m_lanes.size()); }
    LaneReceiver& lane(unsigned index) override;

    Result<void> stillWanted() override;
    Result<void> entryFailed(const FilePlan& plan, const Error& error) override;
    void entryWritten(const FilePlan& plan, std::uint64_t size) override;

    /// Tells of an entry that does not come out. An Error when the user stops.
    Result<void> refuse(EntryNote note, const Error& error);
    /// Links that lead out are told of in one sum.
    Result<void> refuseLink(EntryNote note, const Error& error);
    Result<void> tellOfLinks();
    /// The first error that ends the job; read() may hand back a less telling one.
    Result<void> passOn(const Result<void>& outcome);
    std::optional<Error> failure();

    /// Reading stops here until the charset of names like this one is known.
    Error stopForCharset(std::uint64_t index);
    std::optional<std::uint64_t> takeCharsetStop() { return std::exchange(m_charsetStop, std::nullopt); }

    /// Everything that was read is written; entries that read() left open share its fate.
    Result<void> settle(const Result<void>& readOutcome);

    Mailbox& mailbox() { return m_mailbox; }
    Placer& placer() { return m_placer; }
    BombGuard& guard() { return m_guard; }
    const EntryNames& names() const { return m_names; }
    WriterSettings& settings() { return m_settings; }
    std::uint64_t entries() const { return m_entries.load(std::memory_order_relaxed); }
    void countEntry() { m_entries.fetch_add(1, std::memory_order_relaxed); }

    /// How many lanes have been used at all, and how many are in the middle of an entry.
    std::atomic<unsigned> usedLanes{0};
    std::atomic<unsigned> busyLanes{0};
    /// The archive decodes in a process of its own: a further hand-over inside this one would only cost.
    bool decodesElsewhere = false; // set before reading starts

private:
    const CancelToken m_cancel;
    Mailbox& m_mailbox;
    Placer& m_placer;
    BombGuard& m_guard;
    EntryNames& m_names;
    WriterSettings& m_settings;
    ExtractReport& m_report; ///< problems: touched on the caller's thread only
    std::atomic<std::uint64_t> m_entries{0};
    std::atomic<bool> m_readsEncrypted{false};
    std::atomic<bool> m_hasFailed{false};
    std::mutex m_mutex;
    std::optional<Error> m_failure;
    std::uint64_t m_refusedLinks = 0;
    std::optional<EntryProblem> m_firstRefusedLink;
    std::optional<std::uint64_t> m_charsetStop;
    std::vector<std::unique_ptr<Lane>> m_lanes;
};

}
