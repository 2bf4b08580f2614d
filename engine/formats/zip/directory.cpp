#include "engine/formats/zip/directory.h"

#include <algorithm>

namespace vantoro::zip {

namespace {

constexpr std::size_t kReadStep = 512 << 10; // more than the longest header, and little enough to stay in the cache
constexpr std::uint64_t kHeaderBlocks = 16; // the directory may take this many of Limits::headerBlock
constexpr std::uint16_t kVersionNeeded = 45;
constexpr std::uint64_t kNowhere = ~std::uint64_t{0};

bool hasSignatureAt(const ByteSource& source, std::uint64_t position, std::uint32_t signature)
{
    std::byte bytes[4];
    if (!source.readExactly(position, bytes))
        return false;
    return ByteReader(bytes).le32() == signature;
}

}

Result<Directory> Directory::load(const VolumeSet& volumes, const Limits& limits)
{
    const auto& end = *volumes.end;
    const auto& source = *volumes.source;
    Directory directory;
    directory.m_starts = volumes.starts;
    if (volumes.starts.size() > 1) {
        const auto position = volumes.locate(end.directoryDisk, end.directoryOffset);
        if (!position)
            return Error{ErrorCode::Corrupt, "zip: place of the directory"};
        directory.m_position = *position;
    } else {
        if (end.directorySize > end.position)
            return Error{ErrorCode::Corrupt, "zip: size of the directory"};
        directory.m_position = end.position - end.directorySize;
        const bool isEmpty = end.entries == 0 && end.directorySize == 0;
        if (!isEmpty && !hasSignatureAt(source, directory.m_position, kDirectorySignature))
            directory.m_position = end.directoryOffset; // something lies between the directory and its end record
    }
    if (directory.m_position > end.position)
        return Error{ErrorCode::Corrupt, "zip: place of the directory"};
    TRY(directory.read(source, std::min(end.directorySize, end.position - directory.m_position), end, limits));
    directory.findBase(volumes, end);
    return directory;
}

Result<void> Directory::read(const ByteSource& source, std::uint64_t length, const EndRecord& end, const Limits& limits)
{
    if (length > limits.headerBlock * kHeaderBlocks)
        return Error{ErrorCode::LimitExceeded, "zip: size of the directory"};
    m_bytes.reserve(static_cast<std::size_t>(length)); // address space; the file really has that many bytes
    m_headers.reserve(static_cast<std::size_t>(std::min(end.entries, length / kDirectorySize)));
    m_isOrderly = m_starts.size() == 1;
    std::size_t parsed = 0;
    while (parsed < length) {
        const auto step = static_cast<std::size_t>(std::min<std::uint64_t>(kReadStep, length - m_bytes.size()));
        if (step == 0)
            break; // a header reaches past the end
        const auto from = m_bytes.size();
        m_bytes.resize(from + step);
        TRY(source.readExactly(m_position + from, Bytes(m_bytes).subspan(from)));
        while (parsed < m_bytes.size()) {
            const auto header = DirectoryHeader::parse(ConstBytes(m_bytes).subspan(parsed));
            if (!header && header.error().code != ErrorCode::Truncated) {
                m_isDamaged = end.entries != m_headers.size(); // otherwise a digital signature of the directory
                return {};
            }
            if (!header)
                break;
            if (m_headers.size() >= limits.entries)
                return Error{ErrorCode::LimitExceeded, "zip: number of entries"};
            m_headers.push_back(parsed);
            parsed += header->length;
            follow(*header);
        }
    }
    const auto count = end.countsWrap ? m_headers.size() & kSaturated16 : m_headers.size();
    m_isDamaged = parsed != length || count != end.entries;
    return {};
}

void Directory::follow(const DirectoryHeader& header)
{
    m_hasWavPack = m_hasWavPack || header.method == Method::WavPack;
    const auto limit = std::numeric_limits<std::uint64_t>::max() / 4; // so that no sum overflows
    m_isOrderly = m_isOrderly && header.localOffset >= m_dataEnd && header.localOffset < limit && header.packed < limit;
    if (m_isOrderly)
        m_dataEnd = header.localOffset + kLocalSize + header.packed;
}

/// Offsets count from the start of the archive, which need not be that of the file.
void Directory::findBase(const VolumeSet& volumes, const EndRecord& end)
{
    if (volumes.starts.size() > 1 || m_headers.empty())
        return;
    const auto stored = end.directoryOffset;
    if (m_position <= stored)
        return; // nothing in front, or an offset that makes no sense
    m_base = m_position - stored;
    const auto first = (*this)[0];
    if (!hasSignatureAt(*volumes.source, localPosition(first), kLocalSignature)
        && hasSignatureAt(*volumes.source, first.localOffset, kLocalSignature))
        m_base = 0;
}

DirectoryHeader Directory::operator[](std::size_t index) const
{
    const auto header = DirectoryHeader::parse(ConstBytes(m_bytes).subspan(static_cast<std::size_t>(m_headers[index])));
    return header.value_or(DirectoryHeader()); // it was parsed when it was found
}

std::uint64_t Directory::localPosition(const DirectoryHeader& header) const
{
    const auto disk = m_starts.size() > 1 ? header.disk : 0;
    if (disk >= m_starts.size() || header.localOffset > kNowhere - m_base - m_starts[disk])
        return kNowhere;
    return m_starts[disk] + header.localOffset + m_base;
}

bool Directory::isSizeKnown(std::size_t index) const
{
    return !std::binary_search(m_unknownSizes.begin(), m_unknownSizes.end(), index);
}

bool Directory::isSizeCredible(std::size_t index, const DirectoryHeader& header, std::uint64_t sourceSize) const
{
    constexpr std::uint64_t kDeflateRatio = 1032;
    if (!isSizeKnown(index) || header.packed > sourceSize)
        return false;
    const auto method = header.realMethod();
    if (method == Method::Stored)
        return header.size <= header.packed;
    return method != Method::Deflate || header.size / kDeflateRatio <= header.packed;
}

void Directory::addHeader(ConstBytes header)
{
    m_headers.push_back(m_bytes.size());
    m_bytes.insert(m_bytes.end(), header.begin(), header.end());
}

void Directory::setFound(std::uint64_t position)
{
    m_position = position;
    m_starts = {0};
    m_isDamaged = true;
    for (std::size_t i = 0; i < size() && !m_hasWavPack; ++i)
        m_hasWavPack = (*this)[i].method == Method::WavPack;
}

void Directory::addFound(const LocalHeader& local, std::uint64_t position, ConstBytes name, ConstBytes extra,
                         bool isSizeKnown)
{
    const auto put = [this](std::uint64_t value, unsigned bytes) {
        for (unsigned i = 0; i < bytes; ++i)
            m_bytes.push_back(static_cast<std::byte>(value >> 8 * i));
    };
    // Sizes and place always in a zip64 field in front of the others, which hides one of the local header.
    constexpr unsigned kField = 4 + 3 * 8;
    const auto keptExtra = extra.size() + kField <= kSaturated16 ? extra : ConstBytes();
    if (!isSizeKnown)
        m_unknownSizes.push_back(m_headers.size());
    m_headers.push_back(m_bytes.size());
    put(kDirectorySignature, 4);
    put(static_cast<std::uint8_t>(Host::Hpfs) << 8, 2); // the local header does not tell: no Unix mode, '/' separates
    put(kVersionNeeded, 2);
    put(local.flags, 2);
    put(local.method, 2);
    put(local.dosTime, 4);
    put(local.crc, 4);
    put(kSaturated32, 4);
    put(kSaturated32, 4);
    put(name.size(), 2);
    put(keptExtra.size() + kField, 2);
    put(0, 2 + 2 + 2); // comment, disk, internal attributes
    put(0, 4); // external attributes
    put(kSaturated32, 4);
    m_bytes.insert(m_bytes.end(), name.begin(), name.end());
    put(1, 2);
    put(kField - 4, 2);
    put(local.size, 8);
    put(local.packed, 8);
    put(position, 8);
    m_bytes.insert(m_bytes.end(), keptExtra.begin(), keptExtra.end());
}

namespace {

struct Range {
    std::uint64_t start, end;
    std::size_t index;
    bool operator<(const Range& other) const { return start != other.start ? start < other.start : end < other.end; }
};

/// A size that the local header contradicts is damage of that one entry, which reading it will tell.
bool isContradicted(const ByteSource& source, const Directory& directory, const Range& range)
{
    std::byte bytes[kLocalSize];
    if (!source.readExactly(range.start, bytes))
        return true;
    const auto local = LocalHeader::parse(bytes);
    if (!local)
        return true;
    const auto header = directory[range.index];
    return (local->flags & kHasDescriptor) == 0 && local->packed != kSaturated32 && local->packed != header.packed;
}

}

Result<void> checkOverlaps(const Directory& directory, const ByteSource& source)
{
    constexpr std::uint64_t kTolerated = 2; // harmless archives with this much exist
    if (directory.isOrderly())
        return {};
    std::vector<Range> ranges;
    ranges.reserve(directory.size());
    for (std::size_t i = 0; i < directory.size(); ++i) {
        const auto header = directory[i];
        const auto start = directory.localPosition(header);
        if (start >= source.size() || header.packed > source.size() - start)
            continue; // cut off: reading it will tell
        ranges.push_back({start, start + kLocalSize + header.packed, i});
    }
    if (!std::is_sorted(ranges.begin(), ranges.end()))
        std::sort(ranges.begin(), ranges.end());
    const Range* before = nullptr; // the one that reaches farthest
    for (const auto& range : ranges) {
        const bool overlaps = before && range.start + kTolerated < before->end;
        const bool isTwin = before && range.start == before->start && range.end == before->end;
        if (overlaps && !isTwin && !isContradicted(source, directory, *before)
            && !isContradicted(source, directory, range))
            return Error{ErrorCode::OverlappingEntries, "zip: entries share packed data"};
        const auto directoryAt = directory.position();
        if (range.start < directoryAt && range.end > directoryAt + kTolerated
            && !isContradicted(source, directory, range))
            return Error{ErrorCode::OverlappingEntries, "zip: an entry reaches into the directory"};
        if (!before || range.end > before->end)
            before = &range;
    }
    return {};
}

}
