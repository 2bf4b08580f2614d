#include "engine/backends/lhasa_archive.h"
#include "engine/crypto/crc16.h"
#include "tests/support/archive_contents.h"

#include <gtest/gtest.h>

namespace vantoro {

namespace {

using namespace test;

std::string le(std::uint64_t value, unsigned bytes)
{
    std::string text;
    for (unsigned i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i));
    return text;
}

std::uint16_t crcOf(std::string_view data) { return crc16Arc(0, asBytes(data)); }

constexpr std::uint32_t kStamp = 1234567890; // 2009-02-13 23:31:30 UTC
constexpr std::uint32_t kDosStamp = (29U << 25) | (2U << 21) | (13U << 16) | (23U << 11) | (31U << 5) | 15U;

/// What goes into a header; `extensions` are type bytes with their data.
struct Member {
    std::string name, data;
    char system = 'M';
    std::string method = "-lh0-";
    std::vector<std::string> extensions;
    std::string packed; ///< `data` as the method stores them; empty: `data` themselves
};

std::string chain(const std::vector<std::string>& extensions, unsigned wide)
{
    std::string text;
    for (const auto& extension : extensions)
        text += le(extension.size() + wide, wide) + extension;
    return text + le(0, wide);
}

/// The archive of one member with a header of the given level, written after LHa for UNIX's header.doc.
std::string archiveOf(const Member& member, unsigned level)
{
    const auto& packed = member.packed.empty() ? member.data : member.packed;
    const auto crc = le(crcOf(member.data), 2);
    const auto sizes = [&](std::size_t extra) { return le(packed.size() + extra, 4) + le(member.data.size(), 4); };
    if (level < 2) {
        const auto extensions = level == 1 ? chain(member.extensions, 2) : "";
        auto rest = member.method + sizes(level == 1 ? extensions.size() - 2 : 0) + le(kDosStamp, 4) + "\x20"
            + static_cast<char>(level) + static_cast<char>(member.name.size()) + member.name + crc;
        if (level == 1)
            rest += member.system + extensions.substr(0, 2);
        unsigned sum = 0;
        for (const char c : rest)
            sum += static_cast<unsigned char>(c);
        return le(rest.size(), 1) + le(sum & 0xFF, 1) + rest + (level == 1 ? extensions.substr(2) : "") + packed
            + std::string(1, '\0');
    }
    const unsigned wide = level == 2 ? 2 : 4;
    auto named = member.extensions;
    named.insert(named.begin(), "\x01" + member.name);
    const auto body = chain(named, wide);
    const auto fixed
        = member.method + sizes(0) + le(kStamp, 4) + "\x20" + static_cast<char>(level) + crc + member.system;
    const auto size = 2 + fixed.size() + (level == 3 ? 4 : 0) + body.size();
    return (level == 2 ? le(size, 2) + fixed : le(4, 2) + fixed + le(size, 4)) + body + packed + std::string(1, '\0');
}

std::pair<const FormatRow*, Match> probe(const SourcePtr& source, std::string_view name = "x")
{
    const auto head = readBlock(*source, 0, 256 << 10).value();
    for (const auto& row : lhasaRows()) {
        if (const auto match = row.probe({head, source.get(), name}); match != Match::No)
            return {&row, match};
    }
    return {nullptr, Match::No};
}

Contents contentsOf(const std::string& archive)
{
    const auto source = memorySource(archive);
    const auto [row, match] = probe(source);
    if (!row)
        return {{}, Error{ErrorCode::NotAnArchive, "test"}};
    auto opened = row->open(source, {});
    if (!opened)
        return {{}, opened.error()};
    return readAll(**opened);
}

class LhaLevels : public testing::TestWithParam<unsigned> {};

TEST_P(LhaLevels, nameSizeTimeAndDataComeOut)
{
    const auto contents = contentsOf(archiveOf({"README.TXT", "some text\n"}, GetParam()));
    ASSERT_TRUE(contents.result);
    ASSERT_EQ(contents.items.size(), 1U);
    const auto& item = contents.items[0];
    EXPECT_EQ(item.name, "README.TXT"); // as stored: not in small letters
    EXPECT_EQ(item.pathStyle, PathStyle::Dos);
    EXPECT_EQ(item.data, "some text\n");
    EXPECT_TRUE(item.outcome);
    EXPECT_EQ(item.modified.seconds, kStamp);
    EXPECT_EQ(item.modified.isLocal, GetParam() < 2);
}

// Whatever byte is broken and wherever the file is cut: never other data under a success.
TEST_P(LhaLevels, damageNeverPassesAsSuccess)
{
    const std::string text = "some text that is long enough to be cut somewhere\n";
    const auto whole = archiveOf({"A.TXT", text, 'U', "-lh0-", {std::string("\x50\xA4\x81", 3)}}, GetParam());
    const auto check = [&](const std::string& archive, const std::string& what) {
        for (const auto& item : contentsOf(archive).items) {
            const bool isSuccess = item.kind == EntryKind::File && item.outcome;
            EXPECT_TRUE(!isSuccess || item.data == text) << what;
        }
    };
    for (std::size_t i = 0; i + 1 < whole.size(); ++i) {
        check(whole.substr(0, i), "cut at " + std::to_string(i));
        auto broken = whole;
        broken[i] = static_cast<char>(broken[i] ^ 0x41);
        // Sizes of zero with a CRC of zero cannot be told from an empty file; a changed size must fail.
        check(broken, "byte " + std::to_string(i));
    }
}

INSTANTIATE_TEST_SUITE_P(All, LhaLevels, testing::Values(0U, 1U, 2U, 3U));

TEST(Lha, bytesOfNamesAreKept)
{
    // U+8868 in Shift-JIS ends in 0x5C, which is no separator.
    const std::string name = "\x95\x5C.txt";
    EXPECT_EQ(contentsOf(archiveOf({name, "x"}, 0)).items.at(0).name, name);
    const auto inFolder = archiveOf({name,
                                     "x",
                                     'w',
                                     "-lh0-",
                                     {"\x02\x95\x5C\xFF"
                                      "B\xFF"}},
                                    2);
    EXPECT_EQ(contentsOf(inFolder).items.at(0).name, "\x95\x5C/B/" + name);
}

TEST(Lha, unicodeNamesWinAndAreDeclared)
{
    const auto archive
        = archiveOf({"?.txt",
                     "x",
                     'w',
                     "-lh0-",
                     {std::string("\x44\x68\x88.\0t\0\x3D\xD8\x00\xDE", 11), std::string("\x45\xE4\x00\xFF\xFF", 5)}},
                    2);
    const auto item = contentsOf(archive).items.at(0);
    EXPECT_EQ(item.name, "ä/表.t😀");
    EXPECT_EQ(item.nameCharset, kCharsetUtf8);
}

TEST(Lha, unixLinksFoldersModesAndOwners)
{
    const std::vector<std::string> linkExtensions = {std::string("\x50\xFF\xA1", 3), "\x02sub|..\xFF", "\x53me"};
    const auto link = contentsOf(archiveOf({"target", "", 'U', "-lhd-", linkExtensions}, 2)).items.at(0);
    EXPECT_EQ(link.kind, EntryKind::SymbolicLink);
    EXPECT_EQ(link.name, "sub");
    EXPECT_EQ(link.linkTarget, "../target");
    EXPECT_EQ(link.owner, "me");
    EXPECT_EQ(link.pathStyle, PathStyle::Unix);
    const auto folder = contentsOf(archiveOf({"",
                                              "",
                                              'U',
                                              "-lhd-",
                                              {"\x02"
                                               "a\xFF"
                                               "b\xFF"}},
                                             1))
                            .items.at(0);
    EXPECT_EQ(folder.kind, EntryKind::Folder);
    EXPECT_EQ(folder.name, "a/b/");
    // A level 0 header of Unix: time and mode behind the CRC.
    const auto file = contentsOf(archiveOf({"f", "x", 'U', "-lh0-", {std::string("\x50\xED\x81", 3)}}, 1)).items.at(0);
    EXPECT_EQ(file.mode, 0100755U);
}

TEST(Lha, theArchiveBehindAProgramIsFound)
{
    const auto archive = "MZ" + std::string(5000, '\x90') + "-lh5- is no header" + archiveOf({"A", "inside"}, 1);
    const auto [row, match] = probe(memorySource(archive));
    EXPECT_EQ(match, Match::Stub);
    EXPECT_EQ(contentsOf(archive).items.at(0).data, "inside");
    EXPECT_EQ(probe(memorySource("text" + archive.substr(2))).second, Match::No);
    EXPECT_EQ(probe(memorySource("text" + archive.substr(2)), "X.COM").second, Match::Stub);
}

TEST(Lha, macBinaryForksBecomeTwoEntries)
{
    std::string data(128, '\0');
    data[1] = 1;
    data[2] = 'A';
    data[86] = 4; // data fork, big endian
    data[90] = 3; // resource fork
    data += "data" + std::string(124, '\0') + "res" + std::string(125, '\0');
    const auto contents = contentsOf(archiveOf({"A", data, 'm'}, 1));
    ASSERT_EQ(contents.items.size(), 2U);
    EXPECT_EQ(contents.items[0].kind, EntryKind::File);
    EXPECT_EQ(contents.items[0].data, "data");
    EXPECT_EQ(contents.items[0].size, 4U);
    EXPECT_EQ(contents.items[1].kind, EntryKind::ResourceFork);
    EXPECT_EQ(contents.items[1].data, "res");
    // Not from a Mac: the same bytes stay one file.
    EXPECT_EQ(contentsOf(archiveOf({"A", data, 'M'}, 1)).items.at(0).data, data);
}

// -lh5- by hand: a block of 50 codes; the trees of code lengths, letters and distances with a single symbol each, so
// that no code needs a bit. 16 bits 50; 5+5 bits 0, 0; 9+9 bits 0, 'A'; 4+4 bits 0, 0.
TEST(Lha, compressedDataAreDecodedAndChecked)
{
    const std::string bits = "0000000000110010"
                             "00000"
                             "00000"
                             "000000000"
                             "001000001"
                             "0000"
                             "0000"
                             "0000";
    std::string packed;
    for (std::size_t i = 0; i + 8 <= bits.size(); i += 8)
        packed += static_cast<char>(std::stoi(bits.substr(i, 8), nullptr, 2));
    const std::string data(50, 'A');
    EXPECT_EQ(contentsOf(archiveOf({"A", data, 'M', "-lh5-", {}, packed}, 0)).items.at(0).data, data);
    auto archive = archiveOf({"A", data, 'M', "-lh5-", {}, packed}, 2);
    archive[21] = static_cast<char>(archive[21] ^ 1);
    EXPECT_EQ(contentsOf(archive).items.at(0).outcome.error().code, ErrorCode::ChecksumMismatch);
    const auto unknown = contentsOf(archiveOf({"A", data, 'M', "-lhq-", {}, packed}, 0));
    EXPECT_EQ(unknown.items.at(0).outcome.error().code, ErrorCode::UnsupportedMethod);
}

// liblhasa does not know -lh2-, and nothing at hand writes it.
TEST(Lha, dynamicCodesOfARealArchiveAreDecoded)
{
    const auto source = openFileSource(VANTORO_SOURCE_DIR "/../shared/samples/lha/lh2.lzh");
    if (!source)
        GTEST_SKIP() << "needs ../shared/samples/lha/lh2.lzh";
    const auto contents = readAll(*probe(*source).first->open(*source, {}).value());
    ASSERT_EQ(contents.items.size(), 1U);
    EXPECT_TRUE(contents.items[0].outcome); // the CRC holds
    EXPECT_EQ(contents.items[0].data.size(), 2853U);
}

// Noise decodes to something or to an error, and the trees stay sound: the debug build checks every index.
TEST(Lha, noiseNeverUnsettlesTheDynamicTrees)
{
    std::uint32_t state = 1;
    for (int round = 0; round < 20; ++round) {
        std::string noise(60'000, '\0');
        for (auto& letter : noise) {
            state = state * 1664525 + 1013904223;
            letter = static_cast<char>(state >> (round % 2 ? 24 : 27)); // some streams full of short codes
        }
        const std::string size(400'000, '\0');
        const auto item = contentsOf(archiveOf({"N", size, 'M', "-lh2-", {}, noise}, 1)).items.at(0);
        EXPECT_FALSE(item.outcome);
        EXPECT_LE(item.data.size(), size.size());
    }
}

TEST(Lha, aDamagedHeaderEndsTheListingAndIsTold)
{
    auto first = archiveOf({"FIRST", "one"}, 0);
    first.pop_back(); // the mark of the end
    auto second = archiveOf({"SECOND", "two"}, 0);
    EXPECT_EQ(contentsOf(first + second).items.size(), 2U);
    second[25] ^= 1; // a letter of the name: the sum is wrong
    const auto source = memorySource(first + second);
    const auto archive = probe(source).first->open(source, {}).value();
    EXPECT_EQ(readAll(*archive).items.size(), 1U);
    EXPECT_EQ(archive->info().damage.value().code, ErrorCode::Corrupt);
    // CP/M pads files with 0x1A: that is no damage.
    const auto padded = memorySource(first + std::string(100, '\x1A'));
    EXPECT_FALSE(probe(padded).first->open(padded, {}).value()->info().damage);
}

}

}
