#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>
#include <span>

namespace orvel {

// One of a queue's buffers: a fixed capacity that its user fills with packets.
struct OutputBuffer
{
    explicit OutputBuffer(quint32 bytes) : data(qsizetype(bytes), '\0') {}
    quint32 capacity() const { return quint32(data.size()); }

    QByteArray data;
    quint32 byteSize = 0;
};

// Plays buffers of packets in the order in which they are enqueued. Every operation may be called from any
// thread, also from inside the queue's own callback; none waits for the device.
class OutputQueue
{
public:
    // Told on the queue's own thread that a buffer has been played and may be filled again. No lock is held.
    using BufferCallback = std::function<void(OutputQueue &queue, OutputBuffer &buffer)>;
    // Told on the queue's own thread when sound starts and when it has ended.
    using IsRunningListener = std::function<void(OutputQueue &queue, bool isRunning)>;

    virtual ~OutputQueue() = default;

    // A buffer lives as long as the queue's core; nothing when there is no memory for it.
    virtual OutputBuffer *allocateBuffer(quint32 bytes) = 0;
    // `descriptions` is empty for a constant bit rate. False when the queue was disposed of or the data is no
    // whole number of packets.
    virtual bool enqueueBuffer(OutputBuffer &buffer,
                               std::span<const AudioStreamPacketDescription> descriptions) = 0;
    // Starts, or goes on after pause(). False when no device could be made ready; opening it happens on the
    // queue's thread.
    virtual bool start() = 0;
    // Keeps what is queued.
    virtual void pause() = 0;
    // At once (what is queued is dropped, its buffers are handed back), or after what is queued has been
    // played.
    virtual void stop(bool immediate) = 0;
    // Plays what decoder and converter still hold back of the buffers so far, without stopping.
    virtual void flush() = 0;
    // Ends the queue at once; nothing is called back after a callback already running has returned.
    virtual void dispose() = 0;

    virtual void setVolume(float volume) = 0; // 0.0 to 1.0
    virtual void setMagicCookie(const QByteArray &cookie) = 0;
    virtual void addIsRunningListener(IsRunningListener listener) = 0;
    // Frames played since the first start, at the queue's sample rate.
    virtual double currentTime() const = 0;
};

// Gives nothing when no queue can be made for the format (no decoder, no sense).
using OutputQueueMaker = std::function<std::shared_ptr<OutputQueue>(const AudioStreamBasicDescription &format,
                                                                    OutputQueue::BufferCallback callback)>;

} // namespace orvel
