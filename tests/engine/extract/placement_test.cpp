#include "tests/engine/extract/fake_archive.h"
#include "tests/engine/extract/temp_folder.h"

#include "engine/extract/unique_path.h"

#include <gmock/gmock.h>

#include <ctime>

#include <sys/stat.h>
#include <unistd.h>

namespace vantoro::test {

namespace {

using testing::ElementsAre;
using testing::Pair;
using testing::UnorderedElementsAre;

std::time_t dateOf(const std::string& path)
{
    struct stat status {};
    EXPECT_EQ(::lstat(path.c_str(), &status), 0);
    return status.st_mtime;
}

constexpr std::time_t kArchiveDate = 1'000'000'000;

}

TEST(Placement, wrapsOnlyWhatWouldScatter)
{
    const TempFolder destination;
    auto report = extractInto(destination.path(), {file("one/a", "1"), folder("one/b")});
    ASSERT_TRUE(report);
    EXPECT_TRUE(report->wasSolo);
    EXPECT_EQ(report->createdItem, destination / "one");
    report = extractInto(destination.path(), {file("f.txt", "solo")});
    EXPECT_EQ(report->createdItem, destination / "f.txt");
    report = extractInto(destination.path(), {file("f.txt", "again")});
    EXPECT_EQ(report->createdItem, destination / "f 1.txt");
    report = extractInto(destination.path(), {file("a"), file("b")});
    EXPECT_FALSE(report->wasSolo);
    EXPECT_EQ(report->createdItem, destination / "arc");
    EXPECT_EQ(report->entries, 2U);
    EXPECT_EQ(report->bytes, 2U);
    report = extractInto(destination.path(), {file("a")}, {.folder = FolderMode::Always, .enclosingName = "mine/../x"});
    EXPECT_EQ(report->createdItem, destination / "mine_.._x");
    EXPECT_EQ(treeOf(destination.path()).size(), 10U) << "nothing hidden stays";
}

TEST(Placement, soloIsWhatCameOutNotWhatTheArchiveHolds)
{
    const TempFolder destination;
    const auto report = extractInto(destination.path(), {file("top/a"), file("../evil"), link("out", "/etc")});
    ASSERT_TRUE(report);
    EXPECT_EQ(report->createdItem, destination / "top");
}

TEST(Placement, withoutAFolderGoesStraightIntoTheDestination)
{
    const TempFolder destination;
    writeFile(destination / "a", "mine");
    const auto report = extractInto(destination.path(), {file("a", "new"), file("d/b", "b"), link("l", "d/b")},
                                    {.folder = FolderMode::Never});
    ASSERT_TRUE(report);
    EXPECT_EQ(report->createdItem, "");
    EXPECT_THAT(treeOf(destination.path()),
                ElementsAre(Pair("a", "file:mine"), Pair("a 1", "file:new"), Pair("d", "dir"), Pair("d/b", "file:b"),
                            Pair("l", "link:d/b")));
}

TEST(Placement, takesOnlyTheChosenEntries)
{
    const TempFolder destination;
    FakeArchive archive({file("a"), file("d/b", "b"), file("d/c", "c"), file("e")});
    RecordingDelegate delegate;
    ExtractOptions options;
    options.selection = {{2, 1, 2, 99}};
    const auto report = extractInto(destination.path(), archive, delegate, options);
    ASSERT_TRUE(report);
    EXPECT_THAT(delegate.told, ElementsAre("d/b", "d/c"));
    EXPECT_EQ(delegate.last.entriesTotal, 2U);
    EXPECT_THAT(treeOf(destination.path()),
                ElementsAre(Pair("d", "dir"), Pair("d/b", "file:b"), Pair("d/c", "file:c")));
}

TEST(Placement, datesTheResultAsWished)
{
    const TempFolder destination;
    auto old = file("solo");
    old.modified = {500'000'000, 0, true, false};
    ASSERT_TRUE(extractInto(destination.path(), {file("a"), file("b")}, {.archiveDateToFolder = true}));
    EXPECT_EQ(dateOf(destination / "arc"), kArchiveDate);
    ASSERT_TRUE(extractInto(destination.path(), {old}, {.archiveDateToFolder = true}));
    EXPECT_EQ(dateOf(destination / "solo"), 500'000'000);
    ASSERT_TRUE(extractInto(destination.path(), {old}, {.archiveDateToSoloItem = true}));
    EXPECT_EQ(dateOf(destination / "solo 1"), kArchiveDate);
    ASSERT_TRUE(extractInto(destination.path(), {old}, {.resetSoloItemDate = true}));
    EXPECT_NEAR(static_cast<double>(dateOf(destination / "solo 2")), static_cast<double>(std::time(nullptr)), 60);
}

TEST(Placement, anEntryNamedLikeTheHiddenFolderIsAnOrdinaryOne)
{
    const TempFolder destination;
    ASSERT_TRUE(extractInto(destination.path(),
                            {file(".Vantoro0", "f"), file(".Vantoro1/x", "x"), file(".root"), file(".job/y")}));
    const auto tree = treeOf(destination / "arc");
    EXPECT_EQ(tree.at(".Vantoro0"), "file:f");
    EXPECT_EQ(tree.at(".Vantoro1/x"), "file:x");
    EXPECT_EQ(tree.size(), 6U);
}

TEST(UniquePath, numbersBesideWhatExists)
{
    const TempFolder folder;
    EXPECT_EQ(uniquePath(folder / "a.txt"), folder / "a.txt");
    writeFile(folder / "a.txt", "");
    writeFile(folder / "a 1.txt", "");
    EXPECT_EQ(uniquePath(folder / "a.txt"), folder / "a 2.txt");
    ASSERT_EQ(::symlink("nowhere", (folder / "l").c_str()), 0);
    EXPECT_EQ(uniquePath(folder / "l"), folder / "l 1") << "a dangling link takes its name too";

    ASSERT_EQ(::mkdir((folder / "from.d").c_str(), 0700), 0);
    ASSERT_EQ(::mkdir((folder / "to.d").c_str(), 0700), 0);
    const auto moved = moveToUniquePath(folder / "from.d", folder / "to.d");
    ASSERT_TRUE(moved);
    EXPECT_EQ(*moved, folder / "to.d 1");
    EXPECT_FALSE(moveToUniquePath(folder / "none", folder / "x"));
}

}
