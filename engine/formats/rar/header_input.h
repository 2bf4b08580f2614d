#pragma once

#include "engine/io/source.h"

namespace vantoro {

/// Looks at headers anywhere in a volume, through a small window.
class RarHeaderInput {
public:
    explicit RarHeaderInput(SourcePtr source) : m_source(std::move(source)) {}
    std::uint64_t size() const { return m_source->size(); }
    /// Up to `count` bytes from `position`, fewer at the end; valid until the next call.
    Result<ConstBytes> at(std::uint64_t position, std::size_t count);

private:
    SourcePtr m_source;
    std::vector<std::byte> m_window;
    std::uint64_t m_start = 0;
};

}
