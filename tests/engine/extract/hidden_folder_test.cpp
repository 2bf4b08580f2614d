#include "engine/extract/hidden_folder.h"
#include "engine/extract/orphan_file.h"
#include "tests/engine/extract/fake_archive.h"
#include "tests/engine/extract/temp_folder.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vantoro::test {

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class ListDouble final : public OrphanList {
public:
    ListDouble() { setOrphanList(this); }
    ~ListDouble() override { setOrphanList(nullptr); }
    void remember(const std::string& path) override
    {
        EXPECT_FALSE(fs::exists(path)) << "listed before it is made";
        paths.push_back(path);
    }
    void forget(const std::string& path) override
    {
        EXPECT_FALSE(fs::exists(path)) << "forgotten after it is gone";
        std::erase(paths, path);
    }
    void settle() override { isSettled = true; }
    std::vector<std::string> paths;
    std::atomic<bool> isSettled{false};
};

/// A process that makes a hidden folder with content and dies.
std::string leaveOrphan(const std::string& destination)
{
    const auto child = ::fork();
    if (child == 0) {
        const auto parent = openDestination(destination.c_str());
        auto hidden = HiddenFolder::create(parent->get(), destination);
        if (hidden) {
            (void)!::mkdirat(hidden->fd(), ".root", 0700);
            (void)!::mkdirat(hidden->fd(), ".root/locked", 0);
            (void)!::symlinkat(destination.c_str(), hidden->fd(), ".root/link");
        }
        ::_exit(0); // without destructors
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return destination + "/.Vantoro0";
}

}

