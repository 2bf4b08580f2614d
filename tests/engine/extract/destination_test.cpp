#include "tests/engine/extract/fake_archive.h"
#include "tests/engine/extract/temp_folder.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>

#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

namespace vantoro::test {

namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;

FakeEntry large(std::string name, unsigned mebibytes)
{
    auto entry = file(std::move(name), std::string(1 << 20, 'l'));
    entry.repeats = mebibytes;
    return entry;
}

/// A small file system of its own, where this process may mount one.
class SmallDisk {
public:
    explicit SmallDisk(const char* options)
        : m_isMounted(::mount("none", m_folder.path().c_str(), "tmpfs", 0, options) == 0)
    {
    }
    ~SmallDisk()
    {
        if (m_isMounted)
            ::umount2(m_folder.path().c_str(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    bool isMounted() const { return m_isMounted; }
    const std::string& path() const { return m_folder.path(); }

private:
    TempFolder m_folder;
    bool m_isMounted;
};

}

TEST(Destination, thatIsFullLeavesNothingBehind)
{
    const SmallDisk disk("size=4m");
    if (!disk.isMounted())
        GTEST_SKIP() << "no file system can be mounted here";
    for (const auto mode : {FolderMode::Auto, FolderMode::Never}) {
        FakeArchive archive({file("small"), large("big", 8), file("after")});
        archive.declaresSizes = false;
        RecordingDelegate delegate;
        const auto report = extractInto(disk.path(), archive, delegate, {.folder = mode}, {}, 1 << 24);
        ASSERT_FALSE(report);
        EXPECT_EQ(report.error().code, ErrorCode::NoSpace);
        EXPECT_THAT(treeOf(disk.path()), IsEmpty());
    }
}

TEST(Destination, withoutInodesLeavesNothingBehind)
{
    const SmallDisk disk("size=4m,nr_inodes=20");
    if (!disk.isMounted())
        GTEST_SKIP() << "no file system can be mounted here";
    std::vector<FakeEntry> entries;
    for (int i = 0; i < 40; ++i)
        entries.push_back(file("f" + std::to_string(i)));
    FakeArchive archive(entries);
    RecordingDelegate delegate;
    delegate.allows = true; // the crowd is asked for first
    const auto report = extractInto(disk.path(), archive, delegate);
    ASSERT_FALSE(report);
    EXPECT_EQ(report.error().code, ErrorCode::NoSpace);
    EXPECT_THAT(treeOf(disk.path()), IsEmpty());
}

TEST(Destination, thatRefusesToGrowIsAnError)
{
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{1 << 20, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const TempFolder destination;
    const auto report = extractInto(destination.path(), {file("a"), large("big", 3)});
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    ASSERT_FALSE(report);
    EXPECT_EQ(report.error().code, ErrorCode::WriteFailed);
    EXPECT_THAT(treeOf(destination.path()), IsEmpty());
}

TEST(Destination, thatVanishesIsNotMadeAnew)
{
    for (const auto mode : {FolderMode::Auto, FolderMode::Never}) {
        const TempFolder parent;
        const auto destination = parent / "dest";
        fs::create_directory(destination);
        auto second = file("d/b");
        second.before = [&] { fs::remove_all(destination); };
        const auto report = extractInto(destination, {file("a"), second, file("e/c")}, {.folder = mode});
        ASSERT_FALSE(report);
        EXPECT_EQ(report.error().code, ErrorCode::DestinationGone);
        EXPECT_THAT(treeOf(parent.path()), IsEmpty());
    }
}

TEST(Destination, thatIsNoFolderOrNotWritableIsAnError)
{
    const TempFolder folder;
    writeFile(folder / "file", "mine");
    for (const std::string name : {"file", "none"}) {
        const auto report = extractInto(folder / name, {file("a")});
        ASSERT_FALSE(report);
        EXPECT_EQ(report.error().code, ErrorCode::NotWritable);
        EXPECT_NE(report.error().osError, 0);
    }
    EXPECT_EQ(readFile(folder / "file"), "mine");
    const SmallDisk disk("ro,size=1m");
    if (disk.isMounted()) {
        const auto report = extractInto(disk.path(), {file("a")});
        ASSERT_FALSE(report);
        EXPECT_EQ(report.error().code, ErrorCode::NotWritable);
    }
}

}
