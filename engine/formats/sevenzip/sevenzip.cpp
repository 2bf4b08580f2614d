#include "engine/formats/sevenzip/sevenzip.h"

#include "engine/crypto/crc32.h"
#include "engine/formats/sevenzip/block_reader.h"
#include "engine/formats/side_by_side.h"

#include <algorithm>

namespace vantoro {

namespace seven {

namespace {

constexpr std::uint64_t kMostDictionaries = 256 << 20; ///< of all blocks that are decoded at once

/// Cuts chosen entries into those of one block, with the ones without data among them.
class BlockCutter {
public:
    BlockCutter(const Database& database, std::span<const std::uint64_t> chosen) : m_database(database), m_rest(chosen)
    {
    }

    std::optional<std::span<const std::uint64_t>> next()
    {
        if (m_rest.empty())
            return {};
        auto block = File::kNoBlock;
        std::size_t count = 0;
        for (; count < m_rest.size(); ++count) {
            const auto its = m_database.files()[static_cast<std::size_t>(m_rest[count])].block;
            if (its != File::kNoBlock && block != File::kNoBlock && its != block)
                break;
            block = its != File::kNoBlock ? its : block;
        }
        const auto entries = m_rest.first(count);
        m_rest = m_rest.subspan(count);
        return entries;
    }

private:
    const Database& m_database;
    std::span<const std::uint64_t> m_rest;
};

class SevenZipReader final : public Archive {
public:
    SevenZipReader(SourcePtr source, Database database, const OpenContext& context)
        : m_source(std::move(source))
        , m_database(std::move(database))
        , m_context(context)
    {
        m_info.format = "7z";
        m_info.isSolid = m_database.isSolid();
    }

    const ArchiveInfo& info() const override { return m_info; }

    Result<void> list(EntryVisitor& visitor) override
    {
        EntryView view(m_database);
        constexpr std::size_t kStep = 1024; // entries between two looks at the stop flag
        for (std::size_t i = 0; i < m_database.files().size(); ++i) {
            if (i % kStep == 0)
                TRY(m_context.cancel.check());
            TRY(visitor.visit(view.fill(i)));
        }
        return {};
    }

    Result<void> read(const ReadRequest& request, Lanes& lanes) override
    {
        const auto chosen = request.chosen(m_database.files().size());
        if (!chosen.empty() && chosen.back() >= m_database.files().size())
            return Error{ErrorCode::Internal, "7z: a chosen entry is not there"};
        const ReadShared shared{.source = m_source,
                                .database = m_database,
                                .limits = m_context.limits,
                                .cancel = m_context.cancel,
                                .packedBytesRead = request.packedBytesRead,
                                .decoderThreads = m_database.blocks().size() == 1 ? lanes.count() : 1};
        return readBlocks(shared, chosen, lanes);
    }

private:
    unsigned lanesFor(const Lanes& lanes) const
    {
        std::uint64_t largest = 1 << 20;
        for (const auto& block : m_database.blocks())
            largest = std::max(largest, dictionaryOf(block));
        return static_cast<unsigned>(std::clamp<std::uint64_t>(kMostDictionaries / largest, 1, lanes.count()));
    }

    Result<void> readBlocks(const ReadShared& shared, std::span<const std::uint64_t> chosen, Lanes& lanes)
    {
        using Entries = std::span<const std::uint64_t>;
        BlockCutter cutter(m_database, chosen);
        return readSideBySide(
            lanes, lanesFor(lanes), [&] { return Result(cutter.next()); },
            [&](LaneReceiver& lane) {
                return [reader = BlockReader(shared, lane)](Entries entries) mutable { return reader.read(entries); };
            });
    }

    SourcePtr m_source;
    Database m_database;
    OpenContext m_context;
    ArchiveInfo m_info;
};

Result<ArchivePtr> open(SourcePtr source, const OpenContext& context)
{
    auto database = Database::load(source, context.limits, context.cancel);
    if (database)
        return ArchivePtr(std::make_unique<SevenZipReader>(std::move(source), *std::move(database), context));
    const auto code = database.error().code;
    if (code == ErrorCode::Cancelled || code == ErrorCode::Io || code == ErrorCode::OutOfMemory)
        return database.error();
    return Error{ErrorCode::NotAnArchive, database.error().what}; // what is wrong the next reader tells
}

Match probe(const ProbeInput& input)
{
    ByteReader in(input.head);
    const bool isSigned = in.text(6) == std::string_view("7z\xBC\xAF\x27\x1C", 6);
    in.skip(2); // version
    const auto crc = in.le32();
    const auto covered = in.take(20);
    return input.source && isSigned && in.ok() && crc32(0, covered) == crc ? Match::Sure : Match::No;
}

constexpr std::string_view kExtensions[] = {"7z"};

}

}

constinit const FormatRow kSevenZipFormat
    = {"7z", "7z archive", seven::kExtensions, &seven::probe, &seven::open, nullptr};

}
