#include "engine/extract/entry_sink.h"

namespace vantoro {

Result<void> EntrySink::begin(FilePlan&& plan)
{
    TRY(m_observer.stillWanted());
    const auto opened = m_writer.open(std::move(plan));
    if (!opened && opened.error().code == ErrorCode::UnsafeName)
        return m_observer.entryFailed(m_writer.plan(), opened.error());
    return opened;
}

Result<void> EntrySink::data(ConstBytes block)
{
    TRY(m_observer.stillWanted());
    return m_writer.isOpen() ? m_writer.write(block) : Result<void>();
}

Result<void> EntrySink::hole(std::uint64_t length)
{
    return m_writer.isOpen() ? m_writer.hole(length) : Result<void>();
}

Result<void> EntrySink::end(const Result<void>& outcome)
{
    if (!m_writer.isOpen())
        return {};
    if (!outcome) {
        TRY(m_writer.discard());
        return m_observer.entryFailed(m_writer.plan(), outcome.error());
    }
    const auto finished = m_writer.finish();
    if (!finished && finished.error().code == ErrorCode::UnsafeName)
        return m_observer.entryFailed(m_writer.plan(), finished.error());
    TRY(finished);
    m_observer.entryWritten(m_writer.plan(), m_writer.size());
    return {};
}

}
