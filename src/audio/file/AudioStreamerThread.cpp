#include "audio/file/AudioStreamer.h"
#include "audio/file/FileDownload.h"
#include "audio/file/FileTypeHint.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/RunLoop.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvel {

namespace {

constexpr double turnSeconds = 0.25;
constexpr qsizetype readSize = 2048;
constexpr qint64 maxBytesBeforePackets = 256 * 1024;
// How long a stopped output queue may take to say so.
constexpr double queueStopSeconds = 0.1;
constexpr double maxPacket = 1e15;

} // namespace

void AudioStreamer::startInternal()
{
    auto download = std::make_unique<FileDownload>();
    {
        const StreamerLock::Holder holder(m_lock);
        if (m_state != AudioStreamerStateStartingThread) {
            if (m_state != AudioStreamerStateStopping && m_state != AudioStreamerStateStopped)
                qCWarning(logAudio, "### Not starting audio thread. State code is: %ld", long(m_state));
            setState(AudioStreamerStateInitialized);
            return;
        }
        m_download = download.get();
    }
    AudioSession &session = AudioSession::sharedInstance();
    session.setCategory(AudioSession::Category::Playback);
    session.setActive(true);
    if (openReadStream(*download)) {
        do {
            turn(*download);
            internalSeekToTime(*download);
            lookAtBuffers();
        } while (!runLoopShouldExit());
    }
    cleanUp(std::move(download));
}

// Handles the file's bytes and its end for a quarter of a second, or until something else is to be done.
void AudioStreamer::turn(FileDownload &download)
{
    const RunLoop &clock = RunLoop::current();
    const double end = clock.now() + turnSeconds;
    do {
        const bool wantsBytes = !isFinishing() && !m_ring->isInterrupted();
        FileReadStream *const stream = wantsBytes ? download.stream.get() : nullptr;
        if (stream && stream->hasBytesAvailable()) {
            handleBytesAvailable(download);
        } else if (stream && stream->hasFailed()) {
            failWithErrorCode(AudioStreamerErrorAudioDataNotFound);
        } else if (stream && stream->hasEnded() && !download.isEndHandled) {
            handleEndEncountered(download);
        } else {
            if (stream)
                stream->awaitBytes();
            download.events.wait(end - clock.now());
        }
    } while (clock.now() < end && !download.events.wasWoken());
    download.events.takeWake();
}

bool AudioStreamer::openReadStream(FileDownload &download)
{
    const StreamerLock::Holder holder(m_lock);
    if (isOver())
        return false;
    // Deliberate: the certificate does not count, neither where "https" stands elsewhere in the address
    // (FileServerTest.TakesAnyCertificate).
    const bool isSecure = m_url.text().contains(QStringLiteral("https"));
    setState(AudioStreamerStateWaitingForData);
    download.isEndHandled = false;
    download.stream = FileReadStream::open({.url = m_url,
                                            .firstByte = m_fileLength > 0 ? m_seekByteOffset : 0,
                                            .fileLength = m_fileLength,
                                            .verifiesServer = !isSecure});
    if (!download.stream)
        showAlert();
    return download.stream != nullptr;
}

void AudioStreamer::handleBytesAvailable(FileDownload &download)
{
    FileReadStream &stream = *download.stream;
    if (!download.audioFileStream) {
        takeHeaders(stream);
        if (!openParser(download))
            return;
    }
    const QByteArrayView bytes = stream.read(readSize);
    if (!download.audioFileStream->parseBytes(bytes)) {
        failWithErrorCode(AudioStreamerErrorFileStreamParseBytes, AudioStatus(fourCharacterCode("dta?")));
        return;
    }
    download.bytesBeforePackets -= bytes.size();
    if (!download.hasPackets && download.bytesBeforePackets < 0) {
        failWithErrorCode(AudioStreamerErrorFileStreamParseBytes);
        return;
    }
    const std::optional<qint64> wanted = download.audioFileStream->wantedOffset();
    if (wanted && stream.canJump()) {
        download.audioFileStream->continueAt(*wanted);
        stream.continueAt(*wanted);
    }
}

void AudioStreamer::takeHeaders(const FileReadStream &stream)
{
    const StreamerLock::Holder holder(m_lock);
    m_httpHeaders = *stream.responseHeaders();
    if (m_seekByteOffset == 0)
        m_fileLength = m_httpHeaders.value(QStringLiteral("Content-Length")).value_or(QString()).toLongLong();
}

bool AudioStreamer::openParser(FileDownload &download)
{
    const QByteArrayView firstBytes = download.stream->peek(fileTypeBytes);
    const AudioFileType type = fileTypeOf(firstBytes, hintForFileExtension(m_url.pathExtension()));
    // A file of another kind says itself what it is, or has its packets anywhere.
    download.bytesBeforePackets =
        isFramed(type) ? id3TagSize(firstBytes) + maxBytesBeforePackets : std::numeric_limits<qint64>::max();
    download.audioFileStream = m_services.openAudioFileStream(*this, type);
    if (!download.audioFileStream)
        failWithErrorCode(AudioStreamerErrorFileStreamOpen, AudioStatus(fourCharacterCode("typ?")));
    return download.audioFileStream != nullptr;
}

