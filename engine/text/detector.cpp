#include "engine/text/charset.h"
#include "engine/text/converter.h"
#include "engine/text/late_icu.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <optional>

#include <unicode/utf8.h>

namespace vantoro {

namespace {

// File names are too short for the byte statistics that detectors use on texts. What tells charsets apart in names is
// whether the decoded letters belong together: one script a word, small letters after large ones, frequent letters
// of the language, characters from the common half of the East Asian sets.

constexpr std::size_t kSampleLimit = 64 << 10;

enum class Family : std::uint8_t { Latin, Cyrillic, Greek, Hebrew, Arabic, Thai, Japanese, Chinese, Korean };

struct Candidate {
    CharsetId charset;
    Family family;
    float prior; // how much less usual it is than others that read the same bytes as well
};

constexpr auto kCandidates = std::to_array<Candidate>({
    {20, Family::Japanese, 0.0F},  {25, Family::Chinese, 0.0F},    {30, Family::Korean, 0.0F},
    {27, Family::Chinese, -0.03F}, {21, Family::Japanese, -0.02F}, {35, Family::Cyrillic, 0.0F},
    {36, Family::Cyrillic, 0.0F},  {37, Family::Cyrillic, -0.01F}, {12, Family::Latin, 0.0F},
    {13, Family::Latin, -0.01F},   {14, Family::Latin, -0.02F},    {45, Family::Latin, -0.14F},
    {46, Family::Latin, -0.14F},   {15, Family::Latin, -0.14F},    {50, Family::Greek, -0.02F},
    {52, Family::Greek, -0.02F},   {60, Family::Hebrew, -0.02F},   {62, Family::Hebrew, -0.02F},
    {65, Family::Arabic, -0.03F},  {55, Family::Latin, -0.13F},    {57, Family::Latin, -0.15F},
    {80, Family::Thai, -0.03F},
});

bool isKana(UChar32 c) { return (c >= 0x3041 && c <= 0x3096) || (c >= 0x30A1 && c <= 0x30FC); }
bool isHan(UChar32 c) { return c >= 0x4E00 && c <= 0x9FFF; }
bool isHangul(UChar32 c) { return c >= 0xAC00 && c <= 0xD7A3; }
bool isEastAsian(Family family)
{
    return family == Family::Japanese || family == Family::Chinese || family == Family::Korean;
}

/// Points of a Cyrillic letter, by how frequent it is in Russian and Ukrainian.
float cyrillicFrequency(UChar32 letter)
{
    constexpr std::u32string_view kOften = U"оеаинтсрвлкмдпуяы";
    constexpr std::u32string_view kSometimes = U"ьгзбчйхжшюцщэфёії";
    const auto small = static_cast<char32_t>(u_tolower(letter));
    if (kOften.find(small) != std::u32string_view::npos)
        return 1.0F;
    return kSometimes.find(small) != std::u32string_view::npos ? 0.6F : -0.6F;
}

/// Points of an accented Latin letter: those of the large languages first.
float latinFrequency(UChar32 letter)
{
    constexpr std::u32string_view kOften = U"äöüßéèêàâçñóáíúãõåøæëïôûîùìòœ";
    const auto small = static_cast<char32_t>(u_tolower(letter));
    if (kOften.find(small) != std::u32string_view::npos)
        return 1.0F;
    return u_isalpha(letter) ? 0.55F : -0.8F;
}

/// Han characters of the first level are the common ones; the encoded form tells which those are.
float hanPoints(CharsetId charset, unsigned lead, unsigned trail)
{
    switch (charset) {
    case 20:
        return lead >= 0x88 && (lead < 0x98 || (lead == 0x98 && trail < 0x73)) ? 0.9F : -0.1F;
    case 21:
        return lead >= 0xB0 && lead <= 0xCF ? 0.85F : -0.1F;
    case 25:
        return lead >= 0xB0 && lead <= 0xD7 && trail >= 0xA1 ? 0.95F : -0.25F;
    case 27:
        return lead >= 0xA4 && lead <= 0xC6 ? 0.9F : -0.2F;
    case 30:
        return -0.4F; // Korean names are written in Hangul
    default:
        return 0.0F;
    }
}

struct Symbol {
    UChar32 value = 0;
    unsigned lead = 0, trail = 0; // encoded form
};

class NameScore {
public:
    NameScore(const Candidate& candidate) : m_candidate(candidate) {}

