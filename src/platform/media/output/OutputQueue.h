#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
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
// thread, also from inside the queue's own callback. None waits for the device.
class OutputQueue
{
public:
    // Called on the queue's own thread, without any lock, when a buffer may be filled again.
    using BufferCallback = std::function<void(OutputQueue &queue, OutputBuffer &buffer)>;
    // Called on the queue's own thread when sound starts, and after each stop.
    using IsRunningListener = std::function<void(OutputQueue &queue, bool isRunning)>;

    virtual ~OutputQueue() = default;

    // Returns a buffer that lives as long as the queue; nullptr when there is no memory for it.
    virtual OutputBuffer *allocateBuffer(quint32 bytes) = 0;
    // `descriptions` is empty for packets of constant size. Returns false when the queue is stopping or was
    // disposed of, or when the data is not a whole number of packets.
    virtual bool enqueueBuffer(OutputBuffer &buffer,
                               std::span<const AudioStreamPacketDescription> descriptions) = 0;
    // Starts, or goes on after pause(). Returns false when the queue was disposed of. The device is opened
    // later, on the queue's thread.
    virtual bool start() = 0;
    // Falls silent and keeps what is queued. No effect on a queue that is stopped.
    virtual void pause() = 0;
    // Stops at once, drops what is queued and hands its buffers back; or, not immediate, stops when what is
    // queued has been played. A paused queue plays that after it goes on. One that was not started stops at
    // once.
    virtual void stop(bool immediate) = 0;
    // Plays what the converter still holds back of the buffers so far, without stopping.
    virtual void flush() = 0;
    // Ends the queue at once. No callback begins after this one returns.
    virtual void dispose() = 0;

    virtual void setVolume(float volume) = 0; // 0.0 to 1.0
    virtual void setMagicCookie(const QByteArray &cookie) = 0;
    // Leaves out what the encoder added, counted from the first packet after a stop. nullopt plays all.
    virtual void setTrim(const std::optional<AudioTrim> &trim) = 0;
    // How the sound server's mixer names the sound.
    virtual void setMediaName(const QString &name) = 0;
    virtual void addIsRunningListener(IsRunningListener listener) = 0;
    // The frames heard since the first start after a stop, at the sample rate of the queue's format. Stands
    // still while the queue is paused. nullopt for a queue that is stopped.
    virtual std::optional<double> currentTime() const = 0;
};

// When a buffer goes back to its user.
enum class BufferReturn {
    WhenHeard,
    // As soon as the device has its sound, save the one enqueued last, which goes back when it has been
    // heard.
    WhenTaken,
};

struct OutputQueueOptions
{
    BufferReturn bufferReturn = BufferReturn::WhenHeard;
    double ringSeconds = 2; // of sound, decoded ahead of what the device has taken
    QString mediaName = {};
    // As setMagicCookie(), for formats that can't be decoded without one.
    QByteArray magicCookie = {};
    // How long the time stands while the sound server is gone. After it the time runs on in silence.
    double standingSeconds = 0;
};

// Returns nullptr when there is no decoder for the format.
using OutputQueueMaker = std::function<std::shared_ptr<OutputQueue>(const AudioStreamBasicDescription &format,
                                                                    OutputQueue::BufferCallback callback,
                                                                    const OutputQueueOptions &options)>;

} // namespace orvel
