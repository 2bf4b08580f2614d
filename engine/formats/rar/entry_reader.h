#pragma once

#include "engine/codecs/rar_codec.h"
#include "engine/formats/rar/key_ring.h"

#include <atomic>

namespace vantoro {

/// How the entries hang together: which codec state each one needs.
struct RarLink {
    static constexpr std::uint32_t kNone = ~std::uint32_t{0};
    std::uint32_t previous = kNone; ///< the packed entry whose state this one continues
    std::uint32_t group = kNone; ///< number of the solid group; kNone: alone
    bool isPacked = false; ///< decoding it changes the state that solid entries share
    bool leadsOn = false; ///< a further entry continues this one's state
    std::uint64_t window = 0; ///< history that the whole group needs
};
std::vector<RarLink> linkRarMembers(const std::vector<RarMember>& members);

/// Takes what an entry decodes to; knows its size and checksum.
class RarCheckedSink : public ByteSink {
public:
    explicit RarCheckedSink(const RarMember& member);
    ~RarCheckedSink() override;
    Result<void> write(ConstBytes block) final;
    Result<void> finish() final { return {}; }
    /// Compares with what the headers say. `key` where checksums are keyed.
    Result<void> verify(const Rar5Key* key);
    /// Bytes that went past write(), as lanes copy stored data themselves.
    void account(std::uint64_t length, std::uint32_t crc);
    std::uint64_t count() const { return m_count; }

protected:
    virtual Result<void> take(ConstBytes block) = 0;

private:
    struct Hash;
    const RarMember& m_member;
    std::uint64_t m_count = 0;
    std::uint32_t m_crc = 0;
    std::unique_ptr<Hash> m_hash;
};

/// Decodes and checks only.
class RarNullSink final : public RarCheckedSink {
public:
    using RarCheckedSink::RarCheckedSink;

protected:
    Result<void> take(ConstBytes) override { return {}; }
};

/// What all readers of an archive share; unchanged while they work.
struct RarShelf {
    const RarCatalog& catalog;
    const std::vector<RarLink>& links;
    RarKeyRing& keys;
    /// Which form of a password opens an entry.
    std::function<Result<std::size_t>(const RarMember&)> formOf;
    std::atomic<std::uint64_t>* packedBytesRead = nullptr;
    CancelToken cancel;
    Limits limits;
};

/// Decodes entries, one after another, and keeps the state between solid ones. One thread uses it.
class RarEntryReader {
public:
    explicit RarEntryReader(const RarShelf& shelf) : m_shelf(shelf) {}
    /// Decodes member `index` and compares its size and checksum. What a solid one needs from the entries before it is
    /// decoded as well.
    Result<void> decode(std::uint32_t index, RarCheckedSink& sink);
    /// The packed (and enciphered) data as they lie.
    Result<SourcePtr> packedSource(const RarMember& member) const;
    /// Gives back the memory of the codecs.
    void rest();
    /// A member outside of the listing: comments.
    Result<void> decodeAlone(const RarMember& member, bool isEnciphered14, ByteSink& out);

private:
    Result<void> decodeOne(std::uint32_t index, RarCheckedSink& sink);
    Result<void> decodeStored(const RarMember& member, ByteStream& packed, ByteSink& out) const;
    Result<StreamPtr> openPacked(const RarMember& member, std::optional<Rar5Key>& key) const;
    RarCodec& codecFor(RarMethod method);

    const RarShelf& m_shelf;
    std::unique_ptr<RarCodec> m_codec;
    RarMethod m_codecMethod = RarMethod::Unknown;
    std::uint32_t m_stateOf = RarLink::kNone; // member whose state the codec holds
};

}
