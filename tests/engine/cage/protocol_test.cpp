#include "engine/cage/protocol.h"

#include <gtest/gtest.h>

namespace vantoro::cage {
namespace {

std::vector<std::byte> encoded(const Entry& entry)
{
    const EntryEncoder encoder(entry);
    std::vector<std::byte> block(encoder.size());
    encoder.write(block);
    return block;
}

std::vector<std::byte> sampleEntry()
{
    static const ExtendedAttribute attribute{"user.origin", asBytes("http://x")};
    Entry entry;
    entry.index = 3;
    entry.name = "d/na\xFFme";
    entry.kind = EntryKind::SymbolicLink;
    entry.size = 1U << 31;
    entry.mode = 0120777;
    entry.modified = {1'700'000'000, 999'999'999, true, false};
    entry.linkTarget = "target";
    entry.owner = "me";
    entry.method = "LZMA2:24";
    entry.attributes = {&attribute, 1};
    return encoded(entry);
}

bool isTaken(ConstBytes block, const Limits& limits = {}) { return EntryParser().parse(block, limits).has_value(); }

TEST(Protocol, entriesComeBackAsTheyWere)
{
    const auto block = sampleEntry();
    EntryParser parser;
    ASSERT_TRUE(parser.parse(block, {}));
    const auto& entry = parser.entry();
    EXPECT_EQ(entry.index, 3U);
    EXPECT_EQ(entry.name, "d/na\xFFme");
    EXPECT_EQ(entry.kind, EntryKind::SymbolicLink);
    EXPECT_EQ(entry.size, 1U << 31);
    EXPECT_FALSE(entry.packedSize);
    EXPECT_EQ(entry.mode, 0120777U);
    EXPECT_EQ(entry.modified.nanoseconds, 999'999'999U);
    EXPECT_EQ(entry.linkTarget, "target");
    EXPECT_EQ(entry.method, "LZMA2:24");
    ASSERT_EQ(entry.attributes.size(), 1U);
    EXPECT_EQ(asText(entry.attributes[0].value), "http://x");
}

// An archive may give an entry more attributes than a record holds.
TEST(Protocol, whatIsTooMuchForARecordStaysBehind)
{
    const std::string text(kMaxText, 'x');
    const std::vector<ExtendedAttribute> attributes(40, {"user.a", asBytes(text)});
    Entry entry;
    for (auto* field : {&entry.name, &entry.linkTarget, &entry.owner, &entry.group, &entry.method, &entry.comment})
        *field = text;
    entry.attributes = attributes;
    EXPECT_LE(EntryEncoder(entry).size(), kMaxRecord);
    EntryParser parser;
    ASSERT_TRUE(parser.parse(encoded(entry), {}));
    EXPECT_EQ(parser.entry().comment, text);
    EXPECT_GT(parser.entry().attributes.size(), 0U);
    ArchiveInfo info;
    info.volumes.assign(40, text);
    EXPECT_LE(encodeInfo(info).size(), kMaxRecord);
    EXPECT_TRUE(parseInfo(encodeInfo(info)));
}

TEST(Protocol, infoAndMessagesComeBackAsTheyWere)
{
    ArchiveInfo info;
    info.format = "rar";
    info.volumes = {"a.part1.rar", "a.part2.rar"};
    info.damage = Error{ErrorCode::Truncated, "", 5};
    info.firstDoubtfulEntry = 7;
    const auto back = parseInfo(encodeInfo(info));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->volumes, info.volumes);
    EXPECT_EQ(back->damage->code, ErrorCode::Truncated);
    EXPECT_EQ(back->firstDoubtfulEntry, 7U);
    Message message;
    message.type = MessageType::Open;
    message.text = "name";
    message.values = {1, 2};
    const auto same = parseMessage(encodeMessage(message));
    ASSERT_TRUE(same);
    EXPECT_EQ(same->values, message.values);
}

// A block cut anywhere, or longer than it should be, is never taken for a whole one; no byte makes the parser fall.
// A code that the parent does not take would look like a worker that lies.
TEST(Protocol, everyReasonToFailComesBackAsItWas)
{
    const std::string_view unknown = describe(static_cast<ErrorCode>(255));
    unsigned number = 0;
    for (; describe(static_cast<ErrorCode>(number)) != unknown; ++number) {
        const auto code = static_cast<ErrorCode>(number);
        const auto outcome = parseOutcome(encodeOutcome(Error{code, "", 5, 77}));
        ASSERT_TRUE(outcome) << describe(code);
        ASSERT_TRUE(*outcome) << describe(code);
        EXPECT_EQ((*outcome)->code, code);
        EXPECT_EQ((*outcome)->osError, 5);
        EXPECT_EQ((*outcome)->wanted, 77U);
    }
    EXPECT_GT(number, static_cast<unsigned>(ErrorCode::TrailingData));
    EXPECT_FALSE(parseOutcome(encodeOutcome(Error{static_cast<ErrorCode>(number)})));
}

TEST(Protocol, refusesWhatIsCutOrLonger)
{
    const auto block = sampleEntry();
    for (std::size_t length = 0; length < block.size(); ++length)
        EXPECT_FALSE(isTaken(ConstBytes(block).first(length))) << length;
    auto longer = block;
    longer.push_back(std::byte{0});
    EXPECT_FALSE(isTaken(longer));
    const auto info = encodeInfo({});
    EXPECT_FALSE(parseInfo(ConstBytes(info).first(info.size() - 1)));
}

TEST(Protocol, survivesAnyByteChanged)
{
    const auto block = sampleEntry();
    for (std::size_t i = 0; i < block.size(); ++i) {
        for (const int value : {0x00, 0x7F, 0x80, 0xFF}) {
            auto changed = block;
            changed[i] = static_cast<std::byte>(value);
            EntryParser parser;
            if (parser.parse(changed, {})) {
                EXPECT_LE(parser.entry().kind, EntryKind::Other);
                EXPECT_LT(parser.entry().modified.nanoseconds, 1'000'000'000U);
            }
        }
    }
}

TEST(Protocol, refusesNumbersOutOfTheirRange)
{
    Limits limits;
    limits.entries = 3;
    EXPECT_FALSE(isTaken(sampleEntry(), limits)); // index 3
    Message message;
    message.type = static_cast<MessageType>(77);
    EXPECT_FALSE(parseMessage(encodeMessage(message)));
}

}
}
