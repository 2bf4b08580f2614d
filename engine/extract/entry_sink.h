#pragma once

#include "engine/extract/file_writer.h"

namespace vantoro {

/// What a sink says of its entries. Called on the thread that writes.
class SinkObserver {
public:
    virtual ~SinkObserver() = default;
    virtual Result<void> stillWanted() = 0; ///< Cancelled, or whatever has ended the job elsewhere
    /// An Error ends the job: the user stopped, or the outcome is worse than one entry.
    virtual Result<void> entryFailed(const FilePlan& plan, const Error& error) = 0;
    virtual void entryWritten(const FilePlan& plan, std::uint64_t size) = 0;
};

/// Writes the entries of one lane. What is wrong with one entry is reported and dropped; an Error means that the
/// destination failed or that the job is over.
class EntrySink {
public:
    EntrySink(FileWriter& writer, SinkObserver& observer) : m_writer(writer), m_observer(observer) {}

    Result<void> begin(FilePlan&& plan);
    Result<void> data(ConstBytes block);
    Result<void> hole(std::uint64_t length);
    Result<void> end(const Result<void>& outcome);

private:
    FileWriter& m_writer;
    SinkObserver& m_observer;
};

}
