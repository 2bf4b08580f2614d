#pragma once

#include "engine/formats/archive.h"

#include <string>
#include <vector>

namespace vantoro::test {

/// An entry with its decoded data and how it ended, kept after the archive is gone.
struct Item {
    std::uint64_t index = 0;
    std::string name, linkTarget, owner, group, data, method;
    CharsetId nameCharset = kCharsetUnknown;
    PathStyle pathStyle = PathStyle::Unix;
    EntryKind kind = EntryKind::File;
    std::optional<std::uint64_t> size;
    Timestamp modified, created, accessed;
    std::optional<std::uint32_t> mode;
    bool wasEnded = false;
    Result<void> outcome;
};

struct Contents {
    std::vector<Item> items;
    Result<void> result;

    /// Null when there is none of that name.
    const Item* find(std::string_view name) const
    {
        for (const auto& item : items) {
            if (item.name == name)
                return &item;
        }
        return nullptr;
    }
};

inline Item itemOf(const Entry& entry)
{
    Item item;
    item.index = entry.index;
    item.name = entry.name;
    item.linkTarget = entry.linkTarget;
    item.owner = entry.owner;
    item.group = entry.group;
    item.method = entry.method;
    item.nameCharset = entry.nameCharset;
    item.pathStyle = entry.pathStyle;
    item.kind = entry.kind;
    item.size = entry.size;
    item.modified = entry.modified;
    item.created = entry.created;
    item.accessed = entry.accessed;
    item.mode = entry.mode;
    return item;
}

class CollectingLanes final : public Lanes, public LaneReceiver {
public:
    unsigned count() const override { return 1; }
    LaneReceiver& lane(unsigned) override { return *this; }
    Result<Want> begin(const Entry& entry) override
    {
        items.push_back(itemOf(entry));
        return Want::Data;
    }
    Bytes room(std::size_t least) override
    {
        m_room.resize(std::max<std::size_t>(least, 64 << 10));
        return m_room;
    }
    Result<void> data(ConstBytes block) override
    {
        if (refuseAfter && items.back().data.size() >= *refuseAfter)
            return Error{ErrorCode::EntryRefused, "test"};
        items.back().data += asText(block);
        return {};
    }
    Result<void> end(Result<void> outcome) override
    {
        items.back().outcome = outcome;
        items.back().wasEnded = true;
        return {};
    }

    std::vector<Item> items;
    std::optional<std::size_t> refuseAfter; ///< bytes of an entry after which its data are refused

private:
    std::vector<std::byte> m_room;
};

inline Contents readAll(Archive& archive, std::optional<std::vector<std::uint64_t>> selection = std::nullopt)
{
    CollectingLanes lanes;
    ReadRequest request;
    request.selection = std::move(selection);
    auto result = archive.read(request, lanes);
    return {std::move(lanes.items), result};
}

inline Contents listAll(Archive& archive)
{
    struct Visitor final : EntryVisitor {
        Result<void> visit(const Entry& entry) override
        {
            items.push_back(itemOf(entry));
            return {};
        }
        std::vector<Item> items;
    } visitor;
    auto result = archive.list(visitor);
    return {std::move(visitor.items), result};
}

}
