#pragma once

#include "engine/io/result.h"

#include <atomic>
#include <memory>

namespace vantoro {

/// A stop flag that copies share. Long work polls it at each entry and at least once per 8 MiB of output.
class CancelToken {
public:
    CancelToken() : m_flag(std::make_shared<std::atomic<bool>>(false)) {}
    void cancel() const { m_flag->store(true, std::memory_order_relaxed); }
    bool isCancelled() const { return m_flag->load(std::memory_order_relaxed); }
    Result<void> check() const
    {
        if (isCancelled())
            return Error{ErrorCode::Cancelled, "stopped"};
        return {};
    }

private:
    std::shared_ptr<std::atomic<bool>> m_flag;
};

/// What a hostile input may ask of us at most.
struct Limits {
    std::uint64_t dictionary = std::uint64_t{1} << 30; ///< bytes of decoder history
    std::uint64_t headerBlock = std::uint64_t{64} << 20; ///< bytes of one block of headers held in memory
    std::uint64_t nameLength = 64 << 10; ///< bytes of a name
    std::uint64_t linkTarget = 4095; ///< bytes of a link target
    std::uint64_t entries = 50'000'000;
    unsigned depth = 4; ///< wrappers opened on the way to the entries
};

}
