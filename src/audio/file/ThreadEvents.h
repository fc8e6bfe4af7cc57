#pragma once

#include <QEventLoop>
#include <QTimer>
#include <atomic>

namespace orvel {

// The events of a thread that waits for them now and then, instead of running a loop. Belongs to the thread
// that makes it.
class ThreadEvents
{
public:
    ThreadEvents();

    // Handles what has happened, or what happens first within `seconds`. Returns early after wake().
    void wait(double seconds);
    // Any thread, also ahead of the wait.
    void wake();
    // Whether wake() was called since this was asked last.
    bool takeWake() { return m_wasWoken.exchange(false); }
    bool wasWoken() const { return m_wasWoken; }

private:
    QEventLoop m_loop; // makes the thread's event dispatcher
    QTimer m_timer;
    std::atomic<bool> m_wasWoken = false;
};

} // namespace orvel
