#pragma once

#include "engine/io/bytes.h"

#include <string>
#include <string_view>

/// Packed streams made at run time by the libraries' encoders, for tests and benchmarks.
namespace vantoro::packers {

struct GzipFields {
    std::string name;
    std::uint32_t modified = 0;
    bool headerCrc = false;
};

std::string deflate(std::string_view data, int level = 6);
std::string zlib(std::string_view data, int level = 6);
std::string gzip(std::string_view data, const GzipFields& fields = {}, int level = 6);
std::string bzip2(std::string_view data, int blockSize = 9);
/// `blockSize` 0: one block.
std::string xz(std::string_view data, std::size_t blockSize = 0, unsigned preset = 1);
std::string lzmaAlone(std::string_view data, unsigned preset = 1);
std::string lzip(std::string_view data);
std::string zstd(std::string_view data, int level = 3);
std::string lz4(std::string_view data);
std::string lz4Legacy(std::string_view data);
std::string lzop(std::string_view data);
std::string brotli(std::string_view data);
std::string compress(std::string_view data, unsigned largestWidth = 16, bool hasClear = true);

/// Reproducible data: text-like with repeats, runs and incompressible stretches.
std::string sampleData(std::size_t size);

}
