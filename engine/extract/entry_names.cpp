#include "engine/extract/entry_names.h"

namespace vantoro {

bool EntryNames::isUndeclared(std::string_view name, CharsetId declared)
{
    if (declared != kCharsetUnknown && declared != kCharsetUtf8)
        return false;
    if (isAscii(name))
        return false;
    return declared == kCharsetUnknown || !isValidUtf8(name);
}

bool EntryNames::isOpen(std::string_view name, CharsetId declared) const
{
    return m_charset == kCharsetUnknown && isUndeclared(name, declared) && !isValidUtf8(name);
}

std::string_view EntryNames::decoded(std::string_view name, CharsetId declared, std::string& buffer) const
{
    if (isAscii(name))
        return name;
    auto charset = declared;
    if (isUndeclared(name, declared)) {
        charset = m_charset;
        if (charset == kCharsetUnknown)
            charset = kCharsetUtf8;
    }
    if (charset == kCharsetUtf8 && isValidUtf8(name))
        return name;
    buffer = decode(name, charset);
    return buffer;
}

}
