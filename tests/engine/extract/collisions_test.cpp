#include "tests/engine/extract/fake_archive.h"
#include "tests/engine/extract/temp_folder.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace vantoro::test {

using testing::IsSupersetOf;
using testing::Pair;

TEST(Collisions, loseNothing)
{
    const TempFolder destination;
    const auto report = extractInto(destination.path(),
                                    {file("same.txt", "1"), file("same.txt", "2"), file("same 1.txt", "3"),
                                     file("same.txt", "4"), file("x", "file"), file("x/y", "child"), file("d/y", "y"),
                                     file("d", "file"), file("d/z", "z"), folder("d"), folder("x")});
    ASSERT_TRUE(report);
    EXPECT_EQ(report->problemCount, 0U);
    const auto tree = treeOf(destination / "arc");
    EXPECT_THAT(tree,
                IsSupersetOf({Pair("same.txt", "file:1"), Pair("same 1.txt", "file:2"), Pair("same 2.txt", "file:4"),
                              Pair("x", "file:file"), Pair("x 1/y", "file:child"), Pair("d/y", "file:y"),
                              Pair("d 1", "file:file"), Pair("d/z", "file:z")}));
    EXPECT_EQ(std::count_if(tree.begin(), tree.end(), [](const auto& item) { return item.second == "file:3"; }), 1);
}

TEST(Collisions, ofCaseAndUnicodeFormAreTheFileSystemsAffair)
{
    const TempFolder destination;
    std::vector<FakeEntry> entries;
    for (const std::string name : {"File", "FILE", "file", "caf\u00E9", "cafe\u0301", "\u212B", "\u00C5"})
        entries.push_back(file(name, name));
    ASSERT_TRUE(extractInto(destination.path(), entries));
    std::size_t contents = 0;
    for (const auto& entry : entries) {
        const auto tree = treeOf(destination / "arc");
        contents += static_cast<std::size_t>(std::count_if(
            tree.begin(), tree.end(), [&](const auto& item) { return item.second == "file:" + entry.name; }));
    }
    EXPECT_EQ(contents, entries.size());
}

TEST(Collisions, ofAHundredThousandEqualNamesAreNotQuadratic)
{
    const TempFolder destination;
    const std::vector<FakeEntry> entries(20'000, link("l", "x"));
    auto all = entries;
    all.push_back(file("f"));
    const auto report = extractInto(destination.path(), all);
    ASSERT_TRUE(report);
    EXPECT_EQ(treeOf(destination / "arc").size(), all.size());
}

TEST(Collisions, withWhatLiesInTheDestinationNeverOverwriteOrMerge)
{
    for (const auto mode : {FolderMode::Auto, FolderMode::Never}) {
        const TempFolder destination;
        ASSERT_TRUE(extractInto(destination.path(), {file("top/mine", "mine"), file("top/x", "mine")}));
        const auto report
            = extractInto(destination.path(), {file("top/x", "new"), folder("top/sub")}, {.folder = mode});
        ASSERT_TRUE(report);
        EXPECT_THAT(treeOf(destination.path()),
                    testing::UnorderedElementsAre(Pair("top", "dir"), Pair("top/mine", "file:mine"),
                                                  Pair("top/x", "file:mine"), Pair("top 1", "dir"),
                                                  Pair("top 1/x", "file:new"), Pair("top 1/sub", "dir")));
    }
}

}
