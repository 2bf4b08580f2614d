#pragma once

#include "engine/codecs/lzma2_decoder.h"
#include "engine/codecs/worker_pool.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace vantoro {

/// Decodes parts of a stream that do not need each other side by side, and hands on what they give while they grow.
class ParallelBlocks : public Decoder {
public:
    ~ParallelBlocks() override;

protected:
    /// A part under way.
    struct Job {
        std::vector<std::byte> packed; ///< and the decoder's margin
        std::uint64_t size = 0; ///< decoded
        unsigned check = 0; ///< kind of the checksum, where there is one
        std::optional<LzmaWindow> window; ///< whole; what it holds is handed on
        std::vector<std::byte> other; ///< decoded by a library, instead
        // Guarded by m_mutex:
        ConstBytes decoded;
        bool isDone = false;
        Result<void> outcome;

        std::uint64_t memory() const { return packed.size() + size; }
    };

    /// `mostMemory`: of the parts under way, less one.
    ParallelBlocks(const CodecParams& params, std::uint64_t mostMemory);
    /// To be called first in the destructor of the class that decodes.
    void stop();

    // On the reader's thread:
    /// The packed bytes of the next part; false when there are none. After a fault, what there is of it is decoded.
    virtual Result<bool> readNext(Job& job) = 0;
    /// All parts are out. Leaving `out` without a byte means the end.
    virtual Result<void> finish(SpanWriter& out) = 0;

    // On any thread:
    virtual Result<void> decodeBlock(Job& job) = 0;
    /// Runs the decoder to its end; `fresh(bytes)` sees what it gives.
    template <class F> Result<void> decodeLzma2(Job& job, PackedBlock& packed, F&& fresh)
    {
        Lzma2Decoder lzma2(packed, *job.window);
        for (bool more = true; more;) {
            TRY(stillWanted());
            const auto stepped = lzma2.step(kStep);
            fresh(lzma2.fresh());
            publish(job, job.window->bytes(0, job.window->position()));
            more = TRY(stepped);
        }
        return {};
    }
    void publish(Job& job, ConstBytes decoded);

private:
    static constexpr std::size_t kStep = 128 << 10; ///< decoded before anybody is told

    Result<void> decode(SpanWriter& out) final;
    Result<void> beginJobs();
    bool waitForMore(Job& job);
    Result<void> stillWanted() const;
    void run(Job& job);

    unsigned m_threads;
    std::uint64_t m_mostMemory;
    std::uint64_t m_used = 0;
    bool m_hasMore = true;
    Result<void> m_inputFault; ///< kept until the parts before it are out
    std::deque<std::unique_ptr<Job>> m_jobs;
    ConstBytes m_decoded; ///< of the first job, as far as it was looked at
    std::size_t m_handedOut = 0; ///< of that
    std::mutex m_mutex;
    std::condition_variable m_grown;
    const Job* m_waitsFor = nullptr;
    std::atomic<bool> m_isStopping{false};
    std::unique_ptr<WorkerPool> m_pool; // goes first: its threads use the rest
};

}
