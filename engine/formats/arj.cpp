#include "engine/formats/arj.h"

#include "engine/codecs/arj_fastest.h"
#include "engine/codecs/lh_static.h"
#include "engine/crypto/crc32.h"
#include "engine/formats/arj_volumes.h"

#include <algorithm>

#include <sys/stat.h>

namespace vantoro {

namespace {

using arj::Contents;
using arj::Header;
using arj::Kind;
using arj::Part;

constexpr std::size_t kBlock = 64 << 10;
constexpr std::uint64_t kMostDecodedTwice = 16 << 20; // bytes, to find out whether a password is right

/// Garbling: the password, each byte moved by the entry's modifier, over and over.
class GarbledStream final : public ByteStream {
public:
    GarbledStream(StreamPtr packed, Secret password, std::uint8_t modifier)
        : m_packed(std::move(packed))
        , m_password(std::move(password))
        , m_modifier(modifier)
    {
    }
    Result<std::size_t> read(Bytes into) override
    {
        const auto count = TRY(m_packed->read(into));
        const auto key = m_password.text();
        for (auto& byte : into.first(count)) {
            byte ^= static_cast<std::byte>(static_cast<unsigned char>(key[m_next]) + m_modifier);
            m_next = (m_next + 1) % key.size();
        }
        return count;
    }

private:
    StreamPtr m_packed;
    Secret m_password;
    std::uint8_t m_modifier;
    std::size_t m_next = 0;
};

Result<StreamPtr> openMethod(StreamPtr packed, const Header& header)
{
    switch (header.method) {
    case 0:
        return packed;
    case 1:
    case 2:
    case 3:
        return openLhStatic(std::move(packed), {.distanceSymbols = 17, .distanceCountBits = 5}, header.size);
    case 4:
        return openArjFastest(std::move(packed), header.size);
    default:
        return Error{ErrorCode::UnsupportedMethod, "arj: unknown method"};
    }
}

const char* methodName(std::uint8_t method)
{
    constexpr std::array<const char*, 5> kNames{"Stored", "Most", "Medium", "Fast", "Fastest"};
    return method < kNames.size() ? kNames[method] : "";
}

class ArjArchive final : public Archive {
public:
    ArjArchive(Contents contents, const OpenContext& context) : m_contents(std::move(contents)), m_context(context)
    {
        m_info.format = "arj";
        m_info.comment = m_contents.archive.comment;
        m_info.missingVolume = m_contents.missingVolume;
        if (m_contents.volumes.size() > 1 || !m_info.missingVolume.empty())
            m_info.volumes = m_contents.volumeNames;
        m_info.damage = m_contents.damage;
        if (!m_info.missingVolume.empty())
            m_info.damage = Error{ErrorCode::MissingVolume, "arj: a volume is missing"};
        m_info.caresAboutPasswordEncoding = true;
    }

    const ArchiveInfo& info() const override { return m_info; }

    Result<void> list(EntryVisitor& visitor) override
    {
        for (std::size_t i = 0; i < m_contents.members.size(); ++i) {
            TRY(m_context.cancel.check());
            TRY(visitor.visit(describe(i)));
        }
        return {};
    }

    Result<void> read(const ReadRequest& request, Lanes& lanes) override
    {
        const auto chosen = request.chosen(m_contents.members.size());
        TRY(findPassword(chosen));
        for (const auto index : chosen) {
            TRY(m_context.cancel.check());
            TRY(readMember(static_cast<std::size_t>(index), lanes.lane(0), request.packedBytesRead));
        }
        return {};
    }

private:
    Entry describe(std::size_t index) const
    {
        const auto& member = m_contents.members[index];
        const auto& header = member.first();
        Entry entry;
        entry.index = index;
        entry.name = header.name;
        const auto flags = header.flags | m_contents.archive.flags; // the free arj says it of the archive alone
        entry.pathStyle = flags & arj::kUnixPath ? PathStyle::Unix : PathStyle::Dos;
        entry.kind = header.kind == Kind::Folder ? EntryKind::Folder
            : header.kind == Kind::UnixSpecial   ? EntryKind::Other
                                                 : EntryKind::File;
        entry.modified = header.modified();
        if (header.isUnix())
            entry.mode = header.mode & 07777U;
        entry.comment = header.comment;
        if (entry.kind == EntryKind::Folder)
            return entry;
        entry.size = member.size();
        entry.packedSize = member.packedSize();
        if (member.parts.size() == 1 && !member.isCutShort)
            entry.checksum = {Checksum::Kind::Crc32, header.crc};
        entry.isEncrypted = header.flags & arj::kGarbled;
        entry.method = methodName(header.method);
        return entry;
    }