    void add(const Symbol& symbol)
    {
        if (symbol.value < 0x80)
            addAscii(symbol.value);
        else
            addForeign(symbol);
        m_before = symbol.value;
    }
    float average() const
    {
        return m_count == 0 ? 0.0F : std::clamp(m_points / static_cast<float>(m_count), -1.0F, 1.0F);
    }
    unsigned count() const { return m_count; }

private:
    void addAscii(UChar32 value)
    {
        // East Asian text seldom touches small Latin letters; Western text nearly always does.
        if (m_before >= 0x80 && u_islower(value) && isEastAsian(m_candidate.family))
            m_points -= 0.35F;
        if (m_before >= 0x80 && u_isalpha(value) && !isEastAsian(m_candidate.family)
            && m_candidate.family != Family::Latin)
            m_points -= 0.5F;
    }

    void addForeign(const Symbol& symbol)
    {
        ++m_count;
        m_points += foreignPoints(symbol) + joinPoints(symbol.value);
    }

    float foreignPoints(const Symbol& symbol) const
    {
        const auto c = symbol.value;
        if (c < 0xA0 || u_charType(c) == U_CONTROL_CHAR || u_charType(c) == U_PRIVATE_USE_CHAR || !u_isdefined(c))
            return -1.5F;
        if (isEastAsian(m_candidate.family))
            return eastAsianPoints(symbol);
        if (!u_isalpha(c))
            return symbolPoints(c);
        UErrorCode status = U_ZERO_ERROR;
        const auto script = uscript_getScript(c, &status);
        switch (m_candidate.family) {
        case Family::Latin:
            return script == USCRIPT_LATIN ? latinFrequency(c) : -1.0F;
        case Family::Cyrillic:
            return script == USCRIPT_CYRILLIC ? cyrillicFrequency(c) : -1.0F;
        case Family::Greek:
            return script == USCRIPT_GREEK ? 0.9F : -1.0F;
        case Family::Hebrew:
            return script == USCRIPT_HEBREW ? 0.95F : -1.0F;
        case Family::Arabic:
            return script == USCRIPT_ARABIC ? 0.8F : -1.0F;
        default:
            return script == USCRIPT_THAI ? 0.85F : -1.0F;
        }
    }

    float symbolPoints(UChar32 c) const
    {
        if (m_candidate.family == Family::Thai && u_charType(c) == U_NON_SPACING_MARK)
            return 0.8F;
        if (c >= 0x2500 && c <= 0x259F)
            return -1.2F; // box drawing
        if (c == 0xA0 || c == 0x2013 || c == 0x2014 || c == 0x2019 || c == 0xB0 || c == 0xAB || c == 0xBB || c == 0x2116
            || c == 0xA9 || c == 0xAE)
            return 0.1F;
        return -0.8F;
    }

    float eastAsianPoints(const Symbol& symbol) const
    {
        const auto c = symbol.value;
        if (isKana(c))
            return m_candidate.family == Family::Japanese ? 1.0F : -0.3F;
        if (isHangul(c))
            return m_candidate.family == Family::Korean ? (symbol.lead >= 0xB0 ? 1.0F : -0.5F) : -1.0F;
        if (isHan(c))
            return hanPoints(m_candidate.charset, symbol.lead, symbol.trail);
        if (c >= 0xFF61 && c <= 0xFF9F)
            return -0.6F; // half-width katakana
        if ((c >= 0x3000 && c <= 0x301F) || (c >= 0xFF01 && c <= 0xFF5E) || c == 0x30FB || c == 0x2026 || c == 0x00B7)
            return 0.3F;
        return -0.8F;
    }

    /// How a letter goes with the one before it.
    float joinPoints(UChar32 c) const
    {
        if (!u_isalpha(c) || !u_isalpha(m_before))
            return 0.0F;
        if (isEastAsian(m_candidate.family))
            return m_before < 0x80 && u_islower(m_before) ? -0.35F : 0.0F;
        if (u_islower(m_before) && u_isupper(c))
            return -0.7F; // "пРИВЕТ" is KOI8 read as Windows 1251
        if (m_before < 0x80 && m_candidate.family != Family::Latin)
            return -0.6F;
        if (m_before >= 0x80 && m_candidate.family == Family::Latin)
            return -0.25F; // accented letters seldom follow each other
        return m_before < 0x80 && m_candidate.family == Family::Latin ? 0.1F : 0.05F;
    }

