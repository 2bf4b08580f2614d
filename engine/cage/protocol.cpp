#include "engine/cage/protocol.h"

#include <algorithm>

namespace vantoro::cage {

namespace {

constexpr std::uint64_t kMaxVolumes = 100'000;

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
        put(error ? error->wanted : std::uint64_t{0});
    }
    std::size_t size() const { return m_block.size(); }
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
    std::optional<std::uint64_t> number()
    {
        const bool isSet = small(2) != 0;
        const auto value = get<std::uint64_t>();
        return isSet ? std::optional(value) : std::nullopt;
    }
    std::optional<Error> error()
    {
        const bool isSet = small(2) != 0;
        const auto code = small(kErrorCodes);
        const auto osError = get<std::int32_t>();
        const auto wanted = get<std::uint64_t>();
        if (!isSet)
            return std::nullopt;
        return Error{static_cast<ErrorCode>(code), "reported by the worker", osError, wanted};
    }
    bool ok() const { return m_valid && m_in.ok(); }
    bool okAtEnd() const { return ok() && m_in.remaining() == 0; }
    std::size_t remaining() const { return m_in.remaining(); }

private:
    ByteReader m_in;
    bool m_valid = true;
};

constexpr Error kBadBlock{ErrorCode::Corrupt, "cage: malformed block"};

}

std::uint64_t buildMark() { return VANTORO_CAGE_MARK; }

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
    std::size_t size = out.size() + sizeof(std::uint32_t);
    const auto last = std::find_if(info.volumes.begin(), info.volumes.end(), [&size](const std::string& name) {
        size += sizeof(std::uint32_t) + std::min(name.size(), kMaxText);
        return size > kMaxRecord;
    });
    out.put(static_cast<std::uint32_t>(last - info.volumes.begin()));
    std::for_each(info.volumes.begin(), last,
                  [&out](const std::string& name) { out.put(std::string_view(name).substr(0, kMaxText)); });
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
