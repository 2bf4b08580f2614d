#include "engine/cage/protocol.h"

#include <gtest/gtest.h>

namespace vantoro::cage {
namespace {

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
    return encodeEntry(entry);
}

TEST(Protocol, entriesComeBackAsTheyWere)
{
    const auto block = sampleEntry();
    const auto parsed = ParsedEntry::parse(block, {});
    ASSERT_TRUE(parsed);
    const auto& entry = parsed->entry();
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
TEST(Protocol, refusesWhatIsCutOrLonger)
{
    const auto block = sampleEntry();
    for (std::size_t length = 0; length < block.size(); ++length)
        EXPECT_FALSE(ParsedEntry::parse(ConstBytes(block).first(length), {})) << length;
    auto longer = block;
    longer.push_back(std::byte{0});
    EXPECT_FALSE(ParsedEntry::parse(longer, {}));
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
            if (const auto parsed = ParsedEntry::parse(changed, {})) {
                EXPECT_LE(parsed->entry().kind, EntryKind::Other);
                EXPECT_LT(parsed->entry().modified.nanoseconds, 1'000'000'000U);
            }
        }
    }
}

TEST(Protocol, refusesNumbersOutOfTheirRange)
{
    Limits limits;
    limits.entries = 3;
    EXPECT_FALSE(ParsedEntry::parse(sampleEntry(), limits)); // index 3
    Message message;
    message.type = static_cast<MessageType>(77);
    EXPECT_FALSE(parseMessage(encodeMessage(message)));
}

}
}
