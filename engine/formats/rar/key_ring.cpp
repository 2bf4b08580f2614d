#include "engine/formats/rar/key_ring.h"

#include "engine/text/normal_form.h"

#include <algorithm>

namespace vantoro {

Result<std::size_t> RarKeyRing::unlock(const std::function<Result<bool>(std::size_t form)>& works)
{
    for (std::size_t form = 0;; ++form) {
        while (form == m_forms.size())
            TRY(ask());
        if (TRY(works(form)))
            return form;
    }
}

Result<void> RarKeyRing::ask()
{
    if (!m_provider)
        return Error{ErrorCode::PasswordNeeded, "rar: nobody to ask for the password"};
    const auto password = TRY(m_provider->password(m_attempt++));
    std::vector<std::string> texts{std::string(password.text())};
    const auto addNew = [&](std::string text) {
        if (!text.empty() && std::find(texts.begin(), texts.end(), text) == texts.end())
            texts.push_back(std::move(text));
    };
    if (!isAscii(password.text())) {
        addNew(normalized(password.text(), NormalForm::Composed));
        addNew(normalized(password.text(), NormalForm::Decomposed));
        // Packers before rar 2.9 took the bytes of their code page.
        for (const auto* const name : {"IBM437", "IBM850", "IBM866", "windows-1252", "windows-1251"}) {
            const auto* const charset = findCharset(name);
            if (auto encoded = charset ? encode(password.text(), charset->id) : Result<std::string>(Error{}))
                addNew(*std::move(encoded));
        }
    }
    for (auto& text : texts) {
        m_forms.emplace_back(text);
        wipe(text.data(), text.size());
    }
    return {};
}

Result<Rar3Key> RarKeyRing::rar3Key(std::size_t form, ConstBytes salt)
{
    const std::lock_guard lock(m_mutex);
    const KeyName name{form, std::string(asText(salt)), 0};
    if (const auto known = m_rar3Keys.find(name); known != m_rar3Keys.end())
        return known->second;
    const auto key = TRY(deriveRar3Key(text(form), salt));
    m_rar3Keys.emplace(name, key);
    return key;
}

Result<Rar5Key> RarKeyRing::rar5Key(std::size_t form, const RarEncryption& encryption)
{
    const std::lock_guard lock(m_mutex);
    const KeyName name{form, std::string(asText(encryption.saltBytes())), encryption.exponent};
    if (const auto known = m_rar5Keys.find(name); known != m_rar5Keys.end())
        return known->second;
    const auto key = TRY(deriveRar5Key(text(form), encryption.saltBytes(), encryption.exponent, m_cancel));
    m_rar5Keys.emplace(name, key);
    return key;
}

}
