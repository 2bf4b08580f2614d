#include "engine/write/source_list.h"
#include "tests/engine/extract/temp_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include <sys/stat.h>

using namespace vantoro;
using test::TempFolder;
using test::writeFile;

namespace {

std::vector<std::string> namesOf(const SourceList& list)
{
    std::vector<std::string> names;
    for (const auto& item : list.items)
        names.push_back(item.name);
    return names;
}

TEST(SourceWalk, keepsTheOrderHoweverManyFoldersAreWalkedAtATime)
{
    const TempFolder folder;
    std::vector<std::string> expected{"all"};
    for (char first = 'a'; first < 'k'; ++first) {
        const auto outer = std::string("all/") + first;
        expected.push_back(outer);
        for (char second = 'a'; second < 'k'; ++second) {
            const auto inner = outer + '/' + second;
            expected.push_back(inner);
            std::filesystem::create_directories(folder / inner);
            writeFile(folder / (inner + "/file"), "12345");
            expected.push_back(inner + "/file");
            writeFile(folder / (inner + "1"), "1");
            expected.push_back(inner + "1");
        }
    }
    for (const unsigned threads : {1U, 2U, 8U}) {
        CreateOptions options;
        options.threads = threads;
        const auto list = collectSources({{folder / "all", "", true}}, options, folder / "target").value();
        EXPECT_EQ(namesOf(list), expected) << threads;
        EXPECT_EQ(list.totalSize, 600U);
        EXPECT_TRUE(list.problems.empty());
    }
}

TEST(SourceWalk, leavesOutWhatIsExcludedSpecialOrTheArchive)
{
    const TempFolder folder;
    std::filesystem::create_directories(folder / "in/kept/skipped");
    std::filesystem::create_directories(folder / "in/skipped/kept");
    writeFile(folder / "in/skipped/kept/file", "");
    writeFile(folder / "in/kept/file", "");
    writeFile(folder / "in/kept/target", "");
    std::filesystem::create_symlink("..", folder / "in/kept/up");
    ASSERT_EQ(::mkfifo((folder / "in/kept/pipe").c_str(), 0600), 0);
    CreateOptions options;
    options.exclude = {"skipped"};
    const auto list = collectSources({{folder / "in/.", "", true}, {folder / "missing", "", true}}, options,
                                     folder / "in/kept/target")
                          .value();
    EXPECT_EQ(namesOf(list), (std::vector<std::string>{"kept", "kept/file", "kept/up"}));
    EXPECT_EQ(list.items.back().linkTarget, "..");
    ASSERT_EQ(list.problems.size(), 2U);
    EXPECT_EQ(list.problems[0].path, folder / "in/./kept/pipe");
    EXPECT_EQ(list.problems[0].error.code, ErrorCode::UnsupportedKind);
    EXPECT_EQ(list.problems[1].path, folder / "missing");
    EXPECT_EQ(list.problems[1].error.code, ErrorCode::SourceUnreadable);
}

TEST(SourceWalk, stopsWhenAskedTo)
{
    const TempFolder folder;
    CreateOptions options;
    options.cancel.cancel();
    const auto list = collectSources({{folder.path(), "", true}}, options, folder / "target");
    ASSERT_FALSE(list);
    EXPECT_EQ(list.error().code, ErrorCode::Cancelled);
}

}
