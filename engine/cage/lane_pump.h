#pragma once

#include "engine/cage/ring.h"

#include <functional>
#include <thread>

namespace vantoro::cage {

/// Takes one ring's records on a thread of its own, checks them, and hands them on.
class LanePump {
public:
    LanePump(RingReader& ring, const Limits& limits) : m_ring(ring), m_limits(limits) {}
    LanePump(const LanePump&) = delete;
    LanePump& operator=(const LanePump&) = delete;
    virtual ~LanePump() = default;

    void start();
    /// Nothing more will come. Takes what is there now where it was not started. Without a fault takes what is still in
    /// the ring; ends an entry that is open with the fault. Returns what stopped the receiver, or the worker's lie.
    Result<void> finish(const std::optional<Error>& fault);

    bool isBroken() const { return m_isBroken.load(std::memory_order_relaxed); }
    std::uint64_t progress() const { return m_progress.load(std::memory_order_relaxed); }
    const std::optional<ArchiveInfo>& info() const { return m_info; }

protected:
    /// Ends the thread where finish() did not. The destructors of what derives call it: the thread calls them.
    void abandon();
    virtual Result<void> take(const RingReader::Record& record) = 0;
    virtual Result<void> breakOff(const Error&) { return {}; }
    static std::vector<std::byte> privateCopy(ConstBytes shared) { return {shared.begin(), shared.end()}; }
    const Limits& limits() const { return m_limits; }
    RingReader& ring() { return m_ring; }

private:
    void run();
    Result<bool> step();

    RingReader& m_ring;
    const Limits& m_limits;
    std::thread m_thread;
    std::atomic<bool> m_isClosing{false};
    std::atomic<bool> m_isAbandoned{false};
    std::atomic<bool> m_isBroken{false};
    std::atomic<std::uint64_t> m_progress{0};
    Result<void> m_result;
    std::optional<ArchiveInfo> m_info;
};

/// Hands a listing to a visitor.
class ListPump final : public LanePump {
public:
    ListPump(RingReader& ring, EntryVisitor& visitor, const Limits& limits) : LanePump(ring, limits), m_visitor(visitor)
    {
    }
    ~ListPump() override { abandon(); }

private:
    Result<void> take(const RingReader::Record& record) override;
    EntryVisitor& m_visitor;
    EntryParser m_parser;
    std::uint64_t m_next = 0;
};

/// Hands entries and their data to a receiver.
class DataPump final : public LanePump {
public:
    DataPump(RingReader& ring, LaneReceiver& receiver, const ReadRequest& request, const Limits& limits)
        : LanePump(ring, limits)
        , m_receiver(receiver)
        , m_request(request)
    {
    }
    ~DataPump() override { abandon(); }

private:
    Result<void> take(const RingReader::Record& record) override;
    Result<void> breakOff(const Error& fault) override;
    Result<void> begin(ConstBytes payload);
    Result<void> data(std::uint64_t length, const std::function<Result<void>()>& handOn);
    Result<void> end(ConstBytes payload);

    enum class State : std::uint8_t { Idle, Open, Dropped, Skipped };
    LaneReceiver& m_receiver;
    const ReadRequest& m_request;
    EntryParser m_parser;
    State m_state = State::Idle;
    Error m_dropReason;
    std::uint64_t m_number = 0;
    std::uint64_t m_got = 0;
    std::optional<std::uint64_t> m_declared;
};

/// All rings of a request.
class Pump {
public:
    void add(std::unique_ptr<LanePump> lane) { m_lanes.push_back(std::move(lane)); }
    void start();
    bool isStarted() const { return m_isStarted; }
    Result<void> finish(const std::optional<Error>& fault);
    bool isBroken() const;
    std::uint64_t progress() const;
    /// What came at the end of ring 0.
    const std::optional<ArchiveInfo>& info() const { return m_lanes.front()->info(); }

private:
    std::vector<std::unique_ptr<LanePump>> m_lanes;
    bool m_isStarted = false;
};

}
