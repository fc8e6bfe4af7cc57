#include "audio/live/BufferFill.h"
#include "audio/live/Streamer.h"
#include "platform/foundation/ByteText.h"
#include "platform/foundation/MainQueue.h"
#include "platform/media/output/AudioSession.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvel {

namespace {

constexpr double bufferSeconds = 0.5;
constexpr double maxBoundedBufferSize = 65536;

quint32 bufferSizeOf(double bytes)
{
    return quint32(std::min(bytes, double(std::numeric_limits<qint32>::max())));
}

// Seconds. The more sound waits, the longer the connection may rest: half of what is there even of the
// richest stream, at most a second.
double restBetweenReads(std::size_t bytesWaiting)
{
    constexpr double mostBytesASecond = 320'000.0 / 8;
    return std::min(double(bytesWaiting) / mostBytesASecond / 2, 1.0);
}

} // namespace

AudioFileType Streamer::fileTypeHint() const
{
    const QString &type = m_icyStream.contentType();
    if (equalsIgnoringCase(type, u"audio/mpeg"))
        return AudioFileType::kAudioFileMP3Type;
    if (equalsIgnoringCase(type, u"audio/aac") || equalsIgnoringCase(type, u"audio/aacp"))
        return AudioFileType::kAudioFileAAC_ADTSType;
    return AudioFileType::none;
}

bool Streamer::openParser()
{
    m_hqASBD.reset();
    m_playerState.audioFileStream = m_services.openAudioFileStream(*this, fileTypeHint());
    return m_playerState.audioFileStream != nullptr;
}

void Streamer::parseAudioData(QByteArrayView data)
{
    if (!m_playerState.isPaused)
        m_icyStream.parse(data);
}

bool Streamer::icyHeadersEnded() { return openParser(); }

void Streamer::icyMetadataReady() { tell(&RadioDelegate::radioMetadataReady); }

void Streamer::icyTitleChanged(const QString &title)
{
    m_radioTitle = title;
    tell(&RadioDelegate::radioTitleChanged);
}

bool Streamer::icyAudioGathered(QByteArrayView audio)
{
    // After a parser that could not be opened the sound goes nowhere, but titles are still read.
    if (!m_playerState.audioFileStream)
        return true;
    m_isParsing = true;
    m_playerState.audioFileStream->parseBytes(audio);
    m_isParsing = false;
    if (std::exchange(m_closeParser, false))
        m_playerState.audioFileStream.reset();
    return m_playerState.audioFileStream != nullptr;
}

void Streamer::handlePropertyChange(AudioFileStream &stream, AudioFileStreamProperty property)
{
    if (m_closeParser)
        return;
    if (property == AudioFileStreamProperty::ReadyToProducePackets) {
        readyToProducePackets(stream);
    } else if (const std::vector<AudioStreamBasicDescription> formats = stream.formatList();
               !formats.empty()) {
        m_hqASBD = formats.front();
    }
}

void Streamer::readyToProducePackets(AudioFileStream &stream)
{
    const std::optional<AudioStreamBasicDescription> dataFormat = stream.dataFormat();
    const AudioStreamBasicDescription format =
        m_hqASBD ? *m_hqASBD : dataFormat.value_or(AudioStreamBasicDescription());
    if (!dataFormat || !std::isfinite(format.sampleRate) || format.sampleRate <= 0) {
        fail(RadioErrorFileStreamGetProperty);
        return;
    }
    AudioSession::sharedInstance().setActive(true);
    m_playerState.streamFormat = format;
    if (const RadioError error = makeOutputQueue(stream); error != RadioErrorNone)
        fail(error);
}

RadioError Streamer::makeOutputQueue(AudioFileStream &stream)
{
    // A second parser's format ends the first one's sound.
    disposeOutputQueue();
    m_playerState.queueStarted = false;
    m_playerState.isBuffering = false;
    stopBufferTimer();
    resumeTransfer();
    const AudioStreamBasicDescription &format = m_playerState.streamFormat;
    const quint64 number = m_playerState.outputQueueNumber;
    m_playerState.outputQueue = m_services.newOutputQueue(
        format, [weak = std::weak_ptr(self()), number](OutputQueue &, OutputBuffer &buffer) {
            if (std::shared_ptr<Streamer> streamer = weak.lock()) {
                streamer->handlePlayCallback(buffer, number);
                // A last release must not happen on this thread.
                MainQueue::async([last = std::move(streamer)] {});
            }
        });
    if (!m_playerState.outputQueue)
        return RadioErrorAudioQueueCreate;
    setBufferSizeFor(format, stream.packetSizeUpperBound());
    std::array<QueueBuffer, 3> buffers;
    for (QueueBuffer &slot : buffers) {
        slot.buffer = m_playerState.outputQueue->allocateBuffer(m_playerState.bufferSize);
        if (!slot.buffer)
            return RadioErrorAudioQueueBufferAllocation;
    }
    m_playerState.lockQueue.sync([&] { m_playerState.queueBuffers = buffers; });
    if (const QByteArray cookie = stream.magicCookie(); !cookie.isEmpty())
        m_playerState.outputQueue->setMagicCookie(cookie);
    return RadioErrorNone;
}

