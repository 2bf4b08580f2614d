#pragma once

#include "engine/extract/bomb_guard.h"
#include "engine/extract/placer.h"

namespace vantoro {

/// What all files of a job have in common.
struct WriterSettings {
    /// Files get their names when they are whole; made here where the file system knows none without a name. -1: made
    /// where they belong.
    int hiddenFolder = -1;
    std::string originUrl; ///< mark of the archive that every file inherits; empty: none
    bool keepsBroken = false;
    bool reservesSpace = false; ///< the file system gains from fallocate
    std::atomic<unsigned> nextHiddenName{0};
    std::atomic<bool> hasUnnamedFiles{true}; ///< until the file system says otherwise
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
    Result<void> open(FilePlan plan);
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
    bool createUnnamed(mode_t mode);
    Result<void> reserve(std::uint64_t upTo);
    void setAttributes();
    Result<void> seal();
    Result<void> complete();
    Result<void> finishNamed();
    Result<void> finishUnnamed();
    Result<void> moveIntoPlace();
    int takeName();
    Result<void> unlink();
    bool isHidden() const { return m_settings.hiddenFolder >= 0; }
    int folder() const { return isHidden() ? m_settings.hiddenFolder : m_plan.folder->get(); }
    const std::string& name() const { return isHidden() ? m_hiddenName : m_plan.name; }

    Placer& m_placer;
    BombGuard& m_guard;
    WriterSettings& m_settings;
    FilePlan m_plan;
    std::string m_hiddenName;
    std::vector<NodeId> m_placed;
    UniqueFd m_file;
    std::uint64_t m_size = 0;
    std::uint64_t m_reserved = 0;
    bool m_endsInHole = false;
    bool m_linksDescriptors = true;
    bool m_isUnnamed = false; ///< nobody sees the file, and it is gone when it is closed
};

}
