#include "audio/probe/StreamMetadataGetter.h"

namespace orvel {

StreamMetadataGetter::StreamMetadataGetter(const QString &queueName) : m_request(queueName) {}

void StreamMetadataGetter::getMetadataFromUrl(const Url &url, CompletionHandler handler)
{
    const auto reading = std::make_shared<MetadataReading>();
    m_request.start(url, StreamRequest::Purpose::Probe, reading,
                    [weak = weak_from_this(), reading,
                     completionHandler = std::move(handler)](const StreamRequest::Ending &ending) {
                        const auto getter = weak.lock(); // alive while the handler runs
                        if (!getter)
                            return;
                        const bool isAnswer = ending.isReadingOver || ending.error;
                        const CompletionHandler told =
                            isAnswer ? completionHandler : getter->m_streamEndedHandler;
                        if (told)
                            told(reading->dictionary(), ending.response, ending.error);
                    });
}

} // namespace orvel
