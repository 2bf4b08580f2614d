#include "tests/engine/extract/fake_archive.h"
#include "tests/engine/extract/temp_folder.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

namespace vantoro::test {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// The links that come out of an archive that also holds "d/f", and those that are refused.
struct Outcome {
    Tree tree;
    std::uint64_t problems = 0;
    bool has(const std::string& path) const { return tree.contains(path); }
};

Outcome extractLinks(std::vector<FakeEntry> entries, unsigned lanes = 1)
{
    const TempFolder destination;
    entries.insert(entries.begin(), file("d/e/f", "deep"));
    entries.push_back(file("good", "g"));
    FakeArchive archive(std::move(entries));
    archive.lanesUsed = lanes;
    RecordingDelegate delegate;
    const auto report = extractInto(destination.path(), archive, delegate, {.lanes = lanes});
    if (!report)
        return {{}, 1000};
    EXPECT_EQ(readFile(destination / "arc/good"), "g");
    return {treeOf(destination / "arc"), report->problemCount};
}

bool isMade(const std::string& name, const std::string& target, std::vector<FakeEntry> before = {})
{
    before.push_back(link(name, target));
    return extractLinks(std::move(before)).has(name);
}

}

TEST(Links, areMadeOnlyWhereTheyStayInside)
{
    EXPECT_TRUE(isMade("l", "d/e/f"));
    EXPECT_TRUE(isMade("l", "."));
    EXPECT_TRUE(isMade("l", "nowhere/at/all")) << "a dangling link inside is the archive's own affair";
    EXPECT_TRUE(isMade("d/l", "../good"));
    EXPECT_TRUE(isMade("d/e/l", "../../d/e/../e/f"));
    for (const std::string target : {"/etc/passwd", "..", "../x", "d/../../x", "d/e/../../..", "nowhere/../../x",
                                     "good/../d", "//", "../arc/good"})
        EXPECT_FALSE(isMade("l", target)) << target;
    EXPECT_FALSE(isMade("l", std::string("d\0e", 3)));
}

TEST(Links, areFollowedThroughOtherLinksOfTheArchive)
{
    EXPECT_TRUE(isMade("par", "cur/d", {link("cur", ".")}));
    EXPECT_TRUE(isMade("up", "into/..", {link("into", "d/e")})) << "leads to d";
    EXPECT_FALSE(isMade("par", "cur/..", {link("cur", ".")}));
    EXPECT_FALSE(isMade("par", "a/b", {link("a", "d"), link("d/b", "../..")}));
    EXPECT_FALSE(isMade("over", "out/x", {link("out", "/etc")}));
    const auto circle = extractLinks({link("a", "b"), link("b", "a"), link("self", "self")});
    EXPECT_EQ(circle.problems, 3U);
}

TEST(Links, ofAChainTooLongToFollowAreRefused)
{
    std::vector<FakeEntry> chain{link("l0", "good")};
    for (int i = 1; i < 100; ++i)
        chain.push_back(link("l" + std::to_string(i), "l" + std::to_string(i - 1)));
    const auto outcome = extractLinks(chain);
    EXPECT_TRUE(outcome.has("l39"));
    EXPECT_FALSE(outcome.has("l40"));
    EXPECT_EQ(outcome.problems, 60U);
}

TEST(Links, takeNothingBeneathThem)
{
    for (const unsigned lanes : {1U, 4U}) {
        const TempFolder outside;
        const auto outcome
            = extractLinks({link("abs", outside.path()), file("abs/owned"), file("abs/new/owned"), link("in", "d"),
                            file("in/x"), link("cur", "."), link("cur/par", ".."), file("cur/par/owned"),
                            folder("abs/dir"), hardLink("abs/h", "good"), link("abs/l", "x")},
                           lanes);
        EXPECT_THAT(treeOf(outside.path()), IsEmpty());
        if (lanes == 1) {
            EXPECT_FALSE(outcome.has("d/x"));
            EXPECT_EQ(outcome.tree.at("in"), "link:d");
        }
        EXPECT_GE(outcome.problems, lanes == 1 ? 8U : 1U);
    }
}

