#pragma once

#include "engine/codecs/codec.h"
#include "engine/codecs/lzma_decoder.h"

namespace vantoro {

/// Packed bytes, taken from the front.
class PackedBytes {
public:
    virtual ~PackedBytes() = default;
    /// The next `count` bytes, kMostTaken at most, valid until the next call. LzmaDecoder::kMargin bytes behind them
    /// can be read, whatever they hold. Truncated when there are fewer.
    virtual Result<ConstBytes> take(std::size_t count) = 0;
    static constexpr std::size_t kMostTaken = 64 << 10;
};

/// All of them in memory.
class PackedBlock final : public PackedBytes {
public:
    /// The margin lies behind `bytes` already.
    explicit PackedBlock(ConstBytes bytes) : m_bytes(bytes) {}
    Result<ConstBytes> take(std::size_t count) override;
    std::size_t taken() const { return m_taken; }

private:
    ConstBytes m_bytes;
    std::size_t m_taken = 0;
};

/// Those of a stream, piece by piece.
class PackedStream final : public PackedBytes {
public:
    explicit PackedStream(StreamPtr stream);
    Result<ConstBytes> take(std::size_t count) override;
    /// What is there without waiting for more, where it lies; empty only at the end.
    Result<ConstBytes> peek() { return m_in.peek(); }
    void consume(std::size_t count);
    std::uint64_t taken() const { return m_taken; }

private:
    BufferedInput m_in;
    std::vector<std::byte> m_piece;
    std::uint64_t m_taken = 0;
};

/// What the first byte of a chunk says.
struct Lzma2Control {
    explicit Lzma2Control(std::byte first) : value(std::to_integer<std::uint8_t>(first)) {}
    bool isEnd() const { return value == 0; }
    bool isValid() const { return value <= 2 || isLzma(); }
    bool isLzma() const { return value >= 0x80; }
    bool beginsDictionary() const { return value == 1 || value >= 0xE0; }
    bool hasProperties() const { return value >= 0xC0; }
    bool forgetsModel() const { return value >= 0xA0; }

    /// Bytes that follow it, with the properties at their end.
    std::size_t headerSize() const { return isLzma() ? (hasProperties() ? 5 : 4) : 2; }
    struct Sizes {
        std::size_t decoded, packed;
    };
    Sizes sizes(ConstBytes header) const;

    std::uint8_t value;
};

/// LZMA in chunks, as xz and 7z store it.
class Lzma2Decoder {
public:
    Lzma2Decoder(PackedBytes& packed, LzmaWindow& window) : m_packed(packed), m_window(window) {}

    /// Decodes up to `most` bytes into the window, in one piece; fresh() tells which, also beside a fault. False at the
    /// end.
    Result<bool> step(std::size_t most);
    ConstBytes fresh() const { return m_window.bytes(m_from, m_window.position()); }

private:
    Result<bool> nextChunk();
    Result<void> beginLzma(const Lzma2Control& control, ConstBytes header, std::size_t packedSize);
    Result<void> decode(std::size_t count);

    PackedBytes& m_packed;
    LzmaWindow& m_window;
    LzmaDecoder m_lzma;
    ConstBytes m_chunk; ///< packed bytes of the chunk at hand
    std::size_t m_left = 0; ///< bytes that it will still give
    std::size_t m_from = 0;
    bool m_isStored = false;
    bool m_needsDictionary = true; ///< the first chunk must begin one
    bool m_needsProperties = true;
};

/// Of the byte that stands for it; nothing when it stands for none.
std::optional<std::uint64_t> lzma2Dictionary(std::uint8_t property);

}
