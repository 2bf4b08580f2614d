#pragma once

#include "engine/formats/sevenzip/blocks.h"

namespace vantoro::seven {

/// Turns a file of the database into an Entry. Holds what the entry's views point to, so it outlives each use.
class EntryView {
public:
    explicit EntryView(const Database& database) : m_database(database) {}
    const Entry& fill(std::uint64_t index);

private:
    const Database& m_database;
    Entry m_entry;
    std::string m_name;
    std::string m_method;
    std::uint32_t m_methodBlock = File::kNoBlock;
};

/// What the readers of all lanes share while read() runs.
struct ReadShared {
    SourcePtr source;
    const Database& database;
    const Limits& limits;
    const CancelToken& cancel;
    std::atomic<std::uint64_t>* packedBytesRead = nullptr;
    unsigned decoderThreads = 1; ///< for one block
};

/// Decodes block after block into one lane. Used by one thread.
class BlockReader {
public:
    BlockReader(const ReadShared& shared, LaneReceiver& lane) : m_shared(shared), m_lane(lane), m_view(shared.database)
    {
    }
    /// `entries`: sorted, of one block, and any without data. Fails only where the whole read has to stop.
    Result<void> read(std::span<const std::uint64_t> entries);

private:
    void open(const Block& block);
    Result<void> readFile(std::uint64_t index);
    Result<void> deliver(const File& file);
    Result<void> passOver(std::uint64_t count);
    Result<std::size_t> decode(Bytes into);

    const ReadShared& m_shared;
    LaneReceiver& m_lane;
    EntryView m_view;
    StreamPtr m_stream;
    Result<void> m_fault; ///< of the block: nothing more comes out of it
    std::uint64_t m_position = 0; ///< in the block
    std::vector<std::byte> m_scrap;
};

}
