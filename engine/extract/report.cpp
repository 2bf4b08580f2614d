#include "engine/extract/report.h"

#include <algorithm>

namespace vantoro {

namespace {
double ratio(std::uint64_t part, std::uint64_t whole)
{
    return std::min(1.0, static_cast<double>(part) / static_cast<double>(whole));
}
}

double ProgressNote::fraction() const
{
    if (writtenTotal > 0)
        return ratio(written, writtenTotal);
    if (packedTotal > 0 && packed > 0)
        return ratio(packed, packedTotal);
    return entriesTotal > 0 ? ratio(entries, entriesTotal) : 0.0;
}

}
