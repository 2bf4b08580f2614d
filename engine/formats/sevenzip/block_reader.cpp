#include "engine/formats/sevenzip/block_reader.h"

#include "engine/crypto/crc32.h"
#include "engine/formats/stored_time.h"
#include "engine/text/utf16.h"

#include <algorithm>

namespace vantoro::seven {

namespace {

constexpr std::size_t kAtOnce = 256 << 10;
constexpr std::size_t kLeastRoom = 64 << 10;
constexpr std::uint32_t kHasUnixMode = 0x8000; ///< the upper half of the attributes is one

EntryKind kindOf(const File& file)
{
    if (file.isFolder)
        return EntryKind::Folder;
    if ((file.attributes & kHasUnixMode) == 0)
        return EntryKind::File;
    const auto kind = kindOfMode(file.attributes >> 16).value_or(EntryKind::File);
    return kind == EntryKind::Folder ? EntryKind::File : kind; // a mode that contradicts the structure loses
}

}

const Entry& EntryView::fill(std::uint64_t index)
{
    const auto& file = m_database.files()[static_cast<std::size_t>(index)];
    auto& entry = m_entry;
    entry = {};
    entry.index = index;
    m_name = utf8FromUtf16(file.name, std::endian::little);
    entry.name = m_name;
    entry.nameCharset = kCharsetUtf8;
    entry.kind = kindOf(file);
    if ((file.attributes & kHasUnixMode) != 0)
        entry.mode = file.attributes >> 16;
    entry.modified = fileTime(file.modified);
    entry.created = fileTime(file.created);
    entry.accessed = fileTime(file.accessed);
    if (entry.kind == EntryKind::Folder)
        return entry;
    entry.size = file.size;
    if (file.block == File::kNoBlock) {
        entry.packedSize = 0;
        return entry;
    }
    const auto& block = m_database.blocks()[file.block];
    if (file.isFirst)
        entry.packedSize = block.packedSize;
    if (file.hasCrc)
        entry.checksum = {Checksum::Kind::Crc32, file.crc};
    entry.solidGroup = file.block;
    if (m_methodBlock != file.block) {
        m_method = methodOf(block);
        m_methodBlock = file.block;
    }
    entry.method = m_method;
    return entry;
}

Result<void> BlockReader::read(std::span<const std::uint64_t> entries)
{
    m_position = 0;
    m_fault = {};
    m_stream.reset();
    for (const auto index : entries)
        TRY(readFile(index));
    return {};
}

/// A fault is kept.
void BlockReader::open(const Block& block)
{
    auto stream = openBlock(m_shared.source, block, m_shared.packedBytesRead,
                            {.threads = m_shared.decoderThreads, .limits = m_shared.limits, .cancel = m_shared.cancel});
    if (stream)
        m_stream = *std::move(stream);
    else
        m_fault = stream.error();
}

Result<void> BlockReader::readFile(std::uint64_t index)
{
    const auto& file = m_shared.database.files()[static_cast<std::size_t>(index)];
    TRY(m_shared.cancel.check());
    if (TRY(m_lane.begin(m_view.fill(index))) == LaneReceiver::Want::Skip)
        return {};
    if (file.block == File::kNoBlock)
        return m_lane.end({});
    if (!m_stream && m_fault)
        open(m_shared.database.blocks()[file.block]);
    TRY(passOver(file.offset - m_position));
    return deliver(file);
}

/// 0 at a fault, which is kept.
Result<std::size_t> BlockReader::decode(Bytes into)
{
    if (!m_fault)
        return std::size_t{0};
    const auto got = m_stream->read(into);
    if (!got && (got.error().code == ErrorCode::Cancelled || got.error().code == ErrorCode::OutOfMemory))
        return got.error();
    if (!got)
        m_fault = got.error();
    else if (*got == 0)
        m_fault = Error{ErrorCode::Corrupt, "7z: the data end too early"};
    m_position += got.value_or(0);
    return got.value_or(0);
}

Result<void> BlockReader::passOver(std::uint64_t count)
{
    m_scrap.resize(kAtOnce);
    while (count > 0 && m_fault) {
        TRY(m_shared.cancel.check());
        const auto part = static_cast<std::size_t>(std::min<std::uint64_t>(count, m_scrap.size()));
        count -= TRY(decode(Bytes(m_scrap).first(part)));
    }
    return {};
}

Result<void> BlockReader::deliver(const File& file)
{
    std::uint32_t crc = 0;
    for (auto left = file.size; left > 0;) {
        TRY(m_shared.cancel.check());
        auto room = m_lane.room(static_cast<std::size_t>(std::min<std::uint64_t>(left, kLeastRoom)));
        room = room.first(static_cast<std::size_t>(std::min<std::uint64_t>({left, room.size(), kAtOnce})));
        const auto got = TRY(decode(room));
        if (got == 0)
            return m_lane.end(m_fault);
        crc = crc32(crc, room.first(got));
        left -= got;
        const auto taken = m_lane.data(room.first(got));
        if (taken)
            continue;
        if (taken.error().code != ErrorCode::EntryRefused)
            return taken;
        TRY(passOver(left));
        return m_lane.end(taken);
    }
    if (!m_fault)
        return m_lane.end(m_fault);
    if (file.hasCrc && crc != file.crc)
        return m_lane.end(Error{ErrorCode::ChecksumMismatch, "7z: wrong checksum"});
    return m_lane.end({});
}

}
