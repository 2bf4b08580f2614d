#include "tests/engine/extract/fake_archive.h"

#include <algorithm>
#include <mutex>
#include <thread>

namespace vantoro::test {

namespace {

struct Views {
    std::vector<ExtendedAttribute> attributes;
};

Entry entryOf(const FakeEntry& fake, std::size_t index, bool declaresSizes, Views& views)
{
    Entry entry;
    entry.index = index;
    entry.name = fake.name;
    entry.nameCharset = fake.charset;
    entry.pathStyle = fake.style;
    entry.kind = fake.kind;
    entry.linkTarget = fake.target;
    entry.mode = fake.mode;
    entry.modified = fake.modified;
    entry.isEncrypted = fake.isEncrypted;
    if (declaresSizes && fake.kind == EntryKind::File)
        entry.size = fake.size.value_or(fake.data.size() * fake.repeats + fake.hole);
    for (const auto& [name, value] : fake.attributes)
        views.attributes.push_back({name, asBytes(value)});
    entry.attributes = views.attributes;
    return entry;
}

}

FakeEntry file(std::string name, std::string data) { return {.name = std::move(name), .data = std::move(data)}; }
FakeEntry folder(std::string name) { return {.name = std::move(name), .kind = EntryKind::Folder}; }
FakeEntry link(std::string name, std::string target)
{
    return {.name = std::move(name), .kind = EntryKind::SymbolicLink, .target = std::move(target)};
}
FakeEntry hardLink(std::string name, std::string target)
{
    return {.name = std::move(name), .kind = EntryKind::HardLink, .target = std::move(target)};
}

Result<void> FakeArchive::list(EntryVisitor& visitor)
{
    ++lists;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        Views views;
        TRY(visitor.visit(entryOf(entries[i], i, declaresSizes, views)));
    }
    return listOutcome;
}

Result<void> FakeArchive::emitData(const FakeEntry& entry, std::size_t blockSize, bool usesRoom, LaneReceiver& lane)
{
    for (std::uint64_t round = 0; round < entry.repeats; ++round) {
        for (std::size_t at = 0; at < entry.data.size();) {
            auto part = std::string_view(entry.data).substr(at, blockSize);
            if (usesRoom) {
                const auto room = lane.room(std::min<std::size_t>(part.size(), 512 << 10));
                part = part.substr(0, room.size());
                std::copy_n(asBytes(part).begin(), part.size(), room.begin());
                TRY(lane.data(room.first(part.size())));
            } else {
                TRY(lane.data(asBytes(part)));
            }
            at += part.size();
        }
    }
    return entry.hole > 0 ? lane.hole(entry.hole) : Result<void>();
}

Result<void> FakeArchive::emit(std::size_t index, LaneReceiver& lane)
{
    const auto& fake = entries[index];
    if (fake.before)
        fake.before();
    Views views;
    const auto entry = entryOf(fake, index, declaresSizes, views);
    if (TRY(lane.begin(entry)) == LaneReceiver::Want::Skip)
        return {};
    const auto sent = emitData(fake, blockSize, usesRoom, lane);
    if (!sent && sent.error().code != ErrorCode::EntryRefused)
        return sent;
    return lane.end(sent ? fake.outcome : sent);
}

Result<void> FakeArchive::read(const ReadRequest& request, Lanes& lanes)
{
    ++reads;
    std::vector<std::size_t> wanted;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (!request.selection || std::binary_search(request.selection->begin(), request.selection->end(), i))
            wanted.push_back(i);
    }
    const auto used = std::min(lanesUsed, lanes.count());
    std::atomic<std::size_t> next{0};
    std::mutex mutex;
    Result<void> outcome;
    const auto work = [&](unsigned lane) {
        for (auto at = next.fetch_add(1); at < wanted.size(); at = next.fetch_add(1)) {
            if (const auto emitted = emit(wanted[at], lanes.lane(lane)); !emitted) {
                const std::lock_guard lock(mutex);
                outcome = emitted;
                next = wanted.size();
            }
        }
    };
    std::vector<std::thread> threads;
    for (unsigned lane = 1; lane < used; ++lane)
        threads.emplace_back(work, lane);
    work(0);
    for (auto& thread : threads)
        thread.join();
    TRY(outcome);
    return readOutcome;
}

std::string failure(std::string name, ErrorCode code)
{
    return std::move(name) + ":" + std::to_string(static_cast<int>(code));
}

std::vector<std::string> failures(const ExtractReport& report)
{
    std::vector<std::string> result;
    for (const auto& problem : report.problems)
        result.push_back(failure(problem.entry.name, problem.error.code));
    return result;
}

Result<ExtractReport> extractInto(const std::string& destination, Archive& archive, ExtractDelegate& delegate,
                                  ExtractOptions options, const CancelToken& cancel, std::uint64_t packedSize)
{
    options.destination = destination;
    ArchiveFacts facts;
    facts.stem = "arc";
    facts.packedSize = packedSize;
    facts.date = timespec{1'000'000'000, 0};
    return runExtraction(archive, facts, options, Ending::InDestination, delegate, cancel);
}

Result<ExtractReport> extractInto(const std::string& destination, std::vector<FakeEntry> entries,
                                  ExtractOptions options)
{
    FakeArchive archive(std::move(entries));
    RecordingDelegate delegate;
    return extractInto(destination, archive, delegate, std::move(options));
}

}
