#pragma once

#include "engine/formats/format.h"

namespace vantoro {

/// Container formats in order of trial.
std::span<const FormatRow* const> containerFormats();
/// Compressed streams in order of trial.
std::span<const StreamFormatRow* const> streamFormats();

/// Opens what lies in `source`: sniffs it by content, the name chooses between equals, a compressed stream around an
/// archive is taken off. Knows no path; this is what a worker process runs.
Result<ArchivePtr> openSource(const SourcePtr& source, const OpenContext& context);

/// Extension in lower case without the dot; empty when there is none.
std::string extensionOf(std::string_view fileName);
/// "a.tar.gz" -> "a", "a.part01.rar" -> "a", "a.7z.001" -> "a": everything that only says that it is an archive goes.
std::string stemOf(std::string_view fileName);

}
