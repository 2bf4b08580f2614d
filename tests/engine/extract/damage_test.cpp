#include "tests/engine/extract/fake_archive.h"
#include "tests/engine/extract/temp_folder.h"

#include <gmock/gmock.h>

namespace vantoro::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

FakeEntry torn(std::string name, ErrorCode code = ErrorCode::ChecksumMismatch, std::string data = "half")
{
    auto entry = file(std::move(name), std::move(data));
    entry.outcome = Error{code, "test"};
    return entry;
}

}

TEST(Damage, takesTheTornEntryAndLeavesTheRest)
{
    for (const auto mode : {FolderMode::Auto, FolderMode::Never}) {
        const TempFolder destination;
        const auto report = extractInto(destination.path(),
                                        {file("a", "1"), torn("b"), torn("d/c", ErrorCode::Truncated), file("e", "2")},
                                        {.folder = mode});
        ASSERT_TRUE(report);
        EXPECT_THAT(failures(*report),
                    ElementsAre(failure("b", ErrorCode::ChecksumMismatch), failure("d/c", ErrorCode::Truncated)));
        const auto tree = treeOf(mode == FolderMode::Auto ? destination / "arc" : destination.path());
        EXPECT_THAT(tree, ElementsAre(Pair("a", "file:1"), Pair("d", "dir"), Pair("e", "file:2")));
    }
}

// Small files are written by two threads then.
TEST(Damage, amongManyFilesOfADecoderElsewhereTakesItsOwnAlone)
{
    for (const auto mode : {FolderMode::Auto, FolderMode::Never}) {
        std::vector<FakeEntry> entries;
        for (int i = 0; i < 2000; ++i)
            entries.push_back(i % 10 == 3 ? torn("t" + std::to_string(i)) : file("f" + std::to_string(i)));
        const TempFolder destination;
        FakeArchive archive(entries);
        archive.facts.decodesElsewhere = true;
        RecordingDelegate delegate;
        const auto report = extractInto(destination.path(), archive, delegate, {.folder = mode, .lanes = 1});
        ASSERT_TRUE(report);
        EXPECT_EQ(report->problemCount, 200U);
        EXPECT_EQ(report->entries, 1800U);
        const auto tree = treeOf(mode == FolderMode::Auto ? destination / "arc" : destination.path());
        EXPECT_EQ(tree.size(), 1800U);
        EXPECT_TRUE(std::all_of(tree.begin(), tree.end(), [](const auto& item) { return item.first[0] == 'f'; }));
    }
}

TEST(Damage, isKeptUnderAnotherNameWhenWished)
{
    for (const auto mode : {FolderMode::Auto, FolderMode::Never}) {
        const TempFolder destination;
        const auto report = extractInto(destination.path(), {file("b.damaged", "1"), torn("b"), hardLink("h", "b")},
                                        {.folder = mode, .keepBroken = true});
        ASSERT_TRUE(report);
        EXPECT_EQ(report->problemCount, 2U);
        const auto tree = treeOf(mode == FolderMode::Auto ? destination / "arc" : destination.path());
        EXPECT_EQ(tree.at("b.damaged"), "file:1");
        EXPECT_EQ(tree.at("b 1.damaged"), "file:half");
        EXPECT_EQ(tree.size(), 2U);
    }
}

