#include "engine/formats/rar/rar.h"
#include "tests/support/archive_contents.h"
#include "tests/support/mixed_data.h"
#include "tests/support/passwords.h"
#include "tests/support/rar_builder.h"
#include "tests/support/rar_packer.h"

#include <gtest/gtest.h>

namespace vantoro {

namespace {

using namespace test;
using R3 = Rar3Builder;
using R5 = Rar5Builder;

ArchivePtr open(std::string_view bytes, const OpenContext& context = {})
{
    const auto source = memorySource(bytes);
    const auto head = readBlock(*source, 0, 256 << 10).value();
    EXPECT_NE(kRarFormat.probe({head, source.get(), context.name}), Match::No);
    return kRarFormat.open(source, context).value();
}

void expectWhole(const Contents& contents)
{
    EXPECT_TRUE(contents.result);
    for (const auto& item : contents.items)
        EXPECT_TRUE(item.wasEnded && item.outcome)
            << item.name << ": " << (item.outcome ? "" : item.outcome.error().what);
}

TEST(Rar5, tellsNamesTimesModesAndOwners)
{
    const auto nanoseconds = vint(1 | 2 | 0x10) + le(1'234'567'890, 4) + le(987'654'321, 4);
    const auto windowsTime = vint(2 | 4) + le(116'444'736'000'000'000 + 15'000'000, 8) + le(0, 8);
    const auto archive = open(R5::archive(
        R5::file({.name = "d/\xC3\xA4.txt",
                  .data = "text",
                  .extra = R5::record(3, nanoseconds) + R5::record(6, vint(3) + vint(3) + "ann" + vint(5) + "staff")})
        + R5::file({.name = "a\\b", .data = "x", .host = 0, .mode = 0x20, .extra = R5::record(3, windowsTime)})
        + R5::file({.name = "raw\xEF\xBF\xBE\xEE\x83\xA9", .data = "y"})
        + R5::file({.name = "versioned", .data = "z", .extra = R5::record(4, vint(0) + vint(3))})
        + R5::file({.name = "d", .fileFlags = 1 | 2, .mode = 040755})));
    const auto contents = readAll(*archive);
    expectWhole(contents);
    ASSERT_EQ(contents.items.size(), 5U);
    const auto& first = contents.items[0];
    EXPECT_EQ(first.name, "d/\xC3\xA4.txt");
    EXPECT_EQ(first.nameCharset, kCharsetUtf8);
    EXPECT_EQ(first.data, "text");
    EXPECT_EQ(first.mode, 0100644U);
    EXPECT_EQ(first.modified.seconds, 1'234'567'890);
    EXPECT_EQ(first.modified.nanoseconds, 987'654'321U);
    EXPECT_FALSE(first.modified.isLocal);
    EXPECT_EQ(first.owner + ":" + first.group, "ann:staff");
    EXPECT_EQ(contents.items[1].name, "a_b") << "a backslash never separates";
    EXPECT_EQ(contents.items[1].modified.seconds, 1);
    EXPECT_EQ(contents.items[1].modified.nanoseconds, 500'000'000U);
    EXPECT_FALSE(contents.items[1].created.isSet);
    EXPECT_EQ(contents.items[2].name, "raw\xE9");
    EXPECT_EQ(contents.items[2].nameCharset, kCharsetUnknown);
    EXPECT_EQ(contents.items[3].name, "versioned;3");
    EXPECT_EQ(contents.items[4].kind, EntryKind::Folder);
    EXPECT_EQ(contents.items[4].modified.seconds, 1'000'000'000);
}

TEST(Rar5, skipsServicesButTellsTheComment)
{
    const auto archive
        = open(R5::archive(R5::file({.name = "CMT", .data = std::string("a comment\0rest", 14)}, 3)
                           + R5::file({.name = "a", .data = "1"}) + R5::file({.name = "STM", .data = "stream"}, 3)
                           + R5::block(77, 4, {}, {}, "of the future") + R5::file({.name = "b", .data = "2"})));
    EXPECT_EQ(archive->info().comment, "a comment");
    const auto contents = readAll(*archive);
    expectWhole(contents);
    ASSERT_EQ(contents.items.size(), 2U);
    EXPECT_EQ(contents.items[1].data, "2");
}

TEST(Rar5, followsLinksCopiesAndHardLinks)
{
    const auto bytes = R5::archive(R5::file({.name = "real", .data = "content"}) + R5::link("soft", 1, "real")
                                   + R5::link("junction", 3, "\\??\\C:\\x") + R5::link("hard", 4, "real")
                                   + R5::link("copy", 5, "real") + R5::link("lost", 5, "nowhere"));
    const auto archive = open(bytes);
    const auto contents = readAll(*archive);
    ASSERT_EQ(contents.items.size(), 6U);
    EXPECT_EQ(contents.find("soft")->kind, EntryKind::SymbolicLink);
    EXPECT_EQ(contents.find("soft")->linkTarget, "real");
    EXPECT_EQ(contents.find("junction")->linkTarget, "C:/x");
    EXPECT_EQ(contents.find("hard")->kind, EntryKind::HardLink);
    EXPECT_EQ(contents.find("hard")->linkTarget, "real");
    EXPECT_EQ(contents.find("copy")->kind, EntryKind::File);
    EXPECT_EQ(contents.find("copy")->data, "content");
    EXPECT_EQ(contents.find("lost")->outcome.error().code, ErrorCode::Corrupt);
    // A hard link without its file stands for the file.
    const auto alone = readAll(*archive, std::vector<std::uint64_t>{3});
    expectWhole(alone);
    EXPECT_EQ(alone.items[0].kind, EntryKind::File);
    EXPECT_EQ(alone.items[0].data, "content");
}

TEST(Rar5, comparesCrcAndBlake2)
{
    const std::string abc("\x70\xF7\x5B\x58\xF1\xFE\xCA\xB8\x21\xDB\x43\xC8\x8A\xD8\x4E\xDD"
                          "\xE5\xA5\x26\x00\x61\x6C\xD2\x25\x17\xB7\xBB\x14\xD4\x40\xA7\xD5",
                          32);
    const auto archive = open(R5::archive(
        R5::file({.name = "good", .data = "abc", .fileFlags = 0, .extra = R5::record(2, vint(0) + abc)})
        + R5::file({.name = "bad hash", .data = "abd", .fileFlags = 0, .extra = R5::record(2, vint(0) + abc)})
        + R5::file({.name = "bad crc", .data = "abc", .crc = 1})
        + R5::file({.name = "short", .data = "abc", .size = 4})));
    const auto contents = readAll(*archive);
    EXPECT_TRUE(contents.find("good")->outcome);
    EXPECT_EQ(contents.find("bad hash")->outcome.error().code, ErrorCode::ChecksumMismatch);
    EXPECT_EQ(contents.find("bad crc")->outcome.error().code, ErrorCode::ChecksumMismatch);
    EXPECT_EQ(contents.find("short")->outcome.error().code, ErrorCode::Truncated);
}

TEST(Rar5, refusesADictionaryBeyondTheLimitAndUnknownMethods)
{
    OpenContext context;
    context.limits.dictionary = 1 << 20;
    const auto archive
        = open(R5::archive(R5::file({.name = "large", .data = "x", .size = 1 << 24, .compression = 7 << 10 | 1 << 7})
                           + R5::file({.name = "claims", .data = "x", .size = 100, .compression = 15 << 10 | 1 << 7})
                           + R5::file({.name = "future", .data = "x", .compression = 2 | 1 << 7})),
               context);
    const auto contents = readAll(*archive);
    EXPECT_EQ(contents.find("large")->outcome.error().code, ErrorCode::LimitExceeded);
    EXPECT_NE(contents.find("claims")->outcome.error().code, ErrorCode::LimitExceeded) << "needs no more than its size";
    EXPECT_EQ(contents.find("future")->outcome.error().code, ErrorCode::UnsupportedMethod);
}

TEST(Rar5, findsWhatLiesBehindADamagedHeader)
{
    auto bytes = R5::archive(R5::file({.name = "one", .data = std::string(100, '1')})
                             + R5::file({.name = "two", .data = std::string(100, '2')})
                             + R5::file({.name = "three", .data = std::string(100, '3')}));
    bytes[bytes.find("two")] ^= 1;
    const auto archive = open(bytes);
    EXPECT_TRUE(archive->info().damage);
    const auto contents = readAll(*archive);
    expectWhole(contents);
    ASSERT_EQ(contents.items.size(), 2U);
    EXPECT_EQ(contents.items[1].data, std::string(100, '3'));
}

TEST(Rar, neverCallsACutArchiveWhole)
{
    const auto files = std::vector<std::string>{"first entry", "second entry"};
    const auto new5
        = R5::archive(R5::file({.name = "a", .data = files[0]}) + R5::file({.name = "b", .data = files[1]}));
    const auto old = R3::archive(R3::file({.name = "a", .data = files[0]}) + R3::file({.name = "b", .data = files[1]}));
    for (const auto& bytes : {new5, old}) {
        for (std::size_t size = 21; size + 12 < bytes.size(); ++size) {
            auto archive = kRarFormat.open(memorySource(bytes.substr(0, size)), {});
            if (!archive)
                continue;
            const auto contents = readAll(**archive);
            std::size_t whole = 0;
            for (std::size_t i = 0; i < contents.items.size(); ++i) {
                if (contents.items[i].outcome) {
                    EXPECT_EQ(contents.items[i].data, files[i]);
                    ++whole;
                }
            }
            EXPECT_TRUE(whole == files.size() || whole < contents.items.size() || (*archive)->info().damage
                        || bytes == old)
                << "cut at " << size;
        }
    }
}

/// Rar 5 encryption of stored data and headers.
struct Rar5Lock {
    std::string password;
    std::string salt = "0123456789abcdef";
    std::string iv = "fedcba9876543210";
    unsigned exponent = 4;

    Rar5Key key() const { return deriveRar5Key(password, asBytes(salt), exponent, {}).value(); }
    std::string check() const
    {
        const auto value = key().check;
        std::string text(asText(value));
        std::array<unsigned char, 32> digest;
        unsigned length = 0;
        EVP_Digest(value.data(), value.size(), digest.data(), &length, EVP_sha256(), nullptr);
        return text + std::string(reinterpret_cast<const char*>(digest.data()), 4);
    }
    std::string record(bool keyed) const
    {
        return R5::record(1, vint(0) + vint(keyed ? 3 : 1) + le(exponent, 1) + salt + iv + check());
    }
    std::string file(const std::string& name, const std::string& plain, bool keyed = false) const
    {
        const auto crc = crc32(0, asBytes(plain));
        return R5::file({.name = name,
                         .data = encryptCbc(plain, key().key, asBytes(iv)),
                         .size = plain.size(),
                         .crc = keyed ? rar5KeyedCrc(key(), crc) : crc,
                         .extra = record(keyed)});
    }
    std::string header(const std::string& block) const { return iv + encryptCbc(block, key().key, asBytes(iv)); }
};

TEST(Rar5, asksUntilThePasswordFitsBeforeAnythingIsDelivered)
{
    const Rar5Lock lock{"secret"};
    const auto bytes = R5::archive(lock.file("a", "plain text") + R5::file({.name = "open", .data = "x"})
                                   + lock.file("keyed", "checked with the key", true));
    ScriptedPasswords passwords({"wrong", "", "secret"});
    OpenContext context;
    context.passwords = &passwords;
    const auto contents = readAll(*open(bytes, context));
    expectWhole(contents);
    EXPECT_EQ(passwords.attempts, (std::vector<unsigned>{0, 1, 2}));
    EXPECT_EQ(contents.find("a")->data, "plain text");
    EXPECT_EQ(contents.find("keyed")->data, "checked with the key");

    ScriptedPasswords wrong({"wrong"});
    context.passwords = &wrong;
    const auto refused = readAll(*open(bytes, context));
    EXPECT_FALSE(refused.result);
    EXPECT_TRUE(refused.items.empty());
    // What is not encrypted needs no password.
    expectWhole(readAll(*open(bytes), std::vector<std::uint64_t>{1}));
}

TEST(Rar5, opensEncryptedHeadersAndTakesAPasswordInEitherNormalForm)
{
    const Rar5Lock lock{"a\xCC\x88"}; // decomposed
    const auto encryption = R5::block(4, 0, vint(0) + vint(1) + le(lock.exponent, 1) + lock.salt + lock.check());
    const auto stored = R5::file({.name = "hidden", .data = "text"});
    const auto bytes = std::string(R5::kMarker) + encryption + lock.header(R5::main())
        + lock.header(stored.substr(0, stored.size() - 4)) + "text" + lock.header(R5::end());
    ScriptedPasswords passwords({"nope", "\xC3\xA4"}); // composed
    OpenContext context;
    context.passwords = &passwords;
    const auto archive = open(bytes, context);
    EXPECT_TRUE(archive->info().hasEncryptedNames);
    EXPECT_FALSE(archive->info().damage);
    EXPECT_EQ(readAll(*archive).find("hidden")->data, "text");
    context.passwords = nullptr;
    EXPECT_EQ(kRarFormat.open(memorySource(bytes), context).error().code, ErrorCode::PasswordNeeded);
}

TEST(Rar3, triesAPasswordOnASmallEntryBecauseThereIsNoCheckValue)
{
    const std::string salt = "saltsalt";
    const auto key = deriveRar3Key("secret", asBytes(salt)).value();
    const auto locked = [&](const std::string& name, const std::string& plain) {
        return R3::file({.name = name,
                         .data = encryptCbc(plain, key.key, key.iv),
                         .size = plain.size(),
                         .crc = crc32(0, asBytes(plain)),
                         .flags = 0x0404,
                         .tail = salt});
    };
    const auto bytes = R3::archive(locked("large", mixedData(50'000)) + locked("small", "text"));
    ScriptedPasswords passwords({"wrong", "secret"});
    OpenContext context;
    context.passwords = &passwords;
    const auto contents = readAll(*open(bytes, context));
    expectWhole(contents);
    EXPECT_EQ(passwords.attempts, (std::vector<unsigned>{0, 1}));
    EXPECT_EQ(contents.find("large")->data, mixedData(50'000));
    EXPECT_EQ(contents.find("small")->data, "text");

    // The same scheme over whole headers: salt, then the header filled up.
    const auto header = [&](const std::string& block) { return salt + encryptCbc(block, key.key, key.iv); };
    const auto hidden = std::string(R3::kMarker) + R3::main(0x80)
        + header(R3::header({.name = "hidden", .data = "text"})) + "text" + header(R3::end());
    ScriptedPasswords again({"wrong", "secret"});
    context.passwords = &again;
    const auto archive = open(hidden, context);
    EXPECT_TRUE(archive->info().hasEncryptedNames);
    EXPECT_EQ(readAll(*archive).find("hidden")->data, "text");
}

TEST(Rar3, readsNamesInAllTheirForms)
{
    using namespace std::string_literals;
    // Compact UTF-16: high byte 4, then for each letter a code; \x1C: 0 (as it is), 1 (with the high byte), 3 (a run).
    const auto compact = "abc.txt\0\x04\x57\x30\x31\x32\x02"s;
    const auto archive = open(R3::archive(R3::file({.name = compact, .flags = 0x200, .host = 2, .attributes = 0x20})
                                          + R3::file({.name = "dir\\\xC3\xA4", .flags = 0x200})
                                          + R3::file({.name = "\x84\\b"s, .host = 0, .attributes = 0})
                                          + R3::file({.name = "abc\0\x04\xFF\x7F"s, .flags = 0x200})));
    const auto contents = readAll(*archive);
    expectWhole(contents);
    ASSERT_EQ(contents.items.size(), 4U);
    EXPECT_EQ(contents.items[0].name, "\xD0\xB0\xD0\xB1\xD0\xB2.txt");
    EXPECT_EQ(contents.items[0].nameCharset, kCharsetUtf8);
    EXPECT_EQ(contents.items[1].name, "dir/\xC3\xA4");
    EXPECT_EQ(contents.items[2].name, "\x84\\b");
    EXPECT_EQ(contents.items[2].nameCharset, kCharsetUnknown);
    EXPECT_EQ(contents.items[2].pathStyle, PathStyle::Dos);
    EXPECT_EQ(contents.items[3].name, "abc") << "damaged, so the 8-bit name stands";
}

TEST(Rar3, readsTimesKindsAndComments)
{
    // 2011-04-10 11:20:22 with a second and three bytes of fraction more; the other times are not there.
    const auto times = le(0xF000, 2) + "\x01\x02\x03";
    const auto text = R3::file({.name = "CMT", .data = "grüße"}, 0x7A);
    const auto archive = open(R3::archive(text + R3::file({.name = "timed", .flags = 0x1000, .tail = times})
                                          + R3::file({.name = "link", .data = "target", .attributes = 0120777})
                                          + R3::file({.name = "folder", .flags = 0xE0, .host = 2, .attributes = 0x10})
                                          + R3::file({.name = "pipe", .attributes = 0010644})));
    EXPECT_EQ(archive->info().comment, "grüße");
    const auto contents = readAll(*archive);
    const auto* timed = contents.find("timed");
    EXPECT_TRUE(timed->modified.isLocal);
    EXPECT_EQ(timed->modified.seconds, 1'302'434'423);
    EXPECT_EQ(timed->modified.nanoseconds, 0x030201U * 100);
    EXPECT_EQ(contents.find("link")->kind, EntryKind::SymbolicLink);
    EXPECT_EQ(contents.find("link")->data, "target");
    EXPECT_EQ(contents.find("folder")->kind, EntryKind::Folder);
    EXPECT_EQ(contents.find("pipe")->kind, EntryKind::Other);
}

/// "first" in the first volume, "split" over all three, "last" in the third.
std::vector<std::string> oldVolumes(bool newNames)
{
    const std::string split = "begins here, goes on, ends";
    const auto part = [&](const std::string& data, unsigned flags, std::optional<std::uint32_t> crc = std::nullopt) {
        return R3::file({.name = "split", .data = data, .size = split.size(), .crc = crc, .flags = flags});
    };
    const auto start = [&](bool isFirst) {
        return std::string(R3::kMarker) + R3::main((newNames ? 0x11 : 1) | (newNames && isFirst ? 0x100 : 0));
    };
    return {start(true) + R3::file({.name = "first", .data = "1"}) + part("begins here, ", 2) + R3::end(1),
            start(false) + part("goes on, ", 3) + R3::end(1),
            start(false) + part("ends", 1, crc32(0, asBytes(split))) + R3::file({.name = "last", .data = "2"})
                + R3::end()};
}

std::vector<std::string> newVolumes()
{
    const std::string split = "begins here, goes on, ends";
    const auto part
        = [&](const std::string& data, std::uint64_t flags, std::optional<std::uint32_t> crc = std::nullopt) {
              return R5::file({.name = "split", .data = data, .size = split.size(), .crc = crc, .headerFlags = flags});
          };
    const auto start
        = [](std::optional<std::uint64_t> number) { return std::string(R5::kMarker) + R5::main(1, number); };
    return {start({}) + R5::file({.name = "first", .data = "1"}) + part("begins here, ", 0x10) + R5::end(1),
            start(1) + part("goes on, ", 0x18) + R5::end(1),
            start(2) + part("ends", 8, crc32(0, asBytes(split))) + R5::file({.name = "last", .data = "2"}) + R5::end()};
}

struct VolumeCase {
    std::vector<std::string> names;
    std::vector<std::string> volumes;
};

class RarVolumes : public testing::TestWithParam<VolumeCase> {};

TEST_P(RarVolumes, areOpenedFromAnyOfThem)
{
    const auto& [names, volumes] = GetParam();
    MemoryVolumes folder;
    for (std::size_t i = 0; i < names.size(); ++i)
        folder.add(names[i], volumes[i]);
    for (std::size_t opened = 0; opened < names.size(); ++opened) {
        OpenContext context;
        context.name = names[opened];
        context.volumes = &folder;
        const auto archive = open(volumes[opened], context);
        EXPECT_EQ(archive->info().volumes, names) << "from " << context.name;
        EXPECT_EQ(archive->info().missingVolume, "");
        EXPECT_FALSE(archive->info().damage);
        const auto contents = readAll(*archive);
        expectWhole(contents);
        ASSERT_EQ(contents.items.size(), 3U);
        EXPECT_EQ(contents.find("split")->data, "begins here, goes on, ends");
    }
}

TEST_P(RarVolumes, nameThePartThatIsMissing)
{
    const auto& [names, volumes] = GetParam();
    for (std::size_t missing = 0; missing < names.size(); ++missing) {
        MemoryVolumes folder;
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (i != missing)
                folder.add(names[i], volumes[i]);
        }
        OpenContext context;
        const std::size_t opened = missing == 0 ? 1 : 0;
        context.name = names[opened];
        context.volumes = &folder;
        const auto archive = open(volumes[opened], context);
        EXPECT_EQ(archive->info().missingVolume, names[missing] == "x.exe" ? "x.rar" : names[missing]);
        const auto contents = readAll(*archive);
        const auto* split = contents.find("split");
        ASSERT_NE(split, nullptr);
        ASSERT_FALSE(split->outcome);
        EXPECT_EQ(split->outcome.error().code, ErrorCode::MissingVolume);
        const auto* whole = contents.find(missing == 0 ? "last" : "first");
        ASSERT_NE(whole, nullptr);
        EXPECT_TRUE(whole->outcome);
    }
}

INSTANTIATE_TEST_SUITE_P(Namings, RarVolumes,
                         testing::Values(VolumeCase{{"x.rar", "x.r00", "x.r01"}, oldVolumes(false)},
                                         VolumeCase{{"X.RAR", "X.R00", "X.R01"}, oldVolumes(false)},
                                         VolumeCase{{"x.exe", "x.r00", "x.r01"}, oldVolumes(false)},
                                         VolumeCase{{"x.part1.rar", "x.part2.rar", "x.part3.rar"}, oldVolumes(true)},
                                         VolumeCase{{"x.part01.rar", "x.part02.rar", "x.part03.rar"}, newVolumes()},
                                         VolumeCase{{"7 x.part1of3.rar", "7 x.part2of3.rar", "7 x.part3of3.rar"},
                                                    newVolumes()}));

TEST(RarVolumes, doNotGoOnInAFileThatOnlyHasTheName)
{
    MemoryVolumes folder;
    auto volumes = newVolumes();
    folder.add("x.part2.rar", volumes[2]); // the third
    OpenContext context;
    context.name = "x.part1.rar";
    context.volumes = &folder;
    const auto archive = open(volumes[0], context);
    EXPECT_EQ(archive->info().missingVolume, "x.part2.rar");
    EXPECT_EQ(archive->info().volumes, std::vector<std::string>{"x.part1.rar"});
}

/// Several lanes, each of which only takes entries one after another.
class ManyLanes final : public Lanes {
public:
    unsigned count() const override { return 4; }
    LaneReceiver& lane(unsigned index) override { return m_lanes[index]; }
    std::vector<Item> items()
    {
        std::vector<Item> all;
        for (auto& lane : m_lanes)
            all.insert(all.end(), lane.items.begin(), lane.items.end());
        return all;
    }

private:
    std::array<CollectingLanes, 4> m_lanes;
};

TEST(Rar5, decodesEntriesInSeveralLanesAndSolidOnesInOne)
{
    constexpr std::uint64_t kFast = 5 << 10 | 1 << 7;
    std::string blocks;
    std::vector<std::string> data;
    for (unsigned i = 0; i < 40; ++i) {
        data.push_back(mixedData(20'000 + 100 * i, i));
        // From 20 on each entry goes on with the state of the one before; its own data need nothing of it.
        blocks += R5::file({.name = std::to_string(i),
                            .data = packRar50(data.back()),
                            .size = data.back().size(),
                            .crc = crc32(0, asBytes(data.back())),
                            .compression = kFast | (i > 20 ? 0x40U : 0)});
    }
    const auto archive = open(R5::archive(blocks));
    EXPECT_TRUE(archive->info().isSolid);
    ManyLanes lanes;
    ASSERT_TRUE(archive->read({}, lanes));
    auto items = lanes.items();
    ASSERT_EQ(items.size(), data.size());
    for (const auto& item : items) {
        EXPECT_TRUE(item.outcome);
        EXPECT_TRUE(item.data == data[item.index]) << item.index;
    }
    // A later solid entry alone, and one whose receiver has enough of it.
    const auto one = readAll(*archive, std::vector<std::uint64_t>{30, 33});
    EXPECT_TRUE(one.items[0].data == data[30] && one.items[1].data == data[33]);
    CollectingLanes refusing;
    refusing.refuseAfter = 1;
    ASSERT_TRUE(archive->read({}, refusing));
    EXPECT_EQ(refusing.items.size(), data.size());
}

TEST(Rar, isFoundBehindAProgram)
{
    const auto inner = R5::archive(R5::file({.name = "a", .data = "text"}));
    const auto program = "MZ" + mixedData(300'000) + std::string("Rar!\x1A\x07\x01\x00nonsense", 16);
    const auto source = memorySource(program + inner);
    const auto head = readBlock(*source, 0, 256 << 10).value();
    EXPECT_EQ(kRarFormat.probe({head, source.get(), "x.exe"}), Match::Stub);
    const auto archive = kRarFormat.open(source, {}).value();
    EXPECT_EQ(readAll(*archive).find("a")->data, "text");
    EXPECT_EQ(kRarFormat.probe({readBlock(*memorySource(mixedData(5000)), 0, 5000).value(), nullptr, "x.rar"}),
              Match::No);
}

TEST(Rar14, readsStoredEntriesWithTheirSum)
{
    const std::string data = "hello";
    unsigned sum = 0;
    for (const char c : data) {
        sum = (sum + static_cast<unsigned char>(c)) & 0xFFFF;
        sum = (sum << 1 | sum >> 15) & 0xFFFF;
    }
    const auto file = [&](unsigned crc) {
        return le(5, 4) + le(5, 4) + le(crc, 2) + le(21 + 5, 2) + le(0x3E8A5A8B, 4) + le(0x20, 1) + le(0, 1) + le(2, 1)
            + le(5, 1) + le(0, 1) + "A.TXT" + data;
    };
    const auto contents = readAll(*open("RE~^" + le(7, 2) + le(0x80, 1) + file(sum) + file(sum ^ 1)));
    ASSERT_EQ(contents.items.size(), 2U);
    EXPECT_EQ(contents.items[0].data, data);
    EXPECT_TRUE(contents.items[0].outcome);
    EXPECT_EQ(contents.items[1].outcome.error().code, ErrorCode::ChecksumMismatch);
}

TEST(Rar, staysCalmWhenAnyByteIsWrong)
{
    const auto new5 = R5::archive(R5::file({.name = "CMT", .data = "comment"}, 3)
                                  + R5::file({.name = "a", .data = "text", .extra = R5::record(3, vint(3) + le(1, 4))})
                                  + R5::link("b", 5, "a"));
    const auto old = R3::archive(R3::file({.name = "a", .data = "text", .flags = 0x1000, .tail = le(0x8000, 2)})
                                 + R3::file({.name = "b", .data = "text", .method = 0x33}));
    for (const auto& bytes : {new5, old}) {
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            for (const int wrong : {0x01, 0x80, 0xFF}) {
                auto damaged = bytes;
                damaged[at] = static_cast<char>(damaged[at] ^ wrong);
                const auto archive = kRarFormat.open(memorySource(damaged), {});
                if (!archive)
                    continue;
                for (const auto& item : readAll(**archive).items) {
                    EXPECT_TRUE(item.wasEnded);
                    const auto isWhole = item.outcome && item.size && item.kind == EntryKind::File;
                    EXPECT_TRUE(!isWhole || item.data.size() == *item.size);
                }
            }
        }
    }
}

}

}
