#include "cli/progress_bar.h"

#include "cli/output.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include <sys/ioctl.h>
#include <unistd.h>

namespace vantoro::cli {

namespace {

constexpr double kRateSettles = 1.0; // seconds before rate and time left mean something

std::size_t terminalWidth()
{
    winsize size{};
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 20 ? size.ws_col : 80;
}

std::string timeText(double seconds)
{
    const auto whole = std::lround(seconds);
    std::array<char, 32> text;
    if (whole >= 3600)
        std::snprintf(text.data(), text.size(), "%ld:%02ld:%02ld", whole / 3600, whole / 60 % 60, whole % 60);
    else
        std::snprintf(text.data(), text.size(), "%ld:%02ld", whole / 60, whole % 60);
    return text.data();
}

void write(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stderr); }

}

ProgressBar::ProgressBar(bool wanted) : m_isOn(wanted && ::isatty(STDERR_FILENO) != 0) {}

std::string ProgressBar::rest(const ProgressNote& note, double seconds) const
{
    auto text = "  " + sizeText(note.written);
    if (note.writtenTotal > 0)
        text += " of " + sizeText(note.writtenTotal);
    if (seconds < kRateSettles)
        return text;
    text += "  " + sizeText(static_cast<std::uint64_t>(static_cast<double>(note.written) / seconds)) + "/s";
    const auto fraction = note.fraction();
    if (fraction > 0.01 && fraction < 1)
        text += "  " + timeText(seconds * (1 - fraction) / fraction) + " left";
    return text;
}

void ProgressBar::show(const ProgressNote& note)
{
    if (!m_isOn)
        return;
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - m_start;
    const auto tail = rest(note, elapsed.count());
    const auto fraction = std::clamp(note.fraction(), 0.0, 1.0);
    std::array<char, 16> percent;
    std::snprintf(percent.data(), percent.size(), "%3d %% ", static_cast<int>(fraction * 100));
    const auto width = terminalWidth();
    const auto used = tail.size() + 6 + 3;
    const auto bar = std::min<std::size_t>(width > used ? width - used : 0, 40);
    const auto full = static_cast<std::size_t>(fraction * static_cast<double>(bar));
    write("\r" + std::string(percent.data()) + "[" + std::string(full, '#') + std::string(bar - full, '.') + "]" + tail
          + "\x1B[K");
    m_isShown = true;
}

void ProgressBar::clear()
{
    if (m_isShown)
        write("\r\x1B[K");
    m_isShown = false;
}

}
