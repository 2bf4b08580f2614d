#include "engine/cage/protocol.h"

#include <algorithm>

namespace vantoro::cage {

namespace {

constexpr std::uint64_t kMaxVolumes = 100'000;
constexpr std::size_t kMaxAttributes = 64;

class Writer {
public:
    template <class T>
    requires std::is_arithmetic_v<T>
    void put(T value)
    {
        const auto* bytes = reinterpret_cast<const std::byte*>(&value);
        m_block.insert(m_block.end(), bytes, bytes + sizeof value);
    }
    void put(ConstBytes bytes)
    {
        put(static_cast<std::uint32_t>(bytes.size()));
        m_block.insert(m_block.end(), bytes.begin(), bytes.end());
    }
    void put(std::string_view text) { put(asBytes(text)); }
    void put(const Timestamp& time)
    {
        put(time.seconds);
        put(time.nanoseconds);
        put(static_cast<std::uint8_t>((time.isSet ? 1 : 0) | (time.isLocal ? 2 : 0)));
    }
    void put(const std::optional<std::uint64_t>& value)
    {
        put(static_cast<std::uint8_t>(value.has_value()));
        put(value.value_or(0));
    }
    void put(const std::optional<Error>& error)
    {
        put(static_cast<std::uint8_t>(error.has_value()));
        put(static_cast<std::uint8_t>(error ? error->code : ErrorCode::Internal));
        put(static_cast<std::int32_t>(error ? error->osError : 0));
    }
    std::vector<std::byte> take() { return std::move(m_block); }

private:
    std::vector<std::byte> m_block;
};

/// Reads what Writer wrote; a fault makes ok() false for good.
class Reader {
public:
    explicit Reader(ConstBytes block) : m_in(block) {}
    template <class T> T get()
    {
        T value{};
        const auto bytes = m_in.take(sizeof value);
        if (!bytes.empty())
            std::memcpy(&value, bytes.data(), sizeof value);
        return value;
    }
    /// A flag or an enumerator below `count`.
    std::uint8_t small(unsigned count)
    {
        const auto value = get<std::uint8_t>();
        m_valid = m_valid && value < count;
        return value;
    }
    ConstBytes bytes(std::uint64_t limit)
    {
        const auto length = get<std::uint32_t>();
        m_valid = m_valid && length <= limit;
        return m_valid ? m_in.take(length) : ConstBytes{};
    }
    std::string_view text(std::uint64_t limit) { return asText(bytes(limit)); }
    Timestamp time()
    {
        Timestamp time;
        time.seconds = get<std::int64_t>();
        time.nanoseconds = get<std::uint32_t>();
        const auto flags = small(4);
        time.isSet = (flags & 1) != 0;
        time.isLocal = (flags & 2) != 0;
        m_valid = m_valid && time.nanoseconds < 1'000'000'000;
        return time;
    }
    std::optional<std::uint64_t> number()
    {
        const bool isSet = small(2) != 0;
        const auto value = get<std::uint64_t>();
        return isSet ? std::optional(value) : std::nullopt;
    }
    std::optional<Error> error()
    {
        constexpr auto kCodes = static_cast<unsigned>(ErrorCode::UnsupportedKindOfArchive) + 1;
        const bool isSet = small(2) != 0;
        const auto code = small(kCodes);
        const auto osError = get<std::int32_t>();
        if (!isSet)
            return std::nullopt;
        return Error{static_cast<ErrorCode>(code), "reported by the worker", osError};
    }
    bool ok() const { return m_valid && m_in.ok(); }
    bool okAtEnd() const { return ok() && m_in.remaining() == 0; }
    std::size_t remaining() const { return m_in.remaining(); }

private:
    ByteReader m_in;
    bool m_valid = true;
};

constexpr Error kBadBlock{ErrorCode::Corrupt, "cage: malformed block"};

void putAttributes(Writer& out, std::span<const ExtendedAttribute> attributes)
{
    const auto count = std::min(attributes.size(), kMaxAttributes);
    out.put(static_cast<std::uint32_t>(count));
    for (const auto& attribute : attributes.first(count)) {
        out.put(attribute.name);
        out.put(attribute.value);
    }
}

}

std::vector<std::byte> encodeMessage(const Message& message)
{
    Writer out;
    out.put(static_cast<std::uint32_t>(message.type));
    out.put(static_cast<std::uint8_t>(message.flag));
    out.put(message.number);
    out.put(message.error);
    out.put(std::string_view(message.text).substr(0, kMaxText));
    out.put(static_cast<std::uint32_t>(message.values.size()));
    for (const auto value : message.values)
        out.put(value);
    return out.take();
}

Result<Message> parseMessage(ConstBytes block)
{
    Reader in(block);
    Message message;
    const auto type = in.get<std::uint32_t>();
    message.flag = in.small(2) != 0;
    message.number = in.get<std::uint64_t>();
    message.error = in.error();
    message.text = in.text(kMaxText);
    const auto count = in.get<std::uint32_t>();
    if (!in.ok() || count > in.remaining() / sizeof(std::uint64_t))
        return kBadBlock;
    for (std::uint32_t i = 0; i < count; ++i)
        message.values.push_back(in.get<std::uint64_t>());
    if (!in.okAtEnd() || type < static_cast<unsigned>(MessageType::Open)
        || type > static_cast<unsigned>(MessageType::Done))
        return kBadBlock;
    message.type = static_cast<MessageType>(type);
    return message;
}

std::vector<std::byte> encodeEntry(const Entry& entry)
{
    Writer out;
    out.put(entry.index);
    out.put(entry.nameCharset);
    out.put(static_cast<std::uint8_t>(entry.pathStyle));
    out.put(static_cast<std::uint8_t>(entry.kind));
    out.put(static_cast<std::uint8_t>(entry.checksum.kind));
    out.put(entry.checksum.value);
    out.put(static_cast<std::uint8_t>(entry.isEncrypted));
    out.put(entry.size);
    out.put(entry.packedSize);
    out.put(entry.modified);
    out.put(entry.created);
    out.put(entry.accessed);
    out.put(entry.mode ? std::optional<std::uint64_t>(*entry.mode) : std::nullopt);
    out.put(entry.solidGroup ? std::optional<std::uint64_t>(*entry.solidGroup) : std::nullopt);
    for (const auto text : {entry.name, entry.linkTarget, entry.owner, entry.group, entry.method, entry.comment})
        out.put(text.substr(0, kMaxText));
    putAttributes(out, entry.attributes);
    return out.take();
}

Result<ParsedEntry> ParsedEntry::parse(ConstBytes block, const Limits& limits)
{
    Reader in(block);
    ParsedEntry parsed;
    Entry& entry = parsed.m_entry;
    entry.index = in.get<std::uint64_t>();
    entry.nameCharset = in.get<CharsetId>();
    entry.pathStyle = static_cast<PathStyle>(in.small(2));
    entry.kind = static_cast<EntryKind>(in.small(static_cast<unsigned>(EntryKind::Other) + 1));
    entry.checksum.kind = static_cast<Checksum::Kind>(in.small(static_cast<unsigned>(Checksum::Kind::Other) + 1));
    entry.checksum.value = in.get<std::uint32_t>();
    entry.isEncrypted = in.small(2) != 0;
    entry.size = in.number();
    entry.packedSize = in.number();
    entry.modified = in.time();
    entry.created = in.time();
    entry.accessed = in.time();
    const auto mode = in.number();
    const auto solidGroup = in.number();
    if (mode)
        entry.mode = static_cast<std::uint32_t>(*mode);
    if (solidGroup)
        entry.solidGroup = static_cast<std::uint32_t>(*solidGroup);
    for (auto* text : {&entry.name, &entry.linkTarget, &entry.owner, &entry.group, &entry.method, &entry.comment})
        *text = in.text(kMaxText);
    const auto count = in.get<std::uint32_t>();
    if (!in.ok() || count > kMaxAttributes || entry.index >= limits.entries
        || (entry.nameCharset != kCharsetUnknown && !findCharset(entry.nameCharset)))
        return kBadBlock;
    for (std::uint32_t i = 0; i < count; ++i) {
        const auto name = in.text(kMaxText);
        parsed.m_attributes.push_back({name, in.bytes(kMaxText)});
    }
    if (!in.okAtEnd())
        return kBadBlock;
    entry.attributes = parsed.m_attributes; // a vector's elements stay where they are when it is moved
    return parsed;
}

std::vector<std::byte> encodeInfo(const ArchiveInfo& info)
{
    Writer out;
    for (const auto* text : {&info.format, &info.outerFormat, &info.comment, &info.missingVolume})
        out.put(std::string_view(*text).substr(0, kMaxText));
    out.put(static_cast<std::uint8_t>(info.isSolid));
    out.put(static_cast<std::uint8_t>(info.hasEncryptedNames));
    out.put(static_cast<std::uint8_t>(info.listsCheaply));
    out.put(static_cast<std::uint8_t>(info.caresAboutPasswordEncoding));
    out.put(info.damage);
    out.put(info.firstDoubtfulEntry);
    out.put(static_cast<std::uint32_t>(info.volumes.size()));
    for (const auto& name : info.volumes)
        out.put(std::string_view(name).substr(0, kMaxText));
    return out.take();
}

Result<ArchiveInfo> parseInfo(ConstBytes block)
{
    Reader in(block);
    ArchiveInfo info;
    for (auto* text : {&info.format, &info.outerFormat, &info.comment, &info.missingVolume})
        *text = in.text(kMaxText);
    info.isSolid = in.small(2) != 0;
    info.hasEncryptedNames = in.small(2) != 0;
    info.listsCheaply = in.small(2) != 0;
    info.caresAboutPasswordEncoding = in.small(2) != 0;
    info.damage = in.error();
    info.firstDoubtfulEntry = in.number();
    const auto count = in.get<std::uint32_t>();
    if (!in.ok() || count > kMaxVolumes)
        return kBadBlock;
    for (std::uint32_t i = 0; i < count && in.ok(); ++i)
        info.volumes.emplace_back(in.text(kMaxText));
    if (!in.okAtEnd())
        return kBadBlock;
    return info;
}

std::vector<std::byte> encodeOutcome(const Result<void>& outcome)
{
    Writer out;
    out.put(outcome ? std::optional<Error>() : std::optional(outcome.error()));
    return out.take();
}

Result<std::optional<Error>> parseOutcome(ConstBytes block)
{
    Reader in(block);
    const auto error = in.error();
    if (!in.okAtEnd())
        return kBadBlock;
    return error;
}

}
