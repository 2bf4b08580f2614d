#include "engine/text/normal_form.h"

#include "engine/io/secret.h"
#include "engine/text/charset.h"
#include "engine/text/late_icu.h"

namespace vantoro {

std::string normalized(std::string_view utf8, NormalForm form)
{
    // ASCII is its own normal form.
    if (isAscii(utf8) || !isValidUtf8(utf8) || !icuLibrary.load())
        return std::string(utf8);
    UErrorCode status = U_ZERO_ERROR;
    const auto* const normalizer
        = form == NormalForm::Composed ? unorm2_getNFCInstance(&status) : unorm2_getNFDInstance(&status);
    std::u16string text(utf8.size(), u'\0');
    int32_t length = 0;
    u_strFromUTF8(text.data(), static_cast<int32_t>(text.size()), &length, utf8.data(),
                  static_cast<int32_t>(utf8.size()), &status);
    constexpr std::size_t kMostGrowth = 18; // code units that one becomes
    std::u16string normal(text.size() * kMostGrowth, u'\0');
    length = unorm2_normalize(normalizer, text.data(), length, normal.data(), static_cast<int32_t>(normal.size()),
                              &status);
    std::string result(static_cast<std::size_t>(U_SUCCESS(status) ? length : 0) * 3, '\0');
    int32_t written = 0;
    u_strToUTF8(result.data(), static_cast<int32_t>(result.size()), &written, normal.data(), length, &status);
    wipe(text.data(), text.size() * sizeof text[0]); // it may be a password
    wipe(normal.data(), normal.size() * sizeof normal[0]);
    if (U_FAILURE(status))
        return std::string(utf8);
    result.resize(static_cast<std::size_t>(written));
    return result;
}

}
