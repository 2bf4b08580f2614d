#include "engine/crypto/crc32.h"
#include "engine/write/creator.h"
#include "engine/write/deflate_pieces.h"
#include "engine/write/ordered_jobs.h"
#include "engine/write/source_reader.h"
#include "engine/write/zip_encryption.h"
#include "engine/write/zip_records.h"

#include <algorithm>
#include <array>

#include <libdeflate.h>
#include <zlib.h>

namespace vantoro {

namespace {

using Block = std::vector<std::byte>;
constexpr std::uint64_t kWholeLimit = 4 << 20; // files up to here are compressed in one go
constexpr std::size_t kPieceSize = 1 << 20; // of larger ones
// Small files share a job: handing one over costs as much as packing a few kilobytes.
constexpr std::uint64_t kLargestBatch = 256 << 10, kSmallestBatch = 16 << 10;
constexpr std::uint64_t kEntryWeight = 1 << 10; // opening and closing, in bytes packed meanwhile
constexpr std::uint64_t kKeyWeight = 64 << 10; // deriving a key
constexpr std::size_t kSampleSize = 64 << 10;
constexpr std::uint64_t kWideFrom = 0xF0000000; // sizes from here get room for 64 bits in the local header

/// What one job hands to the writer: a whole entry, or a piece of a large one.
struct Packed {
    const SourceItem* item = nullptr;
    bool isFirst = false, isLast = false;
    std::uint16_t method = 0;
    std::uint32_t crc = 0;
    std::uint64_t size = 0; // before packing
    std::uint64_t expectedSize = 0; // of the whole file
    Block data;
    std::optional<Error> error;
};

struct FreeCompressor {
    void operator()(libdeflate_compressor* c) const { libdeflate_free_compressor(c); }
};

/// A compressor a thread, made once: setting one up costs more than a small file.
libdeflate_compressor* compressorOf(int level)
{
    thread_local std::array<std::unique_ptr<libdeflate_compressor, FreeCompressor>, 13> compressors;
    auto& compressor = compressors[static_cast<std::size_t>(level)];
    if (!compressor)
        compressor.reset(libdeflate_alloc_compressor(level));
    return compressor.get();
}

/// The deflated block; nothing when it would not be smaller.
std::optional<Block> deflated(ConstBytes plain, int level)
{
    auto* compressor = compressorOf(level);
    if (!compressor || plain.size() < 16)
        return std::nullopt;
    Block packed(plain.size());
    const auto length
        = libdeflate_deflate_compress(compressor, plain.data(), plain.size(), packed.data(), packed.size() - 1);
    if (length == 0)
        return std::nullopt;
    packed.resize(length);
    return packed;
}

/// Whether a sample says that packing would gain next to nothing.
bool isIncompressible(ConstBytes sample)
{
    const auto packed = deflated(sample, 1);
    return sample.size() >= kSampleSize && (!packed || packed->size() > sample.size() - sample.size() / 64);
}

class ZipCreator final : public Creator {
public:
    Result<void> write(const SourceList& sources, const CreateOptions& options, OutputFile& out,
                       CreateLog& log) override
    {
        m_options = &options;
        m_out = &out;
        m_log = &log;
        m_level = levelOf(options.level);
        m_batchLimit
            = std::clamp(sources.totalSize / (std::uint64_t{16} * options.threads), kSmallestBatch, kLargestBatch);
        Jobs jobs(options.threads, [this](std::vector<Packed> batch) -> Result<void> {
            for (auto& packed : batch)
                TRY(take(std::move(packed)));
            return {};
        });
        for (const auto& item : sources.items) {
            TRY(options.cancel.check());
            TRY(add(item, jobs));
        }
        TRY(addBatch(jobs));
        TRY(jobs.finish());
        const auto start = out.position();
        TRY(out.write(m_directory));
        return out.write(endRecords(m_count, start, m_directory.size()));
    }

private:
    using Jobs = OrderedJobs<std::vector<Packed>>;

    static int levelOf(std::optional<unsigned> level)
    {
        constexpr std::array kScale = {0, 1, 2, 3, 4, 5, 6, 8, 9, 12};
        return level ? kScale[std::min(*level, 9U)] : 6;
    }

    Result<void> addBatch(Jobs& jobs)
    {
        if (m_batch.empty())
            return {};
        m_batchWeight = 0;
        return jobs.add([this, batch = std::exchange(m_batch, {})] {
            std::vector<Packed> done;
            done.reserve(batch.size());
            for (const auto* item : batch) {
                if (m_options->cancel.isCancelled())
                    break;
                done.push_back(packWhole(*item));
            }
            return done;
        });
    }

