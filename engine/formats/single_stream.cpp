#include "engine/formats/single_stream.h"

#include "engine/io/processors.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::size_t kBlock = 256 << 10;

std::string stem(const StreamFormatRow& row, const std::string& name)
{
    const auto dot = name.rfind('.');
    if (dot == std::string::npos || dot == 0)
        return name.empty() ? "data" : name;
    auto extension = name.substr(dot + 1);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
    const bool known = std::find(row.extensions.begin(), row.extensions.end(), extension) != row.extensions.end();
    return known ? name.substr(0, dot) : name;
}

/// A header may hold the path of the packed file: only its last part is the name.
std::string lastComponent(const std::string& path)
{
    const auto slash = path.find_last_of('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

class SingleStream final : public Archive {
public:
    SingleStream(const StreamFormatRow& row, SourcePtr source, const OpenContext& context,
                 const StreamFormatRow::Inner& described)
        : m_row(row)
        , m_source(std::move(source))
        , m_cancel(context.cancel)
        , m_limits(context.limits)
    {
        m_info.format = row.id;
        m_name = lastComponent(described.name);
        if (m_name.empty() || m_name == "." || m_name == "..")
            m_name = stem(row, context.name);
        m_entry.name = m_name;
        m_entry.size = described.size;
        m_entry.packedSize = m_source->size();
        m_entry.modified = described.modified;
        m_entry.method = row.id;
    }

    const ArchiveInfo& info() const override { return m_info; }

    Result<void> list(EntryVisitor& visitor) override { return visitor.visit(m_entry); }

    Result<void> read(const ReadRequest& request, Lanes& lanes) override
    {
        m_info.damage.reset();
        if (request.selection && request.selection->empty())
            return {};
        auto& lane = lanes.lane(0);
        if (TRY(lane.begin(m_entry)) == LaneReceiver::Want::Skip)
            return {};
        StreamParams params{processorCount(), m_limits, m_cancel, request.packedBytesRead};
        auto stream = m_row.open(m_source, params);
        if (!stream)
            return lane.end(stream.error());
        Result<void> fault;
        const auto taken = deliver(**stream, lane, fault);
        if (!taken && taken.error().code != ErrorCode::EntryRefused)
            return taken;
        if (!fault && fault.error().code == ErrorCode::Cancelled)
            return fault;
        return lane.end(taken ? fault : taken);
    }

private:
    /// Errors of the receiver are returned, those of the stream go to `fault`.
    Result<void> deliver(ByteStream& stream, LaneReceiver& lane, Result<void>& fault)
    {
        std::uint64_t delivered = 0;
        for (;;) {
            const auto room = lane.room(kBlock);
            const auto got = stream.read(room);
            if (!got && got.error().code == ErrorCode::TrailingData) {
                m_info.damage = got.error(); // the entry itself is whole
                break;
            }
            if (!got) {
                fault = got.error();
                return {};
            }
            if (*got == 0)
                break;
            TRY(lane.data(room.first(*got)));
            delivered += *got;
        }
        if (m_entry.size && delivered != *m_entry.size)
            fault = Error{ErrorCode::SizeMismatch, "stream: other size than declared"};
        return {};
    }

    const StreamFormatRow& m_row;
    SourcePtr m_source;
    CancelToken m_cancel;
    Limits m_limits;
    ArchiveInfo m_info;
    std::string m_name;
    Entry m_entry;
};

}

Result<ArchivePtr> openSingleStream(const StreamFormatRow& row, SourcePtr source, const OpenContext& context)
{
    StreamFormatRow::Inner described;
    if (row.describe) {
        // A header that cannot be read is told when the data are.
        if (auto inner = row.describe(*source))
            described = *std::move(inner);
    }
    return ArchivePtr(std::make_unique<SingleStream>(row, std::move(source), context, std::move(described)));
}

}
