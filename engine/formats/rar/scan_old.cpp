#include "engine/crypto/aes_cbc.h"
#include "engine/crypto/crc32.h"
#include "engine/formats/rar/scan.h"
#include "engine/formats/rar/text.h"
#include "engine/formats/stored_time.h"

#include <algorithm>

// The container of rar 1.5 to 4.

namespace vantoro {

namespace {

constexpr std::size_t kMarker = 7;
constexpr std::size_t kCommon = 7;
constexpr std::size_t kMaxHeader = 0x10000;
constexpr std::size_t kSalt = 8;
constexpr std::uint64_t kResync = 64 << 20; // how far behind a damaged header the next one is looked for
constexpr std::uint64_t kMaxFilling = 2048; // bytes behind the last entry that are no damage

namespace type {
constexpr std::uint8_t kMain = 0x73, kFile = 0x74, kComment = 0x75, kAuthenticity = 0x76, kSub = 0x77, kRecovery = 0x78,
                       kSignature = 0x79, kService = 0x7A, kEnd = 0x7B;
}
namespace flag {
constexpr unsigned kHasData = 0x8000;
constexpr unsigned kMainVolume = 1, kMainComment = 2, kMainSolid = 8, kMainNumbers = 0x10, kMainEncrypted = 0x80,
                   kMainFirst = 0x100, kMainVersion = 0x200;
constexpr unsigned kContinued = 1, kGoesOn = 2, kEncrypted = 4, kEmbedded = 8, kSolid = 0x10, kLarge = 0x100,
                   kUnicode = 0x200, kSalted = 0x400, kTimes = 0x1000;
constexpr unsigned kEndGoesOn = 1;
}
constexpr unsigned kHostDos = 0, kHostOs2 = 1, kHostWindows = 2, kHostUnix = 3, kHostBeOs = 5;
constexpr std::uint64_t kUnknown32 = 0xFFFFFFFF;

struct Block {
    std::uint8_t kind = 0;
    unsigned flags = 0;
    ConstBytes header;
    std::uint64_t dataStart = 0; // in the volume
    std::uint64_t dataSize = 0;
    bool isChecked = false; // the checksum was there to be compared, and is right
    bool isWrong = false;
};

/// A file or service header, and where its checksum ends.
struct FileHeader {
    RarMember member;
    std::size_t checkedEnd = 0;
};

RarMethod methodOf(unsigned version, unsigned method)
{
    if (method == 0x30)
        return RarMethod::Stored;
    if (method < 0x30 || method > 0x35 || version < 13 || version > 40)
        return RarMethod::Unknown;
    return version < 20 ? RarMethod::Rar15 : version < 29 ? RarMethod::Rar20 : RarMethod::Rar29;
}

std::uint64_t dictionaryOf(RarMethod method)
{
    // The most that the method uses: what the header says is only the packer's choice.
    return method == RarMethod::Rar15 ? 64 << 10 : method == RarMethod::Rar20 ? 1 << 20 : 4 << 20;
}

void setKind(RarMember& member, unsigned host, std::uint32_t attributes, unsigned flags, unsigned version)
{
    const auto fromDos = host <= kHostWindows;
    auto isFolder = (flags >> 5 & 7) == 7;
    if (version < 20)
        isFolder = fromDos && (attributes & 0x10) != 0;
    if (isFolder)
        member.kind = EntryKind::Folder;
    if (host != kHostUnix && host != kHostBeOs)
        return;
    member.mode = attributes & 0xFFFF;
    const auto kind = kindOfMode(attributes).value_or(EntryKind::File);
    if (kind != EntryKind::File)
        member.kind = kind;
}

Result<FileHeader> parseFile(ConstBytes header, unsigned flags)
{
    FileHeader result;
    auto& member = result.member;
    ByteReader in{header};
    in.skip(7);
    std::uint64_t packed = in.le32();
    std::uint64_t size = in.le32();
    const auto host = in.u8();
    member.crc = in.le32();
    member.checksum = RarChecksum::Crc32;
    member.modified = nearestDosTime(in.le32());
    const auto version = in.u8();
    const auto method = in.u8();
    const auto nameSize = in.le16();
    const auto attributes = in.le32();
    auto isSizeUnknown = size == kUnknown32;
    if ((flags & flag::kLarge) != 0) {
        packed |= static_cast<std::uint64_t>(in.le32()) << 32;
        size |= static_cast<std::uint64_t>(in.le32()) << 32;
        isSizeUnknown = size == ~std::uint64_t{0};
    }
    const auto name = in.take(nameSize);
    if (!in.ok())
        return Error{ErrorCode::Corrupt, "rar: file header"};
    if (!isSizeUnknown)
        member.size = size;
    member.part.length = packed;
    member.method = methodOf(version, method);
    member.level = static_cast<std::uint8_t>(method >= 0x30 ? method - 0x30 : 0);
    member.isSolid = (flags & flag::kSolid) != 0;
    member.dictionary = dictionaryOf(member.method);
    setOldName(member, name, (flags & flag::kUnicode) != 0,
               host == kHostDos || host == kHostOs2 || host == kHostWindows);
    setKind(member, host, attributes, flags, version);
    ConstBytes salt;
    if ((flags & flag::kSalted) != 0)
        salt = in.take(kSalt);
    if ((flags & flag::kEncrypted) != 0) {
        auto encryption = std::make_shared<RarEncryption>();
        encryption->scheme = version < 20 ? RarEncryption::Scheme::Rar15
            : version < 29                ? RarEncryption::Scheme::Rar20
                                          : RarEncryption::Scheme::Rar3;
        std::copy(salt.begin(), salt.end(), encryption->salt.begin());
        encryption->saltSize = static_cast<std::uint8_t>(salt.size());
        member.encryption = std::move(encryption);
    }
    if ((flags & flag::kTimes) != 0)
        readExtendedTimes(in, member);
    result.checkedEnd = (flags & flag::kEmbedded) != 0 ? in.position() : header.size();
    return result;
}

class OldScan {
public:
    OldScan(RarHeaderInput& in, const RarScanContext& context, RarMemberSink& sink)
        : m_in(in)
        , m_context(context)
        , m_sink(sink)
    {
    }
    Result<RarVolumeFacts> run(std::uint64_t mark);

private:
    enum class Step : std::uint8_t { GoOn, Stop };

