#pragma once

#include <functional>

namespace orvel {

// The main thread's queue of posted blocks. Each block runs on its own turn of the main event loop, in order,
// also while a nested event loop waits.
class MainQueue
{
public:
    using Block = std::function<void()>;

    // Ties the queue to the calling thread, whose event loop will run the blocks. Call once, before any other
    // thread posts; `open` again after `close` (tests make one application after another).
    static void open();
    // Drops what is still queued; later posts are dropped too.
    static void close();

    // Any thread.
    static void async(Block block);
    static bool isEmpty();
    static bool isMainThread();
};

} // namespace orvel
