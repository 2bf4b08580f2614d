#pragma once

#include "engine/write/output_file.h"
#include "engine/write/source_list.h"

#include <chrono>

namespace vantoro {

/// What a writer tells while it works; throttles what the delegate hears. On the caller's thread only.
class CreateLog {
public:
    CreateLog(CreateDelegate& delegate, const SourceList& sources, CreateReport& report);
    void begin(const SourceItem& item);
    void addBytes(std::uint64_t bytes);
    void end(); ///< the entry is in
    void problem(const SourceItem& item, const Error& error);

private:
    void tell();
    CreateDelegate& m_delegate;
    CreateReport& m_report;
    CreateProgress m_progress;
    std::chrono::steady_clock::time_point m_lastTold{};
};

/// Writes one kind of archive.
class Creator {
public:
    virtual ~Creator() = default;
    /// Writes `sources` into `out`. What is wrong with one source goes to the log, and the archive stays valid.
    virtual Result<void> write(const SourceList& sources, const CreateOptions& options, OutputFile& out, CreateLog& log)
        = 0;
};

struct CreatorRow {
    const char* kind; ///< extension without the dot: "tar.gz"
    const char* displayName;
    bool takesPassword;
    bool singleFile; ///< holds one plain file and nothing else: "gz"
    std::unique_ptr<Creator> (*make)(const char* kind);
};
std::span<const CreatorRow> creatorRows();

std::unique_ptr<Creator> makeZipCreator(const char* kind);
std::unique_ptr<Creator> makeSevenZipCreator(const char* kind);
std::unique_ptr<Creator> makeLibarchiveCreator(const char* kind);
std::unique_ptr<Creator> makeStreamCreator(const char* kind);

}
