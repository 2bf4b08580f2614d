#pragma once

#include "engine/formats/entry_input.h"
#include "engine/formats/tar_pax.h"

namespace vantoro {

/// One file of a tar, with everything that the headers in front of it say. Owns what an Entry only shows.
struct TarMember {
    std::string name, linkTarget, owner, group, comment;
    CharsetId nameCharset = kCharsetUnknown;
    EntryKind kind = EntryKind::File;
    std::uint64_t size = 0; ///< of the file
    std::uint64_t storedSize = 0; ///< of its data in the tar
    std::optional<std::uint32_t> mode;
    Timestamp modified, accessed, created;
    std::vector<std::pair<std::string, std::string>> attributes;
    bool isSparse = false;
    std::vector<TarExtent> sparseMap; ///< ascending, disjoint, within the size; the lengths add up to storedSize
    /// The headers contradict themselves: the member is listed, its data are not to be believed.
    std::optional<Error> fault;
};

/// Goes from member to member. Source of the format: POSIX.1-2017 pax, the manual of GNU tar, star(5).
class TarWalker {
public:
    TarWalker(EntryInput& input, const Limits& limits, const CancelToken& cancel);

    /// False at the end. An Error is one of the input: what follows cannot be reached.
    Result<bool> next(TarMember& member);
    /// Hands the member's data over. Errors of the receiver are returned, those of the archive go to `fault`.
    Result<void> deliver(const TarMember& member, LaneReceiver& lane, Result<void>& fault);

    /// What was wrong between the members: bad headers passed over, no end mark.
    const std::optional<Error>& damage() const { return m_damage; }

private:
    enum class Found : std::uint8_t { Member, Other, End };
    Result<void> finishMember();
    Result<bool> findHeader();
    Result<Found> takeHeader(TarMember& member);
    Result<std::vector<std::byte>> readMeta(std::uint64_t size);
    Result<void> skipPadded(std::uint64_t size);
    Result<void> takeRecords(TarRecords& records, std::uint64_t size);
    Result<void> takeMember(const TarHeader& header, TarMember& member);
    void describe(const TarHeader& header, TarMember& member) const;
    Result<bool> bodyFollows();
    Result<void> takeOldSparse(ConstBytes header, TarMember& member);
    Result<void> takeSparse(TarMember& member);
    Result<void> readMapInData(TarMember& member);
    void reportDamage(Error error);

    EntryInput& m_input;
    const Limits& m_limits;
    const CancelToken& m_cancel;
    TarRecords m_global, m_own;
    std::optional<std::string> m_longName, m_longLink;
    std::optional<Error> m_metaFault; // of the headers in front of the next member
    std::uint64_t m_dataLeft = 0; // of the current member, not yet read
    std::uint64_t m_padding = 0; // behind it
    bool m_inMember = false;
    bool m_isOld = false; // the last header was of the Unix V7 dialect
    std::optional<Error> m_damage;
};

}
