#include "audio/live/StreamOutput.h"

#include "platform/foundation/MainQueue.h"
#include "platform/media/output/AudioSession.h"

#include <cmath>
#include <limits>

namespace orvel {

namespace {

constexpr double bufferSeconds = 0.5;
constexpr double maxBoundedBufferSize = 65536;

bool isConstantBitRate(const AudioStreamBasicDescription &format)
{
    return format.bytesPerPacket != 0 && format.framesPerPacket != 0;
}

quint32 bufferSizeFor(const AudioStreamBasicDescription &format, std::optional<quint32> packetSizeUpperBound)
{
    double bytes = 0;
    if (isConstantBitRate(format))
        bytes =
            std::trunc(format.sampleRate / format.framesPerPacket * bufferSeconds) * format.bytesPerPacket;
    else if (packetSizeUpperBound)
        bytes = std::min(format.sampleRate * *packetSizeUpperBound * bufferSeconds, maxBoundedBufferSize);
    else
        bytes = std::trunc(format.sampleRate * bufferSeconds);
    return quint32(std::min(bytes, double(std::numeric_limits<qint32>::max())));
}

} // namespace

StreamOutput::StreamOutput(StreamOutputClient &client, AudioFileStreamOpener openAudioFileStream,
                           OutputQueueMaker newOutputQueue)
    : m_client(client)
    , m_openAudioFileStream(std::move(openAudioFileStream))
    , m_newOutputQueue(std::move(newOutputQueue))
{
}

bool StreamOutput::openParser(AudioFileType hint)
{
    m_hqASBD.reset();
    m_audioFileStream = m_openAudioFileStream(*this, hint);
    return m_audioFileStream != nullptr;
}

bool StreamOutput::parse(QByteArrayView audio)
{
    if (!m_audioFileStream)
        return true;
    m_isParsing = true;
    m_audioFileStream->parseBytes(audio);
    m_isParsing = false;
    if (std::exchange(m_closeParser, false))
        m_audioFileStream.reset();
    return m_audioFileStream != nullptr;
}

void StreamOutput::dismissQueue()
{
    if (disposeOutputQueue())
        AudioSession::sharedInstance().setActive(false);
    if (m_isParsing)
        m_closeParser = true;
    else
        m_audioFileStream.reset();
}

void StreamOutput::setVolume(float volume)
{
    m_volume = volume;
    if (m_outputQueue)
        m_outputQueue->setVolume(volume);
}

void StreamOutput::setMediaName(const QString &name)
{
    m_mediaName = name;
    if (m_outputQueue)
        m_outputQueue->setMediaName(name);
}

void StreamOutput::handlePropertyChange(AudioFileStream &stream, AudioFileStreamProperty property)
{
    if (m_closeParser)
        return;
    if (property == AudioFileStreamProperty::ReadyToProducePackets) {
        readyToProducePackets(stream);
    } else if (property == AudioFileStreamProperty::FormatList) {
        const std::vector<AudioStreamBasicDescription> formats = stream.formatList();
        if (!formats.empty())
            m_hqASBD = formats.front();
    }
}

void StreamOutput::readyToProducePackets(AudioFileStream &stream)
{
    const std::optional<AudioStreamBasicDescription> dataFormat = stream.dataFormat();
    const AudioStreamBasicDescription format =
        m_hqASBD ? *m_hqASBD : dataFormat.value_or(AudioStreamBasicDescription());
    if (!dataFormat || !std::isfinite(format.sampleRate) || format.sampleRate <= 0) {
        m_client.outputFailed(RadioErrorFileStreamGetProperty);
        return;
    }
    AudioSession::sharedInstance().setActive(true);
    if (const RadioError error = makeOutputQueue(format, stream); error != RadioErrorNone)
        m_client.outputFailed(error);
}

RadioError StreamOutput::makeOutputQueue(const AudioStreamBasicDescription &format,
                                         const AudioFileStream &stream)
{
    // A second parser's format ends the first one's sound.
    disposeOutputQueue();
    const quint64 number = m_buffers.outputQueueNumber();
    m_outputQueue = m_newOutputQueue(
        format,
        [weak = weak_from_this(), number](OutputQueue &, OutputBuffer &buffer) {
            if (std::shared_ptr<StreamOutput> output = weak.lock()) {
                output->handlePlayCallback(buffer, number);
                // A last release must not happen on this thread.
                MainQueue::async([last = std::move(output)] {});
            }
        },
        OutputQueueOptions{.bufferReturn = BufferReturn::WhenTaken, .mediaName = m_mediaName});
    if (!m_outputQueue)
        return RadioErrorAudioQueueCreate;
    m_bufferSize = bufferSizeFor(format, stream.packetSizeUpperBound());
    OutputBufferSet buffers;
    for (OutputBuffer *&buffer : buffers) {
        buffer = m_outputQueue->allocateBuffer(m_bufferSize);
        if (!buffer)
            return RadioErrorAudioQueueBufferAllocation;
    }
    m_buffers.use(m_outputQueue, buffers, !isConstantBitRate(format));
    if (const QByteArray cookie = stream.magicCookie(); !cookie.isEmpty())
        m_outputQueue->setMagicCookie(cookie);
    m_client.outputPrepared(m_bufferSize);
    return RadioErrorNone;
}

void StreamOutput::handlePacket(AudioFileStream &, quint32 numberOfPackets, QByteArrayView inputData,
                                std::span<const AudioStreamPacketDescription> descriptions)
{
    if (m_closeParser)
        return;
    const OutputBuffers::Level level = m_buffers.addPackets(numberOfPackets, inputData, descriptions);
    if (m_queueStarted && !m_buffers.isBuffering()) {
        afterFilling(m_buffers.fillIdle());
    } else if (m_outputQueue && level.queued > startThreshold()) {
        primeQueueBuffers();
        startQueue();
    }
    if (!m_closeParser)
        m_client.packetsWaiting(level.waiting, startThreshold());
}

// What changes states, timers or the queue itself is left to the main thread.
void StreamOutput::handlePlayCallback(OutputBuffer &buffer, quint64 outputQueueNumber)
{
    const OutputBuffers::Outcome outcome = m_buffers.returned(buffer, outputQueueNumber);
    if (outcome.change == OutputBuffers::Change::None && !outcome.hasRunLow)
        return;
    MainQueue::async([output = shared_from_this(), outputQueueNumber, outcome] {
        if (outputQueueNumber == output->m_buffers.outputQueueNumber())
            output->afterFilling(outcome);
    });
}

void StreamOutput::afterFilling(const OutputBuffers::Outcome &outcome)
{
    if (outcome.hasRunLow)
        m_client.packetsWaiting(m_buffers.level().waiting, startThreshold());
    switch (outcome.change) {
    case OutputBuffers::Change::None:
        break;
    case OutputBuffers::Change::EnqueueFailed:
        m_client.outputFailed(RadioErrorAudioQueueEnqueue);
        break;
    case OutputBuffers::Change::StreamEnded:
        m_client.outputHasEnded();
        break;
    case OutputBuffers::Change::Underrun:
        // The player may have recovered since.
        if (!m_buffers.isBuffering())
            break;
        m_outputQueue->pause();
        m_client.outputRanDry();
        break;
    }
}

void StreamOutput::primeQueueBuffers() { afterFilling(m_buffers.prime()); }

void StreamOutput::startQueue()
{
    // The buffers were refused, or no packet fits one: there is nothing to start.
    if (!m_outputQueue || m_buffers.isBuffering())
        return;
    m_outputQueue->setVolume(m_volume);
    if (!m_outputQueue->start()) {
        m_client.outputFailed(RadioErrorAudioQueueStart);
        return;
    }
    m_queueStarted = true;
    m_client.outputStarted();
}

// Drops what waits for the output queue, too. Returns false when there was none. What its thread still has to
// say is not heard.
bool StreamOutput::disposeOutputQueue()
{
    m_queueStarted = false;
    m_buffers.clear();
    const std::shared_ptr<OutputQueue> queue = std::exchange(m_outputQueue, nullptr);
    if (queue)
        queue->dispose();
    return queue != nullptr;
}

} // namespace orvel
