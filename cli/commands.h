#pragma once

#include "cli/session.h"

namespace vantoro::cli {

/// Each runs one command and returns an exit status.
int runList(const Arguments& arguments, const CancelToken& cancel);
int runExtract(const Arguments& arguments, const CancelToken& cancel);
int runTest(const Arguments& arguments, const CancelToken& cancel);
int runCreate(const Arguments& arguments, const CancelToken& cancel);
int runFormats(const Arguments& arguments);

/// Without "./" in front and '/' at the end.
std::string_view withoutEnds(std::string_view name);
/// An entry's name as people read it: decoded, with '/' between components, withoutEnds().
std::string shownName(std::string_view name, CharsetId charset, PathStyle style);

/// Judges undeclared names of a listing, or takes the charset that the user chose.
CharsetId charsetOf(const Entry& entry, CharsetId chosen, CharsetId detected);

}
