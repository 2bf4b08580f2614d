#include "engine/backends/late_libarchive.h"
#include "engine/backends/library_locale.h"
#include "engine/write/compressors.h"
#include "engine/write/creator.h"
#include "engine/write/lender.h"
#include "engine/write/ordered_jobs.h"
#include "engine/write/source_batch.h"
#include "engine/write/source_reader.h"

#include <algorithm>
#include <thread>

namespace vantoro {

namespace {

constexpr std::size_t kBufferSize = 512 << 10;
constexpr unsigned kReaders = 2; // threads that read files ahead
constexpr Error kBecameShorter{ErrorCode::SourceUnreadable, "became shorter while it was read"};

struct FreeWriter {
    void operator()(archive* writer) const
    {
        archive_write_fail(writer); // or it would write its end into a sink that is gone when the work was broken off
        archive_write_free(writer);
    }
};
struct FreeEntry {
    void operator()(archive_entry* entry) const { archive_entry_free(entry); }
};
using WriterPtr = std::unique_ptr<archive, FreeWriter>;
using EntryPtr = std::unique_ptr<archive_entry, FreeEntry>;

std::string_view methodOf(std::string_view kind)
{
    for (const auto& [tail, method] : {std::pair{".gz", "gz"},
                                       {".xz", "xz"},
                                       {".zst", "zst"},
                                       {".bz2", "bz2"},
                                       {".lz4", "lz4"},
                                       {"tgz", "gz"},
                                       {"txz", "xz"},
                                       {"tbz2", "bz2"},
                                       {"tzst", "zst"}}) {
        if (kind.ends_with(tail))
            return method;
    }
    return {};
}

/// Where libarchive's bytes go.
struct Target {
    ByteSink* sink = nullptr;
    Result<void> result;
};

la_ssize_t writeBytes(archive* writer, void* target, const void* bytes, std::size_t size)
{
    auto& out = *static_cast<Target*>(target);
    out.result = guarded([&] { return out.sink->write({static_cast<const std::byte*>(bytes), size}); });
    if (out.result)
        return static_cast<la_ssize_t>(size);
    archive_set_error(writer, EIO, "the sink failed");
    return ARCHIVE_FATAL;
}

class LibarchiveCreator final : public Creator {
public:
    explicit LibarchiveCreator(std::string kind) : m_kind(std::move(kind)) {}

    Result<void> write(const SourceList& sources, const CreateOptions& options, OutputFile& out,
                       CreateLog& log) override
    {
        useUtf8ForLibraries();
        const auto method = methodOf(m_kind);
        std::unique_ptr<ByteSink> compressor;
        Target target{&out, {}};
        if (!method.empty()) {
            constexpr std::uint64_t kEntryCost = 768; // a header, and half a block to fill up the last one
            const auto expected = sources.totalSize + sources.items.size() * kEntryCost;
            compressor = TRY(makeCompressor(method, out, options.level, options.threads, expected, options.cancel));
            target.sink = compressor.get();
        }
        m_target = &target;
        m_isReproducible = options.reproducible;
        m_storesTimes = options.storeTimes;
        TRY(open(options));
        TRY(addAll(sources, options, log));
        if (archive_write_close(m_writer.get()) != ARCHIVE_OK)
            return failure("closing");
        return target.sink->finish();
    }

private:
    Result<void> open(const CreateOptions&)
    {
        m_writer.reset(archive_write_new());
        if (!m_writer)
            return Error{ErrorCode::OutOfMemory, "libarchive writer"};
        int result = ARCHIVE_OK;
        if (m_kind == "cpio")
            result = archive_write_set_format_cpio_newc(m_writer.get());
        else if (m_kind == "iso")
            result = archive_write_set_format_iso9660(m_writer.get());
        else if (m_kind == "xar")
            result = archive_write_set_format_xar(m_writer.get());
        else if (m_kind == "ar")
            result = archive_write_set_format_ar_svr4(m_writer.get());
        else
            result = archive_write_set_format_pax_restricted(m_writer.get());
        archive_write_add_filter_none(m_writer.get());
        archive_write_set_bytes_per_block(m_writer.get(), blockSize());
        archive_write_set_bytes_in_last_block(m_writer.get(), 1);
        if (result != ARCHIVE_OK
            || archive_write_open(m_writer.get(), m_target, nullptr, writeBytes, nullptr) != ARCHIVE_OK)
            return failure("opening");
        return {};
    }

