#pragma once

#include "engine/extract/extraction.h"

#include <functional>
#include <string>
#include <vector>

namespace vantoro::test {

/// An entry as a hostile reader would hand it over.
struct FakeEntry {
    std::string name;
    std::string data;
    EntryKind kind = EntryKind::File;
    std::string target; ///< of links; empty for a symbolic link: comes as data
    CharsetId charset = kCharsetUtf8;
    PathStyle style = PathStyle::Unix;
    std::optional<std::uint32_t> mode;
    std::optional<std::uint64_t> size; ///< declared; see declaresSizes
    Timestamp modified;
    bool isEncrypted = false;
    Result<void> outcome;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::uint64_t hole = 0; ///< zero bytes that follow the data unstored
    std::uint64_t repeats = 1; ///< of the data
    std::function<void()> before; ///< called on the reading thread
};

FakeEntry file(std::string name, std::string data = "x");
FakeEntry folder(std::string name);
FakeEntry link(std::string name, std::string target);
FakeEntry hardLink(std::string name, std::string target);

/// Emits its entries as they are, on as many lanes as are wished.
class FakeArchive final : public Archive {
public:
    explicit FakeArchive(std::vector<FakeEntry> content) : entries(std::move(content)) { facts.format = "fake"; }

    const ArchiveInfo& info() const override { return facts; }
    Result<void> list(EntryVisitor& visitor) override;
    Result<void> read(const ReadRequest& request, Lanes& lanes) override;

    std::vector<FakeEntry> entries;
    ArchiveInfo facts;
    bool declaresSizes = true;
    Result<void> readOutcome; ///< after all entries
    Result<void> listOutcome;
    unsigned lanesUsed = 1;
    std::size_t blockSize = 100'000;
    bool usesRoom = true; ///< decodes into the receiver's memory
    int lists = 0, reads = 0;

private:
    Result<void> emit(std::size_t index, LaneReceiver& lane);
    static Result<void> emitData(const FakeEntry& entry, std::size_t blockSize, bool usesRoom, LaneReceiver& lane);
};

/// Records what it is told and answers as it was set up.
class RecordingDelegate : public ExtractDelegate {
public:
    void willExtract(const EntryNote& note) override { told.push_back(note.name); }
    void progressed(const ProgressNote& note) override
    {
        last = note;
        ++progressCalls;
    }
    bool entryFailed(const EntryProblem& problem) override
    {
        problems.push_back(problem);
        return goesOn;
    }
    std::optional<CharsetId> chooseCharset(std::string_view, const Detection&) override
    {
        ++charsetQuestions;
        return charset;
    }
    bool allowsSize(const SizeQuestion& question) override
    {
        questions.push_back(question);
        return allows;
    }

    std::vector<std::string> told;
    std::vector<EntryProblem> problems;
    std::vector<SizeQuestion> questions;
    ProgressNote last;
    int progressCalls = 0;
    int charsetQuestions = 0;
    bool goesOn = true;
    bool allows = false;
    std::optional<CharsetId> charset;
};

/// The names of the entries that failed, each with the code's number: "a:20".
std::vector<std::string> failures(const ExtractReport& report);
std::string failure(std::string name, ErrorCode code);

/// Extracts into `destination` with the given options; `stem` is "arc".
Result<ExtractReport> extractInto(const std::string& destination, Archive& archive, ExtractDelegate& delegate,
                                  ExtractOptions options = {}, const CancelToken& cancel = {},
                                  std::uint64_t packedSize = 1 << 20);
Result<ExtractReport> extractInto(const std::string& destination, std::vector<FakeEntry> entries,
                                  ExtractOptions options = {});

}
