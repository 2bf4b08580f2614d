#include "tests/support/wave_packer.h"

#include <bit>
#include <cmath>
#include <cstdlib>
#include <random>
#include <stdexcept>
#include <vector>

#include <wavpack/wavpack.h>

namespace vantoro::packers {

namespace {

constexpr std::uint32_t kRate = 44'100;

void put(std::string& out, std::uint32_t value, unsigned bytes)
{
    for (unsigned i = 0; i < bytes; ++i)
        out.push_back(static_cast<char>(value >> 8 * i));
}

std::vector<std::int32_t> samplesOf(const Wave& wave)
{
    std::mt19937 random(wave.channels * 100 + wave.bits);
    std::vector<std::int32_t> samples(wave.frames * wave.channels);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto noise = static_cast<float>(random() % 1000) / 20'000.0F;
        const auto frame = i / wave.channels;
        const auto level = std::sin(static_cast<float>(frame) / 30.0F) * 0.7F + noise;
        samples[i] = wave.isFloat ? std::bit_cast<std::int32_t>(level)
                                  : static_cast<std::int32_t>(std::ldexp(level, static_cast<int>(wave.bits) - 1));
    }
    return samples;
}

std::string headerOf(const Wave& wave, std::uint32_t dataSize)
{
    const auto frameSize = wave.channels * wave.bits / 8;
    std::string header = "RIFF";
    put(header, 36 + dataSize + dataSize % 2 + static_cast<std::uint32_t>(wave.trailer.size()), 4);
    header += "WAVEfmt ";
    put(header, 16, 4);
    put(header, wave.isFloat ? 3 : 1, 2);
    put(header, wave.channels, 2);
    put(header, kRate, 4);
    put(header, kRate * frameSize, 4);
    put(header, frameSize, 2);
    put(header, wave.bits, 2);
    header += "data";
    put(header, dataSize, 4);
    return header;
}

int appendBlock(void* out, void* data, std::int32_t size)
{
    static_cast<std::string*>(out)->append(static_cast<const char*>(data), static_cast<std::size_t>(size));
    return 1;
}

void require(int result, const char* what)
{
    if (result == 0)
        throw std::runtime_error(what);
}

WavpackConfig configOf(const Wave& wave)
{
    WavpackConfig config{};
    config.bits_per_sample = static_cast<int>(wave.bits);
    config.bytes_per_sample = static_cast<int>(wave.bits / 8);
    config.num_channels = static_cast<int>(wave.channels);
    config.channel_mask = (1 << wave.channels) - 1;
    config.sample_rate = kRate;
    config.float_norm_exp = wave.isFloat ? 127 : 0;
    config.flags = wave.flags;
    config.qmode = wave.order;
    config.bitrate = 4;
    config.block_samples = 4000; // so that there are several
    return config;
}

std::string pack(const Wave& wave, std::vector<std::int32_t> samples, std::string header, std::string trailer)
{
    std::string packed;
    auto* context = WavpackOpenFileOutput(&appendBlock, &packed, nullptr);
    auto config = configOf(wave);
    require(WavpackSetConfiguration64(context, &config, static_cast<std::int64_t>(wave.frames), nullptr), "configure");
    // Without being given one, if only of no bytes, the library makes a header.
    const auto kept = static_cast<std::uint32_t>(wave.keepsHeader ? header.size() : 0);
    require(WavpackAddWrapper(context, header.data(), kept), "header");
    require(WavpackPackInit(context), "start");
    require(WavpackPackSamples(context, samples.data(), static_cast<std::uint32_t>(wave.frames)), "pack");
    require(WavpackFlushSamples(context), "flush");
    if (!trailer.empty()) {
        require(WavpackAddWrapper(context, trailer.data(), static_cast<std::uint32_t>(trailer.size())), "trailer");
        require(WavpackFlushSamples(context), "flush");
    }
    WavpackCloseFile(context);
    return packed;
}

}

PackedWave packedWave(const Wave& wave)
{
    const auto samples = samplesOf(wave);
    std::string data;
    for (const auto sample : samples)
        put(data, static_cast<std::uint32_t>(sample) + (wave.bits == 8 ? 128 : 0), wave.bits / 8);
    const auto header = headerOf(wave, static_cast<std::uint32_t>(data.size()));
    const std::string padding(data.size() % 2, '\0');
    auto packed = pack(wave, samples, header, (wave.keepsPadding ? padding : std::string()) + wave.trailer);
    return {header + data + padding + wave.trailer, std::move(packed)};
}

}
