#pragma once

#include "engine/extract/bomb_guard.h"
#include "engine/extract/placer.h"

namespace vantoro {

/// What all files of a job have in common.
struct WriterSettings {
    std::string originUrl; ///< mark of the archive that every file inherits; empty: none
    bool keepsBroken = false;
    bool reservesSpace = false; ///< the file system gains from fallocate
};

/// Writes one file after another: created with its final mode, written, dated, closed. One thread.
class FileWriter {
public:
    FileWriter(Placer& placer, BombGuard& guard, WriterSettings& settings)
        : m_placer(placer)
        , m_guard(guard)
        , m_settings(settings)
    {
    }
    ~FileWriter() { abandon(); }
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;

    /// UnsafeName when the file system does not take such a name: the entry is lost, the job goes on.
    Result<void> open(FilePlan&& plan);
    Result<void> write(ConstBytes block);
    Result<void> hole(std::uint64_t length);
    /// The file is whole.
    Result<void> finish();
    /// The file is not: removed, or kept as NAME.damaged.
    Result<void> discard();
    /// Everything ends here: removed whatever was wished.
    void abandon();

    /// Tells the placer which files stand: once for many, since it is locked while folders are made.
    void reportPlaced()
    {
        m_placer.setPlaced(m_placed);
        m_placed.clear();
    }

    bool isOpen() const { return static_cast<bool>(m_file); }
    const FilePlan& plan() const { return m_plan; }
    std::uint64_t size() const { return m_size; }

private:
    Result<void> create();
    Result<void> reserve(std::uint64_t upTo);
    void setAttributes();
    Result<void> seal();
    Result<void> complete();
    Result<void> unlink();

    Placer& m_placer;
    BombGuard& m_guard;
    WriterSettings& m_settings;
    FilePlan m_plan;
    std::vector<NodeId> m_placed;
    UniqueFd m_file;
    std::uint64_t m_size = 0;
    std::uint64_t m_reserved = 0;
    bool m_endsInHole = false;
};

}
