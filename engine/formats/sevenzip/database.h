#pragma once

#include "engine/formats/archive.h"

namespace vantoro::seven {

// Source of the format: 7zFormat.txt of the published 7-Zip sources.

/// One step of a block's packing.
struct Coder {
    std::uint64_t method = 0;
    ConstBytes properties; ///< in the database's header
};

/// Packed data that are decoded as a whole; the contents of its files follow one another in it.
struct Block {
    std::vector<Coder> coders; ///< in the order of packing
    std::uint64_t packedPosition = 0, packedSize = 0;
    std::uint64_t size = 0; ///< decoded
    std::uint64_t innerSize = 0; ///< what the last coder, which is undone first, decodes to
    std::optional<std::uint32_t> crc;
    std::uint64_t streams = 1; ///< files in it
};

struct File {
    static constexpr std::uint32_t kNoBlock = 0xFFFFFFFF;

    std::uint64_t offset = 0; ///< in the block
    std::uint64_t size = 0;
    ConstBytes name; ///< UTF-16, little-endian
    std::uint64_t created = 0, accessed = 0, modified = 0; ///< FILETIME; 0 when not stored
    std::uint32_t block = kNoBlock;
    std::uint32_t attributes = 0;
    std::uint32_t crc = 0;
    bool hasCrc = false;
    bool isFolder = false;
    bool isFirst = false; ///< of its block
};

/// What the headers at an archive's end say.
class Database {
public:
    /// UnsupportedFeature for whatever is left to the other reader: ciphers, several packed streams a block, rare
    /// properties. Corrupt or Truncated for damage.
    static Result<Database> load(const SourcePtr& source, const Limits& limits, const CancelToken& cancel);

    const std::vector<Block>& blocks() const { return m_blocks; }
    const std::vector<File>& files() const { return m_files; }
    bool isSolid() const;

private:
    friend class Parser;
    std::vector<std::vector<std::byte>> m_headers; ///< blocks and files refer to them
    std::vector<Block> m_blocks;
    std::vector<File> m_files;
};

}
