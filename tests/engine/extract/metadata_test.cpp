#include "tests/engine/extract/fake_archive.h"
#include "tests/engine/extract/temp_folder.h"

#include "engine/extract/file_time.h"

#include <gmock/gmock.h>

#include <cstdlib>

#include <sys/stat.h>
#include <sys/xattr.h>

namespace vantoro::test {

namespace {

struct stat statusOf(const std::string& path)
{
    struct stat status {};
    EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
    return status;
}

unsigned modeOf(const std::string& path) { return statusOf(path).st_mode & 07777U; }

FakeEntry withMode(FakeEntry entry, std::uint32_t mode)
{
    entry.mode = mode;
    return entry;
}

FakeEntry withDate(FakeEntry entry, std::int64_t seconds, std::uint32_t nanoseconds = 0)
{
    entry.modified = {seconds, nanoseconds, true, false};
    return entry;
}

}

TEST(Metadata, keepsModesWithoutWhatIsDangerous)
{
    const auto before = ::umask(027);
    const TempFolder destination;
    const auto report
        = extractInto(destination.path(),
                      {withMode(file("su"), 0106755), withMode(file("none"), 0), withMode(file("all"), 0777),
                       file("plain"), withMode(folder("zero"), 0), file("zero/a"), withMode(folder("sticky"), 03777),
                       withMode(folder("late/x"), 0500), withMode(folder("late"), 0700), folder("usual")});
    ::umask(before);
    ASSERT_TRUE(report);
    EXPECT_EQ(report->problemCount, 0U);
    EXPECT_EQ(modeOf(destination / "arc/su"), 0750U);
    EXPECT_EQ(modeOf(destination / "arc/none"), 0600U);
    EXPECT_EQ(modeOf(destination / "arc/all"), 0750U);
    EXPECT_EQ(modeOf(destination / "arc/plain"), 0640U);
    EXPECT_EQ(modeOf(destination / "arc/zero"), 0700U);
    EXPECT_EQ(modeOf(destination / "arc/sticky"), 0750U);
    EXPECT_EQ(modeOf(destination / "arc/late"), 0700U);
    EXPECT_EQ(modeOf(destination / "arc/usual"), 0750U);
    EXPECT_EQ(modeOf(destination / "arc"), 0750U) << "the hidden folder's own mode does not show";
    EXPECT_EQ(statusOf(destination / "arc/su").st_uid, ::geteuid());
}

TEST(Metadata, datesFilesAndFoldersAlsoWhenTheyComeFirst)
{
    const TempFolder destination;
    ASSERT_TRUE(extractInto(destination.path(),
                            {withDate(folder("d"), 1'000'000'000), withDate(file("d/f"), 1'100'000'000, 500),
                             withDate(folder("d/e"), 900'000'000), file("d/e/late"), withDate(file("old"), -5, 7),
                             withDate(file("far"), 99'999'999'999)},
                            {.folder = FolderMode::Never}));
    EXPECT_EQ(statusOf(destination / "d").st_mtime, 1'000'000'000);
    EXPECT_EQ(statusOf(destination / "d/e").st_mtime, 900'000'000);
    EXPECT_EQ(statusOf(destination / "d/f").st_mtime, 1'100'000'000);
    EXPECT_EQ(statusOf(destination / "d/f").st_mtim.tv_nsec, 500);
    EXPECT_EQ(statusOf(destination / "old").st_mtime, 0);
    EXPECT_EQ(statusOf(destination / "far").st_mtime, 4'354'819'199);
}

TEST(Metadata, readsLocalDatesInTheZoneOfTheMachine)
{
    const char* const zone = std::getenv("TZ");
    const std::string before = zone ? zone : "";
    ::setenv("TZ", "Europe/Berlin", 1);
    ::tzset();
    FileClock clock;
    const auto summer = clock.toFileTime({1'720'000'000, 5, true, true});
    const auto winter = clock.toFileTime({1'705'000'000, 5, true, true});
    zone ? ::setenv("TZ", before.c_str(), 1) : ::unsetenv("TZ");
    ::tzset();
    if (winter->tv_sec == 1'705'000'000)
        GTEST_SKIP() << "no zone data on this machine";
    EXPECT_EQ(summer->tv_sec, 1'720'000'000 - 7200);
    EXPECT_EQ(winter->tv_sec, 1'705'000'000 - 3600);
    EXPECT_EQ(winter->tv_nsec, 5);
}

TEST(Metadata, keepsOnlyAttributesOfTheUser)
{
    const TempFolder destination;
    const auto probe = destination / "probe";
    writeFile(probe, "");
    if (::setxattr(probe.c_str(), "user.x", "y", 1, 0) != 0)
        GTEST_SKIP() << "no extended attributes here";
    auto entry = file("a");
    entry.attributes = {{"user.comment", "hi"},
                        {"security.capability", std::string("\1\0\0\2\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 20)},
                        {"trusted.x", "y"},
                        {"system.posix_acl_access", "z"},
                        {"user.large", std::string((64 << 10) + 1, 'l')}};
    FakeArchive archive({entry, file("b")});
    RecordingDelegate delegate;
    ArchiveFacts facts{"arc", 1 << 20, {}, "https://example.org/arc.zip"};
    ExtractOptions options;
    options.destination = destination.path();
    ASSERT_TRUE(runExtraction(archive, facts, options, Ending::InDestination, delegate, {}));
    std::string names(1000, '\0');
    const auto length = ::listxattr((destination / "arc/a").c_str(), names.data(), names.size());
    ASSERT_GT(length, 0);
    names.resize(static_cast<std::size_t>(length));
    EXPECT_THAT(names, testing::HasSubstr("user.comment"));
    EXPECT_THAT(names, testing::Not(testing::HasSubstr("trusted")));
    EXPECT_THAT(names, testing::Not(testing::HasSubstr("security.cap")));
    EXPECT_THAT(names, testing::Not(testing::HasSubstr("posix_acl")));
    EXPECT_THAT(names, testing::Not(testing::HasSubstr("large")));
    std::string url(100, '\0');
    const auto count = ::getxattr((destination / "arc/b").c_str(), "user.xdg.origin.url", url.data(), url.size());
    ASSERT_GT(count, 0) << "the mark of a download goes with every file";
    EXPECT_EQ(url.substr(0, static_cast<std::size_t>(count)), facts.originUrl);
}

TEST(Metadata, leavesHolesAsHoles)
{
    const TempFolder destination;
    auto sparse = file("sparse", "data");
    sparse.hole = std::uint64_t{1} << 40;
    FakeArchive archive({sparse, file("b")});
    archive.declaresSizes = false;
    RecordingDelegate delegate;
    const auto report = extractInto(destination.path(), archive, delegate, {.folder = FolderMode::Never});
    ASSERT_TRUE(report);
    EXPECT_EQ(statusOf(destination / "sparse").st_size, (std::int64_t{1} << 40) + 4);
    EXPECT_LT(statusOf(destination / "sparse").st_blocks, 64);
    EXPECT_EQ(report->bytes, 5U);
}

}
