#include "engine/formats/zip/passwords.h"

namespace vantoro::zip {

namespace {

constexpr std::uint64_t kCheapProof = 1 << 20; ///< packed bytes that are decoded to prove a password
constexpr std::size_t kMostLookedAt = 4096; ///< encrypted entries among which the cheapest is sought

/// Windows programs encrypt with the bytes of their code page.
constexpr const char* kOtherEncodings[] = {"IBM437", "IBM850", "windows-1252", "IBM866", "windows-1251", "Shift_JIS"};

/// Takes an entry and keeps only how it ended.
class ProofLane final : public LaneReceiver {
public:
    Result<Want> begin(const Entry&) override { return Want::Data; }
    Bytes room(std::size_t least) override
    {
        m_room.resize(std::max(m_room.size(), least));
        return m_room;
    }
    Result<void> data(ConstBytes) override { return {}; }
    Result<void> end(Result<void> how) override
    {
        outcome = how;
        return {};
    }
    Result<void> outcome;

private:
    std::vector<std::byte> m_room;
};

}

/// The entry that a password is tried on.
struct Passwords::Proof {
    const SourcePtr& source;
    const Directory& directory;
    const OpenContext& context;
    std::size_t index = 0;
    DirectoryHeader header;
    std::vector<std::byte> head; ///< of its data; empty when it cannot be read
};

Result<void> Passwords::prepare(const SourcePtr& source, const Directory& directory, const OpenContext& context,
                                std::span<const std::uint64_t> chosen)
{
    Proof proof{source, directory, context, 0, {}, {}};
    std::size_t seen = 0;
    for (const auto index : chosen) {
        const auto header = directory[static_cast<std::size_t>(index)];
        if (!header.has(kEncrypted) || header.isFolder() || !cipherFrame(header))
            continue;
        if (seen == 0 || header.packed < proof.header.packed) {
            proof.header = header;
            proof.index = static_cast<std::size_t>(index);
        }
        if (++seen == kMostLookedAt)
            break;
    }
    if (seen == 0)
        return {};
    const auto position = directory.localPosition(proof.header);
    std::byte fixed[kLocalSize];
    const auto frame = TRY(cipherFrame(proof.header));
    if (source->readExactly(position, fixed)) {
        if (const auto local = LocalHeader::parse(fixed); local && proof.header.packed >= frame.head)
            proof.head = TRY(readBlock(*source, position + local->length(), frame.head));
    }
    if (proof.head.size() < frame.head)
        proof.head.clear();

    if (!m_secret.isEmpty() && fits(proof, m_secret))
        return {};
    for (;;) {
        if (!context.passwords)
            return Error{ErrorCode::PasswordNeeded, "zip: encrypted, and nobody can be asked"};
        const auto typed = TRY(context.passwords->password(m_attempts));
        ++m_attempts;
        if (typed.isEmpty())
            return Error{ErrorCode::PasswordNeeded, "zip: encrypted, and no password was given"};
        TRY(context.cancel.check());
        if (tryEncodings(proof, typed))
            return {};
    }
}

bool Passwords::tryEncodings(const Proof& proof, const Secret& typed)
{
    if (fits(proof, typed)) {
        m_secret = typed;
        return true;
    }
    if (isAscii(typed.text()))
        return false;
    for (const auto* name : kOtherEncodings) {
        const auto* charset = findCharset(name);
        if (!charset)
            continue;
        auto bytes = encode(typed.text(), charset->id);
        if (!bytes)
            continue;
        const Secret encoded(*bytes);
        wipe(bytes->data(), bytes->size());
        if (fits(proof, encoded)) {
            m_secret = encoded;
            return true;
        }
    }
    return false;
}

bool Passwords::fits(const Proof& proof, const Secret& candidate)
{
    m_isProven = false;
    if (proof.head.empty())
        return true; // nothing to hold it against: the entries will tell
    if (!passesQuickCheck(proof.header, candidate.text(), proof.head))
        return false;
    // One wrong password in 256 passes the classic check: decode a small entry whole.
    if (proof.header.method == Method::Aes || proof.header.packed > kCheapProof || proof.header.size > kWholeEntry)
        return true;
    const ReadShared shared{.source = proof.source,
                            .directory = proof.directory,
                            .limits = proof.context.limits,
                            .cancel = proof.context.cancel,
                            .password = candidate.text()};
    ProofLane lane;
    EntryReader reader(shared, lane);
    if (!reader.read(proof.index, 0))
        return true;
    m_isProven = lane.outcome.has_value();
    return m_isProven || lane.outcome.error().code == ErrorCode::UnsupportedMethod;
}

}
