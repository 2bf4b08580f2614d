#pragma once

#include "engine/codecs/bzip2_sort.h"
#include "engine/codecs/bzip2_symbols.h"

namespace vantoro {

/// Collects the bytes of one block and puts the run lengths in. Its methods are cheap, so that one thread can feed
/// many encoders.
class Bzip2BlockInput {
public:
    /// `level`: 1 to 9, hundreds of thousands of bytes.
    explicit Bzip2BlockInput(unsigned level);
    /// Takes as many bytes as fit and says how many.
    std::size_t add(ConstBytes bytes);
    bool isFull() const { return m_length >= m_limit; }
    bool isEmpty() const { return m_length == 0; }
    /// What was collected, with run lengths.
    Bytes bytes() { return Bytes(m_bytes).first(m_length); }
    /// Of what was added.
    std::uint32_t checksum() const { return m_checksum; }
    void clear();

private:
    std::size_t addPlain(ConstBytes bytes);
    std::size_t addRun(ConstBytes bytes);
    std::vector<std::byte> m_bytes;
    std::size_t m_length = 0;
    std::size_t m_limit;
    std::byte m_last{};
    unsigned m_run = 0; // times m_last came in a row
    std::uint32_t m_checksum = 0;
};

/// A block as it stands in the file: a number of bits, first bit highest.
struct Bzip2Bits {
    std::vector<std::byte> bytes; // the last one filled up with zero bits
    std::uint64_t count = 0; // in bits
    std::uint32_t checksum = 0; // of the block
};

/// Turns blocks into bits: sorting, moving to front, Huffman codes. Reusable; keeps its memory.
class Bzip2Encoder {
public:
    /// Uses the block's bytes up.
    Bzip2Bits encode(Bzip2BlockInput& block);

private:
    Bzip2Sorter m_sorter;
    Bzip2Symbols m_symbols;
};

/// The file around the blocks: puts them one behind the other and keeps the checksum over them.
class Bzip2File {
public:
    explicit Bzip2File(unsigned level);
    void add(const Bzip2Bits& block);
    void end();
    /// Whole bytes so far; they are forgotten here.
    std::vector<std::byte> take();

private:
    void put(std::uint32_t bits, unsigned count);
    std::vector<std::byte> m_bytes;
    std::uint64_t m_open = 0; // bits that make no whole byte yet, the last of them lowest
    unsigned m_openCount = 0; // below 8
    std::uint32_t m_checksum = 0;
};

}
