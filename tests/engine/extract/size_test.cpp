#include "tests/engine/extract/fake_archive.h"
#include "tests/engine/extract/temp_folder.h"

#include <gmock/gmock.h>

namespace vantoro::test {

namespace {

using testing::IsEmpty;

constexpr std::uint64_t kMiB = 1 << 20;

FakeEntry zeros(std::string name, std::uint64_t mebibytes)
{
    auto entry = file(std::move(name), std::string(kMiB, '\0'));
    entry.repeats = mebibytes;
    return entry;
}

Result<ExtractReport> extractBomb(const std::string& destination, FakeArchive& archive, RecordingDelegate& delegate,
                                  std::uint64_t packedSize)
{
    archive.blockSize = kMiB;
    return extractInto(destination, archive, delegate, {}, {}, packedSize);
}

}

TEST(Size, outOfProportionIsAskedBeforeAnythingIsWritten)
{
    const TempFolder destination;
    auto huge = file("huge");
    huge.size = 256 * kMiB;
    huge.before = [&] { FAIL() << "read before the answer"; };
    FakeArchive archive({huge});
    RecordingDelegate delegate;
    const auto report = extractBomb(destination.path(), archive, delegate, kMiB);
    ASSERT_FALSE(report);
    EXPECT_EQ(report.error().code, ErrorCode::BombRefused);
    ASSERT_EQ(delegate.questions.size(), 1U);
    EXPECT_EQ(delegate.questions[0].kind, SizeQuestion::Kind::Ratio);
    EXPECT_EQ(delegate.questions[0].expected, 256 * kMiB);
    EXPECT_EQ(delegate.questions[0].packed, kMiB);
    EXPECT_THAT(treeOf(destination.path()), IsEmpty());
}

TEST(Size, outOfProportionIsNoticedWhileWriting)
{
    const TempFolder destination;
    FakeArchive archive({zeros("a", 200), zeros("b", 3000)});
    archive.declaresSizes = false;
    RecordingDelegate delegate;
    const auto report = extractBomb(destination.path(), archive, delegate, kMiB);
    ASSERT_FALSE(report);
    EXPECT_EQ(report.error().code, ErrorCode::BombRefused);
    EXPECT_LT(delegate.last.written, 260 * kMiB);
    EXPECT_THAT(treeOf(destination.path()), IsEmpty());
}

TEST(Size, isAskedOnceAndOnlyWhenItMatters)
{
    const TempFolder destination;
    FakeArchive archive({zeros("a", 150), zeros("b", 150)});
    archive.declaresSizes = false;
    RecordingDelegate delegate;
    delegate.allows = true;
    ASSERT_TRUE(extractBomb(destination.path(), archive, delegate, kMiB));
    EXPECT_EQ(delegate.questions.size(), 1U);
    ASSERT_TRUE(extractBomb(destination.path(), archive, delegate, 2 * kMiB)); // 150 : 1
    EXPECT_EQ(delegate.questions.size(), 1U);
    FakeArchive small({zeros("a", 250)});
    ASSERT_TRUE(extractBomb(destination.path(), small, delegate, 1)); // nobody is hurt by 250 MB
    EXPECT_EQ(delegate.questions.size(), 1U);
}

TEST(Size, ofSparseFilesIsWhatTheyStore)
{
    const TempFolder destination;
    auto sparse = file("sparse");
    sparse.hole = 1 << 30;
    FakeArchive archive({sparse});
    archive.declaresSizes = false;
    RecordingDelegate delegate;
    ASSERT_TRUE(extractBomb(destination.path(), archive, delegate, 512));
    EXPECT_THAT(delegate.questions, IsEmpty());
}

TEST(Size, beyondTheFreeSpaceIsAsked)
{
    const TempFolder destination;
    auto huge = file("huge");
    huge.size = std::uint64_t{1} << 60;
    FakeArchive archive({huge});
    RecordingDelegate delegate;
    const auto report = extractBomb(destination.path(), archive, delegate, std::uint64_t{1} << 59);
    ASSERT_FALSE(report);
    EXPECT_EQ(report.error().code, ErrorCode::BombRefused);
    ASSERT_EQ(delegate.questions.size(), 1U);
    EXPECT_EQ(delegate.questions[0].kind, SizeQuestion::Kind::Space);
    EXPECT_LT(delegate.questions[0].available, std::uint64_t{1} << 59);
}

TEST(Size, aCrowdIsAsked)
{
    class Crowd final : public Archive {
    public:
        const ArchiveInfo& info() const override { return facts; }
        Result<void> list(EntryVisitor& visitor) override
        {
            return emit([&](const Entry& e) { return visitor.visit(e); });
        }
        Result<void> read(const ReadRequest&, Lanes& lanes) override
        {
            return emit([&](const Entry& entry) -> Result<void> {
                TRY(lanes.lane(0).begin(entry));
                return {};
            });
        }
        Result<void> emit(const std::function<Result<void>(const Entry&)>& take) const
        {
            Entry entry;
            entry.name = "d";
            entry.nameCharset = kCharsetUtf8;
            entry.kind = EntryKind::Folder;
            for (; entry.index <= 1'000'000; ++entry.index)
                TRY(take(entry));
            return {};
        }
        ArchiveInfo facts;
    } archive;
    for (const bool listsCheaply : {true, false}) {
        const TempFolder destination;
        archive.facts.listsCheaply = listsCheaply;
        RecordingDelegate delegate;
        const auto report = extractInto(destination.path(), archive, delegate);
        ASSERT_FALSE(report);
        EXPECT_EQ(report.error().code, ErrorCode::BombRefused);
        ASSERT_EQ(delegate.questions.size(), 1U);
        EXPECT_EQ(delegate.questions[0].kind, SizeQuestion::Kind::Crowd);
        EXPECT_THAT(treeOf(destination.path()), IsEmpty());
    }
}

}
