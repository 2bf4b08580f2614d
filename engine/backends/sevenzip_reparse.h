#pragma once

#include "engine/io/bytes.h"

#include <string>

namespace vantoro::sevenzip {

/// The target of a link that Windows keeps as a reparse point (wim, ntfs, udf), with '/' as separator; empty when the
/// point is no link. Source of the format: [MS-FSCC] 2.1.2.
std::string linkOfReparsePoint(ConstBytes data);

}
