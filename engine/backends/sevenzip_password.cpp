#include "engine/backends/sevenzip_password.h"

#include <algorithm>
#include <unordered_set>

namespace vantoro::sevenzip {

namespace {

constexpr std::size_t kMostTrials = 3; // entries; one may be damaged while the password is right
constexpr std::uint64_t kMostDecoded = 4 << 20; // bytes that a trial decodes
constexpr std::uint64_t kMostLookedAt = 200'000; // entries

enum class Verdict : std::uint8_t { Fits, Plausible, Wrong, Unknown };

/// Decodes one entry to nowhere.
class Trial final : public Object<ExtractCallback, TextPassword> {
public:
    Trial(Session& session, std::uint32_t item) : m_session(session), m_item(item) {}
    Verdict verdict() const { return m_verdict; }

    HResult setTotal(std::uint64_t) override { return kOk; }
    HResult setCompleted(const std::uint64_t*) override
    {
        return m_session.context().cancel.isCancelled() ? kAbort : kOk;
    }
    HResult outStream(std::uint32_t index, SequentialOutStream** stream, AskMode) override
    {
        return callback([&] {
            *stream = nullptr;
            m_isOurs = index == m_item;
            if (m_isOurs)
                *stream = makeObject<Sink>(*this).detach();
            return kOk;
        });
    }
    HResult prepareOperation(AskMode) override { return kOk; }
    HResult setOperationResult(OperationResult result) override
    {
        if (!m_isOurs)
            return kOk;
        switch (result) {
        case OperationResult::Ok:
            m_verdict = Verdict::Fits;
            break;
        case OperationResult::DataError:
        case OperationResult::ChecksumError:
        case OperationResult::WrongPassword:
        case OperationResult::UnexpectedEnd:
        case OperationResult::DataAfterEnd:
            m_verdict = Verdict::Wrong;
            break;
        default: // a method that is not known says nothing of the password
            m_verdict = Verdict::Unknown;
            break;
        }
        return kOk;
    }
    HResult textPassword(Bstr* password) override
    {
        return callback([&] { return givePassword(m_session, password); });
    }

private:
    class Sink final : public Object<SequentialOutStream> {
    public:
        explicit Sink(Trial& owner) : m_owner(owner) {}
        HResult write(const void*, std::uint32_t size, std::uint32_t* processed) override
        {
            m_count += size;
            if (processed)
                *processed = size;
            if (m_count < kMostDecoded)
                return kOk;
            m_owner.m_verdict = Verdict::Plausible;
            return kAbort;
        }

    private:
        Trial& m_owner;
        std::uint64_t m_count = 0;
    };

    void* otherInterface(const Guid& id) override
    {
        return id == Progress::kId ? static_cast<Progress*>(this) : nullptr;
    }

    Session& m_session;
    std::uint32_t m_item;
    bool m_isOurs = false;
    Verdict m_verdict = Verdict::Unknown;
};

/// The entries that are cheapest to decode: first of their block, smallest first.
Result<std::vector<std::uint64_t>> candidates(const Items& items, const CancelToken& cancel)
{
    struct Candidate {
        std::uint64_t size, entry;
    };
    std::vector<Candidate> found;
    std::unordered_set<std::uint32_t> blocks;
    const auto count = std::min(items.count(), kMostLookedAt);
    for (std::uint64_t entry = 0; entry < count; ++entry) {
        TRY(cancel.check());
        const auto size = items.size(entry);
        if ((size && *size == 0) || items.isFolder(entry) || !items.isEncrypted(entry))
            continue;
        if (const auto block = items.block(entry); block && !blocks.insert(*block).second)
            continue;
        found.push_back({size.value_or(kMostDecoded), entry});
    }
    const auto kept = std::min(found.size(), kMostTrials);
    std::partial_sort(found.begin(), found.begin() + static_cast<std::ptrdiff_t>(kept), found.end(),
                      [](const Candidate& a, const Candidate& b) { return a.size < b.size; });
    std::vector<std::uint64_t> entries;
    for (std::size_t i = 0; i < kept; ++i)
        entries.push_back(found[i].entry);
    return entries;
}

Result<Verdict> tryPassword(InArchive& handler, const Items& items, Session& session,
                            const std::vector<std::uint64_t>& entries)
{
    auto best = Verdict::Unknown;
    for (const auto entry : entries) {
        const auto item = items.handlerIndex(entry);
        const auto trial = makeObject<Trial>(session, item);
        const auto result = handler.extract(&item, 1, 0, trial.raw());
        const auto verdict = trial->verdict();
        if (verdict == Verdict::Fits || verdict == Verdict::Plausible)
            return verdict;
        if (result < 0)
            return errorOf(result, session);
        if (verdict == Verdict::Wrong)
            best = verdict;
    }
    return best;
}

}

Result<void> provePassword(InArchive& handler, const Items& items, Session& session)
{
    const auto entries = TRY(candidates(items, session.context().cancel));
    TRY(session.password());
    for (;;) {
        const auto verdict = TRY(tryPassword(handler, items, session, entries));
        if (verdict == Verdict::Fits)
            session.provePassword();
        if (verdict != Verdict::Wrong)
            return {};
        TRY(session.nextPassword());
    }
}

}
