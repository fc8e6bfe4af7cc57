#pragma once

#include "audio/probe/StreamRecording.h"
#include "audio/probe/StreamRequest.h"

namespace orvel {

// Saves a stream's raw bytes to a local file between a start and a stop. Main thread. Held by a shared_ptr,
// which may be let go of at any time: what was recorded since the start is then dropped.
// Deliberate: the header of a bare ICY answer is among the bytes, which are kept as they come
// (StreamRecorderTest.NamesTheFileAfterItsContentType).
class StreamRecorder : public std::enable_shared_from_this<StreamRecorder>
{
public:
    // Called when the stream has failed or the file can't be written. The recording has ended and is dropped.
    using ErrorHandler = std::function<void(const NetError &)>;
    // `path` is that of the file, in its place by now; empty when none was written. `error` says why not, and
    // is empty when there was no byte to write.
    using WrittenHandler = std::function<void(const QString &path, const QString &error)>;
    // Called when the stream has ended properly. All that comes after is the stop.
    using StreamEndedHandler = std::function<void(const UrlResponse &response)>;

    StreamRecorder();

    // No effect while recording. The extension of `localPath` gives way to the one that goes with the
    // stream's content type, and stays when that is not known.
    // Deliberate: a stream that ends properly is recorded on, in silence, until the stop, which alone writes
    // the file (StreamRecorderTest.PutsEveryByteInPlaceAtTheStop).
    void startRecordingFromUrl(const Url &streamUrl, const QString &localPath, ErrorHandler errorHandler);
    // Recording has ended on return. The file is put in place on the queue, replacing one that was there,
    // also when the recorder is dropped meanwhile. Calls `written` in any case.
    void stopRecording(WrittenHandler written = {});
    // Called for each recording whose stream ends before the stop.
    void setStreamEndedHandler(StreamEndedHandler handler) { m_streamEndedHandler = std::move(handler); }
    bool isRecording() const { return m_recording != nullptr; }

    // Returns a null text when the type is not known.
    static QString identifyFileExtensionForContentType(const QString &contentType);

private:
    void ended(const StreamRequest::Ending &ending);
    void clear();

    StreamRequest m_request;
    std::shared_ptr<StreamRecording> m_recording; // while recording
    ErrorHandler m_errorHandler;
    StreamEndedHandler m_streamEndedHandler;
};

} // namespace orvel
