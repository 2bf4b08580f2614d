#pragma once

#include <QtGlobal>

#include <optional>

namespace vantoro {

/// Makes a steady rate and a steady time left out of unsteady progress. The clock is the caller's.
class ProgressEstimate {
public:
    /// Everything that is done at this moment; seconds only grow, bytes and fraction normally do.
    void add(double seconds, quint64 bytes, double fraction);
    /// Forget how fast it went, but not how far: after a pause.
    void pause();

    /// Bytes per second; nothing until it means something.
    std::optional<double> rate() const;
    std::optional<int> secondsLeft() const;

private:
    void settleTimeLeft(double step);

    bool m_hasSample = false;
    double m_lastSeconds = 0;
    quint64 m_lastBytes = 0;
    double m_lastFraction = 0;
    double m_observed = 0; // seconds of progress seen
    double m_bytesPerSecond = 0;
    double m_fractionPerSecond = 0;
    double m_shownLeft = -1;
    double m_disagreement = 0; // seconds for which the shown value has been far off
};

}
