#pragma once

#include "engine/backends/sevenzip_com.h"
#include "engine/io/cancel.h"
#include "engine/io/source.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace vantoro::sevenzip {

/// What all input streams of one archive share. The library only passes numbers on: why reading failed is kept here.
class InputState {
public:
    explicit InputState(CancelToken cancel) : m_cancel(std::move(cancel)) {}
    const CancelToken& cancel() const { return m_cancel; }
    /// Counts the packed bytes that are read from now on; null stops counting.
    void countInto(std::atomic<std::uint64_t>* counter) { m_counter = counter; }
    void count(std::size_t bytes)
    {
        if (auto* counter = m_counter.load(std::memory_order_relaxed))
            counter->fetch_add(bytes, std::memory_order_relaxed);
    }
    /// Keeps the first failure.
    void fail(const Error& error);
    std::optional<Error> failure() const;
    void clearFailure();

private:
    CancelToken m_cancel;
    std::atomic<std::atomic<std::uint64_t>*> m_counter{nullptr};
    mutable std::mutex m_mutex;
    std::optional<Error> m_failure;
};
using InputStatePtr = std::shared_ptr<InputState>;

/// A source as the library wants it, with a cursor and a little read-ahead for handlers that read in small pieces.
Ref<InStream> sourceStream(SourcePtr source, InputStatePtr state);

/// A stream of the library (a partition inside a disk image) as a source. What it reads from has to outlive it.
/// Null when the stream cannot tell its size.
SourcePtr streamSource(Ref<InStream> stream);

}