    const Candidate& m_candidate;
    UChar32 m_before = 0;
    float m_points = 0;
    unsigned m_count = 0;
};

/// Walks the sample character by character with the encoded bytes of each; nothing when it cannot be decoded.
std::optional<float> score(const Candidate& candidate, std::string_view sample)
{
    const auto* charset = findCharset(candidate.charset);
    const auto* converter = charset ? converterFor(*charset) : nullptr;
    if (!converter)
        return std::nullopt;
    const auto decoded = converter->toUtf8(sample);
    if (!decoded.isWhole)
        return std::nullopt;
    NameScore result(candidate);
    const auto* text = reinterpret_cast<const std::uint8_t*>(decoded.text.data());
    const auto length = static_cast<int32_t>(decoded.text.size());
    std::size_t at = 0; // in the encoded sample
    for (int32_t i = 0; i < length;) {
        UChar32 c = 0;
        U8_NEXT(text, i, length, c);
        const auto byte = [&](std::size_t n) { return n < sample.size() ? static_cast<unsigned char>(sample[n]) : 0U; };
        const bool isSingle = c < 0x80 || !isEastAsian(candidate.family) || (c >= 0xFF61 && c <= 0xFF9F);
        result.add({c, byte(at), isSingle ? 0U : byte(at + 1)});
        at += isSingle ? 1 : 2;
    }
    return result.average() + candidate.prior;
}

CharsetId secondOpinion(std::string_view sample)
{
    if (!uchardetLibrary.load())
        return kCharsetUnknown;
    const auto detector = uchardet_new();
    CharsetId found = kCharsetUnknown;
    if (uchardet_handle_data(detector, sample.data(), sample.size()) == 0) {
        uchardet_data_end(detector);
        if (const auto* charset = findCharset(std::string_view(uchardet_get_charset(detector))))
            found = charset->id;
    }
    uchardet_delete(detector);
    return found == 26 ? CharsetId{25} : found;
}

unsigned foreignBytes(std::string_view sample)
{
    return static_cast<unsigned>(
        std::count_if(sample.begin(), sample.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; }));
}

}

void CharsetDetector::add(std::string_view name)
{
    if (isAscii(name))
        return;
    m_onlyAscii = false;
    m_onlyUtf8 = m_onlyUtf8 && isValidUtf8(name);
    // Paths repeat their folders: only what differs from the name before is worth keeping.
    while (!name.empty()) {
        const auto slash = name.find('/');
        const auto component = name.substr(0, slash);
        name.remove_prefix(slash == std::string_view::npos ? name.size() : slash + 1);
        const auto hash = std::hash<std::string_view>{}(component);
        if (isAscii(component) || hash == m_lastHash || m_sample.size() + component.size() > kSampleLimit)
            continue;
        m_lastHash = hash;
        m_sample += component;
        m_sample += '\n';
    }
}

Detection CharsetDetector::detect() const
{
    if (m_onlyAscii || m_onlyUtf8)
        return {kCharsetUtf8, 1.0F};
    const auto opinion = secondOpinion(m_sample);
    std::vector<std::pair<float, CharsetId>> readings;
    for (const auto& candidate : kCandidates) {
        if (const auto points = score(candidate, m_sample))
            readings.emplace_back(*points + (candidate.charset == opinion ? 0.08F : 0.0F), candidate.charset);
    }
    if (readings.empty())
        return {kCharsetLatin1, 0.0F};
    std::stable_sort(readings.begin(), readings.end(), [](auto& a, auto& b) { return a.first > b.first; });
    const float best = readings.front().first;
    Detection result{readings.front().second, 0.0F};
    // A charset that reads the very same text is no rival.
    const auto text = decode(m_sample, result.charset);
    const auto rival = std::find_if(readings.begin() + 1, readings.end(),
                                    [&](const auto& reading) { return decode(m_sample, reading.second) != text; });
    const float second = rival == readings.end() ? -2.0F : rival->first;
    // Sure where the letters fit together, nothing else fits as well, and there is enough of them.
    const float fit = std::clamp(best, 0.0F, 1.0F);
    const float lead = std::clamp((best - std::max(second, -0.5F)) * 2.5F, 0.0F, 1.0F);
    const float amount = std::min(1.0F, 0.55F + static_cast<float>(foreignBytes(m_sample)) / 24.0F);
    result.confidence = std::clamp((0.45F * fit + 0.55F * lead) * amount, 0.0F, 0.99F);
    return result;
}

}
