#include "tests/support/mixed_data.h"
#include "tests/support/passwords.h"
#include "tests/support/tools.h"
#include "tests/support/wave_packer.h"
#include "tests/support/zip_maker.h"
#include "tests/support/zip_opening.h"

namespace vantoro {

namespace {

using namespace test;

// What other programs pack.

class ZipMethods : public testing::TestWithParam<const char*> {};

TEST_P(ZipMethods, decodesWhatAnotherProgramPacked)
{
    REQUIRE_TOOL("7zz");
    TempFolder folder;
    // One that is decoded from memory to memory, one that is streamed, and the smallest. The slow methods are streamed
    // at any size.
    const std::string_view options = GetParam();
    const bool isSlow = options.find("-mx=1") != std::string_view::npos;
    const std::vector<std::pair<std::string, std::string>> files
        = {{"small", mixedData(60'000)},
           {"large", mixedData(isSlow ? 1'000'000 : 8'500'000, 3)},
           {"empty", ""},
           {"one", "1"}};
    for (const auto& [name, data] : files)
        folder.write(name, data);
    ASSERT_TRUE(folder.run("7zz a -tzip " + std::string(GetParam()) + " a.zip small large empty one"));
    ScriptedPasswords passwords({"pass word"});
    OpenContext context;
    context.passwords = &passwords;
    const auto contents = readAll(*open(folder.read("a.zip"), context));
    ASSERT_TRUE(contents.result);
    ASSERT_EQ(contents.items.size(), files.size());
    for (const auto& [name, data] : files) {
        const auto* item = contents.find(name);
        ASSERT_TRUE(item) << name;
        EXPECT_TRUE(item->outcome) << name << ' ' << item->outcome.error().what;
        EXPECT_TRUE(item->data == data) << name;
        EXPECT_EQ(item->size, data.size());
    }
}

INSTANTIATE_TEST_SUITE_P(All, ZipMethods,
                         testing::Values("-mm=Copy", "-mm=Deflate", "-mm=Deflate64 -mx=1", "-mm=BZip2 -mx=1",
                                         "-mm=LZMA -mx=1", "-mm=PPMd -mx=1", "-mm=Copy -mem=AES256 '-ppass word'",
                                         "-mem=ZipCrypto '-ppass word'", "-mem=AES128 '-ppass word'",
                                         "-mem=AES192 '-ppass word'", "-mem=AES256 '-ppass word'",
                                         "-mm=BZip2 -mx=1 -mem=AES256 '-ppass word'"));

TEST(Zip, decodesXzAndZstandard)
{
    REQUIRE_TOOL("xz");
    REQUIRE_TOOL("zstd");
    TempFolder folder;
    const auto data = mixedData(100'000);
    folder.write("data", data);
    ASSERT_TRUE(folder.run("xz -k data && zstd -q data"));
    ZipMaker zip;
    for (const auto& [method, file] :
         {std::pair<std::uint16_t, const char*>{95, "data.xz"}, {93, "data.zst"}, {20, "data.zst"}}) {
        auto entry = storedEntry("m" + std::to_string(method), data);
        entry.method = method;
        entry.data = folder.read(file);
        zip.add(entry);
    }
    const auto contents = readAll(*open(zip.finish()));
    ASSERT_EQ(contents.items.size(), 3U);
    for (const auto& item : contents.items)
        EXPECT_TRUE(item.outcome && item.data == data) << item.name;
}

ZipEntry waveEntry(const std::string& name, const packers::PackedWave& wave)
{
    auto entry = storedEntry(name, wave.file);
    entry.method = 97;
    entry.data = wave.packed;
    return entry;
}

TEST(Zip, decodesWavPack)
{
    const auto wave = packers::packedWave({.channels = 1, .bits = 24, .frames = 30'001, .trailer = "LIST"});
    ZipMaker zip;
    zip.add(waveEntry("whole.wav", wave));
    auto cut = waveEntry("cut.wav", wave);
    cut.data.resize(cut.data.size() / 2);
    zip.add(cut);
    auto untrue = waveEntry("short.wav", wave);
    untrue.size += 10;
    zip.add(untrue);
    for (std::size_t at = 11; at < wave.packed.size(); at += wave.packed.size() / 40) {
        auto flipped = waveEntry("flipped.wav", wave);
        flipped.data[at] = static_cast<char>(flipped.data[at] ^ 4);
        zip.add(flipped);
    }
    const auto contents = readAll(*open(zip.finish()));
    ASSERT_TRUE(contents.result);
    ASSERT_GT(contents.items.size(), 40U);
    EXPECT_EQ(contents.items[0].method, "WavPack");
    EXPECT_TRUE(contents.items[0].outcome && contents.items[0].data == wave.file);
    EXPECT_EQ(outcomeOf(contents.items[1]), ErrorCode::Truncated);
    EXPECT_EQ(outcomeOf(contents.items[2]), ErrorCode::SizeMismatch);
    for (const auto& item : contents.items)
        EXPECT_TRUE(!item.outcome || item.data == wave.file) << item.name;
}

/// The method and the size in both headers of a zip whose one entry is stored within AES.
void setMethodWithinAes(std::string& zip, char method, std::uint32_t size)
{
    std::string sizeBytes;
    putLe(sizeBytes, size, 4);
    const auto directory = zip.rfind("PK\1\2");
    zip.replace(22, 4, sizeBytes);
    zip.replace(directory + 24, 4, sizeBytes);
    const std::string field("\x01\x99\x07\0", 4);
    for (auto at = zip.find(field); at != std::string::npos; at = zip.find(field, at + 1)) {
        zip[at + 4] = 2; // no checksum
        zip[at + 9] = method;
    }
}

TEST(Zip, decodesWavPackWithinAes)
{
    REQUIRE_TOOL("7zz");
    const auto wave = packers::packedWave({});
    TempFolder folder;
    folder.write("a.wav", wave.packed);
    ASSERT_TRUE(folder.run("7zz a -tzip -mm=Copy -mem=AES256 '-ppass word' a.zip a.wav"));
    auto zip = folder.read("a.zip");
    setMethodWithinAes(zip, 97, static_cast<std::uint32_t>(wave.file.size()));
    ScriptedPasswords passwords({"pass word"});
    OpenContext context;
    context.passwords = &passwords;
    const auto contents = readAll(*open(zip, context));
    ASSERT_EQ(contents.items.size(), 1U);
    EXPECT_EQ(contents.items[0].method, "AES-256 WavPack");
    EXPECT_TRUE(contents.items[0].outcome) << contents.items[0].outcome.error().what;
    EXPECT_TRUE(contents.items[0].data == wave.file);
}

}

}
