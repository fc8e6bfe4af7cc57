#include "audio/file/FileReading.h"

#include "audio/file/FileTypeHint.h"
#include "platform/foundation/RunLoop.h"

namespace orvel {

namespace {

constexpr double turnSeconds = 0.25;
constexpr qsizetype readSize = 2048;
// How long a stopped output queue may take to say so.
constexpr double queueStopSeconds = 0.1;

} // namespace

FileReading::FileReading(const Url &url, AudioFileStreamOpener openAudioFileStream, StreamerStates &states,
                         FileTiming &timing, FileOutput &output)
    : m_url(url)
    , m_openAudioFileStream(std::move(openAudioFileStream))
    , m_states(states)
    , m_timing(timing)
    , m_output(output)
{
}

void FileReading::run()
{
    do {
        turn();
        internalSeekToTime();
        m_output.lookAtBuffers();
    } while (!m_states.runLoopShouldExit());
}

// Handles the file's bytes and its end for a quarter of a second, or until something else is to be done.
void FileReading::turn()
{
    const RunLoop &clock = RunLoop::current();
    const double end = clock.now() + turnSeconds;
    do {
        const bool wantsBytes = !m_states.isFinishing() && !m_output.isWaitingInterrupted();
        FileReadStream *const stream = wantsBytes ? m_stream.get() : nullptr;
        if (stream && stream->hasBytesAvailable()) {
            handleBytesAvailable();
        } else if (stream && stream->hasFailed()) {
            m_states.failWithErrorCode(AudioStreamerErrorAudioDataNotFound);
        } else if (stream && stream->hasEnded() && !m_isEndHandled) {
            handleEndEncountered();
        } else {
            if (stream)
                stream->awaitBytes();
            m_events.wait(end - clock.now());
        }
    } while (clock.now() < end && !m_events.wasWoken());
    m_events.takeWake();
}

bool FileReading::openReadStream()
{
    const StreamerLock::Holder holder(m_states.lock());
    if (m_states.isOver())
        return false;
    // Deliberate: the certificate does not count, neither where "https" stands elsewhere in the address
    // (FileServerTest.TakesAnyCertificate).
    const bool isSecure = m_url.text().contains(QStringLiteral("https"));
    m_states.setState(AudioStreamerStateWaitingForData);
    m_isEndHandled = false;
    const qint64 length = m_timing.fileLength();
    m_stream = FileReadStream::open({.url = m_url,
                                     .firstByte = length > 0 ? m_timing.seekByteOffset() : 0,
                                     .fileLength = length,
                                     .verifiesServer = !isSecure});
    return m_stream != nullptr;
}

void FileReading::closeStream()
{
    if (m_stream)
        m_stream->close();
    m_stream.reset();
}

void FileReading::handleBytesAvailable()
{
    if (!m_audioFileStream && !openParser())
        return;
    if (!m_audioFileStream->parseBytes(m_stream->read(readSize))) {
        m_states.failWithErrorCode(AudioStreamerErrorFileStreamParseBytes,
                                   AudioStatus(fourCharacterCode("dta?")));
        return;
    }
    const std::optional<qint64> wanted = m_audioFileStream->wantedOffset();
    if (wanted && m_stream->canJump()) {
        m_audioFileStream->continueAt(*wanted);
        m_stream->continueAt(*wanted);
    }
}

bool FileReading::openParser()
{
    {
        const StreamerLock::Holder holder(m_states.lock());
        m_timing.takeHeaders(*m_stream->responseHeaders());
    }
    m_audioFileStream = m_openAudioFileStream(*this, hintForFileExtension(m_url.pathExtension()));
    if (!m_audioFileStream)
        m_states.failWithErrorCode(AudioStreamerErrorFileStreamOpen, AudioStatus(fourCharacterCode("typ?")));
    return m_audioFileStream != nullptr;
}

void FileReading::handleEndEncountered()
{
    m_isEndHandled = true;
    if (m_audioFileStream)
        m_audioFileStream->finish();
    m_output.fileHasEnded();
}

void FileReading::internalSeekToTime()
{
    {
        const StreamerLock::Holder holder(m_states.lock());
        if (!m_timing.requestedSeek || m_states.isPaused())
            return;
        const double target = *std::exchange(m_timing.requestedSeek, std::nullopt);
        if (m_states.isOver() || !m_output.canSeek() || !m_audioFileStream)
            return;
        closeStream();
        m_output.stopForSeek(*m_audioFileStream, target);
    }
    m_states.lock().wait(queueStopSeconds, [this] {
        return m_states.state() == AudioStreamerStateStopped || m_states.isOver();
    });
    const StreamerLock::Holder holder(m_states.lock());
    if (m_states.isOver())
        return;
    m_states.setState(AudioStreamerStateStopped);
    if (!m_timing.requestedSeek)
        m_output.resumeWaiting();
    m_audioFileStream->continueAt(m_timing.seekByteOffset());
    if (!openReadStream())
        m_states.failWithErrorCode(AudioStreamerErrorNetworkConnection);
}

void FileReading::handlePropertyChange(AudioFileStream &stream, AudioFileStreamProperty property)
{
    const StreamerLock::Holder holder(m_states.lock());
    if (!m_states.isFinishing() && !takeProperty(stream, property))
        m_states.failWithErrorCode(AudioStreamerErrorFileStreamGetProperty,
                                   AudioStatus(fourCharacterCode("pty?")));
}

// Returns false when the stream does not have what it has told.
bool FileReading::takeProperty(const AudioFileStream &stream, AudioFileStreamProperty property)
{
    switch (property) {
    case AudioFileStreamProperty::DataFormat: {
        const auto format = stream.dataFormat();
        if (format)
            m_timing.takeFormat(*format);
        return m_timing.format().sampleRate > 0 || format;
    }
    case AudioFileStreamProperty::FormatList: {
        const auto formats = stream.formatList();
        m_timing.takeFormatOf(formats);
        return !formats.empty();
    }
    case AudioFileStreamProperty::DataOffset: {
        const auto offset = stream.dataOffset();
        if (offset)
            m_timing.setDataOffset(*offset);
        return offset.has_value();
    }
    case AudioFileStreamProperty::AudioDataByteCount: {
        const auto count = stream.audioDataByteCount();
        if (count)
            m_timing.setAudioDataByteCount(*count);
        return count.has_value();
    }
    case AudioFileStreamProperty::ReadyToProducePackets:
        break;
    }
    return true;
}

void FileReading::handlePacket(AudioFileStream &stream, quint32 numberOfPackets, QByteArrayView inputData,
                               std::span<const AudioStreamPacketDescription> descriptions)
{
    m_output.handlePacket(stream, numberOfPackets, inputData, descriptions);
}

} // namespace orvel
