#include "engine/crypto/sha1.h"

#include <algorithm>

#if defined(__x86_64__)
#include <cpuid.h>
#include <immintrin.h>
#endif

namespace vantoro {

namespace {

using Words = std::array<std::uint32_t, 16>;

std::uint32_t bigEndian(const std::byte* from)
{
    std::uint32_t value;
    std::memcpy(&value, from, sizeof value);
    return std::endian::native == std::endian::little ? __builtin_bswap32(value) : value;
}

void portableBlock(Sha1State& state, const Words& block)
{
    std::array<std::uint32_t, 80> w;
    std::copy(block.begin(), block.end(), w.begin());
    for (std::size_t i = 16; i < 80; ++i)
        w[i] = std::rotl(w[i - 3] ^ w[i - 8] ^ w[i - 14] ^ w[i - 16], 1);
    auto a = state[0], b = state[1], c = state[2], d = state[3], e = state[4];
    const auto round = [&](std::uint32_t f, std::uint32_t k, std::uint32_t word) {
        const auto next = std::rotl(a, 5) + f + e + k + word;
        e = d;
        d = c;
        c = std::rotl(b, 30);
        b = a;
        a = next;
    };
    for (std::size_t i = 0; i < 20; ++i)
        round((b & c) | (~b & d), 0x5A827999, w[i]);
    for (std::size_t i = 20; i < 40; ++i)
        round(b ^ c ^ d, 0x6ED9EBA1, w[i]);
    for (std::size_t i = 40; i < 60; ++i)
        round((b & c) | (b & d) | (c & d), 0x8F1BBCDC, w[i]);
    for (std::size_t i = 60; i < 80; ++i)
        round(b ^ c ^ d, 0xCA62C1D6, w[i]);
    state[0] += a;
    state[1] += b;
    state[2] += c;
    state[3] += d;
    state[4] += e;
}

#if defined(__x86_64__)

#define SHA_TARGET __attribute__((target("sha,sse4.1,ssse3")))

/// Four rounds at a time; the message schedule keeps the last 16 words in four registers.
template <std::size_t lanes> SHA_TARGET void instructionBlocks(Sha1State* states, const Words* blocks)
{
    __m128i abcd[lanes], e[lanes], startAbcd[lanes], startE[lanes], w[lanes][4];
    for (std::size_t i = 0; i < lanes; ++i) {
        const auto* state = states[i].data();
        abcd[i] = _mm_shuffle_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(state)), 0x1B);
        e[i] = _mm_set_epi32(static_cast<int>(state[4]), 0, 0, 0);
        startAbcd[i] = abcd[i];
        startE[i] = e[i];
        for (std::size_t k = 0; k < 4; ++k) {
            const auto* words = reinterpret_cast<const __m128i*>(blocks[i].data() + 4 * k);
            w[i][k] = _mm_shuffle_epi32(_mm_loadu_si128(words), 0x1B);
        }
    }
    const auto step = [&]<std::size_t group>(std::integral_constant<std::size_t, group>) SHA_TARGET {
        for (std::size_t i = 0; i < lanes; ++i) {
            if constexpr (group >= 4) {
                auto next = _mm_sha1msg1_epu32(w[i][group % 4], w[i][(group + 1) % 4]);
                next = _mm_xor_si128(next, w[i][(group + 2) % 4]);
                w[i][group % 4] = _mm_sha1msg2_epu32(next, w[i][(group + 3) % 4]);
            }
            const auto before = abcd[i];
            if constexpr (group == 0)
                e[i] = _mm_add_epi32(e[i], w[i][0]);
            else
                e[i] = _mm_sha1nexte_epu32(e[i], w[i][group % 4]);
            abcd[i] = _mm_sha1rnds4_epu32(abcd[i], e[i], group / 5);
            e[i] = before;
        }
    };
    [&]<std::size_t... group>(std::index_sequence<group...>) SHA_TARGET
    {
        (step(std::integral_constant<std::size_t, group>{}), ...);
    }
    (std::make_index_sequence<20>{});
    for (std::size_t i = 0; i < lanes; ++i) {
        e[i] = _mm_sha1nexte_epu32(e[i], startE[i]);
        abcd[i] = _mm_add_epi32(abcd[i], startAbcd[i]);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(states[i].data()), _mm_shuffle_epi32(abcd[i], 0x1B));
        states[i][4] = static_cast<std::uint32_t>(_mm_extract_epi32(e[i], 3));
    }
}

#endif

}

