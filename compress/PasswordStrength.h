#pragma once

#include <QString>

namespace vantoro {

enum class PasswordStrength { None, Weak, Fair, Good, Strong };

/// Whether the program was built with the means to tell; without them every password counts as None.
bool knowsPasswordStrength();
/// How long the password would stand against guessing at the speed that archives allow. Names, words, dates and
/// keyboard runs in it count for little.
PasswordStrength passwordStrength(const QString& password);
/// A word for it in the user's language; empty for None.
QString passwordStrengthText(PasswordStrength strength);

}
