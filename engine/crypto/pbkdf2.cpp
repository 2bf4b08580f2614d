#include "engine/crypto/pbkdf2.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::size_t kMostLanes = 4;
using Words = std::array<std::uint32_t, 16>;

/// A digest as the message of the next HMAC half: 20 bytes behind one block of key, padded.
void putDigest(Words& block, const Sha1State& digest) { std::copy(digest.begin(), digest.end(), block.begin()); }

Words paddedDigestBlock()
{
    Words block{};
    block[5] = 0x80000000;
    block[15] = static_cast<std::uint32_t>((kSha1Block + kSha1Size) * 8);
    return block;
}

/// Blocks `first` to `first + lanes - 1` (from 1) of the derived key.
void deriveBlocks(const HmacSha1& keyed, ConstBytes salt, unsigned rounds, std::uint32_t first, std::size_t lanes,
                  Sha1State* result, Sha1Engine engine)
{
    std::array<Sha1State, kMostLanes> states;
    std::array<Words, kMostLanes> blocks;
    blocks.fill(paddedDigestBlock());
    for (std::size_t i = 0; i < lanes; ++i) {
        auto hmac = keyed;
        const auto number = first + static_cast<std::uint32_t>(i);
        const std::byte counter[4] = {static_cast<std::byte>(number >> 24), static_cast<std::byte>(number >> 16),
                                      static_cast<std::byte>(number >> 8), static_cast<std::byte>(number)};
        hmac.update(salt);
        hmac.update(counter);
        const auto digest = hmac.finish();
        for (std::size_t word = 0; word < states[i].size(); ++word) {
            std::uint32_t value = 0;
            for (std::size_t k = 0; k < 4; ++k)
                value = value << 8 | std::to_integer<std::uint32_t>(digest[4 * word + k]);
            states[i][word] = value;
        }
        result[i] = states[i];
    }
    const auto half = [&](const Sha1State& start) {
        for (std::size_t i = 0; i < lanes; ++i) {
            putDigest(blocks[i], states[i]);
            states[i] = start;
        }
        sha1Lanes(states.data(), blocks.data(), lanes, engine);
    };
    for (unsigned round = 1; round < rounds; ++round) {
        half(keyed.innerState());
        half(keyed.outerState());
        for (std::size_t i = 0; i < lanes; ++i) {
            for (std::size_t word = 0; word < states[i].size(); ++word)
                result[i][word] ^= states[i][word];
        }
    }
}

}

void pbkdf2Sha1(ConstBytes password, ConstBytes salt, unsigned rounds, Bytes out, std::size_t skip, Sha1Engine engine)
{
    const HmacSha1 keyed(password);
    auto block = skip / kSha1Size;
    auto offset = skip % kSha1Size;
    while (!out.empty()) {
        const auto lanes = std::min(kMostLanes, (offset + out.size() + kSha1Size - 1) / kSha1Size);
        std::array<Sha1State, kMostLanes> derived;
        deriveBlocks(keyed, salt, rounds, static_cast<std::uint32_t>(block + 1), lanes, derived.data(), engine);
        for (auto at = offset; at < lanes * kSha1Size && !out.empty(); ++at) {
            out[0] = static_cast<std::byte>(derived[at / kSha1Size][at % kSha1Size / 4] >> (24 - 8 * (at % 4)));
            out = out.subspan(1);
        }
        block += lanes;
        offset = 0;
    }
}

}
