#include "engine/formats/archive.h"

#include "engine/crypto/crc32.h"

#include <algorithm>
#include <numeric>

#include <sys/stat.h>

namespace vantoro {

namespace {
constexpr std::size_t kBlock = 256 << 10;
}

std::optional<EntryKind> kindOfMode(std::uint32_t mode)
{
    switch (mode & S_IFMT) {
    case S_IFREG:
        return EntryKind::File;
    case S_IFDIR:
        return EntryKind::Folder;
    case S_IFLNK:
        return EntryKind::SymbolicLink;
    case S_IFBLK:
    case S_IFCHR:
    case S_IFIFO:
    case S_IFSOCK:
        return EntryKind::Other;
    default:
        return std::nullopt;
    }
}

Result<void> LaneReceiver::hole(std::uint64_t length)
{
    const auto zeros = room(kBlock);
    std::fill(zeros.begin(), zeros.end(), std::byte{0});
    while (length > 0) {
        const auto part = static_cast<std::size_t>(std::min<std::uint64_t>(length, zeros.size()));
        TRY(data(zeros.first(part)));
        length -= part;
    }
    return {};
}

Result<void> LaneReceiver::copy(const ByteSource& source, std::uint64_t position, std::uint64_t length,
                                std::uint32_t* crc)
{
    while (length > 0) {
        const auto into = room(kBlock);
        const auto wanted = into.first(static_cast<std::size_t>(std::min<std::uint64_t>(length, into.size())));
        TRY(source.readExactly(position, wanted));
        if (crc)
            *crc = crc32(*crc, wanted);
        TRY(data(wanted));
        position += wanted.size();
        length -= wanted.size();
    }
    return {};
}

bool ReadRequest::isChosen(std::uint64_t index) const
{
    return !selection || std::binary_search(selection->begin(), selection->end(), index);
}

std::vector<std::uint64_t> ReadRequest::chosen(std::uint64_t entries) const
{
    if (selection)
        return *selection;
    std::vector<std::uint64_t> all(static_cast<std::size_t>(entries));
    std::iota(all.begin(), all.end(), std::uint64_t{0});
    return all;
}

}
