#pragma once

#include "audio/live/AudioQueue.h"
#include "platform/foundation/SerialQueue.h"
#include "platform/media/output/OutputQueue.h"

#include <QByteArrayView>
#include <array>
#include <span>
#include <vector>

namespace orvel {

// How many buffers rotate between a player and its output queue.
inline constexpr std::size_t outputBufferCount = 3;
using OutputBufferSet = std::array<OutputBuffer *, outputBufferCount>;

// The packets of one stream on their way into the output buffers. Any thread: every operation runs on the
// lock queue, which guards all fields. The main thread alone changes the output queue and its number.
class OutputBuffers
{
public:
    // Bytes of packets: with fewer, a transfer that was held back is wanted again.
    static constexpr std::size_t lowMark = 1 << 19;

    enum class Change { None, EnqueueFailed, Underrun, StreamEnded };
    struct Outcome
    {
        Change change = Change::None;
        bool hasRunLow = false; // the bytes waiting fell below the low mark
    };
    struct Level
    {
        quint64 queued = 0;      // bytes of packets added since the last underrun, or since the beginning
        std::size_t waiting = 0; // bytes of packets not in a buffer yet
    };

    // Forgets everything. The next output queue has another number.
    void clear();
    // Tells an output queue from its predecessors.
    quint64 outputQueueNumber() const { return m_outputQueueNumber; }
    void use(std::shared_ptr<OutputQueue> queue, const OutputBufferSet &buffers, bool bitRateVaries);

    // Takes packets in. `descriptions` is empty when all have the same size. Skips those that lie beyond the
    // data.
    Level addPackets(quint32 numberOfPackets, QByteArrayView inputData,
                     std::span<const AudioStreamPacketDescription> descriptions);
    Level level();

    // Fills and enqueues all buffers before a (re)start; ends buffering.
    Outcome prime();
    // Fills and enqueues the buffers that came back while no packet waited. No effect while buffering.
    Outcome fillIdle();
    // Fills and enqueues a buffer that has been played. No effect for a queue of another number.
    Outcome returned(OutputBuffer &buffer, quint64 outputQueueNumber);

    // No packets follow. Returns false when nothing is left to be heard.
    bool streamHasEnded();
    // True between an underrun and the next prime().
    bool isBuffering();

private:
    struct Slot
    {
        OutputBuffer *buffer = nullptr;
        bool isEnqueued = false;
    };
    bool fill(Slot &slot);
    Outcome fillAllIdle();
    Outcome outcome(bool isEnqueued, std::size_t waitingBefore);
    std::size_t buffersInUse() const;

    SerialQueue m_lockQueue{QStringLiteral("lockQueue")};
    std::shared_ptr<OutputQueue> m_outputQueue;
    quint64 m_outputQueueNumber = 0;
    std::array<Slot, outputBufferCount> m_slots;
    bool m_hasPacketDescriptions = false;                           // the bit rate varies
    std::vector<AudioStreamPacketDescription> m_packetDescriptions; // of the buffer being filled
    AudioQueue m_packetQueue;
    quint64 m_queuedBytes = 0;
    bool m_isBuffering = false;
    bool m_streamHasEnded = false;
};

} // namespace orvel
