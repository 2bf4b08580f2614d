#pragma once

#include "engine/cage/channel.h"
#include "engine/cage/shared_area.h"
#include "engine/io/cancel.h"

#include <array>

#include <sys/types.h>

namespace vantoro::cage {

/// Descriptors of a worker process at its start.
constexpr int kWorkerSocket = 3;
constexpr int kWorkerMemory = 4;

/// What a worker loads before it is confined; nothing can be added later. The large libraries take twice as long to
/// start as all the rest.
enum class Libraries : std::uint8_t {
    Least, ///< enough for what our own code reads of rar
    Few, ///< enough for what our own code reads: zip, rar, tar, compressed streams; no ciphers
    SevenZip, ///< 7-Zip's plug-in as well
    All,
};

/// What a worker is started with; crosses on its command line.
struct WorkerNeeds {
    std::uint64_t dictionary = Limits{}.dictionary; ///< bytes of history that its decoders may hold
    Libraries libraries = Libraries::All;
};

/// Path of the worker program: VANTORO_WORKER, else "vantoro-worker" beside this program, else in the
/// installation that this program belongs to, else where it was to be installed. Empty when there is none, or when
/// VANTORO_CAGE=off.
std::string workerProgram();

/// Has workers run the program that is there now, whatever an update puts in its place later.
void holdWorkerProgram();

/// For a program that ends with its last archive: from now on a killed worker is not waited for at once, but when the
/// next one starts or the program ends.
void leaveWorkersBehind();

/// What the worker's command line says; the usual where it says nothing.
WorkerNeeds workerNeeds(int argc, char** argv);

/// A running worker. Killed when it goes.
class WorkerProcess {
public:
    /// Starts `program`. Messages may be sent at once: it reads none before it is confined.
    static Result<std::unique_ptr<WorkerProcess>> start(const std::string& program, unsigned lanes,
                                                        const WorkerNeeds& needs = {});
    /// Waits until it is confined. What was sent to a worker that turns out to be of another build comes to nothing.
    Result<void> awaitConfined();
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;
    ~WorkerProcess();

    const Channel& channel() const { return m_channel; }
    SharedArea& area() { return m_area; }
    /// The steps that it took, once it is confined.
    std::uint32_t confinement() const { return m_confinement; }
    /// Descriptors have been sent to it: its limit, low at the start, is raised when a set of volumes comes near it.
    void handedOver(std::size_t descriptors);
    bool isAlive();
    void kill();
    /// Seconds of processor time that it has used so far.
    double cpuSeconds() const;

private:
    WorkerProcess(pid_t pid, Channel channel, SharedArea area)
        : m_pid(pid)
        , m_channel(std::move(channel))
        , m_area(std::move(area))
    {
    }
    pid_t m_pid;
    bool m_isReaped = false;
    std::size_t m_handedOver = 0;
    std::uint32_t m_confinement = 0;
    Channel m_channel;
    SharedArea m_area;
};

}
