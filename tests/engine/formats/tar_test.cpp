#include "engine/formats/tar.h"
#include "engine/codecs/gzip.h"
#include "engine/codecs/xz.h"
#include "tests/support/archive_contents.h"
#include "tests/support/packers.h"
#include "tests/support/streams.h"
#include "tests/support/tar_maker.h"

#include <gtest/gtest.h>

using namespace vantoro;
using namespace vantoro::test;
using namespace vantoro::testing;

namespace {

const std::string kGnuMagic = "ustar  ";

struct Opened {
    ArchivePtr archive;
    Contents contents;
    const ArchiveInfo& info() const { return archive->info(); }
    const Item& operator[](std::size_t index) const { return contents.items.at(index); }
};

/// Reads everything; listing must say the same.
Opened readTar(const std::string& tar, const OpenContext& context = {})
{
    Opened opened{*kTarFormat.open(memorySource(tar), context), {}};
    const auto listed = listAll(*opened.archive);
    opened.contents = readAll(*opened.archive);
    EXPECT_EQ(listed.items.size(), opened.contents.items.size());
    for (std::size_t i = 0; i < std::min(listed.items.size(), opened.contents.items.size()); ++i) {
        EXPECT_EQ(listed.items[i].name, opened[i].name);
        EXPECT_EQ(listed.items[i].size, opened[i].size);
        EXPECT_EQ(opened[i].index, i);
        EXPECT_TRUE(opened[i].wasEnded);
    }
    return opened;
}

Opened readStream(StreamFactory factory, std::optional<std::vector<std::uint64_t>> selection = std::nullopt)
{
    Opened opened{*kTarFormat.openStream(std::move(factory), {}), {}};
    opened.contents = readAll(*opened.archive, std::move(selection));
    return opened;
}

Match probe(const std::string& head, std::string_view name)
{
    const auto source = memorySource(head);
    return kTarFormat.probe({asBytes(head), source.get(), name});
}

TEST(Tar, readsFilesFoldersLinksAndDevices)
{
    const auto tar = tarMember({.name = "docs/", .type = '5', .mode = "0000755"})
        + tarMember({.name = "docs/a.txt", .owner = "ada", .group = "staff"}, "hello")
        + tarMember({.name = "link", .type = '2', .linkName = "docs/a.txt"})
        + tarMember({.name = "hard", .type = '1', .linkName = "docs/a.txt"}) + tarMember({.name = "null", .type = '3'})
        + tarMember({.name = "pipe", .type = '6'}) + tarMember({.name = "name.txt", .tail = "a/long/prefix"}, "x")
        + tarEnd();
    const auto opened = readTar(tar);
    ASSERT_TRUE(opened.contents.result);
    ASSERT_EQ(opened.contents.items.size(), 7U);
    EXPECT_FALSE(opened.info().damage);
    EXPECT_EQ(opened[0].kind, EntryKind::Folder);
    EXPECT_EQ(opened[0].mode, 0755U);
    EXPECT_EQ(opened[1].data, "hello");
    EXPECT_EQ(opened[1].owner, "ada");
    EXPECT_EQ(opened[1].group, "staff");
    EXPECT_EQ(opened[1].modified.seconds, 1021313024);
    EXPECT_EQ(opened[1].nameCharset, kCharsetUnknown);
    EXPECT_EQ(opened[2].kind, EntryKind::SymbolicLink);
    EXPECT_EQ(opened[2].linkTarget, "docs/a.txt");
    EXPECT_EQ(opened[3].kind, EntryKind::HardLink);
    EXPECT_EQ(opened[4].kind, EntryKind::Other);
    EXPECT_EQ(opened[5].kind, EntryKind::Other);
    EXPECT_EQ(opened[6].name, "a/long/prefix/name.txt");
}

TEST(Tar, readsTheOldestDialect)
{
    auto file = tarHeader({.name = "old.txt", .type = '\0', .size = "          5 ", .magic = ""}, 5);
    const auto tar = tarMember({.name = "folder/", .type = '\0', .magic = ""}) + file + padded("12345") + tarEnd();
    const auto opened = readTar(tar);
    ASSERT_EQ(opened.contents.items.size(), 2U);
    EXPECT_EQ(opened[0].kind, EntryKind::Folder);
    EXPECT_EQ(opened[1].data, "12345");
    EXPECT_EQ(probe(tar, "x"), Match::Likely);
}

TEST(Tar, acceptsChecksumsOfSignedBytesToo)
{
    auto header = tarHeader({.name = std::string(90, '\xE4')}, 0);
    const auto plain = std::stol(header.substr(148, 6), nullptr, 8);
    putField(header, 148, octal(static_cast<std::uint64_t>(plain - 256 * 90), 6));
    EXPECT_EQ(readTar(header + tarEnd()).contents.items.size(), 1U);
    putField(header, 148, octal(static_cast<std::uint64_t>(plain - 256 * 89), 6));
    EXPECT_EQ(readTar(header + tarEnd()).contents.items.size(), 0U);
}

TEST(Tar, takesLongNamesAndLargeNumbersOfGnuTar)
{
    const std::string longName(300, 'n');
    const std::string longLink(200, 'l');
    std::string binaryTime("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xF6"); // -10
    const auto tar = tarMember({.name = "././@LongLink", .type = 'L', .magic = kGnuMagic}, longName + '\0')
        + tarMember({.name = "././@LongLink", .type = 'K', .magic = kGnuMagic}, longLink + '\0')
        + tarMember({.name = "short", .type = '2', .modified = binaryTime, .linkName = "short", .magic = kGnuMagic})
        + tarMember({.name = "next", .size = std::string("\x80\0\0\0\0\0\0\0\0\0\0\3", 12), .magic = kGnuMagic}, "abc")
        + tarEnd();
    const auto opened = readTar(tar);
    ASSERT_EQ(opened.contents.items.size(), 2U);
    EXPECT_EQ(opened[0].name, longName);
    EXPECT_EQ(opened[0].linkTarget, longLink);
    EXPECT_EQ(opened[0].modified.seconds, -10);
    EXPECT_EQ(opened[1].name, "next");
    EXPECT_EQ(opened[1].data, "abc");
}

TEST(Tar, believesExtendedHeadersForOneFileAndGlobalOnesForAll)
{
    const auto tar = paxHeader(paxRecord("uname", "everybody") + paxRecord("size", "1"), 'g')
        + paxHeader(paxRecord("path", "d\xC3\xA9j\xC3\xA0.txt") + paxRecord("size", "5") + paxRecord("mtime", "-1.25")
                    + paxRecord("SCHILY.xattr.user.note", std::string("a\0b", 3))
                    + paxRecord("LIBARCHIVE.xattr.user.b%3Dc", "aGk=") + paxRecord("unknown.key", "passed over"))
        + tarMember({.name = "stub", .size = "00000000000"}, "") + padded("12345")
        + tarMember({.name = "plain"}, "four") + tarEnd();
    const auto opened = readTar(tar);
    ASSERT_EQ(opened.contents.items.size(), 2U);
    EXPECT_EQ(opened[0].name, "d\xC3\xA9j\xC3\xA0.txt");
    EXPECT_EQ(opened[0].nameCharset, kCharsetUtf8);
    EXPECT_EQ(opened[0].data, "12345");
    EXPECT_EQ(opened[0].owner, "everybody");
    EXPECT_EQ(opened[0].modified.seconds, -2);
    EXPECT_EQ(opened[0].modified.nanoseconds, 750'000'000U);
    EXPECT_EQ(opened[1].name, "plain");
    EXPECT_EQ(opened[1].nameCharset, kCharsetUnknown);
    EXPECT_EQ(opened[1].data, "four");
    EXPECT_EQ(opened[1].owner, "everybody");
}

TEST(Tar, handsOnExtendedAttributes)
{
    struct Visitor final : EntryVisitor {
        Result<void> visit(const Entry& entry) override
        {
            for (const auto& attribute : entry.attributes)
                seen += std::string(attribute.name) + '=' + std::string(asText(attribute.value)) + ';';
            return {};
        }
        std::string seen;
    } visitor;
    const auto tar
        = paxHeader(paxRecord("SCHILY.xattr.user.note", "text") + paxRecord("LIBARCHIVE.xattr.user.b%3Dc", "aGk="))
        + tarMember({.name = "a"}) + tarMember({.name = "b"}) + tarEnd();
    ASSERT_TRUE((*kTarFormat.open(memorySource(tar), {}))->list(visitor));
    EXPECT_EQ(visitor.seen, "user.note=text;user.b=c=hi;");
}

TEST(Tar, leavesTheCharsetOpenWhereTheHeaderSaysBinary)
{
    const auto tar = paxHeader(paxRecord("hdrcharset", "BINARY") + paxRecord("path", "\x8A\xBF"))
        + tarMember({.name = "x"}) + tarEnd();
    const auto opened = readTar(tar);
    EXPECT_EQ(opened[0].name, "\x8A\xBF");
    EXPECT_EQ(opened[0].nameCharset, kCharsetUnknown);
}

/// The same file in every way of storing it: 2 bytes at 3, 3 bytes at 1000, 2000 bytes in all.
class SparseTar : public ::testing::TestWithParam<std::pair<const char*, std::string>> {};

std::string oldSparse()
{
    std::string tail(167, '\0'); // from byte 345 on
    const auto put = [&](std::size_t position, const std::string& text) { putField(tail, position - 345, text); };
    put(386, octal(3, 11));
    put(398, octal(2, 11));
    put(410, octal(1000, 11));
    put(422, octal(3, 11));
    put(434, octal(2000, 11)); // closes the map: nothing at the end
    put(446, octal(0, 11));
    put(483, octal(2000, 11));
    return tarMember({.name = "sparse", .type = 'S', .magic = kGnuMagic, .tail = tail}, "abcde") + tarEnd();
}

std::string oldSparseExtended()
{
    std::string tail(167, '\0');
    const auto put = [&](std::size_t position, const std::string& text) { putField(tail, position - 345, text); };
    put(386, octal(3, 11));
    put(398, octal(2, 11));
    tail[482 - 345] = 1;
    put(483, octal(2000, 11));
    std::string more(512, '\0');
    putField(more, 0, octal(1000, 11));
    putField(more, 12, octal(3, 11));
    return tarHeader({.name = "sparse", .type = 'S', .magic = kGnuMagic, .tail = tail}, 5) + more + padded("abcde")
        + tarEnd();
}

const std::string kName = paxRecord("GNU.sparse.name", "sparse");

INSTANTIATE_TEST_SUITE_P(
    Forms, SparseTar,
    ::testing::Values(
        std::pair{"oldGnu", oldSparse()}, std::pair{"oldGnuExtended", oldSparseExtended()},
        std::pair{"pax00",
                  paxHeader(paxRecord("GNU.sparse.size", "2000") + paxRecord("GNU.sparse.numblocks", "2")
                            + paxRecord("GNU.sparse.offset", "3") + paxRecord("GNU.sparse.numbytes", "2")
                            + paxRecord("GNU.sparse.offset", "1000") + paxRecord("GNU.sparse.numbytes", "3"))
                      + tarMember({.name = "sparse"}, "abcde") + tarEnd()},
        std::pair{"pax01",
                  paxHeader(kName + paxRecord("GNU.sparse.size", "2000") + paxRecord("GNU.sparse.numblocks", "2")
                            + paxRecord("GNU.sparse.map", "3,2,1000,3"))
                      + tarMember({.name = "./GNUSparseFile.1/sparse"}, "abcde") + tarEnd()},
        std::pair{"pax10",
                  paxHeader(kName + paxRecord("GNU.sparse.major", "1") + paxRecord("GNU.sparse.minor", "0")
                            + paxRecord("GNU.sparse.realsize", "2000"))
                      + tarMember({.name = "./GNUSparseFile.1/sparse"}, padded("2\n3\n2\n1000\n3\n") + "abcde")
                      + tarEnd()}),
    [](const auto& form) { return std::string(form.param.first); });

TEST_P(SparseTar, fillsTheHoles)
{
    const auto opened = readTar(GetParam().second);
    ASSERT_EQ(opened.contents.items.size(), 1U);
    std::string expected(2000, '\0');
    expected.replace(3, 2, "ab");
    expected.replace(1000, 3, "cde");
    EXPECT_EQ(opened[0].name, "sparse");
    EXPECT_EQ(opened[0].size, 2000U);
    EXPECT_TRUE(opened[0].outcome);
    EXPECT_TRUE(opened[0].data == expected);
    EXPECT_FALSE(opened.info().damage);
}

TEST(Tar, refusesSparseMapsThatAreOutOfOrderOrTooLong)
{
    for (const auto* map : {"1000,2,3,3", "3,2,4,3", "1999,2,2100,3", "3,2,1000,4", "3,2,1000", "3,x"}) {
        const auto tar = paxHeader(paxRecord("GNU.sparse.size", "2000") + paxRecord("GNU.sparse.map", map))
            + tarMember({.name = "sparse"}, "abcde") + tarMember({.name = "next"}, "fine") + tarEnd();
        const auto opened = readTar(tar);
        ASSERT_EQ(opened.contents.items.size(), 2U) << map;
        ASSERT_FALSE(opened[0].outcome) << map;
        EXPECT_EQ(opened[0].outcome.error().code, ErrorCode::Corrupt);
        EXPECT_EQ(opened[1].data, "fine");
    }
}

TEST(Tar, findsTheNextMemberBehindADamagedHeader)
{
    auto damaged = tarMember({.name = "lost"}, "does not matter");
    damaged[3] = 'x';
    const auto opened = readTar(tarMember({.name = "one"}, "1") + damaged + tarMember({.name = "two"}, "2") + tarEnd());
    ASSERT_EQ(opened.contents.items.size(), 2U);
    EXPECT_EQ(opened[1].data, "2");
    EXPECT_TRUE(opened.contents.result);
    ASSERT_TRUE(opened.info().damage);
    EXPECT_EQ(opened.info().damage->code, ErrorCode::Corrupt);
    EXPECT_FALSE(opened.info().firstDoubtfulEntry);
}

TEST(Tar, reportsSizesThatNoFileHas)
{
    for (const auto& size : {std::string("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xF0"),
                             std::string("\x80\1\0\0\0\0\0\0\0\0\0\0", 12), std::string("7777777777z")}) {
        const auto opened
            = readTar(tarMember({.name = "bad", .size = size}) + tarMember({.name = "good"}, "ok") + tarEnd());
        ASSERT_EQ(opened.contents.items.size(), 1U);
        EXPECT_EQ(opened[0].name, "good");
        EXPECT_TRUE(opened.info().damage);
    }
}

TEST(Tar, saysWhereItWasCut)
{
    const auto whole
        = tarMember({.name = "one"}, "first") + tarMember({.name = "two"}, std::string(3000, '2')) + tarEnd();
    for (std::size_t length = 1; length < whole.size(); length += length % 512 == 511 ? 1U : 255U) {
        auto archive = *kTarFormat.open(memorySource(whole.substr(0, length)), {});
        const auto contents = readAll(*archive);
        const bool hasEndMark = length >= whole.size() - 512;
        EXPECT_EQ(contents.result && !archive->info().damage, hasEndMark) << length;
        if (length > 512 + 5 && length <= 1024) {
            ASSERT_EQ(contents.items.size(), 1U);
            EXPECT_TRUE(contents.items[0].outcome);
        }
        if (length >= 1536 && length < 4536) {
            ASSERT_EQ(contents.items.size(), 2U) << length;
            ASSERT_FALSE(contents.items[1].outcome);
            EXPECT_EQ(contents.items[1].outcome.error().code, ErrorCode::Truncated);
        }
    }
}

TEST(Tar, stopsAtTheEndMark)
{
    const auto opened
        = readTar(tarMember({.name = "one"}, "1") + tarEnd() + tarMember({.name = "two"}, "2") + tarEnd());
    EXPECT_EQ(opened.contents.items.size(), 1U);
    const auto goesOn = readTar(tarMember({.name = "one"}, "1") + std::string(512, '\0')
                                + tarMember({.name = "two"}, "2") + tarEnd());
    EXPECT_EQ(goesOn.contents.items.size(), 2U) << "a single zero block ends nothing";
}

TEST(Tar, doesNotTakeASizeOfALinkForData)
{
    const auto tar = tarMember({.name = "a"}, "data")
        + tarMember({.name = "b", .type = '1', .size = "00000000004", .linkName = "a"})
        + tarMember({.name = "c", .type = '1', .linkName = "a"}, "data") + tarMember({.name = "d"}, "end") + tarEnd();
    const auto opened = readTar(tar);
    ASSERT_EQ(opened.contents.items.size(), 4U);
    EXPECT_EQ(opened[3].data, "end");
    EXPECT_FALSE(opened.info().damage);
}

TEST(Tar, deliversChosenEntriesAndDropsRefusedOnes)
{
    std::string tar;
    for (int i = 0; i < 10; ++i)
        tar += tarMember({.name = "f" + std::to_string(i)}, std::string(400'000, static_cast<char>('0' + i)));
    tar += tarEnd();
    const auto factory = [&tar] { return Result<StreamPtr>(textStream(tar, 1000)); };
    for (const bool streamed : {false, true}) {
        auto archive = streamed ? *kTarFormat.openStream(factory, {}) : *kTarFormat.open(memorySource(tar), {});
        const auto contents = readAll(*archive, std::vector<std::uint64_t>{2, 7});
        ASSERT_EQ(contents.items.size(), 2U);
        EXPECT_EQ(contents.items[0].index, 2U);
        EXPECT_TRUE(contents.items[1].data == std::string(400'000, '7'));
        CollectingLanes lanes;
        lanes.refuseAfter = 100'000;
        ASSERT_TRUE(archive->read({}, lanes));
        ASSERT_EQ(lanes.items.size(), 10U);
        EXPECT_EQ(lanes.items[9].name, "f9");
        ASSERT_FALSE(lanes.items[9].outcome);
        EXPECT_EQ(lanes.items[9].outcome.error().code, ErrorCode::EntryRefused);
    }
}

TEST(Tar, isNotAnImageThatBeginsWithZeros)
{
    EXPECT_EQ(probe(std::string(200'000, '\0'), "disk.img"), Match::No);
    EXPECT_EQ(probe(std::string(200'000, '\0'), "disk.tar"), Match::No);
    EXPECT_EQ(probe(std::string(10240, '\0'), "empty.img"), Match::No);
    EXPECT_EQ(probe(std::string(10240, '\0'), "empty.TAR"), Match::ByName);
    EXPECT_EQ(probe(tarMember({.name = "a"}), "whatever"), Match::Sure);
    auto damaged = tarMember({.name = "a"});
    damaged[0] = 'b';
    EXPECT_EQ(probe(damaged, "a.tar"), Match::No);
    const auto empty = readTar(std::string(10240, '\0'));
    EXPECT_TRUE(empty.contents.result);
    EXPECT_FALSE(empty.info().damage);
}

TEST(Tar, capsNamesAndHeaders)
{
    const auto tar = paxHeader(paxRecord("path", std::string(5000, 'p'))) + tarMember({.name = "x"}, "1") + tarEnd();
    OpenContext context;
    context.limits.nameLength = 4096;
    const auto opened = readTar(tar, context);
    EXPECT_EQ(opened[0].name.size(), 4096U);
    ASSERT_FALSE(opened[0].outcome);
    EXPECT_EQ(opened[0].outcome.error().code, ErrorCode::LimitExceeded);
    context.limits.headerBlock = 1000;
    const auto capped = readTar(tar, context);
    ASSERT_FALSE(capped[0].outcome);
    EXPECT_EQ(capped[0].outcome.error().code, ErrorCode::LimitExceeded);
}

std::string manyFiles(int count)
{
    constexpr std::size_t kSize = 20'000;
    const auto data = packers::sampleData(kSize * static_cast<std::size_t>(count));
    std::string tar;
    for (int i = 0; i < count; ++i)
        tar += tarMember({.name = "f" + std::to_string(i)}, data.substr(static_cast<std::size_t>(i) * kSize, kSize));
    return tar + tarEnd();
}

TEST(TarInStream, condemnsWhatNoChecksumConfirmed)
{
    auto packed = packers::gzip(manyFiles(10));
    packed[packed.size() - 6] ^= 1; // the CRC-32
    const auto opened = readStream([&] { return openGzip(textStream(packed)); });
    EXPECT_EQ(opened.contents.items.size(), 10U);
    ASSERT_TRUE(opened.info().damage);
    EXPECT_EQ(opened.info().damage->code, ErrorCode::ChecksumMismatch);
    EXPECT_EQ(opened.info().firstDoubtfulEntry, 0U);
    // Also when the chosen entries were long complete.
    const auto chosen = readStream([&] { return openGzip(textStream(packed)); }, std::vector<std::uint64_t>{1});
    EXPECT_EQ(chosen.info().firstDoubtfulEntry, 0U);
}

TEST(TarInStream, trustsWhatAnEarlierChecksumConfirmed)
{
    // Each file takes 20,992 bytes with its header and padding: four of them end before the second block does.
    auto packed = packers::xz(manyFiles(10), 50'000);
    const auto source = memorySource(packed);
    const auto blocks = readXzBlocks(*source, {});
    packed[packed.size() * 5 / 10] ^= 1; // in the third of five blocks
    const auto opened = readStream([&] { return openXz(textStream(packed), {}, blocks); });
    ASSERT_TRUE(opened.info().damage);
    EXPECT_EQ(opened.info().firstDoubtfulEntry, 4U);
    EXPECT_GE(opened.contents.items.size(), 4U);
    EXPECT_FALSE(opened.contents.items.back().outcome);
}

TEST(TarInStream, condemnsOnlyTheCutEntryWhenTheStreamEndsEarly)
{
    const auto packed = packers::gzip(manyFiles(10));
    const auto opened = readStream([&] { return openGzip(textStream(packed.substr(0, packed.size() / 2))); });
    ASSERT_GE(opened.contents.items.size(), 2U);
    EXPECT_FALSE(opened.contents.items.back().outcome);
    EXPECT_TRUE(opened[0].outcome);
    ASSERT_TRUE(opened.info().damage);
    EXPECT_EQ(opened.info().damage->code, ErrorCode::Truncated);
    EXPECT_FALSE(opened.info().firstDoubtfulEntry);
}

TEST(TarInStream, acceptsPaddingAndReportsForeignBytes)
{
    const auto packed = packers::gzip(manyFiles(3));
    const auto fine = readStream([&] { return openGzip(textStream(packed + std::string(700, '\0'))); });
    EXPECT_FALSE(fine.info().damage);
    const auto foreign = readStream([&] { return openGzip(textStream(packed + "foreign")); });
    ASSERT_TRUE(foreign.info().damage);
    EXPECT_EQ(foreign.info().damage->code, ErrorCode::TrailingData);
    EXPECT_FALSE(foreign.info().firstDoubtfulEntry);
    EXPECT_EQ(foreign.contents.items.size(), 3U);
}

}
