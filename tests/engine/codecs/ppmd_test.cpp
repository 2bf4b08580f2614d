#include "engine/codecs/ppmd.h"
#include "tests/support/mixed_data.h"
#include "tests/support/tools.h"

#include <gtest/gtest.h>

namespace vantoro {
namespace {

using namespace test;

struct TextInput final : PpmdInput {
    explicit TextInput(std::string_view bytes) : data(bytes) {}
    std::uint8_t next() override
    {
        if (at == data.size()) {
            ++missing;
            return 0;
        }
        return static_cast<std::uint8_t>(data[at++]);
    }
    std::string_view data;
    std::size_t at = 0;
    unsigned missing = 0;
};

std::uint64_t field(std::string_view file, std::size_t at, unsigned bytes)
{
    std::uint64_t value = 0;
    for (unsigned i = bytes; i-- > 0;)
        value = value << 8 | static_cast<std::uint8_t>(file[at + i]);
    return value;
}

/// The data of the first entry of a zip that knows its sizes beforehand.
std::string firstZipEntry(std::string_view zip)
{
    const auto start = 30 + field(zip, 26, 2) + field(zip, 28, 2);
    return std::string(zip.substr(start, field(zip, 18, 4)));
}

std::string drain(ByteStream& stream, std::size_t step = 64 << 10)
{
    std::string all, block(step, '\0');
    for (;;) {
        const auto got = stream.read(std::as_writable_bytes(std::span(block)));
        if (!got || *got == 0)
            return all;
        all.append(block, 0, *got);
    }
}

struct ModelCase {
    const char* parameters; // of 7z
    std::size_t size;
};

class ZipPpmd : public testing::TestWithParam<ModelCase> {};

// Memory of 1 MiB runs full several times in these.
TEST_P(ZipPpmd, decodesWhatAnotherPackerWrote)
{
    REQUIRE_TOOL("7z");
    const auto data = mixedData(GetParam().size);
    const TempFolder folder;
    folder.write("data", data);
    ASSERT_TRUE(folder.run(std::string("7z a -tzip -mm=PPMd:") + GetParam().parameters + " a.zip data"));
    const auto packed = firstZipEntry(folder.read("a.zip"));
    auto stream = openZipPpmd(windowStream(memorySource(packed)), data.size(), 1 << 30);
    EXPECT_TRUE(drain(*stream) == data);
    auto limited = openZipPpmd(windowStream(memorySource(packed)), data.size(), 1 << 19);
    std::byte one{};
    const auto refused = limited->read(Bytes(&one, 1));
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().code, ErrorCode::LimitExceeded);
}

INSTANTIATE_TEST_SUITE_P(Orders, ZipPpmd,
                         testing::Values(ModelCase{"o=2:mem=20", 600'000}, ModelCase{"o=5:mem=20", 3'000'000},
                                         ModelCase{"o=8:mem=24", 3'000'000}, ModelCase{"o=16:mem=20", 2'000'000},
                                         ModelCase{"o=16:mem=22", 4'000'000}));

class SevenZipPpmd : public testing::TestWithParam<ModelCase> {};

TEST_P(SevenZipPpmd, decodesVariantHWithTheCoderOf7z)
{
    REQUIRE_TOOL("7z");
    const auto data = mixedData(GetParam().size, 2);
    const TempFolder folder;
    folder.write("data", data);
    const std::string parameters = GetParam().parameters;
    ASSERT_TRUE(folder.run("7z a -mhc=off -m0=PPMd:" + parameters + " a.7z data"));
    const auto archive = folder.read("a.7z");
    const auto packed = archive.substr(32, field(archive, 12, 8)); // one packed stream, then the header
    const auto numberAfter = [&](const char* key) {
        return static_cast<unsigned>(std::stoul(parameters.substr(parameters.find(key) + std::string(key).size())));
    };
    auto decoder = PpmdDecoder::make({.variant = PpmdParams::Variant::H,
                                      .coder = PpmdParams::Coder::SevenZip,
                                      .order = numberAfter("o="),
                                      .memory = 1U << numberAfter("mem=")});
    ASSERT_TRUE(decoder);
    // Twice, the second time after a restart of the same model.
    for (int round = 0; round < 2; ++round) {
        TextInput input(packed);
        ASSERT_TRUE((*decoder)->startCoder(input));
        std::string out(data.size(), '\0');
        int stop = 0;
        EXPECT_EQ((*decoder)->decode(std::as_writable_bytes(std::span(out)), stop), data.size());
        EXPECT_TRUE(out == data);
        EXPECT_TRUE((*decoder)->isCoderAtRest());
        EXPECT_EQ(input.at, packed.size());
        EXPECT_EQ(input.missing, 0U);
        (*decoder)->restart(numberAfter("o="));
    }
}

INSTANTIATE_TEST_SUITE_P(Orders, SevenZipPpmd,
                         testing::Values(ModelCase{"o=2:mem=16", 300'000}, ModelCase{"o=6:mem=16", 2'000'000},
                                         ModelCase{"o=32:mem=20", 3'000'000}, ModelCase{"o=32:mem=16", 2'000'000}));

TEST(Ppmd, reportsInputThatEndsOrIsDamaged)
{
    REQUIRE_TOOL("7z");
    const auto data = mixedData(40'000);
    const TempFolder folder;
    folder.write("data", data);
    ASSERT_TRUE(folder.run("7z a -tzip -mm=PPMd:o=6:mem=20 a.zip data"));
    const auto packed = firstZipEntry(folder.read("a.zip"));
    const auto readAll = [&](std::string_view bytes) -> Result<std::string> {
        auto stream = openZipPpmd(windowStream(memorySource(bytes)), data.size(), 1 << 30);
        std::string out(data.size(), '\0');
        out.resize(TRY(readFully(*stream, std::as_writable_bytes(std::span(out)))));
        return out;
    };
    // What is missing reads as zeros, which may break the code before the end is noticed.
    for (const auto cut : {std::size_t{0}, std::size_t{1}, std::size_t{4}, packed.size() / 2, packed.size() - 16}) {
        const auto result = readAll(std::string_view(packed).substr(0, cut));
        EXPECT_FALSE(result && *result == data) << cut;
    }
    EXPECT_EQ(readAll(packed.substr(0, 1)).error().code, ErrorCode::Truncated);
    EXPECT_EQ(readAll(packed.substr(0, packed.size() / 2)).error().code, ErrorCode::Truncated);
    for (std::size_t at = 2; at < packed.size(); at += 97) {
        auto damaged = packed;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x55);
        const auto result = readAll(damaged);
        EXPECT_FALSE(result && *result == data) << at;
    }
    auto freeze = packed;
    freeze[1] = static_cast<char>((freeze[1] & 0x0F) | 0x20);
    const auto refused = readAll(freeze);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().code, ErrorCode::UnsupportedMethod);
}

}
}
