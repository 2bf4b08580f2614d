#include "engine/crypto/aes_cbc.h"
#include "engine/crypto/crc32.h"
#include "engine/formats/rar/scan.h"
#include "engine/formats/rar/text.h"
#include "engine/formats/stored_time.h"

#include <algorithm>

// The container of rar 5 to 7.

namespace vantoro {

namespace {

constexpr std::size_t kMarker = 8;
constexpr std::size_t kMaxHeader = 2 << 20;
constexpr std::size_t kMaxSizeBytes = 3; // of the header size
constexpr std::uint64_t kResync = 64 << 20; // how far behind a damaged header the next one is looked for
constexpr std::uint64_t kMaxDictionary = std::uint64_t{64} << 30;

enum class Type : std::uint8_t { Main = 1, File = 2, Service = 3, Encryption = 4, End = 5 };
namespace flag {
constexpr std::uint64_t kExtra = 1, kData = 2, kContinued = 8, kGoesOn = 0x10;
constexpr std::uint64_t kMainVolume = 1, kMainNumber = 2, kMainSolid = 4;
constexpr std::uint64_t kFolder = 1, kUnixTime = 2, kCrc = 4, kUnknownSize = 8;
constexpr std::uint64_t kEndGoesOn = 1;
}
constexpr std::uint64_t kHostWindows = 0;

/// Numbers of 7 bits a byte, low ones first.
std::uint64_t vint(ByteReader& in)
{
    std::uint64_t value = 0;
    for (unsigned shift = 0; in.ok(); shift += 7) {
        const auto byte = in.u8();
        const std::uint64_t bits = byte & 0x7F;
        if (shift > 63 || (shift == 63 && bits > 1)) {
            in.seek(std::numeric_limits<std::size_t>::max()); // too large: as though the field were cut
            return 0;
        }
        value |= bits << shift;
        if ((byte & 0x80) == 0)
            break;
    }
    return value;
}

ConstBytes sizedField(ByteReader& in)
{
    const auto size = vint(in);
    if (size > in.remaining()) {
        in.seek(std::numeric_limits<std::size_t>::max());
        return {};
    }
    return in.take(static_cast<std::size_t>(size));
}

struct Block {
    std::uint64_t type = 0, flags = 0;
    ConstBytes fields; // those of the type
    ConstBytes extra;
    std::uint64_t dataStart = 0, dataSize = 0;
};

/// The part of a header behind its size; nothing when the fields do not fit.
std::optional<Block> parseBlock(ConstBytes body)
{
    ByteReader in{body};
    Block block;
    block.type = vint(in);
    block.flags = vint(in);
    const auto extraSize = (block.flags & flag::kExtra) != 0 ? vint(in) : 0;
    block.dataSize = (block.flags & flag::kData) != 0 ? vint(in) : 0;
    if (!in.ok() || extraSize > in.remaining())
        return std::nullopt;
    block.fields = in.take(in.remaining() - static_cast<std::size_t>(extraSize));
    block.extra = in.rest();
    return block;
}

void readTimes(ByteReader& in, RarMember& member)
{
    const auto flags = vint(in);
    const auto isUnix = (flags & 1) != 0;
    const std::array<Timestamp*, 3> targets{&member.modified, &member.created, &member.accessed};
    for (std::size_t i = 0; i < targets.size(); ++i) {
        if ((flags >> (i + 1) & 1) == 0)
            continue;
        const auto time = isUnix ? unixTime(in.le32()) : fileTime(in.le64());
        if (in.ok())
            *targets[i] = time;
    }
    for (std::size_t i = 0; isUnix && (flags & 0x10) != 0 && i < targets.size(); ++i) {
        if ((flags >> (i + 1) & 1) == 0)
            continue;
        const auto nanoseconds = in.le32() & 0x3FFFFFFF;
        if (in.ok() && nanoseconds < 1'000'000'000)
            targets[i]->nanoseconds = nanoseconds;
    }
}

void readRedirection(ByteReader& in, bool fromWindows, RarMember& member)
{
    enum : std::uint64_t { UnixLink = 1, WindowsLink, Junction, HardLink, FileCopy };
    const auto kind = vint(in);
    vint(in); // whether the target is a folder: nothing depends on it
    const auto target = asText(sizedField(in));
    if (!in.ok())
        return;
    auto& link = member.makeExtras().linkTarget;
    if (kind == WindowsLink || kind == Junction) {
        link = target.substr(0, target.find('\0'));
        std::replace(link.begin(), link.end(), '\\', '/');
        if (link.starts_with("/?"
                             "?/"))
            link.erase(0, 4);
    } else {
        link = newText(target, fromWindows && kind != UnixLink).text;
    }
    if (kind == HardLink)
        member.kind = EntryKind::HardLink;
    else if (kind == FileCopy)
        member.isFileCopy = true;
    else if (kind >= UnixLink && kind <= Junction)
        member.kind = EntryKind::SymbolicLink;
}

bool readEncryption(ByteReader& in, RarMember& member)
{
    auto encryption = std::make_shared<RarEncryption>();
    const auto version = vint(in);
    const auto flags = vint(in);
    encryption->hasCheck = (flags & 1) != 0;
    encryption->hasKeyedChecksums = (flags & 2) != 0;
    encryption->exponent = in.u8();
    const auto salt = in.take(encryption->salt.size());
    const auto iv = in.take(encryption->iv.size());
    const auto check = encryption->hasCheck ? in.take(encryption->check.size()) : ConstBytes();
    if (!in.ok() || version != 0 || encryption->exponent > kRar5MaxExponent)
        return false;
    std::copy(salt.begin(), salt.end(), encryption->salt.begin());
    std::copy(iv.begin(), iv.end(), encryption->iv.begin());
    std::copy(check.begin(), check.end(), encryption->check.begin());
    encryption->saltSize = static_cast<std::uint8_t>(salt.size());
    member.encryption = std::move(encryption);
    return true;
}

void readOwner(ByteReader& in, RarMember& member)
{
    const auto flags = vint(in);
    auto& extras = member.makeExtras();
    if ((flags & 1) != 0)
        extras.owner = asText(sizedField(in));
    if ((flags & 2) != 0)
        extras.group = asText(sizedField(in));
}

void readExtra(ConstBytes extra, bool fromWindows, RarMember& member)
{
    enum : std::uint64_t { Encryption = 1, Hash, Times, Version, Redirection, Owner };
    ByteReader records{extra};
    while (records.remaining() > 0) {
        ByteReader in{sizedField(records)};
        if (!records.ok())
            return;
        switch (vint(in)) {
        case Encryption:
            if (!readEncryption(in, member)) {
                // Read as though it were plain, the data would only look damaged.
                member.method = RarMethod::Unknown;
            }
            break;
        case Hash:
            if (vint(in) == 0) {
                std::array<std::byte, 32> hash{};
                const auto stored = in.take(hash.size());
                std::copy(stored.begin(), stored.end(), hash.begin());
                if (in.ok())
                    member.makeExtras().hash = hash;
            }
            break;
        case Times:
            readTimes(in, member);
            break;
        case Version:
            vint(in);
            if (const auto version = vint(in); in.ok())
                member.name += ";" + std::to_string(version);
            break;
        case Redirection:
            readRedirection(in, fromWindows, member);
            break;
        case Owner:
            readOwner(in, member);
            break;
        default:
            break;
        }
    }
}

/// Which codec, how hard, how much history.
void readCompression(std::uint64_t info, RarMember& member)
{
    const auto algorithm = info & 0x3F;
    const auto level = info >> 7 & 7;
    member.isSolid = (info & 0x40) != 0;
    member.level = static_cast<std::uint8_t>(level);
    auto dictionary = std::uint64_t{128 << 10} << (info >> 10 & (algorithm == 0 ? 15 : 31));
    if (algorithm == 1)
        dictionary += dictionary / 32 * (info >> 15 & 31);
    member.dictionary = dictionary;
    if (level == 0)
        member.method = RarMethod::Stored;
    else if (algorithm > 1 || level > 5 || dictionary > kMaxDictionary)
        member.method = RarMethod::Unknown;
    else
        member.method = algorithm == 1 && (info >> 20 & 1) == 0 ? RarMethod::Rar70 : RarMethod::Rar50;
}

Result<RarMember> parseFile(const Block& block)
{
    ByteReader in{block.fields};
    RarMember member;
    const auto flags = vint(in);
    const auto size = vint(in);
    const auto attributes = vint(in);
    if ((flags & flag::kUnixTime) != 0)
        member.modified = unixTime(in.le32());
    if ((flags & flag::kCrc) != 0) {
        member.crc = in.le32();
        member.checksum = RarChecksum::Crc32;
    }
    const auto compression = vint(in);
    const auto fromWindows = vint(in) == kHostWindows;
    const auto name = asText(sizedField(in));
    if (!in.ok())
        return Error{ErrorCode::Corrupt, "rar5: file header"};
    if ((flags & flag::kUnknownSize) == 0)
        member.size = size;
    readCompression(compression, member);
    auto text = newText(name, fromWindows);
    member.name = std::move(text.text);
    member.charset = text.charset;
    member.pathStyle = fromWindows ? PathStyle::Dos : PathStyle::Unix;
    if (!fromWindows) {
        member.mode = static_cast<std::uint32_t>(attributes & 0xFFFF);
        if (kindOfMode(*member.mode) == EntryKind::Other)
            member.kind = EntryKind::Other;
    }
    readExtra(block.extra, fromWindows, member);
    if ((flags & flag::kFolder) != 0)
        member.kind = EntryKind::Folder;
    return member;
}

class NewScan {
public:
    NewScan(RarHeaderInput& in, const RarScanContext& context, RarMemberSink& sink)
        : m_in(in)
        , m_context(context)
        , m_sink(sink)
    {
    }
    Result<RarVolumeFacts> run(std::uint64_t mark);

private:
    enum class Step : std::uint8_t { GoOn, Stop };

    Result<std::optional<Block>> readBlock(std::uint64_t position);
    Result<std::optional<Block>> readPlainBlock(std::uint64_t position);
    Result<std::optional<Block>> readCipherBlock(std::uint64_t position);
    Result<std::optional<ConstBytes>> decryptHeader(std::uint64_t position, std::size_t form, std::size_t& stored);
    Result<Step> take(Block& block);
    Result<Step> takeFile(const Block& block, RarMember member);
    Result<void> takeEncryption(const Block& block);
    void takeMain(const Block& block);
    Result<std::optional<std::uint64_t>> findNextFile(std::uint64_t from);

    RarHeaderInput& m_in;
    const RarScanContext& m_context;
    RarMemberSink& m_sink;
    RarVolumeFacts m_facts;
    std::optional<RarEncryption> m_encryption; // of the headers
    std::optional<std::size_t> m_form; // of the password that opens them
    std::vector<std::byte> m_plain; // the header at hand
    bool m_sawMain = false;
    bool m_sawFile = false;
    bool m_sawEnd = false;
};

/// The header that starts `block` (with its checksum), without what precedes the type; nothing if it is not whole or
/// its checksum is wrong.
struct Framed {
    ConstBytes body;
    std::size_t size = 0; // with checksum and size
};
std::optional<Framed> frame(ConstBytes block)
{
    ByteReader in{block};
    const auto crc = in.le32();
    const auto start = in.position();
    const auto size = vint(in);
    if (!in.ok() || in.position() - start > kMaxSizeBytes || size < 2 || size > kMaxHeader || size > in.remaining())
        return std::nullopt;
    const auto body = in.take(static_cast<std::size_t>(size));
    if (crc32(0, block.subspan(start, in.position() - start)) != crc)
        return std::nullopt;
    return Framed{body, in.position()};
}

/// Size of the header with checksum and size, as its first bytes state it; 0 when they cannot be right.
std::size_t statedSize(ConstBytes start)
{
    ByteReader in{start};
    in.skip(4);
    const auto size = vint(in);
    if (!in.ok() || in.position() > 4 + kMaxSizeBytes || size < 2 || size > kMaxHeader)
        return 0;
    return in.position() + static_cast<std::size_t>(size);
}

Result<std::optional<Block>> NewScan::readPlainBlock(std::uint64_t position)
{
    const auto size = statedSize(TRY(m_in.at(position, 4 + kMaxSizeBytes)));
    const auto header = TRY(m_in.at(position, size));
    m_plain.assign(header.begin(), header.end());
    const auto framed = frame(m_plain);
    auto block = framed ? parseBlock(framed->body) : std::nullopt;
    if (block)
        block->dataStart = position + framed->size;
    return block;
}

/// The header at `position` in plain, filled up to 16 bytes; `stored` is its size in the file.
Result<std::optional<ConstBytes>> NewScan::decryptHeader(std::uint64_t position, std::size_t form, std::size_t& stored)
{
    constexpr std::size_t kIv = 16;
    const auto key = TRY(m_context.keys->rar5Key(form, *m_encryption));
    const auto start = TRY(m_in.at(position, kIv + 16));
    if (start.size() < kIv + 16)
        return std::optional<ConstBytes>();
    const std::vector<std::byte> iv(start.begin(), start.begin() + kIv);
    m_plain.assign(start.begin() + kIv, start.end());
    TRY(decryptAesCbc(m_plain, key.key, iv));
    const auto padded = (statedSize(m_plain) + 15) / 16 * 16;
    const auto whole = TRY(m_in.at(position + kIv, padded));
    if (padded == 0 || whole.size() < padded)
        return std::optional<ConstBytes>();
    m_plain.assign(whole.begin(), whole.end());
    TRY(decryptAesCbc(m_plain, key.key, iv));
    stored = kIv + padded;
    return std::optional<ConstBytes>(m_plain);
}

Result<std::optional<Block>> NewScan::readCipherBlock(std::uint64_t position)
{
    std::size_t stored = 0;
    if (!m_form) {
        const auto opens = [&](std::size_t form) -> Result<bool> {
            const auto key = TRY(m_context.keys->rar5Key(form, *m_encryption));
            if (m_encryption->hasCheck) {
                if (const auto matches = matchesRar5Check(key, m_encryption->check))
                    return *matches;
            }
            const auto plain = TRY(decryptHeader(position, form, stored));
            return plain && frame(*plain).has_value();
        };
        m_form = TRY(m_context.keys->unlock(opens));
        m_facts.headerForm = m_form;
    }
    const auto plain = TRY(decryptHeader(position, *m_form, stored));
    const auto framed = plain ? frame(*plain) : std::nullopt;
    auto block = framed ? parseBlock(framed->body) : std::nullopt;
    if (block)
        block->dataStart = position + stored;
    return block;
}

Result<std::optional<Block>> NewScan::readBlock(std::uint64_t position)
{
    return m_encryption ? readCipherBlock(position) : readPlainBlock(position);
}

void NewScan::takeMain(const Block& block)
{
    ByteReader in{block.fields};
    const auto flags = vint(in);
    m_facts.isVolume = (flags & flag::kMainVolume) != 0;
    m_facts.isSolid = (flags & flag::kMainSolid) != 0;
    const auto number = (flags & flag::kMainNumber) != 0 ? vint(in) : 0;
    if (m_facts.isVolume && in.ok()) {
        m_facts.number = number;
        m_facts.isFirst = number == 0;
    }
    m_sawMain = true;
}

Result<void> NewScan::takeEncryption(const Block& block)
{
    ByteReader in{block.fields};
    RarEncryption encryption;
    const auto version = vint(in);
    encryption.hasCheck = (vint(in) & 1) != 0;
    encryption.exponent = in.u8();
    const auto salt = in.take(encryption.salt.size());
    const auto check = encryption.hasCheck ? in.take(encryption.check.size()) : ConstBytes();
    if (!in.ok())
        return Error{ErrorCode::Corrupt, "rar5: encryption header"};
    if (version != 0 || encryption.exponent > kRar5MaxExponent)
        return Error{ErrorCode::UnsupportedEncryption, "rar5: encryption header"};
    std::copy(salt.begin(), salt.end(), encryption.salt.begin());
    std::copy(check.begin(), check.end(), encryption.check.begin());
    encryption.saltSize = static_cast<std::uint8_t>(salt.size());
    m_encryption = encryption;
    m_facts.hasEncryptedHeaders = true;
    return {};
}

Result<NewScan::Step> NewScan::takeFile(const Block& block, RarMember member)
{
    const auto continues = (block.flags & flag::kContinued) != 0;
    const auto goesOn = (block.flags & flag::kGoesOn) != 0;
    if (!m_sawFile)
        m_facts.continues = continues;
    m_sawFile = true;
    m_facts.goesOn = goesOn;
    return TRY(m_sink.member(std::move(member), continues, goesOn)) ? Step::GoOn : Step::Stop;
}

Result<NewScan::Step> NewScan::take(Block& block)
{
    const auto room = m_in.size() - std::min(m_in.size(), block.dataStart);
    switch (static_cast<Type>(std::min<std::uint64_t>(block.type, 0xFF))) {
    case Type::Main:
        if (!m_sawMain)
            takeMain(block);
        return Step::GoOn;
    case Type::Encryption:
        if (!m_encryption)
            TRY(takeEncryption(block));
        return Step::GoOn;
    case Type::File:
    case Type::Service: {
        auto member = parseFile(block);
        if (!member) {
            m_sink.damage(member.error());
            return Step::GoOn;
        }
        member->part = {m_context.volume, block.dataStart, std::min(block.dataSize, room)};
        if (block.dataSize > room)
            m_sink.damage({ErrorCode::Truncated, "rar5: data past the end"});
        if (block.type == static_cast<std::uint64_t>(Type::File))
            return takeFile(block, *std::move(member));
        if (member->name == "CMT" && !m_facts.comment) {
            member->isSolid = false;
            m_facts.comment = *std::move(member);
            m_facts.isCommentUtf8 = true;
        }
        return Step::GoOn;
    }
    case Type::End: {
        ByteReader in{block.fields};
        m_facts.goesOn = (vint(in) & flag::kEndGoesOn) != 0;
        m_sawEnd = true;
        return Step::Stop;
    }
    default:
        return Step::GoOn;
    }
}

/// A file header with the right checksum behind damage.
Result<std::optional<std::uint64_t>> NewScan::findNextFile(std::uint64_t from)
{
    const auto end = std::min(m_in.size(), from + kResync);
    for (auto position = from; position + 12 <= end; ++position) {
        if ((position & 0xFFFF) == 0)
            TRY(m_context.cancel.check());
        // Checksum (4 bytes), size (one or two), then the type: cheap to rule out.
        const auto start = TRY(m_in.at(position, 12));
        const auto typeAt = (start[4] & std::byte{0x80}) != std::byte{0} ? 6U : 5U;
        const auto type = std::to_integer<unsigned>(start[typeAt]);
        if (type != static_cast<unsigned>(Type::File) && type != static_cast<unsigned>(Type::End))
            continue;
        if (TRY(readPlainBlock(position)))
            return std::optional(position);
    }
    return std::optional<std::uint64_t>();
}

Result<RarVolumeFacts> NewScan::run(std::uint64_t mark)
{
    auto position = mark + kMarker;
    while (position < m_in.size()) {
        TRY(m_context.cancel.check());
        auto block = TRY(readBlock(position));
        if (block) {
            if (TRY(take(*block)) == Step::Stop)
                return std::move(m_facts);
            position = TRY(checkedAdd(block->dataStart, block->dataSize));
            continue;
        }
        m_sink.damage({ErrorCode::Corrupt, "rar5: damaged header"});
        const auto next = m_encryption ? std::nullopt : TRY(findNextFile(position + 1));
        if (!next)
            break;
        position = *next;
    }
    if (!m_sawMain && !m_sawFile)
        return Error{ErrorCode::Corrupt, "rar5: no header"};
    if (!m_sawEnd)
        m_sink.damage({ErrorCode::Truncated, "rar5: no end of archive"});
    return std::move(m_facts);
}

}

Result<RarVolumeFacts> scanNewRar(RarHeaderInput& in, std::uint64_t mark, const RarScanContext& context,
                                  RarMemberSink& sink)
{
    return NewScan(in, context, sink).run(mark);
}

}
