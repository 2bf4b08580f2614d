#pragma once

#include "engine/codecs/worker_pool.h"
#include "engine/write/source_list.h"

#include <sys/stat.h>

namespace vantoro {

/// Walks folders, several at a time: a walk is waiting for the kernel, and small files make it a fifth of a whole
/// creation.
class SourceWalk {
public:
    /// Entries that are excluded, or are the archive itself (`target`), are passed over.
    SourceWalk(const CreateOptions& options, const std::string& target);
    /// Appends the entry and, if wanted, everything below it, folders before what they hold, by name. Cancelled when
    /// asked to stop.
    Result<void> append(const std::string& path, const std::string& name, bool withContents, SourceList& list);

private:
    struct Folder;
    bool isExcluded(const std::string& name) const;
    void addEntry(Folder& folder, std::string path, std::string name, const struct stat& status, bool withContents);
    void addLink(Folder& folder, SourceItem item, std::size_t expected) const;
    void begin(Folder& folder);
    void finish();
    Result<void> lookInto(Folder& folder);
    static std::size_t countOf(const Folder& folder);
    static Result<void> gather(Folder& folder, SourceList& list);

    const CreateOptions& m_options;
    struct stat m_target {};
    bool m_hasTarget = false;
    std::mutex m_mutex;
    std::condition_variable m_finished;
    std::size_t m_unfinished = 0; // folders begun
    WorkerPool m_pool; // goes first: its threads use the others
};

}
