#include "engine/cage/confinement.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VANTORO_UNDER_SANITIZER 1
#endif
#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VANTORO_UNDER_SANITIZER 1
#endif
#endif

namespace vantoro::cage {

namespace {

#ifdef VANTORO_UNDER_SANITIZER
// The sanitizers' runtimes map terabytes and use calls of their own.
constexpr bool kUnderSanitizer = true;
#else
constexpr bool kUnderSanitizer = false;
#endif

// Beside a dictionary larger than the usual limit of 1 GiB, which is in it.
constexpr rlim_t kAddressSpace = rlim_t{2} << 30;
constexpr rlim_t kUsualDictionary = rlim_t{1} << 30;
// The worker cannot raise its limits, but its parent can, up to the second figure: see WorkerProcess::handedOver().
constexpr rlim_t kDescriptorLimit = 64;

bool closeDescriptors(int last) { return ::syscall(SYS_close_range, static_cast<unsigned>(last) + 1, ~0U, 0) == 0; }

bool limit(__rlimit_resource resource, rlim_t value, rlim_t most)
{
    const rlimit both{value, most};
    return ::setrlimit(resource, &both) == 0;
}

bool limit(__rlimit_resource resource, rlim_t value) { return limit(resource, value, value); }

bool setLimits(std::uint64_t dictionary)
{
    const auto more = std::max<rlim_t>(dictionary, kUsualDictionary) - kUsualDictionary;
    const bool memory = kUnderSanitizer || limit(RLIMIT_AS, kAddressSpace + more);
    return limit(RLIMIT_CORE, 0) && limit(RLIMIT_NOFILE, kDescriptorLimit, kMostDescriptors) && limit(RLIMIT_FSIZE, 0)
        && memory;
}

// Debian 12's headers know Landlock's first version only; numbers from the kernel's include/uapi/linux/landlock.h.
struct LandlockRules {
    std::uint64_t fileSystem;
    std::uint64_t network;
    std::uint64_t scoped;
};
constexpr long kLandlockCreate = 444;
constexpr long kLandlockRestrict = 446;
constexpr std::uint32_t kLandlockVersion = 1;

bool enterLandlock()
{
    const auto version = ::syscall(kLandlockCreate, nullptr, 0, kLandlockVersion);
    if (version < 1)
        return false;
    // Rights by version: 13 at first, then refer (2), truncate (3), device ioctl (5).
    unsigned rights = 13;
    rights += version >= 2 ? 1 : 0;
    rights += version >= 3 ? 1 : 0;
    rights += version >= 5 ? 1 : 0;
    LandlockRules rules{};
    rules.fileSystem = (std::uint64_t{1} << rights) - 1;
    rules.network = version >= 4 ? 3 : 0; // bind and connect
    rules.scoped = version >= 6 ? 3 : 0; // abstract sockets and signals
    const std::size_t size = version >= 6 ? 24 : version >= 4 ? 16 : 8;
    const auto fd = static_cast<int>(::syscall(kLandlockCreate, &rules, size, 0));
    if (fd < 0)
        return false;
    const bool restricted = ::syscall(kLandlockRestrict, fd, 0) == 0;
    ::close(fd);
    return restricted;
}

// Written by make_filter.cpp.
constexpr auto kFilter = std::to_array<sock_filter>({
#include "system_call_filter.inc"
});

bool filterSystemCalls()
{
    if (kUnderSanitizer)
        return false;
    auto steps = kFilter;
    const sock_fprog filter{static_cast<unsigned short>(steps.size()), steps.data()};
    return ::syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, 0, &filter) == 0;
}

}

std::uint32_t confineThisProcess(int lastDescriptor, std::uint64_t dictionary)
{
    std::uint32_t steps = 0;
    const auto note = [&steps](ConfinementStep step, bool holds) { steps |= holds ? std::uint32_t{step} : 0U; };
    note(kDescriptors, closeDescriptors(lastDescriptor));
    note(kResourceLimits, setLimits(dictionary));
    note(kNoNewPrivileges, ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0);
    note(kLandlock, enterLandlock());
    note(kSystemCalls, filterSystemCalls());
    return steps;
}

std::string missingSteps(std::uint32_t steps)
{
    struct Name {
        ConfinementStep step;
        const char* text;
    };
    constexpr auto kNames = std::to_array<Name>({{kDescriptors, "descriptors not closed"},
                                                 {kResourceLimits, "no resource limits"},
                                                 {kNoNewPrivileges, "privileges not fixed"},
                                                 {kLandlock, "no Landlock"},
                                                 {kSystemCalls, "no system-call filter"}});
    std::string text;
    for (const auto& name : kNames) {
        if ((steps & name.step) == 0)
            text += (text.empty() ? "" : ", ") + std::string(name.text);
    }
    return text;
}

}
