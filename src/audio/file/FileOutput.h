#pragma once

#include "audio/file/BufferRing.h"
#include "audio/file/FileTiming.h"
#include "audio/file/FillBuffer.h"
#include "audio/file/StreamerStates.h"

namespace orvel {

// The output side of a file's player: fills the output queue's buffers with the packets, and starts, pauses
// and stops the queue. The lock of the streamer's states guards it, save the ring, which has its own, and the
// buffer that is being filled, which is the reading thread's. That thread alone changes the buffers' size,
// and reads it without the lock.
class FileOutput
{
public:
    FileOutput(StreamerStates &states, FileTiming &timing, OutputQueueMaker newOutputQueue,
               QString mediaName);

    // The streamer begins; no thread reads. The output queue's callbacks keep `owner` alive.
    void begin(std::weak_ptr<void> owner, bool isInterrupted);
    // Ends the queue. The caller lets go of it without the lock.
    [[nodiscard]] std::shared_ptr<OutputQueue> dispose();

    // The reading thread's, without the lock: packets have come, or no more follow. Makes the queue for the
    // first of them. Waits for a free buffer.
    void handlePacket(const AudioFileStream &stream, quint32 numberOfPackets, QByteArrayView inputData,
                      std::span<const AudioStreamPacketDescription> descriptions);
    void fileHasEnded();
    // The reading thread's, now and then: buffers when all has been played.
    void lookAtBuffers();

    // The caller of what follows holds the lock.
    bool canSeek() const { return m_timing.isSeekable() && m_audioQueue; }
    // Stops for a seek, and drops what was gathered. Reading thread.
    void stopForSeek(const AudioFileStream &stream, double target);
    void stopForFailure();
    // Stops the queue at once. Returns false when it was not started.
    bool stopForUser();
    // Nothing more is enqueued before resumeWaiting().
    void interruptWaiting() { m_ring->interrupt(); }
    void resumeWaiting() { m_ring->resumeWaiting(); }
    bool isWaitingInterrupted() const { return m_ring->isInterrupted(); }

    // Pauses what plays, goes on with what is paused.
    void togglePause();
    void noteStopRequest();
    // Pauses what plays while an interruption lasts, and goes on after it.
    void setInterrupted(bool isInterrupted);
    // The frames heard of the current download; nullopt when the queue is stopped.
    std::optional<double> currentTime() const { return m_audioQueue->currentTime(); }

private:
    void createQueue(const AudioFileStream &stream);
    void allocateBuffers(const AudioFileStream &stream);
    bool prepareForPackets(const AudioFileStream &stream, quint32 numberOfPackets,
                           std::span<const AudioStreamPacketDescription> descriptions);
    void fillDescribed(QByteArrayView inputData, std::span<const AudioStreamPacketDescription> descriptions);
    void fillConstant(QByteArrayView inputData);
    bool enqueueAndWait();
    bool enqueueBuffer();
    void trimFrom(const AudioFileStream &stream, std::optional<qint64> firstPacket);

    void startQueue();
    void pauseQueue();
    void resumeQueue();
    void stopQueue(AudioStreamerStopReason reason, bool immediate);
    void playingHasBegun();
    void finishAtEndOfFile();
    // On the output queue's thread.
    void handleQueueRunning(quint64 queueNumber, bool isRunning);

    StreamerStates &m_states;
    FileTiming &m_timing;
    const OutputQueueMaker m_newOutputQueue;
    const QString m_mediaName;

    const std::shared_ptr<BufferRing> m_ring = std::make_shared<BufferRing>();
    FillBuffer m_fill;
    std::size_t m_fillBufferIndex = 0;

    std::weak_ptr<void> m_owner;
    std::shared_ptr<OutputQueue> m_audioQueue;
    quint32 m_packetBufferSize = 0;
    bool m_hasReachedEnd = false; // of the file; its sound may still have to begin or to go on
    bool m_isInterrupted = false;
    bool m_pausedByInterruption = false;
};

} // namespace orvel
