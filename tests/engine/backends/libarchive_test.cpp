#include "engine/backends/libarchive_rows.h"
#include "engine/codecs/gzip.h"
#include "tests/support/archive_contents.h"
#include "tests/support/tools.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vantoro {

namespace {

using namespace test;

const FormatRow* rowFor(const ByteSource& source, std::string_view name)
{
    const auto head = readBlock(source, 0, 256 << 10).value_or(std::vector<std::byte>());
    const ProbeInput input{head, &source, name};
    for (const auto& row : libarchiveRows()) {
        if (row.probe(input) >= Match::Likely)
            return &row;
    }
    return nullptr;
}

ArchivePtr open(const SourcePtr& source, const OpenContext& context = {})
{
    const auto* row = rowFor(*source, context.name);
    EXPECT_NE(row, nullptr);
    return row ? row->open(source, context).value() : nullptr;
}

SourcePtr file(const TempFolder& folder, const std::string& name) { return openFileSource(folder / name).value(); }

TEST(Ar, readsMembersAndLongNames)
{
    REQUIRE_TOOL("ar");
    TempFolder folder;
    folder.write("short", "s");
    folder.write("a_name_that_is_longer_than_sixteen_bytes.txt", "long");
    ASSERT_TRUE(folder.run("ar cr lib.a short a_name_that_is_longer_than_sixteen_bytes.txt"));
    const auto contents = readAll(*open(file(folder, "lib.a")));
    ASSERT_TRUE(contents.result);
    ASSERT_EQ(contents.items.size(), 2U);
    EXPECT_EQ(contents.find("short")->data, "s");
    EXPECT_EQ(contents.find("a_name_that_is_longer_than_sixteen_bytes.txt")->data, "long");
}

TEST(Ar, cutAnywhereIsNeverASuccess)
{
    REQUIRE_TOOL("ar");
    TempFolder folder;
    folder.write("a", "abcdefghijklmnopqrstuvwxyz");
    ASSERT_TRUE(folder.run("ar cr a.a a"));
    const auto whole = folder.read("a.a");
    constexpr std::size_t kFirstHeader = 8 + 60; // an end before it looks like the end of the archive
    for (std::size_t length = kFirstHeader; length < whole.size(); ++length) {
        const auto contents = readAll(*open(memorySource(std::string_view(whole).substr(0, length))));
        ASSERT_TRUE(contents.items.size() == 1 || !contents.result) << length;
        for (const auto& item : contents.items)
            EXPECT_TRUE(!item.outcome || item.data == "abcdefghijklmnopqrstuvwxyz") << length;
    }
}

TEST(Ar, refusedDataDropOneEntryOnly)
{
    REQUIRE_TOOL("ar");
    TempFolder folder;
    folder.write("large", std::string(700'000, 'x'));
    folder.write("small", "small");
    ASSERT_TRUE(folder.run("ar cr a.a large small"));
    const auto archive = open(file(folder, "a.a"));
    CollectingLanes lanes;
    lanes.refuseAfter = 100;
    ASSERT_TRUE(archive->read({}, lanes));
    ASSERT_EQ(lanes.items.size(), 2U);
    EXPECT_EQ(lanes.items[0].outcome.error().code, ErrorCode::EntryRefused);
    EXPECT_EQ(lanes.items[1].data, "small");
}

TEST(Xar, keepsLinksModesTimesAndUnicodeNames)
{
    REQUIRE_TOOL("bsdtar");
    TempFolder folder;
    folder.write("tree/Grüße 文.txt", "text");
    folder.write("tree/one", std::string(500'000, 'o'));
    ASSERT_TRUE(folder.run("ln tree/one tree/two && ln -s ../x tree/link && chmod 751 tree/one && "
                           "touch -d @1234567890 tree/one && LC_ALL=C.UTF-8 bsdtar --format xar -cf t.xar tree"));
    const auto contents = readAll(*open(file(folder, "t.xar")));
    ASSERT_TRUE(contents.result);
    EXPECT_EQ(contents.find("tree/Grüße 文.txt")->data, "text");
    EXPECT_EQ(contents.find("tree/Grüße 文.txt")->nameCharset, kCharsetUtf8);
    EXPECT_EQ(contents.find("tree/link")->linkTarget, "../x");
    EXPECT_EQ(contents.find("tree")->kind, EntryKind::Folder);
    const auto* one = contents.find("tree/one");
    const auto* two = contents.find("tree/two");
    if (one->kind == EntryKind::HardLink)
        std::swap(one, two);
    EXPECT_EQ(one->data.size(), 500'000U);
    EXPECT_EQ(one->mode.value() & 0777, 0751U);
    EXPECT_EQ(one->modified.seconds, 1234567890);
    EXPECT_EQ(two->kind, EntryKind::HardLink);
    EXPECT_EQ(two->linkTarget, one->name);
}

TEST(Libarchive, aSelectionFollowsTheNumbersOfTheListing)
{
    REQUIRE_TOOL("ar");
    TempFolder folder;
    for (const char* name : {"a", "b", "c"})
        folder.write(name, name);
    ASSERT_TRUE(folder.run("ar cr x.a a b c"));
    const auto source = file(folder, "x.a");
    const StreamFactory factory = [&]() -> Result<StreamPtr> { return windowStream(source); };
    const auto archive = libarchiveRows().front().openStream(factory, {}).value();
    const auto index = listAll(*archive).find("c")->index;
    const auto contents = readAll(*archive, std::vector{index});
    ASSERT_EQ(contents.items.size(), 1U);
    EXPECT_EQ(contents.items[0].data, "c");
}

TEST(Libarchive, stopsWhenAsked)
{
    REQUIRE_TOOL("ar");
    TempFolder folder;
    folder.write("a", "a");
    ASSERT_TRUE(folder.run("ar cr a.a a"));
    OpenContext context;
    const auto archive = open(file(folder, "a.a"), context);
    context.cancel.cancel();
    EXPECT_EQ(readAll(*archive).result.error().code, ErrorCode::Cancelled);
    EXPECT_EQ(listAll(*archive).result.error().code, ErrorCode::Cancelled);
}

// libarchive would ask a skip that fails again, for ever.
TEST(Libarchive, anErrorOrAStopWhileSkippingEndsTheListing)
{
    REQUIRE_TOOL("ar");
    TempFolder folder;
    folder.write("large", std::string(3 << 20, 'x'));
    ASSERT_TRUE(folder.run("ar cr a.a large"));
    const auto source = file(folder, "a.a");
    OpenContext context;
    struct FailingStream final : ByteStream {
        FailingStream(StreamPtr inner, std::function<Result<void>()> answer)
            : m_inner(std::move(inner))
            , m_answer(std::move(answer))
        {
        }
        Result<std::size_t> read(Bytes into) override { return m_inner->read(into); }
        Result<std::uint64_t> skip(std::uint64_t count) override
        {
            TRY(m_answer());
            return m_inner->skip(count);
        }
        StreamPtr m_inner;
        std::function<Result<void>()> m_answer;
    };
    const auto resultOf = [&](std::function<Result<void>()> answer) {
        const auto open = [&]() -> Result<StreamPtr> {
            return StreamPtr(std::make_unique<FailingStream>(windowStream(source), answer));
        };
        return listAll(*libarchiveRows().front().openStream(open, context).value()).result;
    };
    EXPECT_TRUE(resultOf([] { return Result<void>(); }));
    EXPECT_EQ(resultOf([]() -> Result<void> {
                  return Error{ErrorCode::Corrupt, "test"};
              })
                  .error()
                  .code,
              ErrorCode::Corrupt);
    EXPECT_EQ(resultOf([&]() -> Result<void> {
                  context.cancel.cancel();
                  return {};
              })
                  .error()
                  .code,
              ErrorCode::Cancelled);
}

TEST(Libarchive, reportsAFailingMedium)
{
    class BrokenSource final : public ByteSource {
    public:
        std::uint64_t size() const override { return 1 << 20; }
        Result<std::size_t> readAt(std::uint64_t, Bytes) const override { return Error{ErrorCode::Io, "test", 5}; }
    };
    const auto& ar = libarchiveRows().front();
    const auto archive = ar.open(std::make_shared<BrokenSource>(), {}).value();
    EXPECT_EQ(listAll(*archive).result.error().code, ErrorCode::Io);
}

// The checksum of a gzip around the archive stands behind its end: it must be looked at, and condemns what it covers.
TEST(Libarchive, aChecksumBehindTheArchiveIsVerified)
{
    REQUIRE_TOOL("ar");
    TempFolder folder;
    folder.write("large", std::string(3 << 20, 'x'));
    ASSERT_TRUE(folder.run("ar cr a.a large && gzip a.a"));
    auto packed = folder.read("a.a.gz");
    packed[packed.size() - 8] ^= 1;
    const StreamFactory factory = [&]() -> Result<StreamPtr> { return openGzip(windowStream(memorySource(packed))); };
    const auto archive = libarchiveRows().front().openStream(factory, {}).value();
    EXPECT_EQ(readAll(*archive).items.size(), 1U);
    EXPECT_EQ(archive->info().damage.value().code, ErrorCode::ChecksumMismatch);
    EXPECT_EQ(archive->info().firstDoubtfulEntry, 0U);
}

TEST(Libarchive, probesRefuseWhatOnlyStartsAlike)
{
    for (std::string_view text : {"!<arch>", "WARC archive", "xar"})
        EXPECT_EQ(rowFor(*memorySource(text), "x"), nullptr) << text;
}

}

}
