#include "engine/formats/rock_ridge.h"

#include <algorithm>
#include <chrono>

namespace vantoro {

namespace {

constexpr unsigned kContinuations = 64; // of one record: more is a loop
constexpr std::size_t kContinuationSize = 64 << 10;

Timestamp fromCalendar(int year, unsigned month, unsigned day, int hour, int minute, int second, int quartersEast)
{
    const std::chrono::year_month_day date{std::chrono::year{year}, std::chrono::month{month}, std::chrono::day{day}};
    if (!date.ok() || hour > 23 || minute > 59 || second > 60)
        return {};
    Timestamp time;
    time.isSet = true;
    time.seconds = std::int64_t{std::chrono::sys_days(date).time_since_epoch().count()} * 86400
        + std::int64_t{hour} * 3600 + std::int64_t{minute} * 60 + second - std::int64_t{quartersEast} * 15 * 60;
    return time;
}

/// The names of the components of a symbolic link, each with a flag byte and a length byte.
void appendLinkParts(ConstBytes data, std::string& target, bool& joinNext)
{
    constexpr unsigned kContinues = 1, kCurrent = 2, kParent = 4, kRoot = 8;
    ByteReader in(data);
    while (in.ok() && in.remaining() >= 2) {
        const unsigned flags = in.u8();
        const auto text = in.text(in.u8());
        if (!joinNext && !target.empty() && target.back() != '/')
            target += '/';
        if (flags & kRoot)
            target = "/";
        else if (flags & kCurrent)
            target += '.';
        else if (flags & kParent)
            target += "..";
        else
            target += text;
        joinNext = flags & kContinues;
    }
}

}

Timestamp isoShortDate(ConstBytes seven)
{
    ByteReader in(seven);
    const int year = 1900 + in.u8();
    const unsigned month = in.u8(), day = in.u8();
    const int hour = in.u8(), minute = in.u8(), second = in.u8();
    const int zone = static_cast<std::int8_t>(in.u8());
    return in.ok() ? fromCalendar(year, month, day, hour, minute, second, zone) : Timestamp();
}

Timestamp isoLongDate(ConstBytes seventeen)
{
    ByteReader in(seventeen);
    bool areDigits = true;
    const auto number = [&](std::size_t digits) {
        int value = 0;
        for (const char digit : in.text(digits)) {
            areDigits = areDigits && digit >= '0' && digit <= '9';
            value = value * 10 + (digit - '0');
        }
        return value;
    };
    const int year = number(4), month = number(2), day = number(2);
    const int hour = number(2), minute = number(2), second = number(2), hundredths = number(2);
    const int zone = static_cast<std::int8_t>(in.u8());
    if (!in.ok() || !areDigits)
        return {};
    auto time
        = fromCalendar(year, static_cast<unsigned>(month), static_cast<unsigned>(day), hour, minute, second, zone);
    time.nanoseconds = static_cast<std::uint32_t>(hundredths) * 10'000'000;
    return time;
}

struct RockRidgeParser::State {
    RockRidge result;
    std::optional<Continuation> next;
    bool nameGoesOn = false;
    bool linkGoesOn = false; // the last component continues in the next field
};

bool RockRidgeParser::detect(ConstBytes rootSystemUse)
{
    constexpr std::string_view kMark("SP\x07\x01\xBE\xEF", 6);
    constexpr std::size_t kAfterXa = 14; // CD-ROM XA attributes may come first
    for (const std::size_t at : {std::size_t{0}, kAfterXa}) {
        if (rootSystemUse.size() < at + 7 || !asText(rootSystemUse.subspan(at)).starts_with(kMark))
            continue;
        m_skip = std::to_integer<std::size_t>(rootSystemUse[at + 6]);
        State state;
        parseArea(rootSystemUse.subspan(at), state);
        for (unsigned i = 0; state.next && i < kContinuations; ++i) {
            const auto block = readBlock(m_volume, state.next->position, state.next->length);
            state.next.reset();
            if (block)
                parseArea(*block, state);
        }
        return state.result.isPresent;
    }
    return false;
}

RockRidge RockRidgeParser::parse(ConstBytes systemUse) const
{
    State state;
    parseArea(systemUse.subspan(std::min(m_skip, systemUse.size())), state);
    for (unsigned i = 0; state.next && i < kContinuations; ++i) {
        const auto block = readBlock(m_volume, state.next->position, state.next->length);
        state.next.reset();
        if (block)
            parseArea(*block, state);
    }
    return std::move(state.result);
}

void RockRidgeParser::parseArea(ConstBytes area, State& state) const
{
    ByteReader in(area);
    while (in.remaining() >= 4) {
        const auto signature = in.text(2);
        const std::size_t length = in.u8();
        in.skip(1); // version
        if (length < 4 || length - 4 > in.remaining() || signature == "ST")
            return;
        const auto data = in.take(length - 4);
        if (signature == "CE" && data.size() >= 24) {
            ByteReader fields(data);
            const std::uint64_t block = fields.le32();
            fields.skip(4); // each number is stored in both byte orders
            const auto offset = fields.le32();
            fields.skip(4);
            const auto size = std::min<std::uint32_t>(fields.le32(), kContinuationSize);
            state.next = Continuation{block * m_blockSize + offset, size};
        } else {
            parseField(signature, data, state);
        }
    }
}

void RockRidgeParser::parseField(std::string_view signature, ConstBytes data, State& state)
{
    auto& result = state.result;
    ByteReader in(data);
    const auto bothOrders = [&] {
        const auto value = in.le32();
        in.skip(4);
        return value;
    };
    if (signature == "NM") {
        constexpr unsigned kContinues = 1, kSpecial = 2 | 4; // "." and "..": no real names
        const unsigned flags = in.u8();
        if (in.ok() && !(flags & kSpecial))
            result.name = (state.nameGoesOn ? result.name.value_or("") : "") + std::string(asText(in.rest()));
        state.nameGoesOn = flags & kContinues;
    } else if (signature == "PX" && data.size() >= 32) {
        result.mode = bothOrders();
        result.links = bothOrders();
        in.skip(16); // owner, group: numbers without names
        if (in.remaining() >= 4)
            result.serial = in.le32();
    } else if (signature == "SL") {
        in.skip(1); // whether another SL follows shows by itself
        if (!result.linkTarget)
            result.linkTarget.emplace();
        appendLinkParts(in.rest(), *result.linkTarget, state.linkGoesOn);
    } else if (signature == "TF") {
        constexpr unsigned kLong = 0x80;
        const unsigned flags = in.u8();
        Timestamp* const times[] = {&result.created, &result.modified, &result.accessed};
        for (unsigned i = 0; i < std::size(times) && in.ok(); ++i) {
            if (flags & (1U << i))
                *times[i] = flags & kLong ? isoLongDate(in.take(17)) : isoShortDate(in.take(7));
        }
    } else if (signature == "CL" && data.size() >= 8) {
        result.childBlock = bothOrders();
    } else if (signature == "RE") {
        result.isMoved = true;
    } else if (signature == "ZF" && data.size() >= 12) {
        const bool isKnown = in.text(2) == "pz";
        in.skip(2); // header and block size: the file's own header has them too
        result.zisofs = RockRidge::Zisofs{bothOrders(), isKnown};
        return; // used without Rock Ridge too
    } else if (signature != "RR" && signature != "ER") {
        return;
    }
    result.isPresent = true;
}

}
