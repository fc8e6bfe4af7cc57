#pragma once

#include <QSocketNotifier>
#include <functional>

namespace orvel {

// Ctrl-C and SIGTERM on the event loop. The first one is told; from then on either ends the program at once.
// One at a time; main thread.
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
