#pragma once

#include "engine/formats/arj_headers.h"

namespace vantoro::arj {

/// A piece of an entry's data, packed on its own.
struct Part {
    std::size_t volume = 0; ///< index of Contents::volumes
    Header header;
};

/// An entry; one that goes over several volumes has a part in each.
struct Member {
    std::vector<Part> parts;
    bool isCutShort = false; ///< its next part is not there

    const Header& first() const { return parts.front().header; }
    std::uint64_t size() const;
    std::uint64_t packedSize() const;
};

/// All volumes of a set, read through their headers.
struct Contents {
    std::vector<SourcePtr> volumes;
    std::vector<std::string> volumeNames;
    std::string missingVolume;
    Header archive; ///< of the first volume
    std::vector<Member> members;
    std::optional<Error> damage; ///< why the entries end early
};

/// Reads the set that `source` belongs to, from whichever of its volumes.
Result<Contents> readContents(SourcePtr source, const OpenContext& context);

}
