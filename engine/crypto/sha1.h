#pragma once

#include "engine/io/bytes.h"

#include <array>

namespace vantoro {

/// The chaining value of SHA-1 (FIPS 180-4).
using Sha1State = std::array<std::uint32_t, 5>;
inline constexpr Sha1State kSha1Start = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};
inline constexpr std::size_t kSha1Block = 64, kSha1Size = 20;

/// The ways to compute it; the fastest that the processor has is taken.
enum class Sha1Engine : std::uint8_t { Portable, Instructions };
Sha1Engine bestSha1Engine();

/// Takes whole blocks into the state.
void sha1Blocks(Sha1State& state, const std::byte* blocks, std::size_t count);
/// One block of 16 words into each of `lanes` states (1 to 4), side by side, so that their latencies overlap.
void sha1Lanes(Sha1State* states, const std::array<std::uint32_t, 16>* blocks, std::size_t lanes, Sha1Engine engine);

class Sha1 {
public:
    void update(ConstBytes bytes);
    std::array<std::byte, kSha1Size> finish();

private:
    friend class HmacSha1;
    Sha1State m_state = kSha1Start;
    std::array<std::byte, kSha1Block> m_pending{};
    std::uint64_t m_length = 0;
};

/// RFC 2104.
class HmacSha1 {
public:
    explicit HmacSha1(ConstBytes key);
    void update(ConstBytes bytes) { m_inner.update(bytes); }
    std::array<std::byte, kSha1Size> finish();

    const Sha1State& innerState() const { return m_innerState; } ///< after the padded key
    const Sha1State& outerState() const { return m_outerState; }

private:
    Sha1State m_innerState, m_outerState;
    Sha1 m_inner;
};

}
