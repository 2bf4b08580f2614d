#include "engine/extract/pipe.h"

#include <algorithm>
#include <cstring>
#include <system_error>

namespace vantoro {

namespace {
constexpr std::size_t kWorthWaking = 128 << 10; ///< bytes to hand over to a writer that has nothing to do
constexpr std::size_t kStepsWorthWaking = 64;
constexpr std::size_t kMostTogether = 128 << 10; ///< of small files: the last of them are waited for
constexpr std::size_t kSmallRoom = 64 << 10; ///< less than this is not offered to a decoder
}

std::unique_ptr<Pipe> Pipe::start(EntrySink& sink)
{
    std::unique_ptr<Pipe> pipe(new Pipe(sink));
    try {
        pipe->m_writer = std::thread([raw = pipe.get()] { raw->work(); });
    } catch (const std::system_error&) {
        return nullptr;
    }
    return pipe;
}

Pipe::~Pipe()
{
    if (!m_writer.joinable())
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
        m_filled.notify_one();
    }
    m_writer.join();
}

void Pipe::work()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        m_isIdle.store(m_full.empty(), std::memory_order_relaxed);
        m_filled.wait(lock, [this] { return !m_full.empty() || m_isEnding; });
        if (m_full.empty())
            return;
        auto block = std::move(m_full.front());
        m_full.pop_front();
        m_isBehind.store(!m_full.empty(), std::memory_order_relaxed);
        m_isWorking = true;
        m_isIdle.store(false, std::memory_order_relaxed);
        const bool hasFailed = !m_failure || m_isEnding;
        lock.unlock();
        const auto done = hasFailed ? Result<void>() : guarded([&] { return perform(*block); });
        block->used = 0;
        block->steps.clear();
        block->planCount = 0;
        lock.lock();
        if (!done && m_failure)
            m_failure = done;
        m_isWorking = false;
        m_free.push_back(std::move(block));
        m_emptied.notify_one();
    }
}

Result<void> Pipe::perform(Block& block)
{
    std::size_t at = 0;
    auto* plan = block.plans.data();
    for (auto& step : block.steps) {
        switch (step.kind) {
        case Step::Kind::Begin:
            TRY(m_sink.begin(std::move(*plan++)));
            break;
        case Step::Kind::Data:
            TRY(m_sink.data({block.memory.get() + at, static_cast<std::size_t>(step.length)}));
            at += static_cast<std::size_t>(step.length);
            break;
        case Step::Kind::Hole:
            TRY(m_sink.hole(step.length));
            break;
        case Step::Kind::End:
            TRY(m_sink.end(step.outcome));
            break;
        }
    }
    return {};
}

Pipe::Block& Pipe::current()
{
    if (m_current)
        return *m_current;
    std::unique_lock lock(m_mutex);
    if (m_free.empty() && m_made < kBlocks) {
        ++m_made;
        m_current = std::make_unique<Block>();
        m_current->memory.reset(new std::byte[kBlockSize]); // not cleared: it will be written before it is read
        return *m_current;
    }
    m_emptied.wait(lock, [this] { return !m_free.empty(); });
    m_current = std::move(m_free.back()); // the one used last is still in the cache
    m_free.pop_back();
    return *m_current;
}

Result<void> Pipe::flush()
{
    std::unique_lock lock(m_mutex);
    if (!m_current)
        return m_failure;
    m_full.push_back(std::move(m_current));
    m_isBehind.store(true, std::memory_order_relaxed);
    m_isIdle.store(false, std::memory_order_relaxed);
    const auto failure = m_failure;
    lock.unlock(); // or the writer would wake up to wait for it
    m_filled.notify_one();
    return failure;
}

Result<void> Pipe::flushIfWriterIdles()
{
    const bool isWorth = m_current && (m_current->used >= kWorthWaking || m_current->steps.size() >= kStepsWorthWaking);
    if (isWorth && m_isIdle.load(std::memory_order_relaxed))
        return flush();
    return {};
}

Result<void> Pipe::add(Step step)
{
    if (m_current && m_current->steps.size() >= kMostSteps)
        TRY(flush());
    current().steps.push_back(step);
    return {};
}

Result<void> Pipe::begin(FilePlan&& plan)
{
    TRY(add({Step::Kind::Begin, 0, {}}));
    auto& block = current();
    if (block.planCount == block.plans.size())
        block.plans.emplace_back();
    // What the old plan owned goes back to the thread that made it: freed elsewhere, the two would wait for each other.
    std::swap(block.plans[block.planCount++], plan);
    return {};
}

Bytes Pipe::room(std::size_t least)
{
    if (m_current && kBlockSize - m_current->used < std::max(least, kSmallRoom))
        (void)flush(); // the next data() tells
    auto& block = current();
    return {block.memory.get() + block.used, kBlockSize - block.used};
}

Result<void> Pipe::data(ConstBytes block)
{
    while (!block.empty()) {
        if (m_current && m_current->used == kBlockSize)
            TRY(flush());
        auto& into = current();
        const auto part = std::min(block.size(), kBlockSize - into.used);
        auto* const place = into.memory.get() + into.used;
        if (place != block.data())
            std::memcpy(place, block.data(), part);
        into.used += part;
        if (!into.steps.empty() && into.steps.back().kind == Step::Kind::Data)
            into.steps.back().length += part;
        else
            into.steps.push_back({Step::Kind::Data, part, {}});
        block = block.subspan(part);
    }
    return flushIfWriterIdles();
}

Result<void> Pipe::hole(std::uint64_t length) { return add({Step::Kind::Hole, length, {}}); }

Result<void> Pipe::end(const Result<void>& outcome)
{
    TRY(add({Step::Kind::End, 0, outcome}));
    return m_current && m_current->used >= kMostTogether ? flush() : flushIfWriterIdles();
}

Result<void> Pipe::drain()
{
    TRY(flush());
    std::unique_lock lock(m_mutex);
    m_emptied.wait(lock, [this] { return m_full.empty() && !m_isWorking; });
    return m_failure;
}

}
