#include "engine/text/normal_form.h"

#include "engine/text/charset.h"

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>

namespace vantoro {

std::string normalized(std::string_view utf8, NormalForm form)
{
    std::string result;
    UErrorCode status = U_ZERO_ERROR;
    const auto* const normalizer = form == NormalForm::Composed ? icu::Normalizer2::getNFCInstance(status)
                                                                : icu::Normalizer2::getNFDInstance(status);
    icu::StringByteSink<std::string> sink(&result);
    if (U_SUCCESS(status) && isValidUtf8(utf8))
        normalizer->normalizeUTF8(0, icu::StringPiece(utf8.data(), static_cast<std::int32_t>(utf8.size())), sink,
                                  nullptr, status);
    else
        status = U_ILLEGAL_ARGUMENT_ERROR;
    return U_SUCCESS(status) ? result : std::string(utf8);
}

}
