#pragma once

#include "engine/formats/archive.h"

#include <mutex>
#include <thread>

namespace vantoro {

/// Reads units of entries on as many threads as there is work for, at most `most`, this thread among them; each has a
/// lane of its own. `next()` hands the units out, one call at a time: a Result of an optional or pointer, empty at the
/// end. `openLane(LaneReceiver&)` makes what reads the units of one lane: Result<void>(const Unit&). The first error
/// lets the others finish the unit at hand, and is returned.
template <class Next, class OpenLane>
Result<void> readSideBySide(Lanes& lanes, unsigned most, Next next, OpenLane openLane)
{
    std::mutex mutex; // of all that follows and of next()
    Result<void> outcome;
    using Unit = std::decay_t<decltype(*next())>; // the optional
    const auto take = [&]() -> Unit {
        const std::lock_guard lock(mutex);
        if (!outcome)
            return {};
        auto unit = guarded(next);
        if (unit)
            return *std::move(unit);
        outcome = unit.error();
        return {};
    };
    const auto work = [&](LaneReceiver& lane, Unit unit) {
        const auto result = guarded([&]() -> Result<void> {
            for (auto read = openLane(lane); unit; unit = take())
                TRY(read(*unit));
            return {};
        });
        const std::lock_guard lock(mutex);
        if (outcome)
            outcome = result;
    };

    auto first = take();
    std::vector<std::thread> threads;
    for (unsigned i = 1; i < most; ++i) {
        auto unit = take();
        if (!unit)
            break;
        auto& lane = lanes.lane(i);
        const auto started = guarded([&]() -> Result<void> {
            threads.emplace_back([&work, &lane, unit]() mutable { work(lane, std::move(unit)); });
            return {};
        });
        if (!started) { // no thread to be had: this one does it
            work(lane, std::move(unit));
            break;
        }
    }
    if (first)
        work(lanes.lane(0), std::move(first));
    for (auto& thread : threads)
        thread.join();
    return outcome;
}

}
