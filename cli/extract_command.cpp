#include "cli/commands.h"
#include "cli/output.h"
#include "cli/progress_bar.h"

#include "engine/extract.h"

#include <algorithm>
#include <filesystem>

namespace vantoro::cli {

namespace {

/// Tells a terminal how far it is and what went wrong, and asks on it.
class TerminalDelegate final : public ExtractDelegate {
public:
    TerminalDelegate(std::string archive, bool quiet) : m_archive(std::move(archive)), m_bar(!quiet) {}

    void progressed(const ProgressNote& note) override { m_bar.show(note); }
    bool entryFailed(const EntryProblem& problem) override
    {
        m_bar.clear();
        complain(m_archive, problem.entry.name, sentence(problem.error));
        return true;
    }
    bool allowsSize(const SizeQuestion& question) override
    {
        m_bar.clear();
        const auto answer = askYesNo(questionText(question));
        if (!answer)
            complain(m_archive, {}, questionText(question) + " (nobody to ask)");
        return answer.value_or(false);
    }
    void finish() { m_bar.clear(); }

private:
    std::string questionText(const SizeQuestion& question) const
    {
        switch (question.kind) {
        case SizeQuestion::Kind::Ratio:
            return "This archive of " + sizeText(question.packed) + " would unpack to more than "
                + sizeText(question.expected) + ". Continue?";
        case SizeQuestion::Kind::Space:
            return "This archive needs " + sizeText(question.expected) + ", and " + sizeText(question.available)
                + " are free. Continue?";
        case SizeQuestion::Kind::Crowd:
            return "This archive would create " + std::to_string(question.expected) + " files and folders. Continue?";
        }
        return {};
    }
    std::string m_archive;
    ProgressBar m_bar;
};

/// Collects the indices of the entries that --only names.
class NameFilter final : public EntryVisitor {
public:
    NameFilter(const Arguments& arguments) : m_charset(arguments.charset), m_found(arguments.only.size(), false)
    {
        for (const auto& name : arguments.only)
            m_wanted.push_back(shownName(name, kCharsetUtf8, PathStyle::Unix));
    }
    Result<void> visit(const Entry& entry) override
    {
        if (entry.nameCharset == kCharsetUnknown)
            m_detector.add(entry.name);
        m_names.push_back({entry.index, std::string(entry.name), entry.nameCharset, entry.pathStyle});
        return {};
    }
    std::vector<std::uint64_t> indices()
    {
        std::vector<std::uint64_t> chosen;
        const auto detected = m_detector.detect().charset;
        for (const auto& kept : m_names) {
            Entry entry;
            entry.name = kept.name;
            entry.nameCharset = kept.charset;
            if (matches(shownName(kept.name, charsetOf(entry, m_charset, detected), kept.style)))
                chosen.push_back(kept.index);
        }
        return chosen;
    }
    std::vector<std::string> unknown() const
    {
        std::vector<std::string> names;
        for (std::size_t i = 0; i < m_wanted.size(); ++i) {
            if (!m_found[i])
                names.push_back(m_wanted[i]);
        }
        return names;
    }

private:
    struct Kept {
        std::uint64_t index;
        std::string name;
        CharsetId charset;
        PathStyle style;
    };
    bool matches(std::string_view name)
    {
        bool any = false;
        for (std::size_t i = 0; i < m_wanted.size(); ++i) {
            const auto& wanted = m_wanted[i];
            if (name == wanted || (name.starts_with(wanted) && name[wanted.size()] == '/')) {
                m_found[i] = true;
                any = true;
            }
        }
        return any;
    }
    CharsetId m_charset;
    std::vector<std::string> m_wanted;
    std::vector<bool> m_found;
    std::vector<Kept> m_names;
    CharsetDetector m_detector;
};

FolderMode folderMode(const std::string& word)
{
    if (word == "always")
        return FolderMode::Always;
    return word == "never" ? FolderMode::Never : FolderMode::Auto;
}

class ExtractRun {
public:
    ExtractRun(const Arguments& arguments, const std::string& path, const CancelToken& cancel)
        : m_arguments(arguments)
        , m_path(path)
        , m_cancel(cancel)
    {
    }

    int run(PasswordSource& passwords)
    {
        passwords.begin(m_path);
        std::string missing;
        auto opened = openArchive(m_path, {&passwords, m_cancel, limitsOf(m_arguments), &missing});
        if (!opened)
            return fail(opened.error(), missing);
        ExtractOptions options;
        options.destination = destination();
        options.folder = folderMode(m_arguments.folder);
        options.charset = m_arguments.charset;
        options.keepBroken = m_arguments.keepBroken;
        if (!m_arguments.only.empty()) {
            NameFilter filter(m_arguments);
            const auto listed = (*opened)->archive().list(filter);
            options.selection = filter.indices();
            if (!listed && options.selection->empty())
                return fail(listed.error(), missing);
            for (const auto& name : filter.unknown())
                complain(m_path, name, "there is no such entry");
            if (!filter.unknown().empty())
                return kFailed;
        }
        return extract(**opened, options);
    }

private:
    int extract(OpenedArchive& opened, const ExtractOptions& options)
    {
        TerminalDelegate delegate(m_path, m_arguments.quiet);
        const auto report = extractArchive(opened, options, delegate, m_cancel);
        delegate.finish();
        if (!report)
            return fail(report.error(), opened.archive().info().missingVolume);
        for (const auto& note : report->notes)
            complain(m_path, {}, note);
        if (!m_arguments.quiet)
            tellResult(*report, options.destination);
        return report->problemCount > 0 ? kDamaged : kWhole;
    }

    void tellResult(const ExtractReport& report, const std::string& destination) const
    {
        Output out;
        const auto& item = report.createdItem.empty() ? destination : report.createdItem;
        out.put(printable(m_path) + ": " + std::to_string(report.entries)
                + (report.entries == 1 ? " entry, " : " entries, ") + sizeText(report.bytes) + " -> " + printable(item)
                + "\n");
    }

    std::string destination() const
    {
        if (!m_arguments.destination.empty())
            return m_arguments.destination;
        const auto folder = std::filesystem::path(m_path).parent_path().string();
        return folder.empty() ? "." : folder;
    }

    int fail(const Error& error, const std::string& missing) const
    {
        const bool isDestination = error.code == ErrorCode::NotWritable || error.code == ErrorCode::NoSpace
            || error.code == ErrorCode::DestinationGone || error.code == ErrorCode::WriteFailed;
        complain(m_path, isDestination ? destination() : std::string(), sentence(error, missing));
        return statusOf(error);
    }

    const Arguments& m_arguments;
    const std::string& m_path;
    const CancelToken& m_cancel;
};

}

int runExtract(const Arguments& arguments, const CancelToken& cancel)
{
    static OrphanFile orphans(defaultOrphanFilePath());
    orphans.sweep();
    setOrphanList(&orphans);
    PasswordSource passwords(arguments);
    int status = kWhole;
    for (const auto& path : arguments.archives) {
        if (cancel.isCancelled())
            break;
        status = std::max(status, ExtractRun(arguments, path, cancel).run(passwords));
    }
    return status;
}

}
