#include "extraction/ProgressEstimate.h"

#include <cmath>

namespace vantoro {
namespace {

constexpr double kStep = 0.25; // seconds between two looks
constexpr double kMemory = 6.0; // seconds after which what went before counts for a third
constexpr double kRateAfter = 1.0;
constexpr double kTimeLeftAfter = 3.0;
constexpr double kLeastFraction = 0.01;
constexpr double kTolerance = 0.25; // share of the shown time that a new estimate may differ by
constexpr double kPatience = 2.0; // seconds that it must differ by more before the shown time jumps
constexpr double kLongest = 48.0 * 3600;

}

void ProgressEstimate::add(double seconds, quint64 bytes, double fraction)
{
    if (!m_hasSample || seconds < m_lastSeconds) {
        m_hasSample = true;
        m_lastSeconds = seconds;
        m_lastBytes = bytes;
        m_lastFraction = fraction;
        return;
    }
    const double step = seconds - m_lastSeconds;
    if (step < kStep)
        return;
    const double bytesNow = bytes > m_lastBytes ? static_cast<double>(bytes - m_lastBytes) / step : 0;
    const double fractionNow = qMax(0.0, fraction - m_lastFraction) / step;
    m_observed += step;
    // The start is a plain mean, so that the first look does not weigh more than those that follow.
    const double weight = qMax(1 - std::exp(-step / kMemory), step / m_observed);
    m_bytesPerSecond += (bytesNow - m_bytesPerSecond) * weight;
    m_fractionPerSecond += (fractionNow - m_fractionPerSecond) * weight;
    m_lastSeconds = seconds;
    m_lastBytes = bytes;
    m_lastFraction = fraction;
    settleTimeLeft(step);
}

void ProgressEstimate::pause() { m_hasSample = false; }

void ProgressEstimate::settleTimeLeft(double step)
{
    if (m_observed < kTimeLeftAfter || m_lastFraction < kLeastFraction || m_fractionPerSecond <= 0)
        return;
    const double left = (1 - m_lastFraction) / m_fractionPerSecond;
    if (m_shownLeft < 0) {
        m_shownLeft = left;
        return;
    }
    const double counted = qMax(0.0, m_shownLeft - step);
    const bool isFar = std::abs(left - counted) > kTolerance * counted + 2;
    m_disagreement = isFar ? m_disagreement + step : 0;
    if (m_disagreement >= kPatience) {
        m_shownLeft = left;
        m_disagreement = 0;
    } else {
        m_shownLeft = counted + (left - counted) * 0.1;
    }
}

std::optional<double> ProgressEstimate::rate() const
{
    if (m_observed < kRateAfter || m_bytesPerSecond < 1)
        return std::nullopt;
    return m_bytesPerSecond;
}

std::optional<int> ProgressEstimate::secondsLeft() const
{
    if (m_shownLeft < 0 || m_shownLeft > kLongest)
        return std::nullopt;
    return static_cast<int>(std::lround(m_shownLeft));
}

}
