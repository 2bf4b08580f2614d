#include "engine/write/creator.h"

#include <array>

namespace vantoro {

namespace {

constexpr auto kRows = std::to_array<CreatorRow>({
    {"zip", "Zip archive", true, false, makeZipCreator},
    {"7z", "7-Zip archive", true, false, makeSevenZipCreator},
    {"tar.gz", "Gzip-compressed tar", false, false, makeLibarchiveCreator},
    {"tar.xz", "XZ-compressed tar", false, false, makeLibarchiveCreator},
    {"tar.zst", "Zstandard-compressed tar", false, false, makeLibarchiveCreator},
    {"tar.bz2", "Bzip2-compressed tar", false, false, makeLibarchiveCreator},
    {"tar", "Tar archive", false, false, makeLibarchiveCreator},
    {"tar.lz4", "LZ4-compressed tar", false, false, makeLibarchiveCreator},
    {"tgz", "Gzip-compressed tar", false, false, makeLibarchiveCreator},
    {"txz", "XZ-compressed tar", false, false, makeLibarchiveCreator},
    {"tbz2", "Bzip2-compressed tar", false, false, makeLibarchiveCreator},
    {"tzst", "Zstandard-compressed tar", false, false, makeLibarchiveCreator},
    {"cpio", "Cpio archive", false, false, makeLibarchiveCreator},
    {"iso", "CD image (ISO 9660)", false, false, makeLibarchiveCreator},
    {"xar", "Xar archive", false, false, makeLibarchiveCreator},
    {"ar", "Ar archive", false, false, makeLibarchiveCreator},
    {"jar", "Java archive", true, false, makeZipCreator},
    {"cbz", "Comic book archive", true, false, makeZipCreator},
    {"gz", "Gzip-compressed file", false, true, makeStreamCreator},
    {"xz", "XZ-compressed file", false, true, makeStreamCreator},
    {"zst", "Zstandard-compressed file", false, true, makeStreamCreator},
    {"bz2", "Bzip2-compressed file", false, true, makeStreamCreator},
    {"lz4", "LZ4-compressed file", false, true, makeStreamCreator},
});

constexpr std::chrono::milliseconds kTellEvery{50};

}

std::span<const CreatorRow> creatorRows() { return kRows; }

CreateLog::CreateLog(CreateDelegate& delegate, const SourceList& sources, CreateReport& report)
    : m_delegate(delegate)
    , m_report(report)
{
    m_progress.bytesTotal = sources.totalSize;
    m_progress.entriesTotal = sources.items.size();
}

void CreateLog::begin(const SourceItem& item) { m_progress.currentName = item.name; }

void CreateLog::addBytes(std::uint64_t bytes)
{
    m_progress.bytes += bytes;
    m_report.bytes += bytes;
    tell();
}

void CreateLog::end()
{
    ++m_progress.entries;
    ++m_report.entries;
    tell();
}

void CreateLog::problem(const SourceItem& item, const Error& error)
{
    m_report.problems.push_back({item.path, error});
    m_delegate.sourceFailed(m_report.problems.back());
}

void CreateLog::tell()
{
    const auto now = std::chrono::steady_clock::now();
    if (now - m_lastTold < kTellEvery)
        return;
    m_lastTold = now;
    m_delegate.progressed(m_progress);
}

}
