#include "engine/formats/iso.h"

#include "tests/support/archive_contents.h"
#include "tests/support/tools.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vantoro {

namespace {

using namespace test;

Match probe(const SourcePtr& source)
{
    const auto head = readBlock(*source, 0, 256 << 10).value();
    return kIsoFormat.probe({head, source.get(), "x.iso"});
}

Contents readIso(const SourcePtr& source)
{
    EXPECT_EQ(probe(source), Match::Sure);
    return readAll(*kIsoFormat.open(source, {}).value());
}

constexpr std::size_t kSector = 2048;

/// A folder tree with what ISO 9660 alone cannot hold, and the volume made of it with `options`.
class IsoTree : public testing::Test {
protected:
    void SetUp() override
    {
        REQUIRE_TOOL("genisoimage");
        m_folder.write("tree/Grüße an Ünal, with a long name.text", "umlauts");
        m_folder.write("tree/1/2/3/4/5/6/7/8/9/10/deep.txt", "deep down");
        m_folder.write("tree/large.bin", std::string(300'000, 'L'));
        m_folder.write("tree/empty", "");
        ASSERT_TRUE(m_folder.run("ln -s ../../1/./2 tree/link && ln -s /an/absolute/place tree/1/away && "
                                 "chmod 751 tree/large.bin && touch -d @1234567890 tree/large.bin && "
                                 "ln tree/large.bin tree/linked.bin && mkfifo tree/pipe"));
    }
    SourcePtr make(const std::string& options)
    {
        EXPECT_TRUE(m_folder.run("genisoimage -quiet " + options + " -o a.iso tree")) << options;
        return openFileSource(m_folder / "a.iso").value();
    }
    TempFolder m_folder;
};

TEST_F(IsoTree, rockRidgeKeepsNamesLinksModesAndDeepFolders)
{
    const auto contents = readIso(make("-R -cache-inodes"));
    ASSERT_TRUE(contents.result);
    EXPECT_EQ(contents.find("Grüße an Ünal, with a long name.text")->data, "umlauts");
    // Folders below the eighth level were moved away by the writer, and come out where they were.
    EXPECT_EQ(contents.find("1/2/3/4/5/6/7/8/9/10/deep.txt")->data, "deep down");
    EXPECT_EQ(contents.find("1/2/3/4/5/6/7/8")->kind, EntryKind::Folder);
    EXPECT_EQ(contents.find("rr_moved"), nullptr);
    EXPECT_EQ(contents.find("link")->linkTarget, "../../1/./2");
    EXPECT_EQ(contents.find("1/away")->linkTarget, "/an/absolute/place");
    EXPECT_EQ(contents.find("pipe")->kind, EntryKind::Other);
    EXPECT_EQ(contents.find("empty")->size, 0U);
    const auto* large = contents.find("large.bin");
    EXPECT_EQ(large->data, std::string(300'000, 'L'));
    EXPECT_EQ(large->mode.value() & 0777, 0751U);
    EXPECT_EQ(large->modified.seconds, 1234567890);
    const auto* linked = contents.find("linked.bin");
    EXPECT_EQ(linked->kind, EntryKind::HardLink);
    EXPECT_EQ(linked->linkTarget, "large.bin");
}

TEST_F(IsoTree, aHardLinkChosenAloneBringsTheData)
{
    const auto archive = kIsoFormat.open(make("-R -cache-inodes"), {}).value();
    const auto index = listAll(*archive).find("linked.bin")->index;
    const auto contents = readAll(*archive, std::vector{index});
    ASSERT_EQ(contents.items.size(), 1U);
    EXPECT_EQ(contents.items[0].kind, EntryKind::File);
    EXPECT_EQ(contents.items[0].data.size(), 300'000U);
}

TEST_F(IsoTree, jolietNamesAreUnicode)
{
    const auto contents = readIso(make("-J -joliet-long -input-charset utf-8 -D"));
    const auto* item = contents.find("Grüße an Ünal, with a long name.text");
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->nameCharset, kCharsetUtf8);
    EXPECT_EQ(item->data, "umlauts");
}

TEST_F(IsoTree, plainNamesLoseVersionAndIdleDot)
{
    const auto contents = readIso(make("-D"));
    EXPECT_EQ(contents.find("LARGE.BIN")->data.size(), 300'000U);
    EXPECT_NE(contents.find("EMPTY"), nullptr);
    EXPECT_EQ(contents.find("LARGE.BIN")->mode, std::nullopt);
}

TEST_F(IsoTree, truncationCondemnsOnlyWhatItCut)
{
    make("-R");
    auto whole = m_folder.read("a.iso");
    const auto cut = readIso(memorySource(std::string_view(whole).substr(0, whole.size() / 2)));
    bool sawDamage = false;
    for (const auto& item : cut.items) {
        ASSERT_TRUE(item.wasEnded);
        if (!item.outcome) {
            sawDamage = true;
            EXPECT_EQ(item.outcome.error().code, ErrorCode::Truncated);
        } else if (item.kind == EntryKind::File) {
            EXPECT_EQ(item.data.size(), item.size) << item.name;
        }
    }
    EXPECT_TRUE(sawDamage);
}

// A folder that contains itself ends, is reported, and the rest of the volume comes out.
TEST_F(IsoTree, aLoopOfFoldersEnds)
{
    make("-R -D");
    auto image = m_folder.read("a.iso");
    const auto rootBlock = image.substr(16 * kSector + 156 + 2, 8);
    const auto root = static_cast<std::size_t>(static_cast<unsigned char>(rootBlock[0])
                                               | static_cast<unsigned char>(rootBlock[1]) << 8);
    // The record of folder "1" in the root: its name stands 33 bytes behind its start.
    const auto name = image.find(std::string_view("\x01"
                                                  "1",
                                                  2),
                                 root * kSector);
    ASSERT_NE(name, std::string::npos);
    image.replace(name + 1 - 33 + 2, 8, rootBlock);
    const auto archive = kIsoFormat.open(memorySource(image), {}).value();
    const auto contents = readAll(*archive);
    ASSERT_TRUE(contents.result);
    EXPECT_EQ(archive->info().damage.value().code, ErrorCode::Corrupt);
    EXPECT_EQ(contents.find("large.bin")->data.size(), 300'000U);
    EXPECT_EQ(contents.find("1/1"), nullptr);
}

// Every byte of the descriptors and of the first folders broken in turn: no crash, no endless walk, nothing longer
// than declared.
TEST_F(IsoTree, brokenStructuresAreSurvived)
{
    make("-R");
    const auto whole = m_folder.read("a.iso");
    for (std::size_t at = 16 * kSector; at < std::min(whole.size(), 30 * kSector); at += 3) {
        auto image = whole;
        image[at] = static_cast<char>(image[at] ^ 0xFF);
        const auto archive = kIsoFormat.open(memorySource(image), {});
        if (!archive)
            continue;
        for (const auto& item : listAll(**archive).items)
            ASSERT_LT(item.name.size(), 5000U);
    }
}

TEST(Iso, aVolumeWithUdfIsLeftToOthersFirst)
{
    std::string image(64 * kSector, '\0');
    image.replace(16 * kSector, 6,
                  "\x01"
                  "CD001");
    image.replace(17 * kSector, 6,
                  "\xFF"
                  "CD001");
    image.replace(18 * kSector, 6, std::string_view("\0BEA01", 6));
    EXPECT_EQ(probe(memorySource(image)), Match::Sure);
    image.replace(19 * kSector, 6, std::string_view("\0NSR02", 6));
    EXPECT_EQ(probe(memorySource(image)), Match::Likely);
}

// A file in two extents, which genisoimage makes only beyond 4 GiB: two records of one name, the first marked.
TEST(Iso, joinsTheExtentsOfAFile)
{
    std::string image(24 * kSector, '\0');
    const auto number = [](std::uint32_t value) {
        std::string bytes(8, '\0');
        for (unsigned i = 0; i < 4; ++i)
            bytes[i] = bytes[7 - i] = static_cast<char>(value >> (8 * i));
        return bytes;
    };
    const auto record = [&](std::uint32_t block, std::uint32_t size, char flags, const std::string& name) {
        std::string bytes(2, '\0');
        bytes += number(block) + number(size) + std::string("\x60\x01\x01\0\0\0\0", 7) + flags + std::string(2, '\0');
        bytes += std::string("\x01\0\0\x01", 4) + static_cast<char>(name.size()) + name;
        bytes.resize(bytes.size() + bytes.size() % 2);
        bytes[0] = static_cast<char>(bytes.size());
        return bytes;
    };
    const std::string descriptor = std::string("\x01") + "CD001\x01";
    image.replace(16 * kSector, descriptor.size(), descriptor);
    image.replace(16 * kSector + 128, 4, std::string("\0\x08\x08\0", 4));
    image.replace(16 * kSector + 156, 34, record(20, kSector, 2, std::string(1, '\0')));
    image.replace(17 * kSector, 6,
                  "\xFF"
                  "CD001");
    const auto folder = record(20, kSector, 2, std::string(1, '\0')) + record(20, kSector, 2, "\x01")
        + record(22, kSector, '\x80', "TWO.BIN;1") + record(21, 5, 0, "TWO.BIN;1");
    image.replace(20 * kSector, folder.size(), folder);
    image.replace(21 * kSector, 5, "after");
    image.replace(22 * kSector, kSector, std::string(kSector, 'b'));
    const auto contents = readIso(memorySource(image));
    ASSERT_EQ(contents.items.size(), 1U);
    EXPECT_EQ(contents.items[0].name, "TWO.BIN");
    EXPECT_EQ(contents.items[0].size, kSector + 5);
    EXPECT_EQ(contents.items[0].data, std::string(kSector, 'b') + "after");
}

}

}
