#pragma once

#include "demo/Encoder.h"

#include <QtGlobal>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>

namespace orvel::demo {

// One radio's live sound: encoded once whatever the number of listeners, in real time, and only while
// somebody listens. Keeps the last seconds, so that a new listener gets a burst. On a cold start they are
// encoded at full speed.
class Channel
{
public:
    explicit Channel(const Programme &programme);
    Channel(const Channel &) = delete;
    Channel &operator=(const Channel &) = delete;

    const Programme &programme() const { return m_programme; }

    // Somebody who hears the channel from `burst` bytes before its newest frame on. Used by one thread.
    class Listener
    {
    public:
        Listener(Channel &channel, qsizetype burst);
        ~Listener();
        Listener(const Listener &) = delete;
        Listener &operator=(const Listener &) = delete;

        // Waits for the next frame and returns it. A listener that is too slow goes on with the oldest frame
        // kept. nullptr when stopped, or when the sound can't be encoded.
        std::shared_ptr<const Frame> next(const std::stop_token &stop);

    private:
        Channel &m_channel;
        qsizetype m_burst;
        qint64 m_number = -1; // of the next frame; -1 until the burst is there
    };

private:
    using Clock = std::chrono::steady_clock;

    void enter(qsizetype burst);
    void leave();
    void encode(const std::stop_token &stop);
    void keep(Frame frame);
    qint64 burstStart(qsizetype burst) const;

    const Programme &m_programme;
    const Clock::time_point m_born = Clock::now();

    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::deque<std::shared_ptr<const Frame>> m_kept;
    qint64 m_firstNumber = 0; // of the oldest frame kept
    qsizetype m_keptBytes = 0;
    qsizetype m_wanted = 0; // bytes to keep for the greatest burst asked for
    bool m_failed = false;

    std::mutex m_audienceMutex; // taken before m_mutex
    int m_audience = 0;
    std::jthread m_encoder;
};

} // namespace orvel::demo
