#pragma once

#include "engine/extract/report.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

namespace vantoro {

/// Carries what the threads of an extraction tell and ask to the thread that called it: one call at a time, in order.
class Mailbox {
public:
    using Call = std::function<void(ExtractDelegate&)>;

    /// Told without waiting for it, except when too much lies unread.
    void tell(EntryNote note);
    /// Waits until the call has been made.
    void ask(const Call& call);
    /// Nothing more will come.
    void close();

    /// On the caller's thread, until close(). Progress is told at most 20 times a second.
    void serve(ExtractDelegate& delegate, const std::function<ProgressNote()>& progress);

private:
    struct Item {
        EntryNote note;
        const Call* call = nullptr; ///< a question instead of a note
        bool* isAnswered = nullptr;
    };
    static constexpr std::size_t kMostUnread = 4096;

    void deliver(ExtractDelegate& delegate, std::deque<Item>& items, std::string& currentName);

    std::mutex m_mutex;
    std::condition_variable m_arrived; ///< the caller waits
    std::condition_variable m_served; ///< the job's threads wait
    std::deque<Item> m_items;
    bool m_hasQuestion = false;
    bool m_isClosed = false;
};

}
