#pragma once

#include "engine/io/bytes.h"

#include <array>
#include <vector>

namespace vantoro {

/// Reads the bit fields of filter records and programs, MSB first. A read past the end gives 0 and makes ok() false.
class RarRecordBits {
public:
    explicit RarRecordBits(std::span<const std::uint8_t> data) : m_data(data) {}
    bool ok() const { return m_ok; }
    std::size_t bitsLeft() const { return m_data.size() * 8 - m_position; }
    std::uint32_t take(unsigned bits); ///< 1 to 32
    std::uint32_t number(); ///< the records' coding of 32-bit numbers

private:
    std::span<const std::uint8_t> m_data;
    std::size_t m_position = 0; // in bits
    bool m_ok = true;
};

/// A filter program of rar 2.9 to 4 for the small virtual machine of that format.
struct RarVmProgram {
    // clang-format off
    enum class Op : std::uint8_t { // in the order of their codes
        Mov, Cmp, Add, Sub, Jz, Jnz, Inc, Dec, Jmp, Xor, And, Or, Test, Js, Jns, Jb, Jbe, Ja, Jae, Push, Pop, Call, Ret,
        Not, Shl, Shr, Sar, Neg, Pusha, Popa, Pushf, Popf, Movzx, Movsx, Xchg, Mul, Div, Adc, Sbb, Print
    };
    // clang-format on
    struct Operand {
        enum class Kind : std::uint8_t { None, Register, Immediate, Memory } kind = Kind::None;
        std::uint8_t base = kNoRegister; ///< Register: which; Memory: added to `value`
        std::uint32_t value = 0;
        static constexpr std::uint8_t kNoRegister = 8;
    };
    struct Instruction {
        Op op = Op::Print;
        bool isByte = false;
        std::array<Operand, 2> operands;
    };
    std::vector<Instruction> instructions;
    std::vector<std::uint8_t> staticData;

    /// `code` includes the check byte in front.
    static Result<RarVmProgram> parse(std::span<const std::uint8_t> code);
};

/// The machine: 8 registers and 256 KiB of memory.
class RarVm {
public:
    static constexpr std::uint32_t kMemory = 0x40000;
    static constexpr std::uint32_t kGlobalStart = 0x3C000; ///< also the largest block
    static constexpr std::uint32_t kUserGlobals = 0x3C040;
    static constexpr std::uint32_t kMaxGlobalData = 0x1FC0;

    RarVm() : m_memory(kMemory + 8) {}
    std::array<std::uint32_t, 8> registers{};
    std::span<std::uint8_t> memory() { return std::span(m_memory).first(kMemory); }
    std::uint32_t load32(std::uint32_t address) const;
    void store32(std::uint32_t address, std::uint32_t value);
    /// Runs until the program returns or leaves its code; LimitExceeded after `budget` instructions, which is lessened
    /// by those that ran.
    Result<void> run(const RarVmProgram& program, std::uint64_t& budget);

private:
    using Instruction = RarVmProgram::Instruction;
    using Operand = RarVmProgram::Operand;
    std::uint32_t addressOf(const Operand& operand) const;
    std::uint32_t read(const Operand& operand, bool isByte) const;
    void write(const Operand& operand, bool isByte, std::uint32_t value);
    void setFlags(std::uint32_t result, bool isByte, bool carry);
    bool jumps(RarVmProgram::Op op) const;
    void compute(const Instruction& instruction);
    void addOrSubtract(const Instruction& instruction);
    void shift(const Instruction& instruction);
    void push(std::uint32_t value);
    std::uint32_t pop();

    std::vector<std::uint8_t> m_memory;
    bool m_carry = false, m_zero = false, m_sign = false;
};

}
