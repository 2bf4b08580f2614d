#pragma once

#include "engine/text/charset.h"

namespace vantoro {

/// Converts between one charset and UTF-8, over ICU.
class Converter {
public:
    struct Decoded {
        std::string text; ///< UTF-8 of the bytes up to the first that mean nothing
        std::size_t used = 0; ///< how many bytes that were
        bool isWhole = true;
    };
    virtual ~Converter() = default;
    virtual Decoded toUtf8(std::string_view bytes) const = 0;
    /// EncodingNeeded when a character has no place in the charset.
    virtual Result<std::string> fromUtf8(std::string_view utf8) const = 0;
};

/// Opened once a thread and kept; null when ICU lacks the charset.
const Converter* converterFor(const Charset& charset);

}
