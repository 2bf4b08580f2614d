#include "tests/engine/extract/fake_archive.h"
#include "tests/engine/extract/temp_folder.h"

#include "engine/extract/printable.h"
#include "engine/extract/safe_name.h"

#include <gmock/gmock.h>

namespace vantoro::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string cleaned(std::string_view name, PathStyle style = PathStyle::Unix)
{
    NameCleaner cleaner;
    const auto components = cleaner.clean(name, style);
    return components ? joinedName(*components) : "refused";
}

std::string many(std::string_view part, int count)
{
    std::string result;
    while (count-- > 0)
        result += part;
    return result;
}

}

TEST(SafeName, becomesRelativeAndLosesWhatMeansNothing)
{
    EXPECT_EQ(cleaned("/etc/passwd"), "etc/passwd");
    EXPECT_EQ(cleaned("//a//./b/"), "a/b");
    EXPECT_EQ(cleaned("./"), "");
    EXPECT_EQ(cleaned(""), "");
    EXPECT_EQ(cleaned("C:\\a"), "C:\\a") << "a character like others on Unix";
}

TEST(SafeName, refusesToClimbAndToEndEarly)
{
    for (const std::string_view name : {"..", "../x", "a/../../x", "a/..", "/../x"})
        EXPECT_EQ(cleaned(name), "refused") << name;
    EXPECT_EQ(cleaned(std::string_view("a.pdf\0.exe", 10)), "refused");
    EXPECT_EQ(cleaned("...") + cleaned("..a") + cleaned("a.."), ".....aa..");
}

TEST(SafeName, splitsDosNamesBeforeItLooksForDots)
{
    EXPECT_EQ(cleaned("..\\x", PathStyle::Dos), "refused");
    EXPECT_EQ(cleaned("a\\..\\..\\x", PathStyle::Dos), "refused");
    EXPECT_EQ(cleaned("C:\\owned.txt", PathStyle::Dos), "owned.txt");
    EXPECT_EQ(cleaned("C:owned.txt", PathStyle::Dos), "owned.txt");
    EXPECT_EQ(cleaned("C:..\\x", PathStyle::Dos), "refused");
    EXPECT_EQ(cleaned("\\\\host\\share/x", PathStyle::Dos), "host/share/x");
    EXPECT_EQ(cleaned("a\\C:b", PathStyle::Dos), "a/C:b") << "a drive leads or is none";
}

TEST(SafeName, replacesWhatDeceivesAndKeepsWhatIsOnlyOdd)
{
    EXPECT_EQ(cleaned("a\nb\rc\x1B[31m"), "a_b_c_[31m");
    EXPECT_EQ(cleaned("photo_\u202Egpj.exe"), "photo__gpj.exe");
    EXPECT_EQ(cleaned("\u2066in\u2069"), "_in_");
    for (const std::string name : {"\u05D0\u200F.txt", "bell\x07", "trail. ", "CON", "a:b", "*?", "~", "-rf", " "})
        EXPECT_EQ(cleaned(name), name);
}

TEST(SafeName, refusesPathsThatNobodyCouldDelete)
{
    EXPECT_EQ(cleaned(many("a/", 512) + "x"), many("a/", 512) + "x");
    EXPECT_EQ(cleaned(many("a/", 513) + "x"), "refused");
    EXPECT_EQ(cleaned(many("d123456789/", 363) + "1234567"), many("d123456789/", 363) + "1234567"); // 4,000 bytes
    EXPECT_EQ(cleaned(many("d123456789/", 363) + "12345678"), "refused");
}

TEST(SafeName, shortensBetweenCharactersAndKeepsTheExtension)
{
    EXPECT_EQ(shortenedName(std::string(296, 'n') + ".txt"), std::string(251, 'n') + ".txt");
    EXPECT_EQ(shortenedName(many("\U0001F600", 64)), many("\U0001F600", 63));
    EXPECT_EQ(numberedName("a.txt", 1, false), "a 1.txt");
    EXPECT_EQ(numberedName("a.b", 2, true), "a.b 2");
    EXPECT_EQ(numberedName(".hidden", 1, false), ".hidden 1");
    EXPECT_EQ(numberedName(std::string(251, 'n') + ".txt", 12, false), std::string(248, 'n') + " 12.txt");
}

TEST(SafeName, showsNothingThatATerminalObeys)
{
    EXPECT_EQ(printable("a\x1B[2J\n\x07\x7F"), "a\\x1B[2J\\x0A\\x07\\x7F");
    EXPECT_EQ(printable("x\u202Ey\u2028\u0085"), "x\\u202Ey\\u2028\\u0085");
    EXPECT_EQ(printable("cut\xE2\x82"), "cut\\xE2\\x82");
    EXPECT_EQ(printable("Grüße 日本"), "Grüße 日本");
}

