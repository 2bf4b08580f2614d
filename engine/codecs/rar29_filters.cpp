#include "engine/codecs/rar29_filters.h"

#include "engine/crypto/crc32.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::size_t kMaxPrograms = 1024;
constexpr std::uint32_t kMaxCode = 0xFFFF;
constexpr std::uint64_t kBudgetPerRun = 25'000'000;
constexpr std::uint64_t kBudgetPerEntry = 1'000'000'000;
constexpr std::size_t kMaxChannels = 1024;

// Flags of a record.
constexpr unsigned kHasProgram = 0x80, kFarStart = 0x40, kHasLength = 0x20, kHasRegisters = 0x10, kHasGlobals = 8;

}

struct Rar29Filters::Program {
    Kind kind = Kind::Foreign;
    RarVmProgram code;
    std::uint32_t lastLength = 0;
    std::uint32_t runs = 0; // declared so far
    std::vector<std::uint8_t> keptGlobals; // what a run left for the next
};

struct Rar29Filters::Machine {
    std::unique_ptr<RarVm> vm;
    std::uint64_t budget = kBudgetPerEntry;
};

class Rar29Filters::Native final : public RarFilter {
public:
    Native(Kind kind, std::uint32_t first, std::uint32_t second) : m_kind(kind), m_first(first), m_second(second) {}

    Result<void> run(std::vector<std::uint8_t>& block, std::uint64_t offset) override
    {
        switch (m_kind) {
        case Kind::Calls:
        case Kind::CallsAndJumps:
            rarUndoCalls(block, offset, m_kind == Kind::CallsAndJumps, RarCallWrap::At32Bits);
            return {};
        case Kind::Itanium:
            rarUndoItanium(block, offset);
            return {};
        case Kind::Rgb:
            if (rarUndoRgb(block, m_first, m_second))
                return {};
            break;
        default:
            if (m_first < 1 || m_first > kMaxChannels)
                break;
            m_kind == Kind::Delta ? rarUndoDelta(block, m_first) : rarUndoAudio(block, m_first);
            return {};
        }
        return Error{ErrorCode::Corrupt, "rar: filter parameters"};
    }

private:
    Kind m_kind;
    std::uint32_t m_first, m_second; // registers 0 and 1
};

class Rar29Filters::Interpreted final : public RarFilter {
public:
    Interpreted(std::shared_ptr<Program> program, std::shared_ptr<Machine> machine)
        : m_program(std::move(program))
        , m_machine(std::move(machine))
    {
    }
    std::array<std::uint32_t, 7> registers{};
    std::vector<std::uint8_t> globals;
    std::uint32_t runs = 0;

    Result<void> run(std::vector<std::uint8_t>& block, std::uint64_t offset) override
    {
        if (!m_machine->vm)
            m_machine->vm = std::make_unique<RarVm>();
        auto& vm = *m_machine->vm;
        setUp(vm, block, offset);
        auto budget = std::min(kBudgetPerRun, m_machine->budget);
        m_machine->budget -= budget;
        TRY(vm.run(m_program->code, budget));
        m_machine->budget += budget; // what was not used

        const auto memory = vm.memory();
        const auto length = vm.load32(RarVm::kGlobalStart + 0x1C) & (RarVm::kMemory - 1);
        const auto position = vm.load32(RarVm::kGlobalStart + 0x20) & (RarVm::kMemory - 1);
        const auto output = position + length <= memory.size() ? memory.subspan(position, length) : memory.first(0);
        block.assign(output.begin(), output.end());
        const auto kept = std::min(vm.load32(RarVm::kGlobalStart + 0x30), RarVm::kMaxGlobalData);
        const auto from = memory.subspan(RarVm::kUserGlobals, kept);
        m_program->keptGlobals.assign(from.begin(), from.end());
        return {};
    }

private:
    void setUp(RarVm& vm, std::span<const std::uint8_t> block, std::uint64_t offset)
    {
        const auto memory = vm.memory();
        std::fill(std::copy(block.begin(), block.end(), memory.begin()), memory.end(), std::uint8_t{0});
        std::copy(registers.begin(), registers.end(), vm.registers.begin());
        for (std::uint32_t i = 0; i < 7; ++i)
            vm.store32(RarVm::kGlobalStart + 4 * i, registers[i]);
        vm.store32(RarVm::kGlobalStart + 0x1C, static_cast<std::uint32_t>(block.size()));
        vm.store32(RarVm::kGlobalStart + 0x24, static_cast<std::uint32_t>(offset));
        vm.store32(RarVm::kGlobalStart + 0x28, static_cast<std::uint32_t>(offset >> 32));
        vm.store32(RarVm::kGlobalStart + 0x2C, runs);
        vm.registers[6] = static_cast<std::uint32_t>(offset);
        vm.registers[7] = RarVm::kMemory;
        const auto& user = m_program->keptGlobals.empty() ? globals : m_program->keptGlobals;
        auto to = std::copy(user.begin(), user.end(), memory.begin() + RarVm::kUserGlobals);
        const auto& fixed = m_program->code.staticData;
        const auto count = std::min<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(fixed.size()), memory.end() - to);
        std::copy_n(fixed.begin(), count, to);
    }

    std::shared_ptr<Program> m_program;
    std::shared_ptr<Machine> m_machine;
};

