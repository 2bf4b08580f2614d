#pragma once

#include "engine/formats/iso_volume.h"

#include <unordered_map>
#include <unordered_set>

namespace vantoro {

/// One file, folder or link of an ISO 9660 volume.
struct IsoItem {
    struct Extent {
        std::uint64_t position = 0, length = 0;
    };
    std::uint64_t index = 0;
    std::string path;
    EntryKind kind = EntryKind::File;
    std::vector<Extent> extents;
    std::uint64_t packedSize = 0;
    bool isInterleaved = false;
    RockRidge rockRidge;
    Timestamp modified;
    /// Hard links: the first entry of the same file.
    std::uint64_t firstIndex = 0;
    std::string firstPath;

    std::uint64_t size() const { return rockRidge.zisofs ? rockRidge.zisofs->size : packedSize; }
};

/// Goes through a volume's folders, each before its content, in the order in which they are stored.
class IsoWalker {
public:
    IsoWalker(const ByteSource& source, const IsoVolume& volume, const Limits& limits);

    /// The next item, good until the next call; null at the end.
    Result<const IsoItem*> next();
    /// The first thing found wrong with a folder; its other content and the other folders were read all the same.
    const std::optional<Error>& damage() const { return m_damage; }

private:
    struct Folder {
        std::uint64_t position = 0;
        std::uint64_t size = 0;
    };
    struct Level {
        std::vector<std::byte> block;
        std::size_t at = 0;
        std::size_t pathLength = 0;
    };

    Result<void> enter(Folder folder);
    std::optional<IsoRecord> nextRecord(Level& level);
    Result<bool> take(const IsoRecord& record);
    Result<void> takeFolder(const IsoRecord& record);
    void classify(const IsoRecord& record);
    void recogniseHardLink();
    bool holdsOnlyMovedFolders(const IsoRecord& record) const;
    void note(ErrorCode code, const char* what);

    const ByteSource& m_source;
    const IsoVolume& m_volume;
    Limits m_limits;
    std::vector<Level> m_levels;
    std::optional<Folder> m_pending; // a folder that was handed out last and is entered next
    std::uint64_t m_liveBytes = 0; // of all levels
    std::unordered_set<std::uint64_t> m_entered; // positions of folders: a loop would never end
    struct First {
        std::uint64_t index;
        std::string path;
    };
    std::unordered_map<std::uint64_t, First> m_linkedFiles; // by position of the data, or by number when empty
    std::string m_path; // of the folder in hand, with a slash at its end
    IsoItem m_item;
    std::uint64_t m_nextIndex = 0;
    std::optional<Error> m_damage;
};

}
