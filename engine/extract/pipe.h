#pragma once

#include "engine/extract/entry_sink.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace vantoro {

/// A ring of blocks between the thread that decodes and a thread that writes: many small entries share a block, large
/// ones fill several. The decoder works straight into the blocks. The first error of the writer is the answer to the
/// next call; what still comes is dropped.
class Pipe {
public:
    /// Null when no thread is to be had.
    static std::unique_ptr<Pipe> start(EntrySink& sink);
    ~Pipe();
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    Result<void> begin(FilePlan&& plan);
    Bytes room(std::size_t least);
    Result<void> data(ConstBytes block);
    Result<void> hole(std::uint64_t length);
    Result<void> end(const Result<void>& outcome);
    /// Waits until everything has been written.
    Result<void> drain();
    /// The writer has a whole block yet to come to.
    bool isBehind() const { return m_isBehind.load(std::memory_order_relaxed); }

private:
    static constexpr std::size_t kBlockSize = 1 << 20;
    static constexpr std::size_t kBlocks = 4;
    static constexpr std::size_t kMostSteps = 1024;

    struct Step {
        enum class Kind : std::uint8_t { Begin, Data, Hole, End } kind;
        std::uint64_t length = 0; ///< of Data and Hole
        Result<void> outcome; ///< of End
    };
    struct Block {
        std::unique_ptr<std::byte[]> memory;
        std::size_t used = 0;
        std::vector<Step> steps;
        std::vector<FilePlan> plans; ///< one for each Begin; those behind planCount keep their memory for the next
        std::size_t planCount = 0;
    };
    using BlockPtr = std::unique_ptr<Block>;

    explicit Pipe(EntrySink& sink) : m_sink(sink) {}
    void work();
    Result<void> perform(Block& block);
    Block& current();
    Result<void> add(Step step);
    Result<void> flush();
    Result<void> flushIfWriterIdles();

    EntrySink& m_sink;
    BlockPtr m_current; ///< the decoder's
    std::mutex m_mutex;
    std::condition_variable m_filled;
    std::condition_variable m_emptied;
    std::deque<BlockPtr> m_full;
    std::vector<BlockPtr> m_free;
    std::size_t m_made = 0;
    bool m_isWorking = false;
    bool m_isEnding = false;
    Result<void> m_failure;
    std::atomic<bool> m_isIdle{true};
    std::atomic<bool> m_isBehind{false};
    std::thread m_writer;
};

}
