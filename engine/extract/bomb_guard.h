#pragma once

#include "engine/extract/report.h"

#include <atomic>
#include <functional>
#include <mutex>

namespace vantoro {

/// Watches an extraction grow: out of proportion to the archive, over the free space, over the number of files that is
/// sane. Each is asked once; the space that the system needs to live is never used up unasked. Thread-safe.
class BombGuard {
public:
    using Ask = std::function<bool(const SizeQuestion&)>;

    /// `folder` lies on the file system that is written to and outlives the guard.
    /// `packedRead`: counted by the reader while it goes; 0 while it does not count.
    BombGuard(int folder, std::uint64_t packedSize, const std::atomic<std::uint64_t>& packedRead, Ask ask);

    /// What the headers declare, before anything is written. 0 when not known.
    Result<void> declared(std::uint64_t bytes, std::uint64_t entries);
    /// After each write; holes are not counted.
    Result<void> wrote(std::uint64_t bytes);
    /// For each entry, also those of archives that declare no number.
    Result<void> entered();

    std::uint64_t written() const { return m_written.load(std::memory_order_relaxed); }

private:
    struct Space {
        bool isKnown = false;
        std::uint64_t free = 0; ///< bytes above the reserve
        std::uint64_t inodes = 0; ///< free; 0 where the file system does not count them
    };
    Space space() const;
    static bool isOutOfProportion(std::uint64_t bytes, std::uint64_t packed);
    Result<void> askOnce(bool& isAllowed, const SizeQuestion& question);
    Result<void> look(std::uint64_t written);

    const int m_folder;
    const std::uint64_t m_packedSize;
    const std::atomic<std::uint64_t>& m_packedRead;
    const Ask m_ask;
    std::uint64_t m_mostEntries;
    std::atomic<std::uint64_t> m_written{0};
    std::atomic<std::uint64_t> m_entries{0};
    std::atomic<std::uint64_t> m_nextLook;
    std::mutex m_mutex; ///< of the questions
    bool m_allowsRatio = false;
    bool m_allowsSpace = false;
    bool m_allowsCrowd = false;
};

}
