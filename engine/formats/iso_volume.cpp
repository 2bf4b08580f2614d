#include "engine/formats/iso_volume.h"

#include "engine/text/utf16.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr unsigned kMostDescriptors = 64;
constexpr std::size_t kRecordHead = 33; // bytes before the identifier

struct Descriptor {
    unsigned type = 0;
    std::uint32_t blockSize = 0;
    bool isJoliet = false;
    std::uint64_t rootPosition = 0;
    std::uint32_t rootSize = 0;

    static std::optional<Descriptor> parse(ConstBytes sector)
    {
        ByteReader in(sector);
        Descriptor descriptor;
        descriptor.type = in.u8();
        if (in.text(5) != "CD001")
            return std::nullopt;
        in.seek(88);
        const auto escape = in.text(3);
        descriptor.isJoliet = escape == "%/@" || escape == "%/C" || escape == "%/E";
        in.seek(128);
        descriptor.blockSize = in.le16();
        in.seek(156);
        if (const auto root = IsoRecord::parse(in.take(34), descriptor.blockSize)) {
            descriptor.rootPosition = root->position;
            descriptor.rootSize = root->size;
        }
        return descriptor;
    }
    bool isUsable() const
    {
        return (blockSize == 512 || blockSize == 1024 || blockSize == 2048) && rootPosition != 0 && rootSize != 0;
    }
};

/// Without ";1", and for plain names without the dot that stands before no extension.
void stripVersion(std::string& name, bool stripsDot)
{
    const auto semicolon = name.rfind(';');
    if (semicolon != std::string::npos && semicolon + 1 < name.size()
        && name.find_first_not_of("0123456789", semicolon + 1) == std::string::npos)
        name.resize(semicolon);
    if (stripsDot && name.size() > 1 && name.back() == '.')
        name.pop_back();
}

/// Whether the root folder's own record bears the extension's mark.
bool hasRockRidge(const ByteSource& source, const Descriptor& primary, RockRidgeParser& parser)
{
    const auto block = readBlock(source, primary.rootPosition, kIsoSector);
    if (!block)
        return false;
    const auto self = IsoRecord::parse(*block, primary.blockSize);
    return self && parser.detect(self->systemUse);
}

}

std::optional<IsoRecord> IsoRecord::parse(ConstBytes block, std::uint32_t blockSize)
{
    if (block.empty())
        return std::nullopt;
    const auto length = std::to_integer<std::size_t>(block[0]);
    if (length <= kRecordHead || length > block.size())
        return std::nullopt;
    ByteReader in(block.first(length));
    in.skip(1);
    IsoRecord record;
    const unsigned attributeBlocks = in.u8();
    record.position = (std::uint64_t{in.le32()} + attributeBlocks) * blockSize;
    in.skip(4); // each number is stored in both byte orders
    record.size = in.le32();
    in.skip(4);
    record.modified = isoShortDate(in.take(7));
    record.flags = in.u8();
    record.isInterleaved = in.le16() != 0;
    in.skip(4); // volume of the set
    const std::size_t nameLength = in.u8();
    record.identifier = in.text(nameLength);
    if (nameLength % 2 == 0)
        in.skip(std::min<std::size_t>(1, in.remaining()));
    if (!in.ok() || nameLength == 0)
        return std::nullopt;
    record.systemUse = in.rest();
    return record;
}

Result<IsoVolume> IsoVolume::open(const ByteSource& source)
{
    std::optional<Descriptor> primary, joliet;
    for (unsigned i = 0; i < kMostDescriptors; ++i) {
        const auto sector = TRY(readBlock(source, kIsoDescriptors + i * kIsoSector, kIsoSector));
        const auto descriptor = Descriptor::parse(sector);
        if (!descriptor || descriptor->type == 255)
            break;
        if (descriptor->type == 1 && !primary && descriptor->isUsable())
            primary = descriptor;
        if (descriptor->type == 2 && !joliet && descriptor->isJoliet && descriptor->isUsable())
            joliet = descriptor;
    }
    const auto make = [&](Names kind, const Descriptor& chosen) {
        return IsoVolume{kind, chosen.blockSize, chosen.rootPosition, chosen.rootSize,
                         RockRidgeParser(source, chosen.blockSize)};
    };
    if (primary) {
        auto volume = make(Names::RockRidge, *primary);
        if (hasRockRidge(source, *primary, volume.rockRidge))
            return volume;
    }
    if (joliet)
        return make(Names::Joliet, *joliet);
    if (primary)
        return make(Names::Plain, *primary);
    return Error{ErrorCode::Corrupt, "iso: no volume descriptor that can be used"};
}

std::string IsoVolume::nameOf(const IsoRecord& record) const
{
    auto name = names == Names::Joliet ? utf8FromUtf16(asBytes(record.identifier), std::endian::big)
                                       : std::string(record.identifier);
    if (!(record.flags & IsoRecord::kFolder))
        stripVersion(name, names != Names::Joliet);
    return name;
}

}
