#pragma once

#include "browse/BrowserView.h"

namespace vantoro {

/// The page's long work, one task at a time. Main thread.
class OverlayWork {
public:
    explicit OverlayWork(BrowserView& view) : m_view(view) {}

    bool isRunning() const { return m_isRunning; }
    /// Only while nothing runs; the overlay keeps the user from starting more.
    void run(OverlayTask task);
    /// Stops what runs; `next` is then called in place of what would have followed it. At once when nothing runs.
    void stopThen(std::function<void()> next);
    /// Stops what runs, without waiting.
    void stop();

private:
    void taskFinished(const std::function<void()>& finished);

    BrowserView& m_view;
    bool m_isRunning = false;
    std::function<void()> m_cancel;
    std::function<void()> m_next;
};

}
