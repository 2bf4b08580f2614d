#include "engine/extract/extraction.h"

#include "engine/extract/job.h"
#include "engine/extract/safe_name.h"
#include "engine/extract/survey.h"
#include "engine/io/batch_thread.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <numeric>
#include <system_error>
#include <thread>
#include <utility>

namespace vantoro {

namespace {

/// The archive is at fault, and what is whole stays.
bool isDamage(ErrorCode code)
{
    switch (code) {
    case ErrorCode::Io:
    case ErrorCode::Truncated:
    case ErrorCode::Corrupt:
    case ErrorCode::ChecksumMismatch:
    case ErrorCode::SizeMismatch:
    case ErrorCode::UnsupportedMethod:
    case ErrorCode::UnsupportedEncryption:
    case ErrorCode::UnsupportedFeature:
    case ErrorCode::MissingVolume:
    case ErrorCode::LimitExceeded:
    case ErrorCode::DecoderStopped:
    case ErrorCode::Stalled:
    case ErrorCode::TrailingData:
        return true;
    default:
        return false;
    }
}

std::string enclosingName(const ExtractOptions& options, const std::string& stem)
{
    NameCleaner cleaner;
    for (const auto& wish : {options.enclosingName, stem}) {
        auto flat = wish;
        std::replace(flat.begin(), flat.end(), '/', '_');
        const auto cleaned = cleaner.clean(flat, PathStyle::Unix);
        if (cleaned && !cleaned->empty())
            return shortenedName(cleaned->front());
    }
    return "Archive";
}

class Extraction {
public:
    Extraction(Archive& archive, const ArchiveFacts& facts, const ExtractOptions& options, Ending ending,
               const CancelToken& cancel)
        : m_archive(archive)
        , m_facts(facts)
        , m_options(options)
        , m_ending(ending)
        , m_cancel(cancel)
        , m_names(options.charset)
    {
        if (m_selection = options.selection; m_selection) {
            std::sort(m_selection->begin(), m_selection->end());
            m_selection->erase(std::unique(m_selection->begin(), m_selection->end()), m_selection->end());
        }
        if (m_ending == Ending::InHiddenFolder && m_options.folder == FolderMode::Never)
            m_options.folder = FolderMode::Always; // hidden it is in any case, and the caller moves what is in it
    }

    Result<ExtractReport> run(ExtractDelegate& delegate)
    {
        Result<void> outcome;
        std::thread worker;
        try {
            worker = std::thread([&] {
                becomeBatchThread();
                outcome = guarded([&] { return work(); });
                m_mailbox.close();
            });
        } catch (const std::system_error& error) {
            return Error{ErrorCode::OutOfMemory, "start a thread", error.code().value()};
        }
        m_mailbox.serve(delegate, [this] { return progress(); });
        worker.join();
        if (!outcome)
            return outcome.error();
        return std::move(m_report);
    }

private:
    Result<void> work()
    {
        TRY(m_cancel.check());
        if (m_archive.info().listsCheaply)
            TRY(survey());
        m_workspace.emplace(TRY(Workspace::create(m_options, m_ending)));
        BombGuard guard(m_workspace->anyFolder(), m_facts.packedSize, m_packedRead,
                        [this](const SizeQuestion& question) { return allows(question); });
        if (m_listed)
            TRY(guard.declared(m_declaredBytes, m_chosen));
        Placer placer(TRY(m_workspace->root()));
        return fill(placer, guard);
    }

    Result<void> fill(Placer& placer, BombGuard& guard)
    {
        WriterSettings settings;
        settings.originUrl = m_facts.originUrl;
        settings.keepsBroken = m_options.keepBroken;
        settings.reservesSpace = !m_workspace->isInMemory();
        Job job(m_options, m_cancel, m_mailbox, placer, guard, m_names, settings, m_report);
        job.decodesElsewhere = m_archive.info().decodesElsewhere;
        const Showing showing(*this, job, guard);
        const auto read = readAll(job);
        TRY(judgeReading(job, read));
        TRY(finish(job));
        TRY(m_cancel.check());
        m_report.entries = job.entries();
        m_report.bytes = guard.written();
        return placeResult(job, read);
    }

    /// Lets the progress see the counters while they live.
    class Showing {
    public:
        Showing(Extraction& extraction, const Job& job, const BombGuard& guard) : m_extraction(extraction)
        {
            const std::lock_guard lock(m_extraction.m_progressMutex);
            m_extraction.m_counters = [&job, &guard](ProgressNote& note) {
                note.written = guard.written();
                note.entries = job.entries();
            };
        }
        ~Showing()
        {
            const std::lock_guard lock(m_extraction.m_progressMutex);
            m_extraction.m_counters(m_extraction.m_last);
            m_extraction.m_counters = nullptr;
        }
        Showing(const Showing&) = delete;
        Showing& operator=(const Showing&) = delete;

