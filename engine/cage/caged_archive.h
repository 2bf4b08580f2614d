#pragma once

#include "engine/formats/archive.h"

namespace vantoro::cage {

/// Opens `source` in a worker process that holds nothing but the archive's files. Behaves like the archive that the
/// worker opened; a worker that dies, lies, hangs or is stopped becomes damage of the entry at hand, and the next call
/// starts a new one. `program` is the worker's path: see workerProgram().
Result<ArchivePtr> openCaged(const std::string& program, const SourcePtr& source, const OpenContext& context);

/// Which means of confinement are in force, as a sentence for --version: "decoders run confined", "… without Landlock",
/// "decoders run unconfined: no worker program".
std::string describeCage(const std::string& program);

}
