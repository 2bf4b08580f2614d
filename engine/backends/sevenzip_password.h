#pragma once

#include "engine/backends/sevenzip_items.h"

namespace vantoro::sevenzip {

/// Finds a password that decrypts the archive's data, before anything is delivered: decodes a small encrypted entry
/// and asks again while that fails. Where no entry is small enough to be decoded twice, the first part of one must do.
Result<void> provePassword(InArchive& handler, const Items& items, Session& session);

}
