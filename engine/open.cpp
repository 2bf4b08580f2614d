#include "engine/open.h"

#include "engine/cage/caged_archive.h"
#include "engine/cage/worker_process.h"
#include "engine/registry.h"
#include "engine/volumes.h"

#include <algorithm>
#include <filesystem>

namespace vantoro {

namespace {

class FileArchive final : public OpenedArchive {
public:
    FileArchive(std::string path, std::unique_ptr<FolderVolumes> folder, std::vector<std::string> cutNames)
        : m_path(std::move(path))
        , m_folder(std::move(folder))
        , m_cutNames(std::move(cutNames))
    {
    }
    void setArchive(ArchivePtr archive) { m_archive = std::move(archive); }

    Archive& archive() override { return *m_archive; }
    const std::string& path() const override { return m_path; }
    std::vector<std::string> volumePaths() const override
    {
        const auto& names = m_cutNames.empty() ? m_archive->info().volumes : m_cutNames;
        std::vector<std::string> paths;
        for (const auto& name : names) {
            if (auto path = m_folder->find(name); !path.empty())
                paths.push_back(std::move(path));
        }
        if (paths.empty())
            paths.push_back(m_path);
        return paths;
    }
    std::uint64_t packedSize() const override
    {
        std::uint64_t sum = 0;
        for (const auto& path : volumePaths()) {
            std::error_code error;
            const auto size = std::filesystem::file_size(path, error);
            sum += error ? 0 : size;
        }
        return sum;
    }
    std::string stem() const override { return stemOf(std::filesystem::path(m_path).filename().string()); }

private:
    std::string m_path;
    std::unique_ptr<FolderVolumes> m_folder; // outlives the archive, which reads through it
    std::vector<std::string> m_cutNames;
    ArchivePtr m_archive;
};

std::string folderOf(const std::string& path)
{
    const auto folder = std::filesystem::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

Result<SourcePtr> joinPieces(FolderVolumes& folder, const CutSet& set)
{
    std::vector<SourcePtr> parts;
    for (const auto& name : set.names)
        parts.push_back(TRY(folder.openVolume(name)));
    return joinedSource(std::move(parts));
}

bool looksCutShort(const Error& error)
{
    return error.code == ErrorCode::Truncated || error.code == ErrorCode::Corrupt
        || error.code == ErrorCode::NotAnArchive;
}

}

Result<std::unique_ptr<OpenedArchive>> openArchive(const std::string& path, const OpenOptions& options)
{
    auto folder = std::make_unique<FolderVolumes>(folderOf(path));
    auto& volumes = *folder;
    const auto tellMissing = [&](const std::string& name) {
        if (options.missingVolume)
            *options.missingVolume = name;
    };
    // Opened before anything else, so that a file that is not there is told as such.
    auto source = TRY(openFileSource(path));
    OpenContext context{std::filesystem::path(path).filename().string(), &volumes, options.passwords, options.cancel,
                        options.limits};
    const auto set = findCutSet(volumes, context.name);
    if (set && set->hasGap) {
        tellMissing(set->next);
        return Error{ErrorCode::MissingVolume, "a piece of the cut file is missing"};
    }
    if (set) {
        source = TRY(joinPieces(volumes, *set));
        context.name = context.name.substr(0, context.name.rfind('.'));
    }
    auto opened = std::make_unique<FileArchive>(path, std::move(folder), set ? set->names : std::vector<std::string>());
    const auto worker = cage::workerProgram();
    auto archive = worker.empty() ? openSource(source, context) : cage::openCaged(worker, source, context);
    if (!archive && set && looksCutShort(archive.error())) {
        tellMissing(set->next);
        return Error{ErrorCode::MissingVolume, "the cut file goes on in a piece that is not there"};
    }
    if (!archive) {
        if (archive.error().code == ErrorCode::MissingVolume)
            tellMissing(volumes.missing());
        return archive.error();
    }
    opened->setArchive(*std::move(archive));
    return std::unique_ptr<OpenedArchive>(std::move(opened));
}

std::string archiveStem(std::string_view fileName) { return stemOf(fileName); }

void holdDecoders() { cage::holdWorkerProgram(); }

void leaveDecodersBehind() { cage::leaveWorkersBehind(); }

std::string describeDecoders() { return cage::describeCage(cage::workerProgram()); }

std::vector<FormatDescription> supportedFormats()
{
    std::vector<FormatDescription> result;
    const auto add = [&](const auto& row) {
        const auto known = std::find_if(result.begin(), result.end(), [&](auto& r) { return r.id == row.id; });
        auto& description
            = known != result.end() ? *known : result.emplace_back(FormatDescription{row.id, row.displayName, {}});
        for (const auto extension : row.extensions) {
            auto& list = description.extensions;
            if (std::find(list.begin(), list.end(), extension) == list.end())
                list.emplace_back(extension);
        }
    };
    for (const auto* row : containerFormats())
        add(*row);
    for (const auto* row : streamFormats())
        add(*row);
    return result;
}

}
