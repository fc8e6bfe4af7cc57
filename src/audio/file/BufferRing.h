#pragma once

#include "platform/media/output/OutputQueue.h"

#include <array>
#include <condition_variable>
#include <mutex>

namespace orvel {

// The sixteen buffers that go round between a streamer's thread and its output queue. Any thread.
class BufferRing
{
public:
    static constexpr std::size_t size = 16;
    using Buffers = std::array<OutputBuffer *, size>;

    // All are free, waits are waits again, and what the output queue so far returns has no effect.
    void clear();
    // The number of the output queue that the buffers belong to.
    quint64 queueNumber() const;
    // Takes that queue's buffers, before it gets the first of them.
    void use(const Buffers &buffers);

    OutputBuffer &buffer(std::size_t index) const;
    // The buffer is enqueued. Returns how many are, it included.
    std::size_t take(std::size_t index);
    // The output queue of this number has returned a buffer. Returns false when it is not one of the sixteen;
    // an earlier queue's number has no effect.
    bool giveBack(const OutputBuffer &buffer, quint64 queueNumber);
    std::size_t buffersUsed() const;

    // Waits until the buffer is free; if it is not now, until half of them are. Returns false at once when
    // interrupted.
    bool waitUntilFree(std::size_t index);
    // Ends the wait, and all later ones until resumeWaiting().
    void interrupt();
    void resumeWaiting();
    bool isInterrupted() const;

private:
    mutable std::mutex m_queueBuffersMutex;
    std::condition_variable m_queueBufferReadyCondition;
    Buffers m_buffers{};
    std::array<bool, size> m_inuse{};
    std::size_t m_buffersUsed = 0;
    quint64 m_queueNumber = 0;
    bool m_isInterrupted = false;
};

} // namespace orvel
