// A worker whose decoder has been taken over: the archive's text says what it does. Confined exactly as the real one.
#include "engine/cage/confinement.h"
#include "engine/cage/shared_area.h"
#include "engine/cage/worker.h"
#include "engine/cage/worker_process.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <netinet/in.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

using namespace vantoro;

// How many control messages may still cross before this process is killed; negative: all.
std::atomic<int> messagesLeft{-1};

void countMessage()
{
    if (messagesLeft == 0)
        __builtin_trap(); // the cage lets nobody send a signal
    if (messagesLeft > 0)
        --messagesLeft;
}

bool tryToReach(const std::string& what)
{
    if (what == "open")
        return ::open("/etc/passwd", O_RDONLY) >= 0;
    if (what == "create")
        return ::open("/tmp/vantoro-escaped", O_WRONLY | O_CREAT, 0600) >= 0;
    if (what == "mkdir")
        return ::mkdir("/tmp/vantoro-escaped", 0700) == 0;
    if (what == "connect") {
        const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        return ::connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    }
    if (what == "execute")
        return ::execl("/bin/true", "true", nullptr) == 0;
    if (what == "fork")
        return ::fork() >= 0;
    if (what == "signal")
        return ::kill(::getppid(), SIGTERM) == 0;
    if (what == "trace")
        return ::ptrace(PTRACE_ATTACH, ::getppid(), nullptr, nullptr) == 0;
    if (what == "code")
        return ::mmap(nullptr, 4096, PROT_READ | PROT_WRITE | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)
            != MAP_FAILED;
    return ::unlink("/tmp/vantoro-canary") == 0; // "remove"
}

Entry fileEntry(std::uint64_t index, std::string_view name, std::uint64_t size)
{
    Entry entry;
    entry.index = index;
    entry.name = name;
    entry.size = size;
    return entry;
}

class HostileArchive final : public Archive {
public:
    HostileArchive(std::string script, const OpenContext& context) : m_script(std::move(script)), m_context(context)
    {
        m_info.format = "hostile";
    }
    const ArchiveInfo& info() const override { return m_info; }

    Result<void> list(EntryVisitor& visitor) override
    {
        TRY(visitor.visit(fileEntry(0, "first", 5)));
        if (m_script == "gap in listing")
            return visitor.visit(fileEntry(7, "eighth", 5));
        if (m_script == "crash in list")
            std::abort();
        return visitor.visit(fileEntry(1, "second", 5));
    }

    Result<void> read(const ReadRequest&, Lanes& lanes) override
    {
        auto& lane = lanes.lane(0);
        TRY(deliver(lane, 0, "first"));
        if (m_script == "ask for a volume")
            return askForVolumes(lane);
        if (m_script == "ask for a password")
            return askForPassword(lane);
        TRY(lane.begin(fileEntry(1, "second", 5)));
        misbehave(lane);
        TRY(lane.data(asBytes("hello")));
        TRY(lane.end({}));
        return {};
    }

private:
    static Result<void> deliver(LaneReceiver& lane, std::uint64_t index, std::string_view name)
    {
        TRY(lane.begin(fileEntry(index, name, 5)));
        TRY(lane.data(asBytes("hello")));
        return lane.end({});
    }

    Result<void> askForVolumes(LaneReceiver& lane)
    {
        const auto inside = m_context.volumes->openVolume("part2");
        const auto outside = m_context.volumes->openVolume("../../etc/passwd");
        const auto content = inside ? readBlock(**inside, 0, 100) : Result<std::vector<std::byte>>(inside.error());
        const auto text = std::string(content ? asText(*content) : "none") + (outside ? " leaked" : " refused");
        TRY(lane.begin(fileEntry(1, "second", text.size())));
        TRY(lane.data(asBytes(text)));
        return lane.end({});
    }

    Result<void> askForPassword(LaneReceiver& lane)
    {
        unsigned attempt = 0;
        auto secret = TRY(m_context.passwords->password(attempt));
        while (secret.text() != "right")
            secret = TRY(m_context.passwords->password(++attempt));
        return deliver(lane, 1, "second");
    }

