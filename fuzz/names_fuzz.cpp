// Decodes the input as a name in every charset and judges it: whatever comes out is valid UTF-8.
#include "engine/text/charset.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view name(reinterpret_cast<const char*>(data), size);
    vantoro::CharsetDetector detector;
    detector.add(name);
    (void)detector.detect();
    for (const auto& charset : vantoro::charsets()) {
        if (!vantoro::isValidUtf8(vantoro::decode(name, charset.id)))
            std::abort();
    }
    return 0;
}
