#include "audio/probe/StreamContentTypeGetter.h"

#include "audio/icy/StreamFileType.h"
#include "audio/probe/ContentTypeReading.h"

namespace orvel {

StreamContentTypeGetter::StreamContentTypeGetter() : m_request(QStringLiteral("stream content type")) {}

void StreamContentTypeGetter::getContentTypeFromUrl(const Url &url, CompletionHandler handler)
{
    const auto reading = std::make_shared<ContentTypeReading>();
    m_request.start(url, StreamRequest::Purpose::Probe, reading,
                    [weak = weak_from_this(), reading,
                     completionHandler = std::move(handler)](const StreamRequest::Ending &ending) {
                        const auto getter = weak.lock(); // alive while the handler runs
                        if (!getter || (!ending.isReadingOver && !ending.error))
                            return;
                        const QString &contentType = reading->contentType();
                        const StreamFileType type = streamFileType(contentType);
                        completionHandler(contentType, type.fileExtension, type.hint, ending.response,
                                          ending.error);
                    });
}

} // namespace orvel
