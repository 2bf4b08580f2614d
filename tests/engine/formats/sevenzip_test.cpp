// Our reader of 7z, held against 7-Zip's: what one lists and decodes the other must, too.
#include "engine/formats/sevenzip/sevenzip.h"

#include "engine/backends/sevenzip_library.h"
#include "engine/backends/sevenzip_rows.h"
#include "engine/crypto/crc32.h"
#include "tests/support/archive_contents.h"
#include "tests/support/mixed_data.h"
#include "tests/support/tools.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace vantoro {

namespace {

using namespace test;

Result<ArchivePtr> openOurs(const std::string& bytes, const OpenContext& context = {})
{
    return kSevenZipFormat.open(memorySource(bytes), context);
}

void expectSameEntries(const Contents& ours, const Contents& theirs)
{
    ASSERT_TRUE(ours.result && theirs.result);
    ASSERT_EQ(ours.items.size(), theirs.items.size());
    for (const auto& theirItem : theirs.items) {
        const auto found = std::find_if(ours.items.begin(), ours.items.end(),
                                        [&](const auto& item) { return item.index == theirItem.index; });
        ASSERT_NE(found, ours.items.end()) << theirItem.name;
        EXPECT_EQ(found->name, theirItem.name);
        EXPECT_EQ(found->kind, theirItem.kind) << theirItem.name;
        EXPECT_EQ(found->size, theirItem.size) << theirItem.name;
        EXPECT_EQ(found->mode, theirItem.mode) << theirItem.name;
        EXPECT_EQ(found->method, theirItem.method) << theirItem.name;
        EXPECT_EQ(found->modified.seconds, theirItem.modified.seconds) << theirItem.name;
        EXPECT_EQ(found->modified.nanoseconds, theirItem.modified.nanoseconds) << theirItem.name;
        EXPECT_TRUE(found->data == theirItem.data) << theirItem.name;
        EXPECT_EQ(found->outcome.has_value(), theirItem.outcome.has_value()) << theirItem.name;
    }
}

class SevenZipFormat : public testing::Test {
protected:
    void SetUp() override
    {
        REQUIRE_TOOL("7zz");
        folder.write("in/a.txt", mixedData(120'000, 1));
        folder.write("in/b.bin", mixedData(300'000, 2));
        folder.write("in/d\xC3\xA4r/\xE2\x82\xAC", mixedData(5'000, 3));
        folder.write("in/empty", "");
        ASSERT_TRUE(folder.run("mkdir in/folder; ln -s a.txt in/link; chmod 741 in/b.bin"));
    }
    std::string pack(const std::string& options) const
    {
        EXPECT_TRUE(folder.run("rm -f x.7z; cd in; 7zz a -snl " + options + " ../x.7z .")) << options;
        return folder.read("x.7z");
    }

    TempFolder folder;
};

TEST_F(SevenZipFormat, saysWhatTheLibrarySays)
{
    if (const auto loaded = preloadSevenZip(); !loaded)
        GTEST_SKIP() << loaded.error().what;
    for (const auto* options : {"-mf=off", "-mf=off -ms=off", "-m0=LZMA:d=100k:lc=4:pb=1 -mhc=off", "-m0=Copy",
                                "-m0=BCJ -m1=LZMA2", "-m0=Delta:4 -m1=LZMA", "-m0=ARM64 -m1=LZMA2 -mtc -mta"}) {
        SCOPED_TRACE(options);
        const auto bytes = pack(options);
        const auto ours = openOurs(bytes);
        ASSERT_TRUE(ours) << ours.error().what;
        const auto rows = sevenZipRows();
        const auto row
            = std::find_if(rows.begin(), rows.end(), [](const auto& r) { return r.id == std::string("7z"); });
        ASSERT_NE(row, rows.end());
        const auto theirs = row->open(memorySource(bytes), {});
        ASSERT_TRUE(theirs);
        EXPECT_EQ((*ours)->info().isSolid, (*theirs)->info().isSolid);
        expectSameEntries(listAll(**ours), listAll(**theirs));
        expectSameEntries(readAll(**ours), readAll(**theirs));
        for (std::uint64_t i = 0; i < 7; ++i)
            expectSameEntries(readAll(**ours, std::vector{i}), readAll(**theirs, std::vector{i}));
    }
}

TEST_F(SevenZipFormat, leavesToTheLibraryWhatItCannotRead)
{
    for (const auto* options : {"-mf=off -psecret", "-mf=off -psecret -mhe", "-m0=PPMd", "-m0=BCJ2 -m1=LZMA:d=19",
                                "-m0=Deflate", "-m0=BZip2"}) {
        const auto opened = openOurs(pack(options));
        ASSERT_FALSE(opened) << options;
        EXPECT_EQ(opened.error().code, ErrorCode::NotAnArchive) << options;
    }
    const auto bytes = pack("-mf=off");
    EXPECT_FALSE(openOurs(bytes + "more"));
    EXPECT_FALSE(openOurs(bytes.substr(0, bytes.size() - 1)));
    EXPECT_FALSE(openOurs(bytes.substr(0, 31)));
}

TEST_F(SevenZipFormat, deliversBlocksOnSeveralLanes)
{
    struct Lane final : LaneReceiver {
        Result<Want> begin(const Entry& entry) override
        {
            current = entry.name;
            return Want::Data;
        }
        Bytes room(std::size_t) override { return memory; }
        Result<void> data(ConstBytes block) override
        {
            all[current] += asText(block);
            return {};
        }
        Result<void> end(Result<void> outcome) override
        {
            EXPECT_TRUE(outcome);
            all[current];
            return {};
        }
        std::vector<std::byte> memory = std::vector<std::byte>(512 << 10);
        std::string current;
        std::map<std::string, std::string> all;
    };
    struct TwoLanes final : Lanes {
        unsigned count() const override { return 2; }
        LaneReceiver& lane(unsigned index) override { return lanes[index]; }
        std::array<Lane, 2> lanes;
    } lanes;
    auto archive = openOurs(pack("-mf=off -ms=off"));
    ASSERT_TRUE(archive);
    ASSERT_TRUE((*archive)->read({}, lanes));
    auto all = lanes.lanes[0].all;
    all.merge(lanes.lanes[1].all);
    EXPECT_EQ(all.size(), 7U);
    for (const auto* name : {"a.txt", "b.bin", "d\xC3\xA4r/\xE2\x82\xAC"})
        EXPECT_TRUE(all[name] == folder.read(std::string("in/") + name)) << name;
}

TEST_F(SevenZipFormat, keepsWhatComesBeforeDamage)
{
    auto bytes = pack("-mf=off -mqs");
    const auto whole = readAll(**openOurs(bytes));
    bytes[bytes.size() * 3 / 5] ^= 1;
    const auto opened = openOurs(bytes);
    ASSERT_TRUE(opened);
    const auto broken = readAll(**opened);
    EXPECT_TRUE(broken.result);
    ASSERT_EQ(broken.items.size(), whole.items.size());
    unsigned good = 0, bad = 0;
    for (std::size_t i = 0; i < whole.items.size(); ++i) {
        EXPECT_TRUE(broken.items[i].wasEnded);
        broken.items[i].outcome ? ++good : ++bad;
        if (broken.items[i].outcome) {
            EXPECT_TRUE(broken.items[i].data == whole.items[i].data) << whole.items[i].name;
        }
    }
    EXPECT_GE(good, 3U); // what has no data, at the least
    EXPECT_GE(bad, 1U);
}

/// Checksums repaired, so that the parser itself is met.
TEST_F(SevenZipFormat, survivesAnyByteInItsHeaders)
{
    const auto bytes = pack("-m0=Copy -mhc=off");
    const auto put32 = [](std::string& text, std::size_t at, std::uint32_t value) {
        for (unsigned i = 0; i < 4; ++i)
            text[at + i] = static_cast<char>(value >> 8 * i);
    };
    ByteReader start(asBytes(bytes));
    start.skip(12);
    const auto headerAt = 32 + static_cast<std::size_t>(start.le64());
    unsigned opened = 0;
    for (auto at = headerAt; at < bytes.size(); ++at) {
        for (const int value : {0, 1, 0x7F, 0x80, 0xFF}) {
            auto broken = bytes;
            broken[at] = static_cast<char>(value);
            put32(broken, 28, crc32(0, asBytes(broken).subspan(headerAt)));
            put32(broken, 8, crc32(0, asBytes(broken).subspan(12, 20)));
            const auto archive = openOurs(broken);
            if (!archive)
                continue;
            ++opened;
            (void)readAll(**archive);
        }
    }
    EXPECT_GT(opened, 0U);
}

}

}