    private:
        Extraction& m_extraction;
    };

    ProgressNote progress()
    {
        const std::lock_guard lock(m_progressMutex);
        if (m_counters) {
            m_counters(m_last);
            if (!std::exchange(m_isLasting, true))
                settleOrphanList();
        }
        m_last.packed = m_packedRead.load(std::memory_order_relaxed);
        m_last.packedTotal = m_facts.packedSize;
        m_last.writtenTotal = m_knownTotal.load(std::memory_order_relaxed);
        m_last.entriesTotal = m_knownEntries.load(std::memory_order_relaxed);
        return m_last;
    }

    bool allows(const SizeQuestion& question)
    {
        bool answer = false;
        m_mailbox.ask([&](ExtractDelegate& delegate) { answer = delegate.allowsSize(question); });
        return answer;
    }

    /// One pass over the headers: the charset of all names together, and what there is to come.
    Result<void> survey()
    {
        // Inside a compressed stream packed sizes are larger than the file.
        const auto packed = m_archive.info().outerFormat.empty() ? m_facts.packedSize : ~std::uint64_t{0};
        Survey survey(m_selection, m_archive.info().format == "tar", packed, m_cancel);
        const auto listed = m_archive.list(survey);
        // A damaged end does not keep what comes before it from being extracted.
        if (!listed && !isDamage(listed.error().code))
            return listed.error();
        m_listed = listed.has_value();
        m_entryCount = survey.listed();
        m_chosen = survey.chosen();
        m_declaredBytes = survey.bytes();
        if (m_listed) {
            m_knownEntries = m_chosen;
            m_knownTotal = survey.declaresAllSizes() ? m_declaredBytes : 0;
        }
        if (!m_names.isKnown() && !survey.firstOpenName().empty())
            return chooseCharset(survey.firstOpenName(), survey.detect());
        return {};
    }

    Result<void> chooseCharset(const std::string& name, const Detection& detection)
    {
        std::optional<CharsetId> charset = detection.charset;
        if (detection.confidence < m_options.charsetThreshold)
            m_mailbox.ask([&](ExtractDelegate& delegate) { charset = delegate.chooseCharset(name, detection); });
        if (!charset)
            return Error{ErrorCode::EncodingNeeded, "nobody chose a charset"};
        m_names.setCharset(*charset == kCharsetUnknown ? kCharsetUtf8 : *charset);
        return {};
    }

    Result<void> readAll(Job& job)
    {
        ReadRequest request{m_selection, &m_packedRead};
        if (request.selection && m_listed) {
            auto& chosen = *request.selection;
            chosen.erase(std::lower_bound(chosen.begin(), chosen.end(), m_entryCount), chosen.end());
        }
        auto outcome = m_archive.read(request, job);
        TRY(job.settle(outcome));
        // Where listing means decoding, names were taken as they came until one could not be.
        if (const auto stop = job.takeCharsetStop()) {
            TRY(survey());
            if (!m_names.isKnown())
                m_names.setCharset(kCharsetUtf8); // the listing did not get that far
            request.selection = from(*stop);
            m_packedRead = 0;
            outcome = m_archive.read(request, job);
            TRY(job.settle(outcome));
        }
        return outcome;
    }

    std::vector<std::uint64_t> from(std::uint64_t first) const
    {
        if (m_selection)
            return {std::lower_bound(m_selection->begin(), m_selection->end(), first), m_selection->end()};
        std::vector<std::uint64_t> all(std::max(m_entryCount, first + 1) - first);
        std::iota(all.begin(), all.end(), first);
        return all;
    }

    /// Goes on after damage, which is reported as the archive's own.
    Result<void> judgeReading(Job& job, const Result<void>& read)
    {
        if (const auto failure = job.failure())
            return *failure;
        if (!read && !isDamage(read.error().code))
            return read;
        const auto info = m_archive.info();
        if (info.firstDoubtfulEntry) {
            const auto code = info.damage ? info.damage->code : ErrorCode::ChecksumMismatch;
            TRY(job.placer().condemn(*info.firstDoubtfulEntry, m_options.keepBroken,
                                     [&](NodeId node, const Error& error) {
                                         return job.refuse(noteOf(job, node, EntryKind::File), {code, error.what});
                                     }));
        }
        if (!read)
            TRY(reportArchive(job, read.error()));
        if (info.damage && (read || info.damage->code != read.error().code))
            TRY(reportArchive(job, *info.damage));
        return {};
    }