    /// In bytes; 0: as it comes, for what is buffered once more by the file.
    int blockSize() const
    {
        if (m_kind == "iso" || m_kind == "xar")
            return 32768;
        return methodOf(m_kind).empty() ? 0 : 10240;
    }

    /// Files are read ahead of their use: half of the time goes into opening and reading them.
    Result<void> addAll(const SourceList& sources, const CreateOptions& options, CreateLog& log)
    {
        using BatchPtr = std::shared_ptr<SourceBatch>;
        Lender<SourceBatch> batches;
        OrderedJobs<Result<BatchPtr>> jobs(std::min(options.threads, kReaders), [&](Result<BatchPtr> read) {
            return guarded([&]() -> Result<void> {
                const auto batch = TRY(std::move(read));
                for (const auto& row : batch->rows()) {
                    TRY(options.cancel.check());
                    TRY(add(row, options, log));
                }
                batch->clear();
                batches.giveBack(batch);
                return {};
            });
        });
        auto rest = std::span(sources.items);
        while (!rest.empty()) {
            auto batch = batches.take([] { return std::make_shared<SourceBatch>(); });
            for (; !rest.empty() && !batch->isFull(); rest = rest.subspan(1))
                batch->add(rest.front());
            TRY(jobs.add([batch, cancel = options.cancel] {
                return guarded([&]() -> Result<BatchPtr> {
                    batch->read(cancel);
                    return batch;
                });
            }));
        }
        return jobs.finish();
    }

    Result<void> add(const SourceBatch::Row& row, const CreateOptions& options, CreateLog& log)
    {
        const auto& item = *row.item;
        log.begin(item);
        const bool isFlat = m_kind == "ar";
        if (isFlat && item.kind != EntryKind::File) {
            if (item.kind != EntryKind::Folder)
                log.problem(item, {ErrorCode::UnsupportedKind, "ar holds plain files only"});
            return {};
        }
        if (row.error) {
            log.problem(item, *row.error);
            return {};
        }
        std::optional<SourceReader> reader;
        if (item.kind == EntryKind::File && !row.isRead) {
            auto opened = SourceReader::open(item);
            if (!opened) {
                log.problem(item, opened.error());
                return {};
            }
            reader.emplace(*std::move(opened));
        }
        const auto entry = describe(item, reader ? reader->size() : row.size, isFlat);
        const int result = archive_write_header(m_writer.get(), entry.get());
        if (result == ARCHIVE_FATAL)
            return failure("header");
        if (result < ARCHIVE_WARN) {
            log.problem(item, {ErrorCode::UnsupportedFeature, "the format cannot hold the entry"});
            return {};
        }
        if (row.isRead)
            TRY(writeData(row, log));
        if (reader)
            TRY(copyData(*reader, item, options, log));
        if (archive_write_finish_entry(m_writer.get()) == ARCHIVE_FATAL)
            return failure("entry");
        log.end();
        return {};
    }

