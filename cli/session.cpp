#include "cli/session.h"

#include "cli/output.h"

#include "engine/extract.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace vantoro::cli {

namespace {

constexpr std::size_t kLongestPassword = 4096;

// A handler may touch nothing else.
std::atomic<int> caughtSignal{0};
const CancelToken& signalToken()
{
    static const CancelToken token;
    return token;
}

void onSignal(int number)
{
    caughtSignal.store(number);
    signalToken().cancel();
}

/// A buffer on the stack that is wiped on every way out.
struct LineBuffer {
    std::array<char, kLongestPassword> bytes;
    ~LineBuffer() { wipe(bytes.data(), bytes.size()); }
};

/// Reads up to a line end or the end of the file.
Result<Secret> readLine(int fd)
{
    LineBuffer line;
    std::size_t length = 0;
    while (length < line.bytes.size()) {
        const auto count = ::read(fd, line.bytes.data() + length, 1);
        if (count < 0 && errno == EINTR && caughtSignal.load() == 0)
            continue;
        if (count < 0)
            return Error{caughtSignal.load() != 0 ? ErrorCode::Cancelled : ErrorCode::PasswordNeeded,
                         "reading the password", errno};
        if (count == 0 || line.bytes[length] == '\n')
            break;
        ++length;
    }
    if (length > 0 && line.bytes[length - 1] == '\r')
        --length;
    return Secret(std::string_view(line.bytes.data(), length));
}

/// The terminal with its echo off until the end of the scope.
class QuietTerminal {
public:
    QuietTerminal() : m_fd(::open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY))
    {
        if (m_fd < 0 || ::tcgetattr(m_fd, &m_before) != 0)
            return;
        termios quiet = m_before;
        quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        m_isQuiet = ::tcsetattr(m_fd, TCSAFLUSH, &quiet) == 0;
    }
    ~QuietTerminal()
    {
        if (m_isQuiet)
            ::tcsetattr(m_fd, TCSAFLUSH, &m_before);
        if (m_fd >= 0)
            ::close(m_fd);
    }
    QuietTerminal(const QuietTerminal&) = delete;
    QuietTerminal& operator=(const QuietTerminal&) = delete;
    int fd() const { return m_isQuiet ? m_fd : -1; }

private:
    int m_fd;
    termios m_before{};
    bool m_isQuiet = false;
};

void say(int fd, std::string_view text)
{
    while (!text.empty()) {
        const auto count = ::write(fd, text.data(), text.size());
        if (count <= 0)
            return;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

}

Result<Secret> PasswordSource::readOption()
{
    if (!m_optionRead) {
        int fd = m_arguments.passwordFd.value_or(-1);
        if (m_arguments.passwordFile)
            fd = ::open(m_arguments.passwordFile->c_str(), O_RDONLY | O_CLOEXEC);
        if (fd < 0)
            return Error{ErrorCode::PasswordNeeded, "password file", errno};
        auto line = readLine(fd);
        if (m_arguments.passwordFile)
            ::close(fd);
        m_fromOption = TRY(std::move(line));
        m_optionRead = true;
    }
    return m_fromOption;
}

Result<Secret> PasswordSource::password(unsigned attempt)
{
    if (m_arguments.passwordFile || m_arguments.passwordFd) {
        if (attempt > 0)
            return Error{ErrorCode::WrongPassword, "the given password"};
        return readOption();
    }
    const QuietTerminal terminal;
    if (terminal.fd() < 0)
        return Error{ErrorCode::PasswordNeeded, "no terminal"};
    say(terminal.fd(),
        (attempt > 0 ? "Wrong password. Password for " : "Password for ") + printable(m_archiveName) + ": ");
    auto entered = readLine(terminal.fd());
    say(terminal.fd(), "\n");
    if (entered && entered->isEmpty())
        return Error{ErrorCode::PasswordNeeded, "empty password"};
    return entered;
}

CancelToken cancelOnSignals()
{
    struct sigaction action {};
    action.sa_handler = onSignal;
    (void)signalToken(); // made before a handler may run
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        ::sigaction(number, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    return signalToken();
}

int statusAfterSignals(int status)
{
    const int number = caughtSignal.load();
    return number != 0 && status != kWhole ? 128 + number : status;
}

std::optional<bool> askYesNo(const std::string& question)
{
    const int fd = ::open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY);
    if (fd < 0)
        return std::nullopt;
    say(fd, question + " [y/N] ");
    const auto answer = readLine(fd);
    ::close(fd);
    return answer && (answer->text() == "y" || answer->text() == "Y" || answer->text() == "yes");
}

Status statusOf(const Error& error)
{
    switch (error.code) {
    case ErrorCode::PasswordNeeded:
    case ErrorCode::WrongPassword:
    case ErrorCode::BombRefused:
    case ErrorCode::EncodingNeeded:
        return kUnanswered;
    default:
        return kFailed;
    }
}

Limits limitsOf(const Arguments& arguments)
{
    Limits limits;
    limits.dictionary = std::uint64_t{arguments.maxDictionary} << 20;
    return limits;
}

std::string sentence(const Error& error, const std::string& missingVolume)
{
    std::string text = describe(error.code);
    if (error.code == ErrorCode::MissingVolume && !missingVolume.empty())
        text += ": " + printable(missingVolume);
    if (error.code == ErrorCode::LimitExceeded && error.wanted > 0)
        text += ": " + sizeText(error.wanted) + " of memory (--max-dictionary allows it)";
    if (error.osError != 0)
        text += std::string(": ") + std::strerror(error.osError);
    return text;
}

}
