#pragma once

#include "platform/media/output/SoundOutput.h"
#include "support/EncodedTone.h"
#include "support/TestLoop.h"

#include <atomic>
#include <functional>
#include <mutex>

namespace orvel::test {

// A buffer of the queue that holds the whole tone.
inline OutputBuffer *filledBuffer(OutputQueue &queue, const EncodedTone &tone)
{
    OutputBuffer *const buffer = queue.allocateBuffer(quint32(tone.bytes.size()));
    buffer->data = tone.bytes;
    buffer->byteSize = buffer->capacity();
    return buffer;
}

// Plays a tone through a queue as a player does: three buffers, filled anew whenever the queue hands one
// back.
class ToneFeeder
{
public:
    explicit ToneFeeder(EncodedTone tone, const OutputQueueOptions &options = {}) : m_tone(std::move(tone))
    {
        queue = newOutputQueue(
            m_tone.format,
            [this](OutputQueue &caller, OutputBuffer &buffer) {
                onCallback(buffer);
                fill(caller, buffer);
            },
            options);
        if (!queue)
            qFatal("No queue for the test's tone");
        queue->addIsRunningListener([this](OutputQueue &, bool isRunning) { m_hasEnded = !isRunning; });
        for (OutputBuffer *&buffer : buffers)
            buffer = queue->allocateBuffer(8192);
    }
    ~ToneFeeder()
    {
        queue.reset();
        joinOutputQueues();
    }

    // Fills the three buffers and starts.
    void play()
    {
        const std::lock_guard lock(m_mutex);
        for (OutputBuffer *buffer : buffers)
            fill(*queue, *buffer);
        m_isStarted = queue->start();
        if (packetsLeft() == 0)
            queue->stop(false);
    }
    // Until the queue says that its sound has ended.
    bool waitForTheEnd()
    {
        return waitUntil([this] { return m_hasEnded.load(); });
    }
    std::size_t packetsLeft() const { return m_tone.packets.size() - m_next; }

    // Called on the queue's thread with each buffer before it is filled again.
    std::function<void(OutputBuffer &)> onCallback = [](OutputBuffer &) {};
    std::shared_ptr<OutputQueue> queue;
    OutputBuffer *buffers[3];

private:
    void fill(OutputQueue &target, OutputBuffer &buffer)
    {
        const std::lock_guard lock(m_mutex);
        std::vector<AudioStreamPacketDescription> packets;
        buffer.byteSize = 0;
        for (; m_next < m_tone.packets.size(); ++m_next) {
            AudioStreamPacketDescription packet = m_tone.packets[m_next];
            if (packet.dataByteSize > buffer.capacity() - buffer.byteSize)
                break;
            buffer.data.replace(buffer.byteSize, packet.dataByteSize,
                                m_tone.bytes.sliced(packet.startOffset, packet.dataByteSize));
            packet.startOffset = buffer.byteSize;
            buffer.byteSize += packet.dataByteSize;
            packets.push_back(packet);
        }
        if (packets.empty())
            return;
        if (m_tone.format.bytesPerPacket != 0)
            packets.clear();
        target.enqueueBuffer(buffer, packets);
        if (m_isStarted && packetsLeft() == 0)
            target.stop(false);
    }

    const EncodedTone m_tone;
    std::recursive_mutex m_mutex;
    std::atomic<std::size_t> m_next = 0;
    bool m_isStarted = false; // guarded by the mutex
    std::atomic<bool> m_hasEnded = false;
};

} // namespace orvel::test
