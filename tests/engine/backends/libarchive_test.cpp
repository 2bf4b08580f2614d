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

void makeTree(const TempFolder& folder)
{
    folder.write("tree/one", "the same bytes\n");
    folder.write("tree/sub/large", std::string(700'000, 'x') + "end");
    folder.write("tree/empty", "");
    ASSERT_TRUE(folder.run("ln tree/one tree/two && ln tree/one tree/three && ln -s ../sub tree/link && "
                           "chmod 640 tree/one && touch -d @1234567890 tree/one"));
}

class CpioKinds : public testing::TestWithParam<const char*> {};

// Whatever kind of cpio: names, data, links, modes and times come out; of several hard-linked names one carries the
// data, also where the archive stores them with the last one.
TEST_P(CpioKinds, keepsDataLinksAndModes)
{
    REQUIRE_TOOL("cpio");
    TempFolder folder;
    makeTree(folder);
    ASSERT_TRUE(folder.run(std::string("find tree -depth | cpio -o -H ") + GetParam() + " > a.cpio"));
    const auto source = file(folder, "a.cpio");
    const auto archive = open(source);
    const auto contents = readAll(*archive);
    ASSERT_TRUE(contents.result);
    EXPECT_EQ(contents.find("tree/sub/large")->data, std::string(700'000, 'x') + "end");
    EXPECT_EQ(contents.find("tree/sub")->kind, EntryKind::Folder);
    EXPECT_EQ(contents.find("tree/link")->linkTarget, "../sub");
    unsigned carriers = 0;
    for (const char* name : {"tree/one", "tree/two", "tree/three"}) {
        const auto* item = contents.find(name);
        ASSERT_NE(item, nullptr) << name;
        EXPECT_EQ(item->mode.value() & 0777, 0640U);
        EXPECT_EQ(item->modified.seconds, 1234567890);
        if (item->kind == EntryKind::File) {
            ++carriers;
            EXPECT_EQ(item->data, "the same bytes\n");
        } else {
            EXPECT_EQ(contents.find(item->linkTarget)->kind, EntryKind::File);
            EXPECT_LT(contents.find(item->linkTarget)->index, item->index);
        }
    }
    EXPECT_EQ(carriers, 1U);
    // A selection follows the numbers of the listing, and a stream gives what the file gives.
    const auto listed = listAll(*archive);
    ASSERT_EQ(listed.items.size(), contents.items.size());
    const auto large = contents.find("tree/sub/large")->index;
    const auto row = rowFor(*source, "");
    const auto streamed = row->openStream([&]() -> Result<StreamPtr> { return windowStream(source); }, {}).value();
    const auto chosen = readAll(*streamed, std::vector<std::uint64_t>{large});
    ASSERT_EQ(chosen.items.size(), 1U);
    EXPECT_EQ(chosen.items[0].name, "tree/sub/large");
    EXPECT_EQ(chosen.items[0].data.size(), 700'003U);
}

INSTANTIATE_TEST_SUITE_P(All, CpioKinds, testing::Values("newc", "crc", "odc", "bin"));

TEST(Cpio, linkedNamesOfAnEmptyFileAreNotLost)
{
    REQUIRE_TOOL("cpio");
    TempFolder folder;
    folder.write("a", "");
    ASSERT_TRUE(folder.run("ln a b && printf 'a\\nb\\n' | cpio -o -H newc > e.cpio"));
    const auto contents = readAll(*open(file(folder, "e.cpio")));
    ASSERT_EQ(contents.items.size(), 2U);
    EXPECT_EQ(contents.items[0].kind, EntryKind::File);
    EXPECT_EQ(contents.items[1].kind, EntryKind::HardLink);
    EXPECT_EQ(contents.items[1].linkTarget, contents.items[0].name);
}

TEST(Cpio, cutAnywhereIsNeverASuccess)
{
    REQUIRE_TOOL("cpio");
    TempFolder folder;
    folder.write("a", "abcdefghijklmnopqrstuvwxyz");
    ASSERT_TRUE(folder.run("echo a | cpio -o -H newc > a.cpio"));
    const auto whole = folder.read("a.cpio");
    const auto trailer = whole.find("TRAILER!!!");
    for (std::size_t length = 110; length < trailer; ++length) {
        const auto archive = open(memorySource(std::string_view(whole).substr(0, length)));
        const auto contents = readAll(*archive);
        EXPECT_FALSE(contents.result) << length;
        for (const auto& item : contents.items)
            EXPECT_TRUE(!item.outcome || item.data == "abcdefghijklmnopqrstuvwxyz") << length;
    }
}

TEST(Cpio, refusedDataDropOneEntryOnly)
{
    REQUIRE_TOOL("cpio");
    TempFolder folder;
    makeTree(folder);
    ASSERT_TRUE(folder.run("printf 'tree/sub/large\\ntree/one\\n' | cpio -o -H odc > a.cpio"));
    const auto archive = open(file(folder, "a.cpio"));
    CollectingLanes lanes;
    lanes.refuseAfter = 100;
    ASSERT_TRUE(archive->read({}, lanes));
    ASSERT_EQ(lanes.items.size(), 2U);
    EXPECT_EQ(lanes.items[0].outcome.error().code, ErrorCode::EntryRefused);
    EXPECT_TRUE(lanes.items[1].outcome);
    EXPECT_EQ(lanes.items[1].data, "the same bytes\n");
}

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

TEST(Libarchive, stopsWhenAsked)
{
    REQUIRE_TOOL("cpio");
    TempFolder folder;
    makeTree(folder);
    ASSERT_TRUE(folder.run("find tree -depth | cpio -o -H newc > a.cpio"));
    OpenContext context;
    const auto archive = open(file(folder, "a.cpio"), context);
    context.cancel.cancel();
    EXPECT_EQ(readAll(*archive).result.error().code, ErrorCode::Cancelled);
    EXPECT_EQ(listAll(*archive).result.error().code, ErrorCode::Cancelled);
}

// libarchive would ask a skip that fails again, for ever.
TEST(Libarchive, anErrorOrAStopWhileSkippingEndsTheListing)
{
    REQUIRE_TOOL("cpio");
    TempFolder folder;
    folder.write("large", std::string(3 << 20, 'x'));
    ASSERT_TRUE(folder.run("echo large | cpio -o -H newc > a.cpio"));
    const auto source = file(folder, "a.cpio");
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
    const auto& cpio = libarchiveRows().front();
    const auto archive = cpio.open(std::make_shared<BrokenSource>(), {}).value();
    EXPECT_EQ(listAll(*archive).result.error().code, ErrorCode::Io);
}

// The checksum of a gzip around the archive stands behind its trailer: it must be looked at, and condemns what it
// covers.
TEST(Libarchive, aChecksumBehindTheArchiveIsVerified)
{
    REQUIRE_TOOL("cpio");
    TempFolder folder;
    makeTree(folder);
    ASSERT_TRUE(folder.run("find tree -depth | cpio -o -H newc | gzip > a.cpio.gz"));
    const auto readFrom = [&](const std::string& bytes, std::optional<std::uint64_t>* doubtful) {
        const StreamFactory factory
            = [&]() -> Result<StreamPtr> { return openGzip(windowStream(memorySource(bytes))); };
        const auto archive = libarchiveRows().front().openStream(factory, {}).value();
        EXPECT_TRUE(readAll(*archive).result);
        *doubtful = archive->info().firstDoubtfulEntry;
        return archive->info().damage;
    };
    auto packed = folder.read("a.cpio.gz");
    std::optional<std::uint64_t> doubtful;
    EXPECT_FALSE(readFrom(packed, &doubtful));
    EXPECT_FALSE(doubtful);
    packed[packed.size() - 8] ^= 1;
    EXPECT_EQ(readFrom(packed, &doubtful).value().code, ErrorCode::ChecksumMismatch);
    EXPECT_EQ(doubtful, 0U);
}

TEST(Libarchive, probesRefuseWhatOnlyStartsAlike)
{
    for (std::string_view text : {"070701 is only text, and so are the bytes that come after it in this line of it",
                                  "\x71\xC7 something else entirely, with no name", "!<arch>", "WARC archive"})
        EXPECT_EQ(rowFor(*memorySource(text), "x"), nullptr) << text;
}

}

}
