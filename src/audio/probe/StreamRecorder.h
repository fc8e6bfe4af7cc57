#pragma once

#include "audio/probe/StreamRecording.h"
#include "audio/probe/StreamRequest.h"

namespace orvel {

// Saves a stream's raw bytes to a local file between a start and a stop; the header of a bare ICY answer is
// part of them. Main thread; held by a shared_ptr, which may be let go of at any time: what was recorded
// since the start is then dropped.
class StreamRecorder : public std::enable_shared_from_this<StreamRecorder>
{
public:
    // The stream has failed or the file can't be written: the recording has ended and is dropped.
    using ErrorHandler = std::function<void(const NetError &)>;
    // `path` is that of the file, in its place by now; empty when none was written. `error` tells why not;
    // empty when there was nothing to write.
    using WrittenHandler = std::function<void(const QString &path, const QString &error)>;
    // The stream has ended properly; all that comes after is the stop.
    using StreamEndedHandler = std::function<void(const UrlResponse &response)>;

    StreamRecorder();

    // Does nothing while recording. The extension of `localPath` gives way to the one that goes with the
    // stream's content type; it stays when that is not known. A stream that ends properly is recorded on, in
    // silence, until the stop.
    void startRecordingFromUrl(const Url &streamUrl, const QString &localPath, ErrorHandler errorHandler);
    // Recording has ended on return; the file is put in place on the queue, replacing one that was there,
    // also when the recorder is dropped meanwhile. `written` is called in any case.
    void stopRecording(WrittenHandler written = {});
    // Called for each recording whose stream ends before the stop.
    void setStreamEndedHandler(StreamEndedHandler handler) { m_streamEndedHandler = std::move(handler); }
    bool isRecording() const { return m_recording != nullptr; }

    // Null when the type is not known.
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
