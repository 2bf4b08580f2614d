#pragma once

#include "engine/codecs/suffix_sort.h"
#include "engine/io/bytes.h"

#include <vector>

namespace vantoro {

/// Sorts the rotations of a block. Reusable; keeps its memory.
class Bzip2Sorter {
public:
    /// Replaces a block (one byte or more) by the last column of its sorted rotations and returns the row in which the
    /// block itself stands.
    std::uint32_t sort(Bytes block);

private:
    std::vector<std::int32_t> m_agrees;
    std::vector<std::uint8_t> m_root;
    SuffixSorter m_suffixes;
};

}