    EntryPtr describe(const SourceItem& item, std::uint64_t size, bool isFlat)
    {
        EntryPtr entry(archive_entry_new());
        const auto name = isFlat ? item.name.substr(item.name.rfind('/') + 1) : item.name;
        archive_entry_set_pathname(entry.get(), name.c_str());
        archive_entry_set_mode(entry.get(), item.mode);
        archive_entry_set_size(entry.get(), static_cast<la_int64_t>(size));
        archive_entry_set_ino64(entry.get(), ++m_number);
        archive_entry_set_nlink(entry.get(), 1);
        archive_entry_set_uid(entry.get(), item.userId);
        archive_entry_set_gid(entry.get(), item.groupId);
        if (m_storesTimes)
            archive_entry_set_mtime(entry.get(), item.modified.seconds, static_cast<long>(item.modified.nanoseconds));
        if (item.kind == EntryKind::SymbolicLink)
            archive_entry_set_symlink(entry.get(), item.linkTarget.c_str());
        return entry;
    }

    Result<void> writeData(const SourceBatch::Row& row, CreateLog& log)
    {
        if (!row.data.empty() && archive_write_data(m_writer.get(), row.data.data(), row.data.size()) < 0)
            return failure("data");
        log.addBytes(row.data.size());
        if (row.data.size() == row.size)
            return {};
        log.problem(*row.item, kBecameShorter);
        return pad(row.size - row.data.size());
    }

    Result<void> copyData(SourceReader& reader, const SourceItem& item, const CreateOptions& options, CreateLog& log)
    {
        m_buffer.resize(kBufferSize);
        auto left = reader.size();
        while (left > 0) {
            TRY(options.cancel.check());
            const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, m_buffer.size()));
            const auto got = reader.read(Bytes(m_buffer).first(wanted));
            if (!got || *got == 0) {
                // The header promised more: zeros keep the archive valid, and the report says so.
                log.problem(item, got ? kBecameShorter : got.error());
                return pad(left);
            }
            if (archive_write_data(m_writer.get(), m_buffer.data(), *got) < 0)
                return failure("data");
            left -= *got;
            log.addBytes(*got);
        }
        return {};
    }

    Result<void> pad(std::uint64_t length)
    {
        m_buffer.assign(kBufferSize, std::byte{0});
        while (length > 0) {
            const auto part = static_cast<std::size_t>(std::min<std::uint64_t>(length, m_buffer.size()));
            if (archive_write_data(m_writer.get(), m_buffer.data(), part) < 0)
                return failure("padding");
            length -= part;
        }
        return {};
    }

    Error failure(const char* what) const
    {
        return m_target->result ? Error{ErrorCode::WriteFailed, what, archive_errno(m_writer.get())}
                                : m_target->result.error();
    }

    std::string m_kind;
    WriterPtr m_writer;
    Target* m_target = nullptr;
    std::vector<std::byte> m_buffer;
    la_int64_t m_number = 0;
    bool m_isReproducible = false;
    bool m_storesTimes = true;
};

/// One plain file, compressed.
class StreamCreator final : public Creator {
public:
    explicit StreamCreator(std::string kind) : m_kind(std::move(kind)) {}

    Result<void> write(const SourceList& sources, const CreateOptions& options, OutputFile& out,
                       CreateLog& log) override
    {
        if (sources.items.size() != 1 || sources.items[0].kind != EntryKind::File)
            return Error{ErrorCode::UnsupportedKindOfArchive, "such a file holds one plain file"};
        const auto& item = sources.items[0];
        auto reader = TRY(SourceReader::open(item));
        log.begin(item);
        const auto compressor
            = TRY(makeCompressor(m_kind, out, options.level, options.threads, reader.size(), options.cancel));
        std::vector<std::byte> buffer(512 << 10);
        while (true) {
            TRY(options.cancel.check());
            const auto got = TRY(reader.read(buffer));
            if (got == 0)
                break;
            TRY(compressor->write(ConstBytes(buffer).first(got)));
            log.addBytes(got);
        }
        TRY(compressor->finish());
        log.end();
        return {};
    }

private:
    std::string m_kind;
};

}

std::unique_ptr<Creator> makeLibarchiveCreator(const char* kind) { return std::make_unique<LibarchiveCreator>(kind); }
std::unique_ptr<Creator> makeStreamCreator(const char* kind) { return std::make_unique<StreamCreator>(kind); }

}
