#include "engine/cage/worker_process.h"

#include "engine/cage/confinement.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <map>
#include <mutex>
#include <vector>

#include <fcntl.h>
#include <linux/limits.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vantoro::cage {

namespace {

// Words for Libraries on the command line.
constexpr std::array<const char*, 4> kLibraryOptions{"least", "few", "7z", "all"};
constexpr int kStartLimit = 10'000; // milliseconds

/// dup2 onto the same number would keep close-on-exec: moved out of the way first.
Result<Descriptor> awayFromTargets(int fd)
{
    Descriptor moved(::fcntl(fd, F_DUPFD_CLOEXEC, 10));
    if (moved.get() < 0)
        return Error{ErrorCode::Internal, "cage: duplicating a descriptor", errno};
    return moved;
}

/// What to execute for the program at a path: the file that was there when it was first asked for. An update puts
/// another in its place, which need not understand us.
std::string heldProgram(const std::string& path)
{
    static std::mutex mutex;
    static std::map<std::string, Descriptor> held;
    const std::lock_guard lock(mutex);
    const auto [program, isNew] = held.try_emplace(path);
    if (isNew) {
        const Descriptor file(::open(path.c_str(), O_PATH | O_CLOEXEC));
        if (auto moved = awayFromTargets(file.get()))
            program->second = *std::move(moved);
    }
    auto link = "/proc/self/fd/" + std::to_string(program->second.get());
    return ::access(link.c_str(), X_OK) == 0 ? link : path;
}

/// Of the running program, with a slash at its end; empty when it cannot be told.
std::string programFolder()
{
    std::array<char, PATH_MAX> path{};
    const auto length = ::readlink("/proc/self/exe", path.data(), path.size() - 1);
    if (length <= 0)
        return {};
    const std::string program(path.data(), static_cast<std::size_t>(length));
    return program.substr(0, program.rfind('/') + 1);
}

/// What the worker gets as environment: nothing of ours but where to find 7-Zip's library.
std::vector<std::string> workerEnvironment()
{
    std::vector<std::string> result{"LC_CTYPE=C.UTF-8", "PATH=/usr/bin:/bin"};
    for (const char* name : {"VANTORO_7Z_LIBRARY", "TZ", "ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS"}) {
        if (const char* value = std::getenv(name))
            result.push_back(std::string(name) + "=" + value);
    }
    return result;
}

struct SpawnActions {
    SpawnActions()
    {
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawnattr_init(&attributes);
    }
    ~SpawnActions()
    {
        ::posix_spawn_file_actions_destroy(&actions);
        ::posix_spawnattr_destroy(&attributes);
    }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
};

Result<pid_t> spawn(const std::string& program, const WorkerNeeds& needs, int socket, int memory)
{
    SpawnActions spawn;
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::posix_spawn_file_actions_addopen(&spawn.actions, fd, "/dev/null", O_RDWR, 0);
    ::posix_spawn_file_actions_adddup2(&spawn.actions, socket, kWorkerSocket);
    ::posix_spawn_file_actions_adddup2(&spawn.actions, memory, kWorkerMemory);
    // A process group of its own, so that Ctrl-C on the terminal reaches the parent alone, which then stops us.
    ::posix_spawnattr_setpgroup(&spawn.attributes, 0);
    sigset_t signals;
    ::sigemptyset(&signals);
    ::posix_spawnattr_setsigmask(&spawn.attributes, &signals);
    ::sigfillset(&signals);
    ::posix_spawnattr_setsigdefault(&spawn.attributes, &signals); // none of ours is asked for one by one
    ::posix_spawnattr_setflags(&spawn.attributes,
                               POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    auto environment = workerEnvironment();
    std::vector<char*> pointers;
    pointers.reserve(environment.size() + 1);
    for (auto& text : environment)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    std::string name = "vantoro-worker";
    auto dictionary = std::to_string(needs.dictionary);
    std::string libraries = kLibraryOptions[static_cast<std::size_t>(needs.libraries)];
    std::array<char*, 4> arguments{name.data(), dictionary.data(), libraries.data(), nullptr};
    pid_t pid = -1;
    const int reason = ::posix_spawn(&pid, heldProgram(program).c_str(), &spawn.actions, &spawn.attributes,
                                     arguments.data(), pointers.data());
    if (reason != 0)
        return Error{ErrorCode::Internal, "cage: starting the worker", reason};
    return pid;
}

/// Until the worker is confined; by which means.
Result<std::uint32_t> awaitReady(const Channel& channel)
{
    constexpr Error kOther{ErrorCode::ProgramReplaced, "cage: the worker is of another build"};
    const auto ready = channel.receive(kStartLimit, 0);
    if (!ready)
        return ready.error().code == ErrorCode::Corrupt ? kOther : ready.error();
    if (!*ready || (*ready)->message.type != MessageType::Ready)
        return Error{ErrorCode::DecoderStopped, "cage: the worker did not start"};
    if ((*ready)->message.values != std::vector{buildMark()})
        return kOther;
    return static_cast<std::uint32_t>((*ready)->message.number);
}

/// Killed workers that are waited for at the end of the program: taking a process apart costs as much as listing a
/// small archive, and what is left to do can be done meanwhile.
class Departed {
public:
    static Departed& instance()
    {
        static Departed departed;
        return departed;
    }
    ~Departed()
    {
        for (const auto pid : m_pids)
            while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {}
    }
    void accept() { m_isAccepting = true; }
    /// False when the process has to be waited for.
    bool take(pid_t pid)
    {
        if (!m_isAccepting)
            return false;
        const std::lock_guard lock(m_mutex);
        m_pids.push_back(pid);
        return true;
    }
    void collect()
    {
        const std::lock_guard lock(m_mutex);
        std::erase_if(m_pids, [](pid_t pid) { return ::waitpid(pid, nullptr, WNOHANG) != 0; });
    }

private:
    std::atomic<bool> m_isAccepting{false};
    std::mutex m_mutex;
    std::vector<pid_t> m_pids;
};

/// In the build tree; in an installation, wherever that was moved to; where it was to be installed.
std::string findWorkerProgram()
{
    const auto here = programFolder();
    for (const auto& folder : {here, here + VANTORO_LIBEXEC_FROM_BIN "/", std::string(VANTORO_LIBEXEC_DIR "/")}) {
        auto candidate = folder + "vantoro-worker";
        if (folder.starts_with('/') && ::access(candidate.c_str(), X_OK) == 0)
            return candidate;
    }
    return {};
}

}

std::string workerProgram()
{
    const char* wish = std::getenv("VANTORO_CAGE");
    if (wish && std::string_view(wish) == "off")
        return {};
    if (const char* program = std::getenv("VANTORO_WORKER"))
        return program;
    static const auto found = findWorkerProgram(); // what was there once is held
    return found;
}

void holdWorkerProgram()
{
    if (const auto program = workerProgram(); !program.empty())
        heldProgram(program);
}

void leaveWorkersBehind() { Departed::instance().accept(); }

WorkerNeeds workerNeeds(int argc, char** argv)
{
    WorkerNeeds needs;
    if (argc > 1)
        std::from_chars(argv[1], argv[1] + std::strlen(argv[1]), needs.dictionary);
    for (const auto libraries : {Libraries::Least, Libraries::Few, Libraries::SevenZip}) {
        if (argc > 2 && std::strcmp(argv[2], kLibraryOptions[static_cast<std::size_t>(libraries)]) == 0)
            needs.libraries = libraries;
    }
    return needs;
}

Result<std::unique_ptr<WorkerProcess>> WorkerProcess::start(const std::string& program, unsigned lanes,
                                                            const WorkerNeeds& needs)
{
    Departed::instance().collect();
    auto area = TRY(SharedArea::create(lanes));
    auto ends = TRY(Channel::makePair());
    auto socket = TRY(awayFromTargets(ends.second.get()));
    const auto memory = TRY(awayFromTargets(area.fd()));
    const auto pid = TRY(spawn(program, needs, socket.get(), memory.get()));
    std::unique_ptr<WorkerProcess> process(new WorkerProcess(pid, Channel(std::move(ends.first)), std::move(area)));
    socket = Descriptor(); // or we would never see the worker's end close
    ends.second = Descriptor();
    return process;
}

Result<void> WorkerProcess::awaitConfined()
{
    const auto steps = awaitReady(m_channel);
    if (!steps) {
        kill();
        return steps.error();
    }
    m_confinement = *steps;
    return {};
}

WorkerProcess::~WorkerProcess() { kill(); }

void WorkerProcess::handedOver(std::size_t descriptors)
{
    constexpr std::size_t kNear = 24; // beside its own and one more hand-over below the first limit
    const bool wasFar = m_handedOver < kNear;
    m_handedOver += descriptors;
    if (wasFar && m_handedOver >= kNear) {
        const rlimit more{kMostDescriptors, kMostDescriptors};
        ::prlimit(m_pid, RLIMIT_NOFILE, &more, nullptr);
    }
}

bool WorkerProcess::isAlive()
{
    if (m_isReaped)
        return false;
    int status = 0;
    if (::waitpid(m_pid, &status, WNOHANG) == 0)
        return true;
    m_isReaped = true;
    return false;
}

void WorkerProcess::kill()
{
    if (m_isReaped)
        return;
    ::kill(m_pid, SIGKILL);
    int status = 0;
    if (!Departed::instance().take(m_pid))
        while (::waitpid(m_pid, &status, 0) < 0 && errno == EINTR) {}
    m_isReaped = true;
}

double WorkerProcess::cpuSeconds() const
{
    clockid_t clock{};
    timespec used{};
    if (m_isReaped || ::clock_getcpuclockid(m_pid, &clock) != 0 || ::clock_gettime(clock, &used) != 0)
        return 0;
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

}
