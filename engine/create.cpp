#include "engine/create.h"

#include "engine/io/processors.h"
#include "engine/write/creator.h"

#include <algorithm>

#include <strings.h>

namespace vantoro {

namespace {

const CreatorRow* rowOf(std::string_view kind)
{
    const auto rows = creatorRows();
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return row.kind == kind; });
    return found == rows.end() ? nullptr : &*found;
}

}

Result<CreateReport> createArchive(const std::string& target, const std::vector<CreateInput>& inputs,
                                   const CreateOptions& options, CreateDelegate& delegate)
{
    const auto* row = rowOf(options.kind);
    if (!row)
        return Error{ErrorCode::UnsupportedKindOfArchive, "no such kind"};
    if (!options.password.isEmpty() && !row->takesPassword)
        return Error{ErrorCode::UnsupportedEncryption, "the kind has no encryption"};
    auto settled = options;
    if (settled.threads == 0)
        settled.threads = processorCount();
    const auto sources = TRY(collectSources(inputs, settled, target));
    CreateReport report;
    for (const auto& problem : sources.problems) {
        report.problems.push_back(problem);
        delegate.sourceFailed(problem);
    }
    if (sources.items.empty() && !report.problems.empty())
        return report.problems.front().error;
    auto out = TRY(OutputFile::create(target));
    CreateLog log(delegate, sources, report);
    const auto creator = row->make(row->kind);
    TRY(guarded([&] { return creator->write(sources, settled, *out, log); }));
    TRY(settled.cancel.check());
    TRY(out->flush());
    report.archiveSize = out->position();
    TRY(out->commit());
    return report;
}

std::vector<CreatableKind> creatableKinds()
{
    std::vector<CreatableKind> kinds;
    for (const auto& row : creatorRows())
        kinds.push_back({row.kind, row.displayName, row.takesPassword, row.singleFile});
    return kinds;
}

std::string kindOfName(std::string_view fileName)
{
    std::string_view best;
    for (const auto& row : creatorRows()) {
        const std::string_view kind(row.kind);
        if (kind.size() > best.size() && fileName.size() > kind.size() + 1
            && fileName[fileName.size() - kind.size() - 1] == '.'
            && ::strncasecmp(fileName.data() + fileName.size() - kind.size(), kind.data(), kind.size()) == 0)
            best = kind;
    }
    return std::string(best);
}

}
