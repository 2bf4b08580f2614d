#include "engine/codecs/rar_tokens.h"

namespace vantoro {

Result<void> RarTokenCode::build(std::span<const std::uint8_t> lengths, std::span<const RarWord> words)
{
    constexpr unsigned kBits = 11;
    TRY(RarWordCode::build(lengths, words));
    const auto single = m_quick;
    for (std::size_t i = 0; i < single.size(); ++i) {
        const RarToken first(single[i]);
        if (first.literals() == 0)
            continue;
        const RarToken second(single[i << first.codeLength() & (single.size() - 1)]);
        const auto length = first.codeLength() + second.codeLength();
        if (second.literals() == 1 && length <= kBits)
            m_quick[i] = length | 2U << 4 | unsigned{first.first()} << 8 | unsigned{second.first()} << 16;
    }
    return {};
}

}