TEST(Damage, coversSizesThatLie)
{
    const TempFolder destination;
    auto tooLong = file("long", std::string(300'000, 'a'));
    tooLong.size = 10;
    auto tooShort = file("short", "abc");
    tooShort.size = 4;
    const auto report = extractInto(destination.path(), {tooLong, tooShort, file("good"), file("good2")});
    ASSERT_TRUE(report);
    EXPECT_THAT(failures(*report),
                ElementsAre(failure("long", ErrorCode::SizeMismatch), failure("short", ErrorCode::SizeMismatch)));
    EXPECT_EQ(treeOf(destination / "arc").size(), 2U);
}

TEST(Damage, ofAStreamsEndCondemnsWhatNobodyCanVouchFor)
{
    for (const bool keepsBroken : {false, true}) {
        const TempFolder destination;
        FakeArchive archive({file("sure", "1"), file("d/doubt", "2"), link("l", "sure"), hardLink("h", "sure")});
        archive.facts.firstDoubtfulEntry = 1;
        archive.facts.damage = Error{ErrorCode::ChecksumMismatch, "trailer"};
        RecordingDelegate delegate;
        const auto report = extractInto(destination.path(), archive, delegate, {.keepBroken = keepsBroken});
        ASSERT_TRUE(report);
        const auto tree = treeOf(destination / "arc");
        EXPECT_EQ(tree.at("sure"), "file:1");
        EXPECT_FALSE(tree.contains("d/doubt"));
        EXPECT_FALSE(tree.contains("l"));
        EXPECT_EQ(tree.contains("d/doubt.damaged"), keepsBroken);
        EXPECT_THAT(failures(*report), testing::Contains(failure("d/doubt", ErrorCode::ChecksumMismatch)));
    }
}

TEST(Damage, ofTheArchiveAsAWholeIsReportedOnce)
{
    const TempFolder destination;
    FakeArchive archive({file("a"), file("b")});
    archive.facts.damage = Error{ErrorCode::Corrupt, "directory rebuilt"};
    archive.readOutcome = Error{ErrorCode::Truncated, "no end mark"};
    RecordingDelegate delegate;
    auto report = extractInto(destination.path(), archive, delegate);
    ASSERT_TRUE(report);
    EXPECT_THAT(failures(*report), ElementsAre(failure("", ErrorCode::Truncated), failure("", ErrorCode::Corrupt)));

    FakeArchive cut({file("a"), file("b"), torn("c", ErrorCode::Truncated)});
    cut.readOutcome = Error{ErrorCode::Truncated, "cut"};
    report = extractInto(destination.path(), cut, delegate);
    ASSERT_TRUE(report);
    EXPECT_THAT(failures(*report), ElementsAre(failure("c", ErrorCode::Truncated)));
}

TEST(Damage, ofEverythingLeavesNothing)
{
    const std::vector<std::vector<FakeEntry>> hopeless{
        {torn("a")}, {folder("d"), torn("d/a")}, {file("../a")}, {link("l", "/")}, {}};
    for (const auto& entries : hopeless) {
        for (const auto mode : {FolderMode::Auto, FolderMode::Always, FolderMode::Never}) {
            const TempFolder destination;
            FakeArchive archive(entries);
            if (entries.empty())
                archive.readOutcome = Error{ErrorCode::Corrupt, "noise"};
            RecordingDelegate delegate;
            const auto report = extractInto(destination.path(), archive, delegate, {.folder = mode});
            EXPECT_FALSE(report);
            EXPECT_THAT(treeOf(destination.path()), IsEmpty());
        }
    }
}

TEST(Damage, ofAWrongPasswordEndsAllUnlessItWasRightBefore)
{
    const TempFolder destination;
    auto wrong = torn("locked", ErrorCode::WrongPassword);
    wrong.isEncrypted = true;
    auto report = extractInto(destination.path(), {file("open"), wrong, file("open2")});
    ASSERT_FALSE(report);
    EXPECT_EQ(report.error().code, ErrorCode::WrongPassword);
    EXPECT_THAT(treeOf(destination.path()), IsEmpty());

    auto right = file("right");
    right.isEncrypted = true;
    report = extractInto(destination.path(), {right, wrong, file("open")});
    ASSERT_TRUE(report);
    EXPECT_EQ(report->problemCount, 1U);

    report = extractInto(destination.path(), {right, torn("locked", ErrorCode::PasswordNeeded)});
    ASSERT_FALSE(report);
    EXPECT_EQ(report.error().code, ErrorCode::PasswordNeeded);
}

TEST(Damage, neverMakesNodes)
{
    const TempFolder destination;
    auto device = file("null");
    device.kind = EntryKind::Other;
    std::vector<FakeEntry> entries{device, file("good", "g"), file("good2")};
    for (const std::uint32_t type : {0010000U, 0020000U, 0060000U, 0140000U}) {
        entries.push_back(file("node" + std::to_string(type)));
        entries.back().mode = type | 0666U;
    }
    const auto report = extractInto(destination.path(), entries);
    ASSERT_TRUE(report);
    EXPECT_EQ(report->problemCount, 5U);
    EXPECT_EQ(report->problems.front().error.code, ErrorCode::UnsupportedKind);
    EXPECT_EQ(treeOf(destination / "arc").size(), 2U);
}

}