    Result<StreamPtr> openPart(const Part& part, const Secret& password) const
    {
        const auto& header = part.header;
        auto packed = windowStream(m_contents.volumes[part.volume], header.dataPosition, header.packedSize);
        if (header.flags & arj::kGarbled) {
            if (m_contents.archive.encryptionVersion > 1)
                return Error{ErrorCode::UnsupportedEncryption, "arj: encrypted with GOST"};
            if (password.isEmpty())
                return Error{ErrorCode::WrongPassword, "arj: empty password"};
            packed = std::make_unique<GarbledStream>(std::move(packed), password, header.modifier);
        }
        return openMethod(std::move(packed), header);
    }

    /// Decodes a part; `take` gets its bytes.
    template <class Take>
    Result<void> readPart(const Part& part, const Secret& password, LaneReceiver* lane, Take&& take) const
    {
        auto stream = TRY(openPart(part, password));
        std::vector<std::byte> own;
        if (!lane)
            own.resize(kBlock);
        std::uint64_t left = part.header.size;
        std::uint32_t crc = 0;
        for (;;) {
            TRY(m_context.cancel.check());
            const auto into = lane ? lane->room(kBlock).first(kBlock) : Bytes(own);
            const auto count = TRY(stream->read(into));
            if (count == 0)
                break;
            if (count > left)
                return Error{ErrorCode::SizeMismatch, "arj: more data than declared"};
            left -= count;
            crc = crc32(crc, into.first(count));
            TRY(take(ConstBytes(into.first(count))));
        }
        if (left > 0)
            return Error{ErrorCode::Truncated, "arj: fewer data than declared"};
        if (crc != part.header.crc)
            return Error{ErrorCode::ChecksumMismatch, "arj: wrong checksum"};
        return {};
    }

    Result<void> readMember(std::size_t index, LaneReceiver& lane, std::atomic<std::uint64_t>* packedRead)
    {
        const auto& member = m_contents.members[index];
        const auto entry = describe(index);
        if (TRY(lane.begin(entry)) == LaneReceiver::Want::Skip)
            return {};
        if (entry.kind == EntryKind::Folder)
            return lane.end({});
        std::optional<Error> fromLane; // what the receiver said goes back to the caller, not to it
        std::uint64_t position = 0;
        Result<void> outcome;
        for (const auto& part : member.parts) {
            outcome = part.header.flags & arj::kContinued && part.header.partPosition != position
                ? Result<void>(Error{ErrorCode::Corrupt, "arj: a part does not follow the one before"})
                : readPart(part, m_password, &lane, [&](ConstBytes block) -> Result<void> {
                      const auto taken = lane.data(block);
                      if (!taken)
                          fromLane = taken.error();
                      return taken;
                  });
            if (!outcome)
                break;
            position += part.header.size;
            if (packedRead)
                packedRead->fetch_add(part.header.packedSize, std::memory_order_relaxed);
        }
        if (fromLane && fromLane->code != ErrorCode::EntryRefused)
            return *fromLane;
        if (!outcome && !fromLane && outcome.error().code == ErrorCode::Cancelled) {
            TRY(lane.end(outcome));
            return outcome;
        }
        if (outcome && member.isCutShort)
            outcome = Error{ErrorCode::MissingVolume, "arj: the rest of the entry is in a volume that is not there"};
        if (!outcome && !fromLane && entry.isEncrypted && !m_isProven && isDamage(outcome.error().code))
            outcome = Error{ErrorCode::WrongPassword, "arj: wrong password, or damaged data"};
        return lane.end(outcome);
    }

