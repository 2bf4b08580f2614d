#pragma once

#include <string>
#include <string_view>

namespace vantoro::test {

/// A plain packer for tests and benchmarks: greedy matches, one set of codes a block. Both give the packed stream of
/// one entry; distances stay below 4 MiB.
std::string packRar50(std::string_view data);
std::string packRar29(std::string_view data);

}
