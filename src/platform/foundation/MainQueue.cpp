#include "platform/foundation/MainQueue.h"

#include <QSocketNotifier>
#include <array>
#include <deque>
#include <fcntl.h>
#include <memory>
#include <mutex>
#include <thread>
#include <unistd.h>

namespace orvel {

namespace {

// Posting through a pipe of our own keeps every hand-over between threads under one standard lock.
class Pipe
{
public:
    Pipe()
    {
        if (::pipe(m_ends.data()) != 0)
            qFatal("No pipe for the main queue");
        for (const int end : m_ends) {
            ::fcntl(end, F_SETFL, O_NONBLOCK);
            ::fcntl(end, F_SETFD, FD_CLOEXEC);
        }
    }
    ~Pipe()
    {
        ::close(m_ends[0]);
        ::close(m_ends[1]);
    }
    Pipe(const Pipe &) = delete;
    Pipe &operator=(const Pipe &) = delete;

    int readEnd() const { return m_ends[0]; }
    void signal()
    {
        const char byte = 0;
        [[maybe_unused]] const auto written = ::write(m_ends[1], &byte, 1);
    }
    void drain()
    {
        std::array<char, 64> bytes;
        while (::read(m_ends[0], bytes.data(), bytes.size()) > 0) {
        }
    }

private:
    std::array<int, 2> m_ends{};
};

struct State
{
    std::mutex mutex;
    std::deque<MainQueue::Block> blocks;
    std::unique_ptr<Pipe> pipe;
    std::thread::id thread;
    std::unique_ptr<QSocketNotifier> notifier; // main thread only
};

// Never destroyed: other threads may still post while the process ends.
State &state()
{
    static State &instance = *new State;
    return instance;
}

void runOne()
{
    State &queue = state();
    MainQueue::Block block;
    {
        const std::lock_guard lock(queue.mutex);
        if (!queue.pipe)
            return;
        queue.pipe->drain();
        if (queue.blocks.empty())
            return;
        block = std::move(queue.blocks.front());
        queue.blocks.pop_front();
        if (!queue.blocks.empty())
            queue.pipe->signal(); // before the block runs: it may wait in a nested loop
    }
    block();
}

} // namespace

void MainQueue::open()
{
    State &queue = state();
    const std::lock_guard lock(queue.mutex);
    queue.pipe = std::make_unique<Pipe>();
    queue.thread = std::this_thread::get_id();
    queue.notifier = std::make_unique<QSocketNotifier>(queue.pipe->readEnd(), QSocketNotifier::Read);
    QObject::connect(queue.notifier.get(), &QSocketNotifier::activated, queue.notifier.get(),
                     [] { runOne(); });
}

void MainQueue::close()
{
    State &queue = state();
    queue.notifier.reset();
    std::deque<Block> dropped;
    const std::lock_guard lock(queue.mutex);
    queue.pipe.reset();
    dropped.swap(queue.blocks);
}

void MainQueue::async(Block block)
{
    State &queue = state();
    const std::lock_guard lock(queue.mutex);
    if (!queue.pipe)
        return;
    queue.blocks.push_back(std::move(block));
    if (queue.blocks.size() == 1)
        queue.pipe->signal();
}

bool MainQueue::isEmpty()
{
    State &queue = state();
    const std::lock_guard lock(queue.mutex);
    return queue.blocks.empty();
}

bool MainQueue::isMainThread() { return state().thread == std::this_thread::get_id(); }

} // namespace orvel
