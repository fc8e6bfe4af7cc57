#pragma once

#include "demo/Encoder.h"

#include <QtGlobal>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>

namespace orvel::demo {

// One radio's live sound: encoded once whatever the number of listeners, in real time, and only while
// somebody listens. The last seconds are kept, so that a new listener gets a burst; on a cold start they are
// encoded at full speed.
class Channel
{
public:
    explicit Channel(const Programme &programme);
    Channel(const Channel &) = delete;
    Channel &operator=(const Channel &) = delete;

    const Programme &programme() const { return programme_; }
    int encodersStarted() const { return encodersStarted_; }

    // Somebody who hears the channel from `burst` bytes before its newest frame on. Used by one thread.
    class Listener
    {
    public:
        Listener(Channel &channel, qsizetype burst);
        ~Listener();
        Listener(const Listener &) = delete;
        Listener &operator=(const Listener &) = delete;

        // Waits for the next frame. Who is too slow for what is kept goes on with the oldest frame kept. Null
        // when stopped, or when the sound can't be encoded.
        std::shared_ptr<const Frame> next(const std::stop_token &stop);

    private:
        Channel &channel_;
        qsizetype burst_;
        qint64 number_ = -1; // of the next frame; -1 until the burst is there
    };

private:
    using Clock = std::chrono::steady_clock;

    void enter(qsizetype burst);
    void leave();
    void encode(const std::stop_token &stop);
    void keep(Frame frame);
    qint64 burstStart(qsizetype burst) const;

    const Programme &programme_;
    const Clock::time_point born_ = Clock::now();
    std::atomic<int> encodersStarted_ = 0;

    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::deque<std::shared_ptr<const Frame>> kept_;
    qint64 firstNumber_ = 0; // of the oldest frame kept
    qsizetype keptBytes_ = 0;
    qsizetype wanted_ = 0; // bytes to keep for the greatest burst asked for
    bool failed_ = false;

    std::mutex audienceMutex_; // taken before mutex_
    int audience_ = 0;
    std::jthread encoder_;
};

} // namespace orvel::demo
