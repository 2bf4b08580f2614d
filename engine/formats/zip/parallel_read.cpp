#include "engine/formats/zip/parallel_read.h"

#include <algorithm>
#include <mutex>
#include <thread>

namespace vantoro::zip {

namespace {

constexpr std::uint64_t kUnitBytes = 8 << 20;
constexpr std::size_t kUnitEntries = 256;
constexpr std::uint64_t kSmallGap = 64 << 10; ///< between entries that are read in one go

struct Unit {
    std::span<const std::uint64_t> entries;
    std::uint64_t end = 0; ///< how far their data reach in the source
};

std::string_view folderOf(std::string_view name)
{
    if (name.ends_with('/'))
        name.remove_suffix(1);
    const auto slash = name.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : name.substr(0, slash);
}

/// Hands the work out, from the front.
class UnitQueue {
public:
    UnitQueue(const Directory& directory, std::span<const std::uint64_t> chosen)
        : m_directory(directory)
        , m_rest(chosen)
    {
    }

    std::optional<Unit> next()
    {
        const std::lock_guard lock(m_mutex);
        if (m_rest.empty())
            return {};
        Unit unit;
        std::uint64_t bytes = 0;
        std::size_t count = 0;
        std::string_view folder;
        for (; count < std::min(kUnitEntries, m_rest.size()); ++count) {
            const auto header = m_directory[static_cast<std::size_t>(m_rest[count])];
            const auto start = m_directory.localPosition(header);
            const auto weight = std::max(header.size, header.packed);
            const auto itsFolder = folderOf(header.name);
            const bool follows = start >= unit.end && start - unit.end <= kSmallGap;
            if (count > 0 && (weight > kUnitBytes - bytes || itsFolder != folder || !follows))
                break;
            folder = itsFolder;
            bytes += std::min(weight, kUnitBytes);
            // A local header may be longer than the directory's: a guess that only decides what is read ahead.
            unit.end = start + kLocalSize + header.name.size() + header.extra.size() + header.packed;
            if (unit.end < start)
                unit.end = start;
        }
        unit.entries = m_rest.first(count);
        m_rest = m_rest.subspan(count);
        return unit;
    }

    bool isEmpty()
    {
        const std::lock_guard lock(m_mutex);
        return m_rest.empty();
    }
    void clear()
    {
        const std::lock_guard lock(m_mutex);
        m_rest = {};
    }

private:
    const Directory& m_directory;
    std::mutex m_mutex;
    std::span<const std::uint64_t> m_rest;
};

}

Result<void> readParallel(const ReadShared& shared, std::span<const std::uint64_t> chosen, Lanes& lanes)
{
    UnitQueue queue(shared.directory, chosen);
    std::mutex mutex;
    Result<void> outcome;
    const auto work = [&](LaneReceiver& lane, std::optional<Unit> unit) {
        const auto result = guarded([&]() -> Result<void> {
            EntryReader reader(shared, lane);
            for (; unit; unit = queue.next()) {
                for (const auto index : unit->entries)
                    TRY(reader.read(static_cast<std::size_t>(index), unit->end));
            }
            return {};
        });
        if (result)
            return;
        queue.clear();
        const std::lock_guard lock(mutex);
        if (outcome)
            outcome = result;
    };

    std::vector<std::thread> threads;
    const auto first = queue.next();
    for (unsigned i = 1; i < lanes.count() && !queue.isEmpty(); ++i) {
        auto& lane = lanes.lane(i);
        auto unit = queue.next();
        const auto started = guarded([&]() -> Result<void> {
            threads.emplace_back([&work, &lane, unit] { work(lane, unit); });
            return {};
        });
        if (!started) { // no thread to be had: this one does it
            work(lane, unit);
            break;
        }
    }
    work(lanes.lane(0), first);
    for (auto& thread : threads)
        thread.join();
    return outcome;
}

}
