#pragma once

#include <cstdint>
#include <string>

namespace vantoro::cage {

/// What keeps a worker from doing more than reading its archive; bits of a set.
enum ConfinementStep : std::uint32_t {
    kDescriptors = 1, ///< no descriptor but the socket, the shared memory and the archive's files
    kResourceLimits = 2, ///< address space, core dumps, descriptors
    kNoNewPrivileges = 4,
    kLandlock = 8, ///< no file system, and on newer kernels no network and no signals
    kSystemCalls = 16, ///< allow-list of system calls
    kAllSteps = 31,
};

/// Descriptors that a worker can be given with its parent's consent: room for a set of several hundred volumes, each of
/// which stays open.
constexpr unsigned kMostDescriptors = 1024;

/// Takes every means away from this process, step by step in the order above; a step that the kernel lacks is left out.
/// Returns the steps that are in force. Descriptors up to `lastDescriptor` stay; a decoder may hold `dictionary` bytes
/// of history.
std::uint32_t confineThisProcess(int lastDescriptor, std::uint64_t dictionary = 0);

/// "no Landlock, no system-call filter" for what is missing from `steps`; empty when all are in force.
std::string missingSteps(std::uint32_t steps);

}