    Result<void> add(const SourceItem& item, Jobs& jobs)
    {
        if (item.name.size() > 0xFFFF - 1) {
            m_log->problem(item, {ErrorCode::UnsafeName, "zip: the name is too long"});
            return {};
        }
        if (item.kind != EntryKind::File || item.size <= kWholeLimit)
            return addToBatch(item, jobs);
        TRY(addBatch(jobs));
        auto opened = SourceReader::open(item);
        if (!opened) {
            m_log->problem(item, opened.error());
            return {};
        }
        const auto reader = std::make_shared<SourceReader>(*std::move(opened));
        const bool isStored = m_level == 0 || samplesAreIncompressible(*reader);
        const auto size = std::max<std::uint64_t>(reader->size(), 1);
        for (std::uint64_t position = 0; position < size; position += kPieceSize) {
            TRY(m_options->cancel.check());
            const bool isLast = position + kPieceSize >= size;
            TRY(jobs.add([=, this, &item] {
                std::vector<Packed> piece;
                piece.push_back(packPiece(item, *reader, position, isLast, isStored));
                return piece;
            }));
        }
        return {};
    }

    Result<void> addToBatch(const SourceItem& item, Jobs& jobs)
    {
        m_batch.push_back(&item);
        m_batchWeight += kEntryWeight + (item.kind == EntryKind::File ? item.size : 0);
        if (isEncrypted(item))
            m_batchWeight += kKeyWeight;
        return m_batchWeight >= m_batchLimit ? addBatch(jobs) : Result<void>();
    }

    static bool samplesAreIncompressible(const SourceReader& reader)
    {
        Block sample(kSampleSize);
        for (const auto position : {std::uint64_t{0}, reader.size() / 2}) {
            const auto got = reader.readAt(position, sample);
            if (!got || !isIncompressible(ConstBytes(sample).first(*got)))
                return false;
        }
        return true;
    }

    // On a worker's thread.
    Packed packWhole(const SourceItem& item)
    {
        Packed packed;
        packed.item = &item;
        packed.isFirst = packed.isLast = true;
        Block plain;
        if (item.kind == EntryKind::SymbolicLink) {
            const auto target = asBytes(item.linkTarget);
            plain.assign(target.begin(), target.end());
        } else if (item.kind == EntryKind::File) {
            if (const auto read = readWhole(item, plain); !read) {
                packed.error = read.error();
                return packed;
            }
        }
        packed.size = packed.expectedSize = plain.size();
        packed.crc = crc32(0, plain);
        const bool wantsPacking = m_level > 0 && item.kind == EntryKind::File
            && !(plain.size() >= 2 * kSampleSize && isIncompressible(ConstBytes(plain).first(kSampleSize))
                 && isIncompressible(ConstBytes(plain).subspan(plain.size() / 2, kSampleSize)));
        auto small = wantsPacking ? deflated(plain, m_level) : std::nullopt;
        packed.method = small ? 8 : 0;
        packed.data = small ? *std::move(small) : std::move(plain);
        if (isEncrypted(item)) {
            if (const auto sealed = seal(packed); !sealed)
                packed.error = sealed.error();
        }
        return packed;
    }

    bool isEncrypted(const SourceItem& item) const
    {
        return !m_options->password.isEmpty() && item.kind != EntryKind::Folder;
    }

    /// Deriving the key is most of the work for a small entry: done here, where it runs beside others.
    Result<void> seal(Packed& packed) const
    {
        auto encryption = TRY(ZipEncryption::start(m_options->password, m_options->classicEncryption, packed.crc));
        TRY(encryption.encrypt(packed.data));
        packed.data.insert(packed.data.begin(), encryption.header().begin(), encryption.header().end());
        const auto footer = encryption.footer();
        packed.data.insert(packed.data.end(), footer.begin(), footer.end());
        return {};
    }

    static Result<void> readWhole(const SourceItem& item, Block& plain)
    {
        auto reader = TRY(SourceReader::open(item));
        // What has grown beyond the limit since the walk is cut there rather than held in memory.
        plain.resize(static_cast<std::size_t>(std::min(reader.size(), 2 * kWholeLimit)));
        plain.resize(TRY(reader.read(plain)));
        return {};
    }

