#pragma once

#include "engine/formats/entry_input.h"

namespace vantoro {

/// Not of the bytes: reading has to stop.
bool stopsAtOnce(const Error& error);

/// What archives share that are read from front to back, from a source or out of a stream.
class SequentialArchive : public Archive {
public:
    const ArchiveInfo& info() const final { return m_info; }

protected:
    /// One of `source` and `stream` is given.
    SequentialArchive(const char* format, SourcePtr source, StreamFactory stream, const OpenContext& context);

    bool isStream() const { return m_source == nullptr; }
    const CancelToken& cancel() const { return m_cancel; }
    const Limits& limits() const { return m_limits; }

    /// From the start; forgets what the reading before has found.
    Result<std::unique_ptr<EntryInput>> openInput(std::atomic<std::uint64_t>* counter);
    /// At the end of the archive, after `entries`: reads what is left of a stream, so that its checksum is met.
    Result<void> finish(EntryInput& input, std::uint64_t entries, const std::optional<Error>& damage = {});
    /// The bytes cannot be read any further. What was delivered stays, as far as it can be trusted. `damage` says more
    /// than `error`, where it is known.
    Result<void> endWithFault(const Error& error, const EntryInput& input, std::uint64_t entries,
                              const std::optional<Error>& damage = {});

private:
    SourcePtr m_source;
    StreamFactory m_stream;
    CancelToken m_cancel;
    Limits m_limits;
    ArchiveInfo m_info;
};

}
