#include "engine/formats/sevenzip/database.h"

#include "engine/crypto/crc32.h"
#include "engine/formats/sevenzip/blocks.h"

#include <algorithm>
#include <numeric>

namespace vantoro::seven {

namespace {

constexpr std::size_t kStartHeader = 32;
constexpr std::string_view kSignature{"7z\xBC\xAF\x27\x1C", 6};
constexpr unsigned kMostLayers = 4; ///< headers packed in headers

constexpr Error kDamaged{ErrorCode::Corrupt, "7z: headers"};
constexpr Error kOther{ErrorCode::UnsupportedFeature, "7z: left to the other reader"};

enum class Id : std::uint8_t {
    End = 0x00,
    Header = 0x01,
    MainStreams = 0x04,
    Files = 0x05,
    PackInfo = 0x06,
    UnpackInfo = 0x07,
    SubStreams = 0x08,
    Size = 0x09,
    Crc = 0x0A,
    Folder = 0x0B,
    CodersUnpackSize = 0x0C,
    NumUnpackStream = 0x0D,
    EmptyStream = 0x0E,
    EmptyFile = 0x0F,
    Names = 0x11,
    Created = 0x12,
    Accessed = 0x13,
    Modified = 0x14,
    Attributes = 0x15,
    EncodedHeader = 0x17,
    Dummy = 0x19,
};

constexpr std::uint32_t kAttributeReparse = 0x400;
constexpr std::uint32_t kHasUnixMode = 0x8000;

using Digests = std::vector<std::optional<std::uint32_t>>;

struct Streams {
    std::vector<Block> blocks;
    std::vector<std::uint64_t> sizes; ///< of the files with data, block by block
    Digests digests; ///< theirs
};

}

/// Reads one header. Where it lies in memory counts: blocks and files refer to it.
class Parser {
public:
    Parser(ConstBytes header, std::uint64_t packedEnd) : m_in(header), m_packedEnd(packedEnd) {}

    Id id() { return static_cast<Id>(m_in.u8()); }

    Result<Streams> streams()
    {
        Streams streams;
        std::vector<std::uint64_t> packedSizes;
        std::uint64_t position = 0;
        auto next = id();
        if (next == Id::PackInfo) {
            TRY(packInfo(position, packedSizes));
            next = id();
        }
        if (next == Id::UnpackInfo) {
            TRY(unpackInfo(streams.blocks));
            next = id();
        }
        TRY(placeBlocks(streams.blocks, position, packedSizes));
        const bool areListed = next == Id::SubStreams;
        TRY(subStreams(streams, areListed));
        if (areListed)
            next = id();
        return next == Id::End && m_in.ok() ? Result<Streams>(std::move(streams)) : kDamaged;
    }

    Result<std::vector<File>> files(const Streams& streams)
    {
        const auto count = TRY(number());
        if (count > m_in.remaining() / 2)
            return kDamaged; // each has a name, if only its end
        std::vector<File> files(static_cast<std::size_t>(count));
        std::vector<bool> isEmpty(files.size()), isEmptyFile;
        for (auto next = id(); next != Id::End; next = id()) {
            const auto size = TRY(number());
            if (!m_in.ok() || size > m_in.remaining())
                return kDamaged;
            Parser property(m_in.take(static_cast<std::size_t>(size)), m_packedEnd);
            if (next == Id::EmptyStream)
                isEmpty = TRY(property.bits(files.size()));
            else if (next == Id::EmptyFile)
                isEmptyFile
                    = TRY(property.bits(static_cast<std::size_t>(std::count(isEmpty.begin(), isEmpty.end(), true))));
            else
                TRY(property.property(next, files));
        }
        TRY(giveStreams(files, streams, isEmpty, isEmptyFile));
        return files;
    }

    bool ok() const { return m_in.ok(); }

private:
    /// As many bytes follow the first as it has leading ones.
    Result<std::uint64_t> number()
    {
        const auto first = m_in.u8();
        std::uint64_t value = 0;
        unsigned mask = 0x80;
        for (unsigned i = 0; i < 8; ++i, mask >>= 1) {
            if ((first & mask) == 0)
                return value + (static_cast<std::uint64_t>(first & (mask - 1)) << 8 * i);
            value |= std::uint64_t{m_in.u8()} << 8 * i;
        }
        return m_in.ok() ? Result<std::uint64_t>(value) : kDamaged;
    }

    /// A number of things, each of which takes at least a bit of the header.
    Result<std::size_t> count()
    {
        const auto value = TRY(number());
        return m_in.ok() && value <= 8 * m_in.remaining() ? Result<std::size_t>(static_cast<std::size_t>(value))
                                                          : kDamaged;
    }

