#include "engine/cage/confinement.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/mman.h>
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

#ifdef __clang__
#pragma clang diagnostic ignored "-Wc99-extensions" // in the macros of libseccomp
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

/// Calls allowed whatever their arguments.
constexpr auto kAllowed = std::to_array<int>({
    SCMP_SYS(read),
    SCMP_SYS(pread64),
    SCMP_SYS(readv),
    SCMP_SYS(preadv),
    SCMP_SYS(lseek),
    SCMP_SYS(close),
    SCMP_SYS(sendmsg),
    SCMP_SYS(recvmsg),
    SCMP_SYS(poll),
    SCMP_SYS(ppoll),
    SCMP_SYS(munmap),
    SCMP_SYS(mremap),
    SCMP_SYS(brk),
    SCMP_SYS(madvise),
    SCMP_SYS(mlock),
    SCMP_SYS(munlock),
    SCMP_SYS(futex),
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
    SCMP_SYS(clock_gettime),
    SCMP_SYS(clock_nanosleep),
    SCMP_SYS(nanosleep),
    SCMP_SYS(gettimeofday),
    SCMP_SYS(time),
    SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigreturn),
    SCMP_SYS(sigaltstack),
    SCMP_SYS(getrandom),
    SCMP_SYS(sched_yield),
    SCMP_SYS(sched_getaffinity),
    SCMP_SYS(set_robust_list),
    SCMP_SYS(rseq),
    SCMP_SYS(gettid),
    SCMP_SYS(getpid),
    SCMP_SYS(sysinfo),
    SCMP_SYS(restart_syscall),
    SCMP_SYS(membarrier),
    SCMP_SYS(fadvise64),
});
/// Look-ups that libraries make in passing and can do without; they get an error instead of the end.
constexpr auto kRefusedSoftly = std::to_array<int>({
    SCMP_SYS(openat),
    SCMP_SYS(open),
    SCMP_SYS(access),
    SCMP_SYS(faccessat),
    SCMP_SYS(readlink),
    SCMP_SYS(ioctl),
    SCMP_SYS(stat),
    SCMP_SYS(lstat),
    SCMP_SYS(newfstatat),
    SCMP_SYS(fstat),
    SCMP_SYS(statx),
    SCMP_SYS(write),
    SCMP_SYS(writev),
    SCMP_SYS(getrlimit),
    SCMP_SYS(prlimit64),
    SCMP_SYS(uname),
    SCMP_SYS(sched_setaffinity),
    SCMP_SYS(sched_getparam),
    SCMP_SYS(sched_getscheduler),
    SCMP_SYS(tgkill),
    SCMP_SYS(fcntl),
    SCMP_SYS(flock),
});

bool addRules(scmp_filter_ctx filter)
{
    bool ok = true;
    for (const int call : kAllowed)
        ok = seccomp_rule_add(filter, SCMP_ACT_ALLOW, call, 0) == 0 && ok;
    for (const int call : kRefusedSoftly)
        ok = seccomp_rule_add(filter, SCMP_ACT_ERRNO(EACCES), call, 0) == 0 && ok;
    // Memory that can be executed is never made.
    for (const int call : {SCMP_SYS(mmap), SCMP_SYS(mprotect)})
        ok = seccomp_rule_add(filter, SCMP_ACT_ALLOW, call, 1, SCMP_A2_64(SCMP_CMP_MASKED_EQ, PROT_EXEC, 0)) == 0 && ok;
    // Threads yes, processes no. clone3 hides its flags in memory: glibc falls back to clone.
    constexpr std::uint64_t kThread = CLONE_VM | CLONE_THREAD | CLONE_SIGHAND;
    ok = seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(clone), 1, SCMP_A0_64(SCMP_CMP_MASKED_EQ, kThread, kThread))
            == 0
        && ok;
    ok = seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0) == 0 && ok;
    for (const auto option : std::to_array<std::uint64_t>({PR_SET_DUMPABLE, PR_SET_NAME, PR_SET_VMA}))
        ok = seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(prctl), 1, SCMP_A0_64(SCMP_CMP_EQ, option)) == 0 && ok;
    return ok;
}

bool filterSystemCalls()
{
    if (kUnderSanitizer)
        return false;
    const auto filter = seccomp_init(SCMP_ACT_KILL_PROCESS);
    if (!filter)
        return false;
    const bool loaded = addRules(filter) && seccomp_load(filter) == 0;
    seccomp_release(filter);
    return loaded;
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
