#include "engine/formats/iso_walker.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::size_t kDeepest = 512;

/// Of what the records call a file: a mode that contradicts them loses.
EntryKind kindOf(std::uint32_t mode)
{
    const auto kind = kindOfMode(mode).value_or(EntryKind::Other);
    return kind == EntryKind::Folder ? EntryKind::File : kind;
}

}

IsoWalker::IsoWalker(const ByteSource& source, const IsoVolume& volume, const Limits& limits)
    : m_source(source)
    , m_volume(volume)
    , m_limits(limits)
    , m_pending(Folder{volume.rootPosition, volume.rootSize})
{
}

void IsoWalker::note(ErrorCode code, const char* what)
{
    if (!m_damage)
        m_damage = Error{code, what};
}

Result<const IsoItem*> IsoWalker::next()
{
    m_item = {};
    for (;;) {
        if (m_pending) {
            const auto folder = *m_pending;
            m_pending.reset();
            TRY(enter(folder));
        }
        if (m_levels.empty())
            return nullptr;
        auto& level = m_levels.back();
        m_path.resize(level.pathLength);
        const auto record = nextRecord(level);
        if (!record) {
            m_liveBytes -= level.block.size();
            m_levels.pop_back();
            m_item = {};
        } else if (TRY(take(*record))) {
            return &m_item;
        }
    }
}

Result<void> IsoWalker::enter(Folder folder)
{
    if (!m_entered.insert(folder.position).second) {
        note(ErrorCode::Corrupt, "iso: a folder contains itself or stands in two places");
        return {};
    }
    if (m_levels.size() >= kDeepest
        || folder.size > m_limits.headerBlock - std::min(m_limits.headerBlock, m_liveBytes)) {
        note(ErrorCode::LimitExceeded, "iso: folders too deep or too large");
        return {};
    }
    Level level;
    level.block = TRY(readBlock(m_source, folder.position, static_cast<std::size_t>(folder.size)));
    if (level.block.size() < folder.size)
        note(ErrorCode::Truncated, "iso: a folder lies past the end");
    level.pathLength = m_path.size();
    m_liveBytes += level.block.size();
    m_levels.push_back(std::move(level));
    return {};
}

/// The next record but "." and ".."; nothing at the end. Records never cross a sector.
std::optional<IsoRecord> IsoWalker::nextRecord(Level& level)
{
    while (level.at < level.block.size()) {
        const auto sectorEnd = std::min(level.block.size(), level.at / kIsoSector * kIsoSector + kIsoSector);
        const auto rest = ConstBytes(level.block).subspan(level.at, sectorEnd - level.at);
        const auto record = IsoRecord::parse(rest, m_volume.blockSize);
        if (!record) {
            if (rest[0] != std::byte{0})
                note(ErrorCode::Corrupt, "iso: directory record");
            level.at = sectorEnd;
            continue;
        }
        level.at += std::to_integer<std::size_t>(rest[0]);
        if (!record->isSelfOrParent())
            return record;
    }
    return std::nullopt;
}

/// True when the item is complete and to be shown; false for a part of a file and for what is shown elsewhere.
Result<bool> IsoWalker::take(const IsoRecord& record)
{
    if (!m_item.extents.empty() && m_item.path != m_path + m_volume.nameOf(record)) {
        note(ErrorCode::Corrupt, "iso: a file's last part is missing");
        m_item = {};
    }
    m_item.extents.push_back({record.position, record.size});
    m_item.packedSize += record.size;
    m_item.isInterleaved = m_item.isInterleaved || record.isInterleaved;
    if (record.flags & IsoRecord::kMoreExtents && !(record.flags & IsoRecord::kFolder)) {
        m_item.path = m_path + m_volume.nameOf(record);
        return false;
    }
    classify(record);
    if (m_item.rockRidge.isMoved || holdsOnlyMovedFolders(record)) {
        m_item = {};
        return false;
    }
    if (m_nextIndex == m_limits.entries)
        return Error{ErrorCode::LimitExceeded, "iso: too many entries"};
    m_item.index = m_nextIndex++;
    if (m_item.kind == EntryKind::Folder)
        TRY(takeFolder(record));
    else if (m_item.kind == EntryKind::File)
        recogniseHardLink();
    return true;
}

void IsoWalker::classify(const IsoRecord& record)
{
    auto name = m_volume.nameOf(record);
    m_item.modified = record.modified;
    m_item.kind = record.flags & IsoRecord::kFolder ? EntryKind::Folder : EntryKind::File;
    if (m_volume.names == IsoVolume::Names::RockRidge) {
        auto& extension = m_item.rockRidge = m_volume.rockRidge.parse(record.systemUse);
        if (extension.name)
            name = *extension.name;
        if (extension.modified.isSet)
            m_item.modified = extension.modified;
        if (extension.childBlock)
            m_item.kind = EntryKind::Folder;
        else if (extension.linkTarget)
            m_item.kind = EntryKind::SymbolicLink;
        else if (extension.mode && m_item.kind == EntryKind::File)
            m_item.kind = kindOf(*extension.mode);
    }
    if (m_item.kind == EntryKind::File && record.flags & IsoRecord::kAssociated)
        m_item.kind = EntryKind::ResourceFork;
    std::replace(name.begin(), name.end(), '/', '_'); // one component: folders are records of their own
    m_item.path = m_path + name;
}

Result<void> IsoWalker::takeFolder(const IsoRecord& record)
{
    Folder folder{record.position, record.size};
    if (const auto child = m_item.rockRidge.childBlock) {
        folder.position = std::uint64_t{*child} * m_volume.blockSize;
        const auto block = TRY(readBlock(m_source, folder.position, kIsoSector));
        const auto self = IsoRecord::parse(block, m_volume.blockSize);
        folder.size = self ? self->size : 0;
    }
    m_item.extents.clear();
    m_item.packedSize = 0;
    m_path = m_item.path + '/';
    m_pending = folder;
    return {};
}

void IsoWalker::recogniseHardLink()
{
    const auto& extension = m_item.rockRidge;
    if (extension.links < 2 || (m_item.packedSize == 0 && extension.serial == 0))
        return;
    constexpr std::uint64_t kByNumber = std::uint64_t{1} << 63; // no position is that far
    const auto key = m_item.packedSize == 0 ? kByNumber | extension.serial : m_item.extents.front().position;
    const auto [first, isNew] = m_linkedFiles.try_emplace(key, First{m_item.index, m_item.path});
    if (isNew)
        return;
    m_item.kind = EntryKind::HardLink;
    m_item.firstIndex = first->second.index;
    m_item.firstPath = first->second.path;
}

/// The place at the top where writers put folders that lay too deep; they are shown where they belong.
bool IsoWalker::holdsOnlyMovedFolders(const IsoRecord& record) const
{
    if (m_volume.names != IsoVolume::Names::RockRidge || m_levels.size() != 1 || record.identifier != "RR_MOVED")
        return false;
    const auto block = readBlock(m_source, record.position,
                                 static_cast<std::size_t>(std::min<std::uint64_t>(record.size, m_limits.headerBlock)));
    if (!block)
        return false;
    IsoWalker inside(m_source, m_volume, m_limits);
    Level level{*block};
    while (const auto child = inside.nextRecord(level)) {
        if (!m_volume.rockRidge.parse(child->systemUse).isMoved)
            return false;
    }
    return true;
}

}
