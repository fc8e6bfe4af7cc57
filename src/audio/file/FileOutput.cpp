#include "audio/file/FileOutput.h"

#include "platform/foundation/Log.h"
#include "platform/foundation/MainQueue.h"

#include <algorithm>

namespace orvel {

namespace {

constexpr quint32 kAQDefaultBufSize = 2048;
constexpr quint32 maxBufferSize = 256 * 1024; // of packets that a decoder takes
constexpr std::size_t startThreshold = 15;    // buffers
constexpr double ringSeconds = 1.5;
constexpr double standingSeconds = 10;

} // namespace

FileOutput::FileOutput(StreamerStates &states, FileTiming &timing, OutputQueueMaker newOutputQueue,
                       QString mediaName)
    : m_states(states)
    , m_timing(timing)
    , m_newOutputQueue(std::move(newOutputQueue))
    , m_mediaName(std::move(mediaName))
{
}

void FileOutput::begin(std::weak_ptr<void> owner, bool isInterrupted)
{
    m_owner = std::move(owner);
    m_isInterrupted = isInterrupted;
    m_ring->clear();
    m_fill.clear();
    m_fillBufferIndex = 0;
}

std::shared_ptr<OutputQueue> FileOutput::dispose()
{
    std::shared_ptr<OutputQueue> queue = std::exchange(m_audioQueue, nullptr);
    if (queue)
        queue->dispose();
    m_packetBufferSize = 0;
    return queue;
}

void FileOutput::createQueue(const AudioFileStream &stream)
{
    const quint64 number = m_ring->queueNumber();
    // A last release of the owner must not happen on the queue's thread.
    const auto bufferReturned = [this, ring = std::weak_ptr(m_ring), weak = m_owner,
                                 number](OutputQueue &, OutputBuffer &buffer) {
        const std::shared_ptr<BufferRing> buffers = ring.lock();
        if (!buffers || buffers->giveBack(buffer, number))
            return;
        if (std::shared_ptr<void> owner = weak.lock()) {
            m_states.failWithErrorCode(AudioStreamerErrorAudioQueueBufferMismatch);
            MainQueue::async([last = std::move(owner)] {});
        }
    };
    m_audioQueue = m_newOutputQueue(m_timing.format(), bufferReturned,
                                    {.bufferReturn = BufferReturn::WhenTaken,
                                     .ringSeconds = ringSeconds,
                                     .mediaName = m_mediaName,
                                     .magicCookie = stream.magicCookie(),
                                     .standingSeconds = standingSeconds});
    if (!m_audioQueue) {
        m_states.failWithErrorCode(AudioStreamerErrorAudioQueueCreation,
                                   AudioStatus(fourCharacterCode("fmt?")));
        return;
    }
    m_audioQueue->addIsRunningListener([this, weak = m_owner, number](OutputQueue &, bool isRunning) {
        if (std::shared_ptr<void> owner = weak.lock()) {
            handleQueueRunning(number, isRunning);
            MainQueue::async([last = std::move(owner)] {});
        }
    });
    allocateBuffers(stream);
}

void FileOutput::allocateBuffers(const AudioFileStream &stream)
{
    const quint32 bound = stream.packetSizeUpperBound().value_or(0);
    const quint32 maximum = bound > 0 ? bound : stream.maximumPacketSize().value_or(0);
    m_packetBufferSize = maximum > 0 ? maximum : kAQDefaultBufSize;
    BufferRing::Buffers buffers{};
    for (OutputBuffer *&buffer : buffers) {
        buffer =
            m_packetBufferSize <= maxBufferSize ? m_audioQueue->allocateBuffer(m_packetBufferSize) : nullptr;
        if (!buffer) {
            m_states.failWithErrorCode(AudioStreamerErrorAudioQueueBufferAllocation,
                                       AudioStatus(fourCharacterCode("mem?")));
            return;
        }
    }
    m_ring->use(buffers);
    m_audioQueue->setTrim(stream.trim());
}

void FileOutput::handlePacket(const AudioFileStream &stream, quint32 numberOfPackets,
                              QByteArrayView inputData,
                              std::span<const AudioStreamPacketDescription> descriptions)
{
    if (!prepareForPackets(stream, numberOfPackets, descriptions))
        return;
    if (descriptions.empty())
        fillConstant(inputData);
    else
        fillDescribed(inputData, descriptions);
}

bool FileOutput::prepareForPackets(const AudioFileStream &stream, quint32 numberOfPackets,
                                   std::span<const AudioStreamPacketDescription> descriptions)
{
    const StreamerLock::Holder holder(m_states.lock());
    if (m_states.isFinishing() || m_ring->isInterrupted())
        return false;
    if (!m_audioQueue)
        createQueue(stream);
    m_timing.addPackets(numberOfPackets, descriptions);
    return !m_states.isOver();
}

void FileOutput::fillDescribed(QByteArrayView inputData,
                               std::span<const AudioStreamPacketDescription> descriptions)
{
    for (const AudioStreamPacketDescription &packet : descriptions) {
        if (packet.dataByteSize > m_packetBufferSize) {
            m_states.failWithErrorCode(AudioStreamerErrorBufferTooSmall);
            return;
        }
        if (m_fill.bytesFilled() + packet.dataByteSize > m_packetBufferSize && !enqueueAndWait())
            return;
        m_fill.addPacket(inputData.sliced(packet.startOffset, packet.dataByteSize), packet);
        if (m_fill.isFullOfPackets() && !enqueueAndWait())
            return;
    }
}

// A buffer takes whole packets alone, which is less than its size when that is no multiple of theirs.
void FileOutput::fillConstant(QByteArrayView inputData)
{
    const qsizetype packet = m_timing.format().bytesPerPacket;
    const qsizetype room = packet > 0 ? kAQDefaultBufSize - kAQDefaultBufSize % packet : 0;
    if (room == 0) {
        m_states.failWithErrorCode(AudioStreamerErrorBufferTooSmall);
        return;
    }
    while (!inputData.isEmpty()) {
        if (m_fill.bytesFilled() == room && !enqueueAndWait())
            return;
        const qsizetype count = std::min(room - m_fill.bytesFilled(), inputData.size());
        m_fill.addBytes(inputData.first(count));
        inputData = inputData.sliced(count);
    }
}

// Returns false when nothing more may be filled: the streamer is finishing, or about to seek.
bool FileOutput::enqueueAndWait() { return enqueueBuffer() && m_ring->waitUntilFree(m_fillBufferIndex); }

bool FileOutput::enqueueBuffer()
{
    // It is free but after a seek that did not wait for its return.
    if (!m_ring->waitUntilFree(m_fillBufferIndex))
        return false;
    const StreamerLock::Holder holder(m_states.lock());
    if (m_states.isFinishing() || m_ring->isInterrupted())
        return false;
    OutputBuffer &buffer = m_ring->buffer(m_fillBufferIndex);
    m_fill.copyTo(buffer);
    const std::size_t used = m_ring->take(m_fillBufferIndex);
    if (!m_audioQueue->enqueueBuffer(buffer, m_fill.packetDescs())) {
        m_states.failWithErrorCode(AudioStreamerErrorAudioQueueEnqueue);
        return false;
    }
    const bool waitsForMore = m_states.isWaitingForData() || m_states.isBuffering();
    if (m_states.state() == AudioStreamerStateFlushingEndOfFile || (waitsForMore && used >= startThreshold))
        startQueue();
    m_fillBufferIndex = (m_fillBufferIndex + 1) % BufferRing::size;
    m_fill.clear();
    return !m_states.isOver();
}

void FileOutput::fileHasEnded()
{
    if (!m_fill.isEmpty()) {
        {
            const StreamerLock::Holder holder(m_states.lock());
            if (m_states.isWaitingForData())
                m_states.setState(AudioStreamerStateFlushingEndOfFile);
        }
        enqueueBuffer();
    }
    const StreamerLock::Holder holder(m_states.lock());
    if (m_states.isFinishing() || m_ring->isInterrupted())
        return;
    if (m_ring->buffersUsed() == 0 && m_states.isWaitingForData()) {
        m_states.failWithErrorCode(AudioStreamerErrorAudioDataNotFound);
        return;
    }
    m_hasReachedEnd = true;
    if (m_states.isWaitingForData())
        m_states.setState(AudioStreamerStateFlushingEndOfFile);
    if (m_states.state() == AudioStreamerStateFlushingEndOfFile || m_states.isBuffering())
        startQueue();
    finishAtEndOfFile();
}

void FileOutput::lookAtBuffers()
{
    const StreamerLock::Holder holder(m_states.lock());
    if (m_states.isOver() || m_ring->buffersUsed() > 0)
        return;
    if (m_states.isPlaying()) {
        m_audioQueue->pause();
        m_states.setState(AudioStreamerStateBuffering);
    } else if (m_states.state() == AudioStreamerStateWaitingForQueueStart && m_hasReachedEnd) {
        // Nothing of it could be decoded, so the queue never runs.
        stopQueue(AudioStreamerStopReasonEndOfFile, true);
    }
}

void FileOutput::startQueue()
{
    const bool isBuffering = m_states.isBuffering();
    if (!isBuffering)
        m_states.setState(AudioStreamerStateWaitingForQueueStart);
    if (!m_audioQueue->start())
        m_states.failWithErrorCode(AudioStreamerErrorAudioQueueStart);
    else if (isBuffering)
        m_states.setState(AudioStreamerStatePlaying);
    playingHasBegun();
}

void FileOutput::handleQueueRunning(quint64 queueNumber, bool isRunning)
{
    const StreamerLock::Holder holder(m_states.lock());
    if (queueNumber != m_ring->queueNumber())
        return;
    if (m_states.state() == AudioStreamerStateWaitingForQueueStart && isRunning) {
        m_states.setState(AudioStreamerStatePlaying);
        playingHasBegun();
    } else if (m_states.state() == AudioStreamerStateStopping && !isRunning) {
        m_states.setState(AudioStreamerStateStopped);
    } else {
        qCDebug(logAudio, "AudioQueue changed state in unexpected way.");
    }
}

void FileOutput::playingHasBegun()
{
    if (!m_states.isPlaying())
        return;
    if (m_isInterrupted) {
        pauseQueue();
        m_pausedByInterruption = true;
    }
    finishAtEndOfFile();
}

// Of a file whose bytes have all come: what is enqueued plays out. It waits until the sound plays.
void FileOutput::finishAtEndOfFile()
{
    if (!m_hasReachedEnd || m_states.isOver() || !m_states.isPlaying())
        return;
    m_audioQueue->flush();
    stopQueue(AudioStreamerStopReasonEndOfFile, false);
}

void FileOutput::stopQueue(AudioStreamerStopReason reason, bool immediate)
{
    m_states.setState(AudioStreamerStateStopping, reason);
    m_audioQueue->stop(immediate);
}

void FileOutput::stopForFailure()
{
    if (m_states.isQueueAtWork())
        stopQueue(AudioStreamerStopReasonError, true);
    m_ring->interrupt();
}

bool FileOutput::stopForUser()
{
    if (!m_audioQueue || !m_states.isQueueStarted())
        return false;
    stopQueue(AudioStreamerStopReasonUserAction, true);
    return true;
}

void FileOutput::stopForSeek(const AudioFileStream &stream, double target)
{
    trimFrom(stream, m_timing.prepareSeek(target, stream, m_packetBufferSize));
    m_fill.clear();
    m_hasReachedEnd = false;
    stopQueue(AudioStreamerStopReasonTemporary, true);
}

// What an encoder has added is left out of the sound from this packet on. Where it begins is not known
// after a jump that is an estimate; then the padding at the end is heard.
void FileOutput::trimFrom(const AudioFileStream &stream, std::optional<qint64> firstPacket)
{
    std::optional<AudioTrim> trim = stream.trim();
    if (trim && !firstPacket)
        trim.reset();
    if (trim) {
        const qint64 before = *firstPacket * m_timing.format().framesPerPacket;
        const qint64 priming = std::min<qint64>(before, trim->primingFrames);
        trim->primingFrames -= quint32(priming);
        if (trim->validFrames)
            trim->validFrames = std::max<qint64>(0, *trim->validFrames - (before - priming));
    }
    m_audioQueue->setTrim(trim);
}

void FileOutput::togglePause()
{
    m_pausedByInterruption = false;
    if (m_states.isPaused())
        resumeQueue();
    else if (m_states.isPlaying())
        pauseQueue();
}

void FileOutput::resumeQueue()
{
    if (!m_audioQueue->start()) {
        m_states.failWithErrorCode(AudioStreamerErrorAudioQueueStart);
        return;
    }
    m_states.setState(AudioStreamerStatePlaying);
    if (m_timing.requestedSeek && canSeek())
        m_ring->interrupt();
    finishAtEndOfFile();
}

void FileOutput::pauseQueue()
{
    m_audioQueue->pause();
    m_states.setState(AudioStreamerStatePaused);
}

void FileOutput::noteStopRequest()
{
    m_pausedByInterruption = false;
    m_ring->interrupt();
}

void FileOutput::setInterrupted(bool isInterrupted)
{
    m_isInterrupted = isInterrupted;
    if (isInterrupted && m_states.isPlaying()) {
        pauseQueue();
        m_pausedByInterruption = true;
    } else if (!isInterrupted && std::exchange(m_pausedByInterruption, false) && m_states.isPaused()) {
        resumeQueue();
    }
}

} // namespace orvel
