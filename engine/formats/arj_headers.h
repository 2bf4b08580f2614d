#pragma once

#include "engine/formats/archive.h"

namespace vantoro::arj {

inline constexpr std::uint8_t kGarbled = 1;
inline constexpr std::uint8_t kMoreVolumes = 4; ///< of the archive: it is not the last; of an entry: it goes on there
inline constexpr std::uint8_t kContinued = 8; ///< it began in the volume before
inline constexpr std::uint8_t kUnixPath = 0x10; ///< '/' separates

enum class Host : std::uint8_t { Dos = 0, Unix = 2, Os2 = 5, Next = 8, Win95 = 10, Win32 = 11 };
enum class Kind : std::uint8_t { Binary = 0, Text = 1, Main = 2, Folder = 3, Label = 4, Chapter = 5, UnixSpecial = 6 };

/// A basic header: that of the archive and those of its entries are nearly alike.
struct Header {
    Host host = Host::Dos;
    std::uint8_t flags = 0;
    std::uint8_t method = 0;
    Kind kind = Kind::Binary;
    std::uint8_t modifier = 0; ///< of the password
    std::uint32_t time = 0; ///< DOS or Unix, by host
    std::uint32_t packedSize = 0;
    std::uint32_t size = 0;
    std::uint32_t crc = 0;
    std::uint16_t mode = 0;
    std::uint32_t partPosition = 0; ///< of a continued entry: where this part belongs
    std::uint8_t encryptionVersion = 0; ///< of the archive: above 1 not known here
    std::string name, comment;

    std::uint64_t position = 0; ///< of the header in its volume
    std::uint64_t dataPosition = 0; ///< behind it and its extensions

    bool isUnix() const { return host == Host::Unix || host == Host::Next; }
    Timestamp modified() const;
};

/// The header at `position`; nothing at the end mark. Corrupt without a right checksum.
Result<std::optional<Header>> readHeader(const ByteSource& source, std::uint64_t position);
/// Where the archive starts: at 0, or behind a program. Nothing when there is none.
std::optional<std::uint64_t> findStart(const ByteSource& source);
/// Whether the bytes start with a sound main header.
bool isMainHeader(ConstBytes head);

}
