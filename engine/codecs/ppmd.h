#pragma once

#include "engine/codecs/codec.h"

#include <memory>

namespace vantoro {

/// Gives a PPMd range decoder its bytes, one at a time.
class PpmdInput {
public:
    virtual ~PpmdInput() = default;
    /// The next byte; 0 beyond the end. Whoever implements it knows whether that happened: a sound stream asks for at
    /// most four bytes too many.
    virtual std::uint8_t next() = 0;
};

struct PpmdParams {
    /// H: 7z and rar 2.9 to 4. I (revision 1): zip.
    enum class Variant : std::uint8_t { H, I };
    /// SevenZip: 7z. Carryless: rar and zip.
    enum class Coder : std::uint8_t { SevenZip, Carryless };
    /// What variant I does when its memory is full. H always restarts.
    enum class Restore : std::uint8_t { Restart, CutOff };

    Variant variant = Variant::H;
    Coder coder = Coder::Carryless;
    Restore restore = Restore::Restart;
    unsigned order = 6; ///< 2 to 64
    std::uint32_t memory = 0; ///< bytes, at least 2 KiB
};

/// PPMd, prediction by partial matching after D. Shkarin: a context model and the range decoder that it drives.
///
/// A zip entry: make, startCoder(), decode() until the size is reached. A rar block that resets the model: make (or
/// restart()), then startCoder(); a block that continues it: startCoder() alone, the model stays; then decodeByte().
class PpmdDecoder {
public:
    static constexpr int kEnd = -1; ///< escape out of the root context: an end mark in 7z, damage elsewhere
    static constexpr int kDamaged = -2; ///< the code lies outside of its range

    /// Memory is reserved at once but touched only as the model grows. LimitExceeded when order or memory are out of
    /// bounds, OutOfMemory.
    static Result<std::unique_ptr<PpmdDecoder>> make(const PpmdParams& params);

    virtual ~PpmdDecoder() = default;
    /// Forgets everything learnt; the memory stays. `order` from 2 to 64.
    virtual void restart(unsigned order) = 0;
    /// Reads the first 4 (7z: 5) bytes of coded data. `in` is used by every decode until the next startCoder().
    /// False when they cannot be right.
    virtual bool startCoder(PpmdInput& in) = 0;
    /// 0 to 255, kEnd or kDamaged. After kEnd or kDamaged the model is not to be used without restart().
    virtual int decodeByte() = 0;
    /// Fills `out` from its front and returns the count; less than all when kEnd or kDamaged came, told by `stop`.
    virtual std::size_t decode(Bytes out, int& stop) = 0;
    /// The coder has used up its code exactly, as at the end of a sound 7z stream.
    virtual bool isCoderAtRest() const = 0;
};

/// The data of a zip entry of method 98: two bytes of parameters, then variant I. Ends after `size` bytes.
/// `memoryLimit` bounds the model.
StreamPtr openZipPpmd(StreamPtr packed, std::uint64_t size, std::uint64_t memoryLimit);

}
