#pragma once

#include "engine/extract/job.h"
#include "engine/extract/pipe.h"
#include "engine/extract/safe_name.h"

namespace vantoro {

/// Receives the entries of one lane: judges each, finds its place, and hands files on to be written, by a thread of its
/// own where the reader would otherwise wait for the disk, else at once.
class Lane final : public LaneReceiver {
public:
    explicit Lane(Job& job) : m_job(job), m_writer(job.placer(), job.guard(), job.settings()), m_sink(m_writer, job) {}

    Result<Want> begin(const Entry& entry) override;
    Bytes room(std::size_t least) override;
    Result<void> data(ConstBytes block) override;
    Result<void> hole(std::uint64_t length) override;
    Result<void> end(Result<void> outcome) override;

    Result<void> settle(const Result<void>& readOutcome);

private:
    enum class Receiving : std::uint8_t { Nothing, File, Target };

    Result<Want> place(const Entry& entry, Components name);
    Result<Want> placeFile(const Entry& entry, Components name);
    Result<Want> placeFork(const Entry& entry, Components name);
    Result<Want> placeFolder(const Entry& entry, Components name);
    Result<Want> placeLink(const Entry& entry, Components name);
    Result<Want> placeHardLink(const Entry& entry, Components name);
    Result<Want> startFile(const Entry& entry, FilePlan&& plan);
    Result<Want> refused(EntryNote note, const Error& error);
    Result<void> endTarget(const Result<void>& outcome);
    Result<void> setTarget(std::string_view target, CharsetId charset, PathStyle style);
    FileTraits traitsOf(const Entry& entry);
    Pipe* pipeFor(const Entry& entry);
    Pipe* helperFor(const Entry& entry);
    Result<void> countReceived(std::uint64_t bytes);

    /// A second thread that writes, with all that it needs.
    struct Helper {
        explicit Helper(Job& job) : writer(job.placer(), job.guard(), job.settings()), sink(writer, job) {}
        FileWriter writer;
        EntrySink sink;
        std::unique_ptr<Pipe> pipe; ///< destroyed first
    };

    Job& m_job;
    FileWriter m_writer;
    EntrySink m_sink;
    std::unique_ptr<Pipe> m_ownPipe; ///< its thread uses the sink: destroyed first
    std::unique_ptr<Helper> m_helper;
    unsigned m_smallFiles = 0;
    Pipe* m_pipe = nullptr; ///< of the current entry; null: written on this thread
    bool m_isUsed = false;
    std::unique_ptr<std::byte[]> m_room;
    NameCleaner m_cleaner, m_targetCleaner;
    FileClock m_clock;
    std::string m_decoded, m_decodedTarget;

    Receiving m_receiving = Receiving::Nothing;
    std::optional<std::uint64_t> m_declared;
    std::uint64_t m_received = 0;
    Result<void> m_overrun;
    // Of a link whose target comes as data.
    NodeId m_link = kNoNode;
    EntryNote m_linkNote;
    std::string m_target;
    CharsetId m_targetCharset = kCharsetUnknown;
    PathStyle m_targetStyle = PathStyle::Unix;
};

}
