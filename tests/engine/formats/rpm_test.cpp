#include "engine/formats/rpm.h"
#include "tests/support/tools.h"

#include <gtest/gtest.h>

namespace vantoro {

namespace {

using namespace test;

std::string be32(std::uint32_t value)
{
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8)
        text += static_cast<char>(value >> shift);
    return text;
}

/// A header section with one index entry and `store` bytes.
std::string header(std::size_t store)
{
    return "\x8E\xAD\xE8\x01" + std::string(4, '\0') + be32(1) + be32(static_cast<std::uint32_t>(store))
        + std::string(16 + store, 'i');
}

std::string package(const std::string& payload)
{
    auto text = "\xED\xAB\xEE\xDB" + std::string(92, '\0') + header(5);
    text.resize((text.size() + 7) / 8 * 8, '\0');
    return text + header(11) + payload;
}

Result<std::string> payloadOf(const std::string& bytes)
{
    const auto stream = TRY(kRpmFormat.open(memorySource(bytes), {}));
    std::string out(1 << 20, '\0');
    out.resize(TRY(readFully(*stream, std::as_writable_bytes(std::span(out)))));
    return out;
}

TEST(Rpm, findsThePayloadBehindTheHeadersWhateverItsCompression)
{
    TempFolder folder;
    const std::string text = "070701 and whatever else a cpio archive holds";
    folder.write("p", text);
    EXPECT_EQ(payloadOf(package(text)).value(), text);
    for (const std::string tool : {"gzip", "bzip2", "xz", "zstd", "xz --format=lzma"}) {
        if (!folder.run(tool + " -c p > packed"))
            continue; // not on this machine
        EXPECT_EQ(payloadOf(package(folder.read("packed"))).value(), text) << tool;
    }
}

TEST(Rpm, brokenHeadersAreErrors)
{
    const auto whole = package("070701");
    for (std::size_t length = 0; length < whole.size() - 6; ++length)
        EXPECT_FALSE(payloadOf(whole.substr(0, length))) << length;
    auto huge = whole;
    huge.replace(96 + 8, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(payloadOf(huge).error().code, ErrorCode::LimitExceeded);
    EXPECT_EQ(payloadOf(package("something else")).error().code, ErrorCode::UnsupportedMethod);
}

}

}