TEST(Links, areNeitherOverwrittenNorWrittenThrough)
{
    const TempFolder outside;
    writeFile(outside / "target", "mine");
    const auto outcome
        = extractLinks({link("moo", outside / "target"), file("moo", "new"), link("dir", "d"), folder("dir"),
                        file("dir/x", "in the folder"), folder("r"), link("r", ".."), file("r/owned")});
    EXPECT_EQ(readFile(outside / "target"), "mine");
    EXPECT_EQ(outcome.tree.at("moo 1"), "file:new");
    EXPECT_EQ(outcome.tree.at("dir"), "link:d");
    EXPECT_EQ(outcome.tree.at("dir 1/x"), "file:in the folder");
    EXPECT_FALSE(outcome.has("moo"));
}

TEST(Links, refusedOnesAreToldInOneSum)
{
    const TempFolder destination;
    const auto report = extractInto(
        destination.path(), {file("a"), link("l1", "/x"), link("l2", "../x"), link("l3", ".."), link("ok", "a")});
    ASSERT_TRUE(report);
    EXPECT_EQ(report->problemCount, 3U);
    EXPECT_THAT(failures(*report), ElementsAre(failure("l1", ErrorCode::UnsafeLink)));
    EXPECT_EQ(report->notes.size(), 1U);
}

TEST(Links, readTheirTargetFromDataOnlySoFar)
{
    auto fromData = link("l", "");
    fromData.data = "good";
    auto endless = link("big", "");
    endless.data = std::string(4096, 'a');
    auto longest = link("longest", "");
    longest.data = std::string(4095, 'a');
    auto torn = link("torn", "");
    torn.data = "good";
    torn.outcome = Error{ErrorCode::ChecksumMismatch, ""};
    const auto outcome = extractLinks({fromData, endless, longest, torn});
    EXPECT_EQ(outcome.tree.at("l"), "link:good");
    EXPECT_EQ(outcome.tree.at("longest"), "link:" + std::string(4095, 'a'));
    EXPECT_FALSE(outcome.has("big"));
    EXPECT_FALSE(outcome.has("torn"));
    EXPECT_EQ(outcome.problems, 2U);
}

TEST(Links, leadOverNothingThatLiesInTheDestination)
{
    const TempFolder destination;
    const TempFolder outside;
    ASSERT_EQ(::symlink(outside.path().c_str(), (destination / "planted").c_str()), 0);
    const auto report = extractInto(destination.path(), {file("a"), link("l", "planted/x"), link("m", "free/x")},
                                    {.folder = FolderMode::Never});
    ASSERT_TRUE(report);
    EXPECT_FALSE(treeOf(destination.path()).contains("l"));
    EXPECT_TRUE(treeOf(destination.path()).contains("m"));
}

TEST(HardLinks, joinFilesOfTheJobAndNothingElse)
{
    const TempFolder outside;
    writeFile(outside / "secret", "secret");
    auto torn = file("torn", "t");
    torn.outcome = Error{ErrorCode::Corrupt, ""};
    const auto outcome = extractLinks(
        {file("a", "content"), hardLink("h", "./a"), hardLink("h2", "h"), hardLink("abs", outside / "secret"),
         hardLink("up", "../secret"), link("s", outside.path()), hardLink("through", "s/secret"), link("al", "a"),
         hardLink("toLink", "al"), hardLink("toFolder", "d"), hardLink("toNothing", "none"), torn,
         hardLink("toTorn", "torn"), hardLink("self", "self"), hardLink("early", "late"), file("late", "l")});
    EXPECT_EQ(outcome.tree.at("h"), "file:content");
    EXPECT_EQ(outcome.tree.at("h2"), "file:content");
    EXPECT_EQ(outcome.tree.at("early"), "file:l");
    for (const std::string name : {"abs", "up", "through", "toLink", "toFolder", "toNothing", "toTorn", "self"})
        EXPECT_FALSE(outcome.has(name)) << name;
}

TEST(HardLinks, areRealAndNeverWrittenThrough)
{
    const TempFolder destination;
    ASSERT_TRUE(extractInto(destination.path(),
                            {file("a", "1"), hardLink("h", "a"), file("h", "2"), file("a", "3"), hardLink("h3", "a")}));
    const auto tree = treeOf(destination / "arc");
    EXPECT_EQ(tree.at("a"), "file:1");
    EXPECT_EQ(tree.at("h"), "file:1");
    EXPECT_EQ(tree.at("h 1"), "file:2");
    EXPECT_EQ(tree.at("h3"), "file:3") << "the latest of that name";
    struct stat status {};
    ASSERT_EQ(::stat((destination / "arc/a").c_str(), &status), 0);
    EXPECT_EQ(status.st_nlink, 2U);
}

}