void Streamer::setBufferSizeFor(const AudioStreamBasicDescription &format,
                                std::optional<quint32> packetSizeUpperBound)
{
    const bool isConstant = format.bytesPerPacket != 0 && format.framesPerPacket != 0;
    if (isConstant) {
        const double packets = std::trunc(format.sampleRate / format.framesPerPacket * bufferSeconds);
        m_playerState.bufferSize = bufferSizeOf(packets * format.bytesPerPacket);
    } else if (packetSizeUpperBound) {
        const double bytes = format.sampleRate * *packetSizeUpperBound * bufferSeconds;
        m_playerState.bufferSize = bufferSizeOf(std::min(bytes, maxBoundedBufferSize));
    } else {
        m_playerState.bufferSize = bufferSizeOf(std::trunc(format.sampleRate * bufferSeconds));
    }
    m_playerState.lockQueue.sync([&] { m_playerState.hasPacketDescriptions = !isConstant; });
    m_icyStream.setBufferSize(m_playerState.bufferSize);
}

void Streamer::handlePacket(AudioFileStream &, quint32 numberOfPackets, QByteArrayView inputData,
                            std::span<const AudioStreamPacketDescription> descriptions)
{
    if (m_closeParser || numberOfPackets == 0)
        return;
    bool starts = false;
    std::size_t bytesWaiting = 0;
    m_playerState.lockQueue.sync([&] {
        const qint64 constantSize = inputData.size() / numberOfPackets;
        for (quint32 i = 0; i < numberOfPackets; ++i) {
            const AudioStreamPacketDescription description =
                i < descriptions.size()
                    ? descriptions[i]
                    : AudioStreamPacketDescription{i * constantSize, 0, quint32(constantSize)};
            const qint64 size = description.dataByteSize;
            if (size == 0 || description.startOffset < 0 || description.startOffset > inputData.size() - size)
                continue;
            m_playerState.packetQueue.addPacket(
                AudioPacket(inputData.sliced(description.startOffset, size).toByteArray(), description));
            m_playerState.queuedBytes += quint64(size);
        }
        starts = m_playerState.queuedBytes > m_playerState.bufferSize * m_playerState.bufferCount &&
                 m_playerState.outputQueue && !m_playerState.isPaused &&
                 (!m_playerState.queueStarted || m_playerState.isBuffering);
        if (starts)
            m_playerState.isBuffering = false;
        bytesWaiting = m_playerState.packetQueue.byteCount();
    });
    if (starts) {
        primeQueueBuffers();
        startQueue();
    }
    // A server that sends faster than it sounds waits until what is here has been played.
    if (bytesWaiting > transferBound() && m_urlConnection && !m_transferSuspended) {
        m_transferSuspended = true;
        m_urlConnection->suspend();
    }
    if (m_urlConnection && m_radioState == RadioStatePlaying)
        m_urlConnection->readAtMostEvery(restBetweenReads(bytesWaiting));
}

std::size_t Streamer::transferBound() const
{
    constexpr std::size_t margin = 1 << 20;
    return margin + 2 * std::size_t(m_playerState.bufferSize * m_playerState.bufferCount);
}

void Streamer::resumeTransfer()
{
    m_transferSuspended = false;
    if (m_urlConnection)
        m_urlConnection->resume();
}

// On the output queue's thread. What changes states, timers or the queue itself is left to the main thread.
void Streamer::handlePlayCallback(OutputBuffer &buffer, quint64 outputQueueNumber)
{
    if (m_playerState.isPaused)
        return;
    FillOutcome outcome = FillOutcome::Filled;
    bool resumes = false;
    m_playerState.lockQueue.sync([&] {
        if (m_playerState.isPaused || outputQueueNumber != m_playerState.outputQueueNumber)
            return;
        const auto slot =
            std::find_if(m_playerState.queueBuffers.begin(), m_playerState.queueBuffers.end(),
                         [&](const QueueBuffer &candidate) { return candidate.buffer == &buffer; });
        if (slot == m_playerState.queueBuffers.end())
            return;
        outcome = fill(*slot);
        constexpr std::size_t lowMark = 1 << 19;
        resumes = m_playerState.packetQueue.byteCount() < lowMark && m_transferSuspended.exchange(false);
    });
    if (outcome == FillOutcome::Filled && !resumes)
        return;
    MainQueue::async([streamer = self(), outputQueueNumber, outcome, resumes] {
        if (streamer->m_shutdown)
            return;
        if (resumes)
            streamer->resumeTransfer();
        if (outputQueueNumber == streamer->m_playerState.outputQueueNumber)
            streamer->afterFilling(outcome);
    });
}

