#include "engine/crypto/pbkdf2.h"
#include "engine/crypto/zip_aes.h"
#include "engine/crypto/zip_cipher.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vantoro {

namespace {

std::string hex(ConstBytes bytes)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const auto byte : bytes) {
        text.push_back(kDigits[std::to_integer<unsigned>(byte) >> 4]);
        text.push_back(kDigits[std::to_integer<unsigned>(byte) & 15]);
    }
    return text;
}

std::vector<Sha1Engine> engines()
{
    std::vector<Sha1Engine> all = {Sha1Engine::Portable};
    if (bestSha1Engine() != Sha1Engine::Portable)
        all.push_back(bestSha1Engine());
    return all;
}

std::string sha1Of(std::string_view text, std::size_t step)
{
    Sha1 hash;
    for (; !text.empty(); text.remove_prefix(std::min(step, text.size())))
        hash.update(asBytes(text.substr(0, step)));
    return hex(hash.finish());
}

// FIPS 180-4 examples; the lengths put the padding on either side of a block's end.
TEST(Sha1, givesThePublishedDigests)
{
    for (const std::size_t step : {1U, 7U, 64U, 1000U}) {
        EXPECT_EQ(sha1Of("", step), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
        EXPECT_EQ(sha1Of("abc", step), "a9993e364706816aba3e25717850c26c9cd0d89d");
        EXPECT_EQ(sha1Of("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq", step),
                  "84983e441c3bd26ebaae4aa1f95129e5e54670f1");
    }
    EXPECT_EQ(sha1Of(std::string(1'000'000, 'a'), 4096), "34aa973cd4c4daa4f61eeb2bdbad27316534016f");
}

TEST(Sha1, enginesAgreeForEveryNumberOfLanes)
{
    for (std::size_t lanes = 1; lanes <= 4; ++lanes) {
        std::array<std::array<std::uint32_t, 16>, 4> blocks;
        std::uint32_t value = 1;
        for (auto& block : blocks) {
            for (auto& word : block)
                word = value = value * 1664525 + 1013904223;
        }
        std::vector<std::array<Sha1State, 4>> results;
        for (const auto engine : engines()) {
            std::array<Sha1State, 4> states;
            states.fill(kSha1Start);
            sha1Lanes(states.data(), blocks.data(), lanes, engine);
            results.push_back(states);
        }
        for (const auto& result : results)
            EXPECT_EQ(result, results.front());
    }
}

// RFC 2202.
TEST(HmacSha1, givesThePublishedCodes)
{
    const auto code = [](std::string_view key, std::string_view text) {
        HmacSha1 hmac(asBytes(key));
        hmac.update(asBytes(text));
        return hex(hmac.finish());
    };
    EXPECT_EQ(code("Jefe", "what do ya want for nothing?"), "effcdf6ae5eb2fa2d27416d5f184df9c259a7c79");
    EXPECT_EQ(code(std::string(20, '\x0b'), "Hi There"), "b617318655057264e28bc0b6fb378c8ef146be00");
    EXPECT_EQ(code(std::string(80, '\xaa'), "Test Using Larger Than Block-Size Key - Hash Key First"),
              "aa4ae5e15272d00e95705637ce8a3b55ed402112");
}

// RFC 6070.
TEST(Pbkdf2, givesThePublishedKeys)
{
    for (const auto engine : engines()) {
        const auto key = [&](std::string_view password, std::string_view salt, unsigned rounds, std::size_t size,
                             std::size_t skip = 0) {
            std::vector<std::byte> out(size);
            pbkdf2Sha1(asBytes(password), asBytes(salt), rounds, out, skip, engine);
            return hex(out);
        };
        EXPECT_EQ(key("password", "salt", 1, 20), "0c60c80f961f0e71f3a9b524af6012062fe037a6");
        EXPECT_EQ(key("password", "salt", 2, 20), "ea6c014dc72d6f8ccd1ed92ace1d41f0d8de8957");
        EXPECT_EQ(key("password", "salt", 4096, 20), "4b007901b765489abead49d926f721d065a429c1");
        const std::string longPassword = "passwordPASSWORDpassword", longSalt = "saltSALTsaltSALTsaltSALTsaltSALTsalt";
        const auto whole = key(longPassword, longSalt, 4096, 25);
        EXPECT_EQ(whole, "3d2eec4fe41c849b80c8d83662c0e44a8b291a964cf2f07038");
        EXPECT_EQ(key(longPassword, longSalt, 4096, 3, 22), whole.substr(44));
        // More blocks than run side by side.
        EXPECT_EQ(key("p", "s", 3, 130).substr(180), key("p", "s", 3, 40, 90));
    }
}

}

}
