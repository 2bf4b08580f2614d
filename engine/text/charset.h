#pragma once

#include "engine/io/result.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vantoro {

/// Stable number of a charset, kept in settings files: never renumber. 0 means unknown or automatic.
using CharsetId = std::uint32_t;
inline constexpr CharsetId kCharsetUnknown = 0;
inline constexpr CharsetId kCharsetUtf8 = 4;
inline constexpr CharsetId kCharsetLatin1 = 5;
inline constexpr CharsetId kCharsetUtf16 = 10; ///< never offered: names here are bytes

struct Charset {
    CharsetId id = kCharsetUnknown;
    const char* name = ""; ///< IANA preferred name, understood by --encoding: "Shift_JIS"
    const char* displayName = ""; ///< "Japanese (Shift JIS)"
};

/// All charsets that names may be in, in the order in which they are offered.
std::span<const Charset> charsets();
/// Null when the number is not known.
const Charset* findCharset(CharsetId id);
/// By IANA name or a usual alias ("CP932", "sjis", "latin1"), letter case and punctuation ignored; null when unknown.
const Charset* findCharset(std::string_view name);

bool isAscii(std::string_view bytes);
bool isValidUtf8(std::string_view bytes);
/// Whether every byte sequence means something in the charset.
bool canDecode(std::string_view bytes, CharsetId charset);
/// To UTF-8. What means nothing in the charset becomes %XX, so that nothing is lost; never fails.
std::string decode(std::string_view bytes, CharsetId charset);
/// From UTF-8; EncodingNeeded when a character has no place in the charset.
Result<std::string> encode(std::string_view utf8, CharsetId charset);

struct Detection {
    CharsetId charset = kCharsetUtf8;
    float confidence = 1.0F; ///< 0 to 1; ASCII and valid UTF-8 have 1
};

/// Judges the charset of all undeclared names of an archive together.
class CharsetDetector {
public:
    /// Keeps at most some 64 KiB of distinct non-ASCII text.
    void add(std::string_view name);
    bool sawOnlyAscii() const { return m_onlyAscii; }
    bool sawOnlyUtf8() const { return m_onlyUtf8; }
    Detection detect() const;

private:
    std::string m_sample; // distinct non-ASCII names, '\n' between them
    std::uint64_t m_lastHash = 0;
    bool m_onlyAscii = true;
    bool m_onlyUtf8 = true;
};

}