    void misbehave(LaneReceiver& lane)
    {
        if (m_script.starts_with("reach ")) {
            if (tryToReach(m_script.substr(6)))
                (void)lane.data(asBytes("ESCAPED"));
            std::_Exit(7); // refused without being killed: ends like a crash
        } else if (m_script == "crash") {
            std::raise(SIGSEGV);
            std::abort();
        } else if (m_script == "loop") {
            std::atomic<unsigned> rounds{0};
            for (;;)
                rounds.fetch_add(1);
        } else if (m_script == "flood") {
            const std::vector<std::byte> block(1 << 16);
            while (lane.data(block)) {}
            std::_Exit(0);
        } else if (m_script == "allocate") {
            for (;;) {
                auto* block = static_cast<char*>(std::malloc(64 << 20));
                if (!block)
                    std::abort();
                for (std::size_t i = 0; i < (64U << 20); i += 4096)
                    block[i] = 1;
            }
        } else if (m_script == "garbage on the socket") {
            iovec part{const_cast<char*>("nonsense"), 8};
            msghdr header{};
            header.msg_iov = &part;
            header.msg_iovlen = 1;
            ::sendmsg(cage::kWorkerSocket, &header, 0);
            ::pause();
        } else if (m_script.starts_with("lie ")) {
            lie(m_script.substr(4));
        }
    }

    static void lie(const std::string& about)
    {
        const auto area = cage::SharedArea::attach(cage::kWorkerMemory);
        auto& ring = area->ring(0);
        if (about == "head far ahead") {
            ring.head.store(ring.head.load() + (std::uint64_t{1} << 40));
        } else {
            const auto head = ring.head.load();
            const cage::RecordHeader header{about == "type" ? 99U : 3U, about == "length" ? 0x7FFFFFFFU : 8U};
            std::memcpy(area->ringBytes(0) + head % cage::kRingCapacity, &header, sizeof header);
            ring.head.store(head + (about == "odd head" ? 3 : 16));
        }
        ring.headSignal.fetch_add(1);
        cage::wake(ring.headSignal);
        for (;;)
            ::sched_yield();
    }

    std::string m_script;
    OpenContext m_context;
    ArchiveInfo m_info;
};

Result<ArchivePtr> openHostile(const SourcePtr& source, const OpenContext& context)
{
    const auto block = TRY(readBlock(*source, 0, 1000));
    std::string script(asText(block));
    script.resize(std::min(script.size(), script.find('\0'))); // what follows makes the archive large
    if (script.starts_with("die after ")) {
        int left = 0;
        std::from_chars(script.data() + 10, script.data() + script.size(), left);
        messagesLeft = left;
        script.erase(0, script.find(": ") + 2);
        countMessage(); // the request to open
    }
    if (script == "crash in open")
        std::abort();
    if (script == "refuse")
        return Error{ErrorCode::NotAnArchive, "hostile"};
    return ArchivePtr(std::make_unique<HostileArchive>(script, context));
}

}

// In the place of the C library's: the sockets carry nothing but control messages.
extern "C" ssize_t sendmsg(int socket, const msghdr* message, int flags)
{
    countMessage();
    return ::syscall(SYS_sendmsg, socket, message, flags);
}

extern "C" ssize_t recvmsg(int socket, msghdr* message, int flags)
{
    const auto length = ::syscall(SYS_recvmsg, socket, message, flags);
    if (length > 0)
        countMessage();
    return length;
}

int main()
{
    if (const char* zone = std::getenv("TZ"); zone && std::string_view(zone) == "dead")
        __builtin_trap(); // the cage lets nobody send a signal
    if (const char* zone = std::getenv("TZ"); zone && std::string_view(zone) == "another build") {
        const cage::Channel channel{cage::Descriptor(cage::kWorkerSocket)};
        cage::Message ready;
        ready.type = cage::MessageType::Ready;
        ready.values = {cage::buildMark() + 1};
        (void)channel.send(ready);
        return 0;
    }
    // Without confinement the same behaviour must succeed, or the tests would prove nothing: see cage_test.
    const bool isFree = std::getenv("TZ") != nullptr;
    const auto steps = isFree ? 0 : vantoro::cage::confineThisProcess(vantoro::cage::kWorkerMemory);
    return vantoro::cage::serve(&openHostile, steps);
}
