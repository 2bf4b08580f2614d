#pragma once

#include "engine/formats/rar/entry_reader.h"
#include "engine/formats/rar/scan.h"

#include <map>
#include <mutex>

namespace vantoro {

class RarArchive final : public Archive {
public:
    RarArchive(RarCatalog catalog, std::unique_ptr<RarKeyRing> keys, const OpenContext& context);

    const ArchiveInfo& info() const override { return m_info; }
    Result<void> list(EntryVisitor& visitor) override;
    Result<void> read(const ReadRequest& request, Lanes& lanes) override;
    /// The archive's comment, decoded from what the first volume holds. What is wrong with it is no matter.
    void readComment(const RarVolumeFacts& firstVolume);

private:
    class LaneSink;
    struct Reading;
    using Task = std::vector<std::uint32_t>; // entries that one worker reads, in archive order

    Entry describe(std::uint32_t index, std::string& method) const;
    RarShelf shelf(std::atomic<std::uint64_t>* packedBytesRead);
    Result<void> unlock(const std::vector<std::uint32_t>& chosen);
    Result<std::size_t> unlockOne(const RarEncryption& encryption);
    Result<std::size_t> unlockByTrial();
    Result<std::size_t> formOf(const RarMember& member) const;
    std::vector<std::uint32_t> trialMembers() const;
    std::vector<Task> tasksOf(const std::vector<std::uint32_t>& chosen) const;
    Result<void> readTask(Reading& reading, RarEntryReader& reader, RarEntryReader& copies, LaneReceiver& lane,
                          const Task& task);
    Result<void> readMember(Reading& reading, RarEntryReader& reader, RarEntryReader& copies, LaneReceiver& lane,
                            std::uint32_t index);
    Result<void> deliver(RarEntryReader& reader, std::uint32_t source, LaneSink& sink, LaneReceiver& lane);
    std::optional<std::uint32_t> originalOf(std::uint32_t index);

    RarCatalog m_catalog;
    std::vector<RarLink> m_links;
    std::unique_ptr<RarKeyRing> m_keys;
    CancelToken m_cancel;
    Limits m_limits;
    ArchiveInfo m_info;
    std::map<const RarEncryption*, std::size_t> m_forms; // password forms that open the entries
    std::optional<std::size_t> m_trialForm; // while or after one was tried out: for schemes without a check value
    bool m_isTrialSure = false;
    std::map<std::string_view, std::uint32_t> m_originals; // names of plain files, made when links need them
    std::mutex m_originalsMutex;
};

}
