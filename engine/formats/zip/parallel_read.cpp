#include "engine/formats/zip/parallel_read.h"

#include "engine/formats/side_by_side.h"

#include <algorithm>

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

/// Cuts the work into units, from the front.
class UnitCutter {
public:
    UnitCutter(const Directory& directory, std::span<const std::uint64_t> chosen)
        : m_directory(directory)
        , m_rest(chosen)
    {
    }

    std::optional<Unit> next()
    {
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

private:
    const Directory& m_directory;
    std::span<const std::uint64_t> m_rest;
};

}

Result<void> readParallel(const ReadShared& shared, std::span<const std::uint64_t> chosen, Lanes& lanes)
{
    UnitCutter cutter(shared.directory, chosen);
    return readSideBySide(
        lanes, lanes.count(), [&] { return Result(cutter.next()); },
        [&](LaneReceiver& lane) {
            return [reader = EntryReader(shared, lane)](const Unit& unit) mutable -> Result<void> {
                for (const auto index : unit.entries)
                    TRY(reader.read(static_cast<std::size_t>(index), unit.end));
                return {};
            };
        });
}

}
