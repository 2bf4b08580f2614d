#pragma once

#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>

namespace vantoro {

/// The lock on which a worker waits for the user's answer to one question. The worker asks and waits, the main thread
/// gives; an answer is taken before the next can be given, and one that nobody asked for is dropped, so that a second
/// click cannot answer the question after this one.
template <class T> class Answer {
public:
    /// Worker: a question is open from now on. Call before the question is shown.
    void ask()
    {
        const std::lock_guard lock(m_mutex);
        m_isOpen = true;
        m_value.reset();
    }
    /// Worker: waits for the answer to the question that ask() opened.
    T wait()
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_value || m_final; });
        m_isOpen = false;
        if (m_final)
            return *m_final;
        T value = std::move(*m_value);
        m_value.reset();
        return value;
    }
    /// Main thread: never waits. False when no question is open or it has its answer already.
    bool give(T value)
    {
        const std::lock_guard lock(m_mutex);
        if (!m_isOpen || m_value || m_final)
            return false;
        m_value = std::move(value);
        m_changed.notify_all();
        return true;
    }
    /// The view goes: `value` answers this question and all later ones.
    void close(T value)
    {
        const std::lock_guard lock(m_mutex);
        m_final = std::move(value);
        m_changed.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::optional<T> m_value;
    std::optional<T> m_final;
    bool m_isOpen = false;
};

}
