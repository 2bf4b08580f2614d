#pragma once

#include "engine/formats/archive.h"

namespace vantoro {

/// What the Rock Ridge extension (IEEE P1282) and zisofs say of one directory record of an ISO 9660 volume.
struct RockRidge {
    bool isPresent = false; ///< at least one of the extension's own fields was there
    std::optional<std::string> name;
    std::optional<std::uint32_t> mode; ///< POSIX, type bits included
    std::uint32_t links = 1;
    std::uint32_t serial = 0; ///< inode number; 0 when not stored
    std::optional<std::string> linkTarget;
    Timestamp created, modified, accessed;
    std::optional<std::uint32_t> childBlock; ///< a folder that was moved elsewhere because it lay too deep
    bool isMoved = false; ///< ... and this is it, to be shown only in its old place
    struct Zisofs {
        std::uint64_t size = 0; ///< decoded
        bool isKnownVersion = true;
    };
    std::optional<Zisofs> zisofs;
};

/// The system-use fields of a directory record and of their continuations on the volume.
class RockRidgeParser {
public:
    RockRidgeParser(const ByteSource& volume, std::uint32_t blockSize) : m_volume(volume), m_blockSize(blockSize) {}

    /// Looks for the mark that the root folder's own record bears on volumes that use the extension.
    bool detect(ConstBytes rootSystemUse);
    RockRidge parse(ConstBytes systemUse) const;

private:
    struct Continuation {
        std::uint64_t position = 0;
        std::uint32_t length = 0;
    };
    struct State;
    void parseArea(ConstBytes area, State& state) const;
    static void parseField(std::string_view signature, ConstBytes data, State& state);

    const ByteSource& m_volume;
    std::uint32_t m_blockSize;
    std::size_t m_skip = 0; // bytes of another system at the front of every area
};

/// The date of a directory record: years since 1900, month, day, hour, minute, second, quarters of an hour off UTC.
Timestamp isoShortDate(ConstBytes seven);
/// "YYYYMMDDhhmmsscc" and quarters of an hour off UTC.
Timestamp isoLongDate(ConstBytes seventeen);

}
