// Run by the build: writes the filter of system calls as a table for the kernel. Making it takes the library longer
// than a worker needs for a small archive.
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>

#include <linux/filter.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <unistd.h>

#ifdef __clang__
#pragma clang diagnostic ignored "-Wc99-extensions" // in the macros of libseccomp
#endif

namespace {

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

/// The filter as the library hands it out: through a file.
bool writeTable(scmp_filter_ctx filter, std::FILE* out)
{
    std::FILE* const raw = std::tmpfile();
    if (!raw || seccomp_export_bpf(filter, ::fileno(raw)) != 0)
        return false;
    std::rewind(raw);
    sock_filter step{};
    while (std::fread(&step, sizeof step, 1, raw) == 1)
        std::fprintf(out, "{%u, %u, %u, %uU},\n", step.code, step.jt, step.jf, step.k);
    const bool isWhole = std::feof(raw) != 0;
    std::fclose(raw);
    return isWhole;
}

}

int main(int argc, char** argv)
{
    seccomp_api_set(3); // what the kernel knows that the worker will meet, whatever this one does
    const auto filter = seccomp_init(SCMP_ACT_KILL_PROCESS);
    // As a tree, in which the kernel finds each call in half the time when it takes the filter over.
    const bool isTree = filter && seccomp_attr_set(filter, SCMP_FLTATR_CTL_OPTIMIZE, 2) == 0;
    std::FILE* const out = argc == 2 ? std::fopen(argv[1], "w") : nullptr;
    const bool isMade = isTree && out && addRules(filter) && writeTable(filter, out);
    seccomp_release(filter);
    return isMade && std::fclose(out) == 0 ? 0 : 1;
}
