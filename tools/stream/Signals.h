#pragma once

#include <QSocketNotifier>
#include <functional>

namespace orvel {

// Reports Ctrl-C and SIGTERM on the event loop. Calls the handler for the first one; from then on either ends
// the program at once. One object at a time. Main thread.
class Signals
{
public:
    explicit Signals(std::function<void(int signal)> handler);
    ~Signals();
    Signals(const Signals &) = delete;
    Signals &operator=(const Signals &) = delete;

private:
    std::function<void(int)> m_handler;
    QSocketNotifier m_notifier;
};

} // namespace orvel
