#include "engine/text/utf16.h"

namespace vantoro {

void appendUtf8(std::string& text, char32_t letter)
{
    if ((letter >= 0xD800 && letter < 0xE000) || letter > 0x10FFFF)
        letter = 0xFFFD;
    if (letter < 0x80) {
        text += static_cast<char>(letter);
        return;
    }
    const unsigned followers = letter < 0x800 ? 1 : letter < 0x10000 ? 2 : 3;
    constexpr unsigned kLead[] = {0, 0xC0, 0xE0, 0xF0};
    text += static_cast<char>(kLead[followers] | (letter >> (6 * followers)));
    for (unsigned i = followers; i-- > 0;)
        text += static_cast<char>(0x80 | ((letter >> (6 * i)) & 0x3F));
}

std::string utf8FromUtf16(ConstBytes bytes, std::endian order)
{
    ByteReader in(bytes);
    const auto next = [&]() -> char32_t { return order == std::endian::little ? in.le16() : in.be16(); };
    std::string text;
    while (in.remaining() >= 2) {
        char32_t letter = next();
        if (letter >= 0xD800 && letter < 0xDC00 && in.remaining() >= 2) {
            const auto before = in.position();
            const char32_t low = next();
            if (low >= 0xDC00 && low < 0xE000)
                letter = 0x10000 + ((letter - 0xD800) << 10) + (low - 0xDC00);
            else
                in.seek(before);
        }
        appendUtf8(text, letter);
    }
    return text;
}

}
