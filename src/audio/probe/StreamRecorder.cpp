#include "audio/probe/StreamRecorder.h"

#include "audio/icy/StreamFileType.h"
#include "platform/foundation/MainQueue.h"

#include <utility>

namespace orvel {

StreamRecorder::StreamRecorder() : m_request(QStringLiteral("stream recorder")) {}

void StreamRecorder::startRecordingFromUrl(const Url &streamUrl, const QString &localPath,
                                           ErrorHandler errorHandler)
{
    if (isRecording())
        return;
    m_recording = std::make_shared<StreamRecording>(localPath);
    m_errorHandler = std::move(errorHandler);
    m_request.start(streamUrl, StreamRequest::Purpose::Recording, m_recording,
                    [weak = weak_from_this()](const StreamRequest::Ending &ending) {
                        if (const auto recorder = weak.lock())
                            recorder->ended(ending);
                    });
}

void StreamRecorder::stopRecording(WrittenHandler written)
{
    // Behind the last chunk.
    m_request.selfQueue().async([recording = m_recording, written = std::move(written)]() mutable {
        const QString path = recording ? recording->finish() : QString();
        const QString error = recording ? recording->writeError() : QString();
        if (written)
            MainQueue::async([written = std::move(written), path, error] { written(path, error); });
    });
    clear();
}

void StreamRecorder::ended(const StreamRequest::Ending &ending)
{
    if (!ending.error && !ending.isReadingOver) {
        const StreamEndedHandler streamEnded = m_streamEndedHandler; // may let go of this object
        if (streamEnded)
            streamEnded(ending.response.value_or(UrlResponse()));
        return;
    }
    const NetError error =
        ending.error.value_or(NetError{NetError::Code::CannotWriteToFile, m_recording->writeError()});
    const ErrorHandler errorHandler = std::exchange(m_errorHandler, nullptr);
    clear();
    if (errorHandler)
        errorHandler(error);
}

void StreamRecorder::clear()
{
    m_request.cancel();
    m_recording.reset();
    m_errorHandler = nullptr;
}

QString StreamRecorder::identifyFileExtensionForContentType(const QString &contentType)
{
    return streamFileType(contentType).fileExtension;
}

} // namespace orvel
