#include "engine/formats/sequential_archive.h"

namespace vantoro {

namespace {

/// Faults that leave what came before in doubt: a check over many bytes, or data that cannot be decoded. Bytes that
/// merely end too early do not.
bool castsDoubt(const Error& error)
{
    return error.code == ErrorCode::ChecksumMismatch || error.code == ErrorCode::Corrupt
        || error.code == ErrorCode::SizeMismatch;
}

}

bool stopsAtOnce(const Error& error)
{
    return error.code == ErrorCode::Cancelled || error.code == ErrorCode::OutOfMemory
        || error.code == ErrorCode::Internal;
}

SequentialArchive::SequentialArchive(const char* format, SourcePtr source, StreamFactory stream,
                                     const OpenContext& context)
    : m_source(std::move(source))
    , m_stream(std::move(stream))
    , m_cancel(context.cancel)
    , m_limits(context.limits)
{
    m_info.format = format;
    m_info.listsCheaply = !isStream();
}

Result<std::unique_ptr<EntryInput>> SequentialArchive::openInput(std::atomic<std::uint64_t>* counter)
{
    m_info.damage.reset();
    m_info.firstDoubtfulEntry.reset();
    if (m_source)
        return std::make_unique<EntryInput>(m_source, counter, m_cancel);
    return std::make_unique<EntryInput>(TRY(m_stream()), m_cancel);
}

Result<void> SequentialArchive::finish(EntryInput& input, std::uint64_t entries, const std::optional<Error>& damage)
{
    if (isStream()) {
        if (const auto drained = input.drain(); !drained)
            return endWithFault(drained.error(), input, entries, damage);
    }
    m_info.damage = damage;
    return {};
}

Result<void> SequentialArchive::endWithFault(const Error& error, const EntryInput& input, std::uint64_t entries,
                                             const std::optional<Error>& damage)
{
    if (stopsAtOnce(error) || (entries == 0 && error.code != ErrorCode::TrailingData))
        return error;
    m_info.damage = damage.value_or(error);
    if (isStream() && castsDoubt(error) && input.trustedEntries() < entries)
        m_info.firstDoubtfulEntry = input.trustedEntries();
    return {};
}

}
