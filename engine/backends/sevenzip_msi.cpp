#include "engine/backends/sevenzip_msi.h"

#include "engine/backends/msi_tables.h"
#include "engine/backends/sevenzip_archive.h"

#include <algorithm>

namespace vantoro::sevenzip {

namespace {

constexpr Format kCompound{.id = "msi", .classId = 0xE5};
constexpr Format kCab{.id = "msi", .classId = 0x08, .names = Format::Names::Cab};

/// The streams of the package by name.
class Streams final : public EntryVisitor {
public:
    explicit Streams(PartsArchive& package) : m_package(package) {}
    Result<void> visit(const Entry& entry) override
    {
        m_entries.emplace(std::string(entry.name), entry.index);
        return {};
    }
    SourcePtr open(const std::string& name) const
    {
        const auto found = m_entries.find(name);
        return found == m_entries.end() ? nullptr : m_package.part(found->second);
    }

private:
    PartsArchive& m_package;
    std::unordered_map<std::string, std::uint64_t> m_entries;
};

/// Cabinets may go on in others, inside the package or beside it.
class Cabinets final : public VolumeProvider {
public:
    Cabinets(const Streams& streams, VolumeProvider* beside) : m_streams(streams), m_beside(beside) {}
    Result<SourcePtr> openVolume(std::string_view name) override
    {
        if (auto inside = m_streams.open(std::string(name)))
            return inside;
        if (m_beside)
            return m_beside->openVolume(name);
        return Error{ErrorCode::MissingVolume, "msi: a cabinet is missing"};
    }

private:
    const Streams& m_streams;
    VolumeProvider* m_beside;
};

/// Gives the entries of a cabinet their numbers and names in the package.
class Renaming {
public:
    Renaming(const MsiFiles& files, std::uint64_t firstIndex) : m_files(files), m_firstIndex(firstIndex) {}
    Entry operator()(const Entry& entry) const
    {
        auto renamed = entry;
        renamed.index += m_firstIndex;
        if (const auto path = m_files.paths.find(std::string(entry.name)); path != m_files.paths.end()) {
            renamed.name = path->second;
            renamed.nameCharset = m_files.charset;
            renamed.pathStyle = PathStyle::Unix;
        }
        return renamed;
    }

private:
    const MsiFiles& m_files;
    std::uint64_t m_firstIndex;
};

class RenamingVisitor final : public EntryVisitor {
public:
    RenamingVisitor(EntryVisitor& visitor, const Renaming& rename) : m_visitor(visitor), m_rename(rename) {}
    Result<void> visit(const Entry& entry) override { return m_visitor.visit(m_rename(entry)); }

private:
    EntryVisitor& m_visitor;
    const Renaming& m_rename;
};

class RenamingLane final : public Lanes, public LaneReceiver {
public:
    RenamingLane(LaneReceiver& lane, const Renaming& rename) : m_lane(lane), m_rename(rename) {}
    unsigned count() const override { return 1; }
    LaneReceiver& lane(unsigned) override { return *this; }
    Result<Want> begin(const Entry& entry) override { return m_lane.begin(m_rename(entry)); }
    Bytes room(std::size_t least) override { return m_lane.room(least); }
    Result<void> data(ConstBytes block) override { return m_lane.data(block); }
    Result<void> hole(std::uint64_t length) override { return m_lane.hole(length); }
    Result<void> copy(const ByteSource& source, std::uint64_t position, std::uint64_t length,
                      std::uint32_t* crc) override
    {
        return m_lane.copy(source, position, length, crc);
    }
    Result<void> end(Result<void> outcome) override { return m_lane.end(outcome); }

private:
    LaneReceiver& m_lane;
    const Renaming& m_rename;
};

class MsiArchive final : public Archive {
public:
    MsiArchive(std::unique_ptr<PartsArchive> package, const OpenContext& context)
        : m_package(std::move(package))
        , m_streams(*m_package)
        , m_cabinets(m_streams, context.volumes)
        , m_context(context)
    {
        m_context.volumes = &m_cabinets;
        m_info.format = "msi";
        m_info.isSolid = true;
    }

    /// NotAnArchive when there are no files to install.
    Result<void> load()
    {
        TRY(m_package->list(m_streams));
        m_files = TRY(readMsiFiles([&](std::string_view name) { return readTable('!' + std::string(name)); }));
        for (const auto& name : m_files.cabinets)
            TRY(openCabinet(name));
        if (m_parts.empty() && m_info.missingVolume.empty())
            return Error{ErrorCode::NotAnArchive, "msi: no cabinets"};
        return {};
    }

