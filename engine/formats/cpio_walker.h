#pragma once

#include "engine/formats/cpio_header.h"
#include "engine/formats/entry_input.h"

#include <map>

namespace vantoro {

/// A file, folder or link of a cpio archive.
struct CpioMember {
    CpioHeader header;
    std::string name;
    EntryKind kind = EntryKind::File;
    std::string linkTarget;
    std::uint64_t index = 0;
    std::uint64_t targetIndex = 0; ///< of a hard link
};

/// Goes through the members. Names of one file whose data come with the last of them are held back until then.
class CpioWalker {
public:
    CpioWalker(EntryInput& input, const Limits& limits) : m_input(input), m_limits(limits) {}

    /// The next members in the order of the listing: mostly one; several when they are names of one file, whose data
    /// belong to the first. Empty at the end. The data are the input's next bytes.
    Result<std::span<CpioMember>> next();
    /// The data of the current members. Errors of the receiver are returned; what the input lacks goes to `fault`.
    Result<void> deliver(LaneReceiver& lane, Result<void>& fault);

private:
    using FileId = std::pair<std::uint64_t, std::uint64_t>;
    struct Known {
        CpioHeader header;
        std::string name;
        std::uint64_t index;
    };

    Result<bool> readMember(CpioMember& member);
    Result<void> passRest();
    Result<void> readTarget(CpioMember& member);
    bool holdBack(CpioMember& member);
    void linkToKnown(CpioMember& member);
    Result<void> number();
    void takeLeftOvers();

    EntryInput& m_input;
    Limits m_limits;
    std::vector<CpioMember> m_members; // handed out last
    std::map<FileId, std::vector<CpioMember>> m_held;
    std::map<FileId, Known> m_known; // files with several names, their data seen
    std::uint64_t m_nextIndex = 0;
    std::uint64_t m_left = 0; // data of the current member
    std::size_t m_padding = 0; // behind them
    bool m_hasMember = false;
    bool m_isAtEnd = false;
};

}
