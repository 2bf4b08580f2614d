#pragma once

#include "engine/extract/entry_names.h"
#include "engine/extract/options.h"

namespace vantoro {

/// What a listing tells before anything is written.
class Survey final : public EntryVisitor {
public:
    /// `selection`, where given, is sorted. `isTar`: what a sparse entry stores counts, not what it spans.
    /// `packedSize`: of the whole archive.
    Survey(const std::optional<std::vector<std::uint64_t>>& selection, bool isTar, std::uint64_t packedSize,
           CancelToken cancel)
        : m_selection(selection)
        , m_isTar(isTar)
        , m_packedSize(packedSize)
        , m_cancel(std::move(cancel))
    {
    }
    Result<void> visit(const Entry& entry) override;

    std::uint64_t listed() const { return m_listed; } ///< entries of the archive
    std::uint64_t chosen() const { return m_chosen; }
    std::uint64_t bytes() const { return m_bytes; } ///< of the chosen entries, as far as declared
    bool declaresAllSizes() const { return m_declaresAllSizes; }
    /// The first name that only detection can decode; empty when there is none.
    const std::string& firstOpenName() const { return m_firstOpenName; }
    Detection detect() const { return m_detector.detect(); }

private:
    bool isChosen(std::uint64_t index);
    std::uint64_t believable(const Entry& entry) const;

    const std::optional<std::vector<std::uint64_t>>& m_selection;
    const bool m_isTar;
    const std::uint64_t m_packedSize;
    const CancelToken m_cancel;
    std::size_t m_nextChosen = 0;
    std::uint64_t m_listed = 0;
    std::uint64_t m_chosen = 0;
    std::uint64_t m_bytes = 0;
    bool m_declaresAllSizes = true;
    std::string m_firstOpenName;
    CharsetDetector m_detector;
};

}