    static bool isDamage(ErrorCode code)
    {
        return code == ErrorCode::Corrupt || code == ErrorCode::Truncated || code == ErrorCode::ChecksumMismatch
            || code == ErrorCode::SizeMismatch;
    }

    /// Garbling has no check of its own: the smallest garbled entries tell whether a password fits.
    Result<void> findPassword(const std::vector<std::uint64_t>& chosen)
    {
        const auto isGarbled = [&](std::uint64_t i) {
            const auto& header = m_contents.members[static_cast<std::size_t>(i)].first();
            return (header.flags & arj::kGarbled) && header.size > 0;
        };
        if (m_isProven || m_contents.archive.encryptionVersion > 1
            || std::none_of(chosen.begin(), chosen.end(), isGarbled))
            return {};
        if (!m_context.passwords)
            return Error{ErrorCode::PasswordNeeded, "arj: nobody to ask for the password"};
        const auto samples = smallestGarbledParts();
        std::optional<Secret> before;
        for (unsigned attempt = 0;; ++attempt) {
            auto answer = m_context.passwords->password(attempt);
            const bool isExhausted = !answer && answer.error().code == ErrorCode::PasswordNeeded && attempt > 0;
            if (isExhausted || (answer && before && before->text() == answer->text()))
                return Error{ErrorCode::WrongPassword, "arj: no password fits"};
            m_password = TRY(std::move(answer));
            before = m_password;
            if (samples.empty())
                return {}; // too large to be decoded twice: the checksums will tell
            m_isProven = TRY(decodesAny(samples));
            if (m_isProven)
                return {};
        }
    }

    std::vector<const Part*> smallestGarbledParts() const
    {
        constexpr std::size_t kMost = 3; // one may be damaged while the password is right
        std::vector<const Part*> parts;
        for (const auto& member : m_contents.members) {
            for (const auto& part : member.parts) {
                if ((part.header.flags & arj::kGarbled) && part.header.size > 0
                    && part.header.size <= kMostDecodedTwice)
                    parts.push_back(&part);
            }
        }
        const auto kept = std::min(kMost, parts.size());
        std::partial_sort(parts.begin(), parts.begin() + static_cast<std::ptrdiff_t>(kept), parts.end(),
                          [](const Part* a, const Part* b) { return a->header.size < b->header.size; });
        parts.resize(kept);
        return parts;
    }

    Result<bool> decodesAny(const std::vector<const Part*>& parts) const
    {
        for (const auto* part : parts) {
            const auto result = readPart(*part, m_password, nullptr, [](ConstBytes) { return Result<void>(); });
            if (result)
                return true;
            if (result.error().code == ErrorCode::Cancelled || result.error().code == ErrorCode::Io)
                return result.error();
        }
        return false;
    }

    Contents m_contents;
    OpenContext m_context;
    ArchiveInfo m_info;
    Secret m_password;
    bool m_isProven = false; // m_password
};

Match probeArj(const ProbeInput& input)
{
    if (arj::isMainHeader(input.head))
        return Match::Sure;
    const bool isProgram = asText(input.head).starts_with("MZ");
    return isProgram && input.source && arj::findStart(*input.source) ? Match::Stub : Match::No;
}

Result<ArchivePtr> openArj(SourcePtr source, const OpenContext& context)
{
    auto contents = TRY(arj::readContents(std::move(source), context));
    return ArchivePtr(std::make_unique<ArjArchive>(std::move(contents), context));
}

constexpr std::array<std::string_view, 3> kExtensions{"arj", "a01", "exe"};

}

const FormatRow kArjFormat{"arj", "ARJ archive", kExtensions, probeArj, openArj};

}
