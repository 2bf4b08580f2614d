#pragma once

#include "engine/formats/rar/catalog.h"

namespace vantoro {

/// A name of rar 1.5 to 4: 8-bit text, UTF-8, or 8-bit text with a compact form of UTF-16 behind it.
void setOldName(RarMember& member, ConstBytes field, bool isUnicode, bool fromDos);
/// A name or link target of rar 5.
struct RarNewText {
    std::string text;
    CharsetId charset = kCharsetUtf8;
};
RarNewText newText(std::string_view field, bool fromWindows);
/// Text of unknown charset as UTF-8.
std::string guessedText(std::string_view bytes);

Timestamp unixTime(std::uint32_t seconds, std::uint32_t nanoseconds = 0);
/// The extended times of rar 3; `member` has its modification time in DOS form already.
void readExtendedTimes(ByteReader& in, RarMember& member);

}
