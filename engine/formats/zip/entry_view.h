#pragma once

#include "engine/formats/zip/headers.h"

namespace vantoro::zip {

/// Turns a directory header into an Entry. Holds what the entry's views point to, so it outlives each use.
class EntryView {
public:
    const Entry& fill(std::uint64_t index, const DirectoryHeader& header, bool isSizeCredible);

private:
    void fillTimes(const DirectoryHeader& header);
    void fillExtras(const DirectoryHeader& header);
    void nameMethod(const DirectoryHeader& header);

    Entry m_entry;
    std::string m_method;
    std::uint64_t m_methodKey = ~std::uint64_t{0};
    std::string m_owner, m_group;
};

}
