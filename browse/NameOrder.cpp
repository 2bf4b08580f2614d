#include "browse/NameOrder.h"

#include <QString>

#include <algorithm>

namespace vantoro {
namespace {

unsigned char lowered(char c) { return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c); }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The digits at `at`, without leading zeros; moves past them.
std::string_view number(std::string_view text, std::size_t& at)
{
    while (at < text.size() && text[at] == '0')
        ++at;
    const auto start = at;
    while (at < text.size() && isDigit(text[at]))
        ++at;
    return text.substr(start, at - start);
}

int compareNumbers(std::string_view a, std::string_view b)
{
    return a.size() != b.size() ? (a.size() < b.size() ? -1 : 1) : a.compare(b);
}

}

bool isPlain(std::string_view name)
{
    return std::ranges::all_of(name, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string withoutAccents(std::string_view name)
{
    if (isPlain(name))
        return std::string(name);
    QString text;
    for (const QChar c : QString::fromUtf8(name).normalized(QString::NormalizationForm_KD)) {
        if (c.category() != QChar::Mark_NonSpacing)
            text += c;
    }
    return text.toCaseFolded().toStdString();
}

int compareNaturally(std::string_view a, std::string_view b)
{
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        if (isDigit(a[i]) && isDigit(b[j])) {
            const auto left = number(a, i);
            if (const int order = compareNumbers(left, number(b, j)); order != 0)
                return order;
            continue;
        }
        const auto left = lowered(a[i++]);
        const auto right = lowered(b[j++]);
        if (left != right)
            return left < right ? -1 : 1;
    }
    const auto restOfA = a.size() - i;
    const auto restOfB = b.size() - j;
    if (restOfA != restOfB)
        return restOfA < restOfB ? -1 : 1;
    return a.compare(b);
}

bool holdsText(std::string_view name, std::string_view part)
{
    const auto equal = [](char a, char b) { return lowered(a) == lowered(b); };
    return !std::ranges::search(name, part, equal).empty() || part.empty();
}

}
