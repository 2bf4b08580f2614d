#include "compress/PasswordStrength.h"

#include "engine/io/secret.h"

#include <QCoreApplication>

#ifdef VANTORO_HAS_ZXCVBN
#include <zxcvbn.h>
#endif

namespace vantoro {
#ifdef VANTORO_HAS_ZXCVBN
namespace {

// In bits: what a graphics card guesses against an archive's key derivation in an hour, a month, and many years.
constexpr double kFairFrom = 28;
constexpr double kGoodFrom = 40;
constexpr double kStrongFrom = 56;
constexpr int kLongest = 64; // the estimate's cost grows with the square of the length

}

bool knowsPasswordStrength() { return true; }

PasswordStrength passwordStrength(const QString& password)
{
    if (password.isEmpty())
        return PasswordStrength::None;
    QByteArray start = password.left(kLongest).toUtf8();
    const double bits = ZxcvbnMatch(start.constData(), nullptr, nullptr);
    wipe(start.data(), static_cast<std::size_t>(start.size()));
    if (bits < kFairFrom)
        return PasswordStrength::Weak;
    if (bits < kGoodFrom)
        return PasswordStrength::Fair;
    return bits < kStrongFrom ? PasswordStrength::Good : PasswordStrength::Strong;
}
#else
bool knowsPasswordStrength() { return false; }

PasswordStrength passwordStrength(const QString&) { return PasswordStrength::None; }
#endif

QString passwordStrengthText(PasswordStrength strength)
{
    switch (strength) {
    case PasswordStrength::None:
        return {};
    case PasswordStrength::Weak:
        return QCoreApplication::translate("PasswordStrength", "Weak");
    case PasswordStrength::Fair:
        return QCoreApplication::translate("PasswordStrength", "Fair");
    case PasswordStrength::Good:
        return QCoreApplication::translate("PasswordStrength", "Good");
    case PasswordStrength::Strong:
        return QCoreApplication::translate("PasswordStrength", "Strong");
    }
    return {};
}

}
