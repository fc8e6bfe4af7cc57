#pragma once

#include "audio/probe/MetadataReading.h"
#include "audio/probe/StreamRequest.h"

namespace orvel {

// Fetches the first in-band title of a station, with its header fields. Main thread. Held by a shared_ptr,
// which may be let go of at any time: that cancels. A handler may hold its getter: it lasts until the request
// is over.
class StreamMetadataGetter : public std::enable_shared_from_this<StreamMetadataGetter>
{
public:
    // The dictionary is nullopt when neither an HTTP answer with a content type nor a bare ICY answer came.
    using CompletionHandler =
        std::function<void(const std::optional<MetadataDictionary> &, const std::optional<UrlResponse> &,
                           const std::optional<NetError> &)>;

    // `queueName` is that of the queue that reads.
    explicit StreamMetadataGetter(const QString &queueName = QStringLiteral("stream metadata"));

    // Replaces a request under way, whose handler is then never called. Calls the handler at most once, on
    // the main thread.
    // Deliberate: not at all when the stream ends before its metadata, which leaves the list's title as it
    // was (StreamProbeTest.IsSilentAboutAStreamThatNeverGivesItsMetadata).
    void getMetadataFromUrl(const Url &url, CompletionHandler handler);
    // Called instead, with what is known by then, for each request whose stream ends before its metadata.
    void setStreamEndedHandler(CompletionHandler handler) { m_streamEndedHandler = std::move(handler); }

private:
    CompletionHandler m_streamEndedHandler;
    StreamRequest m_request;
};

} // namespace orvel
