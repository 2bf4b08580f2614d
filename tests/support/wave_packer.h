#pragma once

#include <cstdint>
#include <string>

namespace vantoro::packers {

struct Wave {
    unsigned channels = 2, bits = 16;
    bool isFloat = false;
    std::size_t frames = 30'000;
    std::string trailer; ///< chunks behind the samples
    bool keepsHeader = true; ///< in the packed stream
    bool keepsPadding = false; ///< with the trailer, as older packers do
    int flags = 0, order = 0; ///< libwavpack's CONFIG_… and QMODE_…
};

struct PackedWave {
    std::string file, packed;
};

/// A wave file of a tone with noise, and the stream that libwavpack makes of it.
PackedWave packedWave(const Wave& wave);

}
