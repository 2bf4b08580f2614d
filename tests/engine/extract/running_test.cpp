#include "tests/engine/extract/fake_archive.h"
#include "tests/engine/extract/temp_folder.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <random>
#include <thread>

namespace vantoro::test {

namespace {

using testing::IsEmpty;

std::vector<FakeEntry> manyFiles(unsigned count)
{
    std::vector<FakeEntry> entries;
    std::minstd_rand random(7);
    for (unsigned i = 0; i < count; ++i) {
        // Mostly small, some of many blocks, some empty.
        const auto size = i % 50 == 0 ? random() % 3'000'000 : random() % 3000;
        std::string data(i % 17 == 0 ? 0 : size, static_cast<char>('a' + i % 26));
        if (data.size() >= 4)
            std::memcpy(data.data(), &i, 4);
        entries.push_back(file("d" + std::to_string(i % 7) + "/f" + std::to_string(i), std::move(data)));
    }
    return entries;
}

void expectAll(const std::string& folder, const std::vector<FakeEntry>& entries)
{
    for (const auto& entry : entries)
        ASSERT_EQ(readFile(folder + "/" + entry.name), entry.data) << entry.name;
}

}

TEST(Running, writesTheSameOverEveryWay)
{
    const auto entries = manyFiles(600);
    for (const unsigned lanes : {1U, 2U, 5U}) {
        for (const bool usesRoom : {true, false}) {
            const TempFolder destination;
            FakeArchive archive(entries);
            archive.facts.decodesElsewhere = !usesRoom;
            archive.lanesUsed = lanes;
            archive.usesRoom = usesRoom;
            archive.blockSize = usesRoom ? 300'000 : 2'000'000;
            RecordingDelegate delegate;
            const auto report = extractInto(destination.path(), archive, delegate, {.lanes = lanes}, {}, 1 << 28);
            ASSERT_TRUE(report);
            expectAll(destination / "arc", entries);
            EXPECT_EQ(report->entries, entries.size());
            EXPECT_EQ(delegate.told.size(), entries.size());
            EXPECT_EQ(delegate.last.entries, entries.size());
            EXPECT_EQ(delegate.last.fraction(), 1.0);
            if (lanes == 1) {
                EXPECT_EQ(delegate.told.back(), entries.back().name) << "in order";
            }
        }
    }
}

TEST(Running, callsTheDelegateOnTheCallersThreadAndNotTooOften)
{
    class Watching final : public RecordingDelegate {
    public:
        void willExtract(const EntryNote& note) override
        {
            check();
            RecordingDelegate::willExtract(note);
        }
        void progressed(const ProgressNote& note) override
        {
            check();
            RecordingDelegate::progressed(note);
        }
        bool entryFailed(const EntryProblem& problem) override
        {
            check();
            return RecordingDelegate::entryFailed(problem);
        }
        void check() const { EXPECT_EQ(std::this_thread::get_id(), caller); }
        std::thread::id caller = std::this_thread::get_id();
    };
    const TempFolder destination;
    auto entries = manyFiles(300);
    for (unsigned i = 0; i < entries.size(); i += 10)
        entries[i].outcome = Error{ErrorCode::Corrupt, ""};
    FakeArchive archive(entries);
    archive.lanesUsed = 3;
    Watching delegate;
    const auto begin = std::chrono::steady_clock::now();
    const auto report = extractInto(destination.path(), archive, delegate, {.lanes = 3});
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    ASSERT_TRUE(report);
    EXPECT_EQ(delegate.problems.size(), 30U);
    EXPECT_LE(delegate.progressCalls, 20 * took.count() + 2);
}

TEST(Running, stopsWhereverItIsCancelledAndLeavesNothing)
{
    enum class At { Before, Begin, Data, Problem, End };
    for (const auto at : {At::Before, At::Begin, At::Data, At::Problem, At::End}) {
        for (const auto mode : {FolderMode::Auto, FolderMode::Never}) {
            const TempFolder destination;
            const CancelToken cancel;
            auto big = file("big", std::string(100'000, 'b'));
            big.repeats = at == At::Data ? 1'000'000 : 1; // 100 GB: only the stop ends it
            auto torn = file("torn");
            torn.outcome = Error{ErrorCode::Corrupt, ""};
            std::vector<FakeEntry> entries{folder("d"), big, torn, link("l", "d")};
            std::thread canceller;
            if (at == At::Before)
                cancel.cancel();
            else if (at == At::Begin)
                entries[1].before = [&] { cancel.cancel(); };
            else if (at == At::Data)
                entries[1].before = [&] {
                    canceller = std::thread([&] {
                        std::this_thread::sleep_for(std::chrono::milliseconds(50));
                        cancel.cancel();
                    });
                };
            else if (at == At::End)
                entries.push_back({.name = "last", .before = [&] { cancel.cancel(); }});
            FakeArchive archive(entries);
            archive.declaresSizes = false;
            RecordingDelegate delegate;
            delegate.goesOn = at != At::Problem;
            const auto begin = std::chrono::steady_clock::now();
            const auto report = extractInto(destination.path(), archive, delegate, {.folder = mode}, cancel, 1 << 30);
            const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
            if (canceller.joinable())
                canceller.join();
            ASSERT_FALSE(report) << static_cast<int>(at);
            EXPECT_EQ(report.error().code, ErrorCode::Cancelled);
            EXPECT_LT(took.count(), 1.5);
            EXPECT_THAT(treeOf(destination.path()), IsEmpty()) << static_cast<int>(at);
        }
    }
}

TEST(Running, twoJobsInOneDestinationDoNotNoticeEachOther)
{
    const TempFolder destination;
    const auto entries = manyFiles(100);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            FakeArchive archive(entries);
            RecordingDelegate delegate;
            EXPECT_TRUE(extractInto(destination.path(), archive, delegate, {.folder = FolderMode::Always}));
        });
    }
    for (auto& thread : threads)
        thread.join();
    for (const std::string name : {"arc", "arc 1", "arc 2", "arc 3"})
        expectAll(destination / name, entries);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(destination.path()), {}), 4);
}

TEST(Running, reportsAReaderThatStopsInTheMiddle)
{
    const TempFolder destination;
    class Stopping final : public Archive {
    public:
        const ArchiveInfo& info() const override { return facts; }
        Result<void> list(EntryVisitor&) override { return {}; }
        Result<void> read(const ReadRequest&, Lanes& lanes) override
        {
            auto& lane = lanes.lane(0);
            for (const std::string name : {"whole", "whole2", "cut"}) {
                Entry entry;
                entry.name = name;
                entry.nameCharset = kCharsetUtf8;
                TRY(lane.begin(entry));
                TRY(lane.data(asBytes("data")));
                if (name != "cut")
                    TRY(lane.end({}));
            }
            return Error{ErrorCode::DecoderStopped, "died"};
        }
        ArchiveInfo facts;
    } archive;
    RecordingDelegate delegate;
    const auto report = extractInto(destination.path(), archive, delegate);
    ASSERT_TRUE(report);
    EXPECT_THAT(failures(*report), testing::ElementsAre(failure("cut", ErrorCode::DecoderStopped)));
    EXPECT_EQ(treeOf(destination / "arc").size(), 2U);
}

}
