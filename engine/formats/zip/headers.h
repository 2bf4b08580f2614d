#pragma once

#include "engine/formats/archive.h"

namespace vantoro::zip {

// Source of the format: the published .ZIP application note (APPNOTE), and Info-ZIP's notes on extra fields.

inline constexpr std::uint32_t kLocalSignature = 0x04034B50;
inline constexpr std::uint32_t kDirectorySignature = 0x02014B50;
inline constexpr std::uint32_t kEndSignature = 0x06054B50;
inline constexpr std::uint32_t kZip64EndSignature = 0x06064B50;
inline constexpr std::uint32_t kZip64LocatorSignature = 0x07064B50;
inline constexpr std::uint32_t kDescriptorSignature = 0x08074B50; ///< also starts the first part of a split set
inline constexpr std::uint32_t kSingleSegmentSignature = 0x30304B50; ///< splitting was begun, one part was enough
inline constexpr std::uint32_t kExtraDataSignature = 0x08064B50; ///< in front of an encrypted directory

inline constexpr std::size_t kLocalSize = 30, kDirectorySize = 46, kEndSize = 22;
inline constexpr std::uint32_t kSaturated32 = 0xFFFFFFFF;
inline constexpr std::uint16_t kSaturated16 = 0xFFFF;

enum Flags : std::uint16_t {
    kEncrypted = 1 << 0,
    kHasDescriptor = 1 << 3, ///< sizes and checksum follow the data
    kPatched = 1 << 5,
    kStrongEncryption = 1 << 6,
    kUtf8 = 1 << 11,
    kMasked = 1 << 13, ///< the directory is encrypted, local values are masked
};

enum class Method : std::uint16_t {
    Stored = 0,
    Shrink = 1,
    Reduce1 = 2,
    Reduce2 = 3,
    Reduce3 = 4,
    Reduce4 = 5,
    Implode = 6,
    Deflate = 8,
    Deflate64 = 9,
    Bzip2 = 12,
    Lzma = 14,
    OldZstd = 20,
    Zstd = 93,
    Xz = 95,
    WavPack = 97,
    Ppmd = 98,
    Aes = 99, ///< the real method is in the extra field
};

enum class Host : std::uint8_t { Fat = 0, Unix = 3, Hpfs = 6, Ntfs = 10, Mvs = 11, Vfat = 14, MacOs = 19 };

/// A field of an extra block. A field that reaches past the end is not seen, nor what follows it.
template <class Visit> void forEachExtra(ConstBytes extra, Visit visit)
{
    ByteReader in(extra);
    while (in.remaining() >= 4) {
        const auto id = in.le16();
        const auto size = in.le16();
        if (size > in.remaining())
            return;
        visit(id, in.take(size));
    }
}

struct AesField {
    std::uint16_t version = 0; ///< 1: the checksum is valid; 2: it is not stored
    std::uint8_t strength = 0; ///< 1, 2, 3: 128, 192, 256 bits
    Method method = Method::Stored;
};

/// What the directory says of an entry. Views into the directory's memory.
struct DirectoryHeader {
    std::uint8_t host = 0;
    std::uint16_t versionNeeded = 0;
    std::uint16_t flags = 0;
    Method method = Method::Stored;
    std::uint32_t dosTime = 0; ///< time in the low half, date in the high one
    std::uint32_t crc = 0;
    std::uint64_t packed = 0, size = 0;
    std::uint32_t disk = 0;
    std::uint32_t external = 0;
    std::uint64_t localOffset = 0; ///< from the start of its disk
    std::string_view name, comment;
    ConstBytes extra;
    std::size_t length = 0; ///< of the header with its variable parts

    /// Truncated when the header or a variable part reaches past the end of `block`, Corrupt when it is none.
    static Result<DirectoryHeader> parse(ConstBytes block);
    /// Of a header that parse() would take; the same errors.
    static Result<std::size_t> lengthOf(ConstBytes block);

    bool has(Flags flag) const { return (flags & flag) != 0; }
    bool hasDosNames() const;
    bool isFolder() const;
    bool isSymbolicLink() const;
    /// Unix mode, where the host stores one.
    std::optional<std::uint32_t> mode() const;
    std::optional<AesField> aes() const;
    /// The method of the data inside an AES wrapper, too.
    Method realMethod() const;
    /// AE-2 stores no checksum.
    bool hasChecksum() const;
};

struct LocalHeader {
    std::uint16_t versionNeeded = 0;
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
    std::uint32_t dosTime = 0;
    std::uint32_t crc = 0;
    std::uint64_t packed = 0, size = 0; ///< of the zip64 field where there is one
    bool isZip64 = false;
    std::size_t nameLength = 0, extraLength = 0;

    /// Of the fixed part alone; the variable part need not be in `block`.
    static Result<LocalHeader> parse(ConstBytes block);
    /// Takes the sizes from the zip64 field.
    void applyExtra(ConstBytes extra);
    std::size_t length() const { return kLocalSize + nameLength + extraLength; }
};

/// The end of the directory, with the values of its zip64 variant where those apply.
struct EndRecord {
    std::uint64_t position = 0; ///< where the directory ends at the latest: this record or the zip64 one
    std::uint32_t disk = 0, directoryDisk = 0;
    std::uint64_t entries = 0;
    std::uint64_t directorySize = 0, directoryOffset = 0;
    bool isZip64 = false;
    bool countsWrap = false; ///< `entries` is modulo 65536
    std::string comment;
};

/// "Deflate", "AES-256 LZMA" …; "Method 97" for what has no name here.
std::string methodName(const DirectoryHeader& header);
bool isKnownMethod(std::uint16_t method);

}
