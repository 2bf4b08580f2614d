#include "engine/backends/sevenzip_extract.h"

#include "engine/backends/sevenzip_password.h"

#include <algorithm>
#include <cctype>

namespace vantoro::sevenzip {

namespace {

constexpr std::size_t kMostAtOnce = 64 << 10; // bytes delivered between two looks at the stop flag

/// What the method says of the decoder's memory: "LZMA2:26", "LZMA:1536m", "PPMD:o32:mem30".
std::uint64_t memoryOf(std::string_view method)
{
    std::uint64_t most = 0;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    for (std::size_t at = 0; (at = method.find(':', at)) != std::string_view::npos;) {
        ++at;
        if (method.substr(at).starts_with("mem"))
            at += 3;
        std::uint64_t number = 0;
        std::size_t digits = 0;
        for (; at < method.size() && isDigit(method[at]) && digits < 9; ++at, ++digits)
            number = number * 10 + static_cast<std::uint64_t>(method[at] - '0');
        if (digits == 0)
            continue;
        const char unit = at < method.size() ? method[at] : ' ';
        if (unit == 'k')
            number <<= 10;
        else if (unit == 'm')
            number <<= 20;
        else if (unit == 'g')
            number <<= 30;
        else if (unit != 'b')
            number = number < 40 ? std::uint64_t{1} << number : 0;
        most = std::max(most, number);
    }
    return most;
}

class Extraction final : public Object<ExtractCallback, TextPassword> {
public:
    Extraction(const Format& format, const Items& items, Session& session, LaneReceiver& lane)
        : m_format(format)
        , m_items(items)
        , m_session(session)
        , m_lane(lane)
        , m_isDone(items.count())
    {
    }

    HResult setTotal(std::uint64_t) override { return kOk; }
    HResult setCompleted(const std::uint64_t*) override
    {
        return m_session.context().cancel.isCancelled() ? kAbort : kOk;
    }
    HResult outStream(std::uint32_t index, SequentialOutStream** stream, AskMode askMode) override
    {
        return callback([&] {
            *stream = nullptr;
            return reported(start(index, stream, askMode));
        });
    }
    HResult prepareOperation(AskMode) override { return kOk; }
    HResult setOperationResult(OperationResult result) override
    {
        return callback([&] { return m_isOpen ? reported(finish(outcomeOf(result))) : kOk; });
    }
    HResult textPassword(Bstr* password) override
    {
        return callback([&] { return givePassword(m_session, password); });
    }

    HResult take(ConstBytes block)
    {
        return callback([&] { return reported(deliver(block)); });
    }

    /// Ends the entry that was cut off and those that the library never came to.
    Result<void> closeOpen(const Error& reason) { return m_isOpen ? finish(reason) : Result<void>{}; }
    /// The entry is done without the library: a folder, or what must not be decoded.
    Result<void> passOver(std::uint64_t entry, Result<void> outcome)
    {
        if (m_isDone[static_cast<std::size_t>(entry)])
            return {};
        if (TRY(begin(entry)) == LaneReceiver::Want::Skip)
            return {};
        return finish(outcome);
    }

private:
    void* otherInterface(const Guid& id) override
    {
        return id == Progress::kId ? static_cast<Progress*>(this) : nullptr;
    }

    class Sink final : public Object<SequentialOutStream> {
    public:
        explicit Sink(Extraction& owner) : m_owner(Ref<Extraction>::share(&owner)) {}
        HResult write(const void* data, std::uint32_t size, std::uint32_t* processed) override
        {
            if (processed)
                *processed = 0;
            const auto result = m_owner->take({static_cast<const std::byte*>(data), size});
            if (result == kOk && processed)
                *processed = size;
            return result;
        }

    private:
        Ref<Extraction> m_owner;
    };

    HResult reported(const Result<void>& result)
    {
        if (result)
            return kOk;
        m_session.stop(result.error());
        return kAbort;
    }

    Result<LaneReceiver::Want> begin(std::uint64_t entry)
    {
        TRY(m_items.fill(entry, m_item));
        m_isDone[static_cast<std::size_t>(entry)] = true;
        m_written = 0;
        m_refused = {};
        const auto want = TRY(m_lane.begin(m_item.entry));
        m_isOpen = want == LaneReceiver::Want::Data;
        return want;
    }

    Result<void> start(std::uint32_t index, SequentialOutStream** stream, AskMode askMode)
    {
        TRY(m_session.context().cancel.check());
        TRY(closeOpen(Error{ErrorCode::Corrupt, "7-Zip: the library left the entry"}));
        const auto entry = m_items.entryIndex(index);
        // Test: an entry that no data will come for, named to say what is wrong with it.
        const bool isWanted = askMode == AskMode::Extract || askMode == AskMode::Test;
        if (!isWanted || !entry || m_isDone[static_cast<std::size_t>(*entry)])
            return {};
        if (TRY(begin(*entry)) == LaneReceiver::Want::Skip)
            return {};
        const bool hasData = m_item.entry.kind != EntryKind::Folder && m_item.entry.linkTarget.empty();
        if (!hasData)
            return finish({});
        if (askMode == AskMode::Extract)
            *stream = makeObject<Sink>(*this).detach();
        return {};
    }

