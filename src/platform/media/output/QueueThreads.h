#pragma once

#include <functional>

namespace orvel {

// The threads of all output queues. None is waited for before the end.
class QueueThreads
{
public:
    // Runs `body` on a thread of its own. `end` makes it return soon, and may be called at any time, also
    // afterwards. Returns false when the system has no thread left.
    static bool run(std::function<void()> body, std::function<void()> end);
    // Ends all bodies and waits for their threads, except the calling one.
    static void join();
};

} // namespace orvel
