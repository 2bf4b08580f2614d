#pragma once

#include "engine/crypto/rar_keys.h"
#include "engine/formats/rar/catalog.h"

#include <functional>
#include <map>
#include <mutex>
#include <tuple>

namespace vantoro {

/// The passwords that were given for an archive and the keys made of them. Asking happens on the caller's thread;
/// keys may be asked for by several threads.
class RarKeyRing {
public:
    RarKeyRing(PasswordProvider* provider, CancelToken cancel) : m_provider(provider), m_cancel(std::move(cancel)) {}

    /// Index of a password form for which `works` answers true: among the known ones first, then by asking until one
    /// works. Fails with what the provider answers when there is none to give.
    Result<std::size_t> unlock(const std::function<Result<bool>(std::size_t form)>& works);
    /// A form of a password known already; nothing is asked.
    bool isEmpty() const { return m_forms.empty(); }

    /// The bytes of a form, as the ciphers before rar 2.9 take them.
    std::string_view text(std::size_t form) const { return m_forms[form].text(); }
    Result<Rar3Key> rar3Key(std::size_t form, ConstBytes salt);
    Result<Rar5Key> rar5Key(std::size_t form, const RarEncryption& encryption);

private:
    using KeyName = std::tuple<std::size_t, std::string, unsigned>; // form, salt, exponent

    Result<void> ask();

    PasswordProvider* m_provider;
    CancelToken m_cancel;
    unsigned m_attempt = 0;
    std::vector<Secret> m_forms; // a password may have been typed or stored in several ways
    std::mutex m_mutex;
    std::map<KeyName, Rar3Key> m_rar3Keys;
    std::map<KeyName, Rar5Key> m_rar5Keys;
};

}
