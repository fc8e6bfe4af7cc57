#include "audio/file/AudioStreamer.h"
#include "audio/file/FileDownload.h"
#include "platform/foundation/MainQueue.h"

#include <QUrl>
#include <algorithm>
#include <limits>

namespace orvel {

namespace {

constexpr quint32 kAQDefaultBufSize = 2048;
constexpr quint32 maxBufferSize = 256 * 1024; // of packets that a decoder takes
constexpr std::size_t startThreshold = 15;    // buffers
constexpr double ringSeconds = 1.5;
constexpr double standingSeconds = 10;

} // namespace

void AudioStreamer::handlePropertyChange(AudioFileStream &stream, AudioFileStreamProperty property)
{
    const StreamerLock::Holder holder(m_lock);
    if (isFinishing())
        return;
    const auto failed = [this] {
        failWithErrorCode(AudioStreamerErrorFileStreamGetProperty, AudioStatus(fourCharacterCode("pty?")));
    };
    switch (property) {
    case AudioFileStreamProperty::DataFormat:
        if (m_asbd.sampleRate > 0)
            break;
        if (const auto format = stream.dataFormat())
            m_asbd = *format;
        else
            failed();
        break;
    case AudioFileStreamProperty::FormatList:
        if (const auto formats = stream.formatList(); !formats.empty())
            takeFormat(formats);
        else
            failed();
        break;
    case AudioFileStreamProperty::DataOffset:
        if (const auto offset = stream.dataOffset()) {
            m_dataOffset = *offset;
            updateFileLength();
        } else {
            failed();
        }
        break;
    case AudioFileStreamProperty::AudioDataByteCount:
        m_audioDataByteCount = stream.audioDataByteCount();
        if (m_audioDataByteCount)
            updateFileLength();
        else
            failed();
        break;
    case AudioFileStreamProperty::ReadyToProducePackets:
        break;
    }
}

void AudioStreamer::takeFormat(const std::vector<AudioStreamBasicDescription> &formats)
{
    const auto highEfficiency =
        std::ranges::find(formats, AudioFormat::mpeg4AacHe, &AudioStreamBasicDescription::format);
    if (highEfficiency != formats.end())
        m_asbd = *highEfficiency;
}

// The file's sound ends where its packets do, whatever follows.
void AudioStreamer::updateFileLength()
{
    if (!m_audioDataByteCount)
        return;
    const auto room = quint64(std::numeric_limits<qint64>::max() - m_dataOffset);
    m_fileLength = m_dataOffset + qint64(std::min(*m_audioDataByteCount, room));
}

void AudioStreamer::createQueue(const AudioFileStream &stream)
{
    m_sampleRate = m_asbd.sampleRate;
    m_packetDuration = m_sampleRate > 0 ? m_asbd.framesPerPacket / m_sampleRate : 0;
    const quint64 number = m_ring->queueNumber();
    const auto bufferReturned = [ring = std::weak_ptr(m_ring), weak = weak_from_this(),
                                 number](OutputQueue &, OutputBuffer &buffer) {
        const std::shared_ptr<BufferRing> buffers = ring.lock();
        if (!buffers || buffers->giveBack(buffer, number))
            return;
        if (std::shared_ptr<AudioStreamer> streamer = weak.lock()) {
            streamer->failWithErrorCode(AudioStreamerErrorAudioQueueBufferMismatch);
            MainQueue::async([last = std::move(streamer)] {});
        }
    };
    m_audioQueue = m_services.newOutputQueue(m_asbd, bufferReturned,
                                             {.bufferReturn = BufferReturn::WhenTaken,
                                              .ringSeconds = ringSeconds,
                                              .mediaName = QUrl(m_url.text()).fileName(),
                                              .magicCookie = stream.magicCookie(),
                                              .standingSeconds = standingSeconds});
    if (!m_audioQueue) {
        failWithErrorCode(AudioStreamerErrorAudioQueueCreation, AudioStatus(fourCharacterCode("fmt?")));
        return;
    }
    m_audioQueue->addIsRunningListener([weak = weak_from_this(), number](OutputQueue &, bool isRunning) {
        if (std::shared_ptr<AudioStreamer> streamer = weak.lock()) {
            streamer->handleQueueRunning(number, isRunning);
            // A last release must not happen on this thread.
            MainQueue::async([last = std::move(streamer)] {});
        }
    });
    const quint32 bound = stream.packetSizeUpperBound().value_or(0);
    const quint32 maximum = bound > 0 ? bound : stream.maximumPacketSize().value_or(0);
    m_packetBufferSize = maximum > 0 ? maximum : kAQDefaultBufSize;
    BufferRing::Buffers buffers{};
    for (OutputBuffer *&buffer : buffers) {
        buffer =
            m_packetBufferSize <= maxBufferSize ? m_audioQueue->allocateBuffer(m_packetBufferSize) : nullptr;
        if (!buffer) {
            failWithErrorCode(AudioStreamerErrorAudioQueueBufferAllocation,
                              AudioStatus(fourCharacterCode("mem?")));
            return;
        }
    }
    m_ring->use(buffers);
    m_audioQueue->setTrim(stream.trim());
}

void AudioStreamer::handlePacket(AudioFileStream &stream, quint32 numberOfPackets, QByteArrayView inputData,
                                 std::span<const AudioStreamPacketDescription> descriptions)
{
    FileDownload &download = *m_download; // only this thread changes it
    download.hasPackets = true;
    if (!prepareForPackets(stream, numberOfPackets, descriptions))
        return;
    if (descriptions.empty())
        fillConstant(download, inputData);
    else
        fillDescribed(download, inputData, descriptions);
}

bool AudioStreamer::prepareForPackets(const AudioFileStream &stream, quint32 numberOfPackets,
                                      std::span<const AudioStreamPacketDescription> descriptions)
{
    const StreamerLock::Holder holder(m_lock);
    if (isFinishing() || m_ring->isInterrupted())
        return false;
    if (m_bitRate == 0)
        m_bitRate = std::numeric_limits<quint32>::max();
    if (!m_audioQueue)
        createQueue(stream);
    for (const AudioStreamPacketDescription &packet : descriptions)
        m_estimate.add(1, packet.dataByteSize);
    if (descriptions.empty())
        m_estimate.add(numberOfPackets, m_asbd.bytesPerPacket);
    return !isOver();
}

void AudioStreamer::fillDescribed(FileDownload &download, QByteArrayView inputData,
                                  std::span<const AudioStreamPacketDescription> descriptions)
{
    FillBuffer &fill = download.fill;
    for (const AudioStreamPacketDescription &packet : descriptions) {
        if (packet.dataByteSize > m_packetBufferSize) {
            failWithErrorCode(AudioStreamerErrorBufferTooSmall);
            return;
        }
        if (fill.bytesFilled() + packet.dataByteSize > m_packetBufferSize && !enqueueAndWait(download))
            return;
        fill.addPacket(inputData.sliced(packet.startOffset, packet.dataByteSize), packet);
        if (fill.isFullOfPackets() && !enqueueAndWait(download))
            return;
    }
}

// A buffer takes whole packets alone, which is less than its size when that is no multiple of theirs.
void AudioStreamer::fillConstant(FileDownload &download, QByteArrayView inputData)
{
    const qsizetype packet = m_asbd.bytesPerPacket;
    const qsizetype room = packet > 0 ? kAQDefaultBufSize - kAQDefaultBufSize % packet : 0;
    if (room == 0) {
        failWithErrorCode(AudioStreamerErrorBufferTooSmall);
        return;
    }
    while (!inputData.isEmpty()) {
        if (download.fill.bytesFilled() == room && !enqueueAndWait(download))
            return;
        const qsizetype count = std::min(room - download.fill.bytesFilled(), inputData.size());
        download.fill.addBytes(inputData.first(count));
        inputData = inputData.sliced(count);
    }
}

// Returns false when nothing more may be filled: the streamer is finishing, or about to seek.
bool AudioStreamer::enqueueAndWait(FileDownload &download)
{
    return enqueueBuffer(download) && m_ring->waitUntilFree(download.fillBufferIndex);
}

bool AudioStreamer::enqueueBuffer(FileDownload &download)
{
    // It is free but after a seek that did not wait for its return.
    if (!m_ring->waitUntilFree(download.fillBufferIndex))
        return false;
    FillBuffer &fill = download.fill;
    const StreamerLock::Holder holder(m_lock);
    if (isFinishing() || !download.stream || m_ring->isInterrupted())
        return false;
    OutputBuffer &buffer = m_ring->buffer(download.fillBufferIndex);
    fill.copyTo(buffer);
    const std::size_t used = m_ring->take(download.fillBufferIndex);
    if (!m_audioQueue->enqueueBuffer(buffer, fill.packetDescs())) {
        failWithErrorCode(AudioStreamerErrorAudioQueueEnqueue);
        return false;
    }
    const bool waitsForMore =
        m_state == AudioStreamerStateWaitingForData || m_state == AudioStreamerStateBuffering;
    if (m_state == AudioStreamerStateFlushingEndOfFile || (waitsForMore && used >= startThreshold))
        startQueue();
    download.fillBufferIndex = (download.fillBufferIndex + 1) % BufferRing::size;
    fill.clear();
    return !isOver();
}

void AudioStreamer::startQueue()
{
    const bool isBuffering = m_state == AudioStreamerStateBuffering;
    if (!isBuffering)
        setState(AudioStreamerStateWaitingForQueueStart);
    if (!m_audioQueue->start())
        failWithErrorCode(AudioStreamerErrorAudioQueueStart);
    else if (isBuffering)
        setState(AudioStreamerStatePlaying);
    playingHasBegun();
}

} // namespace orvel
