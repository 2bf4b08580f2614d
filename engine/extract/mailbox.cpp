#include "engine/extract/mailbox.h"

#include <chrono>

namespace vantoro {

namespace {
using Clock = std::chrono::steady_clock;
constexpr auto kInterval = std::chrono::milliseconds(50);
}

void Mailbox::tell(EntryNote note)
{
    std::unique_lock lock(m_mutex);
    if (m_items.size() >= kMostUnread) {
        m_arrived.notify_one();
        m_served.wait(lock, [this] { return m_items.size() < kMostUnread; });
    }
    m_items.push_back({std::move(note)});
}

void Mailbox::ask(const Call& call)
{
    bool isAnswered = false;
    std::unique_lock lock(m_mutex);
    m_items.push_back({{}, &call, &isAnswered});
    m_hasQuestion = true;
    m_arrived.notify_one();
    m_served.wait(lock, [&] { return isAnswered; });
}

void Mailbox::close()
{
    const std::lock_guard lock(m_mutex);
    m_isClosed = true;
    m_arrived.notify_one();
}

void Mailbox::deliver(ExtractDelegate& delegate, std::deque<Item>& items, std::string& currentName)
{
    for (auto& item : items) {
        if (!item.call) {
            delegate.willExtract(item.note);
            currentName = std::move(item.note.name);
            continue;
        }
        (*item.call)(delegate);
        const std::lock_guard lock(m_mutex);
        *item.isAnswered = true;
        m_served.notify_all();
    }
    items.clear();
}

void Mailbox::serve(ExtractDelegate& delegate, const std::function<ProgressNote()>& progress)
{
    std::deque<Item> items;
    std::string currentName;
    auto nextProgress = Clock::now() + kInterval;
    for (bool isClosed = false; !isClosed;) {
        {
            std::unique_lock lock(m_mutex);
            m_arrived.wait_until(lock, nextProgress,
                                 [this] { return m_isClosed || m_hasQuestion || m_items.size() >= kMostUnread; });
            items.swap(m_items);
            m_hasQuestion = false;
            isClosed = m_isClosed;
            m_served.notify_all();
        }
        deliver(delegate, items, currentName);
        if (isClosed || Clock::now() >= nextProgress) {
            auto note = progress();
            note.currentName = currentName;
            delegate.progressed(note);
            nextProgress = Clock::now() + kInterval;
        }
    }
}

}