Rar29Filters::Rar29Filters() : m_machine(std::make_shared<Machine>()) {}
Rar29Filters::~Rar29Filters() = default;

void Rar29Filters::reset()
{
    m_programs.clear();
    m_lastIndex = 0;
}

void Rar29Filters::beginEntry() { m_machine->budget = kBudgetPerEntry; }

Rar29Filters::Kind Rar29Filters::recognise(std::span<const std::uint8_t> code)
{
    struct Known {
        std::size_t length;
        std::uint32_t crc;
        Kind kind;
    };
    static constexpr std::array<Known, 6> kKnown{{
        {53, 0xAD576887, Kind::Calls},
        {57, 0x3CD7E57E, Kind::CallsAndJumps},
        {120, 0x3769893F, Kind::Itanium},
        {29, 0x0E06077D, Kind::Delta},
        {149, 0x1C2C5DC8, Kind::Rgb},
        {216, 0xBC85E701, Kind::Audio},
    }};
    const auto crc = crc32(0, std::as_bytes(code));
    for (const auto& known : kKnown) {
        if (known.length == code.size() && known.crc == crc)
            return known.kind;
    }
    return Kind::Foreign;
}

Result<std::shared_ptr<Rar29Filters::Program>> Rar29Filters::defineProgram(RarRecordBits& bits) const
{
    const auto size = bits.number();
    if (size == 0 || size > kMaxCode || size > bits.bitsLeft() / 8)
        return Error{ErrorCode::Corrupt, "rar: filter program"};
    std::vector<std::uint8_t> code(size);
    for (auto& byte : code)
        byte = static_cast<std::uint8_t>(bits.take(8));
    auto program = std::make_shared<Program>();
    program->kind = m_isNative ? recognise(code) : Kind::Foreign;
    program->code = TRY(RarVmProgram::parse(code));
    return program;
}

Result<void> Rar29Filters::declare(std::uint8_t flags, std::span<const std::uint8_t> record, RarOutput& out)
{
    RarRecordBits bits(record);
    auto index = m_lastIndex;
    if ((flags & kHasProgram) != 0) {
        const auto number = bits.number();
        if (number == 0) {
            TRY(out.dropFilters());
            m_programs.clear();
        }
        index = number == 0 ? 0 : number - 1;
    }
    if (index > m_programs.size() || index >= kMaxPrograms)
        return Error{ErrorCode::Corrupt, "rar: filter number"};
    const auto isNew = index == m_programs.size();

    std::uint64_t start = bits.number();
    if ((flags & kFarStart) != 0)
        start += 258;
    auto length = isNew ? 0 : m_programs[index]->lastLength;
    if ((flags & kHasLength) != 0)
        length = bits.number();
    const auto runs = isNew ? 0 : m_programs[index]->runs;
    std::array<std::uint32_t, 7> registers{0, 0, 0, RarVm::kGlobalStart, length, runs, 0};
    if ((flags & kHasRegisters) != 0) {
        const auto mask = bits.take(7);
        for (std::size_t i = 0; i < registers.size(); ++i) {
            if ((mask >> i & 1) != 0)
                registers[i] = bits.number();
        }
    }
    if (isNew)
        m_programs.push_back(TRY(defineProgram(bits)));
    m_lastIndex = index;
    const auto& program = m_programs[index];
    program->lastLength = length;
    ++program->runs;
    std::vector<std::uint8_t> globals;
    if ((flags & kHasGlobals) != 0) {
        const auto size = bits.number();
        if (size > RarVm::kMaxGlobalData || size > bits.bitsLeft() / 8)
            return Error{ErrorCode::Corrupt, "rar: filter data"};
        for (std::uint32_t i = 0; i < size; ++i)
            globals.push_back(static_cast<std::uint8_t>(bits.take(8)));
    }
    if (!bits.ok() || length > RarVm::kGlobalStart)
        return Error{ErrorCode::Corrupt, "rar: filter record"};

    if (program->kind != Kind::Foreign)
        return out.addFilter(out.produced() + start, length,
                             std::make_unique<Native>(program->kind, registers[0], registers[1]));
    auto filter = std::make_unique<Interpreted>(program, m_machine);
    filter->registers = registers;
    filter->globals = std::move(globals);
    filter->runs = runs;
    return out.addFilter(out.produced() + start, length, std::move(filter));
}

}