    Result<std::vector<bool>> bits(std::size_t count)
    {
        std::vector<bool> result(count);
        std::uint8_t byte = 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (i % 8 == 0)
                byte = m_in.u8();
            result[i] = (byte >> (7 - i % 8) & 1) != 0;
        }
        return m_in.ok() ? Result<std::vector<bool>>(std::move(result)) : kDamaged;
    }

    Result<std::vector<bool>> optionalBits(std::size_t count)
    {
        return m_in.u8() != 0 ? Result<std::vector<bool>>(std::vector<bool>(count, true)) : bits(count);
    }

    Result<Digests> digests(std::size_t count)
    {
        const auto isDefined = TRY(optionalBits(count));
        Digests result(count);
        for (std::size_t i = 0; i < count; ++i) {
            if (isDefined[i])
                result[i] = m_in.le32();
        }
        return m_in.ok() ? Result<Digests>(std::move(result)) : kDamaged;
    }

    Result<void> packInfo(std::uint64_t& position, std::vector<std::uint64_t>& sizes)
    {
        const auto offset = TRY(number());
        position = TRY(checkedAdd<std::uint64_t>(offset, kStartHeader));
        sizes.resize(TRY(count()));
        for (auto next = id(); next != Id::End; next = id()) {
            if (next == Id::Size) {
                for (auto& size : sizes)
                    size = TRY(number());
            } else if (next == Id::Crc) {
                TRY(digests(sizes.size()));
            } else {
                return kDamaged;
            }
        }
        return {};
    }

    Result<void> unpackInfo(std::vector<Block>& blocks)
    {
        if (id() != Id::Folder)
            return kDamaged;
        blocks.resize(TRY(count()));
        if (m_in.u8() != 0)
            return kOther;
        std::vector<std::vector<std::size_t>> orders(blocks.size());
        for (std::size_t i = 0; i < blocks.size(); ++i)
            orders[i] = TRY(folder(blocks[i]));
        if (id() != Id::CodersUnpackSize)
            return kDamaged;
        for (std::size_t i = 0; i < blocks.size(); ++i)
            TRY(coderSizes(blocks[i], orders[i]));
        for (auto next = id(); next != Id::End; next = id()) {
            if (next != Id::Crc)
                return kDamaged;
            const auto crcs = TRY(digests(blocks.size()));
            for (std::size_t i = 0; i < blocks.size(); ++i)
                blocks[i].crc = crcs[i];
        }
        return {};
    }

    /// Returns which of the coders in the header's order is which in that of packing.
    Result<std::vector<std::size_t>> folder(Block& block)
    {
        const auto total = TRY(number());
        if (total == 0 || total > 4)
            return kOther;
        std::vector<Coder> coders(static_cast<std::size_t>(total));
        for (auto& coder : coders)
            coder = TRY(this->coder());
        constexpr auto kNone = ~std::size_t{0};
        std::vector<std::size_t> fedBy(coders.size(), kNone);
        std::vector<bool> isBound(coders.size());
        for (std::size_t i = 1; i < coders.size(); ++i) {
            const auto in = TRY(number());
            const auto out = TRY(number());
            if (in >= coders.size() || out >= coders.size() || fedBy[in] != kNone || isBound[out])
                return kDamaged;
            fedBy[in] = out;
            isBound[out] = true;
        }
        // From the coder that gives the block's data to the one that takes the packed ones.
        const auto main = std::find(isBound.begin(), isBound.end(), false) - isBound.begin();
        std::vector<std::size_t> order;
        for (auto at = static_cast<std::size_t>(main); at != kNone && order.size() < coders.size(); at = fedBy[at])
            order.push_back(at);
        if (order.size() != coders.size() || fedBy[order.back()] != kNone)
            return kDamaged;
        for (const auto at : order)
            block.coders.push_back(coders[at]);
        return order;
    }

    Result<Coder> coder()
    {
        const auto flags = m_in.u8();
        const unsigned idSize = flags & 0x0FU;
        if ((flags & 0xD0) != 0 || idSize > 8)
            return kOther; // several inputs or outputs, or what is not yet defined
        Coder coder;
        for (unsigned i = 0; i < idSize; ++i)
            coder.method = coder.method << 8 | m_in.u8();
        if ((flags & 0x20) != 0) {
            const auto size = TRY(number());
            if (size > m_in.remaining())
                return kDamaged;
            coder.properties = m_in.take(static_cast<std::size_t>(size));
        }
        return m_in.ok() ? Result<Coder>(coder) : kDamaged;
    }