    /// Once is enough when the entry that the damage fell into has been reported with it.
    Result<void> reportArchive(Job& job, const Error& error)
    {
        bool isKnown = false;
        m_mailbox.ask([&](ExtractDelegate&) {
            isKnown = !m_report.problems.empty() && m_report.problems.back().error.code == error.code;
        });
        return isKnown ? Result<void>() : job.refuse({}, error);
    }

    static EntryNote noteOf(Job& job, NodeId node, EntryKind kind)
    {
        return {job.placer().entryOf(node), job.placer().pathOf(node), kind};
    }

    /// What waits until all files stand.
    Result<void> finish(Job& job)
    {
        auto& placer = job.placer();
        TRY(placer.makeHardLinks([&](NodeId node, const Error& error) {
            return job.refuse(noteOf(job, node, EntryKind::HardLink), error);
        }));
        TRY(m_cancel.check());
        placer.links().setExactNameTest([this] { return m_workspace->tellsNamesApart(); });
        placer.links().setForeignLinkTest(
            [this](const std::string& name) { return m_workspace->hasForeignLink(name); });
        TRY(placer.makeLinks([&](NodeId node, const Error& error) {
            auto note = noteOf(job, node, EntryKind::SymbolicLink);
            return error.code == ErrorCode::UnsafeLink ? job.refuseLink(std::move(note), error)
                                                       : job.refuse(std::move(note), error);
        }));
        TRY(job.tellOfLinks());
        TRY(placer.finishFolders(m_workspace->umask()));
        if (const auto shortened = placer.shortenedNames(); shortened > 0)
            m_report.notes.push_back(std::to_string(shortened) + (shortened == 1 ? " name was" : " names were")
                                     + " too long and shortened");
        return {};
    }

    Result<void> placeResult(Job& job, const Result<void>& read)
    {
        auto& placer = job.placer();
        const bool isEmpty = placer.placedItems() == 0;
        // Folders alone are no result of a failure.
        if (isEmpty && m_report.problemCount > 0)
            return read ? m_report.problems.front().error : read.error();
        const auto top = placer.topItems();
        if (top.empty())
            return {};
        if (m_options.folder == FolderMode::Never)
            return moveAll(placer, top);
        TRY(m_workspace->flush(m_cancel));
        TRY(m_cancel.check());
        m_report.wasSolo = m_options.folder == FolderMode::Auto && top.size() == 1;
        m_report.createdItem = TRY(m_report.wasSolo ? moveSolo(placer, top.front()) : moveRoot());
        if (m_ending == Ending::InHiddenFolder)
            m_workspace->keep();
        return {};
    }

    Result<void> moveAll(Placer& placer, std::span<const NodeId> top)
    {
        std::vector<Workspace::RootItem> items;
        items.reserve(top.size());
        for (const auto item : top)
            items.push_back({placer.diskNameOf(item), placer.kindOf(item) == NodeKind::Folder});
        return m_workspace->moveItems(items);
    }

    Result<std::string> moveSolo(Placer& placer, NodeId item)
    {
        std::optional<timespec> date;
        if (m_options.archiveDateToSoloItem)
            date = m_facts.date;
        if (m_options.resetSoloItemDate)
            date = timespec{::time(nullptr), 0};
        return m_workspace->moveItem(placer.diskNameOf(item), placer.kindOf(item) == NodeKind::Folder, date);
    }

    Result<std::string> moveRoot()
    {
        return m_workspace->moveRoot(enclosingName(m_options, m_facts.stem),
                                     m_options.archiveDateToFolder ? m_facts.date : std::nullopt);
    }

    Archive& m_archive;
    const ArchiveFacts& m_facts;
    ExtractOptions m_options;
    const Ending m_ending;
    const CancelToken& m_cancel;
    EntryNames m_names;
    std::optional<std::vector<std::uint64_t>> m_selection; ///< sorted
    Mailbox m_mailbox;
    ExtractReport m_report;
    std::optional<Workspace> m_workspace;

    bool m_listed = false; ///< completely
    std::uint64_t m_entryCount = 0;
    std::uint64_t m_chosen = 0;
    std::uint64_t m_declaredBytes = 0;

    std::mutex m_progressMutex;
    std::function<void(ProgressNote&)> m_counters;
    ProgressNote m_last;
    bool m_isLasting = false; // has come as far as its first progress
    std::atomic<std::uint64_t> m_packedRead{0};
    std::atomic<std::uint64_t> m_knownTotal{0};
    std::atomic<std::uint64_t> m_knownEntries{0};
};

}

Result<ExtractReport> runExtraction(Archive& archive, const ArchiveFacts& facts, const ExtractOptions& options,
                                    Ending ending, ExtractDelegate& delegate, const CancelToken& cancel)
{
    return Extraction(archive, facts, options, ending, cancel).run(delegate);
}

}