    Result<std::optional<Block>> readBlock(std::uint64_t position);
    Result<std::optional<ConstBytes>> readPlainHeader(std::uint64_t position);
    Result<std::optional<ConstBytes>> readCipherHeader(std::uint64_t position);
    Result<bool> opensWith(std::size_t form, ConstBytes cipherText);
    void completeBlock(Block& block, std::uint64_t headerEnd);
    Result<Step> take(Block& block);
    Result<Step> takeFile(const Block& block, RarMember member);
    void takeMain(const Block& block, std::uint64_t position);
    void takeComment(ConstBytes header, std::uint64_t position);
    Result<std::optional<std::uint64_t>> findNextFile(std::uint64_t from);

    RarHeaderInput& m_in;
    const RarScanContext& m_context;
    RarMemberSink& m_sink;
    RarVolumeFacts m_facts;
    std::optional<std::size_t> m_form; // of the password that opens the headers
    std::vector<std::byte> m_plain; // the header at hand
    std::uint64_t m_position = 0; // of the block at hand
    bool m_sawFile = false;
    bool m_sawEnd = false;
    bool m_sawMain = false;
};

bool isHeaderRight(ConstBytes header, std::size_t end)
{
    ByteReader in{header};
    return static_cast<std::uint16_t>(crc32(0, header.subspan(2, end - 2))) == in.le16();
}

Result<std::optional<ConstBytes>> OldScan::readPlainHeader(std::uint64_t position)
{
    const auto start = TRY(m_in.at(position, kCommon));
    if (start.size() < kCommon)
        return std::optional<ConstBytes>();
    const auto size = std::to_integer<std::size_t>(start[5]) | std::to_integer<std::size_t>(start[6]) << 8;
    const auto header = TRY(m_in.at(position, size));
    if (size < kCommon || header.size() < size)
        return std::optional<ConstBytes>();
    m_plain.assign(header.begin(), header.end()); // data behind it are looked at while it is in use
    return std::optional<ConstBytes>(m_plain);
}

std::size_t sizeOfPlain(ConstBytes plain)
{
    return std::to_integer<std::size_t>(plain[5]) | std::to_integer<std::size_t>(plain[6]) << 8;
}

/// Whether the password form gives a header with the right checksum. `cipherText` starts with the salt.
Result<bool> OldScan::opensWith(std::size_t form, ConstBytes cipherText)
{
    const auto key = TRY(m_context.keys->rar3Key(form, cipherText.first(kSalt)));
    std::vector<std::byte> plain(cipherText.begin() + kSalt, cipherText.end());
    plain.resize(plain.size() / 16 * 16);
    TRY(decryptAesCbc(plain, key.key, key.iv));
    const auto size = sizeOfPlain(plain);
    if (size < kCommon || size > plain.size() || plain[2] < std::byte{0x70} || plain[2] > std::byte{0x7F})
        return false;
    return isHeaderRight(plain, size);
}

Result<std::optional<ConstBytes>> OldScan::readCipherHeader(std::uint64_t position)
{
    if (!m_form) {
        const auto block = TRY(m_in.at(position, kSalt + kMaxHeader));
        if (block.size() < kSalt + 16)
            return std::optional<ConstBytes>();
        const std::vector<std::byte> cipherText(block.begin(), block.end());
        m_form = TRY(m_context.keys->unlock([&](std::size_t form) { return opensWith(form, cipherText); }));
        m_facts.headerForm = m_form;
    }
    const auto start = TRY(m_in.at(position, kSalt + 16));
    if (start.size() < kSalt + 16)
        return std::optional<ConstBytes>();
    const auto key = TRY(m_context.keys->rar3Key(*m_form, start.first(kSalt)));
    m_plain.assign(start.begin() + kSalt, start.end());
    TRY(decryptAesCbc(m_plain, key.key, key.iv));
    const auto size = sizeOfPlain(m_plain);
    const auto padded = (size + 15) / 16 * 16;
    const auto body = TRY(m_in.at(position + kSalt, padded));
    if (size < kCommon || body.size() < padded)
        return std::optional<ConstBytes>();
    m_plain.assign(body.begin(), body.end());
    TRY(decryptAesCbc(m_plain, key.key, key.iv));
    return std::optional(ConstBytes(m_plain).first(size));
}

void OldScan::completeBlock(Block& block, std::uint64_t headerEnd)
{
    ByteReader in{block.header};
    in.skip(2);
    block.kind = in.u8();
    block.flags = in.le16();
    in.skip(2);
    const auto hasSize = (block.flags & flag::kHasData) != 0 || block.kind == type::kFile || block.kind == type::kSub
        || block.kind == type::kRecovery || block.kind == type::kService;
    block.dataStart = headerEnd;
    if (hasSize)
        block.dataSize = in.le32();
    auto checkedEnd = block.header.size();
    if (block.kind == type::kMain)
        checkedEnd = std::min<std::size_t>(checkedEnd, (block.flags & flag::kMainVersion) != 0 ? 14 : 13);
    else if (block.kind == type::kComment)
        checkedEnd = std::min<std::size_t>(checkedEnd, 13);
    else if (block.kind == type::kSub && block.header.size() > 13)
        checkedEnd = block.header[11] == std::byte{1} || block.header[11] == std::byte{2} ? 0 : checkedEnd;
    else if (block.kind == type::kAuthenticity || block.kind == type::kSignature || block.kind == type::kFile
             || block.kind == type::kService)
        checkedEnd = 0; // those of files are compared when the header has been read
    block.isWrong = !in.ok() || (checkedEnd > 0 && !isHeaderRight(block.header, checkedEnd));
}

Result<std::optional<Block>> OldScan::readBlock(std::uint64_t position)
{
    const auto isCipher = m_facts.hasEncryptedHeaders;
    const auto header = TRY(isCipher ? readCipherHeader(position) : readPlainHeader(position));
    if (!header)
        return std::optional<Block>();
    Block block;
    block.header = *header;
    completeBlock(block, position + (isCipher ? kSalt + (header->size() + 15) / 16 * 16 : header->size()));
    return std::optional(block);
}

void OldScan::takeComment(ConstBytes header, std::uint64_t position)
{
    ByteReader in{header};
    in.skip(7);
    RarMember comment;
    comment.size = in.le16();
    const auto version = in.u8();
    const auto method = in.u8();
    in.skip(2);
    if (!in.ok() || header[2] != std::byte{type::kComment} || m_facts.comment)
        return;
    comment.method = methodOf(std::max<unsigned>(version, 13), method);
    comment.dictionary = dictionaryOf(comment.method);
    comment.part = {m_context.volume, position + in.position(), in.remaining()};
    ByteReader flags{header};
    flags.skip(3);
    if ((flags.le16() & flag::kEncrypted) == 0)
        m_facts.comment = std::move(comment);
}

void OldScan::takeMain(const Block& block, std::uint64_t position)
{
    const auto fixed = std::size_t{(block.flags & flag::kMainVersion) != 0 ? 14U : 13U};
    m_sawMain = true;
    m_facts.isVolume = (block.flags & flag::kMainVolume) != 0;
    m_facts.isSolid = (block.flags & flag::kMainSolid) != 0;
    m_facts.isFirst = (block.flags & flag::kMainFirst) != 0;
    m_facts.naming = (block.flags & flag::kMainNumbers) != 0 ? RarNaming::Numbers : RarNaming::Letters;
    m_facts.hasEncryptedHeaders = (block.flags & flag::kMainEncrypted) != 0;
    if ((block.flags & flag::kMainComment) != 0 && block.header.size() > fixed)
        takeComment(block.header.subspan(fixed), position + fixed);
}

Result<OldScan::Step> OldScan::takeFile(const Block& block, RarMember member)
{
    const auto continues = (block.flags & flag::kContinued) != 0;
    const auto goesOn = (block.flags & flag::kGoesOn) != 0;
    if (!m_sawFile)
        m_facts.continues = continues;
    m_sawFile = true;
    m_facts.goesOn = goesOn;
    // Before rar 2.0 the archive decides, later each entry.
    if (member.method == RarMethod::Rar15)
        member.isSolid = m_facts.isSolid;
    return TRY(m_sink.member(std::move(member), continues, goesOn)) ? Step::GoOn : Step::Stop;
}

/// Looks at a block; sets its data size where that takes reading the header.
Result<OldScan::Step> OldScan::take(Block& block)
{
    switch (block.kind) {
    case type::kMain:
        if (!block.isWrong && !m_sawMain)
            takeMain(block, m_position);
        return Step::GoOn;
    case type::kComment:
        if (!block.isWrong && !m_sawFile)
            takeComment(block.header, m_position);
        return Step::GoOn;
    case type::kFile:
    case type::kService: {
        auto parsed = parseFile(block.header, block.flags);
        block.isWrong = !parsed || !isHeaderRight(block.header, parsed->checkedEnd);
        if (block.isWrong)
            return Step::GoOn;
        auto& member = parsed->member;
        block.dataSize = member.part.length;
        member.part.volume = m_context.volume;
        member.part.offset = block.dataStart;
        if (block.dataSize > m_in.size() - std::min(m_in.size(), block.dataStart)) {
            m_sink.damage({ErrorCode::Truncated, "rar: data past the end"});
            member.part.length = m_in.size() - std::min(m_in.size(), block.dataStart);
        }
        if (block.kind == type::kFile)
            return takeFile(block, std::move(member));
        if (member.name == "CMT" && !member.isSolid && !m_facts.comment)
            m_facts.comment = std::move(member);
        return Step::GoOn;
    }
    case type::kEnd:
        m_sawEnd = true;
        m_facts.goesOn = (block.flags & flag::kEndGoesOn) != 0;
        return Step::Stop;
    default:
        return Step::GoOn;
    }
}

/// A file header with the right checksum behind damage.
Result<std::optional<std::uint64_t>> OldScan::findNextFile(std::uint64_t from)
{
    const auto end = std::min(m_in.size(), from + kResync);
    for (auto position = from; position + 32 <= end; ++position) {
        if ((position & 0xFFFF) == 0)
            TRY(m_context.cancel.check());
        const auto start = TRY(m_in.at(position, 32));
        if (start[2] != std::byte{type::kFile} || (start[4] & std::byte{0x80}) == std::byte{0})
            continue;
        const auto header = TRY(readPlainHeader(position));
        if (!header || header->size() < 32)
            continue;
        ByteReader flags{*header};
        flags.skip(3);
        const auto parsed = parseFile(*header, flags.le16());
        if (parsed && isHeaderRight(*header, parsed->checkedEnd))
            return std::optional(position);
    }
    return std::optional<std::uint64_t>();
}

Result<RarVolumeFacts> OldScan::run(std::uint64_t mark)
{
    m_position = mark + kMarker;
    while (m_position < m_in.size()) {
        TRY(m_context.cancel.check());
        auto block = TRY(readBlock(m_position));
        if (block && TRY(take(*block)) == Step::Stop)
            break;
        if (block && !block->isWrong) {
            m_position = TRY(checkedAdd(block->dataStart, block->dataSize));
            continue;
        }
        // Archives may end without an end mark, with filling behind the last entry.
        const auto next = m_facts.hasEncryptedHeaders ? std::nullopt : TRY(findNextFile(m_position + 1));
        if (next || m_in.size() - m_position >= kMaxFilling)
            m_sink.damage({ErrorCode::Corrupt, "rar: damaged header"});
        if (!next)
            break;
        m_position = *next;
    }
    if (m_position > m_in.size() && !m_sawEnd)
        m_sink.damage({ErrorCode::Truncated, "rar: the last entry is cut"});
    if (!m_sawMain && !m_sawFile)
        return Error{ErrorCode::Corrupt, "rar: no header"};
    return std::move(m_facts);
}

}

Result<RarVolumeFacts> scanOldRar(RarHeaderInput& in, std::uint64_t mark, const RarScanContext& context,
                                  RarMemberSink& sink)
{
    return OldScan(in, context, sink).run(mark);
}

}
