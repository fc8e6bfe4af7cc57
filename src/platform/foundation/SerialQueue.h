#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace orvel {

// A named queue whose blocks run one at a time, in order, on a small pool of threads that all queues share. A
// queue may be dropped at any time, also by a block of its own: what was queued still runs.
class SerialQueue
{
public:
    using Block = std::function<void()>;

    explicit SerialQueue(const QString &name);
    const QString &name() const;

    // Any thread.
    void async(Block block);
    // Runs `block` on the calling thread, after everything that was queued before it, and returns then.
    // Inside a block of the same queue it runs at once.
    void sync(const Block &block);

    // Waits until all that was queued has run, and ends the pool's threads. For the exit; a later async
    // starts the pool anew.
    static void joinThreads();

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace orvel
