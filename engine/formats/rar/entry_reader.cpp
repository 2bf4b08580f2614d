#include "engine/formats/rar/entry_reader.h"

#include "engine/crypto/aes_cbc.h"
#include "engine/crypto/blake2sp.h"
#include "engine/crypto/crc32.h"
#include "engine/crypto/rar_ciphers.h"

#include <algorithm>
#include <bit>

namespace vantoro {

namespace {

/// Counts packed bytes and asks for the stop flag as they are read.
class CountedStream final : public ByteStream {
public:
    CountedStream(StreamPtr in, std::atomic<std::uint64_t>* counter, CancelToken cancel)
        : m_in(std::move(in))
        , m_counter(counter)
        , m_cancel(std::move(cancel))
    {
    }
    Result<std::size_t> read(Bytes into) override
    {
        TRY(m_cancel.check());
        const auto count = TRY(m_in->read(into));
        if (m_counter)
            m_counter->fetch_add(count, std::memory_order_relaxed);
        return count;
    }

private:
    StreamPtr m_in;
    std::atomic<std::uint64_t>* m_counter;
    CancelToken m_cancel;
};

/// Whether decoding the member changes the state that solid entries share.
bool touchesState(const RarMember& member)
{
    return member.hasData() && !member.isFileCopy && member.method != RarMethod::Stored && member.part.length > 0
        && member.size.value_or(1) > 0;
}

/// Neither size decides: entries of unknown size may need all of their dictionary.
std::uint64_t neededWindow(std::uint64_t dictionary, std::optional<std::uint64_t> size)
{
    return size ? std::max<std::uint64_t>(1, std::min(dictionary, *size)) : dictionary;
}

std::uint16_t checksum14(std::uint16_t sum, ConstBytes block)
{
    for (const auto byte : block)
        sum = std::rotl(static_cast<std::uint16_t>(sum + std::to_integer<unsigned>(byte)), 1);
    return sum;
}

}

std::vector<RarLink> linkRarMembers(const std::vector<RarMember>& members)
{
    std::vector<RarLink> links(members.size());
    std::uint32_t previous = RarLink::kNone;
    std::uint32_t groups = 0;
    std::uint32_t first = 0; // of the group at hand
    std::uint64_t dictionary = 0;
    std::optional<std::uint64_t> total;
    const auto closeGroup = [&](std::uint32_t end) {
        for (auto i = first; i < end; ++i)
            if (links[i].isPacked)
                links[i].window = neededWindow(dictionary, total);
    };
    for (std::uint32_t i = 0; i < members.size(); ++i) {
        const auto& member = members[i];
        if (!touchesState(member))
            continue;
        links[i].isPacked = true;
        if (member.isSolid && previous != RarLink::kNone) {
            auto& before = links[previous];
            if (before.group == RarLink::kNone)
                before.group = groups++;
            before.leadsOn = true;
            links[i].group = before.group;
            links[i].previous = previous;
            total = total && member.size ? std::optional(*total + std::min(*member.size, ~*total)) : std::nullopt;
            dictionary = std::max(dictionary, member.dictionary);
        } else {
            closeGroup(i);
            first = i;
            total = member.size;
            dictionary = member.dictionary;
        }
        previous = i;
    }
    closeGroup(static_cast<std::uint32_t>(members.size()));
    return links;
}

struct RarCheckedSink::Hash {
    Blake2sp state;
};

RarCheckedSink::RarCheckedSink(const RarMember& member) : m_member(member)
{
    if (member.extras && member.extras->hash)
        m_hash = std::make_unique<Hash>();
}

RarCheckedSink::~RarCheckedSink() = default;

Result<void> RarCheckedSink::write(ConstBytes block)
{
    m_count += block.size();
    if (m_hash)
        m_hash->state.update(block);
    else if (m_member.checksum == RarChecksum::Crc32)
        m_crc = crc32(m_crc, block);
    else if (m_member.checksum == RarChecksum::Sum14)
        m_crc = checksum14(static_cast<std::uint16_t>(m_crc), block);
    return take(block);
}

void RarCheckedSink::account(std::uint64_t length, std::uint32_t crc)
{
    m_count += length;
    m_crc = crc;
}

Result<void> RarCheckedSink::verify(const Rar5Key* key)
{
    if (m_member.size && m_count != *m_member.size)
        return Error{m_count < *m_member.size ? ErrorCode::Truncated : ErrorCode::SizeMismatch,
                     "rar: size of the data"};
    const auto wrong = Error{ErrorCode::ChecksumMismatch, "rar: checksum of the data"};
    const auto isKeyed = key && m_member.encryption && m_member.encryption->hasKeyedChecksums;
    if (m_hash) {
        auto digest = m_hash->state.finish();
        if (isKeyed)
            digest = rar5KeyedHash(*key, digest);
        if (digest != *m_member.extras->hash)
            return wrong;
    } else if (m_member.checksum != RarChecksum::None) {
        if ((isKeyed ? rar5KeyedCrc(*key, m_crc) : m_crc) != m_member.crc)
            return wrong;
    }
    return {};
}

Result<SourcePtr> RarEntryReader::packedSource(const RarMember& member) const
{
    std::vector<SourcePtr> parts;
    const auto add = [&](const RarPart& part) {
        parts.push_back(windowSource(m_shelf.catalog.volumes[part.volume].source, part.offset, part.length));
    };
    add(member.part);
    if (member.extras) {
        for (const auto& part : member.extras->moreParts)
            add(part);
    }
    return joinedSource(std::move(parts));
}

Result<StreamPtr> RarEntryReader::openPacked(const RarMember& member, std::optional<Rar5Key>& key) const
{
    StreamPtr stream = std::make_unique<CountedStream>(windowStream(TRY(packedSource(member))), m_shelf.packedBytesRead,
                                                       m_shelf.cancel);
    if (!member.encryption)
        return stream;
    const auto& encryption = *member.encryption;
    const auto form = TRY(m_shelf.formOf(member));
    switch (encryption.scheme) {
    case RarEncryption::Scheme::Rar5:
        key = TRY(m_shelf.keys.rar5Key(form, encryption));
        return openAesCbc(std::move(stream), key->key, encryption.iv);
    case RarEncryption::Scheme::Rar3: {
        const auto aes = TRY(m_shelf.keys.rar3Key(form, encryption.saltBytes()));
        return openAesCbc(std::move(stream), aes.key, aes.iv);
    }
    case RarEncryption::Scheme::Rar14:
        return openRarCipher(RarCipher::Rar14, std::move(stream), m_shelf.keys.text(form));
    case RarEncryption::Scheme::Rar15:
        return openRarCipher(RarCipher::Rar15, std::move(stream), m_shelf.keys.text(form));
    default:
        return openRarCipher(RarCipher::Rar20, std::move(stream), m_shelf.keys.text(form));
    }
}

RarCodec& RarEntryReader::codecFor(RarMethod method)
{
    if (!m_codec || m_codecMethod != method) {
        m_codec.reset(); // its memory, before there is new
        m_codec = method == RarMethod::Rar15 ? makeRar15Codec()
            : method == RarMethod::Rar20     ? makeRar20Codec()
            : method == RarMethod::Rar29     ? makeRar29Codec()
                                             : makeRar50Codec(method == RarMethod::Rar70);
        m_codecMethod = method;
        m_stateOf = RarLink::kNone;
    }
    return *m_codec;
}

void RarEntryReader::rest()
{
    m_codec.reset();
    m_stateOf = RarLink::kNone;
}

Result<void> RarEntryReader::decodeStored(const RarMember& member, ByteStream& packed, ByteSink& out) const
{
    std::vector<std::byte> buffer(256 << 10);
    auto left = member.size.value_or(member.packedSize());
    while (left > 0) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, buffer.size()));
        const auto count = TRY(packed.read(Bytes(buffer).first(wanted)));
        if (count == 0)
            break;
        TRY(out.write(ConstBytes(buffer).first(count)));
        left -= count;
    }
    return {};
}

