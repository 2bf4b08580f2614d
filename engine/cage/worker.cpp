#include "engine/cage/worker.h"

#include "engine/cage/ring.h"
#include "engine/cage/worker_process.h"

#include <algorithm>
#include <cerrno>
#include <mutex>
#include <utility>

#include <unistd.h>

namespace vantoro::cage {

namespace {

/// One lane's data on its way to the parent. Everything that has data is decoded: the parent drops what it does
/// not want, which is cheaper than a question per entry.
class RingLane final : public LaneReceiver {
public:
    RingLane(SharedArea& area, unsigned lane) : m_ring(area, lane) {}

    Result<Want> begin(const Entry& entry) override
    {
        m_ring.putEntry(entry);
        ++m_number;
        return carriesData(entry.kind) ? Want::Data : Want::Skip;
    }
    Bytes room(std::size_t least) override
    {
        m_room = m_ring.reserve(least);
        return m_room;
    }
    Result<void> data(ConstBytes block) override
    {
        if (m_ring.refusedEntry() == m_number)
            return Error{ErrorCode::EntryRefused, "cage: not wanted"};
        if (!block.empty() && block.data() == m_room.data() && block.size() <= m_room.size()) {
            m_ring.commit(RecordType::Data, block.size());
        } else {
            for (; !block.empty(); block = block.subspan(std::min(block.size(), RingWriter::kMaxPayload)))
                m_ring.put(RecordType::Data, block.first(std::min(block.size(), RingWriter::kMaxPayload)));
        }
        m_room = {};
        return {};
    }
    Result<void> hole(std::uint64_t length) override
    {
        if (m_ring.refusedEntry() == m_number)
            return Error{ErrorCode::EntryRefused, "cage: not wanted"};
        m_ring.put(RecordType::Hole, std::as_bytes(std::span(&length, 1)));
        return {};
    }
    Result<void> end(Result<void> outcome) override
    {
        m_ring.put(RecordType::End, encodeOutcome(outcome));
        return {};
    }
    RingWriter& ring() { return m_ring; }

private:
    RingWriter m_ring;
    Bytes m_room;
    std::uint64_t m_number = 0; // of the entry at hand, counted per lane from 1
};

/// The first lanes of those that there are.
class FirstLanes final : public Lanes {
public:
    FirstLanes(std::span<const std::unique_ptr<RingLane>> lanes) : m_lanes(lanes) {}
    unsigned count() const override { return static_cast<unsigned>(m_lanes.size()); }
    LaneReceiver& lane(unsigned index) override { return *m_lanes[index]; }

private:
    std::span<const std::unique_ptr<RingLane>> m_lanes;
};

class RingVisitor final : public EntryVisitor {
public:
    explicit RingVisitor(RingWriter& ring) : m_ring(ring) {}
    Result<void> visit(const Entry& entry) override
    {
        m_ring.putEntry(entry);
        return {};
    }

private:
    RingWriter& m_ring;
};

/// Adds the files that a message brought.
Result<void> addParts(Received& received, std::vector<SourcePtr>& parts)
{
    auto& fds = received.descriptors;
    const auto& values = received.message.values; // offset and length of each part
    if (fds.empty() || values.size() != fds.size() * 2)
        return Error{ErrorCode::Internal, "cage: a source without descriptors"};
    for (std::size_t i = 0; i < fds.size(); ++i) {
        auto whole = fileSource(fds[i].release(), values[2 * i] + values[2 * i + 1]);
        parts.push_back(windowSource(std::move(whole), values[2 * i], values[2 * i + 1]));
    }
    return {};
}

/// The worker's side of one open archive.
class Session final : public VolumeProvider, public PasswordProvider {
public:
    Session(Opener opener, Channel channel, SharedArea area, const Limits& limits)
        : m_open(opener)
        , m_channel(std::move(channel))
        , m_area(std::move(area))
        , m_limits(limits)
    {
        for (unsigned i = 0; i < m_area.lanes(); ++i)
            m_lanes.push_back(std::make_unique<RingLane>(m_area, i));
    }

    int run(std::uint32_t confinement)
    {
        Message ready;
        ready.type = MessageType::Ready;
        ready.number = confinement;
        ready.values = {buildMark()};
        if (!m_channel.send(ready))
            return 1;
        while (true) {
            auto received = m_channel.receive(-1, kMaxParts);
            if (!received || !*received)
                return 0; // the parent is gone: nothing left to do
            if ((*received)->message.type == MessageType::Parts) {
                if (!addParts(**received, m_parts))
                    return 1;
                continue;
            }
            Message done;
            if (const auto result = guarded([&] { return handle(**received); }); !result)
                done.error = result.error();
            if (!m_channel.send(done))
                return 0;
        }
    }

