#include "engine/codecs/bzip2_tables.h"

#include <algorithm>

namespace vantoro {

namespace {

using Frequencies = std::array<std::uint32_t, Bzip2Symbols::kMost>;
constexpr std::size_t kGroup = Bzip2Tables::kGroup;
constexpr unsigned kLongest = 17; // readers know 20; what is above 17 gains nothing
constexpr int kPasses = 4;

/// One leaf or inner node on its way into a Huffman tree, then its depth: the tree is built in place over the sorted
/// weights (Moffat and Katajainen).
using Nodes = std::array<std::uint32_t, Bzip2Symbols::kMost>;

void linkParents(Nodes& nodes, std::size_t count)
{
    nodes[0] += nodes[1];
    std::size_t root = 0, leaf = 2;
    for (std::size_t next = 1; next + 1 < count; ++next) {
        const auto takeLightest = [&] {
            if (leaf >= count || (root < next && nodes[root] < nodes[leaf])) {
                const auto weight = nodes[root];
                nodes[root++] = static_cast<std::uint32_t>(next);
                return weight;
            }
            return nodes[leaf++];
        };
        const auto first = takeLightest();
        nodes[next] = first + takeLightest();
    }
}

/// Parents to depths of inner nodes, then to depths of leaves, the longest first.
void measureDepths(Nodes& nodes, std::size_t count)
{
    nodes[count - 2] = 0;
    for (auto i = count - 2; i-- > 0;)
        nodes[i] = nodes[nodes[i]] + 1;
    std::size_t available = 1, place = count, inner = count - 1;
    for (std::uint32_t depth = 0; available > 0; ++depth) {
        std::size_t used = 0;
        while (inner > 0 && nodes[inner - 1] == depth) {
            ++used;
            --inner;
        }
        for (; available > used; --available)
            nodes[--place] = depth;
        available = 2 * used;
    }
}

/// Every symbol gets a code, of 1 to kLongest bits. `count` is 3 or more.
void measureCodes(const Frequencies& frequencies, std::size_t count, Bzip2Tables::Lengths& lengths)
{
    std::array<std::uint32_t, Bzip2Symbols::kMost> keys{}; // weight above, symbol below
    constexpr unsigned kSymbolBits = 9;
    for (std::size_t i = 0; i < count; ++i)
        keys[i] = std::max(frequencies[i], 1U) << kSymbolBits | static_cast<std::uint32_t>(i);
    std::sort(keys.begin(), keys.begin() + static_cast<std::ptrdiff_t>(count));
    Nodes nodes{};
    for (unsigned flatten = 0;; ++flatten) {
        for (std::size_t i = 0; i < count; ++i)
            nodes[i] = std::max(keys[i] >> kSymbolBits >> flatten, 1U);
        linkParents(nodes, count);
        measureDepths(nodes, count);
        if (nodes[0] <= kLongest)
            break;
    }
    for (std::size_t i = 0; i < count; ++i)
        lengths[keys[i] & ((1U << kSymbolBits) - 1)] = static_cast<std::uint8_t>(nodes[i]);
}

std::size_t codesFor(std::size_t symbols)
{
    for (const auto& [below, codes] : {std::pair{200U, 2U}, {600U, 3U}, {1200U, 4U}, {2400U, 5U}}) {
        if (symbols < below)
            return codes;
    }
    return Bzip2Tables::kMostCodes;
}

/// To begin with each code is good for a range of symbols that makes up its share of the whole, and bad for the rest.
void guessLengths(const Bzip2Symbols& symbols, Bzip2Tables& tables)
{
    constexpr std::uint8_t kGood = 0, kBad = 15;
    auto left = symbols.symbols().size();
    std::size_t from = 0;
    for (std::size_t code = 0; code < tables.codes; ++code) {
        const auto share = left / (tables.codes - code);
        std::size_t taken = 0, to = from;
        while (to < symbols.alphabetSize() && taken < share)
            taken += symbols.frequencies()[to++];
        tables.lengths[code].fill(kBad);
        std::fill(tables.lengths[code].begin() + static_cast<std::ptrdiff_t>(from),
                  tables.lengths[code].begin() + static_cast<std::ptrdiff_t>(to), kGood);
        left -= taken;
        from = to;
    }
}

/// What a symbol, or a group of them, costs with each of the codes.
using Costs = std::uint16_t __attribute__((vector_size(16)));

std::size_t cheapest(const Costs& costs, std::size_t codes)
{
    std::size_t best = 0;
    for (std::size_t code = 1; code < codes; ++code) {
        if (costs[code] < costs[best])
            best = code;
    }
    return best;
}

/// Gives each group its cheapest code, then fits each code to its groups.
void refine(const Bzip2Symbols& symbols, Bzip2Tables& tables)
{
    std::array<Costs, Bzip2Symbols::kMost> costs{};
    for (std::size_t code = 0; code < tables.codes; ++code) {
        for (std::size_t symbol = 0; symbol < symbols.alphabetSize(); ++symbol)
            costs[symbol][code] = tables.lengths[code][symbol];
    }
    // Two counters a symbol: adding to the one that was added to just before would wait for it.
    std::array<std::array<Frequencies, 2>, Bzip2Tables::kMostCodes> frequencies{};
    tables.choices.clear();
    const auto all = symbols.symbols();
    for (std::size_t begin = 0; begin < all.size(); begin += kGroup) {
        const auto group = all.subspan(begin, std::min(kGroup, all.size() - begin));
        Costs even{}, odd{};
        std::size_t i = 0;
        for (; i + 1 < group.size(); i += 2) {
            even += costs[group[i]];
            odd += costs[group[i + 1]];
        }
        if (i < group.size())
            even += costs[group[i]];
        const auto code = cheapest(even + odd, tables.codes);
        tables.choices.push_back(static_cast<std::uint8_t>(code));
        auto& counters = frequencies[code];
        for (i = 0; i + 1 < group.size(); i += 2) {
            ++counters[0][group[i]];
            ++counters[1][group[i + 1]];
        }
        if (i < group.size())
            ++counters[0][group[i]];
    }
    for (std::size_t code = 0; code < tables.codes; ++code) {
        auto& [sum, second] = frequencies[code];
        for (std::size_t symbol = 0; symbol < sum.size(); ++symbol)
            sum[symbol] += second[symbol];
        measureCodes(sum, symbols.alphabetSize(), tables.lengths[code]);
    }
}

}

Bzip2Tables chooseBzip2Tables(const Bzip2Symbols& symbols)
{
    Bzip2Tables tables;
    tables.codes = codesFor(symbols.symbols().size());
    tables.choices.reserve(symbols.symbols().size() / kGroup + 1);
    guessLengths(symbols, tables);
    for (int pass = 0; pass < kPasses; ++pass)
        refine(symbols, tables);
    return tables;
}

}
