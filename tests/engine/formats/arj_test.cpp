#include "engine/formats/arj.h"
#include "engine/crypto/crc32.h"
#include "tests/support/archive_contents.h"
#include "tests/support/mixed_data.h"
#include "tests/support/passwords.h"
#include "tests/support/tools.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vantoro {

namespace {

using namespace test;

/// The volumes of a set that a tool has made in a folder.
class FolderOfVolumes final : public VolumeProvider {
public:
    explicit FolderOfVolumes(const TempFolder& folder) : m_folder(folder) {}
    Result<SourcePtr> openVolume(std::string_view name) override
    {
        auto source = openFileSource(m_folder / std::string(name));
        return source ? source : Error{ErrorCode::MissingVolume, "test"};
    }

private:
    const TempFolder& m_folder;
};

ArchivePtr open(const SourcePtr& source, const OpenContext& context = {})
{
    const auto head = readBlock(*source, 0, 256 << 10).value();
    EXPECT_NE(kArjFormat.probe({head, source.get(), context.name}), Match::No);
    return kArjFormat.open(source, context).value();
}

ArchivePtr open(const TempFolder& folder, const std::string& name, OpenContext context = {})
{
    context.name = name;
    return open(openFileSource(folder / name).value(), context);
}

class ArjMethods : public testing::TestWithParam<int> {};

TEST_P(ArjMethods, decodesWhatArjPacked)
{
    REQUIRE_TOOL("arj");
    TempFolder folder;
    const auto text = mixedData(200'000);
    folder.write("text", text);
    folder.write("runs", std::string(70'000, 'r')); // one code only: no tables
    folder.write("empty", "");
    folder.write("one", "1");
    ASSERT_TRUE(folder.run("arj a -y -m" + std::to_string(GetParam()) + " x.arj text runs empty one"));
    const auto contents = readAll(*open(folder, "x.arj"));
    ASSERT_TRUE(contents.result);
    ASSERT_EQ(contents.items.size(), 4U);
    for (const auto& item : contents.items) {
        EXPECT_TRUE(item.wasEnded && item.outcome) << item.name;
        EXPECT_EQ(item.data, folder.read(item.name)) << item.name;
    }
}

INSTANTIATE_TEST_SUITE_P(All, ArjMethods, testing::Values(0, 1, 2, 3, 4));

TEST(Arj, keepsFoldersTimesAndModes)
{
    REQUIRE_TOOL("arj");
    TempFolder folder;
    folder.write("dir/file", "text");
    ASSERT_TRUE(
        folder.run("chmod 640 dir/file && touch -d '2011-02-03 04:05:06 UTC' dir/file && arj a -y -r x.arj dir"));
    const auto contents = readAll(*open(folder, "x.arj"));
    const auto* file = contents.find("dir/file");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->pathStyle, PathStyle::Unix);
    EXPECT_EQ(file->mode.value(), 0640U);
    EXPECT_EQ(file->modified.seconds, 1296705906);
    EXPECT_EQ(file->data, "text");
}

TEST(Arj, asksUntilAPasswordFitsAndDeliversNothingBefore)
{
    REQUIRE_TOOL("arj");
    TempFolder folder;
    folder.write("a", mixedData(50'000, 1));
    folder.write("b", mixedData(5'000, 2));
    ASSERT_TRUE(folder.run("arj a -y -gsecret x.arj a b"));
    ScriptedPasswords passwords({"wrong", "", "secret"});
    OpenContext context;
    context.passwords = &passwords;
    const auto archive = open(folder, "x.arj", context);
    const auto contents = readAll(*archive);
    ASSERT_TRUE(contents.result);
    EXPECT_EQ(passwords.attempts, (std::vector<unsigned>{0, 1, 2}));
    ASSERT_EQ(contents.items.size(), 2U);
    EXPECT_EQ(contents.find("a")->data, folder.read("a"));
    EXPECT_EQ(contents.find("b")->data, folder.read("b"));

    ScriptedPasswords wrong({"wrong"});
    context.passwords = &wrong;
    const auto refused = readAll(*open(folder, "x.arj", context));
    EXPECT_EQ(refused.result.error().code, ErrorCode::WrongPassword);
    EXPECT_TRUE(refused.items.empty());
    context.passwords = nullptr;
    EXPECT_EQ(readAll(*open(folder, "x.arj", context)).result.error().code, ErrorCode::PasswordNeeded);
}

TEST(Arj, joinsTheVolumesOfASetFromWhicheverIsOpened)
{
    REQUIRE_TOOL("arj");
    TempFolder folder;
    std::string noise = mixedData(1);
    for (unsigned i = 0; noise.size() < 60'000; ++i)
        noise.push_back(static_cast<char>(i * 2654435761U >> 13));
    folder.write("first", noise);
    folder.write("second", mixedData(3'000));
    ASSERT_TRUE(folder.run("arj a -y -m0 -v20000 x.arj first second"));
    FolderOfVolumes volumes(folder);
    OpenContext context;
    context.volumes = &volumes;
    for (const char* name : {"x.arj", "x.a02"}) {
        const auto archive = open(folder, name, context);
        EXPECT_GE(archive->info().volumes.size(), 4U);
        EXPECT_EQ(archive->info().volumes.front(), "x.arj");
        const auto contents = readAll(*archive);
        ASSERT_EQ(contents.items.size(), 2U) << name;
        EXPECT_EQ(contents.items[0].size, noise.size());
        EXPECT_EQ(contents.find("first")->data, noise);
        EXPECT_EQ(contents.find("second")->data, folder.read("second"));
        EXPECT_TRUE(contents.items[0].outcome && contents.items[1].outcome);
    }

    ASSERT_TRUE(folder.run("rm x.a02"));
    const auto archive = open(folder, "x.arj", context);
    EXPECT_EQ(archive->info().missingVolume, "x.a02");
    EXPECT_EQ(archive->info().damage->code, ErrorCode::MissingVolume);
    const auto contents = readAll(*archive);
    ASSERT_EQ(contents.items.size(), 1U);
    EXPECT_EQ(contents.items[0].outcome.error().code, ErrorCode::MissingVolume);
}

TEST(Arj, damageIsToldEntryByEntry)
{
    REQUIRE_TOOL("arj");
    TempFolder folder;
    folder.write("a", mixedData(30'000, 1));
    folder.write("b", mixedData(30'000, 2));
    ASSERT_TRUE(folder.run("arj a -y -m1 x.arj a b"));
    const auto whole = folder.read("x.arj");

    auto flipped = whole;
    flipped[3000] = static_cast<char>(~flipped[3000]);
    const auto contents = readAll(*open(memorySource(flipped)));
    ASSERT_EQ(contents.items.size(), 2U);
    EXPECT_FALSE(contents.items[0].outcome);
    EXPECT_EQ(contents.items[1].data, folder.read("b"));

    // Cut anywhere: never all of it without a word.
    for (std::size_t length = 100; length + 4 < whole.size(); length += 97) {
        const auto archive = open(memorySource(std::string_view(whole).substr(0, length)));
        const auto cut = readAll(*archive);
        const bool isWhole = cut.items.size() == 2
            && std::all_of(cut.items.begin(), cut.items.end(), [](const auto& item) { return bool(item.outcome); });
        EXPECT_TRUE(archive->info().damage || !isWhole) << length;
    }
}

TEST(Arj, aHeaderNeedsItsChecksum)
{
    // A main header, field by field, without a name or a comment.
    std::string basic("\x1E\x0B\x01\x02\x10\x00\x02\x00", 8); // size, versions, Unix, '/' paths, security, main
    basic.append(22, '\0');
    basic.append(2, '\0'); // name, comment
    const auto sum = crc32(0, asBytes(basic));
    std::string archive("\x60\xEA", 2);
    archive += {static_cast<char>(basic.size()), '\0'};
    archive += basic;
    for (unsigned shift = 0; shift < 32; shift += 8)
        archive.push_back(static_cast<char>(sum >> shift & 0xFF));
    archive.append("\0\0\x60\xEA\0\0", 6); // no extension; the end
    const auto match = [](const std::string& bytes) {
        const auto source = memorySource(std::string_view(bytes));
        return kArjFormat.probe({asBytes(bytes), source.get(), {}});
    };
    EXPECT_EQ(match(archive), Match::Sure);
    EXPECT_TRUE(readAll(*open(memorySource(std::string_view(archive)))).items.empty());
    EXPECT_EQ(match("MZ" + std::string(5000, 'x') + archive), Match::Stub);
    archive[20] = 'x';
    EXPECT_EQ(match(archive), Match::No);
}

}

}