    Result<SourcePtr> openVolume(std::string_view name) override
    {
        std::vector<SourcePtr> parts;
        auto answer = TRY(ask(MessageType::NeedVolume, std::string(name), 0, parts));
        if (answer.message.error)
            return *answer.message.error;
        return sourceOf(answer, parts);
    }

    Result<Secret> password(unsigned attempt) override
    {
        std::vector<SourcePtr> none;
        auto answer = TRY(ask(MessageType::NeedPassword, {}, attempt, none));
        if (answer.message.error)
            return *answer.message.error;
        Secret secret(answer.message.text);
        wipe(answer.message.text.data(), answer.message.text.size());
        return secret;
    }

private:
    Result<void> handle(Received& received)
    {
        switch (received.message.type) {
        case MessageType::Open:
            return open(received);
        case MessageType::List:
            return list();
        case MessageType::Read:
            return read(received);
        default:
            return Error{ErrorCode::Internal, "cage: unexpected message"};
        }
    }

    Result<void> open(Received& received)
    {
        OpenContext context;
        context.name = received.message.text;
        context.volumes = this;
        context.passwords = this;
        context.limits = m_limits;
        const auto source = TRY(sourceOf(received, std::exchange(m_parts, {})));
        m_archive = TRY(m_open(source, context));
        putInfo();
        return {};
    }

    Result<void> list()
    {
        if (!m_archive)
            return Error{ErrorCode::Internal, "cage: nothing is open"};
        RingVisitor visitor(m_lanes[0]->ring());
        const auto result = m_archive->list(visitor);
        putInfo();
        return result;
    }

    Result<void> read(Received& received)
    {
        if (!m_archive)
            return Error{ErrorCode::Internal, "cage: nothing is open"};
        ReadRequest request;
        request.packedBytesRead = &m_area.header().packedBytesRead;
        if (received.message.flag)
            request.selection = TRY(readSelection(received));
        const auto count = std::clamp<std::uint64_t>(received.message.number, 1, m_area.lanes());
        const std::span<const std::unique_ptr<RingLane>> all(m_lanes);
        FirstLanes lanes(all.first(static_cast<std::size_t>(count)));
        const auto result = m_archive->read(request, lanes);
        putInfo();
        return result;
    }

    static Result<std::vector<std::uint64_t>> readSelection(const Received& received)
    {
        if (received.descriptors.size() != 1 || received.message.values.size() != 1)
            return Error{ErrorCode::Internal, "cage: a selection without a descriptor"};
        std::vector<std::uint64_t> indices(static_cast<std::size_t>(received.message.values[0]));
        auto bytes = std::as_writable_bytes(std::span(indices));
        std::size_t done = 0;
        while (done < bytes.size()) {
            const auto count = ::pread(received.descriptors[0].get(), bytes.data() + done, bytes.size() - done,
                                       static_cast<off_t>(done));
            if (count <= 0)
                return Error{ErrorCode::Internal, "cage: reading the selection", errno};
            done += static_cast<std::size_t>(count);
        }
        return indices;
    }

    /// Ends every answer: what is known of the archive now, and all records visible.
    void putInfo()
    {
        m_lanes[0]->ring().put(RecordType::Info, encodeInfo(m_archive->info()));
        for (const auto& lane : m_lanes)
            lane->ring().wakeReader();
    }

    /// The files of the message behind those that came before it.
    static Result<SourcePtr> sourceOf(Received& received, std::vector<SourcePtr> parts)
    {
        TRY(addParts(received, parts));
        return joinedSource(std::move(parts));
    }

    Result<Received> ask(MessageType type, std::string text, std::uint64_t number, std::vector<SourcePtr>& parts)
    {
        const std::lock_guard lock(m_asking);
        Message question;
        question.type = type;
        question.text = std::move(text);
        question.number = number;
        TRY(m_channel.send(question));
        while (true) {
            auto answer = TRY(m_channel.receive(-1, kMaxParts));
            if (!answer)
                return Error{ErrorCode::Internal, "cage: no answer"};
            if (answer->message.type != MessageType::Parts)
                return *std::move(answer);
            TRY(addParts(*answer, parts));
        }
    }

    Opener m_open;
    Channel m_channel;
    SharedArea m_area;
    Limits m_limits;
    std::vector<std::unique_ptr<RingLane>> m_lanes;
    std::mutex m_asking;
    std::vector<SourcePtr> m_parts; ///< of the source that the next Open completes
    ArchivePtr m_archive; // goes first: it uses the rest
};

}

int serve(Opener open, std::uint32_t confinement, const Limits& limits)
{
    auto area = SharedArea::attach(kWorkerMemory);
    if (!area)
        return 1;
    return Session(open, Channel(Descriptor(kWorkerSocket)), *std::move(area), limits).run(confinement);
}

}
