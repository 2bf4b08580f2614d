#include "engine/cage/protocol.h"

#include <algorithm>
#include <array>

namespace vantoro::cage {

namespace {

constexpr std::size_t kMaxAttributes = 64;
constexpr std::size_t kTexts = 6;
constexpr Error kBadBlock{ErrorCode::Corrupt, "cage: malformed entry"};

constexpr unsigned kHasSize = 1 << 0, kHasPackedSize = 1 << 1, kHasMode = 1 << 2, kHasSolidGroup = 1 << 3,
                   kIsEncrypted = 1 << 4;
constexpr unsigned kTimeIsSet = 1 << 5, kTimeIsLocal = 1 << 6; // two bits on for each time after the first
constexpr unsigned kAllFlags = (1 << 11) - 1;

/// The front of an entry's record. Its texts follow, then length, length, name, value of each attribute.
struct EntryFront {
    std::uint64_t index, size, packedSize;
    std::array<std::int64_t, 3> seconds; // modified, created, accessed
    std::array<std::uint32_t, 3> nanoseconds;
    std::uint32_t checksum, mode, solidGroup, nameCharset;
    std::array<std::uint32_t, kTexts> textLengths;
    std::uint16_t flags, attributeCount;
    std::uint8_t pathStyle, kind, checksumKind;
    std::array<std::uint8_t, 5> unused;
};
static_assert(std::has_unique_object_representations_v<EntryFront>, "no gap that would show what lay there before");

std::size_t sizeOf(const ExtendedAttribute& attribute)
{
    return 2 * sizeof(std::uint32_t) + attribute.name.size() + attribute.value.size();
}

/// The first ones that have room in the record and that the other side takes.
std::span<const ExtendedAttribute> fittingAttributes(const Entry& entry, std::size_t room)
{
    std::size_t count = 0;
    for (; count < std::min(entry.attributes.size(), kMaxAttributes); ++count) {
        const auto& attribute = entry.attributes[count];
        if (std::max(attribute.name.size(), attribute.value.size()) > kMaxText || sizeOf(attribute) > room)
            break;
        room -= sizeOf(attribute);
    }
    return entry.attributes.first(count);
}

static_assert(sizeof(EntryFront) + kTexts * kMaxText < kMaxRecord);

constexpr unsigned timeShift(std::size_t number) { return static_cast<unsigned>(2 * number); }

std::uint16_t flagsOf(const Entry& entry)
{
    const auto flag = [](bool isSet, unsigned bit) { return isSet ? bit : 0U; };
    auto flags = flag(entry.size.has_value(), kHasSize) | flag(entry.packedSize.has_value(), kHasPackedSize)
        | flag(entry.mode.has_value(), kHasMode) | flag(entry.solidGroup.has_value(), kHasSolidGroup)
        | flag(entry.isEncrypted, kIsEncrypted);
    std::size_t number = 0;
    for (const auto* time : {&entry.modified, &entry.created, &entry.accessed})
        flags |= (flag(time->isSet, kTimeIsSet) | flag(time->isLocal, kTimeIsLocal)) << timeShift(number++);
    return static_cast<std::uint16_t>(flags);
}

Timestamp timeOf(const EntryFront& front, std::size_t number)
{
    const auto bits = static_cast<unsigned>(front.flags) >> timeShift(number);
    return {front.seconds[number], front.nanoseconds[number], (bits & kTimeIsSet) != 0, (bits & kTimeIsLocal) != 0};
}

bool isPlausible(const EntryFront& front, const Limits& limits)
{
    const bool enumerators = front.pathStyle <= static_cast<std::uint8_t>(PathStyle::Dos)
        && front.kind <= static_cast<std::uint8_t>(EntryKind::Other)
        && front.checksumKind <= static_cast<std::uint8_t>(Checksum::Kind::Other) && front.flags <= kAllFlags;
    const bool times = std::all_of(front.nanoseconds.begin(), front.nanoseconds.end(),
                                   [](std::uint32_t nanoseconds) { return nanoseconds < 1'000'000'000; });
    const bool charset = front.nameCharset == kCharsetUnknown || front.nameCharset == kCharsetUtf8
        || findCharset(front.nameCharset) != nullptr;
    return enumerators && times && charset && front.attributeCount <= kMaxAttributes && front.index < limits.entries
        && std::all_of(front.textLengths.begin(), front.textLengths.end(),
                       [](std::uint32_t length) { return length <= kMaxText; });
}

Entry entryOf(const EntryFront& front)
{
    Entry entry;
    entry.index = front.index;
    entry.nameCharset = front.nameCharset;
    entry.pathStyle = static_cast<PathStyle>(front.pathStyle);
    entry.kind = static_cast<EntryKind>(front.kind);
    entry.checksum = {static_cast<Checksum::Kind>(front.checksumKind), front.checksum};
    entry.isEncrypted = (front.flags & kIsEncrypted) != 0;
    if (front.flags & kHasSize)
        entry.size = front.size;
    if (front.flags & kHasPackedSize)
        entry.packedSize = front.packedSize;
    if (front.flags & kHasMode)
        entry.mode = front.mode;
    if (front.flags & kHasSolidGroup)
        entry.solidGroup = front.solidGroup;
    entry.modified = timeOf(front, 0);
    entry.created = timeOf(front, 1);
    entry.accessed = timeOf(front, 2);
    return entry;
}

EntryFront frontOf(const Entry& entry)
{
    EntryFront front{};
    front.index = entry.index;
    front.size = entry.size.value_or(0);
    front.packedSize = entry.packedSize.value_or(0);
    front.seconds = {entry.modified.seconds, entry.created.seconds, entry.accessed.seconds};
    front.nanoseconds = {entry.modified.nanoseconds, entry.created.nanoseconds, entry.accessed.nanoseconds};
    front.checksum = entry.checksum.value;
    front.mode = entry.mode.value_or(0);
    front.solidGroup = entry.solidGroup.value_or(0);
    front.nameCharset = entry.nameCharset;
    front.flags = flagsOf(entry);
    front.pathStyle = static_cast<std::uint8_t>(entry.pathStyle);
    front.kind = static_cast<std::uint8_t>(entry.kind);
    front.checksumKind = static_cast<std::uint8_t>(entry.checksum.kind);
    return front;
}

/// Fills a block from its front.
class Filler {
public:
    explicit Filler(Bytes room) : m_room(room) {}
    void put(const void* bytes, std::size_t count)
    {
        if (count > 0)
            std::memcpy(m_room.data(), bytes, count);
        m_room = m_room.subspan(count);
    }
    void putLength(std::size_t length)
    {
        const auto number = static_cast<std::uint32_t>(length);
        put(&number, sizeof number);
    }

private:
    Bytes m_room;
};

}

EntryEncoder::EntryEncoder(const Entry& entry)
    : m_entry(entry)
    , m_texts{entry.name, entry.linkTarget, entry.owner, entry.group, entry.method, entry.comment}
    , m_size(sizeof(EntryFront))
{
    for (auto& text : m_texts) {
        text = text.substr(0, kMaxText);
        m_size += text.size();
    }
    if (entry.attributes.empty())
        return;
    m_attributes = fittingAttributes(entry, kMaxRecord - m_size);
    for (const auto& attribute : m_attributes)
        m_size += sizeOf(attribute);
}

void EntryEncoder::write(Bytes room) const
{
    auto front = frontOf(m_entry);
    std::transform(m_texts.begin(), m_texts.end(), front.textLengths.begin(),
                   [](std::string_view text) { return static_cast<std::uint32_t>(text.size()); });
    front.attributeCount = static_cast<std::uint16_t>(m_attributes.size());
    Filler out(room);
    out.put(&front, sizeof front);
    for (const auto text : m_texts)
        out.put(text.data(), text.size());
    for (const auto& attribute : m_attributes) {
        out.putLength(attribute.name.size());
        out.putLength(attribute.value.size());
        out.put(attribute.name.data(), attribute.name.size());
        out.put(attribute.value.data(), attribute.value.size());
    }
}

Result<void> EntryParser::parse(ConstBytes block, const Limits& limits)
{
    m_block.assign(block.begin(), block.end());
    EntryFront front;
    if (m_block.size() < sizeof front)
        return kBadBlock;
    std::memcpy(&front, m_block.data(), sizeof front);
    if (!isPlausible(front, limits))
        return kBadBlock;
    m_entry = entryOf(front);
    ByteReader in(ConstBytes(m_block).subspan(sizeof front));
    std::size_t number = 0;
    for (auto* text :
         {&m_entry.name, &m_entry.linkTarget, &m_entry.owner, &m_entry.group, &m_entry.method, &m_entry.comment})
        *text = in.text(front.textLengths[number++]);
    m_attributes.clear();
    for (unsigned i = 0; i < front.attributeCount; ++i) {
        const auto nameLength = in.le32();
        const auto valueLength = in.le32();
        const auto name = in.text(nameLength);
        m_attributes.push_back({name, in.take(valueLength)});
    }
    if (!in.ok() || in.remaining() != 0)
        return kBadBlock;
    m_entry.attributes = m_attributes;
    return {};
}

}
