#pragma once

#include "cli/arguments.h"
#include "engine/open.h"

namespace vantoro::cli {

/// Answers password questions from the option, or from the terminal without echo.
class PasswordSource final : public PasswordProvider {
public:
    explicit PasswordSource(const Arguments& arguments) : m_arguments(arguments) {}
    /// Start of a question about another archive: an option's password is tried again, a terminal asks again.
    void begin(std::string archiveName) { m_archiveName = std::move(archiveName); }
    Result<Secret> password(unsigned attempt) override;

private:
    Result<Secret> readOption();
    const Arguments& m_arguments;
    std::string m_archiveName;
    Secret m_fromOption;
    bool m_optionRead = false;
};

/// Installs handlers: SIGINT, SIGTERM and SIGHUP set the token, SIGPIPE and SIGXFSZ are ignored.
CancelToken cancelOnSignals();
/// 128 + signal when one came, else `status`.
int statusAfterSignals(int status);
/// Asks a yes/no question on the terminal; nothing when there is none.
std::optional<bool> askYesNo(const std::string& question);

/// What the user lets archives ask for.
Limits limitsOf(const Arguments& arguments);

/// Which exit status an error leads to.
Status statusOf(const Error& error);
/// The sentence for an error: plain words, with the system's own reason for input and output, and the volume's name.
std::string sentence(const Error& error, const std::string& missingVolume = {});

}