Sha1Engine bestSha1Engine()
{
#if defined(__x86_64__)
    // Asked for by hand: what compilers offer looks at the processor at every start of the program, which takes a tenth
    // of a millisecond where a virtual machine stands behind it.
    static const bool hasInstructions = [] {
        unsigned a = 0, b = 0, c = 0, d = 0;
        const bool hasShuffles = __get_cpuid(1, &a, &b, &c, &d) != 0 && (c & bit_SSSE3) != 0 && (c & bit_SSE4_1) != 0;
        return hasShuffles && __get_cpuid_count(7, 0, &a, &b, &c, &d) != 0 && (b & bit_SHA) != 0;
    }();
    return hasInstructions ? Sha1Engine::Instructions : Sha1Engine::Portable;
#else
    return Sha1Engine::Portable;
#endif
}

void sha1Lanes(Sha1State* states, const Words* blocks, std::size_t lanes, Sha1Engine engine)
{
#if defined(__x86_64__)
    if (engine == Sha1Engine::Instructions) {
        std::size_t i = 0;
        for (; i + 2 <= lanes; i += 2)
            instructionBlocks<2>(states + i, blocks + i);
        if (i < lanes)
            instructionBlocks<1>(states + i, blocks + i);
        return;
    }
#endif
    static_cast<void>(engine);
    for (std::size_t i = 0; i < lanes; ++i)
        portableBlock(states[i], blocks[i]);
}

void sha1Blocks(Sha1State& state, const std::byte* blocks, std::size_t count)
{
    const auto engine = bestSha1Engine();
    for (; count > 0; --count, blocks += kSha1Block) {
        Words words;
        for (std::size_t i = 0; i < words.size(); ++i)
            words[i] = bigEndian(blocks + 4 * i);
        sha1Lanes(&state, &words, 1, engine);
    }
}

void Sha1::update(ConstBytes bytes)
{
    const auto pending = static_cast<std::size_t>(m_length % kSha1Block);
    m_length += bytes.size();
    if (pending > 0) {
        const auto part = std::min(kSha1Block - pending, bytes.size());
        std::memcpy(m_pending.data() + pending, bytes.data(), part);
        bytes = bytes.subspan(part);
        if (pending + part < kSha1Block)
            return;
        sha1Blocks(m_state, m_pending.data(), 1);
    }
    sha1Blocks(m_state, bytes.data(), bytes.size() / kSha1Block);
    const auto rest = bytes.last(bytes.size() % kSha1Block);
    if (!rest.empty())
        std::memcpy(m_pending.data(), rest.data(), rest.size());
}

std::array<std::byte, kSha1Size> Sha1::finish()
{
    const auto bits = m_length * 8;
    std::array<std::byte, kSha1Block + 8> padding{};
    padding[0] = std::byte{0x80};
    const auto used = static_cast<std::size_t>(m_length % kSha1Block);
    const auto length = (used < kSha1Block - 8 ? kSha1Block - 8 : 2 * kSha1Block - 8) - used;
    std::array<std::byte, 8> tail;
    for (std::size_t i = 0; i < tail.size(); ++i)
        tail[i] = static_cast<std::byte>(bits >> (56 - 8 * i));
    update(ConstBytes(padding).first(length));
    update(tail);
    std::array<std::byte, kSha1Size> digest;
    for (std::size_t i = 0; i < digest.size(); ++i)
        digest[i] = static_cast<std::byte>(m_state[i / 4] >> (24 - 8 * (i % 4)));
    return digest;
}

HmacSha1::HmacSha1(ConstBytes key)
{
    std::array<std::byte, kSha1Size> digest;
    if (key.size() > kSha1Block) {
        Sha1 hash;
        hash.update(key);
        digest = hash.finish();
        key = digest;
    }
    std::array<std::byte, kSha1Block> inner, outer;
    inner.fill(std::byte{0x36});
    outer.fill(std::byte{0x5C});
    for (std::size_t i = 0; i < key.size(); ++i) {
        inner[i] ^= key[i];
        outer[i] ^= key[i];
    }
    m_innerState = kSha1Start;
    m_outerState = kSha1Start;
    sha1Blocks(m_innerState, inner.data(), 1);
    sha1Blocks(m_outerState, outer.data(), 1);
    m_inner.m_state = m_innerState;
    m_inner.m_length = kSha1Block;
}

std::array<std::byte, kSha1Size> HmacSha1::finish()
{
    const auto inner = m_inner.finish();
    Sha1 outer;
    outer.m_state = m_outerState;
    outer.m_length = kSha1Block;
    outer.update(inner);
    return outer.finish();
}

}