    Packed packPiece(const SourceItem& item, const SourceReader& reader, std::uint64_t position, bool isLast,
                     bool isStored) const
    {
        Packed packed;
        packed.item = &item;
        packed.isFirst = position == 0;
        packed.isLast = isLast;
        packed.expectedSize = reader.size();
        packed.method = isStored ? 0 : 8;
        Block plain(kPieceSize);
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(kPieceSize, reader.size() - position));
        const auto got = reader.readAt(position, Bytes(plain).first(wanted));
        plain.resize(got.value_or(0));
        if (!got)
            packed.error = got.error();
        else if (plain.size() < wanted)
            packed.error = Error{ErrorCode::SourceUnreadable, "became shorter while it was read"};
        packed.size = plain.size();
        packed.crc = crc32(0, plain);
        packed.data = isStored ? std::move(plain) : deflatedPiece(plain, isLast);
        return packed;
    }

    Block deflatedPiece(ConstBytes plain, bool isLast) const
    {
        auto* compressor = compressorOf(m_level);
        Block packed(libdeflate_deflate_compress_bound(compressor, plain.size()));
        packed.resize(
            libdeflate_deflate_compress(compressor, plain.data(), plain.size(), packed.data(), packed.size()));
        if (!isLast && !makeFrontPiece(packed))
            packed.clear(); // cannot happen with a stream of the library's own; the size check below would tell
        return packed;
    }

    // On the caller's thread, in order.
    Result<void> take(Packed packed)
    {
        if (packed.isFirst) {
            if (packed.error && packed.isLast) {
                m_log->problem(*packed.item, *packed.error);
                return {};
            }
            TRY(begin(packed));
        }
        if (packed.error)
            m_log->problem(*packed.item, *packed.error); // the entry ends where the file did
        if (packed.isFirst)
            m_record.crc = packed.crc;
        else
            m_record.crc = static_cast<std::uint32_t>(
                ::crc32_combine(m_record.crc, packed.crc, static_cast<z_off_t>(packed.size)));
        m_record.size += packed.size;
        TRY(put(packed));
        m_log->addBytes(packed.item->kind == EntryKind::File ? packed.size : 0);
        return packed.isLast ? end() : Result<void>();
    }

    Result<void> begin(const Packed& packed)
    {
        const auto& item = *packed.item;
        m_log->begin(item);
        m_record = recordFor(item, m_options->storeTimes, m_options->reproducible);
        m_record.method = packed.method;
        m_record.offset = m_out->position();
        m_record.hasWideSizes = packed.expectedSize >= kWideFrom;
        m_encryption.reset();
        m_record.isAes = isEncrypted(item) && !m_options->classicEncryption;
        m_record.isClassic = isEncrypted(item) && m_options->classicEncryption;
        if (isEncrypted(item) && !packed.isLast) {
            const auto checksum = TRY(checksumOf(item));
            m_encryption = TRY(ZipEncryption::start(m_options->password, m_options->classicEncryption, checksum));
        }
        TRY(m_out->write(localHeader(m_record)));
        m_dataStart = m_out->position();
        return m_encryption ? m_out->write(m_encryption->header()) : Result<void>();
    }

    /// The old cipher wants the checksum before the data; a large file is read once more for it.
    Result<std::uint32_t> checksumOf(const SourceItem& item) const
    {
        if (!m_options->classicEncryption)
            return 0U;
        auto reader = TRY(SourceReader::open(item));
        Block buffer(kPieceSize);
        std::uint32_t crc = 0;
        while (true) {
            const auto got = TRY(reader.read(buffer));
            if (got == 0)
                return crc;
            crc = crc32(crc, ConstBytes(buffer).first(got));
        }
    }

    Result<void> put(Packed& packed)
    {
        if (m_encryption)
            TRY(m_encryption->encrypt(packed.data));
        return m_out->write(packed.data);
    }

    Result<void> end()
    {
        if (m_encryption)
            TRY(m_out->write(m_encryption->footer()));
        m_record.packedSize = m_out->position() - m_dataStart;
        TRY(m_out->patch(m_record.offset, localHeader(m_record)));
        appendCentral(m_directory, m_record);
        ++m_count;
        m_log->end();
        return {};
    }

    const CreateOptions* m_options = nullptr;
    OutputFile* m_out = nullptr;
    CreateLog* m_log = nullptr;
    int m_level = 6;
    std::vector<const SourceItem*> m_batch; // files that wait for more to share a job with
    std::uint64_t m_batchWeight = 0, m_batchLimit = kLargestBatch;
    Block m_directory;
    std::uint64_t m_count = 0;
    ZipRecord m_record; // of the entry that is being written
    std::uint64_t m_dataStart = 0;
    std::optional<ZipEncryption> m_encryption;
};

}

std::unique_ptr<Creator> makeZipCreator(const char*) { return std::make_unique<ZipCreator>(); }

}
