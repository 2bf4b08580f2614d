#pragma once

#include "engine/formats/zip/volumes.h"

namespace vantoro::zip {

/// The central directory as it lies in the file, in one block of memory, with the place of each header: eight bytes an
/// entry more than the file has. A header is taken apart when it is asked for.
class Directory {
public:
    /// Reads the directory that the end record names. Corrupt or Truncated when there is none; what follows a damaged
    /// header is left out and isDamaged() tells.
    static Result<Directory> load(const VolumeSet& volumes, const Limits& limits);

    std::size_t size() const { return m_headers.size(); }
    DirectoryHeader operator[](std::size_t index) const;
    /// Where the local header is; beyond the end of the source when that cannot be.
    std::uint64_t localPosition(const DirectoryHeader& header) const;
    /// False for entries found without a directory whose end could not be told.
    bool isSizeKnown(std::size_t index) const;
    /// False also for a claim that cannot be true: more data than the file has, or than the method can make of them.
    bool isSizeCredible(std::size_t index, const DirectoryHeader& header, std::uint64_t sourceSize) const;
    bool isDamaged() const { return m_isDamaged; }
    /// The entries' data follow one another in the directory's order and end in front of it.
    bool isOrderly() const { return m_isOrderly && m_dataEnd + m_base <= m_position; }
    /// Not those within an AES wrapper: nobody reads them before a password was asked for.
    bool hasWavPack() const { return m_hasWavPack; }
    /// Where in the source it begins.
    std::uint64_t position() const { return m_position; }

    // For a directory that is put together from what a search found; offsets count from the start of the source.
    void addFound(ConstBytes header) { addHeader(header); }
    void addFound(const LocalHeader& local, std::uint64_t position, ConstBytes name, ConstBytes extra,
                  bool isSizeKnown);
    void setFound(std::uint64_t position);

private:
    Result<void> read(const ByteSource& source, std::uint64_t length, const EndRecord& end, const Limits& limits);
    void addHeader(ConstBytes header);
    void follow(const DirectoryHeader& header);
    void findBase(const VolumeSet& volumes, const EndRecord& end);

    std::vector<std::byte> m_bytes;
    std::vector<std::uint64_t> m_headers; // offsets into m_bytes
    std::vector<std::uint64_t> m_starts; // of the parts
    std::vector<std::size_t> m_unknownSizes; // ascending
    std::uint64_t m_base = 0; // to be added to all offsets: something was put in front of the archive
    std::uint64_t m_position = 0;
    std::uint64_t m_dataEnd = 0; // of the entries so far, as far as they are orderly
    bool m_isOrderly = false;
    bool m_isDamaged = false;
    bool m_hasWavPack = false;
};

/// OverlappingEntries when two entries share packed data or one reaches into the directory.
Result<void> checkOverlaps(const Directory& directory, const ByteSource& source);

}