    Result<void> coderSizes(Block& block, const std::vector<std::size_t>& order)
    {
        for (std::size_t i = 0; i < order.size(); ++i) {
            const auto size = TRY(number());
            if (i == order.front())
                block.size = size;
            if (i == order.back())
                block.innerSize = size;
        }
        return {};
    }

    Result<void> placeBlocks(std::vector<Block>& blocks, std::uint64_t position,
                             const std::vector<std::uint64_t>& sizes)
    {
        if (sizes.size() != blocks.size())
            return kDamaged;
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            if (position > m_packedEnd || sizes[i] > m_packedEnd - position)
                return kDamaged;
            blocks[i].packedPosition = position;
            blocks[i].packedSize = sizes[i];
            position += sizes[i];
        }
        return std::all_of(blocks.begin(), blocks.end(), [](const auto& block) { return isReadable(block); })
            ? Result<void>()
            : kOther;
    }

    /// How the blocks divide into files: each is one where nothing is said.
    Result<void> subStreams(Streams& streams, bool areListed)
    {
        auto next = areListed ? id() : Id::End;
        std::uint64_t total = streams.blocks.size();
        if (next == Id::NumUnpackStream) {
            total = 0;
            for (auto& block : streams.blocks) {
                block.streams = TRY(number());
                total = TRY(checkedAdd(total, block.streams));
            }
            next = id();
        }
        if (total > m_in.remaining() + streams.blocks.size())
            return kDamaged; // each has a name, and all but one of a block a size
        const bool haveSizes = next == Id::Size;
        for (const auto& block : streams.blocks) {
            auto left = block.size;
            for (std::uint64_t i = 0; i < block.streams; ++i) {
                const bool isLast = i + 1 == block.streams;
                if (!isLast && !haveSizes)
                    return kDamaged;
                const auto size = isLast ? left : TRY(number());
                if (size > left)
                    return kDamaged;
                left -= size;
                streams.sizes.push_back(size);
            }
        }
        if (haveSizes)
            next = id();
        return subDigests(streams, areListed, next);
    }

    Result<void> subDigests(Streams& streams, bool areListed, Id next)
    {
        std::size_t open = 0;
        for (const auto& block : streams.blocks)
            open += block.streams == 1 && block.crc ? 0 : static_cast<std::size_t>(block.streams);
        Digests listed(open);
        for (; areListed && next != Id::End; next = id()) {
            if (next != Id::Crc)
                return kDamaged;
            listed = TRY(digests(open));
        }
        auto from = listed.begin();
        for (const auto& block : streams.blocks) {
            if (block.streams == 1 && block.crc) {
                streams.digests.push_back(block.crc);
                continue;
            }
            const auto end = from + static_cast<std::ptrdiff_t>(block.streams);
            streams.digests.insert(streams.digests.end(), from, end);
            from = end;
        }
        return {};
    }

    Result<void> property(Id which, std::vector<File>& files)
    {
        switch (which) {
        case Id::Names:
            return names(files);
        case Id::Created:
            return values(files, [this](File& file) { file.created = m_in.le64(); });
        case Id::Accessed:
            return values(files, [this](File& file) { file.accessed = m_in.le64(); });
        case Id::Modified:
            return values(files, [this](File& file) { file.modified = m_in.le64(); });
        case Id::Attributes:
            return values(files, [this](File& file) { file.attributes = m_in.le32(); });
        case Id::Dummy:
            return {};
        default:
            return kOther;
        }
    }

    Result<void> names(std::vector<File>& files)
    {
        if (m_in.u8() != 0)
            return kOther;
        for (auto& file : files) {
            auto ahead = m_in;
            std::size_t length = 0;
            while (ahead.le16() != 0)
                length += 2;
            file.name = m_in.take(length);
            m_in.skip(2);
        }
        return m_in.ok() && m_in.remaining() == 0 ? Result<void>() : kDamaged;
    }

    template <class Take> Result<void> values(std::vector<File>& files, Take take)
    {
        const auto isDefined = TRY(optionalBits(files.size()));
        if (m_in.u8() != 0)
            return kOther;
        for (std::size_t i = 0; i < files.size(); ++i) {
            if (isDefined[i])
                take(files[i]);
        }
        return m_in.ok() ? Result<void>() : kDamaged;
    }

    Result<void> giveStreams(std::vector<File>& files, const Streams& streams, const std::vector<bool>& isEmpty,
                             const std::vector<bool>& isEmptyFile)
    {
        std::size_t empty = 0, next = 0;
        std::uint32_t block = 0;
        std::uint64_t inBlock = 0, offset = 0;
        for (std::size_t i = 0; i < files.size(); ++i) {
            auto& file = files[i];
            if ((file.attributes & kAttributeReparse) != 0 && (file.attributes & kHasUnixMode) == 0)
                return kOther;
            if (isEmpty[i]) {
                file.isFolder = empty >= isEmptyFile.size() || !isEmptyFile[empty];
                ++empty;
                continue;
            }
            while (block < streams.blocks.size() && inBlock == streams.blocks[block].streams) {
                ++block;
                inBlock = offset = 0;
            }
            if (block == streams.blocks.size())
                return kDamaged;
            file.block = block;
            file.offset = offset;
            file.size = streams.sizes[next];
            file.hasCrc = streams.digests[next].has_value();
            file.crc = streams.digests[next].value_or(0);
            file.isFirst = inBlock == 0;
            offset += file.size;
            ++inBlock;
            ++next;
        }
        return next == streams.sizes.size() ? Result<void>() : kDamaged;
    }

    ByteReader m_in;
    std::uint64_t m_packedEnd;
};

