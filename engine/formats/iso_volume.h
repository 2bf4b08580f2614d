#pragma once

#include "engine/formats/rock_ridge.h"

namespace vantoro {

/// One directory record of an ISO 9660 volume, as it stands. Views last as long as the block they were parsed from.
struct IsoRecord {
    std::uint64_t position = 0; ///< of the data, in bytes from the start of the volume
    std::uint32_t size = 0;
    unsigned flags = 0;
    bool isInterleaved = false;
    Timestamp modified;
    std::string_view identifier;
    ConstBytes systemUse;

    static constexpr unsigned kFolder = 2, kAssociated = 4, kMoreExtents = 0x80;

    /// Nothing at the end of the sector or on nonsense.
    static std::optional<IsoRecord> parse(ConstBytes block, std::uint32_t blockSize);
    /// "." or "..".
    bool isSelfOrParent() const { return identifier.size() == 1 && identifier[0] <= 1; }
};

/// Which of a volume's directory trees is read, and how its names are to be understood.
struct IsoVolume {
    enum class Names : std::uint8_t {
        Plain, ///< upper-case letters with a version number
        Joliet, ///< UCS-2, big endian
        RockRidge, ///< bytes as on Unix
    };
    Names names = Names::Plain;
    std::uint32_t blockSize = 2048;
    std::uint64_t rootPosition = 0;
    std::uint32_t rootSize = 0;
    RockRidgeParser rockRidge;

    /// Rock Ridge where there is any, for it knows links and modes; then Joliet; then the plain names.
    static Result<IsoVolume> open(const ByteSource& source);

    std::string nameOf(const IsoRecord& record) const;
};

inline constexpr std::uint64_t kIsoSector = 2048;
inline constexpr std::uint64_t kIsoDescriptors = 16 * kIsoSector;

}
