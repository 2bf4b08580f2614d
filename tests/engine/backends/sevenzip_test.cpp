#include "engine/backends/sevenzip_library.h"
#include "engine/backends/sevenzip_reparse.h"
#include "engine/backends/sevenzip_rows.h"
#include "engine/crypto/crc32.h"
#include "tests/support/archive_contents.h"
#include "tests/support/mixed_data.h"
#include "tests/support/passwords.h"
#include "tests/support/tools.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vantoro {

namespace {

using namespace test;

struct Recognised {
    const FormatRow* row = nullptr;
    Match match = Match::No;
};

Recognised recognise(const ByteSource& source, std::string_view name = {})
{
    const auto head = readBlock(source, 0, 256 << 10).value_or(std::vector<std::byte>());
    Recognised best;
    for (const auto rows : {sevenZipRows(), sevenZipFallbackRows()}) {
        for (const auto& row : rows) {
            const auto match = row.probe({head, &source, name});
            if (match > best.match)
                best = {&row, match};
        }
    }
    return best;
}

Result<ArchivePtr> tryOpen(const SourcePtr& source, const OpenContext& context = {})
{
    const auto found = recognise(*source, context.name);
    if (!found.row)
        return Error{ErrorCode::NotAnArchive, "test"};
    return found.row->open(source, context);
}

ArchivePtr open(const SourcePtr& source, const OpenContext& context = {}) { return tryOpen(source, context).value(); }

SourcePtr file(const TempFolder& folder, const std::string& name) { return openFileSource(folder / name).value(); }

class SevenZip : public testing::Test {
protected:
    void SetUp() override
    {
        if (const auto loaded = preloadSevenZip(); !loaded)
            GTEST_SKIP() << loaded.error().what;
        REQUIRE_TOOL("7zz");
        folder.write("a", mixedData(100'000, 1));
        folder.write("b", mixedData(300'000, 2));
        folder.write("c", mixedData(50'000, 3));
        folder.write("dir/empty", "");
    }
    std::string data(const std::string& name) const { return folder.read(name); }

    TempFolder folder;
};

TEST(SevenZipLibrary, refusesWhatItCannotUse)
{
    EXPECT_EQ(sevenzip::loadLibrary("/nowhere/7z.so").error().code, ErrorCode::UnsupportedFeature);
    const auto old = sevenzip::loadLibrary(VANTORO_TEST_OLD_LIBRARY);
    ASSERT_FALSE(old);
    EXPECT_NE(std::string(old.error().what).find("older than 23.01"), std::string::npos);
}

TEST(SevenZipStrings, keepEveryByteOfANameThatIsNotUtf8)
{
    using namespace sevenzip;
    std::string bytes = "x";
    for (unsigned byte = 0x80; byte <= 0xFF; ++byte)
        bytes.push_back(static_cast<char>(byte));
    const std::string beyondTheBasicPlane = "\xF0\x9F\x98\x80";
    const std::string escapeItself = "\xEE\xBE\x80"; // U+EF80
    EXPECT_EQ(Variant(std::string_view(bytes)).rawText(), bytes);
    EXPECT_EQ(Variant(std::string_view(beyondTheBasicPlane)).rawText(), beyondTheBasicPlane);
    EXPECT_EQ(Variant(std::string_view(escapeItself)).unicodeText(), escapeItself);
    const wchar_t pair[] = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(unicodeTextOf(pair, 2), beyondTheBasicPlane);
    EXPECT_EQ(unicodeTextOf(pair, 1), "\xEF\xBF\xBD"); // half a pair
}

TEST(SevenZipLinks, areReadFromReparsePoints)
{
    const auto utf16 = [](std::string_view text) {
        std::string out;
        for (const char c : text)
            out += {c, '\0'};
        return out;
    };
    const auto point
        = [&](const std::string& tag, const std::string& flags, std::string_view substitute, std::string_view print) {
              const auto le16 = [](std::size_t value) {
                  return std::string{static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
              };
              const auto first = utf16(substitute);
              const auto second = utf16(print);
              const auto body
                  = le16(0) + le16(first.size()) + le16(first.size()) + le16(second.size()) + flags + first + second;
              return tag + le16(body.size()) + le16(0) + body;
          };
    const std::string symbolic("\x0C\0\0\xA0", 4);
    const std::string mount("\x03\0\0\xA0", 4);
    const std::string isRelative("\1\0\0\0", 4);
    const auto link = point(symbolic, isRelative, "dir\\x", "dir\\file");
    EXPECT_EQ(sevenzip::linkOfReparsePoint(asBytes(link)), "dir/file");
    EXPECT_EQ(sevenzip::linkOfReparsePoint(asBytes(point(mount, "", "C:\\x", ""))), "C:/x");
    EXPECT_EQ(sevenzip::linkOfReparsePoint(asBytes(point("\x12\x34\x56\x78", "", "a", "b"))), "");
    for (std::size_t length = 0; length < link.size(); ++length)
        EXPECT_EQ(sevenzip::linkOfReparsePoint(asBytes(std::string_view(link).substr(0, length))), "") << length;
}

TEST_F(SevenZip, deliversWhatIsChosenOfASolidBlockOnly)
{
    ASSERT_TRUE(folder.run("7zz a -ms=on s.7z a b c dir"));
    const auto archive = open(file(folder, "s.7z"));
    EXPECT_TRUE(archive->info().isSolid);
    const auto listed = listAll(*archive);
    const auto all = readAll(*archive);
    ASSERT_TRUE(all.result);
    ASSERT_EQ(all.items.size(), listed.items.size());
    for (std::size_t i = 0; i < all.items.size(); ++i) {
        EXPECT_EQ(all.items[i].name, listed.items[i].name);
        EXPECT_EQ(all.items[i].index, i);
        EXPECT_TRUE(all.items[i].wasEnded && all.items[i].outcome) << all.items[i].name;
    }
    EXPECT_EQ(all.find("b")->data, data("b"));
    EXPECT_EQ(all.find("dir")->kind, EntryKind::Folder);

    const auto last = listed.find("c")->index;
    const auto chosen = readAll(*archive, std::vector<std::uint64_t>{last});
    ASSERT_TRUE(chosen.result);
    ASSERT_EQ(chosen.items.size(), 1U);
    EXPECT_EQ(chosen.items[0].data, data("c"));

    // The library would read outside its arrays.
    EXPECT_FALSE(readAll(*archive, std::vector<std::uint64_t>{last, last}).result);
    EXPECT_FALSE(readAll(*archive, std::vector<std::uint64_t>{1000}).result);
}

TEST_F(SevenZip, keepsTimesModesAndLinks)
{
    ASSERT_TRUE(folder.run("ln -s a link && chmod 751 b && touch -d '2011-02-03 04:05:06.7654321 UTC' b && "
                           "7zz a -snl t.7z b link"));
    const auto contents = readAll(*open(file(folder, "t.7z")));
    const auto* item = contents.find("b");
    EXPECT_EQ(item->mode.value() & 07777U, 0751U);
    EXPECT_EQ(item->modified.seconds, 1296705906);
    EXPECT_EQ(item->modified.nanoseconds, 765432100U);
    EXPECT_FALSE(item->modified.isLocal);
    EXPECT_EQ(item->nameCharset, kCharsetUtf8);
    EXPECT_EQ(contents.find("link")->kind, EntryKind::SymbolicLink);
    EXPECT_EQ(contents.find("link")->data, "a");
}

TEST_F(SevenZip, asksForContentPasswordsUntilOneFitsBeforeAnythingIsDelivered)
{
    ASSERT_TRUE(folder.run("7zz a -psecret e.7z a b c"));
    ScriptedPasswords passwords({"wrong", "wrong too", "secret"});
    OpenContext context;
    context.passwords = &passwords;
    const auto archive = open(file(folder, "e.7z"), context);
    EXPECT_TRUE(passwords.attempts.empty()) << "names are not encrypted";
    const auto contents = readAll(*archive);
    ASSERT_TRUE(contents.result);
    EXPECT_EQ(passwords.attempts, (std::vector<unsigned>{0, 1, 2}));
    ASSERT_EQ(contents.items.size(), 3U);
    EXPECT_EQ(contents.find("b")->data, data("b"));
    ASSERT_TRUE(readAll(*archive).result);
    EXPECT_EQ(passwords.attempts.size(), 3U) << "a password that fits is kept";

    ScriptedPasswords none({});
    context.passwords = &none;
    const auto unanswered = readAll(*open(file(folder, "e.7z"), context));
    EXPECT_EQ(unanswered.result.error().code, ErrorCode::PasswordNeeded);
    EXPECT_TRUE(unanswered.items.empty());

    ScriptedPasswords stubborn({"wrong", "wrong", "wrong"});
    context.passwords = &stubborn;
    const auto refused = readAll(*open(file(folder, "e.7z"), context));
    EXPECT_EQ(refused.result.error().code, ErrorCode::WrongPassword);
    EXPECT_TRUE(refused.items.empty());
}

TEST_F(SevenZip, asksForHeaderPasswordsWhileOpening)
{
    ASSERT_TRUE(folder.run("7zz a -psécret -mhe h.7z a b"));
    ScriptedPasswords passwords({"wrong", "sécret"});
    OpenContext context;
    context.passwords = &passwords;
    const auto archive = open(file(folder, "h.7z"), context);
    EXPECT_TRUE(archive->info().hasEncryptedNames);
    EXPECT_EQ(readAll(*archive).find("a")->data, data("a"));
    EXPECT_EQ(passwords.attempts, (std::vector<unsigned>{0, 1}));

    context.passwords = nullptr;
    EXPECT_EQ(tryOpen(file(folder, "h.7z"), context).error().code, ErrorCode::PasswordNeeded);
    ScriptedPasswords wrong({"wrong"});
    context.passwords = &wrong;
    EXPECT_EQ(tryOpen(file(folder, "h.7z"), context).error().code, ErrorCode::WrongPassword);
}

TEST_F(SevenZip, aDamagedEntryIsToldApartFromAWrongPassword)
{
    ASSERT_TRUE(folder.run("7zz a -psecret -ms=off -mx=0 d.7z a b c"));
    auto bytes = folder.read("d.7z");
    bytes[32 + 1000] = static_cast<char>(bytes[32 + 1000] ^ 0x55); // in the first entry's data
    ScriptedPasswords passwords({"secret"});
    OpenContext context;
    context.passwords = &passwords;
    const auto contents = readAll(*open(memorySource(bytes), context));
    ASSERT_TRUE(contents.result);
    EXPECT_EQ(contents.items[0].outcome.error().code, ErrorCode::ChecksumMismatch);
    EXPECT_TRUE(contents.items[1].outcome && contents.items[2].outcome);
}

TEST_F(SevenZip, aReceiverStopsOrDropsOneEntry)
{
    ASSERT_TRUE(folder.run("7zz a s.7z a b c"));
    CancelToken cancel;
    OpenContext context;
    context.cancel = cancel;
    const auto archive = open(file(folder, "s.7z"), context);

    CollectingLanes refusing;
    refusing.refuseAfter = 0;
    ASSERT_TRUE(archive->read({}, refusing));
    ASSERT_EQ(refusing.items.size(), 3U);
    for (const auto& item : refusing.items)
        EXPECT_EQ(item.outcome.error().code, ErrorCode::EntryRefused);

    struct Failing final : Lanes, LaneReceiver {
        unsigned count() const override { return 1; }
        LaneReceiver& lane(unsigned) override { return *this; }
        Result<Want> begin(const Entry&) override { return Want::Data; }
        Bytes room(std::size_t) override { return {}; }
        Result<void> data(ConstBytes block) override
        {
            delivered += block.size();
            if (cancel)
                cancel->cancel();
            return cancel ? Result<void>() : Error{ErrorCode::NoSpace, "test"};
        }
        Result<void> end(Result<void> outcome) override
        {
            ended = true;
            if (outcome)
                complete = true;
            return {};
        }
        CancelToken* cancel = nullptr;
        std::size_t delivered = 0;
        bool ended = false, complete = false;
    } failing;
    EXPECT_EQ(archive->read({}, failing).error().code, ErrorCode::NoSpace);
    EXPECT_FALSE(failing.ended) << "it knows already";
    ASSERT_TRUE(readAll(*archive).result) << "usable again after a stop";

    failing.cancel = &cancel;
    failing.delivered = 0;
    EXPECT_EQ(archive->read({}, failing).error().code, ErrorCode::Cancelled);
    EXPECT_LE(failing.delivered, std::size_t{64} << 10);
    EXPECT_TRUE(failing.ended && !failing.complete);
}

TEST_F(SevenZip, refusesADictionaryBeyondTheLimit)
{
    ASSERT_TRUE(folder.run("7zz a -m0=lzma2:d=64m l.7z a && 7zz a -m0=copy l.7z b"));
    OpenContext context;
    context.limits.dictionary = 1 << 16;
    const auto contents = readAll(*open(file(folder, "l.7z"), context));
    ASSERT_TRUE(contents.result);
    EXPECT_EQ(contents.find("a")->outcome.error().code, ErrorCode::LimitExceeded);
    EXPECT_EQ(contents.find("b")->data, data("b"));
}

TEST_F(SevenZip, aCutArchiveIsTruncatedAndADamagedOneSaysWhichEntry)
{
    ASSERT_TRUE(folder.run("7zz a -ms=off x.7z a b c"));
    const auto whole = folder.read("x.7z");
    EXPECT_EQ(tryOpen(memorySource(whole.substr(0, whole.size() * 7 / 10))).error().code, ErrorCode::Truncated);
    auto flipped = whole;
    for (std::size_t i = 0; i < 64; ++i)
        flipped[5000 + i] = static_cast<char>(~flipped[5000 + i]);
    const auto contents = readAll(*open(memorySource(flipped)));
    ASSERT_TRUE(contents.result);
    EXPECT_EQ(std::count_if(contents.items.begin(), contents.items.end(), [](const auto& i) { return !i.outcome; }), 1);
}

TEST_F(SevenZip, findsTheArchiveOfASelfExtractorButNoneInAPlainProgram)
{
    ASSERT_TRUE(folder.run("7zz a x.7z a b && 7zz a x.zip a b"));
    const std::string stub = "MZ" + mixedData(100'000, 9);
    for (const char* name : {"x.7z", "x.zip"}) {
        const auto source = memorySource(stub + folder.read(name));
        EXPECT_EQ(recognise(*source).match, Match::Stub) << name;
        EXPECT_EQ(readAll(*open(source)).find("b")->data, data("b")) << name;
    }
    for (const char* program : {"/bin/sh", "/usr/lib/p7zip/7z.so", "/usr/bin/7zz"}) {
        const auto source = openFileSource(program);
        EXPECT_TRUE(!source || !recognise(**source, "setup.exe").row) << program;
    }
}

TEST(SevenZipProbes, takeNothingForADisk)
{
    EXPECT_EQ(recognise(*memorySource(std::string(1 << 20, '\0')), "disk.img").row, nullptr);
    std::string bootSector(1 << 16, '\0');
    bootSector[510] = '\x55';
    bootSector[511] = '\xAA';
    EXPECT_EQ(recognise(*memorySource(bootSector), "disk.img").row, nullptr);
    EXPECT_EQ(
        recognise(*memorySource(std::string_view("MSCF and other words that start so, and some more of them")), "a.cab")
            .row,
        nullptr);
}

// A disk with one partition opens as the file system in it, which reads through the disk's own handler.
TEST_F(SevenZip, opensTheOnlyPartitionOfADisk)
{
    REQUIRE_TOOL("mkfs.ext4");
    folder.write("root/sub/file", data("c"));
    ASSERT_TRUE(folder.run("mkfs.ext4 -q -O ^has_journal -d root fs.img 2M"));
    constexpr std::size_t kStart = 2048; // in sectors
    std::string disk(kStart * 512, '\0');
    const auto put = [&](std::size_t at, std::uint32_t value) { std::memcpy(disk.data() + at, &value, 4); };
    put(446, 0x00'21'20'00); // cylinder, head, sector: some versions ask for them
    put(446 + 4, 0xFF'FF'FE'83); // Linux, and its end
    put(446 + 8, kStart);
    put(446 + 12, 4096);
    disk[510] = '\x55';
    disk[511] = '\xAA';
    const auto archive = open(memorySource(disk + folder.read("fs.img")));
    EXPECT_EQ(archive->info().format, "ext");
    EXPECT_EQ(readAll(*archive).find("sub/file")->data, data("c"));
}

TEST_F(SevenZip, readsSquashfsWithModes)
{
    REQUIRE_TOOL("mksquashfs");
    ASSERT_TRUE(folder.run("chmod 640 a && ln -s a link && mksquashfs a link dir s.squashfs -no-progress"));
    const auto contents = readAll(*open(file(folder, "s.squashfs")));
    EXPECT_EQ(contents.find("a")->data, data("a"));
    EXPECT_EQ(contents.find("a")->mode.value() & 07777U, 0640U);
    EXPECT_EQ(contents.find("link")->kind, EntryKind::SymbolicLink);
}

/// A 7z archive of one file, packed by one method, with plain headers. Everything in it is shorter than 128 bytes.
std::string make7z(std::uint32_t method, const std::string& packed, const std::string& data)
{
    const auto le32 = [](std::uint32_t value) {
        std::string out;
        for (unsigned shift = 0; shift < 32; shift += 8)
            out.push_back(static_cast<char>(value >> shift & 0xFF));
        return out;
    };
    const auto byte = [](std::size_t value) { return std::string(1, static_cast<char>(value)); };
    std::string header("\x01\x04\x06\x00\x01\x09", 6); // header, streams, packed streams: at 0, one, sizes
    header += byte(packed.size()) + byte(0);
    header.append("\x07\x0B\x01\x00\x01\x24", 6); // folders: one, here, one coder with properties and a 4-byte id
    header += byte(method >> 24) + byte(method >> 16) + byte(method >> 8) + byte(method);
    header.append("\x05\x01\x05\x03\x00\x00\x0C", 7); // its properties; unpacked sizes
    header += byte(data.size()) + "\x0A\x01" + le32(crc32(0, asBytes(data))) + std::string(2, '\0');
    header.append("\x05\x01\x11\x05\x00n\0\0\0\0\0", 11); // one file, named "n"; ends
    const auto start = le32(static_cast<std::uint32_t>(packed.size())) + le32(0)
        + le32(static_cast<std::uint32_t>(header.size())) + le32(0) + le32(crc32(0, asBytes(header)));
    return std::string("7z\xBC\xAF\x27\x1C\0\4", 8) + le32(crc32(0, asBytes(start))) + start + packed + header;
}

// Methods that the library lacks are decoded by codecs of our own.
TEST_F(SevenZip, decodesForeignMethodsWithOurOwnCodecs)
{
    const std::string text = "stored in a frame";
    const auto size = static_cast<char>(text.size());
    const std::string zstd = std::string("\x28\xB5\x2F\xFD\x20", 5) + size + static_cast<char>(size << 3 | 1)
        + std::string(2, '\0') + text; // one segment; last block, raw
    const std::string lz4 = std::string("\x04\x22\x4D\x18\x60\x40\x82", 7) + size + std::string("\0\0\x80", 3) + text
        + std::string(4, '\0'); // a block as it is; end
    for (const auto& [method, packed] : {std::pair{0x04F71101U, zstd}, std::pair{0x04F71104U, lz4}}) {
        const auto contents = readAll(*open(memorySource(make7z(method, packed, text))));
        ASSERT_EQ(contents.items.size(), 1U);
        EXPECT_EQ(contents.find("n")->data, text) << method;
        EXPECT_TRUE(contents.items[0].outcome);
        const auto cut = readAll(*open(memorySource(make7z(method, packed.substr(0, 15), text))));
        EXPECT_FALSE(cut.items[0].outcome);
    }
    const auto unknown = readAll(*open(memorySource(make7z(0x04F711FF, lz4, text))));
    EXPECT_EQ(unknown.items[0].outcome.error().code, ErrorCode::UnsupportedMethod)
        << unknown.items[0].outcome.error().what;
}

// Cabinets, made here: one folder, stored.

struct CabFile {
    std::string name, data;
    std::uint16_t attributes = 0x20;
    std::uint16_t folder = 0; ///< 0xFFFD goes on from the cabinet before, 0xFFFE into the next
};

std::string makeCab(const std::vector<CabFile>& files, const std::string& data, std::uint16_t index = 0,
                    const std::string& previous = {}, const std::string& next = {}, std::size_t totalInNext = 0)
{
    std::string out;
    const auto le16 = [&](std::size_t value) {
        out.push_back(static_cast<char>(value & 0xFF));
        out.push_back(static_cast<char>(value >> 8 & 0xFF));
    };
    const auto le32 = [&](std::size_t value) {
        le16(value & 0xFFFF);
        le16(value >> 16);
    };
    std::string links;
    for (const auto& name : {previous, next}) {
        if (!name.empty())
            links += name + '\0' + "disk" + '\0';
    }
    std::size_t table = 0;
    for (const auto& file : files)
        table += 16 + file.name.size() + 1;
    const auto filesAt = 36 + links.size() + 8;
    const auto dataAt = filesAt + table;
    out += "MSCF";
    le32(0);
    le32(dataAt + 8 + data.size());
    le32(0);
    le32(filesAt);
    le32(0);
    out += "\x03\x01";
    le16(1);
    le16(files.size());
    le16((previous.empty() ? 0U : 1U) | (next.empty() ? 0U : 2U));
    le16(0x1234);
    le16(index);
    out += links;
    le32(dataAt);
    le16(1);
    le16(0);
    std::size_t offset = 0;
    for (const auto& file : files) {
        le32(file.data.size());
        le32(offset);
        le16(file.folder);
        le16(0x3a21);
        le16(0x6000);
        le16(file.attributes);
        out += file.name + '\0';
        offset += file.data.size();
    }
    le32(0);
    le16(data.size());
    le16(totalInNext > 0 ? 0 : data.size());
    out += data;
    return out;
}

TEST_F(SevenZip, cabinetNamesComeOutAsStored)
{
    // 0x95 0x5C is one Shift-JIS character; the second name is declared UTF-8.
    const auto cab = makeCab({{"\x95\x5C\\x.txt", "one"}, {"\xC3\xBC.txt", "two", 0xA0}, {"a\\b", "3"}}, "onetwo3");
    const auto contents = readAll(*open(memorySource(cab)));
    ASSERT_EQ(contents.items.size(), 3U);
    const auto* japanese = contents.find("\x95\x5C\\x.txt");
    ASSERT_NE(japanese, nullptr);
    EXPECT_EQ(japanese->pathStyle, PathStyle::Dos);
    EXPECT_EQ(japanese->nameCharset, kCharsetUnknown);
    EXPECT_EQ(japanese->data, "one");
    EXPECT_EQ(contents.find("\xC3\xBC.txt")->nameCharset, kCharsetUtf8);
    EXPECT_EQ(contents.find("a/b")->data, "3");
}

TEST_F(SevenZip, cabinetSetsAreJoinedAndAMissingOneIsNamed)
{
    MemoryVolumes volumes;
    volumes.add("1.cab", makeCab({{"first", "one"}}, "one", 0, {}, "2.cab"));
    volumes.add("2.cab", makeCab({{"second", "two"}}, "two", 1, "1.cab", "3.cab"));
    volumes.add("3.cab", makeCab({{"third", "3"}}, "3", 2, "2.cab", {}));
    OpenContext context;
    context.volumes = &volumes;
    context.name = "2.cab";
    const auto whole = open(volumes.openVolume("2.cab").value(), context);
    EXPECT_EQ(whole->info().volumes, (std::vector<std::string>{"1.cab", "2.cab", "3.cab"}));
    EXPECT_TRUE(whole->info().missingVolume.empty());
    const auto contents = readAll(*whole);
    EXPECT_EQ(contents.find("first")->data, "one");
    EXPECT_EQ(contents.find("second")->data, "two");
    EXPECT_EQ(contents.find("third")->data, "3");

    volumes.remove("3.cab");
    context.name = "1.cab";
    const auto partial = open(volumes.openVolume("1.cab").value(), context);
    EXPECT_EQ(partial->info().missingVolume, "3.cab");
    ASSERT_TRUE(partial->info().damage);
    EXPECT_EQ(partial->info().damage->code, ErrorCode::MissingVolume);
}

TEST_F(SevenZip, anEntryShorterThanDeclaredIsAnError)
{
    auto cab = makeCab({{"short", "0123456789"}}, "01234");
    const auto contents = readAll(*open(memorySource(cab)));
    ASSERT_EQ(contents.items.size(), 1U);
    EXPECT_FALSE(contents.items[0].outcome);
}

// An installer package shows what it installs and where, not its tables and a cabinet of keys.
TEST_F(SevenZip, installerPackagesOpenAsTheFilesThatTheyInstall)
{
    REQUIRE_TOOL("wixl");
    folder.write("p.wxs", R"(<?xml version="1.0"?>
<Wix xmlns="http://schemas.microsoft.com/wix/2006/wi">
<Product Name="P" Id="ABCDDCBA-86C7-4D14-AEC0-86416A69ABDE" UpgradeCode="ABCDDCBA-7349-453F-94F6-BCB5110BA4FD"
  Language="1033" Codepage="1252" Version="1.0.0" Manufacturer="A">
<Package Id="*" Description="d" Comments="c" Manufacturer="A" InstallerVersion="100" Languages="1033" Compressed="yes"/>
<Media Id="1" Cabinet="p.cab" EmbedCab="yes"/>
<Directory Id="TARGETDIR" Name="SourceDir"><Directory Id="ProgramFilesFolder" Name="PFiles">
<Directory Id="INSTALLDIR" Name="My Program">
<Component Id="A" Guid="ABCDDCBA-83F1-4F22-985B-FDB3C8ABD471">
<File Id="KeyOfA" Name="Read me.txt" DiskId="1" Source="a" KeyPath="yes"/></Component>
<Directory Id="SUB" Name="lib"><Component Id="B" Guid="ABCDDCBA-83F1-4F22-985B-FDB3C8ABD472">
<File Id="KeyOfB" Name="b.bin" DiskId="1" Source="b" KeyPath="yes"/></Component></Directory>
</Directory></Directory></Directory>
<Feature Id="C" Level="1"><ComponentRef Id="A"/><ComponentRef Id="B"/></Feature>
</Product></Wix>)");
    ASSERT_TRUE(folder.run("wixl -o p.msi p.wxs"));
    const auto archive = open(file(folder, "p.msi"));
    EXPECT_EQ(archive->info().format, "msi");
    const auto contents = readAll(*archive);
    ASSERT_TRUE(contents.result);
    ASSERT_EQ(contents.items.size(), 2U);
    const auto* a = contents.find("Program Files/My Program/Read me.txt");
    const auto* b = contents.find("Program Files/My Program/lib/b.bin");
    ASSERT_TRUE(a && b);
    EXPECT_EQ(a->data, data("a"));
    EXPECT_EQ(b->data, data("b"));
    const auto chosen = readAll(*archive, std::vector<std::uint64_t>{b->index});
    ASSERT_EQ(chosen.items.size(), 1U);
    EXPECT_EQ(chosen.items[0].data, data("b"));
}

TEST_F(SevenZip, zipNamesKeepTheirBytesAndWhatIsDeclared)
{
    // Two stored empty entries: the first name in CP437, the second declared UTF-8.
    const auto entry = [](const std::string& name, std::uint16_t flags, std::uint32_t offset, bool isCentral) {
        std::string out = isCentral ? std::string("PK\1\2\x14\0\x14\0", 8) : std::string("PK\3\4\x14\0", 6);
        const auto le16 = [&](std::size_t value) {
            out.push_back(static_cast<char>(value & 0xFF));
            out.push_back(static_cast<char>(value >> 8 & 0xFF));
        };
        le16(flags);
        le16(0);
        out.append(4, '\x21'); // a time
        out.append(12, '\0'); // checksum and sizes
        le16(name.size());
        le16(0);
        if (isCentral) {
            out.append(10, '\0');
            le16(offset);
            le16(0);
        }
        return out + name;
    };
    const std::string old = "\x81.txt";
    const std::string modern = "\xC3\xBC.txt";
    const auto first = entry(old, 0, 0, false);
    const auto second = entry(modern, 0x800, 0, false);
    const auto directory
        = entry(old, 0, 0, true) + entry(modern, 0x800, static_cast<std::uint32_t>(first.size()), true);
    std::string end = std::string("PK\5\6\0\0\0\0\2\0\2\0", 12);
    for (const auto value : {directory.size(), first.size() + second.size()}) {
        for (unsigned shift = 0; shift < 32; shift += 8)
            end.push_back(static_cast<char>(value >> shift & 0xFF));
    }
    end.append(2, '\0');
    const auto contents = listAll(*open(memorySource(first + second + directory + end)));
    ASSERT_EQ(contents.items.size(), 2U);
    ASSERT_NE(contents.find(old), nullptr);
    EXPECT_EQ(contents.find(old)->nameCharset, kCharsetUnknown);
    EXPECT_EQ(contents.find(modern)->nameCharset, kCharsetUtf8);
}

}

}