namespace {

Result<std::vector<std::byte>> unpackHeader(const SourcePtr& source, const Streams& streams, const Limits& limits,
                                            const CancelToken& cancel)
{
    if (streams.blocks.size() != 1 || streams.sizes.size() != 1)
        return kOther;
    const auto& block = streams.blocks.front();
    if (block.size > limits.headerBlock || dictionaryOf(block) > limits.dictionary)
        return Error{ErrorCode::LimitExceeded, "7z: headers too large"};
    const auto stream = TRY(openBlock(source, block, nullptr, {.limits = limits, .cancel = cancel}));
    std::vector<std::byte> header(static_cast<std::size_t>(block.size));
    if (TRY(readFully(*stream, header)) < header.size())
        return Error{ErrorCode::Truncated, "7z: packed headers"};
    if (block.crc && crc32(0, header) != *block.crc)
        return Error{ErrorCode::ChecksumMismatch, "7z: checksum of the packed headers"};
    return header;
}

}

Result<Database> Database::load(const SourcePtr& source, const Limits& limits, const CancelToken& cancel)
{
    std::array<std::byte, kStartHeader> start;
    TRY(source->readExactly(0, start));
    ByteReader in(start);
    const bool isSigned = in.text(kSignature.size()) == kSignature;
    in.skip(2); // version
    const auto startCrc = in.le32();
    const auto offset = in.le64();
    const auto size = in.le64();
    const auto headerCrc = in.le32();
    if (!isSigned || crc32(0, ConstBytes(start).subspan(12)) != startCrc)
        return kDamaged;
    Database database;
    if (offset == 0 && size == 0 && source->size() == kStartHeader)
        return database;
    // What else there may be, parts that are missing or data behind the end, the other reader tells.
    if (offset > source->size() || size > source->size() || offset + size + kStartHeader != source->size())
        return kOther;
    if (size > limits.headerBlock)
        return Error{ErrorCode::LimitExceeded, "7z: headers too large"};
    database.m_headers.push_back(TRY(readBlock(*source, kStartHeader + offset, static_cast<std::size_t>(size))));
    if (crc32(0, database.m_headers.back()) != headerCrc)
        return Error{ErrorCode::ChecksumMismatch, "7z: checksum of the headers"};
    for (unsigned layer = 0; layer < kMostLayers; ++layer) {
        Parser parser(database.m_headers.back(), kStartHeader + offset);
        const auto id = parser.id();
        if (id == Id::EncodedHeader) {
            const auto streams = TRY(parser.streams());
            database.m_headers.push_back(TRY(unpackHeader(source, streams, limits, cancel)));
            continue;
        }
        if (id != Id::Header)
            return kDamaged;
        Streams streams;
        auto next = parser.id();
        if (next == Id::MainStreams) {
            streams = TRY(parser.streams());
            next = parser.id();
        }
        if (next == Id::Files) {
            database.m_files = TRY(parser.files(streams));
            next = parser.id();
        }
        if (next != Id::End || !parser.ok() || (database.m_files.empty() && !streams.sizes.empty()))
            return kOther;
        if (database.m_files.size() > limits.entries)
            return Error{ErrorCode::LimitExceeded, "7z: too many entries"};
        database.m_blocks = std::move(streams.blocks);
        return database;
    }
    return kDamaged;
}

bool Database::isSolid() const
{
    return std::any_of(m_blocks.begin(), m_blocks.end(), [](const auto& block) { return block.streams > 1; });
}

}
