#include "engine/codecs/bzip2_sort.h"

#include <algorithm>

namespace vantoro {

namespace {

using Text = std::span<const std::uint8_t>;

struct Rotation {
    std::size_t begin = 0; // where the least rotation begins
    std::size_t root = 0; // length of the shortest piece of which the text is a repetition: the whole text, mostly
};

Rotation leastRotation(Text text)
{
    const auto size = text.size();
    const auto at = [text, size](std::size_t place) { return text[place < size ? place : place - size]; };
    // All places before `other` but `best` are known to begin greater rotations.
    std::size_t best = 0, other = 1, same = 0;
    while (other < size) {
        const auto ours = at(best + same), theirs = at(other + same);
        if (ours == theirs) {
            if (++same == size)
                return {best, other - best};
            continue;
        }
        if (ours > theirs) {
            best = std::max(best + same + 1, other);
            other = best + 1;
        } else {
            other += same + 1;
        }
        same = 0;
    }
    return {best, size};
}

/// The number of rotations of `text`, which is no repetition, that are less than `text` itself. Keeps for each place
/// how far the rotation from there agrees with `text` (the Z algorithm), so that no byte is compared twice.
std::uint32_t countLess(Text text, std::span<std::int32_t> agrees)
{
    const auto size = text.size();
    const auto at = [text, size](std::size_t place) { return text[place < size ? place : place - size]; };
    std::uint32_t less = 0;
    std::size_t from = 0, to = 0; // text[from, to) agrees with the beginning; may end past the text
    for (std::size_t i = 1; i < size; ++i) {
        std::size_t same = 0;
        if (i < to)
            same = std::min(to - i, static_cast<std::size_t>(agrees[i - from]));
        if (i + same >= to) {
            while (text[same] == at(i + same))
                ++same;
            from = i;
            to = i + same;
        }
        agrees[i] = static_cast<std::int32_t>(same);
        less += at(i + same) < text[same] ? 1U : 0U;
    }
    return less;
}

}

std::uint32_t Bzip2Sorter::sort(Bytes block)
{
    const std::span<std::uint8_t> text{reinterpret_cast<std::uint8_t*>(block.data()), block.size()};
    const auto least = leastRotation(text);
    const auto repeats = text.size() / least.root;
    m_agrees.resize(std::max(m_agrees.size(), least.root));
    const auto origin = countLess(text.first(least.root), m_agrees) * static_cast<std::uint32_t>(repeats);
    if (least.root == 1)
        return origin; // one byte again and again
    // The suffixes of a text that is less than its other rotations stand in the same order as these.
    m_root.resize(least.root);
    const auto from = text.begin() + static_cast<std::ptrdiff_t>(least.begin);
    const auto fit = std::min(least.root, text.size() - least.begin);
    std::copy_n(from, fit, m_root.begin());
    std::copy_n(text.begin(), least.root - fit, m_root.begin() + static_cast<std::ptrdiff_t>(fit));
    m_suffixes.sortBefore(m_root, text.first(least.root));
    if (repeats > 1) {
        for (auto i = text.size(); i-- > 0;)
            text[i] = text[i / repeats];
    }
    return origin;
}

}
