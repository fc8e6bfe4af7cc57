#include "platform/media/output/QueueThreads.h"

#include <list>
#include <mutex>
#include <system_error>
#include <thread>

namespace orvel {

namespace {

struct Entry
{
    std::thread thread;
    std::function<void()> end;
    bool hasEnded = false;
};

struct Registry
{
    std::mutex mutex;
    std::list<Entry> entries;

    // Takes out the entries for which `which` holds.
    template<typename Predicate>
    std::list<Entry> take(const Predicate &which)
    {
        std::list<Entry> taken;
        const std::lock_guard lock(mutex);
        for (auto entry = entries.begin(); entry != entries.end();) {
            const auto next = std::next(entry);
            if (which(*entry))
                taken.splice(taken.end(), entries, entry);
            entry = next;
        }
        return taken;
    }
};

// Never destroyed: a thread that outlives main still finds it.
Registry &registry()
{
    static Registry &instance = *new Registry;
    return instance;
}

} // namespace

bool QueueThreads::run(std::function<void()> body, std::function<void()> end)
{
    for (Entry &entry : registry().take([](const Entry &candidate) { return candidate.hasEnded; }))
        entry.thread.join();

    const std::lock_guard lock(registry().mutex);
    Entry &entry = registry().entries.emplace_back();
    entry.end = std::move(end);
    try {
        entry.thread = std::thread([body = std::move(body), &entry]() mutable {
            body();
            body = nullptr;
            const std::lock_guard endLock(registry().mutex);
            entry.hasEnded = true;
        });
    } catch (const std::system_error &) {
        registry().entries.pop_back();
        return false;
    }
    return true;
}

void QueueThreads::join()
{
    const auto takeOthers = [] {
        return registry().take(
            [](const Entry &entry) { return entry.thread.get_id() != std::this_thread::get_id(); });
    };
    // A thread may have made another before it was told to end.
    for (std::list<Entry> entries = takeOthers(); !entries.empty(); entries = takeOthers()) {
        for (const Entry &entry : entries)
            entry.end();
        for (Entry &entry : entries)
            entry.thread.join();
    }
}

} // namespace orvel
