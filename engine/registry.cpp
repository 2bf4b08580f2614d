#include "engine/registry.h"

#include "engine/backends/lhasa_archive.h"
#include "engine/backends/libarchive_rows.h"
#include "engine/backends/sevenzip_rows.h"
#include "engine/formats/arj.h"
#include "engine/formats/cpio.h"
#include "engine/formats/iso.h"
#include "engine/formats/rpm.h"
#include "engine/formats/single_stream.h"
#include "engine/formats/streams.h"
#include "engine/formats/tar.h"
#include "engine/formats/rar/rar.h"
#include "engine/formats/sevenzip/sevenzip.h"
#include "engine/formats/zip/zip.h"
#include "engine/io/processors.h"

#include <algorithm>
#include <atomic>

namespace vantoro {

namespace {

constexpr std::size_t kHeadSize = 256 << 10;
constexpr std::size_t kFirstRead = 16 << 10;

std::vector<const FormatRow*> collectContainers()
{
    // Among equals the order decides. UDF before ISO 9660: it says itself on which hybrid discs ISO is the better half.
    std::vector<const FormatRow*> rows;
    rows.push_back(&kZipFormat);
    rows.push_back(&kTarFormat);
    rows.push_back(&kSevenZipFormat);
    for (const auto& row : sevenZipRows())
        rows.push_back(&row);
    rows.push_back(&kIsoFormat);
    rows.push_back(&kArjFormat);
    rows.push_back(&kCpioFormat);
    for (const auto& row : lhasaRows())
        rows.push_back(&row);
    rows.push_back(&kRarFormat);
    for (const auto& row : libarchiveRows())
        rows.push_back(&row);
    for (const auto& row : sevenZipFallbackRows())
        rows.push_back(&row);
    return rows;
}

bool hasExtension(std::span<const std::string_view> extensions, std::string_view extension)
{
    return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

struct Candidate {
    Match match = Match::No;
    bool extensionFits = false;
    const FormatRow* container = nullptr; // one of the two
    const StreamFormatRow* stream = nullptr;
};

template <class Row>
void collect(std::span<const Row* const> rows, const ProbeInput& input, std::string_view extension,
             const Row* Candidate::*field, std::vector<Candidate>& out)
{
    for (const auto* row : rows) {
        Candidate candidate;
        candidate.match = row->probe(input);
        candidate.extensionFits = hasExtension(row->extensions, extension);
        candidate.*field = row;
        if (candidate.match != Match::No)
            out.push_back(candidate);
    }
}

void sortByMatch(std::vector<Candidate>& candidates)
{
    std::stable_sort(candidates.begin(), candidates.end(), [](const Candidate& a, const Candidate& b) {
        return a.match != b.match ? a.match > b.match : a.extensionFits > b.extensionFits;
    });
}

/// Counts what the decoder of a stream reads, while somebody asks for it.
class CountingSource final : public ByteSource {
public:
    explicit CountingSource(SourcePtr source) : m_source(std::move(source)) {}
    std::uint64_t size() const override { return m_source->size(); }
    Result<std::size_t> readAt(std::uint64_t position, Bytes into) const override
    {
        const auto count = TRY(m_source->readAt(position, into));
        if (auto* counter = m_counter.load(std::memory_order_relaxed))
            counter->fetch_add(count, std::memory_order_relaxed);
        return count;
    }
    FileRange fileRange(std::uint64_t position, std::uint64_t length) const override
    {
        return m_source->fileRange(position, length);
    }
    void countInto(std::atomic<std::uint64_t>* counter) const { m_counter.store(counter); }

private:
    SourcePtr m_source;
    mutable std::atomic<std::atomic<std::uint64_t>*> m_counter{nullptr};
};

/// An archive that comes out of a compressed stream.
class StreamedArchive final : public Archive {
public:
    StreamedArchive(ArchivePtr inner, std::string outerFormat, std::shared_ptr<const CountingSource> packed)
        : m_inner(std::move(inner))
        , m_outerFormat(std::move(outerFormat))
        , m_packed(std::move(packed))
    {
        refreshInfo();
    }
    const ArchiveInfo& info() const override { return m_info; }
    Result<void> list(EntryVisitor& visitor) override
    {
        auto result = m_inner->list(visitor);
        refreshInfo();
        return result;
    }
    Result<void> read(const ReadRequest& request, Lanes& lanes) override
    {
        m_packed->countInto(request.packedBytesRead);
        auto result = m_inner->read({request.selection, nullptr}, lanes);
        m_packed->countInto(nullptr);
        refreshInfo();
        return result;
    }

private:
    void refreshInfo()
    {
        m_info = m_inner->info();
        m_info.outerFormat = m_outerFormat;
        m_info.listsCheaply = false;
    }
    ArchivePtr m_inner;
    ArchiveInfo m_info;
    std::string m_outerFormat;
    std::shared_ptr<const CountingSource> m_packed;
};

/// "a.tgz" holds "a.tar", "a.cpio.gz" holds "a.cpio".
std::string innerName(const StreamFormatRow& row, std::string_view name)
{
    const auto extension = extensionOf(name);
    if (!hasExtension(row.extensions, extension))
        return std::string(name);
    auto stem = std::string(name.substr(0, name.size() - extension.size() - 1));
    if (extension == "cpgz")
        return stem + ".cpio";
    return extension.find('t') != std::string::npos && extension[0] == 't' ? stem + ".tar" : stem;
}

Result<std::vector<std::byte>> readHead(ByteStream& stream)
{
    std::vector<std::byte> head; // grows with what there is: most archives are small
    while (head.size() < kHeadSize) {
        const auto filled = head.size();
        head.resize(std::clamp(2 * filled, kFirstRead, kHeadSize));
        const auto count = stream.read(Bytes(head).subspan(filled));
        head.resize(filled + count.value_or(std::size_t{0}));
        if (!count && filled == 0)
            return count.error();
        if (!count || *count == 0)
            break; // a fault behind the head is met again when reading
    }
    return head;
}

/// A file of any kind may lie in these; other rows hold one kind of archive.
bool mayHoldAnyFile(const StreamFormatRow& row)
{
    return std::any_of(streamRows().begin(), streamRows().end(), [&](const auto& known) { return &known == &row; });
}

Result<ArchivePtr> openStreamed(const StreamFormatRow& row, Match outerMatch, const SourcePtr& source,
                                const OpenContext& context)
{
    auto packed = std::make_shared<const CountingSource>(source);
    const auto openFresh = [&row, packed, limits = context.limits, cancel = context.cancel] {
        StreamParams params;
        params.threads = processorCount();
        params.limits = limits;
        params.cancel = cancel;
        return row.open(packed, params);
    };
    // The stream that the head was read from serves the first pass: nothing is decoded twice.
    const auto begun = std::make_shared<StreamPtr>();
    const StreamFactory factory = [begun, openFresh]() -> Result<StreamPtr> {
        if (*begun)
            return std::move(*begun);
        return openFresh();
    };
    auto inner = context;
    inner.name = innerName(row, context.name);
    auto stream = openFresh();
    const auto head = stream ? readHead(**stream) : Result<std::vector<std::byte>>(stream.error());
    if (head)
        *begun = prependedStream(*head, *std::move(stream));
    if (head) {
        std::vector<Candidate> candidates;
        const ProbeInput input{*head, nullptr, inner.name};
        for (const auto* format : containerFormats()) {
            const auto match = format->openStream ? format->probe(input) : Match::No;
            if (match != Match::No && match != Match::Stub)
                candidates.push_back({match, hasExtension(format->extensions, extensionOf(inner.name)), format});
        }
        sortByMatch(candidates);
        for (const auto& candidate : candidates) {
            auto archive = candidate.container->openStream(factory, inner);
            if (archive)
                return ArchivePtr(std::make_unique<StreamedArchive>(*std::move(archive), row.id, packed));
            if (archive.error().code == ErrorCode::Cancelled)
                return archive.error();
        }
    } else if (head.error().code == ErrorCode::Cancelled || head.error().code == ErrorCode::LimitExceeded) {
        return head.error();
    }
    if (mayHoldAnyFile(row) && (head || outerMatch == Match::Sure))
        return openSingleStream(row, source, context);
    return Error{ErrorCode::NotAnArchive, "no archive in the stream"};
}

}

std::span<const FormatRow* const> containerFormats()
{
    static const auto rows = collectContainers();
    return rows;
}

std::span<const StreamFormatRow* const> streamFormats()
{
    static const auto rows = [] {
        std::vector<const StreamFormatRow*> result;
        result.push_back(&kRpmFormat);
        for (const auto& row : streamRows())
            result.push_back(&row);
        return result;
    }();
    return rows;
}

Result<ArchivePtr> openSource(const SourcePtr& source, const OpenContext& context)
{
    const auto head = TRY(readBlock(*source, 0, kHeadSize));
    if (head.empty())
        return Error{ErrorCode::NotAnArchive, "the file is empty"};
    const ProbeInput input{head, source.get(), context.name};
    const auto extension = extensionOf(context.name);
    std::vector<Candidate> candidates;
    collect(containerFormats(), input, extension, &Candidate::container, candidates);
    collect(streamFormats(), input, extension, &Candidate::stream, candidates);
    sortByMatch(candidates);
    std::optional<Error> firstError;
    for (const auto& candidate : candidates) {
        auto archive = guarded([&] {
            return candidate.container ? candidate.container->open(source, context)
                                       : openStreamed(*candidate.stream, candidate.match, source, context);
        });
        if (archive)
            return archive;
        const auto error = archive.error();
        if (error.code == ErrorCode::Cancelled || error.code == ErrorCode::Io || error.code == ErrorCode::PasswordNeeded
            || error.code == ErrorCode::WrongPassword)
            return error;
        if (error.code != ErrorCode::NotAnArchive && !firstError && candidate.match > Match::ByName)
            firstError = error;
    }
    return firstError.value_or(Error{ErrorCode::NotAnArchive, "no reader knows the file"});
}

}
