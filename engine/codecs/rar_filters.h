#pragma once

#include "engine/io/result.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace vantoro {

/// A transformation that the packer applied to a block of an entry, undone after decoding.
class RarFilter {
public:
    virtual ~RarFilter() = default;
    /// Replaces the block by its original. `offset` is the block's position in the entry.
    virtual Result<void> run(std::vector<std::uint8_t>& block, std::uint64_t offset) = 0;
};

/// Rar 2.9 and rar 5 count the position of call targets differently.
enum class RarCallWrap : std::uint8_t { At32Bits, At24Bits };

/// x86 calls (and with `jumps` jumps): absolute targets back to relative ones.
void rarUndoCalls(std::span<std::uint8_t> block, std::uint64_t offset, bool jumps, RarCallWrap wrap);
/// ARM branch-with-link targets.
void rarUndoArm(std::span<std::uint8_t> block, std::uint64_t offset);
/// Itanium bundles.
void rarUndoItanium(std::span<std::uint8_t> block, std::uint64_t offset);
/// Bytes of each channel in a row, as differences. `channels` is at least 1.
void rarUndoDelta(std::vector<std::uint8_t>& block, std::size_t channels);
/// 24-bit pictures; false when the parameters are outside of what the transformation means.
bool rarUndoRgb(std::vector<std::uint8_t>& block, std::uint32_t stridePlus3, std::uint32_t firstColour);
/// Sound samples of 8 bits. `channels` is at least 1.
void rarUndoAudio(std::vector<std::uint8_t>& block, std::size_t channels);

}
