#include "engine/crypto/crc32.h"
#include "engine/formats/rar/scan.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::string_view kMark14 = "RE~^";
constexpr std::string_view kMarkStart = "Rar!\x1A\x07"; // of the later ones
constexpr std::size_t kSearch = 4 << 20; // self-extractors are smaller

/// The header behind the marker has its checksum, or lies beyond what is at hand.
bool isHeaderValid(ConstBytes at, RarGeneration generation)
{
    if (generation == RarGeneration::Rar14)
        return at.size() >= 7 && std::to_integer<unsigned>(at[4]) + 256 * std::to_integer<unsigned>(at[5]) >= 7;
    if (generation == RarGeneration::Old) {
        ByteReader in{at};
        in.skip(7);
        const auto crc = in.le16();
        const auto type = in.u8();
        const auto flags = in.le16();
        const auto covered = std::size_t{(flags & 0x0200) != 0 ? 14U : 13U} - 2;
        in.seek(9);
        const auto header = in.take(covered);
        return in.ok() && type == 0x73 && static_cast<std::uint16_t>(crc32(0, header)) == crc;
    }
    ByteReader in{at};
    in.skip(8);
    const auto crc = in.le32();
    const auto start = in.position();
    const auto size = in.u8(); // a main or encryption header is short
    in.skip(size);
    return in.ok() && size < 0x80 && crc32(0, at.subspan(start, size + 1U)) == crc;
}

std::optional<RarMark> markAt(ConstBytes head, std::size_t offset)
{
    const auto text = asText(head.subspan(offset));
    if (text.starts_with(kMark14)) {
        // Four bytes are little: away from the start the program in front must be the packer's.
        if (offset > 0 && (head.size() < 32 || asText(head.subspan(28, 4)) != "RSFX"))
            return std::nullopt;
        return RarMark{RarGeneration::Rar14, offset};
    }
    if (text.starts_with(kMarkStart) && text.size() > 7) {
        if (text[6] == '\0')
            return RarMark{RarGeneration::Old, offset};
        if (text[6] == '\1' && text[7] == '\0')
            return RarMark{RarGeneration::New, offset};
    }
    return std::nullopt;
}

}

std::optional<RarMark> findRarMark(ConstBytes head)
{
    if (const auto mark = markAt(head, 0))
        return mark;
    const auto text = asText(head);
    for (std::size_t at = 1; at < text.size(); ++at) {
        at = text.find('R', at);
        if (at == std::string_view::npos)
            break;
        const auto mark = markAt(head, at);
        if (mark && isHeaderValid(head.subspan(at), mark->generation))
            return mark;
    }
    return std::nullopt;
}

Result<std::optional<RarMark>> findRarMark(const ByteSource& source)
{
    if (const auto mark = findRarMark(TRY(readBlock(source, 0, 32))))
        return mark;
    return findRarMark(TRY(readBlock(source, 0, kSearch)));
}

Result<RarVolumeFacts> scanRar(RarHeaderInput& in, const RarMark& mark, const RarScanContext& context,
                               RarMemberSink& sink)
{
    switch (mark.generation) {
    case RarGeneration::Rar14:
        return scanRar14(in, mark.offset, context, sink);
    case RarGeneration::Old:
        return scanOldRar(in, mark.offset, context, sink);
    default:
        return scanNewRar(in, mark.offset, context, sink);
    }
}

}
