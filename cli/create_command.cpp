#include "cli/commands.h"
#include "cli/output.h"
#include "cli/progress_bar.h"

#include "engine/create.h"

#include <algorithm>
#include <filesystem>

namespace vantoro::cli {

namespace {

class TerminalLog final : public CreateDelegate {
public:
    TerminalLog(const std::string& archive, bool quiet) : m_archive(archive), m_bar(!quiet) {}

    void progressed(const CreateProgress& progress) override
    {
        ProgressNote note;
        note.written = progress.bytes;
        note.writtenTotal = progress.bytesTotal;
        note.entries = progress.entries;
        note.entriesTotal = progress.entriesTotal;
        note.currentName = progress.currentName;
        m_bar.show(note);
    }
    void sourceFailed(const CreateProblem& problem) override
    {
        m_bar.clear();
        complain(m_archive, problem.path, reason(problem.error));
    }
    void finish() { m_bar.clear(); }

private:
    static std::string reason(const Error& error)
    {
        if (error.code == ErrorCode::UnsupportedKind)
            return "left out: neither a file, nor a folder, nor a link";
        return "left out: " + sentence(error);
    }
    const std::string& m_archive;
    ProgressBar m_bar;
};

std::string kindFor(const Arguments& arguments)
{
    return arguments.kind.empty() ? kindOfName(std::filesystem::path(arguments.destination).filename().string())
                                  : arguments.kind;
}

/// A plain option mistake, in words; empty when there is none.
std::string mistakeIn(const Arguments& arguments, const std::string& kind)
{
    const auto kinds = creatableKinds();
    const auto known = std::find_if(kinds.begin(), kinds.end(), [&](const auto& k) { return k.kind == kind; });
    const bool hasPassword = arguments.passwordFile || arguments.passwordFd;
    if (kind.empty())
        return "the name does not say which kind of archive (--kind)";
    if (known == kinds.end())
        return "archives of kind \"" + kind + "\" cannot be created";
    if (hasPassword && !known->takesPassword)
        return "archives of kind \"" + kind + "\" have no encryption";
    if (arguments.encryptNames && (kind != "7z" || !hasPassword))
        return "--encrypt-names goes with 7z and a password";
    if (known->singleFile
        && (arguments.archives.size() != 1 || !std::filesystem::is_regular_file(arguments.archives[0])))
        return "\"" + kind + "\" holds one plain file; tar." + kind + " holds several";
    return {};
}

}

int runCreate(const Arguments& arguments, const CancelToken& cancel)
{
    const auto& target = arguments.destination;
    CreateOptions options;
    options.kind = kindFor(arguments);
    if (const auto mistake = mistakeIn(arguments, options.kind); !mistake.empty()) {
        complain(target, {}, mistake);
        return kWrongUsage;
    }
    if (arguments.passwordFile || arguments.passwordFd) {
        PasswordSource passwords(arguments);
        auto secret = passwords.password(0);
        if (!secret || secret->isEmpty()) {
            complain(target, {}, "the password is empty or cannot be read");
            return kUnanswered;
        }
        options.password = *std::move(secret);
    }
    options.level = arguments.level;
    options.threads = arguments.threads;
    options.exclude = arguments.exclude;
    options.encryptNames = arguments.encryptNames;
    options.classicEncryption = arguments.classicEncryption;
    options.reproducible = arguments.reproducible;
    options.cancel = cancel;
    std::vector<CreateInput> inputs;
    for (const auto& path : arguments.archives)
        inputs.push_back({path, {}});
    TerminalLog log(target, arguments.quiet);
    const auto report = createArchive(target, inputs, options, log);
    log.finish();
    if (!report) {
        complain(target, {}, sentence(report.error()));
        return statusOf(report.error());
    }
    if (!arguments.quiet)
        Output().put(printable(target) + ": " + std::to_string(report->entries)
                     + (report->entries == 1 ? " entry, " : " entries, ") + sizeText(report->bytes) + " -> "
                     + sizeText(report->archiveSize) + "\n");
    return report->problems.empty() ? kWhole : kDamaged;
}

}
