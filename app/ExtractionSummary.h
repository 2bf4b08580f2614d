#pragma once

#include "extraction/KXArchiveManageController.h"

#include <optional>
#include <vector>

namespace vantoro {

/// What a desktop notification says when all jobs are done.
struct ExtractionSummary {
    QString title;
    QString body;
    QString item; ///< the last result, to show in the file manager; empty when nothing came out
    QString report; ///< every refused or damaged entry and every failure, to be copied; empty when all went well
};

/// Nothing when the user stopped everything himself.
std::optional<ExtractionSummary> summarize(const std::vector<ExtractionOutcome>& outcomes);

}
