#pragma once

#include "engine/formats/rar/header_input.h"
#include "engine/formats/rar/key_ring.h"
#include "engine/formats/rar/volumes.h"

namespace vantoro {

/// Where an archive begins in a file.
struct RarMark {
    RarGeneration generation = RarGeneration::New;
    std::uint64_t offset = 0; ///< of the marker
};

/// The marker at the start of `source` or behind a self-extracting program; nothing when there is none.
Result<std::optional<RarMark>> findRarMark(const ByteSource& source);
/// The same within bytes at hand: `head` is the start of a file. A marker that is followed by no valid header does not
/// count.
std::optional<RarMark> findRarMark(ConstBytes head);

/// What the headers of one volume say of the set.
struct RarVolumeFacts {
    bool isVolume = false;
    bool isFirst = false; ///< said so by its header
    bool continues = false; ///< its first entry began in the volume before
    bool goesOn = false; ///< another volume follows
    RarNaming naming = RarNaming::Numbers;
    std::optional<std::uint64_t> number; ///< rar 5: from 0
    bool isSolid = false;
    bool hasEncryptedHeaders = false;
    std::optional<std::size_t> headerForm; ///< of the password that opened the headers
    std::optional<RarMember> comment; ///< the archive's, packed
    bool isCommentUtf8 = false;
    bool isCommentEnciphered14 = false;
    std::string plainComment; ///< stored as it is
};

/// Takes the entries of one volume in their order.
class RarMemberSink {
public:
    virtual ~RarMemberSink() = default;
    /// False: enough, stop the scan.
    virtual Result<bool> member(RarMember member, bool continues, bool goesOn) = 0;
    virtual void damage(const Error& error) = 0;
};

struct RarScanContext {
    RarKeyRing* keys = nullptr;
    CancelToken cancel;
    Limits limits;
    std::uint32_t volume = 0; ///< index that the members' parts get
};

/// Reads the headers of one volume. What is damaged goes to the sink, and the scan goes on behind it where it can; an
/// Error is returned when nothing can be read (password, medium, cancelled, unsupported).
Result<RarVolumeFacts> scanRar14(RarHeaderInput& in, std::uint64_t mark, const RarScanContext& context,
                                 RarMemberSink& sink);
Result<RarVolumeFacts> scanOldRar(RarHeaderInput& in, std::uint64_t mark, const RarScanContext& context,
                                  RarMemberSink& sink);
Result<RarVolumeFacts> scanNewRar(RarHeaderInput& in, std::uint64_t mark, const RarScanContext& context,
                                  RarMemberSink& sink);
Result<RarVolumeFacts> scanRar(RarHeaderInput& in, const RarMark& mark, const RarScanContext& context,
                               RarMemberSink& sink);

}
