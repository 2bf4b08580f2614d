#pragma once

#include "engine/codecs/rar_output.h"
#include "engine/codecs/rar_vm.h"

#include <array>

namespace vantoro {

/// The filter programs that a rar 2.9 to 4 stream declares, and the records that apply them. The six programs that
/// packers write are recognised and run natively, others by the machine.
class Rar29Filters {
public:
    Rar29Filters();
    ~Rar29Filters();
    /// Forgets all programs.
    void reset();
    /// A new entry: a fresh budget for programs.
    void beginEntry();
    /// Takes a record from the stream; it applies to bytes behind the current end of `out`. `flags` is its first byte.
    Result<void> declare(std::uint8_t flags, std::span<const std::uint8_t> record, RarOutput& out);
    /// For tests: the machine runs all programs.
    void setNative(bool native) { m_isNative = native; }

private:
    enum class Kind : std::uint8_t { Calls, CallsAndJumps, Itanium, Delta, Rgb, Audio, Foreign };
    struct Program;
    struct Machine;
    class Native;
    class Interpreted;

    Result<std::shared_ptr<Program>> defineProgram(RarRecordBits& bits) const;
    static Kind recognise(std::span<const std::uint8_t> code);

    std::vector<std::shared_ptr<Program>> m_programs;
    std::size_t m_lastIndex = 0;
    std::shared_ptr<Machine> m_machine; // made when the first foreign program runs
    bool m_isNative = true;
};

}
