#include "engine/cage/lane_pump.h"

#include "engine/io/batch_thread.h"

#include <algorithm>

namespace vantoro::cage {

namespace {

constexpr unsigned kPause = 50; // milliseconds between two looks at a silent ring
constexpr Error kLie{ErrorCode::DecoderStopped, "cage: the worker sent records that do not fit together"};

}

void LanePump::abandon()
{
    if (!m_thread.joinable())
        return;
    m_isAbandoned.store(true);
    m_ring.interrupt();
    m_thread.join();
}

void LanePump::start()
{
    m_thread = std::thread([this] {
        becomeBatchThread();
        run();
    });
}

void LanePump::run()
{
    while (!m_isAbandoned.load()) {
        const bool isLast = m_isClosing.load();
        const auto went = guarded([this] { return step(); });
        if (!went) {
            m_result = went.error().code == ErrorCode::Corrupt ? kLie : went.error();
            m_isBroken.store(true);
            return;
        }
        if (!*went && isLast)
            return;
        if (!*went)
            m_ring.wait(kPause);
    }
}

Result<bool> LanePump::step()
{
    const auto record = TRY(m_ring.next());
    if (!record)
        return false;
    if (record->type == RecordType::Info)
        m_info = TRY(parseInfo(privateCopy(record->payload)));
    else
        TRY(take(*record));
    m_ring.release();
    m_progress.store(m_ring.taken(), std::memory_order_relaxed);
    return true;
}

Result<void> LanePump::finish(const std::optional<Error>& fault)
{
    // After a stop nobody wants the rest; after a fault what is whole in the ring still counts.
    if (fault && fault->code == ErrorCode::Cancelled)
        m_isAbandoned.store(true);
    m_isClosing.store(true);
    if (m_thread.joinable()) {
        m_ring.interrupt();
        m_thread.join();
    } else {
        run();
    }
    // A receiver that failed hears nothing more; a worker that lied leaves an entry open, as one that died does.
    if (!m_result && m_result.error().code != ErrorCode::DecoderStopped)
        return m_result;
    TRY(breakOff(m_result ? fault.value_or(kLie) : m_result.error()));
    return m_result;
}

Result<void> ListPump::take(const RingReader::Record& record)
{
    if (record.type != RecordType::Entry)
        return kLie;
    TRY(m_parser.parse(record.payload, limits()));
    if (m_parser.entry().index != m_next)
        return kLie;
    ++m_next;
    return m_visitor.visit(m_parser.entry());
}

Result<void> DataPump::take(const RingReader::Record& record)
{
    const auto payload = record.payload;
    switch (record.type) {
    case RecordType::Entry:
        return begin(payload);
    case RecordType::Data:
        // File contents may change under our hands: whatever they are, they are only written.
        return data(payload.size(), [&] { return m_receiver.data(payload); });
    case RecordType::Hole: {
        std::uint64_t length = 0;
        if (payload.size() != sizeof length)
            return kLie;
        std::memcpy(&length, payload.data(), sizeof length);
        return data(length, [&] { return m_receiver.hole(length); });
    }
    case RecordType::End:
        return end(payload);
    default:
        return kLie;
    }
}

Result<void> DataPump::begin(ConstBytes payload)
{
    if (m_state != State::Idle)
        return kLie;
    TRY(m_parser.parse(payload, limits()));
    const auto& entry = m_parser.entry();
    if (!m_request.isChosen(entry.index))
        return kLie;
    ++m_number;
    m_got = 0;
    // The size of a link is that of whatever form its format stores the target in.
    m_declared = entry.kind == EntryKind::SymbolicLink ? std::nullopt : entry.size;
    const auto want = TRY(m_receiver.begin(entry));
    if (!carriesData(entry.kind))
        return want == LaneReceiver::Want::Data ? m_receiver.end({}) : Result<void>();
    m_state = want == LaneReceiver::Want::Data ? State::Open : State::Skipped;
    if (m_state == State::Skipped)
        ring().refuseEntry(m_number);
    return {};
}

Result<void> DataPump::data(std::uint64_t length, const std::function<Result<void>()>& handOn)
{
    if (m_state == State::Idle)
        return kLie;
    if (m_state != State::Open)
        return {};
    Result<void> result;
    if (m_declared && length > *m_declared - std::min(m_got, *m_declared))
        result = Error{ErrorCode::SizeMismatch, "cage: more data than declared"};
    else
        result = handOn();
    m_got += length;
    const bool isDropped
        = !result && (result.error().code == ErrorCode::EntryRefused || result.error().code == ErrorCode::SizeMismatch);
    if (!isDropped)
        return result;
    m_dropReason = result.error();
    m_state = State::Dropped;
    ring().refuseEntry(m_number);
    return {};
}

Result<void> DataPump::end(ConstBytes payload)
{
    const auto copy = privateCopy(payload);
    const auto fault = TRY(parseOutcome(copy));
    const auto state = m_state;
    m_state = State::Idle;
    if (state == State::Idle)
        return kLie;
    if (state == State::Skipped)
        return {};
    if (state == State::Dropped)
        return m_receiver.end(m_dropReason);
    if (fault)
        return m_receiver.end(*fault);
    if (m_declared && m_got != *m_declared)
        return m_receiver.end(Error{ErrorCode::SizeMismatch, "cage: fewer data than declared"});
    return m_receiver.end({});
}

Result<void> DataPump::breakOff(const Error& fault)
{
    const auto state = m_state;
    m_state = State::Idle;
    if (state == State::Open || state == State::Dropped)
        return m_receiver.end(state == State::Dropped ? m_dropReason : fault);
    return {};
}

void Pump::start()
{
    m_isStarted = true;
    for (const auto& lane : m_lanes)
        lane->start();
}

Result<void> Pump::finish(const std::optional<Error>& fault)
{
    Result<void> result;
    for (const auto& lane : m_lanes) {
        const auto finished = lane->finish(fault);
        if (result && !finished)
            result = finished;
    }
    return result;
}

bool Pump::isBroken() const
{
    return std::any_of(m_lanes.begin(), m_lanes.end(), [](const auto& lane) { return lane->isBroken(); });
}

std::uint64_t Pump::progress() const
{
    std::uint64_t sum = 0;
    for (const auto& lane : m_lanes)
        sum += lane->progress();
    return sum;
}

}
