#include "engine/formats/zip/volumes.h"

#include <algorithm>
#include <cstring>

namespace vantoro::zip {

namespace {

constexpr std::size_t kMaxComment = 0xFFFF;
constexpr std::size_t kLocatorSize = 20, kZip64EndSize = 56;

struct ShortEnd {
    EndRecord record;
    std::size_t commentLength = 0;
};

std::optional<ShortEnd> parseShort(ConstBytes block, std::uint64_t position)
{
    ByteReader in(block);
    if (in.le32() != kEndSignature)
        return {};
    ShortEnd end;
    end.record.position = position;
    end.record.disk = in.le16();
    end.record.directoryDisk = in.le16();
    in.skip(2); // entries on this disk
    end.record.entries = in.le16();
    end.record.directorySize = in.le32();
    end.record.directoryOffset = in.le32();
    end.record.countsWrap = true;
    end.commentLength = in.le16();
    if (!in.ok())
        return {};
    return end;
}

bool hasSignatureAt(const ByteSource& source, std::uint64_t position, std::uint32_t signature)
{
    std::byte bytes[4];
    if (!source.readExactly(position, bytes))
        return false;
    return ByteReader(bytes).le32() == signature;
}

/// Whether a directory can be where the record says, or directly in front of the record.
bool leadsToDirectory(const ByteSource& source, const EndRecord& end)
{
    if (end.disk != end.directoryDisk)
        return true; // in another part, which is not open yet
    if (end.entries == 0 && end.directorySize == 0)
        return true;
    if (end.directoryOffset == kSaturated32 || end.directorySize == kSaturated32)
        return true; // the zip64 record knows
    if (hasSignatureAt(source, end.directoryOffset, kDirectorySignature))
        return true;
    return end.directorySize <= end.position
        && hasSignatureAt(source, end.position - end.directorySize, kDirectorySignature);
}

std::optional<EndRecord> parseZip64End(const ByteSource& source, std::uint64_t position)
{
    std::byte bytes[kZip64EndSize];
    if (!source.readExactly(position, bytes))
        return {};
    ByteReader in(bytes);
    if (in.le32() != kZip64EndSignature)
        return {};
    EndRecord end;
    end.position = position;
    end.isZip64 = true;
    in.skip(8 + 2 + 2); // its size, version made by and needed
    end.disk = in.le32();
    end.directoryDisk = in.le32();
    in.skip(8); // entries on this disk
    end.entries = in.le64();
    end.directorySize = in.le64();
    end.directoryOffset = in.le64();
    return end;
}

/// The zip64 record that the locator in front of the end record names. With bytes in front of the archive its offset is
/// too small: then it lies directly in front of the locator.
std::optional<EndRecord> findZip64End(const ByteSource& source, std::uint64_t endPosition)
{
    if (endPosition < kLocatorSize)
        return {};
    std::byte bytes[kLocatorSize];
    const auto locator = endPosition - kLocatorSize;
    if (!source.readExactly(locator, bytes))
        return {};
    ByteReader in(bytes);
    if (in.le32() != kZip64LocatorSignature)
        return {};
    in.skip(4); // the disk of the zip64 record: always the last one in practice
    const auto offset = in.le64();
    if (offset < locator) {
        if (auto end = parseZip64End(source, offset))
            return end;
    }
    return locator < kZip64EndSize ? std::nullopt : parseZip64End(source, locator - kZip64EndSize);
}

}

Result<std::optional<EndRecord>> findEndRecord(const ByteSource& source)
{
    const auto size = source.size();
    const auto tailSize = static_cast<std::size_t>(std::min<std::uint64_t>(size, kEndSize + kMaxComment));
    const auto tailStart = size - tailSize;
    const auto tail = TRY(readBlock(source, tailStart, tailSize)); // shorter where the file was cut meanwhile
    if (tail.size() < kEndSize)
        return std::optional<EndRecord>();
    std::optional<ShortEnd> best;
    auto before = tail.size() - kEndSize + 1;
    while (const void* const found = ::memrchr(tail.data(), 'P', before)) {
        const auto at = static_cast<std::size_t>(static_cast<const std::byte*>(found) - tail.data());
        before = at;
        if (tail[at + 1] != std::byte{'K'})
            continue;
        const auto candidate = parseShort(ConstBytes(tail).subspan(at), tailStart + at);
        if (!candidate || !leadsToDirectory(source, candidate->record))
            continue;
        const bool reachesTheEnd = at + kEndSize + candidate->commentLength == tail.size();
        if (!best || reachesTheEnd)
            best = candidate;
        if (reachesTheEnd)
            break;
    }
    if (!best)
        return std::optional<EndRecord>();
    auto end = best->record;
    if (const auto zip64 = findZip64End(source, end.position))
        end = *zip64;
    const auto commentAt = static_cast<std::size_t>(best->record.position - tailStart) + kEndSize;
    const auto comment = asText(tail).substr(commentAt, best->commentLength);
    end.comment = std::string(comment);
    return std::optional<EndRecord>(std::move(end));
}

}