// On the lock queue: fills a buffer that has come back and enqueues it again.
Streamer::FillOutcome Streamer::fill(QueueBuffer &slot)
{
    m_packetDescriptions.clear();
    if (m_playerState.hasPacketDescriptions)
        fillVariableBitRate(m_playerState.packetQueue, *slot.buffer, m_packetDescriptions);
    else
        fillConstantBitRate(m_playerState.packetQueue, *slot.buffer);
    slot.isEnqueued = false;
    --m_buffersInUse;
    if (slot.buffer->byteSize > 0) {
        if (!m_playerState.outputQueue->enqueueBuffer(*slot.buffer, m_packetDescriptions))
            return FillOutcome::EnqueueFailed;
        slot.isEnqueued = true;
        ++m_buffersInUse;
        if (m_buffersInUse >= 2 && m_playerState.isBuffering.exchange(false))
            return FillOutcome::Recovered;
    }
    if (m_buffersInUse > 0 || m_playerState.isBuffering)
        return FillOutcome::Filled;
    if (m_connectionFinished)
        return FillOutcome::StreamEnded;
    m_playerState.queuedBytes = 0;
    m_playerState.isBuffering = true;
    return FillOutcome::Underrun;
}

void Streamer::afterFilling(FillOutcome outcome)
{
    if (m_playerState.isPaused || !m_playerState.outputQueue)
        return;
    switch (outcome) {
    case FillOutcome::Filled:
        break;
    case FillOutcome::EnqueueFailed:
        fail(RadioErrorAudioQueueEnqueue);
        break;
    case FillOutcome::Recovered:
        primeQueueBuffers();
        startQueue();
        break;
    case FillOutcome::StreamEnded:
        pause();
        break;
    case FillOutcome::Underrun:
        // The player may have recovered since.
        if (!m_playerState.isBuffering)
            break;
        m_playerState.outputQueue->pause();
        setState(RadioStateBuffering);
        // A stream whose packets never fill a buffer stalls too, however fast it is.
        if (m_bufferTimer == 0)
            startBufferTimerWithTimeout(stallSeconds);
        break;
    }
}

void Streamer::primeQueueBuffers()
{
    std::array<FillOutcome, 3> outcomes{};
    m_playerState.lockQueue.sync([&] {
        m_buffersInUse = qint32(m_playerState.queueBuffers.size());
        for (std::size_t i = 0; i < outcomes.size(); ++i)
            if (!m_playerState.queueBuffers[i].isEnqueued)
                outcomes[i] = fill(m_playerState.queueBuffers[i]);
    });
    for (const FillOutcome outcome : outcomes)
        afterFilling(outcome);
}

void Streamer::startQueue()
{
    // Nothing was there to fill the buffers with: there is nothing to start.
    if (!m_playerState.outputQueue || m_playerState.isBuffering)
        return;
    stopBufferTimer();
    m_playerState.outputQueue->setVolume(m_playerState.volume);
    if (!m_playerState.outputQueue->start()) {
        fail(RadioErrorAudioQueueStart);
        return;
    }
    m_playerState.queueStarted = true;
    m_playerState.isPlaying = true;
    setState(RadioStatePlaying);
}

// Ends the output queue and drops what waits for it. The next queue has another number, so that whatever this
// one's thread still has to say is not heard. False when there was none.
bool Streamer::disposeOutputQueue()
{
    std::shared_ptr<OutputQueue> queue;
    m_playerState.lockQueue.sync([&] {
        ++m_playerState.outputQueueNumber;
        queue = std::exchange(m_playerState.outputQueue, nullptr);
        m_playerState.queueBuffers.fill({});
        m_buffersInUse = 0;
        m_playerState.queuedBytes = 0;
        m_playerState.packetQueue.removeAllPackets();
    });
    if (queue)
        queue->dispose();
    return queue != nullptr;
}

void Streamer::dismissQueue()
{
    if (disposeOutputQueue())
        AudioSession::sharedInstance().setActive(false);
    if (m_isParsing)
        m_closeParser = true;
    else
        m_playerState.audioFileStream.reset();
}

} // namespace orvel