    Result<void> deliver(ConstBytes block)
    {
        while (!block.empty()) {
            TRY(m_session.context().cancel.check());
            auto part = block.first(std::min(block.size(), kMostAtOnce));
            block = block.subspan(part.size());
            m_written += part.size();
            const auto declared = m_item.entry.size;
            if (declared && m_written > *declared) { // reported at the end; what is too much is not wanted
                const auto excess = std::min<std::uint64_t>(m_written - *declared, part.size());
                part = part.first(part.size() - static_cast<std::size_t>(excess));
            }
            if (!m_isOpen || !m_refused || part.empty())
                continue;
            const auto taken = m_lane.data(part);
            if (taken)
                continue;
            if (taken.error().code != ErrorCode::EntryRefused) {
                m_isOpen = false; // it need not hear its own words
                return taken.error();
            }
            m_refused = taken.error();
        }
        return {};
    }

    Result<void> finish(Result<void> outcome)
    {
        m_isOpen = false;
        return m_lane.end(m_refused ? outcome : m_refused);
    }

    Result<void> outcomeOf(OperationResult result) const
    {
        if (const auto failure = m_session.input()->failure())
            return *failure;
        const auto& entry = m_item.entry;
        const bool isPasswordInDoubt
            = entry.isEncrypted && (!m_session.isPasswordProven() || m_format.names == Format::Names::Zip);
        const Error wrongPassword{ErrorCode::WrongPassword, "7-Zip: wrong password, or damaged data"};
        switch (result) {
        case OperationResult::Ok:
        case OperationResult::DataAfterEnd:
            if (entry.size && *entry.size != m_written)
                return Error{ErrorCode::SizeMismatch, "7-Zip: the data are not as long as declared"};
            return {};
        case OperationResult::UnsupportedMethod:
            return Error{ErrorCode::UnsupportedMethod, "7-Zip: unknown method"};
        case OperationResult::ChecksumError:
            return isPasswordInDoubt ? wrongPassword : Error{ErrorCode::ChecksumMismatch, "7-Zip: wrong checksum"};
        case OperationResult::Unavailable:
            return Error{ErrorCode::MissingVolume, "7-Zip: the data are in a volume that is not there"};
        case OperationResult::UnexpectedEnd:
            return Error{ErrorCode::Truncated, "7-Zip: the data end too early"};
        case OperationResult::WrongPassword:
            return wrongPassword;
        case OperationResult::DataError:
        case OperationResult::NotAnArchive:
        case OperationResult::HeadersError:
            break;
        }
        return isPasswordInDoubt ? wrongPassword : Error{ErrorCode::Corrupt, "7-Zip: damaged data"};
    }

    const Format& m_format;
    const Items& m_items;
    Session& m_session;
    LaneReceiver& m_lane;
    Item m_item; // the one at hand
    std::vector<bool> m_isDone; // by entry
    std::uint64_t m_written = 0;
    Result<void> m_refused;
    bool m_isOpen = false; // begun and not ended
};

/// What to hand to the library, sorted, and what of the chosen entries must not be decoded.
struct Plan {
    std::vector<std::uint32_t> items;
    std::vector<std::uint64_t> entries; ///< chosen, in order
    std::vector<std::pair<std::uint64_t, std::uint64_t>> tooLarge; ///< entry, bytes of memory that it needs
    bool needsPassword = false;
};

Result<Plan> makePlan(const Items& items, const Session& session, const ReadRequest& request)
{
    Plan plan;
    plan.entries = request.chosen(items.count());
    plan.items.reserve(plan.entries.size());
    std::string method, lastMethod;
    std::uint64_t memory = 0;
    for (const auto entry : plan.entries) {
        TRY(session.context().cancel.check());
        if (entry >= items.count() || (!plan.items.empty() && items.handlerIndex(entry) <= plan.items.back()))
            return Error{ErrorCode::Internal, "7-Zip: the chosen entries are not sorted or not there"};
        method = items.method(entry);
        if (method != lastMethod) {
            memory = memoryOf(method);
            lastMethod = method;
        }
        if (memory > session.context().limits.dictionary) {
            plan.tooLarge.emplace_back(entry, memory);
            continue;
        }
        plan.needsPassword = plan.needsPassword || items.isEncrypted(entry);
        plan.items.push_back(items.handlerIndex(entry));
    }
    return plan;
}

Result<void> deliverRest(const Plan& plan, const Items& items, Extraction& extraction, const Error& reason)
{
    for (const auto& [entry, memory] : plan.tooLarge)
        TRY(extraction.passOver(entry,
                                Error{ErrorCode::LimitExceeded, "7-Zip: the dictionary is too large", 0, memory}));
    for (const auto entry : plan.entries) {
        const bool isEmpty = items.isFolder(entry) || items.size(entry) == std::uint64_t{0};
        TRY(extraction.passOver(entry, isEmpty ? Result<void>{} : Result<void>{reason}));
    }
    return {};
}

}

Result<void> extractItems(InArchive& handler, const Format& format, const Items& items, Session& session,
                          const ReadRequest& request, LaneReceiver& lane)
{
    const auto plan = TRY(makePlan(items, session, request));
    session.clearStop();
    session.input()->clearFailure();
    if (plan.needsPassword && !session.isPasswordProven())
        TRY(provePassword(handler, items, session));
    session.clearStop();

    const auto extraction = makeObject<Extraction>(format, items, session, lane);
    auto result = kOk;
    if (!plan.items.empty())
        result = handler.extract(plan.items.data(), static_cast<std::uint32_t>(plan.items.size()), 0, extraction.raw());
    if (result < 0 || session.stopReason()) {
        const auto reason = errorOf(result, session);
        TRY(extraction->closeOpen(reason));
        return reason;
    }
    const auto failure = session.input()->failure();
    return deliverRest(plan, items, *extraction.raw(),
                       failure.value_or(Error{ErrorCode::Corrupt, "7-Zip: the data of the entry are not there"}));
}

}
