#include "engine/cage/caged_archive.h"

#include "engine/cage/confinement.h"
#include "engine/cage/lane_pump.h"
#include "engine/cage/watch.h"
#include "engine/cage/worker_process.h"
#include "engine/io/processors.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>

#include <sys/mman.h>
#include <syslog.h>
#include <unistd.h>

namespace vantoro::cage {

namespace {

constexpr int kTick = 20; // milliseconds between two looks at the stop flag and the worker's health
constexpr int kFirstTick = 2; // until threads take what comes of a small archive: most are done by then
constexpr std::uint64_t kSmallArchive = 256 << 10;
constexpr std::uint64_t kTinyArchive = 64 << 10; // decoded before a second thread has started

/// The files behind a source, or a sealed copy of it in memory where there are none.
struct Handover {
    std::vector<int> fds;
    std::vector<std::uint64_t> values; // offset and length of each
    Descriptor copy;
};

/// Into the system's log, once: this kernel keeps a worker from less than others do.
void logMissingSteps(std::uint32_t steps)
{
    static std::atomic_flag told;
    const auto missing = missingSteps(steps);
    if (!missing.empty() && !told.test_and_set())
        ::syslog(LOG_WARNING, "archives are decoded with less protection than usual: %s", missing.c_str());
}

/// Descriptors and, for each, offset and length.
struct Rest {
    std::vector<int> fds;
    std::vector<std::uint64_t> values;
};

Result<Descriptor> memoryFile(ConstBytes bytes)
{
    Descriptor file(::memfd_create("vantoro-handover", MFD_CLOEXEC));
    if (file.get() < 0)
        return Error{ErrorCode::OutOfMemory, "cage: memfd_create", errno};
    while (!bytes.empty()) {
        const auto count = ::write(file.get(), bytes.data(), bytes.size());
        if (count <= 0)
            return Error{ErrorCode::OutOfMemory, "cage: filling a memfd", errno};
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return file;
}

Result<Handover> handOver(const ByteSource& source)
{
    Handover result;
    for (const auto& part : source.fileParts()) {
        result.fds.push_back(part.fd);
        result.values.insert(result.values.end(), {part.position, part.length});
    }
    constexpr std::size_t kMostParts = kMostDescriptors - 64;
    if (result.fds.size() > kMostParts)
        return Error{ErrorCode::LimitExceeded, "cage: a source of too many files"};
    if (result.fds.empty()) {
        const auto block = TRY(readBlock(source, 0, static_cast<std::size_t>(source.size())));
        result.copy = TRY(memoryFile(block));
        result.fds.push_back(result.copy.get());
        result.values = {0, block.size()};
    }
    return result;
}

bool isSevenZip(const ByteSource& source)
{
    const auto head = readBlock(source, 0, 6);
    return head && asText(*head) == std::string_view("7z\xBC\xAF\x27\x1C", 6);
}

/// What a worker most likely needs to read a file. A wrong guess costs a second start.
Libraries likelyLibraries(const ByteSource& source)
{
    constexpr std::size_t kTarMarkAt = 257;
    const auto head = readBlock(source, 0, kTarMarkAt + 5);
    if (!head)
        return Libraries::All;
    const auto text = asText(*head);
    using namespace std::string_view_literals;
    if (text.starts_with("Rar!\x1A\x07"sv))
        return Libraries::Least;
    constexpr std::array kStarts{
        "7z\xBC\xAF\x27\x1C"sv, "PK\3\4"sv,           "PK\5\6"sv,          "\x1F\x8B"sv, "BZh"sv,
        "\xFD\x37zXZ\0"sv,      "\x28\xB5\x2F\xFD"sv, "\x04\x22\x4D\x18"sv};
    const bool isOurs = std::any_of(kStarts.begin(), kStarts.end(), [&](auto start) { return text.starts_with(start); })
        || text.substr(std::min(text.size(), kTarMarkAt)) == "ustar";
    return isOurs ? Libraries::Few : Libraries::All;
}

class CagedArchive final : public Archive {
public:
    CagedArchive(std::string program, SourcePtr source, OpenContext context)
        : m_program(std::move(program))
        , m_source(std::move(source))
        , m_context(std::move(context))
        , m_libraries(likelyLibraries(*m_source))
    {
    }

    Result<void> open()
    {
        for (;;) {
            const auto opened = openWithWorker();
            const bool isFinal = opened || opened.error().code == ErrorCode::Cancelled
                || opened.error().code == ErrorCode::Io || opened.error().code == ErrorCode::MissingVolume;
            if (isFinal || m_libraries == Libraries::All)
                return opened;
            const bool wantsPlugin = m_libraries == Libraries::Few && isSevenZip(*m_source);
            m_libraries = wantsPlugin ? Libraries::SevenZip : Libraries::All;
        }
    }

    const ArchiveInfo& info() const override { return m_info; }

    Result<void> list(EntryVisitor& visitor) override
    {
        return withEnoughLibraries([&] { return listOnce(visitor); });
    }

    Result<void> read(const ReadRequest& wish, Lanes& lanes) override
    {
        return withEnoughLibraries([&] { return readOnce(wish, lanes); });
    }

private:
    Result<void> openWithAll()
    {
        m_libraries = Libraries::All;
        m_needsAll = false;
        return openWithWorker();
    }

    /// A request that turns out to need ciphers before anything came of it goes to a new worker that has them.
    template <class Request> Result<void> withEnoughLibraries(const Request& request)
    {
        auto result = request();
        if (!m_needsAll)
            return result;
        TRY(openWithAll());
        return request();
    }

    Result<void> openWithWorker()
    {
        const auto lanes = std::min(processorCount(), kMaxLanes);
        m_worker = TRY(WorkerProcess::start(m_program, lanes, {m_context.limits.dictionary, m_libraries}));
        m_readers.clear();
        for (unsigned i = 0; i < lanes; ++i)
            m_readers.push_back(std::make_unique<RingReader>(m_worker->area(), i));
        const auto handover = TRY(handOver(*m_source));
        // One file waits in the channel for the worker to have confined itself; of many there are too many for it.
        const bool goesAhead = handover.fds.size() == 1;
        if (!goesAhead)
            TRY(awaitWorker());
        Message message;
        message.type = MessageType::Open;
        message.text = m_context.name;
        const auto rest = TRY(sendParts(handover));
        message.values = rest.values;
        const auto sent = m_worker->channel().send(message, rest.fds);
        if (goesAhead)
            TRY(awaitWorker());
        TRY(sent);
        return finish(awaitDone(nullptr));
    }

    Result<void> awaitWorker()
    {
        TRY(m_worker->awaitConfined());
        logMissingSteps(m_worker->confinement());
        return {};
    }

    Result<void> listOnce(EntryVisitor& visitor)
    {
        TRY(ensureOpen());
        Message message;
        message.type = MessageType::List;
        Pump pump;
        pump.add(std::make_unique<ListPump>(*m_readers[0], visitor, m_context.limits));
        return finish(request(message, {}, &pump));
    }

    Result<void> readOnce(const ReadRequest& wish, Lanes& lanes)
    {
        TRY(ensureOpen());
        Message message;
        message.type = MessageType::Read;
        const bool isTiny = m_source->size() <= kTinyArchive;
        message.number = isTiny ? 1 : std::min<std::uint64_t>(lanes.count(), m_readers.size());
        Descriptor selection;
        std::vector<int> fds;
        if (wish.selection) {
            selection = TRY(memoryFile(std::as_bytes(std::span(*wish.selection))));
            message.flag = true;
            message.values = {wish.selection->size()};
            fds.push_back(selection.get());
        }
        m_worker->area().header().packedBytesRead.store(0);
        m_progress = wish.packedBytesRead;
        Pump pump;
        for (unsigned i = 0; i < message.number; ++i)
            pump.add(std::make_unique<DataPump>(*m_readers[i], lanes.lane(i), wish, m_context.limits));
        const auto result = finish(request(message, fds, &pump));
        m_progress = nullptr;
        return result;
    }

    bool isSmall() const { return m_source->size() <= kSmallArchive; }

    Result<void> ensureOpen()
    {
        if (m_worker && m_worker->isAlive())
            return {};
        return open();
    }

    /// Sends a request and serves the worker until it says that it is done; `pump` takes the records meanwhile.
    Result<void> request(const Message& message, std::span<const int> fds, Pump* pump)
    {
        TRY(m_worker->channel().send(message, fds));
        return awaitDone(pump);
    }

    Result<void> awaitDone(Pump* pump)
    {
        Watch watch(*m_worker, m_source->size());
        if (pump && !isSmall())
            pump->start();
        const auto result = serve(watch, pump);
        if (!result)
            m_worker->kill();
        if (pump) {
            auto fault = result ? std::nullopt : std::optional(result.error());
            if (m_needsAll)
                fault->code = ErrorCode::Cancelled; // the other worker sends it all again
            const auto pumped = pump->finish(fault);
            if (!pumped) {
                m_worker->kill(); // it may still be filling the rings
                return pumped;
            }
        }
        if (!result)
            return pump && pump->progress() > 0 ? reportAsDamage(result.error()) : result;
        TRY(takeInfo(pump));
        return m_outcome ? Result<void>(*m_outcome) : Result<void>();
    }

    /// What came out before the worker failed stays: its failure is damage of the archive.
    Result<void> reportAsDamage(const Error& error)
    {
        if (error.code == ErrorCode::Cancelled)
            return error;
        m_info.damage = error;
        return {};
    }

    Result<void> serve(Watch& watch, Pump* pump)
    {
        while (true) {
            TRY(m_context.cancel.check());
            const bool mayBeDoneSoon = pump && !pump->isStarted();
            auto answered = m_worker->channel().receive(mayBeDoneSoon ? kFirstTick : kTick, 0);
            if (!answered)
                return Error{ErrorCode::DecoderStopped, answered.error().what, answered.error().osError};
            const auto& received = *answered;
            if (m_progress)
                m_progress->store(watch.packedBytesRead(), std::memory_order_relaxed);
            if (pump && pump->isBroken())
                return Error{ErrorCode::Cancelled, "cage: the receiver has stopped"};
            const bool isDone = received && received->message.type == MessageType::Done;
            m_needsAll = received && received->message.type == MessageType::NeedPassword
                && (m_libraries == Libraries::Least || m_libraries == Libraries::Few)
                && (!pump || pump->progress() == 0);
            if (m_needsAll)
                return Error{ErrorCode::DecoderStopped, "cage: goes on in a worker with all libraries"};
            if (isDone) {
                m_outcome = received->message.error;
                return {};
            }
            if (mayBeDoneSoon)
                pump->start();
            if (!received) {
                TRY(watch.check(pump ? pump->progress() : 0));
                continue;
            }
            TRY(answer(received->message));
            watch.restart();
        }
    }

    Result<void> answer(const Message& question)
    {
        Message reply;
        if (question.type == MessageType::NeedVolume)
            return answerVolume(question.text);
        if (question.type != MessageType::NeedPassword)
            return Error{ErrorCode::DecoderStopped, "cage: the worker sent what only we send"};
        reply.type = MessageType::Password;
        const auto secret = givePassword(static_cast<unsigned>(question.number));
        if (secret)
            reply.text = secret->text();
        else
            reply.error = secret.error();
        const auto sent = m_worker->channel().send(reply);
        wipe(reply.text.data(), reply.text.size());
        return sent;
    }

    Result<Secret> givePassword(unsigned attempt)
    {
        if (!m_context.passwords)
            return Error{ErrorCode::PasswordNeeded, "nobody to ask"};
        // A worker that took the place of a dead one asks from the start: it gets what was right before.
        if (attempt == 0 && m_lastPassword)
            return *m_lastPassword;
        auto secret = m_context.passwords->password(attempt);
        if (secret)
            m_lastPassword = *secret;
        return secret;
    }

    Result<void> answerVolume(const std::string& name)
    {
        Message reply;
        reply.type = MessageType::Volume;
        Result<SourcePtr> volume = Error{ErrorCode::MissingVolume, "cage: not a bare name"};
        if (m_context.volumes && !name.empty() && name.find('/') == std::string::npos)
            volume = m_context.volumes->openVolume(name);
        if (!volume) {
            reply.error = volume.error();
            return m_worker->channel().send(reply);
        }
        const auto handover = TRY(handOver(**volume));
        const auto rest = TRY(sendParts(handover));
        reply.values = rest.values;
        return m_worker->channel().send(reply, rest.fds);
    }

    /// Sends what goes beyond one message; returns what is left for that one.
    Result<Rest> sendParts(const Handover& handover)
    {
        m_worker->handedOver(handover.fds.size());
        Rest rest{handover.fds, handover.values};
        while (rest.fds.size() > kMaxParts) {
            Message message;
            message.type = MessageType::Parts;
            message.values.assign(rest.values.begin(), rest.values.begin() + 2 * kMaxParts);
            TRY(m_worker->channel().send(message, std::span(rest.fds).first(kMaxParts)));
            rest.fds.erase(rest.fds.begin(), rest.fds.begin() + kMaxParts);
            rest.values.erase(rest.values.begin(), rest.values.begin() + 2 * kMaxParts);
        }
        return rest;
    }

    /// The description stands in ring 0 behind everything else.
    Result<void> takeInfo(Pump* pump)
    {
        if (pump && pump->info()) {
            m_info = *pump->info();
            m_info.decodesElsewhere = true;
            return {};
        }
        const auto record = TRY(m_readers[0]->next());
        if (!record || record->type != RecordType::Info)
            return m_outcome ? Result<void>() : Error{ErrorCode::DecoderStopped, "cage: no description came"};
        const std::vector<std::byte> copy(record->payload.begin(), record->payload.end());
        m_readers[0]->release();
        m_info = TRY(parseInfo(copy));
        m_info.decodesElsewhere = true;
        return {};
    }

    /// A worker that talks nonsense has stopped being one.
    Result<void> finish(Result<void> result)
    {
        if (!result && m_worker && result.error().code == ErrorCode::DecoderStopped)
            m_worker->kill();
        return result;
    }

    std::string m_program;
    SourcePtr m_source;
    OpenContext m_context;
    Libraries m_libraries;
    bool m_needsAll = false;
    std::unique_ptr<WorkerProcess> m_worker;
    std::vector<std::unique_ptr<RingReader>> m_readers;
    ArchiveInfo m_info;
    std::optional<Error> m_outcome; // of the last request, as the worker told it
    std::optional<Secret> m_lastPassword;
    std::atomic<std::uint64_t>* m_progress = nullptr;
};

}

Result<ArchivePtr> openCaged(const std::string& program, const SourcePtr& source, const OpenContext& context)
{
    auto archive = std::make_unique<CagedArchive>(program, source, context);
    TRY(archive->open());
    return ArchivePtr(std::move(archive));
}

std::string describeCage(const std::string& program)
{
    if (program.empty())
        return "decoders run unconfined: no worker program, or switched off";
    const auto worker = WorkerProcess::start(program, 1);
    if (!worker || !(*worker)->awaitConfined())
        return "decoders run unconfined: the worker does not start";
    const auto missing = missingSteps((*worker)->confinement());
    return missing.empty() ? "decoders run confined" : "decoders run confined, but: " + missing;
}

}
