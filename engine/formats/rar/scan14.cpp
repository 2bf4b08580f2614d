#include "engine/formats/rar/scan.h"
#include "engine/formats/rar/text.h"
#include "engine/formats/stored_time.h"

// The container of rar 1.4: no block types, no checksums of headers, no end mark.

namespace vantoro {

namespace {

constexpr std::size_t kMainHeader = 7;
constexpr std::size_t kFileHeader = 21;
constexpr std::size_t kMaxHeader = 0x10000;

namespace main_flag {
constexpr unsigned kVolume = 1, kComment = 2, kSolid = 8, kPackedComment = 0x10;
}
namespace file_flag {
constexpr unsigned kContinued = 1, kGoesOn = 2, kEncrypted = 4;
}

void readComment(ByteReader& in, unsigned flags, std::uint64_t headerStart, const RarScanContext& context,
                 RarVolumeFacts& facts)
{
    const auto length = in.le16();
    if ((flags & main_flag::kPackedComment) == 0) {
        facts.plainComment = in.text(length);
        return;
    }
    RarMember comment;
    comment.size = in.le16();
    comment.method = RarMethod::Rar15;
    comment.part = {context.volume, headerStart + in.position(), length > 2 ? length - 2U : 0U};
    if (in.ok()) {
        facts.comment = std::move(comment);
        facts.isCommentEnciphered14 = true;
    }
}

struct FileHeader {
    RarMember member;
    unsigned flags = 0;
    std::size_t size = 0;
};

/// Nothing where no header stands: the end of the list.
std::optional<FileHeader> parseFile(ConstBytes block)
{
    ByteReader in{block};
    FileHeader header;
    auto& member = header.member;
    member.part.length = in.le32();
    member.size = in.le32();
    member.crc = in.le16();
    header.size = in.le16();
    member.modified = nearestDosTime(in.le32());
    const auto attributes = in.u8();
    header.flags = in.u8();
    const auto version = in.u8();
    const auto nameLength = in.u8();
    const auto method = in.u8();
    const auto name = in.take(nameLength);
    if (!in.ok() || nameLength == 0 || header.size < kFileHeader + nameLength || method > 5)
        return std::nullopt;
    setOldName(member, name, false, true);
    member.checksum = RarChecksum::Sum14;
    member.kind = (attributes & 0x10) != 0 ? EntryKind::Folder : EntryKind::File;
    member.method = version == 2 && method > 0 ? RarMethod::Rar15 : RarMethod::Stored;
    member.level = method;
    if ((header.flags & file_flag::kEncrypted) != 0) {
        static const auto encryption = [] {
            auto made = std::make_shared<RarEncryption>();
            made->scheme = RarEncryption::Scheme::Rar14;
            return made;
        }();
        member.encryption = encryption;
    }
    return header;
}

}

Result<RarVolumeFacts> scanRar14(RarHeaderInput& in, std::uint64_t mark, const RarScanContext& context,
                                 RarMemberSink& sink)
{
    RarVolumeFacts facts;
    facts.naming = RarNaming::Letters;
    const auto block = TRY(in.at(mark, kMaxHeader));
    ByteReader main{block};
    main.skip(4);
    const auto headerSize = main.le16();
    const auto flags = main.u8();
    if (!main.ok() || headerSize < kMainHeader)
        return Error{ErrorCode::Corrupt, "rar 1.4: main header"};
    facts.isVolume = (flags & main_flag::kVolume) != 0;
    facts.isSolid = (flags & main_flag::kSolid) != 0;
    if ((flags & main_flag::kComment) != 0)
        readComment(main, flags, mark, context, facts);

    bool isFirst = true;
    for (auto position = mark + headerSize; position < in.size();) {
        TRY(context.cancel.check());
        auto header = parseFile(TRY(in.at(position, kFileHeader + 255)));
        if (!header)
            break;
        const auto continues = (header->flags & file_flag::kContinued) != 0;
        const auto goesOn = (header->flags & file_flag::kGoesOn) != 0;
        const auto data = position + header->size;
        position = data + header->member.part.length;
        if (position > in.size()) {
            sink.damage({ErrorCode::Truncated, "rar 1.4: data past the end"});
            header->member.part.length = data < in.size() ? in.size() - data : 0;
        }
        header->member.part.volume = context.volume;
        header->member.part.offset = data;
        header->member.isSolid = facts.isSolid;
        if (isFirst)
            facts.continues = continues;
        isFirst = false;
        facts.goesOn = goesOn;
        if (!TRY(sink.member(std::move(header->member), continues, goesOn)))
            break;
    }
    return facts;
}

}
