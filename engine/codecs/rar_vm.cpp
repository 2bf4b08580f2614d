#include "engine/codecs/rar_vm.h"

#include <algorithm>

namespace vantoro {

namespace {

using Op = RarVmProgram::Op;
using Operand = RarVmProgram::Operand;
using Instruction = RarVmProgram::Instruction;

constexpr std::uint32_t kAddressMask = RarVm::kMemory - 1;

struct Shape {
    unsigned operands;
    bool hasByteForm;
};

Shape shapeOf(Op op)
{
    switch (op) {
    case Op::Mov:
    case Op::Cmp:
    case Op::Add:
    case Op::Sub:
    case Op::Xor:
    case Op::And:
    case Op::Or:
    case Op::Test:
    case Op::Shl:
    case Op::Shr:
    case Op::Sar:
    case Op::Xchg:
    case Op::Mul:
    case Op::Div:
    case Op::Adc:
    case Op::Sbb:
        return {2, true};
    case Op::Movzx:
    case Op::Movsx:
        return {2, false};
    case Op::Inc:
    case Op::Dec:
    case Op::Not:
    case Op::Neg:
        return {1, true};
    case Op::Ret:
    case Op::Pusha:
    case Op::Popa:
    case Op::Pushf:
    case Op::Popf:
    case Op::Print:
        return {0, false};
    default: // jumps, call, push, pop
        return {1, false};
    }
}

bool isJump(Op op)
{
    switch (op) {
    case Op::Jz:
    case Op::Jnz:
    case Op::Jmp:
    case Op::Js:
    case Op::Jns:
    case Op::Jb:
    case Op::Jbe:
    case Op::Ja:
    case Op::Jae:
    case Op::Call:
        return true;
    default:
        return false;
    }
}

Operand parseOperand(RarRecordBits& bits, bool isByte)
{
    Operand operand;
    if (bits.take(1) != 0) {
        operand.kind = Operand::Kind::Register;
        operand.base = static_cast<std::uint8_t>(bits.take(3));
    } else if (bits.take(1) == 0) {
        operand.kind = Operand::Kind::Immediate;
        operand.value = isByte ? bits.take(8) : bits.number();
    } else {
        operand.kind = Operand::Kind::Memory;
        if (bits.take(1) == 0) {
            operand.base = static_cast<std::uint8_t>(bits.take(3));
        } else {
            if (bits.take(1) == 0)
                operand.base = static_cast<std::uint8_t>(bits.take(3));
            operand.value = bits.number();
        }
    }
    return operand;
}

/// Small jumps are coded relative to the instruction that jumps.
std::uint32_t jumpTarget(std::uint32_t coded, std::uint32_t index)
{
    if (coded >= 256)
        return coded - 256;
    if (coded >= 136)
        coded -= 264;
    else if (coded >= 16)
        coded -= 8;
    else if (coded >= 8)
        coded -= 16;
    return index + coded;
}

}

std::uint32_t RarRecordBits::take(unsigned bits)
{
    if (!m_ok || bits > bitsLeft()) {
        m_ok = false;
        return 0;
    }
    std::uint32_t value = 0;
    for (; bits > 0; --bits, ++m_position)
        value = value << 1 | (std::uint32_t{m_data[m_position / 8]} >> (7 - m_position % 8) & 1U);
    return value;
}

std::uint32_t RarRecordBits::number()
{
    switch (take(2)) {
    case 0:
        return take(4);
    case 1: {
        const auto value = take(8);
        return value >= 16 ? value : 0xFFFFFF00 | value << 4 | take(4);
    }
    case 2:
        return take(16);
    default:
        return take(32);
    }
}

Result<RarVmProgram> RarVmProgram::parse(std::span<const std::uint8_t> code)
{
    std::uint8_t check = 0;
    for (const auto byte : code)
        check ^= byte;
    if (code.empty() || check != 0)
        return Error{ErrorCode::Corrupt, "rar: filter program"};
    RarRecordBits bits(code.subspan(1));
    RarVmProgram program;
    if (bits.take(1) != 0) {
        const auto size = bits.number() + 1;
        if (size > bits.bitsLeft() / 8)
            return Error{ErrorCode::Corrupt, "rar: filter program"};
        for (std::uint32_t i = 0; i < size; ++i)
            program.staticData.push_back(static_cast<std::uint8_t>(bits.take(8)));
    }
    while (bits.bitsLeft() >= 8) {
        Instruction instruction;
        auto opcode = bits.take(4);
        if (opcode >= 8)
            opcode = (opcode << 2 | bits.take(2)) - 24;
        instruction.op = static_cast<Op>(opcode);
        const auto shape = shapeOf(instruction.op);
        instruction.isByte = shape.hasByteForm && bits.take(1) != 0;
        for (unsigned i = 0; i < shape.operands; ++i) {
            auto& operand = instruction.operands[i];
            operand = parseOperand(bits, instruction.isByte);
            if (isJump(instruction.op) && operand.kind == Operand::Kind::Immediate)
                operand.value = jumpTarget(operand.value, static_cast<std::uint32_t>(program.instructions.size()));
        }
        if (!bits.ok())
            break; // the code ends inside an instruction
        program.instructions.push_back(instruction);
    }
    return program;
}

std::uint32_t RarVm::load32(std::uint32_t address) const
{
    const auto* const at = m_memory.data() + (address & kAddressMask);
    return static_cast<std::uint32_t>(at[0] | at[1] << 8 | at[2] << 16) | static_cast<std::uint32_t>(at[3]) << 24;
}

void RarVm::store32(std::uint32_t address, std::uint32_t value)
{
    auto* const at = m_memory.data() + (address & kAddressMask);
    for (unsigned i = 0; i < 4; ++i)
        at[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

std::uint32_t RarVm::addressOf(const Operand& operand) const
{
    return operand.value + (operand.base < Operand::kNoRegister ? registers[operand.base] : 0);
}

std::uint32_t RarVm::read(const Operand& operand, bool isByte) const
{
    switch (operand.kind) {
    case Operand::Kind::Register:
        return isByte ? registers[operand.base] & 0xFF : registers[operand.base];
    case Operand::Kind::Memory:
        return isByte ? m_memory[addressOf(operand) & kAddressMask] : load32(addressOf(operand));
    default:
        return operand.value;
    }
}

void RarVm::write(const Operand& operand, bool isByte, std::uint32_t value)
{
    if (operand.kind == Operand::Kind::Register) {
        auto& target = registers[operand.base];
        target = isByte ? (target & 0xFFFFFF00) | (value & 0xFF) : value;
    } else if (operand.kind == Operand::Kind::Memory) {
        if (isByte)
            m_memory[addressOf(operand) & kAddressMask] = static_cast<std::uint8_t>(value);
        else
            store32(addressOf(operand), value);
    }
}

void RarVm::setFlags(std::uint32_t result, bool isByte, bool carry)
{
    m_zero = (isByte ? result & 0xFF : result) == 0;
    m_sign = (result >> (isByte ? 7 : 31) & 1) != 0;
    m_carry = carry;
}

bool RarVm::jumps(Op op) const
{
    switch (op) {
    case Op::Jz:
        return m_zero;
    case Op::Jnz:
        return !m_zero;
    case Op::Js:
        return m_sign;
    case Op::Jns:
        return !m_sign;
    case Op::Jb:
        return m_carry;
    case Op::Jae:
        return !m_carry;
    case Op::Jbe:
        return m_carry || m_zero;
    case Op::Ja:
        return !m_carry && !m_zero;
    default:
        return true;
    }
}

void RarVm::push(std::uint32_t value)
{
    registers[7] -= 4;
    store32(registers[7], value);
}

std::uint32_t RarVm::pop()
{
    const auto value = load32(registers[7]);
    registers[7] += 4;
    return value;
}

void RarVm::addOrSubtract(const Instruction& instruction)
{
    const auto& [first, second] = instruction.operands;
    const std::uint64_t a = read(first, instruction.isByte);
    const std::uint64_t b = read(second, instruction.isByte);
    const auto adds = instruction.op == Op::Add || instruction.op == Op::Adc;
    const auto usesCarry = instruction.op == Op::Adc || instruction.op == Op::Sbb;
    const std::uint64_t carry = usesCarry && m_carry ? 1 : 0;
    const auto wide = adds ? a + b + carry : a - b - carry;
    const auto result = static_cast<std::uint32_t>(wide);
    setFlags(result, instruction.isByte, (wide >> (instruction.isByte ? 8 : 32) & 1) != 0);
    if (instruction.op != Op::Cmp)
        write(first, instruction.isByte, result);
}

void RarVm::shift(const Instruction& instruction)
{
    const auto& [first, second] = instruction.operands;
    const unsigned width = instruction.isByte ? 8 : 32;
    const auto value = read(first, instruction.isByte);
    const auto count = std::min<std::uint32_t>(read(second, instruction.isByte), 63);
    std::uint32_t result;
    bool carry = false;
    if (instruction.op == Op::Shl) {
        result = count < 32 ? value << count : 0;
        carry = count > 0 && count <= width && (value >> (width - count) & 1) != 0;
    } else if (instruction.op == Op::Shr) {
        result = count < 32 ? value >> count : 0;
        carry = count > 0 && count <= 32 && (value >> (count - 1) & 1) != 0;
    } else {
        const auto wide = instruction.isByte ? std::int64_t{static_cast<std::int8_t>(value)}
                                             : std::int64_t{static_cast<std::int32_t>(value)};
        result = static_cast<std::uint32_t>(wide >> count);
        carry = count > 0 && (wide >> (count - 1) & 1) != 0;
    }
    setFlags(result, instruction.isByte, carry);
    write(first, instruction.isByte, result);
}

void RarVm::compute(const Instruction& instruction)
{
    const auto isByte = instruction.isByte;
    const auto& first = instruction.operands[0];
    const auto& second = instruction.operands[1];
    const auto putWithFlags = [&](std::uint32_t value, bool carry) {
        setFlags(value, isByte, carry);
        write(first, isByte, value);
    };
    switch (instruction.op) {
    case Op::Mov:
        return write(first, isByte, read(second, isByte));
    case Op::Cmp:
    case Op::Add:
    case Op::Sub:
    case Op::Adc:
    case Op::Sbb:
        return addOrSubtract(instruction);
    case Op::Inc:
        return putWithFlags(read(first, isByte) + 1, false);
    case Op::Dec:
        return putWithFlags(read(first, isByte) - 1, false);
    case Op::Xor:
        return putWithFlags(read(first, isByte) ^ read(second, isByte), false);
    case Op::And:
        return putWithFlags(read(first, isByte) & read(second, isByte), false);
    case Op::Or:
        return putWithFlags(read(first, isByte) | read(second, isByte), false);
    case Op::Test:
        return setFlags(read(first, isByte) & read(second, isByte), isByte, false);
    case Op::Not:
        return write(first, isByte, ~read(first, isByte));
    case Op::Neg: {
        const auto value = read(first, isByte);
        return putWithFlags(0 - value, value != 0);
    }
    case Op::Shl:
    case Op::Shr:
    case Op::Sar:
        return shift(instruction);
    case Op::Push:
        return push(read(first, false));
    case Op::Pop:
        return write(first, false, pop());
    case Op::Pusha: {
        const auto saved = registers;
        for (const auto value : saved)
            push(value);
        return;
    }
    case Op::Popa: {
        const auto from = registers[7];
        for (unsigned i = 0; i < 8; ++i)
            registers[7 - i] = load32(from + 4 * i);
        return;
    }
    case Op::Pushf:
        return push((m_carry ? 1U : 0U) | (m_zero ? 2U : 0U) | (m_sign ? 0x80000000U : 0U));
    case Op::Popf: {
        const auto flags = pop();
        m_carry = (flags & 1) != 0;
        m_zero = (flags & 2) != 0;
        m_sign = (flags & 0x80000000U) != 0;
        return;
    }
    case Op::Movzx:
        return write(first, false, read(second, true));
    case Op::Movsx:
        return write(first, false, static_cast<std::uint32_t>(static_cast<std::int8_t>(read(second, true))));
    case Op::Xchg: {
        const auto value = read(first, isByte);
        write(first, isByte, read(second, isByte));
        return write(second, isByte, value);
    }
    case Op::Mul:
        return write(first, isByte, read(first, isByte) * read(second, isByte));
    case Op::Div: {
        const auto divisor = read(second, isByte);
        if (divisor != 0)
            write(first, isByte, read(first, isByte) / divisor);
        return;
    }
    default:
        return;
    }
}

Result<void> RarVm::run(const RarVmProgram& program, std::uint64_t& budget)
{
    m_carry = m_zero = m_sign = false;
    for (std::uint32_t at = 0; at < program.instructions.size();) {
        if (budget == 0)
            return Error{ErrorCode::LimitExceeded, "rar: filter program does not end"};
        --budget;
        const auto& instruction = program.instructions[at];
        if (instruction.op == Op::Ret) {
            if (registers[7] >= kMemory)
                break;
            at = pop();
        } else if (!isJump(instruction.op)) {
            compute(instruction);
            ++at;
        } else if (!jumps(instruction.op)) {
            ++at;
        } else {
            const auto target = read(instruction.operands[0], false);
            if (instruction.op == Op::Call)
                push(at + 1);
            at = target;
        }
    }
    return {};
}

}
