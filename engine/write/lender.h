#pragma once

#include <memory>
#include <mutex>
#include <vector>

namespace vantoro {

/// Objects that are dear to make, lent to one user at a time; any thread may ask.
template <class T> class Lender {
public:
    /// One that was given back, else what `make` makes.
    template <class Make> std::shared_ptr<T> take(Make&& make)
    {
        {
            const std::lock_guard lock(m_mutex);
            if (!m_free.empty()) {
                auto last = std::move(m_free.back());
                m_free.pop_back();
                return last;
            }
        }
        return make();
    }
    void giveBack(std::shared_ptr<T> object)
    {
        const std::lock_guard lock(m_mutex);
        m_free.push_back(std::move(object));
    }

private:
    std::mutex m_mutex;
    std::vector<std::shared_ptr<T>> m_free;
};

}
