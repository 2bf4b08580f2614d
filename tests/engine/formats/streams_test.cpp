#include "engine/formats/single_stream.h"
#include "engine/formats/streams.h"
#include "tests/support/archive_contents.h"
#include "tests/support/packers.h"

#include <gtest/gtest.h>

using namespace vantoro;
using namespace vantoro::test;

namespace {

const StreamFormatRow& row(std::string_view id)
{
    for (const auto& candidate : streamRows()) {
        if (candidate.id == id)
            return candidate;
    }
    ADD_FAILURE() << "no row " << id;
    return streamRows().front();
}

/// Ids of the rows that take the head, with their match.
std::string matches(const std::string& head, std::string_view name)
{
    std::string found;
    const auto source = memorySource(head);
    for (const auto& candidate : streamRows()) {
        const auto match = candidate.probe({asBytes(head), source.get(), name});
        if (match != Match::No)
            found += std::string(candidate.id) + (match == Match::Sure ? "! " : match == Match::Likely ? "? " : "~ ");
    }
    return found;
}

TEST(StreamRows, knowEachOtherApartByContent)
{
    const auto data = packers::sampleData(2000);
    EXPECT_EQ(matches(packers::gzip(data), "x"), "gz! ");
    EXPECT_EQ(matches(packers::bzip2(data), "x"), "bz2! ");
    EXPECT_EQ(matches(packers::xz(data), "x"), "xz! ");
    EXPECT_EQ(matches(packers::zstd(data), "x"), "zst! ");
    EXPECT_EQ(matches(packers::lz4(data), "x"), "lz4! ");
    EXPECT_EQ(matches(packers::lzip(data), "x"), "lz! ");
    EXPECT_EQ(matches(packers::compress(data), "x"), "z! ");
    EXPECT_EQ(matches(packers::lzmaAlone(data), "x"), "lzma? ");
    EXPECT_EQ(matches(packers::zlib(data), "x.z"), "zlib~ ");
    EXPECT_EQ(matches(packers::brotli(data), "x.tar.BR"), "br~ ");
    const std::string skippable("\x50\x2A\x4D\x18\x03\0\0\0abc", 11);
    EXPECT_EQ(matches(skippable + packers::zstd(data), "x"), "zst! ");
    EXPECT_EQ(matches(skippable + packers::lz4(data), "x"), "lz4! ");
}

TEST(StreamRows, areNotTakenInByOtherFiles)
{
    EXPECT_EQ(matches(std::string(5000, '\0'), "zeros.br"), "");
    EXPECT_EQ(matches("plain text, whatever it is called\n", "notes.z"), "");
    EXPECT_EQ(matches("]\0\0", "short.lzma"), "");
    EXPECT_EQ(matches("", "empty.gz"), "");
}

Contents readSingle(const char* id, const std::string& packed, const std::string& name, Archive*& archive,
                    ArchivePtr& owner)
{
    OpenContext context;
    context.name = name;
    owner = *openSingleStream(row(id), memorySource(packed), context);
    archive = owner.get();
    return readAll(*owner);
}

TEST(SingleStream, isNamedByItsHeaderOrElseByTheFile)
{
    const auto data = packers::sampleData(300'000);
    Archive* archive = nullptr;
    ArchivePtr owner;
    const auto stored = readSingle("gz", packers::gzip(data, {.name = "dir/stored.txt", .modified = 1'000'000'000}),
                                   "other.gz", archive, owner);
    ASSERT_EQ(stored.items.size(), 1U);
    EXPECT_EQ(stored.items[0].name, "stored.txt");
    EXPECT_EQ(stored.items[0].modified.seconds, 1'000'000'000);
    EXPECT_FALSE(stored.items[0].size) << "the length in the trailer is modulo 4 GiB and of the last member";
    EXPECT_TRUE(stored.items[0].data == data);
    const auto unnamed = readSingle("gz", packers::gzip(data), "letter.txt.GZ", archive, owner);
    EXPECT_EQ(unnamed.items[0].name, "letter.txt");
    EXPECT_FALSE(unnamed.items[0].modified.isSet);
    const auto sized = readSingle("xz", packers::xz(data), "letter", archive, owner);
    EXPECT_EQ(sized.items[0].name, "letter");
    EXPECT_EQ(sized.items[0].size, data.size());
    EXPECT_TRUE(sized.items[0].outcome);
}

TEST(SingleStream, isDamagedWhenItsStreamIs)
{
    const auto data = packers::sampleData(300'000);
    Archive* archive = nullptr;
    ArchivePtr owner;
    auto packed = packers::gzip(data);
    packed[packed.size() - 7] ^= 1;
    const auto damaged = readSingle("gz", packed, "a.gz", archive, owner);
    ASSERT_FALSE(damaged.items[0].outcome);
    EXPECT_EQ(damaged.items[0].outcome.error().code, ErrorCode::ChecksumMismatch);
    const auto signedFile = readSingle("gz", packers::gzip(data) + "signature", "a.gz", archive, owner);
    EXPECT_TRUE(signedFile.items[0].outcome) << "what was packed is whole";
    ASSERT_TRUE(archive->info().damage);
    EXPECT_EQ(archive->info().damage->code, ErrorCode::TrailingData);
}

TEST(SingleStream, countsWhatItReads)
{
    const auto packed = packers::zstd(packers::sampleData(1'000'000));
    OpenContext context;
    context.name = "a.zst";
    auto archive = *openSingleStream(row("zst"), memorySource(packed), context);
    CollectingLanes lanes;
    std::atomic<std::uint64_t> counter = 0;
    ReadRequest request;
    request.packedBytesRead = &counter;
    ASSERT_TRUE(archive->read(request, lanes));
    EXPECT_EQ(counter.load(), packed.size());
}

}
