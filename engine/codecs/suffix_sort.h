#pragma once

#include <cstdint>
#include <memory>
#include <span>

namespace vantoro {

/// Sorts the suffixes of a text by induction (SA-IS: Nong, Zhang and Chan 2009), in linear time. Reusable; keeps its
/// memory.
class SuffixSorter {
public:
    /// For each suffix, in ascending order, the byte in front of it. `text`, of two bytes or more, must be less than
    /// each of its other suffixes; `before` is as long. The byte in front of the whole text is its last one.
    void sortBefore(std::span<const std::uint8_t> text, std::span<std::uint8_t> before);

private:
    std::size_t m_capacity = 0; // bytes of text
    std::unique_ptr<std::int32_t[]> m_order, m_memory;
};

}
