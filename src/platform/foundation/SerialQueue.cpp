#include "platform/foundation/SerialQueue.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace orvel {

namespace {

class Pool
{
public:
    static Pool &shared()
    {
        static Pool pool;
        return pool;
    }
    ~Pool() { join(); }

    void run(std::function<void()> job)
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(job));
        if (m_jobs.size() > m_idle && m_threads.size() < threadCount)
            m_threads.emplace_back([this] { work(); });
        m_wake.notify_one();
    }

    void join()
    {
        std::unique_lock lock(m_mutex);
        m_ending = true;
        // A job may have started another thread meanwhile.
        while (!m_threads.empty()) {
            std::vector<std::thread> threads;
            threads.swap(m_threads);
            m_wake.notify_all();
            lock.unlock();
            for (std::thread &thread : threads)
                thread.join();
            lock.lock();
        }
        m_ending = false;
    }

private:
    static constexpr std::size_t threadCount = 3;

    void work()
    {
        std::unique_lock lock(m_mutex);
        while (true) {
            ++m_idle;
            m_wake.wait(lock, [this] { return m_ending || !m_jobs.empty(); });
            --m_idle;
            if (m_jobs.empty())
                return;
            const std::function<void()> job = std::move(m_jobs.front());
            m_jobs.pop_front();
            lock.unlock();
            job();
            lock.lock();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<std::function<void()>> m_jobs;
    std::vector<std::thread> m_threads;
    std::size_t m_idle = 0;
    bool m_ending = false;
};

} // namespace

struct SerialQueue::State
{
    explicit State(const QString &queueName) : name(queueName) {}

    // Runs the oldest queued block; the caller holds `running`. False when there was none.
    bool runOldest()
    {
        Block block;
        {
            const std::lock_guard lock(leaf);
            if (blocks.empty())
                return false;
            block = std::move(blocks.front());
            blocks.pop_front();
        }
        block();
        return true;
    }

    const QString name;
    std::recursive_mutex running; // held while a block runs
    int depth = 0;                // blocks open, guarded by `running`
    std::mutex leaf;              // guards `blocks`; nothing is called under it
    std::deque<Block> blocks;
};

SerialQueue::SerialQueue(const QString &name) : m_state(std::make_shared<State>(name)) {}

const QString &SerialQueue::name() const { return m_state->name; }

void SerialQueue::async(Block block)
{
    {
        const std::lock_guard lock(m_state->leaf);
        m_state->blocks.push_back(std::move(block));
    }
    // A job for each block; a sync() that ran it first leaves the job nothing to do.
    Pool::shared().run([state = m_state] {
        const std::lock_guard lock(state->running);
        ++state->depth;
        state->runOldest();
        --state->depth;
    });
}

void SerialQueue::sync(const Block &block)
{
    const std::shared_ptr<State> state = m_state; // the block may drop the queue
    const std::lock_guard lock(state->running);
    const bool outermost = state->depth++ == 0;
    std::size_t before = 0;
    if (outermost) {
        const std::lock_guard leafLock(state->leaf);
        before = state->blocks.size();
    }
    while (before-- > 0 && state->runOldest()) {
    }
    block();
    --state->depth;
}

void SerialQueue::joinThreads() { Pool::shared().join(); }

} // namespace orvel
