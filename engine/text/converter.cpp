#include "engine/text/converter.h"

#include "engine/text/late_icu.h"

#include <map>
#include <memory>

namespace vantoro {

namespace {

struct CloseConverter {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using ConverterPtr = std::unique_ptr<UConverter, CloseConverter>;

// Windows' supersets read what the plain sets read and what real archives hold besides.
std::string_view icuName(std::string_view name)
{
    if (name == "Shift_JIS")
        return "ibm-943_P15A-2003"; // CP932 with 0x5C and 0x7E as ASCII
    if (name == "EUC-KR")
        return "windows-949";
    if (name == "GBK")
        return "windows-936";
    if (name == "Big5")
        return "windows-950";
    return name;
}

std::string toText(const UChar* text, int32_t length)
{
    std::string out(static_cast<std::size_t>(length) * 3, '\0');
    int32_t written = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8(out.data(), static_cast<int32_t>(out.size()), &written, text, length, &status);
    out.resize(U_SUCCESS(status) ? static_cast<std::size_t>(written) : 0);
    return out;
}

class IcuConverter final : public Converter {
public:
    explicit IcuConverter(ConverterPtr converter) : m_converter(std::move(converter)) {}

    Decoded toUtf8(std::string_view bytes) const override
    {
        ucnv_reset(m_converter.get());
        std::u16string text(bytes.size() * 2 + 4, u'\0');
        const char* from = bytes.data();
        const char* const end = from + bytes.size();
        UChar* to = text.data();
        UErrorCode status = U_ZERO_ERROR;
        ucnv_toUnicode(m_converter.get(), &to, text.data() + text.size(), &from, end, nullptr, true, &status);
        if (U_SUCCESS(status))
            return {toText(text.data(), static_cast<int32_t>(to - text.data())), bytes.size(), true};
        char bad[8];
        int8_t badLength = sizeof bad;
        UErrorCode ignored = U_ZERO_ERROR;
        ucnv_getInvalidChars(m_converter.get(), bad, &badLength, &ignored);
        const auto consumed = static_cast<std::size_t>(from - bytes.data());
        const auto used = consumed - std::min(consumed, static_cast<std::size_t>(badLength));
        return {toText(text.data(), static_cast<int32_t>(to - text.data())), used, false};
    }

    Result<std::string> fromUtf8(std::string_view utf8) const override
    {
        std::u16string text(utf8.size() + 1, u'\0');
        int32_t length = 0;
        UErrorCode status = U_ZERO_ERROR;
        u_strFromUTF8(text.data(), static_cast<int32_t>(text.size()), &length, utf8.data(),
                      static_cast<int32_t>(utf8.size()), &status);
        std::string out(static_cast<std::size_t>(length) * 4 + 8, '\0');
        const auto count = ucnv_fromUChars(m_converter.get(), out.data(), static_cast<int32_t>(out.size()), text.data(),
                                           length, &status);
        if (U_FAILURE(status))
            return Error{ErrorCode::EncodingNeeded, "character not in the charset"};
        out.resize(static_cast<std::size_t>(count));
        return out;
    }

private:
    ConverterPtr m_converter;
};

std::unique_ptr<Converter> open(const Charset& charset)
{
    if (!icuLibrary.load())
        return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    ConverterPtr converter(ucnv_open(std::string(icuName(charset.name)).c_str(), &status));
    if (U_FAILURE(status) || !converter)
        return nullptr;
    ucnv_setToUCallBack(converter.get(), &UCNV_TO_U_CALLBACK_STOP.function(), nullptr, nullptr, nullptr, &status);
    ucnv_setFromUCallBack(converter.get(), &UCNV_FROM_U_CALLBACK_STOP.function(), nullptr, nullptr, nullptr, &status);
    return U_SUCCESS(status) ? std::make_unique<IcuConverter>(std::move(converter)) : nullptr;
}

}

const Converter* converterFor(const Charset& charset)
{
    // A converter has state: one set a thread.
    thread_local std::map<CharsetId, std::unique_ptr<Converter>> opened;
    const auto known = opened.find(charset.id);
    if (known != opened.end())
        return known->second.get();
    return opened.emplace(charset.id, open(charset)).first->second.get();
}

}
