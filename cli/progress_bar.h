#pragma once

#include "engine/extract.h"

#include <chrono>

namespace vantoro::cli {

/// A line of progress on a terminal's standard error: share, bytes, rate, time left. Silent elsewhere.
class ProgressBar {
public:
    explicit ProgressBar(bool wanted);
    void show(const ProgressNote& note);
    void clear(); ///< takes the line away, before anything else is printed

private:
    std::string rest(const ProgressNote& note, double seconds) const;
    bool m_isOn;
    bool m_isShown = false;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

}