TEST(ExtractNames, refusedNamesCostNothingElse)
{
    const TempFolder destination;
    const auto report = extractInto(destination.path(),
                                    {file("../up"), file("a/../../b"), file(std::string("n\0n", 3)), file("good", "g"),
                                     file(""), file("./"), folder("./"), file("/etc/x", "abs"), file("..")});
    ASSERT_TRUE(report);
    EXPECT_THAT(treeOf(destination.path()),
                ElementsAre(testing::Pair("arc", "dir"), testing::Pair("arc/etc", "dir"),
                            testing::Pair("arc/etc/x", "file:abs"), testing::Pair("arc/good", "file:g")));
    EXPECT_EQ(report->problemCount, 6U);
    for (const auto& problem : report->problems)
        EXPECT_EQ(problem.error.code, ErrorCode::UnsafeName);
}

TEST(ExtractNames, longNamesAreShortenedMadeUniqueAndTold)
{
    const TempFolder destination;
    const std::string base(300, 'n');
    const auto report
        = extractInto(destination.path(), {file(base + "1.txt", "1"), file(base + "2.txt", "2"), file("c")});
    ASSERT_TRUE(report);
    EXPECT_EQ(report->problemCount, 0U);
    EXPECT_EQ(report->notes.size(), 1U);
    const auto tree = treeOf(destination.path());
    EXPECT_EQ(tree.at("arc/" + std::string(251, 'n') + ".txt"), "file:1");
    EXPECT_EQ(tree.at("arc/" + std::string(249, 'n') + " 1.txt"), "file:2");
}

namespace {

const std::string kJapanese = "\x93\xFA\x96\x7B\x8C\xEA\x83\x65\x83\x58\x83\x67.txt"; // 日本語テスト.txt, Shift JIS

std::vector<FakeEntry> undeclared(std::vector<std::string> names)
{
    std::vector<FakeEntry> entries;
    for (auto& name : names) {
        entries.push_back(file(std::move(name)));
        entries.back().charset = kCharsetUnknown;
    }
    return entries;
}

}

TEST(ExtractNames, judgesTheCharsetOfAllNamesTogether)
{
    for (const bool listsCheaply : {true, false}) {
        const TempFolder destination;
        FakeArchive archive(undeclared({"a.txt", kJapanese, "b.txt"}));
        archive.facts.listsCheaply = listsCheaply;
        RecordingDelegate delegate;
        const auto report = extractInto(destination.path(), archive, delegate);
        ASSERT_TRUE(report);
        const auto tree = treeOf(destination / "arc");
        EXPECT_EQ(tree.size(), 3U) << "nothing is extracted twice";
        EXPECT_TRUE(tree.contains("日本語テスト.txt"));
        EXPECT_EQ(archive.lists, 1);
        EXPECT_EQ(archive.reads, listsCheaply ? 1 : 2);
        EXPECT_EQ(delegate.charsetQuestions, 0);
    }
}

TEST(ExtractNames, asksWhenDetectionIsUnsure)
{
    for (const bool listsCheaply : {true, false}) {
        const TempFolder destination;
        FakeArchive archive(undeclared({"a.txt", "\xE4\xF6.txt"}));
        archive.facts.listsCheaply = listsCheaply;
        RecordingDelegate delegate;
        ExtractOptions options;
        options.charsetThreshold = 1.1F;
        const auto stopped = extractInto(destination.path(), archive, delegate, options);
        ASSERT_FALSE(stopped);
        EXPECT_EQ(stopped.error().code, ErrorCode::EncodingNeeded);
        EXPECT_THAT(treeOf(destination.path()), IsEmpty());
        delegate.charset = kCharsetLatin1;
        ASSERT_TRUE(extractInto(destination.path(), archive, delegate, options));
        EXPECT_EQ(delegate.charsetQuestions, 2);
        EXPECT_TRUE(treeOf(destination / "arc").contains("äö.txt"));
    }
}

TEST(ExtractNames, neverLosesAFileOverItsName)
{
    const TempFolder destination;
    auto entries = undeclared({"\xFF\xFE.txt", "caf\xE9.txt", "cut\xE2\x82"});
    for (auto& entry : entries)
        entry.charset = kCharsetUtf8; // says the archive
    entries.push_back(file("grün"));
    ExtractOptions options;
    options.charset = kCharsetUtf8;
    ASSERT_TRUE(extractInto(destination.path(), entries, options));
    const auto tree = treeOf(destination / "arc");
    EXPECT_TRUE(tree.contains("%FF%FE.txt"));
    EXPECT_TRUE(tree.contains("caf%E9.txt"));
    EXPECT_TRUE(tree.contains("grün"));
    EXPECT_EQ(tree.size(), 4U);
}

}
