#include "engine/codecs/suffix_sort.h"

#include <algorithm>

namespace vantoro {

namespace {

using Index = std::int32_t;

/// Sorts one text of `Char`, values below `alphabet`. A suffix is of kind S when it is less than the one after it,
/// of kind L when it is greater; an S behind an L begins a piece. Pieces are sorted and named, the text of the names
/// is sorted by itself, and all other suffixes follow from their order.
///
/// Entries of `order` are suffixes, 0 for none. While a pass runs, the complement marks those that are not to lead to
/// the suffix before them in that pass.
template <class Char> class Induction {
public:
    Induction(const Char* text, Index* order, Index size, Index alphabet, Index* memory)
        : m_text(text)
        , m_order(order)
        , m_size(size)
        , m_alphabet(alphabet)
        , m_counts(memory)
        , m_places(m_counts + alphabet)
        , m_pieces(m_places + alphabet)
    {
        countChars();
        findPieces();
    }
    void sortPieces();
    void induceOrder();
    void induceBefore();

private:
    void countChars();
    void findPieces();
    Index* bucketStarts();
    Index* bucketEnds();
    void seed(Index* places);
    void orderPieces();
    void gatherPieces();
    Index namePieces();
    bool isSamePiece(Index a, Index b, Index length) const;
    void sortNames(Index names);
    void placePieces();

    const Char* m_text;
    Index* m_order;
    Index m_size;
    Index m_alphabet;
    Index* m_counts; // of each character
    Index* m_places; // in the order, one for each character
    Index* m_pieces; // where they begin, the last one first
    Index m_pieceCount = 0;
};

template <class Char> void Induction<Char>::countChars()
{
    std::fill_n(m_counts, m_alphabet, 0);
    for (Index i = 0; i < m_size; ++i)
        ++m_counts[m_text[i]];
}

template <class Char> Index* Induction<Char>::bucketStarts()
{
    Index sum = 0;
    for (Index c = 0; c < m_alphabet; ++c) {
        m_places[c] = sum;
        sum += m_counts[c];
    }
    return m_places;
}

template <class Char> Index* Induction<Char>::bucketEnds()
{
    Index sum = 0;
    for (Index c = 0; c < m_alphabet; ++c)
        m_places[c] = sum += m_counts[c];
    return m_places;
}

/// From the last one to the first. Without a branch for what a suffix is: none could be foretold.
template <class Char> void Induction<Char>::findPieces()
{
    Index found = 0;
    Index isS = 0; // the last suffix is greater than the empty one
    for (Index i = m_size - 1; i > 0; --i) {
        const Index beforeIsS = Index{m_text[i - 1]} < Index{m_text[i]} + isS ? 1 : 0;
        m_pieces[found] = i;
        found += isS & ~beforeIsS;
        isS = beforeIsS;
    }
    m_pieceCount = found;
}

/// The last suffix follows from the empty one behind it.
template <class Char> void Induction<Char>::seed(Index* places)
{
    const auto last = m_size - 1;
    const auto c = m_text[last];
    m_order[places[c]++] = last > 0 && m_text[last - 1] < c ? ~last : last;
}

/// Upwards, each suffix leads to the one before it if that is of kind L, which fills the buckets from their starts;
/// downwards if it is of kind S, from their ends. Leaves the pieces, complemented, in order among zeros.
template <class Char> void Induction<Char>::orderPieces()
{
    const auto* const text = m_text;
    auto* const order = m_order;
    auto* place = bucketStarts();
    seed(place);
    for (Index i = 0; i < m_size; ++i) {
        const auto entry = order[i];
        order[i] = ~entry & entry >> 31;
        if (entry > 0) {
            const auto j = entry - 1;
            const auto c = text[j];
            order[place[c]++] = j ^ -Index{text[j - (j > 0)] < c};
        }
    }
    place = bucketEnds();
    for (Index i = m_size; i-- > 0;) {
        auto j = order[i];
        if (j > 0) {
            order[i] = 0;
            --j;
            const auto c = text[j];
            order[--place[c]] = j ^ -Index{text[j - (j > 0)] > c};
        }
    }
}

template <class Char> void Induction<Char>::gatherPieces()
{
    Index gathered = 0;
    for (Index i = 0; i < m_size; ++i) {
        const auto entry = m_order[i];
        m_order[gathered] = ~entry;
        gathered += entry < 0 ? 1 : 0;
    }
}

template <class Char> bool Induction<Char>::isSamePiece(Index a, Index b, Index length) const
{
    for (Index i = 0; i < length; ++i) {
        if (m_text[a + i] != m_text[b + i])
            return false;
    }
    return true;
}

/// The pieces stand in order in front. Behind them, at half its place, each gets its name: equal ones the same, the
/// least one 1.
template <class Char> Index Induction<Char>::namePieces()
{
    auto* const names = m_order + m_pieceCount;
    std::fill(names, m_order + m_size, 0);
    auto next = m_size;
    for (Index i = 0; i < m_pieceCount; ++i) {
        const auto piece = m_pieces[i];
        names[piece / 2] = next - piece + 1; // its length, up to and with the next one's first
        next = piece;
    }
    Index name = 0, other = m_size, otherLength = 0;
    for (Index i = 0; i < m_pieceCount; ++i) {
        const auto piece = m_order[i], length = names[piece / 2];
        // One that reaches the end is like no other.
        if (length != otherLength || other + length >= m_size || !isSamePiece(piece, other, length)) {
            ++name;
            other = piece;
            otherLength = length;
        }
        names[piece / 2] = name;
    }
    return name;
}

/// Brings the pieces, some of which are equal, into the order of the suffixes that begin with them.
template <class Char> void Induction<Char>::sortNames(Index names)
{
    auto* const text = m_order + m_size - m_pieceCount;
    for (Index i = 0; i < m_pieceCount; ++i) // what is read stands before all that was written
        text[m_pieceCount - 1 - i] = m_order[m_pieceCount + m_pieces[i] / 2] - 1;
    Induction<Index> inner(text, m_order, m_pieceCount, names, m_pieces + m_pieceCount);
    inner.sortPieces();
    inner.induceOrder();
    for (Index i = 0; i < m_pieceCount; ++i)
        m_order[i] = m_pieces[m_pieceCount - 1 - m_order[i]];
}

template <class Char> void Induction<Char>::placePieces()
{
    std::fill(m_order + m_pieceCount, m_order + m_size, 0);
    auto* const place = bucketEnds();
    for (auto i = m_pieceCount; i-- > 0;) {
        const auto piece = m_order[i];
        m_order[i] = 0;
        m_order[--place[m_text[piece]]] = piece;
    }
}

/// Leaves the suffixes that begin a piece, in order, at the ends of their buckets, and zeros elsewhere.
template <class Char> void Induction<Char>::sortPieces()
{
    std::fill_n(m_order, m_size, 0);
    auto* const place = bucketEnds();
    for (Index i = 0; i < m_pieceCount; ++i)
        m_order[--place[m_text[m_pieces[i]]]] = m_pieces[i];
    orderPieces();
    gatherPieces();
    if (const auto names = namePieces(); names < m_pieceCount)
        sortNames(names);
    placePieces();
}

/// The same two ways, but all suffixes stay.
template <class Char> void Induction<Char>::induceOrder()
{
    const auto* const text = m_text;
    auto* const order = m_order;
    auto* place = bucketStarts();
    seed(place);
    for (Index i = 0; i < m_size; ++i) {
        auto j = order[i];
        order[i] = ~j;
        if (j > 0) {
            --j;
            const auto c = text[j];
            order[place[c]++] = j ^ -Index{text[j - (j > 0)] < c};
        }
    }
    place = bucketEnds();
    for (Index i = m_size; i-- > 0;) {
        auto j = order[i];
        if (j > 0) {
            --j;
            const auto c = text[j];
            order[--place[c]] = j ^ -Index{j == 0 || text[j - 1] > c};
        } else {
            order[i] = ~j;
        }
    }
}

/// Once more, but what is left of a suffix is the byte before it; 0 where the whole text stands.
template <class Char> void Induction<Char>::induceBefore()
{
    const auto* const text = m_text;
    auto* const order = m_order;
    auto* place = bucketStarts();
    seed(place);
    for (Index i = 0; i < m_size; ++i) {
        auto j = order[i];
        if (j > 0) {
            --j;
            const auto c = text[j];
            order[i] = ~Index{c};
            order[place[c]++] = j ^ -Index{text[j - (j > 0)] < c};
        } else if (j < 0) {
            order[i] = ~j;
        }
    }
    place = bucketEnds();
    for (Index i = m_size; i-- > 0;) {
        auto j = order[i];
        if (j > 0) {
            --j;
            const auto c = text[j];
            order[i] = c;
            order[--place[c]] = j > 0 && text[j - 1] > c ? ~Index{text[j - 1]} : j;
        } else if (j < 0) {
            order[i] = ~j;
        }
    }
}

}

void SuffixSorter::sortBefore(std::span<const std::uint8_t> text, std::span<std::uint8_t> before)
{
    constexpr Index kAlphabet = 256;
    if (text.size() > m_capacity) {
        m_capacity = text.size();
        m_order = std::make_unique_for_overwrite<Index[]>(m_capacity);
        // A text's pieces are at most half as many as its characters, and so on inwards.
        m_memory = std::make_unique_for_overwrite<Index[]>(m_capacity * 3 + std::size_t{4} * kAlphabet);
    }
    Induction<std::uint8_t> induction(text.data(), m_order.get(), static_cast<Index>(text.size()), kAlphabet,
                                      m_memory.get());
    induction.sortPieces();
    induction.induceBefore();
    const auto last = text.back();
    for (std::size_t i = 1; i < text.size(); ++i)
        before[i] = static_cast<std::uint8_t>(m_order[i]);
    before[0] = last;
}

}
