#pragma once

#include "audio/probe/StreamRequest.h"
#include "platform/media/codec/AudioTypes.h"

#include <QString>

namespace orvel {

// Finds a stream's content type, and the file extension and audio file type that go with it. Main thread.
// Held by a shared_ptr, which may be let go of at any time: that cancels.
class StreamContentTypeGetter : public std::enable_shared_from_this<StreamContentTypeGetter>
{
public:
    // Content type and extension are null texts when there is none.
    using CompletionHandler =
        std::function<void(const QString &contentType, const QString &fileExtension, AudioFileType hint,
                           const std::optional<UrlResponse> &, const std::optional<NetError> &)>;

    StreamContentTypeGetter();

    // Replaces a request under way, whose handler is then never called. Calls the handler at most once, on
    // the main thread: not at all when the stream ends before its type is known.
    void getContentTypeFromUrl(const Url &url, CompletionHandler handler);

private:
    StreamRequest m_request;
};

} // namespace orvel
