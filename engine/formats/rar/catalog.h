#pragma once

#include "engine/formats/archive.h"

#include <array>
#include <memory>

namespace vantoro {

enum class RarGeneration : std::uint8_t { Rar14, Old, New }; ///< 1.4; 1.5 to 4; 5 to 7

/// How an entry's data are enciphered. Entries packed in one go mostly share one.
struct RarEncryption {
    enum class Scheme : std::uint8_t { Rar14, Rar15, Rar20, Rar3, Rar5 };
    Scheme scheme = Scheme::Rar5;
    std::array<std::byte, 16> salt{};
    std::uint8_t saltSize = 0;
    std::uint8_t exponent = 0; ///< Rar5: of the count of rounds
    bool hasCheck = false; ///< Rar5
    bool hasKeyedChecksums = false; ///< Rar5
    std::array<std::byte, 16> iv{}; ///< Rar5
    std::array<std::byte, 12> check{};

    ConstBytes saltBytes() const { return ConstBytes(salt).first(saltSize); }
};

/// Where a piece of an entry's packed data lies.
struct RarPart {
    std::uint32_t volume = 0; ///< index in RarCatalog::volumes
    std::uint64_t offset = 0, length = 0;
};

enum class RarMethod : std::uint8_t { Stored, Rar15, Rar20, Rar29, Rar50, Rar70, Unknown };

enum class RarChecksum : std::uint8_t { None, Sum14, Crc32 }; ///< Sum14: the 16 bits of rar 1.4

/// One entry as its headers state it.
struct RarMember {
    std::string name;
    CharsetId charset = kCharsetUnknown;
    PathStyle pathStyle = PathStyle::Unix;
    EntryKind kind = EntryKind::File;
    RarMethod method = RarMethod::Stored;
    std::uint8_t level = 0; ///< 1 to 5, of the packer's effort
    bool isSolid = false; ///< continues the codec state of the packed entry before
    bool lacksStart = false, lacksEnd = false; ///< parts lie in volumes that are not there
    bool isFileCopy = false; ///< the data are those of the entry named by the link target
    RarChecksum checksum = RarChecksum::None;
    std::uint32_t crc = 0; ///< of the kind that `checksum` says
    std::optional<std::uint64_t> size;
    std::uint64_t dictionary = 0;
    Timestamp modified, created, accessed;
    std::optional<std::uint32_t> mode;
    std::shared_ptr<const RarEncryption> encryption; ///< null: plain
    RarPart part; ///< the first; length 0 when there are no data

    /// What few entries have.
    struct Extras {
        std::string linkTarget, owner, group, comment;
        std::optional<std::array<std::byte, 32>> hash; ///< BLAKE2sp
        std::vector<RarPart> moreParts;
    };
    std::unique_ptr<Extras> extras;
    Extras& makeExtras()
    {
        if (!extras)
            extras = std::make_unique<Extras>();
        return *extras;
    }

    std::uint64_t packedSize() const;
    /// The entry has bytes of its own: a file, or a symbolic link whose target is stored as data.
    bool hasData() const
    {
        return kind == EntryKind::File || (kind == EntryKind::SymbolicLink && (!extras || extras->linkTarget.empty()));
    }
};

struct RarVolume {
    std::string name;
    SourcePtr source;
};

/// All that the headers of a set say.
struct RarCatalog {
    RarGeneration generation = RarGeneration::New;
    std::vector<RarVolume> volumes;
    std::vector<RarMember> members;
    std::string comment; ///< UTF-8
    std::string missingVolume;
    bool isVolumeSet = false;
    bool isSolid = false;
    bool hasEncryptedHeaders = false;
    std::optional<Error> damage;

    /// A member, or a further part of the last one. `continues` and `goesOn`: the data began in the volume before, go
    /// on in the next.
    Result<void> add(RarMember member, bool continues, bool goesOn, const Limits& limits);
    /// The last member's data go on in the next volume.
    bool isOpen() const { return m_isOpen; }
    void noteDamage(const Error& error)
    {
        if (!damage)
            damage = error;
    }
    /// No further volume comes.
    void close();

private:
    bool m_isOpen = false;
};

}
