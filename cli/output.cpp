#include "cli/output.h"

#include "engine/extract.h"

#include <array>
#include <charconv>
#include <cerrno>
#include <cstdio>

#include <unistd.h>

namespace vantoro::cli {

void Output::putNumber(std::uint64_t number)
{
    std::array<char, 20> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    put({digits.data(), static_cast<std::size_t>(end - digits.data())});
}

void Output::putJson(std::string_view text)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string escaped;
    if (!isValidUtf8(text)) {
        escaped = decode(text, kCharsetUtf8);
        text = escaped;
    }
    put("\"");
    std::size_t plain = 0; // start of what needs no escape
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c >= 0x20 && c != '"' && c != '\\' && c != 0x7F)
            continue;
        put(text.substr(plain, i - plain));
        plain = i + 1;
        if (c == '"' || c == '\\') {
            const std::array<char, 2> pair{'\\', static_cast<char>(c)};
            put({pair.data(), pair.size()});
        } else {
            put("\\u00");
            put(kDigits.substr(c >> 4, 1));
            put(kDigits.substr(c & 15, 1));
        }
    }
    put(text.substr(plain));
    put("\"");
}

bool Output::flush()
{
    std::string_view rest = m_buffer;
    while (!rest.empty() && !m_broken) {
        const auto count = ::write(STDOUT_FILENO, rest.data(), rest.size());
        if (count < 0 && errno == EINTR)
            continue;
        m_broken = count < 0;
        if (count > 0)
            rest.remove_prefix(static_cast<std::size_t>(count));
    }
    m_buffer.clear();
    return !m_broken;
}

void complain(std::string_view archive, std::string_view entry, std::string_view sentence)
{
    std::string line = "vantoro-cli: ";
    for (const auto part : {archive, entry}) {
        if (!part.empty())
            line += printable(part) + ": ";
    }
    line += sentence;
    line += '\n';
    // An interrupted write is worth a second try: without the sentence nobody knows what happened.
    if (std::fwrite(line.data(), 1, line.size(), stderr) < line.size()) {
        std::clearerr(stderr);
        std::fwrite(line.data(), 1, line.size(), stderr);
    }
}

std::string sizeText(std::uint64_t bytes)
{
    constexpr std::array kUnits = {"B", "kB", "MB", "GB", "TB", "PB"};
    if (bytes < 1000)
        return std::to_string(bytes) + " B";
    auto value = static_cast<double>(bytes);
    std::size_t unit = 0;
    while (value >= 999.95 && unit + 1 < kUnits.size()) {
        value /= 1000;
        ++unit;
    }
    std::array<char, 32> text;
    std::snprintf(text.data(), text.size(), value < 10 ? "%.2f %s" : "%.1f %s", value, kUnits[unit]);
    return text.data();
}

}
