#include "tests/support/mixed_data.h"
#include "tests/support/passwords.h"
#include "tests/support/tools.h"
#include "tests/support/zip_maker.h"
#include "tests/support/zip_opening.h"

#include <algorithm>
#include <mutex>

namespace vantoro {

namespace {

using namespace test;

/// Every volume of a folder.
class FolderVolumes final : public VolumeProvider {
public:
    explicit FolderVolumes(const TempFolder& folder) : m_folder(folder) {}
    Result<SourcePtr> openVolume(std::string_view name) override
    {
        auto source = openFileSource(m_folder / std::string(name));
        return source ? source : Error{ErrorCode::MissingVolume, "test"};
    }

private:
    const TempFolder& m_folder;
};

TEST(Zip, readsWhatWasStreamedAndWhatIsZip64)
{
    REQUIRE_TOOL("zip");
    REQUIRE_TOOL("python3");
    TempFolder folder;
    const auto data = mixedData(300'000);
    folder.write("data", data);
    ASSERT_TRUE(folder.run("cat data | zip -q - - > streamed.zip")); // descriptors and zip64 fields
    ASSERT_TRUE(folder.run("python3 -c \"import zipfile;z=zipfile.ZipFile('big.zip','w',8);"
                           "z.open('data','w',force_zip64=True).write(open('data','rb').read())\""));
    for (const auto* file : {"streamed.zip", "big.zip"}) {
        const auto contents = readAll(*open(folder.read(file)));
        ASSERT_EQ(contents.items.size(), 1U) << file;
        EXPECT_TRUE(contents.items[0].outcome && contents.items[0].data == data) << file;
    }
}

TEST(Zip, tellsTimesModesLinksOwnersAndComments)
{
    REQUIRE_TOOL("zip");
    TempFolder folder;
    folder.write("run.sh", "#!/bin/sh\n");
    ASSERT_TRUE(folder.run("mkdir d && ln -s run.sh link && chmod 751 run.sh && TZ=UTC touch -d '2001-02-03 04:05:06'"
                           " run.sh && echo note | zip -qryz a.zip run.sh link d"));
    auto archive = open(folder.read("a.zip"));
    EXPECT_EQ(archive->info().comment, "note");
    const auto contents = readAll(*archive);
    const auto* file = contents.find("run.sh");
    ASSERT_TRUE(file);
    EXPECT_EQ(file->modified.seconds, 981173106);
    EXPECT_FALSE(file->modified.isLocal);
    EXPECT_EQ(*file->mode & 07777, 0751U);
    EXPECT_EQ(file->owner, std::to_string(::getuid()));
    const auto* link = contents.find("link");
    ASSERT_TRUE(link);
    EXPECT_EQ(link->kind, EntryKind::SymbolicLink);
    EXPECT_EQ(link->data, "run.sh");
    ASSERT_TRUE(contents.find("d/"));
    EXPECT_EQ(contents.find("d/")->kind, EntryKind::Folder);
}

TEST(Zip, takesTheMostPreciseTime)
{
    std::string ntfs(4, '\0'), stamps;
    putLe(stamps, 0x01D00000'00000000 + 1'234'567, 8);
    putLe(stamps, 0x01D00000'00000000, 8);
    putLe(stamps, 0x01CF0000'00000000, 8);
    ntfs += extraField(1, stamps);
    std::string extended = "\x03";
    putLe(extended, 1'000'000'000, 4); // flags promise two times, the directory holds one
    ZipMaker zip;
    auto entry = storedEntry("both", "x");
    entry.extra = extraField(0x5455, extended) + extraField(0x000A, ntfs);
    zip.add(entry);
    entry = storedEntry("extended", "x");
    entry.extra = extraField(0x5455, extended);
    zip.add(entry);
    entry = storedEntry("dos", "x");
    entry.dosTime = (21U << 9 | 2 << 5 | 3) << 16 | 4 << 11 | 5 << 5 | 3;
    zip.add(entry);
    const auto items = listAll(*open(zip.finish())).items;
    EXPECT_EQ(items[0].modified.nanoseconds % 100, 0U);
    EXPECT_NE(items[0].modified.nanoseconds, 0U);
    EXPECT_TRUE(items[0].created.isSet && items[0].accessed.isSet);
    EXPECT_EQ(items[1].modified.seconds, 1'000'000'000);
    EXPECT_FALSE(items[1].accessed.isSet);
    EXPECT_TRUE(items[2].modified.isLocal);
    EXPECT_EQ(items[2].modified.seconds, 981173106);
}

TEST(Zip, believesAUnicodeNameOnlyWithTheRightChecksum)
{
    const auto field = [](std::string_view plain, const std::string& unicode, std::uint32_t change) {
        std::string content = "\x01";
        putLe(content, crc32(0, asBytes(plain)) + change, 4);
        return content + unicode;
    };
    ZipMaker zip;
    for (const std::uint32_t change : {0U, 1U}) {
        auto entry = storedEntry("\x94.txt", "x");
        entry.host = 0;
        entry.comment = "\x84";
        entry.extra = extraField(0x7075, field(entry.name, "ö.txt", change))
            + extraField(0x6375, field(entry.comment, "ä", change));
        zip.add(entry);
    }
    const auto items = listAll(*open(zip.finish())).items;
    EXPECT_EQ(items[0].name, "ö.txt");
    EXPECT_EQ(items[0].nameCharset, kCharsetUtf8);
    EXPECT_EQ(items[1].name, "\x94.txt");
    EXPECT_EQ(items[1].nameCharset, kCharsetUnknown);
    EXPECT_EQ(items[1].pathStyle, PathStyle::Dos);
}

// Passwords.

TEST(Zip, asksAgainAfterAWrongPasswordAndKeepsTheRightOne)
{
    REQUIRE_TOOL("7zz");
    TempFolder folder;
    folder.write("a", mixedData(5000));
    folder.write("b", mixedData(70'000, 9));
    for (const auto* cipher : {"ZipCrypto", "AES256"}) {
        ASSERT_TRUE(folder.run("rm -f x.zip && 7zz a -tzip -pright -mem=" + std::string(cipher) + " x.zip a b"));
        // So many that some pass the quick check of the classic cipher.
        std::vector<std::string> answers;
        for (int i = 0; i < 600; ++i)
            answers.push_back("wrong" + std::to_string(i));
        if (cipher == std::string("AES256"))
            answers.resize(3);
        answers.push_back("right");
        ScriptedPasswords passwords(answers);
        OpenContext context;
        context.passwords = &passwords;
        auto archive = open(folder.read("x.zip"), context);
        EXPECT_TRUE(listAll(*archive).result); // needs none
        EXPECT_TRUE(passwords.attempts.empty());
        const auto contents = readAll(*archive);
        ASSERT_TRUE(contents.result) << cipher;
        EXPECT_EQ(passwords.attempts.size(), answers.size());
        EXPECT_EQ(passwords.attempts.back(), answers.size() - 1);
        for (const auto& item : contents.items)
            EXPECT_TRUE(item.outcome) << cipher << ' ' << item.name;
        EXPECT_TRUE(readAll(*archive).result);
        EXPECT_EQ(passwords.attempts.size(), answers.size());
    }
    ScriptedPasswords none({});
    OpenContext context;
    context.passwords = &none;
    const auto contents = readAll(*open(folder.read("x.zip"), context));
    ASSERT_FALSE(contents.result);
    EXPECT_EQ(contents.result.error().code, ErrorCode::PasswordNeeded);
    EXPECT_TRUE(contents.items.empty());
}

TEST(Zip, noticesAForgedCipherText)
{
    REQUIRE_TOOL("7zz");
    TempFolder folder;
    folder.write("a", std::string(50'000, 'a'));
    folder.write("b", mixedData(9'000'000)); // streamed
    ASSERT_TRUE(folder.run("7zz a -tzip -mm=Copy -mem=AES256 -pkey x.zip a b"));
    auto zip = folder.read("x.zip");
    zip[5000] = static_cast<char>(zip[5000] ^ 1);
    zip[4'000'000] = static_cast<char>(zip[4'000'000] ^ 1);
    ScriptedPasswords passwords({"key"});
    OpenContext context;
    context.passwords = &passwords;
    const auto contents = readAll(*open(zip, context));
    ASSERT_EQ(contents.items.size(), 2U);
    for (const auto& item : contents.items)
        EXPECT_EQ(outcomeOf(item), ErrorCode::ChecksumMismatch) << item.name;
    EXPECT_TRUE(contents.items[0].data.empty()); // not even decoded
}

TEST(Zip, namesStrongEncryption)
{
    auto entry = storedEntry("secret", "0123456789");
    entry.flags = 1 | 1 << 6;
    ZipMaker zip;
    zip.add(entry);
    const auto contents = readAll(*open(zip.finish()));
    ASSERT_EQ(contents.items.size(), 1U);
    EXPECT_EQ(outcomeOf(contents.items[0]), ErrorCode::UnsupportedEncryption);
    EXPECT_NE(contents.items[0].method.find("Strong encryption"), std::string::npos);
}

// Parts and prefixes.

TEST(Zip, opensASplitSetFromEitherEnd)
{
    REQUIRE_TOOL("zip");
    TempFolder folder;
    const auto first = mixedData(200'000), second = mixedData(150'000, 2);
    folder.write("first", first);
    folder.write("second", second);
    ASSERT_TRUE(folder.run("zip -q0 -s 64k set.zip first second"));
    FolderVolumes volumes(folder);
    for (const auto* name : {"set.zip", "set.z01", "set.z03"}) {
        OpenContext context{name, &volumes};
        const auto source = openFileSource(folder / name).value();
        // The first part has the mark, the last one the end record, the others their name alone.
        const auto expected = name == std::string("set.z01") ? Match::Sure
            : name == std::string("set.zip")                 ? Match::Stub
                                                             : Match::ByName;
        EXPECT_EQ(probe(source, name), expected) << name;
        auto archive = kZipFormat.open(source, context);
        ASSERT_TRUE(archive) << name;
        EXPECT_GE((*archive)->info().volumes.size(), 5U);
        EXPECT_EQ((*archive)->info().volumes.front(), "set.z01");
        EXPECT_EQ((*archive)->info().volumes.back(), "set.zip");
        const auto contents = readAll(**archive);
        EXPECT_TRUE(contents.find("first")->data == first);
        EXPECT_TRUE(contents.find("second")->data == second);
    }
    ASSERT_TRUE(folder.run("cat set.z0? set.zip > joined.zip"));
    const auto joined = readAll(*open(folder.read("joined.zip")));
    ASSERT_EQ(joined.items.size(), 2U);
    EXPECT_TRUE(joined.items[0].outcome && joined.items[0].data == first);
    EXPECT_TRUE(joined.items[1].outcome && joined.items[1].data == second);
    ASSERT_TRUE(folder.run("rm set.z02"));
    auto archive = kZipFormat.open(openFileSource(folder / "set.zip").value(), {"set.zip", &volumes});
    ASSERT_TRUE(archive);
    EXPECT_EQ((*archive)->info().missingVolume, "set.z02");
    const auto contents = readAll(**archive);
    EXPECT_EQ(outcomeOf(*contents.find("first")), ErrorCode::MissingVolume);
    EXPECT_TRUE(contents.find("second")->outcome);
    ASSERT_TRUE(folder.run("rm set.zip"));
    const auto missing = kZipFormat.open(openFileSource(folder / "set.z01").value(), {"set.z01", &volumes});
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().code, ErrorCode::MissingVolume);
}

TEST(Zip, opensBehindAPrefix)
{
    ZipMaker maker;
    maker.add(storedEntry("a", "content of a"));
    maker.add(storedEntry("b", mixedData(10'000)));
    const auto zip = maker.finish("a comment");
    const auto stub = "MZ" + mixedData(3000, 7);
    // Offsets from the start of the archive, and offsets that were adjusted.
    ZipMaker adjusted;
    adjusted.bytes = stub;
    adjusted.add(storedEntry("a", "content of a"));
    for (const auto& bytes : {stub + zip, adjusted.finish()}) {
        EXPECT_EQ(probe(memorySource(bytes)), Match::Stub);
        auto archive = open(bytes);
        EXPECT_FALSE(archive->info().damage);
        EXPECT_EQ(readAll(*archive).find("a")->data, "content of a");
    }
    EXPECT_EQ(open(zip + std::string(100, '\0'))->info().comment, "a comment"); // something behind it
    EXPECT_EQ(probe(memorySource(stub)), Match::No);
    EXPECT_EQ(probe(memorySource(mixedData(100'000, 4))), Match::No);
}

// What damage leaves.

TEST(Zip, salvagesWithoutADirectory)
{
    ZipMaker maker;
    auto streamed = storedEntry("streamed", mixedData(3000));
    const auto add = [&](const char* name, std::uint16_t flags, bool signature) {
        auto entry = storedEntry(name, mixedData(3000));
        entry.flags = flags;
        entry.hasDescriptorSignature = signature;
        // A stored block of deflate, so that it ends by itself.
        std::string packed = "\x01";
        putLe(packed, entry.data.size(), 2);
        putLe(packed, ~entry.data.size(), 2);
        entry.data = packed + entry.data;
        entry.method = 8;
        maker.add(entry);
    };
    add("known", 0, true);
    add("described", 8, true);
    add("unsigned", 8, false);
    maker.add(storedEntry("folder/", ""));
    const auto lastOffset = maker.add(storedEntry("last", mixedData(5000, 8)));
    const auto whole = maker.bytes.size();
    const auto zip = maker.finish();

    auto cut = open(zip.substr(0, whole));
    EXPECT_TRUE(cut->info().damage);
    const auto contents = readAll(*cut);
    ASSERT_EQ(contents.items.size(), 5U);
    for (const auto& item : contents.items)
        EXPECT_TRUE(item.outcome) << item.name << ' ' << item.outcome.error().what;
    EXPECT_TRUE(contents.find("unsigned")->data == mixedData(3000));

    // The last entry cut, too: its beginning comes out, and it is told.
    const auto torn = readAll(*open(zip.substr(0, whole - 1000)));
    ASSERT_EQ(torn.items.size(), 5U);
    EXPECT_EQ(outcomeOf(*torn.find("last")), ErrorCode::Truncated);
    EXPECT_TRUE(torn.find("described")->outcome);

    // A directory header destroyed: everything is found again, most with its attributes.
    auto scratched = zip;
    scratched[zip.find("PK\x01\x02", whole + 10)] = 'X';
    const auto mended = readAll(*open(scratched));
    EXPECT_EQ(mended.items.size(), 5U);
    for (const auto& item : mended.items)
        EXPECT_TRUE(item.outcome) << item.name;

    // A local header destroyed: that one entry is lost.
    scratched = zip;
    scratched[lastOffset] = 'X';
    const auto lost = readAll(*open(scratched));
    ASSERT_EQ(lost.items.size(), 5U);
    EXPECT_EQ(outcomeOf(*lost.find("last")), ErrorCode::Corrupt);
}

TEST(Zip, holdsLocalHeadersAgainstTheDirectory)
{
    ZipMaker maker;
    auto renamed = storedEntry("name", "data");
    renamed.localName = "eman";
    maker.add(renamed);
    maker.add(storedEntry("sound", "data"));
    auto zip = maker.finish();
    const auto contents = readAll(*open(zip));
    EXPECT_EQ(contents.items[0].name, "name"); // the directory's
    EXPECT_TRUE(contents.items[0].outcome);
    for (const auto& [offset, what] : {std::pair{8U, "method"}, {14U, "checksum"}, {22U, "size"}, {6U, "encrypted"}}) {
        auto changed = zip;
        changed[offset] = static_cast<char>(changed[offset] ^ 1);
        const auto items = readAll(*open(changed)).items;
        EXPECT_EQ(outcomeOf(items[0]), ErrorCode::Corrupt) << what;
        EXPECT_TRUE(items[1].outcome);
    }
    zip[30 + 4] = 'D'; // the data themselves
    EXPECT_EQ(outcomeOf(readAll(*open(zip)).items[0]), ErrorCode::ChecksumMismatch);
}

TEST(Zip, refusesOverlapsButNotTwins)
{
    // An entry whose stored data are another entry, which the directory lists as well.
    const auto kernel = storedEntry("kernel", mixedData(2000));
    ZipMaker inner, bomb;
    inner.add(kernel);
    bomb.add(storedEntry("quoting", inner.bytes));
    bomb.list(kernel, 30 + std::string_view("quoting").size());
    const auto refused = tryOpen(bomb.finish());
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().code, ErrorCode::OverlappingEntries);

    ZipMaker twins;
    twins.list(kernel, twins.add(kernel));
    EXPECT_TRUE(tryOpen(twins.finish()));

    ZipMaker reaching;
    auto greedy = storedEntry("greedy", "short");
    reaching.add(greedy);
    auto zip = reaching.finish();
    for (const auto at : {18U, 22U}) // packed and unpacked size of the local header, then of the directory's
        zip[at] = 60, zip[zip.find("PK\x01\x02") + at + 2] = 60;
    EXPECT_EQ(tryOpen(zip).error().code, ErrorCode::OverlappingEntries);
}

TEST(Zip, doesNotBelieveImpossibleSizes)
{
    ZipMaker maker;
    auto liar = storedEntry("liar", std::string("\x03\x00", 2));
    liar.method = 8;
    liar.size = 1U << 30;
    maker.add(liar);
    auto tooShort = storedEntry("short", std::string("\x4b\x4c\x4c\x4c\x04\x00", 6));
    tooShort.method = 8;
    tooShort.size = 2;
    maker.add(tooShort);
    auto zip = maker.finish();
    auto archive = open(zip);
    EXPECT_FALSE(listAll(*archive).find("liar")->size);
    const auto contents = readAll(*archive);
    EXPECT_EQ(outcomeOf(*contents.find("liar")), ErrorCode::SizeMismatch);
    EXPECT_EQ(outcomeOf(*contents.find("short")), ErrorCode::SizeMismatch);
    EXPECT_LE(contents.find("short")->data.size(), 2U);
    const auto entriesAt = zip.size() - 22 + 10;
    zip[entriesAt] = 100; // more entries than the directory has
    EXPECT_TRUE(open(zip)->info().damage);
}

TEST(Zip, survivesEveryCutAndFlip)
{
    ZipMaker maker;
    maker.add(storedEntry("a.txt", "some text"));
    auto deflated = storedEntry("dir/b", std::string("\x4b\x4c\x4c\x4c\x04\x00", 6));
    deflated.method = 8;
    deflated.size = 4;
    deflated.crc = crc32(0, asBytes("aaaa"));
    deflated.flags = 8;
    maker.add(deflated);
    const auto zip = maker.finish("c");
    for (std::size_t i = 0; i < zip.size(); ++i) {
        if (const auto cut = tryOpen(zip.substr(0, i)))
            static_cast<void>(readAll(**cut));
        for (const char flip : {'\x01', '\x80', '\xFF'}) {
            auto changed = zip;
            changed[i] = static_cast<char>(changed[i] ^ flip);
            const auto archive = tryOpen(changed);
            if (!archive)
                continue;
            EXPECT_TRUE(listAll(**archive).result);
            for (const auto& item : readAll(**archive).items)
                EXPECT_TRUE(item.wasEnded);
        }
    }
}

// Lanes.

/// Several lanes at once, each of which must get whole entries in ascending order.
class ManyLanes final : public Lanes {
public:
    explicit ManyLanes(unsigned count) : m_lanes(count) {}
    unsigned count() const override { return static_cast<unsigned>(m_lanes.size()); }
    LaneReceiver& lane(unsigned index) override { return m_lanes[index]; }
    std::vector<CollectingLanes>& lanes() { return m_lanes; }

private:
    std::vector<CollectingLanes> m_lanes;
};

TEST(Zip, sharesTheWorkBetweenLanes)
{
    ZipMaker maker;
    constexpr std::size_t kFolders = 40, kFiles = 30;
    const auto dataOf = [](std::size_t i) { return mixedData(i % 7 * 300, static_cast<unsigned>(i)); };
    for (std::size_t i = 0; i < kFolders * kFiles; ++i)
        maker.add(storedEntry("d" + std::to_string(i / kFiles) + "/f" + std::to_string(i), dataOf(i)));
    auto archive = open(maker.finish());
    ManyLanes lanes(4);
    ASSERT_TRUE(archive->read({}, lanes));
    std::vector<bool> seen(kFolders * kFiles);
    for (const auto& lane : lanes.lanes()) {
        EXPECT_TRUE(std::is_sorted(lane.items.begin(), lane.items.end(),
                                   [](const Item& a, const Item& b) { return a.index < b.index; }));
        for (const auto& item : lane.items) {
            EXPECT_FALSE(seen[item.index]);
            seen[item.index] = true;
            EXPECT_TRUE(item.outcome && item.data == dataOf(item.index));
        }
    }
    EXPECT_EQ(std::count(seen.begin(), seen.end(), true), static_cast<long>(seen.size()));

    const auto chosen = readAll(*archive, std::vector<std::uint64_t>{3, 500, 1199});
    ASSERT_EQ(chosen.items.size(), 3U);
    EXPECT_EQ(chosen.items[1].index, 500U);
}

TEST(Zip, stopsWhenAReceiverFailsAndGoesOnWhenItRefuses)
{
    ZipMaker maker;
    maker.add(storedEntry("large", std::string(400'000, 'l')));
    maker.add(storedEntry("small", "s"));
    auto archive = open(maker.finish());
    CollectingLanes refusing;
    refusing.refuseAfter = 1;
    ASSERT_TRUE(archive->read({}, refusing));
    ASSERT_EQ(refusing.items.size(), 2U);
    EXPECT_EQ(outcomeOf(refusing.items[0]), ErrorCode::EntryRefused);
    EXPECT_TRUE(refusing.items[1].outcome);

    OpenContext context;
    auto stopped = open(maker.bytes, context);
    context.cancel.cancel();
    const auto contents = readAll(*stopped);
    ASSERT_FALSE(contents.result);
    EXPECT_EQ(contents.result.error().code, ErrorCode::Cancelled);
}

}

}