Result<void> RarEntryReader::decode(std::uint32_t index, RarCheckedSink& sink)
{
    const auto& link = m_shelf.links[index];
    if (link.previous != RarLink::kNone && m_stateOf != link.previous) {
        // The entries before that are not wanted themselves.
        std::vector<std::uint32_t> chain;
        for (auto i = link.previous; i != RarLink::kNone && i != m_stateOf; i = m_shelf.links[i].previous)
            chain.push_back(i);
        std::reverse(chain.begin(), chain.end());
        for (const auto before : chain) {
            RarNullSink nothing(m_shelf.catalog.members[before]);
            const auto outcome = decodeOne(before, nothing);
            // Damage there shows in this entry's own checksum, if it reaches it.
            if (!outcome
                && (outcome.error().code == ErrorCode::Cancelled || outcome.error().code == ErrorCode::Io
                    || outcome.error().code == ErrorCode::LimitExceeded))
                return outcome;
        }
    }
    return decodeOne(index, sink);
}

Result<void> RarEntryReader::decodeOne(std::uint32_t index, RarCheckedSink& sink)
{
    const auto& member = m_shelf.catalog.members[index];
    const auto& link = m_shelf.links[index];
    if (member.lacksStart || member.method == RarMethod::Unknown) {
        if (link.isPacked)
            m_stateOf = index; // as far as that goes
        if (member.lacksStart)
            return Error{ErrorCode::MissingVolume, "rar: the entry begins in a volume that is not there"};
        return Error{ErrorCode::UnsupportedMethod, "rar: compression or encryption method"};
    }
    std::optional<Rar5Key> key;
    const auto packed = TRY(openPacked(member, key));
    Result<void> outcome;
    if (!link.isPacked) {
        outcome = decodeStored(member, *packed, sink);
    } else {
        if (link.window > m_shelf.limits.dictionary)
            return Error{ErrorCode::LimitExceeded, "rar: dictionary", 0, link.window};
        auto& codec = codecFor(member.method);
        RarCodecEntry entry;
        entry.size = member.size;
        entry.window = link.window;
        entry.isSolid = link.previous != RarLink::kNone && m_stateOf == link.previous;
        entry.leadsOn = link.leadsOn;
        entry.cancel = m_shelf.cancel;
        outcome = codec.decode(*packed, entry, sink);
        m_stateOf = index;
    }
    if (member.lacksEnd
        && (outcome || outcome.error().code == ErrorCode::Truncated || outcome.error().code == ErrorCode::Corrupt))
        return Error{ErrorCode::MissingVolume, "rar: the entry goes on in a volume that is not there"};
    TRY(outcome);
    return sink.verify(key ? &*key : nullptr);
}

Result<void> RarEntryReader::decodeAlone(const RarMember& member, bool isEnciphered14, ByteSink& out)
{
    if (member.method == RarMethod::Unknown)
        return Error{ErrorCode::UnsupportedMethod, "rar: comment"};
    std::optional<Rar5Key> key;
    auto packed = TRY(openPacked(member, key));
    if (isEnciphered14)
        packed = openRar14CommentCipher(std::move(packed));
    if (member.method == RarMethod::Stored)
        return decodeStored(member, *packed, out);
    RarCodecEntry entry;
    entry.size = member.size;
    entry.window = neededWindow(member.dictionary, member.size);
    entry.cancel = m_shelf.cancel;
    m_stateOf = RarLink::kNone;
    return codecFor(member.method).decode(*packed, entry, out);
}

}