void AudioStreamer::handleEndEncountered(FileDownload &download)
{
    download.isEndHandled = true;
    if (download.audioFileStream)
        download.audioFileStream->finish();
    if (!download.fill.isEmpty()) {
        {
            const StreamerLock::Holder holder(m_lock);
            if (m_state == AudioStreamerStateWaitingForData)
                setState(AudioStreamerStateFlushingEndOfFile);
        }
        enqueueBuffer(download);
    }
    const StreamerLock::Holder holder(m_lock);
    if (isFinishing() || m_ring->isInterrupted())
        return;
    if (m_ring->buffersUsed() == 0 && m_state == AudioStreamerStateWaitingForData) {
        failWithErrorCode(AudioStreamerErrorAudioDataNotFound);
        return;
    }
    m_hasReachedEnd = true;
    if (m_state == AudioStreamerStateWaitingForData)
        setState(AudioStreamerStateFlushingEndOfFile);
    if (m_state == AudioStreamerStateFlushingEndOfFile || m_state == AudioStreamerStateBuffering)
        startQueue();
    finishAtEndOfFile();
}

void AudioStreamer::internalSeekToTime(FileDownload &download)
{
    qint64 offset = 0;
    {
        const StreamerLock::Holder holder(m_lock);
        if (!m_seekWasRequested || m_state == AudioStreamerStatePaused)
            return;
        m_seekWasRequested = false;
        if (isOver() || !canSeek() || !download.audioFileStream)
            return;
        prepareSeek(*download.audioFileStream);
        offset = m_seekByteOffset;
        download.closeStream();
        download.fill.clear();
        m_hasReachedEnd = false;
        m_stopReason = AudioStreamerStopReasonTemporary;
        setState(AudioStreamerStateStopping);
        m_audioQueue->stop(true);
    }
    m_lock.wait(queueStopSeconds, [this] { return m_state == AudioStreamerStateStopped || isOver(); });
    const StreamerLock::Holder holder(m_lock);
    if (isOver())
        return;
    setState(AudioStreamerStateStopped);
    if (!m_seekWasRequested)
        m_ring->resumeWaiting();
    download.audioFileStream->continueAt(offset);
    if (!openReadStream(download))
        failWithErrorCode(AudioStreamerErrorNetworkConnection);
}

// Finds where to go on, and the time there.
void AudioStreamer::prepareSeek(const AudioFileStream &stream)
{
    const double target = m_requestedSeekTime;
    const double length = duration();
    const double share = target == 0 ? 0 : target / length; // infinite for a length of 0
    const double last = double(m_fileLength - 2 * qint64(m_packetBufferSize));
    const double aimed = double(m_dataOffset) + share * double(m_fileLength - m_dataOffset);
    m_seekByteOffset = std::max(m_dataOffset, qint64(std::min(aimed, last)));
    m_seekTime = target;
    std::optional<qint64> firstPacket;
    if (m_packetDuration > 0) {
        const qint64 packet = qint64(std::min(std::floor(target / m_packetDuration), maxPacket));
        const std::optional<AudioFileStreamSeek> found = stream.seek(packet);
        if (found && !found->isEstimated) {
            firstPacket = packet;
            m_seekTime -=
                double(m_seekByteOffset - m_dataOffset - found->byteOffset) * 8 / calculatedBitRate();
            m_seekByteOffset = m_dataOffset + found->byteOffset;
        }
    }
    trimFrom(stream, firstPacket);
}

// What an encoder has added is left out of the sound from this packet on. Where it begins is not known
// after a jump that is an estimate; then the padding at the end is heard.
void AudioStreamer::trimFrom(const AudioFileStream &stream, std::optional<qint64> firstPacket)
{
    std::optional<AudioTrim> trim = stream.trim();
    if (trim && !firstPacket)
        trim.reset();
    if (trim) {
        const qint64 before = *firstPacket * m_asbd.framesPerPacket;
        const qint64 priming = std::min<qint64>(before, trim->primingFrames);
        trim->primingFrames -= quint32(priming);
        if (trim->validFrames)
            trim->validFrames = std::max<qint64>(0, *trim->validFrames - (before - priming));
    }
    m_audioQueue->setTrim(trim);
}

void AudioStreamer::lookAtBuffers()
{
    const StreamerLock::Holder holder(m_lock);
    if (isOver() || m_ring->buffersUsed() > 0)
        return;
    if (m_state == AudioStreamerStatePlaying) {
        m_audioQueue->pause();
        setState(AudioStreamerStateBuffering);
    } else if (m_state == AudioStreamerStateWaitingForQueueStart && m_hasReachedEnd) {
        // Nothing of it could be decoded, so the queue never runs.
        m_stopReason = AudioStreamerStopReasonEndOfFile;
        setState(AudioStreamerStateStopping);
        m_audioQueue->stop(true);
    }
}

void AudioStreamer::cleanUp(std::unique_ptr<FileDownload> download)
{
    {
        const StreamerLock::Holder holder(m_lock);
        m_download = nullptr;
    }
    download.reset();
    closeConnections();
    // By its address alone: the streamer may be gone by then.
    MainQueue::async([owner = this] { AudioSession::sharedInstance().removeInterruptionListener(owner); });
    std::shared_ptr<OutputQueue> queue;
    const StreamerLock::Holder holder(m_lock);
    queue = std::exchange(m_audioQueue, nullptr);
    if (queue)
        queue->dispose();
    AudioSession::sharedInstance().setActive(false);
    m_httpHeaders.clear();
    m_seekByteOffset = 0;
    m_packetBufferSize = 0;
    setState(AudioStreamerStateInitialized);
}

} // namespace orvel