TEST(HiddenFolder, isListedBeforeItExistsAndLockedWhileItDoes)
{
    const TempFolder destination;
    ListDouble list;
    auto entry = file("a");
    entry.before = [&] {
        EXPECT_THAT(list.paths, ElementsAre(destination / ".Vantoro0"));
        EXPECT_TRUE(fs::is_directory(destination / ".Vantoro0"));
        struct stat status {};
        EXPECT_EQ(::stat((destination / ".Vantoro0").c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0700U);
        EXPECT_THAT(sweepOrphans(list.paths), IsEmpty()) << "a live one is nobody's orphan";
    };
    ASSERT_TRUE(extractInto(destination.path(), {entry, file("b")}));
    EXPECT_THAT(list.paths, IsEmpty());
    EXPECT_EQ(treeOf(destination.path()).size(), 3U);
}

TEST(HiddenFolder, isListedForGoodWhenTheJobLasts)
{
    const TempFolder destination;
    ListDouble list;
    auto entry = file("a");
    entry.before = [&] {
        const auto limit = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        while (!list.isSettled && std::chrono::steady_clock::now() < limit)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    };
    ASSERT_TRUE(extractInto(destination.path(), {entry}));
    EXPECT_TRUE(list.isSettled);
}

TEST(HiddenFolder, neverUsesOneThatIsThere)
{
    const TempFolder destination;
    fs::create_directory(destination / ".Vantoro0");
    writeFile(destination / ".Vantoro0/keep", "mine");
    fs::create_directory_symlink(destination.path(), destination / ".Vantoro1");
    writeFile(destination / ".Vantoro2", "mine");
    auto entry = file("a");
    entry.before = [&] { EXPECT_TRUE(fs::is_directory(destination / ".Vantoro3")); };
    ASSERT_TRUE(extractInto(destination.path(), {entry}));
    EXPECT_EQ(readFile(destination / ".Vantoro0/keep"), "mine");
    EXPECT_EQ(treeOf(destination.path()).size(), 5U);
}

TEST(Sweep, removesWhatADeadProcessLeft)
{
    const TempFolder destination;
    const auto orphan = leaveOrphan(destination.path());
    ASSERT_TRUE(fs::exists(orphan + "/.root/locked"));
    writeFile(destination / "keep", "mine");
    EXPECT_THAT(sweepOrphans({orphan, destination / ".Vantoro7"}), ElementsAre(orphan, destination / ".Vantoro7"));
    EXPECT_THAT(treeOf(destination.path()), ElementsAre(testing::Pair("keep", "file:mine")));
}

TEST(Sweep, touchesNothingThatIsNotOurs)
{
    const TempFolder destination;
    const TempFolder other;
    const auto orphan = leaveOrphan(other.path());
    fs::create_directory_symlink(orphan, destination / ".Vantoro1"); // a link, even to one of ours
    fs::create_directory(destination / ".Vantoro2"); // somebody else's, listed by a race
    writeFile(destination / ".Vantoro2/mine", "mine");
    fs::create_directory(destination / ".Vantoro3x");
    fs::create_directory(destination / ".Vantoro");
    fs::create_directory(destination / "Documents");
    const auto live = orphan;
    const UniqueFd lock(::open(live.c_str(), O_RDONLY | O_DIRECTORY));
    ASSERT_EQ(::flock(lock.get(), LOCK_EX | LOCK_NB), 0);
    const auto before = treeOf(destination.path());
    sweepOrphans({destination / ".Vantoro1", destination / ".Vantoro2", destination / ".Vantoro3x",
                  destination / ".Vantoro", destination / "Documents", destination / ".Vantoro2/..", live});
    EXPECT_EQ(treeOf(destination.path()), before);
    EXPECT_TRUE(fs::exists(live));
}

TEST(HiddenFolder, canBeLeftForTheCaller)
{
    const TempFolder destination;
    ListDouble list;
    ExtractOptions options;
    options.destination = destination.path();
    options.hiddenFolderPath = destination / ".Vantoro5";
    RecordingDelegate delegate;
    const auto extract = [&](std::vector<FakeEntry> entries) {
        FakeArchive archive(std::move(entries));
        return runExtraction(archive, {"arc", 100, {}, {}}, options, Ending::InHiddenFolder, delegate, {});
    };
    auto report = extract({file("a"), file("b")});
    ASSERT_TRUE(report);
    EXPECT_EQ(report->createdItem, options.hiddenFolderPath + "/arc");
    EXPECT_TRUE(fs::exists(report->createdItem + "/a"));
    EXPECT_THAT(sweepOrphans(list.paths), IsEmpty()) << "locked as long as this process lives";
    report = extract({file("a")});
    ASSERT_FALSE(report);
    EXPECT_EQ(report.error().code, ErrorCode::AlreadyExists);
    removeHiddenFolder(options.hiddenFolderPath);
    EXPECT_THAT(treeOf(destination.path()), IsEmpty());
    EXPECT_THAT(list.paths, IsEmpty());
    report = extract({file("solo")});
    ASSERT_TRUE(report);
    EXPECT_EQ(report->createdItem, options.hiddenFolderPath + "/solo");
    removeHiddenFolder(options.hiddenFolderPath);
    ASSERT_FALSE(extract({file("../x")}));
    EXPECT_THAT(treeOf(destination.path()), IsEmpty());
    fs::create_directory(destination / "mine");
    removeHiddenFolder(destination / "mine");
    EXPECT_TRUE(fs::exists(destination / "mine"));
}

TEST(OrphanFile, remembersOverACrash)
{
    const TempFolder destination;
    const auto path = destination / "state/vantoro/unfinished";
    OrphanFile list(path);
    list.sweep();
    EXPECT_FALSE(fs::exists(path)) << "nothing to remember, nothing made";
    const auto orphan = leaveOrphan(destination.path());
    list.remember("/gone/.Vantoro1");
    list.remember(orphan);
    list.remember(orphan); // by another process, at the same time
    list.remember("two\n/lines/.Vantoro1");
    EXPECT_EQ(readFile(path), "/gone/.Vantoro1\n" + orphan + "\n" + orphan + "\n");
    list.forget(orphan);
    EXPECT_EQ(readFile(path), "/gone/.Vantoro1\n" + orphan + "\n");
    OrphanFile(path).sweep();
    EXPECT_FALSE(fs::exists(orphan));
    EXPECT_EQ(readFile(path), "");
}

}
