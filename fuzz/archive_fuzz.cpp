// Opens the input as an archive as the programs do, lists it and decodes everything into nothing. The oracle besides
// the sanitizers: declared sizes hold, receivers are called in order, output stays in proportion.
#ifdef FUZZ_HEADER
#include FUZZ_HEADER
#else
#include "engine/registry.h"
#endif

#ifdef FUZZ_FRAME // makes an archive of the input
#include FUZZ_FRAME
#endif

#include <cstdlib>

namespace {

using namespace vantoro;

constexpr std::uint64_t kMostOutput = 64 << 20;

void require(bool holds)
{
    if (!holds)
        std::abort();
}

class Budget {
public:
    explicit Budget(CancelToken cancel) : m_cancel(std::move(cancel)) {}
    void spend(std::uint64_t bytes)
    {
        m_spent += bytes;
        if (m_spent > kMostOutput)
            m_cancel.cancel();
    }

private:
    CancelToken m_cancel;
    std::uint64_t m_spent = 0;
};

class CountingVisitor final : public EntryVisitor {
public:
    explicit CountingVisitor(Budget& budget) : m_budget(budget) {}
    Result<void> visit(const Entry& entry) override
    {
        require(entry.index == m_count);
        ++m_count;
        m_budget.spend(256 + entry.name.size());
        return {};
    }

private:
    Budget& m_budget;
    std::uint64_t m_count = 0;
};

class CheckingLane final : public LaneReceiver, public Lanes {
public:
    explicit CheckingLane(Budget& budget) : m_budget(budget) {}
    unsigned count() const override { return 1; }
    LaneReceiver& lane(unsigned) override { return *this; }

    Result<Want> begin(const Entry& entry) override
    {
        require(!m_isOpen);
        m_budget.spend(256);
        if (entry.kind == EntryKind::Folder || entry.kind == EntryKind::Other)
            return Want::Skip;
        m_isOpen = true;
        m_got = 0;
        m_declared = entry.size;
        return Want::Data;
    }
    Bytes room(std::size_t least) override
    {
        m_room.resize(std::max(least, std::size_t{64} << 10));
        return m_room;
    }
    Result<void> data(ConstBytes block) override
    {
        require(m_isOpen);
        m_got += block.size();
        m_budget.spend(block.size());
        return {};
    }
    Result<void> hole(std::uint64_t length) override
    {
        require(m_isOpen);
        m_got += length;
        return {};
    }
    Result<void> end(Result<void> outcome) override
    {
        require(m_isOpen);
        m_isOpen = false;
        // An entry that is said to be whole has the size that it declares.
        require(!outcome || !m_declared || m_got == *m_declared);
        return {};
    }

private:
    Budget& m_budget;
    std::vector<std::byte> m_room;
    std::optional<std::uint64_t> m_declared;
    std::uint64_t m_got = 0;
    bool m_isOpen = false;
};

class FixedPassword final : public PasswordProvider {
public:
    Result<Secret> password(unsigned attempt) override
    {
        if (attempt > 0)
            return Error{ErrorCode::WrongPassword, "fuzz"};
        return Secret("secret");
    }
};

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FixedPassword passwords;
    OpenContext context;
    context.name = "input";
    context.passwords = &passwords;
    context.limits.dictionary = 16 << 20;
    Budget budget(context.cancel);
    const auto* bytes = reinterpret_cast<const std::byte*>(data);
#ifdef FUZZ_FRAME
    const auto source = memorySource(framed({bytes, size}));
#else
    const auto source = memorySource(std::vector<std::byte>(bytes, bytes + size));
#endif
#ifdef FUZZ_ROW // one format alone, whatever the input looks like
    auto archive = FUZZ_ROW.open(source, context);
#else
    auto archive = openSource(source, context);
#endif
    if (!archive)
        return 0;
    CountingVisitor visitor(budget);
    (void)(*archive)->list(visitor);
    CheckingLane lane(budget);
    (void)(*archive)->read({}, lane);
    return 0;
}
