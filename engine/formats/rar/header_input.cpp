#include "engine/formats/rar/header_input.h"

#include <algorithm>

namespace vantoro {

Result<ConstBytes> RarHeaderInput::at(std::uint64_t position, std::size_t count)
{
    constexpr std::size_t kSmall = 4 << 10; // one header between large entries
    constexpr std::size_t kLarge = 64 << 10; // headers that follow each other closely
    if (position >= size())
        return ConstBytes();
    count = static_cast<std::size_t>(std::min<std::uint64_t>(count, size() - position));
    const auto inside = position >= m_start && position - m_start <= m_window.size();
    if (!inside || m_window.size() - static_cast<std::size_t>(position - m_start) < count) {
        const auto ahead = std::max(count, inside && !m_window.empty() ? kLarge : kSmall);
        m_window = TRY(readBlock(*m_source, position, ahead));
        m_start = position;
    }
    const auto window = ConstBytes(m_window).subspan(static_cast<std::size_t>(position - m_start));
    return window.first(std::min(count, window.size()));
}

}
