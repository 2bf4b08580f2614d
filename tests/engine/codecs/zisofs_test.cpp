#include "engine/codecs/zisofs.h"

#include <gtest/gtest.h>
#include <libdeflate.h>

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::size_t kBlock = 32768;

void appendLe32(std::string& text, std::size_t value)
{
    for (unsigned i = 0; i < 4; ++i)
        text += static_cast<char>(value >> (8 * i));
}

/// The file as mkzftree would write it: blocks of zeros are left out.
std::string packed(std::string_view content)
{
    std::string pointers, blocks;
    const auto count = (content.size() + kBlock - 1) / kBlock;
    const auto dataStart = 16 + (count + 1) * 4;
    auto* compressor = libdeflate_alloc_compressor(6);
    for (std::size_t i = 0; i < count; ++i) {
        const auto block = content.substr(i * kBlock, kBlock);
        appendLe32(pointers, dataStart + blocks.size());
        if (block.find_first_not_of('\0') == std::string_view::npos)
            continue;
        std::string room(kBlock + 100, '\0');
        room.resize(libdeflate_zlib_compress(compressor, block.data(), block.size(), room.data(), room.size()));
        blocks += room;
    }
    libdeflate_free_compressor(compressor);
    appendLe32(pointers, dataStart + blocks.size());
    std::string file("\x37\xE4\x53\x96\xC9\xDB\xD6\x07", 8);
    appendLe32(file, content.size());
    file += std::string("\x04\x0F\0\0", 4); // header of 16 bytes, blocks of 2^15
    return file + pointers + blocks;
}

std::string content()
{
    std::string text;
    for (int i = 0; i < 9000; ++i)
        text += "line " + std::to_string(i) + "\n";
    text.insert(kBlock, 2 * kBlock, '\0');
    return text;
}

Result<std::string> unpack(std::string_view file, std::size_t size, std::size_t step)
{
    const auto stream = TRY(openZisofs(memorySource(file), size, {}));
    std::string out;
    std::vector<std::byte> piece(step);
    while (const auto count = TRY(stream->read(piece)))
        out += asText(ConstBytes(piece).first(count));
    return out;
}

TEST(Zisofs, decodesBlocksAndHolesInPiecesOfAnySize)
{
    const auto text = content();
    for (const std::size_t step : {1UL, 1000UL, kBlock, 1UL << 20})
        EXPECT_EQ(unpack(packed(text), text.size(), step).value(), text);
    EXPECT_EQ(unpack(packed(""), 0, 10).value(), "");
}

TEST(Zisofs, damageIsAnErrorAndNeverOtherData)
{
    const auto text = content();
    const auto file = packed(text);
    EXPECT_FALSE(unpack(file, text.size() - 1, 1 << 20)); // the directory says otherwise
    for (std::size_t length = 0; length < file.size(); length += 97)
        EXPECT_FALSE(unpack(std::string_view(file).substr(0, length), text.size(), 1 << 20)) << length;
    for (std::size_t at = 0; at < file.size(); at += 13) {
        auto broken = file;
        broken[at] = static_cast<char>(broken[at] ^ 0x55);
        const auto result = unpack(broken, text.size(), 1 << 20);
        EXPECT_TRUE(!result || *result == text || at < 16) << at;
    }
}

}

}
