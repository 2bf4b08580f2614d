#include "engine/text/charset.h"

#include <gtest/gtest.h>

#include <set>

namespace vantoro {
namespace {

struct Sample {
    const char* charset;
    std::vector<std::string> names; // UTF-8
};

Detection detectEncoded(const Sample& sample)
{
    CharsetDetector detector;
    for (const auto& name : sample.names)
        detector.add(encode(name, findCharset(sample.charset)->id).value());
    return detector.detect();
}

// Charsets that give the same letters for these names count as the same answer.
bool readsTheSame(const Sample& sample, CharsetId charset)
{
    for (const auto& name : sample.names) {
        if (decode(encode(name, findCharset(sample.charset)->id).value(), charset) != name)
            return false;
    }
    return true;
}

const std::vector<Sample> kSamples = {
    {"Shift_JIS", {"新しいフォルダ/写真の一覧.txt", "設定ファイル.ini", "表示.doc"}},
    {"Shift_JIS", {"はじめにお読みください.txt", "ソース/能力表.xls"}},
    {"EUC-JP", {"新しいフォルダ/写真の一覧.txt", "はじめにお読みください.txt"}},
    {"GBK", {"新建文件夹/使用说明.txt", "我的文档.doc", "中文文件名.rar"}},
    {"Big5", {"新增資料夾/使用說明.txt", "我的文件.doc", "繁體中文檔名.zip"}},
    {"EUC-KR", {"새 폴더/사용 설명서.txt", "한국어 파일 이름.hwp", "사진.jpg"}},
    {"IBM866", {"Новая папка/Документ Microsoft Word.doc", "Отчёт за год.xls", "ПРОЧТИ МЕНЯ.txt"}},
    {"windows-1251", {"Новая папка/Документ Microsoft Word.doc", "Отчёт за год.xls", "ПРОЧТИ МЕНЯ.txt"}},
    {"KOI8-R", {"Новая папка/Документ Microsoft Word.doc", "Отчёт за год.xls", "Песни.mp3"}},
    {"IBM437", {"Übersicht für Müller.txt", "Größe.doc", "Fähre über den Fluß.jpg"}},
    {"windows-1252", {"Übersicht für Müller.txt", "Größe.doc", "Fähre über den Fluß.jpg"}},
    {"windows-1252", {"Résumé.pdf", "façade à côté.txt", "Noël.jpg"}},
    {"IBM850", {"Résumé.pdf", "façade à côté.txt", "Noël.jpg"}},
    {"windows-1253", {"Νέος φάκελος/Έγγραφο.doc", "Φωτογραφίες.zip"}},
    {"windows-1255", {"תיקייה חדשה/מסמך.doc", "תמונות.zip"}},
};

TEST(CharsetDetector, tellsRealNamesOfTheUsualCharsetsApart)
{
    for (const auto& sample : kSamples) {
        const auto found = detectEncoded(sample);
        EXPECT_TRUE(readsTheSame(sample, found.charset))
            << sample.charset << " taken for " << findCharset(found.charset)->name << " " << sample.names[0];
        EXPECT_GT(found.confidence, 0.5F) << sample.charset;
    }
}

TEST(CharsetDetector, isSureOfAsciiAndUtf8Alone)
{
    CharsetDetector ascii;
    ascii.add("plain.txt");
    EXPECT_EQ(ascii.detect().confidence, 1.0F);
    CharsetDetector utf8;
    utf8.add("größe.txt");
    EXPECT_EQ(utf8.detect().charset, kCharsetUtf8);
    EXPECT_EQ(utf8.detect().confidence, 1.0F);
    CharsetDetector mixed;
    mixed.add("größe.txt");
    mixed.add("gr\xF6\xDF"
              "e.txt");
    EXPECT_LT(mixed.detect().confidence, 1.0F);
}

TEST(CharsetDetector, isUnsureOfAShortNameThatSeveralCharsetsRead)
{
    CharsetDetector detector;
    detector.add("\x83\x65"); // Shift-JIS, or an accented letter of DOS and an 'e'
    EXPECT_LT(detector.detect().confidence, 0.8F);
}

TEST(Charsets, keepTheirFixedNumbersAndLeaveOutUtf16)
{
    EXPECT_STREQ(findCharset(CharsetId{4})->name, "UTF-8");
    EXPECT_STREQ(findCharset(CharsetId{5})->name, "ISO-8859-1");
    EXPECT_EQ(findCharset(kCharsetUtf16), nullptr);
    std::set<CharsetId> seen;
    for (const auto& charset : charsets()) {
        EXPECT_TRUE(seen.insert(charset.id).second) << charset.name;
        EXPECT_EQ(decode("plain.txt", charset.id), "plain.txt");
        EXPECT_TRUE(charset.id == kCharsetUtf8 || encode("a", charset.id)) << charset.name;
    }
}

TEST(Charsets, areAllKnownToTheConversionLibrary)
{
    // A byte that each single-byte set maps, or the lead of a two-byte one: never only escapes.
    for (const auto& charset : charsets()) {
        bool decodesSomething = false;
        for (int lead = 0x80; lead < 0x100 && !decodesSomething; ++lead) {
            for (const char* trail : {"", "\xA1", "\x41", "\x80\x80"})
                decodesSomething
                    = decodesSomething || canDecode(std::string(1, static_cast<char>(lead)) + trail, charset.id);
        }
        const bool isSevenBit = std::string_view(charset.name) == "ISO-2022-JP";
        EXPECT_TRUE(decodesSomething || isSevenBit) << charset.name;
    }
}

TEST(Charsets, findByAliasWhateverTheSpelling)
{
    EXPECT_EQ(findCharset("cp932")->id, findCharset("Shift-JIS")->id);
    EXPECT_EQ(findCharset("koi8r")->id, findCharset("KOI8-R")->id);
    EXPECT_EQ(findCharset("utf8")->id, kCharsetUtf8);
    EXPECT_EQ(findCharset("CP866")->id, findCharset("IBM866")->id);
    EXPECT_EQ(findCharset("no such thing"), nullptr);
}

TEST(Decode, keepsWhatMeansNothingAsEscapes)
{
    EXPECT_EQ(decode("a\xFF"
                     "b",
                     kCharsetUtf8),
              "a%FFb");
    EXPECT_EQ(decode("\xED\xA0\x80", kCharsetUtf8), "%ED%A0%80"); // a surrogate is not a character
    EXPECT_EQ(decode("\x83\x65\x83", findCharset("Shift_JIS")->id), "テ%83");
    EXPECT_EQ(decode("x\xC1y", kCharsetUtf8), "x%C1y");
}

TEST(Encode, refusesWhatTheCharsetLacks)
{
    EXPECT_EQ(encode("é", kCharsetLatin1).value(), "\xE9");
    const auto refused = encode("漢", kCharsetLatin1);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().code, ErrorCode::EncodingNeeded);
}

}
}
