#include "engine/formats/cpio.h"

#include "engine/codecs/gzip.h"
#include "tests/support/archive_contents.h"
#include "tests/support/tools.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vantoro {

namespace {

using namespace test;

SourcePtr file(const TempFolder& folder, const std::string& name) { return openFileSource(folder / name).value(); }

Match probe(const SourcePtr& source)
{
    const auto head = readBlock(*source, 0, 256 << 10).value();
    return kCpioFormat.probe({head, source.get(), ""});
}

ArchivePtr openCpio(const SourcePtr& source)
{
    EXPECT_GE(probe(source), Match::Likely);
    return kCpioFormat.open(source, {}).value();
}

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
    const auto archive = openCpio(source);
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
    const auto row = &kCpioFormat;
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
    const auto contents = readAll(*openCpio(file(folder, "e.cpio")));
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
    for (std::size_t length = 112; length < trailer; ++length) {
        const auto archive = openCpio(memorySource(std::string_view(whole).substr(0, length)));
        const auto contents = readAll(*archive);
        EXPECT_TRUE(!contents.result || archive->info().damage) << length;
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
    const auto archive = openCpio(file(folder, "a.cpio"));
    CollectingLanes lanes;
    lanes.refuseAfter = 100;
    ASSERT_TRUE(archive->read({}, lanes));
    ASSERT_EQ(lanes.items.size(), 2U);
    EXPECT_EQ(lanes.items[0].outcome.error().code, ErrorCode::EntryRefused);
    EXPECT_TRUE(lanes.items[1].outcome);
    EXPECT_EQ(lanes.items[1].data, "the same bytes\n");
}

// The checksum of a gzip around the archive stands behind its trailer: it must be looked at, and condemns what it
// covers.
TEST(Cpio, aChecksumBehindTheArchiveIsVerified)
{
    REQUIRE_TOOL("cpio");
    TempFolder folder;
    makeTree(folder);
    ASSERT_TRUE(folder.run("find tree -depth | cpio -o -H newc | gzip > a.cpio.gz"));
    const auto readFrom = [&](const std::string& bytes, std::optional<std::uint64_t>* doubtful) {
        const StreamFactory factory
            = [&]() -> Result<StreamPtr> { return openGzip(windowStream(memorySource(bytes))); };
        const auto archive = kCpioFormat.openStream(factory, {}).value();
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

// Any name of a file may be chosen alone: the data come with it.
TEST(Cpio, aHardLinkChosenAloneBringsTheData)
{
    REQUIRE_TOOL("cpio");
    TempFolder folder;
    makeTree(folder);
    for (const std::string kind : {"newc", "odc"}) {
        ASSERT_TRUE(folder.run("find tree -depth | cpio -o -H " + kind + " > l.cpio"));
        const auto archive = openCpio(file(folder, "l.cpio"));
        for (const auto& item : listAll(*archive).items) {
            if (item.kind != EntryKind::HardLink)
                continue;
            const auto chosen = readAll(*archive, std::vector{item.index});
            ASSERT_EQ(chosen.items.size(), 1U);
            EXPECT_EQ(chosen.items[0].name, item.name);
            EXPECT_EQ(chosen.items[0].kind, EntryKind::File);
            EXPECT_EQ(chosen.items[0].data, "the same bytes\n") << kind;
        }
    }
}

TEST(Cpio, sumsAreVerifiedAndCondemnOneEntry)
{
    REQUIRE_TOOL("cpio");
    TempFolder folder;
    folder.write("a", "first");
    folder.write("b", "second");
    ASSERT_TRUE(folder.run("printf 'a\\nb\\n' | cpio -o -H crc > s.cpio"));
    auto bytes = folder.read("s.cpio");
    bytes[bytes.find("first")] = 'F';
    const auto contents = readAll(*openCpio(memorySource(bytes)));
    EXPECT_TRUE(contents.result);
    EXPECT_EQ(contents.find("a")->outcome.error().code, ErrorCode::ChecksumMismatch);
    EXPECT_EQ(contents.find("b")->data, "second");
}

// Two files whose inode numbers agree only because the old headers cut them are two files.
TEST(Cpio, equalNumbersAloneMakeNoLink)
{
    const auto member = [](const std::string& name, const std::string& data, const std::string& time) {
        char header[77];
        // device, inode, mode, owner, group, links, device again
        std::snprintf(header, sizeof header,
                      "070707"
                      "000001"
                      "000005"
                      "100644"
                      "000000"
                      "000000"
                      "000002"
                      "000000"
                      "%s%06zo%011zo",
                      time.c_str(), name.size() + 1, data.size());
        return header + name + std::string(1, '\0') + data;
    };
    const auto archive = member("a", "one", "00000000001") + member("b", "two", "00000000002")
        + member("TRAILER!!!", "", "00000000000");
    const auto contents = readAll(*openCpio(memorySource(archive)));
    ASSERT_EQ(contents.items.size(), 2U);
    EXPECT_EQ(contents.items[0].data, "one");
    EXPECT_EQ(contents.items[1].kind, EntryKind::File);
    EXPECT_EQ(contents.items[1].data, "two");
}

TEST(Cpio, probesRefuseWhatOnlyStartsAlike)
{
    for (std::string_view text : {"070701 is only text, and so are the bytes that come after it in this line of it",
                                  "\x71\xC7 something else entirely, with no name"})
        EXPECT_EQ(probe(memorySource(text)), Match::No) << text;
}

}

}
