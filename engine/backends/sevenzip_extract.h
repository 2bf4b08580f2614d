#pragma once

#include "engine/backends/sevenzip_items.h"

namespace vantoro::sevenzip {

/// Decodes the chosen entries in one pass, on one lane. See Archive::read().
Result<void> extractItems(InArchive& handler, const Format& format, const Items& items, Session& session,
                          const ReadRequest& request, LaneReceiver& lane);

}
