#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <utility>
#include <vector>

namespace orvel {

// A streamer's recursive lock. What must not happen under it is put off until its outermost holder has let
// go.
class StreamerLock
{
public:
    class Holder
    {
    public:
        explicit Holder(StreamerLock &lock) : m_lock(lock)
        {
            m_lock.m_mutex.lock();
            ++m_lock.m_depth;
        }
        ~Holder()
        {
            std::vector<std::function<void()>> due;
            if (--m_lock.m_depth == 0)
                due.swap(m_lock.m_putOff);
            m_lock.m_mutex.unlock();
            for (const std::function<void()> &function : due)
                function();
        }
        Holder(const Holder &) = delete;
        Holder &operator=(const Holder &) = delete;

    private:
        StreamerLock &m_lock;
    };

    // The caller holds the lock. `function` runs on the calling thread once that has let go.
    void afterwards(std::function<void()> function) { m_putOff.push_back(std::move(function)); }
    // What a wait() looks at may have changed.
    void notify() { m_changed.notify_all(); }
    // Waits without holding the lock until `condition`, which is asked under it, holds. Returns false after
    // `seconds` without. The caller does not hold the lock.
    template<typename Condition>
    bool wait(double seconds, const Condition &condition)
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::duration<double>(seconds), condition);
    }

private:
    std::recursive_mutex m_mutex;
    std::condition_variable_any m_changed;
    int m_depth = 0;
    std::vector<std::function<void()>> m_putOff;
};

} // namespace orvel