    const ArchiveInfo& info() const override { return m_info; }

    Result<void> list(EntryVisitor& visitor) override
    {
        for (const auto& part : m_parts) {
            const Renaming rename(m_files, part.firstIndex);
            RenamingVisitor renamed(visitor, rename);
            TRY(part.cabinet->list(renamed));
        }
        return {};
    }

    Result<void> read(const ReadRequest& request, Lanes& lanes) override
    {
        for (const auto& part : m_parts) {
            const Renaming rename(m_files, part.firstIndex);
            RenamingLane renamed(lanes.lane(0), rename);
            const auto chosen = selectionIn(part, request);
            if (!chosen || !chosen->empty())
                TRY(part.cabinet->read({chosen, request.packedBytesRead}, renamed));
        }
        return {};
    }

private:
    struct Part {
        ArchivePtr cabinet;
        std::uint64_t firstIndex = 0;
        std::uint64_t count = 0;
    };

    std::optional<std::vector<std::byte>> readTable(const std::string& name) const
    {
        const auto stream = m_streams.open(name);
        if (!stream || stream->size() > m_context.limits.headerBlock)
            return std::nullopt;
        const auto data = readBlock(*stream, 0, static_cast<std::size_t>(stream->size()));
        return data ? std::optional(*data) : std::nullopt;
    }

    Result<void> openCabinet(const std::string& stored)
    {
        const auto name = stored.substr(stored.starts_with('#') ? 1 : 0);
        const auto isKnown = [&](const Part& part) {
            const auto& volumes = part.cabinet->info().volumes;
            return std::find(volumes.begin(), volumes.end(), name) != volumes.end();
        };
        if (std::any_of(m_parts.begin(), m_parts.end(), isKnown))
            return {};
        const auto source = m_cabinets.openVolume(name);
        if (!source && source.error().code != ErrorCode::MissingVolume)
            return source.error();
        if (!source) {
            if (m_info.missingVolume.empty())
                m_info.missingVolume = name;
            m_info.damage = Error{ErrorCode::MissingVolume, "msi: a cabinet is missing"};
            return {};
        }
        auto context = m_context;
        context.name = name;
        Part part{TRY(openLayer(kCab, *source, context)),
                  m_parts.empty() ? 0 : m_parts.back().firstIndex + m_parts.back().count};
        struct Counter final : EntryVisitor {
            Result<void> visit(const Entry&) override
            {
                ++count;
                return {};
            }
            std::uint64_t count = 0;
        } counter;
        TRY(part.cabinet->list(counter));
        part.count = counter.count;
        const auto& info = part.cabinet->info();
        if (info.damage)
            m_info.damage = info.damage;
        if (m_info.missingVolume.empty())
            m_info.missingVolume = info.missingVolume;
        m_parts.push_back(std::move(part));
        return {};
    }

    static std::optional<std::vector<std::uint64_t>> selectionIn(const Part& part, const ReadRequest& request)
    {
        if (!request.selection)
            return std::nullopt;
        std::vector<std::uint64_t> chosen;
        for (const auto index : *request.selection) {
            if (index >= part.firstIndex && index - part.firstIndex < part.count)
                chosen.push_back(index - part.firstIndex);
        }
        return chosen;
    }

    std::unique_ptr<PartsArchive> m_package; // outlives the cabinets, which read from inside it
    Streams m_streams;
    Cabinets m_cabinets;
    OpenContext m_context;
    MsiFiles m_files;
    std::vector<Part> m_parts;
    ArchiveInfo m_info;
};

}

Result<ArchivePtr> openMsi(SourcePtr source, const OpenContext& context)
{
    return guarded([&]() -> Result<ArchivePtr> {
        auto archive = std::make_unique<MsiArchive>(TRY(openLayer(kCompound, source, context)), context);
        const auto loaded = archive->load();
        if (loaded)
            return ArchivePtr(std::move(archive));
        if (loaded.error().code == ErrorCode::Cancelled || loaded.error().code == ErrorCode::Io)
            return loaded.error();
        return ArchivePtr(TRY(openLayer(kCompound, source, context)));
    });
}

}
