#pragma once

#include "engine/codecs/block_inflate.h"
#include "engine/formats/zip/decipher.h"
#include "engine/formats/zip/directory.h"
#include "engine/formats/zip/entry_view.h"

namespace vantoro::zip {

/// What the readers of all lanes share while read() runs.
struct ReadShared {
    SourcePtr source;
    const Directory& directory;
    const Limits& limits;
    const CancelToken& cancel;
    std::string_view password; ///< in the encoding that proved right
    bool isPasswordProven = false; ///< an entry was decoded with it: a bad checksum means damage
    std::atomic<std::uint64_t>* packedBytesRead = nullptr;
    unsigned decoderThreads = 1; ///< for one entry
};

/// Entries up to this size, packed and unpacked, are decoded from memory to memory.
inline constexpr std::uint64_t kWholeEntry = 8 << 20;

/// Decodes entry after entry into one lane; keeps decoder and buffers between them. Used by one thread.
class EntryReader {
public:
    EntryReader(const ReadShared& shared, LaneReceiver& lane) : m_shared(shared), m_lane(lane) {}
    /// Fails only where the whole read has to stop. `readTo`: how far in the source it pays to read ahead.
    Result<void> read(std::size_t index, std::uint64_t readTo);

private:
    Result<void> decode(const DirectoryHeader& header, std::size_t index);
    Result<std::uint64_t> findData(const DirectoryHeader& header, bool isSizeKnown);
    Result<void> decodeStored(const DirectoryHeader& header, std::uint64_t position);
    Result<void> decodeWhole(const DirectoryHeader& header, std::uint64_t position);
    Result<void> decodeStream(const DirectoryHeader& header, std::uint64_t position, bool isSizeKnown);
    Result<void> decodeImploded(const DirectoryHeader& header, std::uint64_t position);
    Result<std::uint32_t> pump(ByteStream& stream, std::uint64_t size);
    Result<ConstBytes> decipherWhole(const DirectoryHeader& header, ConstBytes packed);
    Result<void> emit(ConstBytes block);
    Result<void> checkSum(const DirectoryHeader& header, std::uint32_t crc) const;
    Result<ConstBytes> fetch(std::uint64_t position, std::uint64_t length);

    const ReadShared& m_shared;
    LaneReceiver& m_lane;
    EntryView m_view;
    BlockInflater m_inflater;
    Decipherer m_decipherer;
    std::vector<std::byte> m_input; // a stretch of the source
    std::uint64_t m_inputStart = 0, m_readTo = 0;
    std::vector<std::byte> m_clear, m_output;
    std::optional<Error> m_receiverError;
    std::uint64_t m_emitted = 0;
};

}
