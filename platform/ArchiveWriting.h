#pragma once

#include "engine/create.h"

#include <QString>

namespace vantoro {

class WriterMonitor;

/// One archive to be written; what the writer classes hand over.
struct ArchiveWriting {
    QString path; ///< of the archive
    std::vector<CreateInput> inputs;
    CreateOptions options;
    QString password; ///< empty: no encryption
    WriterMonitor* monitor = nullptr; ///< not owned; may be null
};

/// Writes the archive, or nothing: what stood at the path stays until the new one is whole. A failure, and each source
/// that was left out, goes to the log with its path and the reason.
bool writeArchive(ArchiveWriting writing, QString* error = nullptr);

}
