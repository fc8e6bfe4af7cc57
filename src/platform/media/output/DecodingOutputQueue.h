#pragma once

#include "platform/media/output/OutputQueue.h"
#include "platform/media/output/RenderLine.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <vector>

namespace orvel {

// The one output queue. Its operations only leave orders under a leaf mutex, which is never held while
// calling out. A thread of its own (run) carries them out, decodes, calls back, and opens and closes the
// device.
class DecodingOutputQueue final : public OutputQueue
{
public:
    DecodingOutputQueue(const AudioStreamBasicDescription &format, std::unique_ptr<AudioDecoder> decoder,
                        BufferCallback callback, const OutputQueueOptions &options);

    OutputBuffer *allocateBuffer(quint32 bytes) override;
    bool enqueueBuffer(OutputBuffer &buffer,
                       std::span<const AudioStreamPacketDescription> descriptions) override;
    bool start() override;
    void pause() override;
    void stop(bool immediate) override;
    void flush() override;
    void dispose() override;
    void setVolume(float volume) override;
    void setMagicCookie(const QByteArray &cookie) override;
    void setTrim(const std::optional<AudioTrim> &trim) override;
    void setMediaName(const QString &name) override;
    void addIsRunningListener(IsRunningListener listener) override;
    std::optional<double> currentTime() const override;

    // The body of the queue's thread. Returns after dispose(). The caller keeps the queue alive meanwhile.
    void run();

private:
    enum class Transport { Stopped, Paused, Playing };

    // What is to be done. The thread takes all of it at once.
    struct Orders
    {
        bool isDisposed = false;
        Transport transport = Transport::Stopped;
        bool isStopping = false; // after what is queued
        bool reset = false;
        std::vector<OutputBuffer *> dropped; // by the reset, from the queue
        std::optional<QByteArray> cookie;
        std::optional<std::optional<AudioTrim>> trim;
        std::optional<QString> mediaName;
    };

    // How far the sound was at the thread's last look.
    struct Position
    {
        double playedSeconds = 0;
        double secondsAhead = 0;
        std::chrono::steady_clock::time_point seenAt;
    };

    std::optional<std::vector<AudioStreamPacketDescription>>
    packetsIn(const OutputBuffer &buffer, std::span<const AudioStreamPacketDescription> descriptions) const;
    void wake();
    double playedSeconds() const;
    void notePosition();
    Orders awaitOrders(std::optional<std::chrono::milliseconds> patience);
    void play(bool isStopping);
    std::optional<RenderItem> takeItem();
    bool finishStopping();
    void reset(const std::vector<OutputBuffer *> &dropped);
    void handBack(OutputBuffer &buffer);
    void tellRunning();

    const AudioStreamBasicDescription m_format;
    std::atomic<float> m_volume = 1;
    std::atomic<bool> m_isDisposed = false; // set under the mutex

    mutable std::mutex m_mutex; // guards what follows
    std::condition_variable m_wake;
    bool m_isAwake = true;
    Orders m_orders;
    Position m_position;
    std::deque<RenderItem> m_items;
    bool m_isHungry = false; // the thread takes the next item at once
    std::vector<std::unique_ptr<OutputBuffer>> m_buffers;
    std::vector<IsRunningListener> m_listeners;

    RenderLine m_line; // the queue's thread only, from here
    BufferCallback m_callback;
    bool m_isRunning = false;
};

} // namespace orvel
