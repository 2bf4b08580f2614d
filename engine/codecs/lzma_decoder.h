#pragma once

#include "engine/io/bytes.h"

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace vantoro {

/// Decoded bytes and the history that matches refer to: a ring, or the whole of what will be decoded.
class LzmaWindow {
public:
    /// A ring for matches that reach `dictionary` bytes back.
    static Result<LzmaWindow> ring(std::uint64_t dictionary);
    /// Room for exactly `size` bytes, decoded into one piece.
    static Result<LzmaWindow> whole(std::size_t size, std::uint64_t dictionary);

    /// Matches reach no further back than here.
    void forget() { m_known = 0; }
    /// Bytes that can be decoded in one piece: up to the end of the memory, after which the ring begins anew.
    std::size_t room() const { return m_capacity - m_position; }
    std::size_t position() const { return m_position; }
    ConstBytes bytes(std::size_t from, std::size_t to) const { return {m_memory.get() + from, to - from}; }
    /// Begins the ring anew where it is full. A window for the whole stays full.
    void wrap();
    /// `bytes`: not more than room().
    void append(ConstBytes bytes);

private:
    friend class LzmaDecoder;
    LzmaWindow(std::unique_ptr<std::byte[]> memory, std::size_t capacity, std::size_t reach, bool isRing);
    void advanceTo(std::size_t position)
    {
        m_known += position - m_position;
        m_position = position;
    }

    std::unique_ptr<std::byte[]> m_memory; ///< kSlack bytes longer: copies may run over
    std::size_t m_capacity;
    std::size_t m_reach;
    std::size_t m_position = 0;
    std::uint64_t m_known = 0; ///< bytes since forget()
    bool m_isRing;
};

/// The model and the range coder of LZMA, without a container.
///
/// Most of the time of a decoder goes into waiting for branches that were guessed wrong. The bits of literals, lengths
/// and distances are as good as random; they are decoded without branches. Only what can be foreseen is a branch.
class LzmaDecoder {
public:
    /// lc, lp and pb from their byte; nothing when they are out of range.
    struct Properties {
        unsigned literalContext = 0, literalPosition = 0, position = 0;
        static std::optional<Properties> parse(std::uint8_t value);
    };
    void setProperties(const Properties& properties);
    const Properties& properties() const { return m_properties; }
    /// Forgets all that the model has learned.
    void reset();

    /// Takes the coder's first bytes; false when they are none.
    static constexpr std::size_t kFirstBytes = 5;
    bool begin(ConstBytes first);

    /// One symbol takes fewer bytes of input than this. So many must follow a range that is decoded to its end;
    /// what they hold does not matter.
    static constexpr std::size_t kMargin = 24;

    enum class Stop : std::uint8_t { Full, InputEnds, EndMark, Corrupt };
    struct Progress {
        Stop stop;
        std::size_t consumed;
    };
    /// Decodes until `most` more bytes are in the window or the next symbol would begin behind `packed`, which may be
    /// passed by the last one. `most`: not more than the window's room.
    Progress decode(ConstBytes packed, LzmaWindow& window, std::size_t most);

    /// Whether a match was cut off where `most` ended it.
    bool isInMatch() const { return m_pending > 0; }
    /// Takes what may still belong to the last symbol; true when the coder has come out even.
    bool endsEven(ConstBytes packed, std::size_t& consumed);

    using Probability = std::uint16_t;
    struct Lengths {
        Probability choice, choice2;
        std::array<std::array<Probability, 8>, 16> low, mid;
        std::array<Probability, 256> high;
    };

private:
    static constexpr unsigned kStates = 12;
    struct Model {
        std::array<std::array<Probability, 16>, kStates> isMatch, isLongRep0;
        std::array<Probability, kStates> isRep, isRep0, isRep1, isRep2;
        std::array<std::array<Probability, 64>, 4> slot;
        std::array<Probability, 128> special; ///< low bits of distances of slots 4 to 13
        std::array<Probability, 16> align;
        Lengths match, rep;
    };

    Properties m_properties;
    Model m_model;
    std::vector<Probability> m_literals;
    std::uint32_t m_range = 0, m_code = 0;
    std::uint32_t m_state = 0;
    std::array<std::uint32_t, 4> m_rep{};
    std::uint32_t m_pending = 0; ///< bytes of a match that did not fit any more
};

}
