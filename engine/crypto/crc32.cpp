#include "engine/crypto/crc32.h"

#include <libdeflate.h>

namespace vantoro {

std::uint32_t crc32(std::uint32_t crc, ConstBytes bytes) { return libdeflate_crc32(crc, bytes.data(), bytes.size()); }

std::uint32_t adler32(std::uint32_t adler, ConstBytes bytes)
{
    return libdeflate_adler32(adler, bytes.data(), bytes.size());
}

}
