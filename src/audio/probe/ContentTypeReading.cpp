#include "audio/probe/ContentTypeReading.h"

#include "audio/icy/IcyAnswer.h"

#include <utility>

namespace orvel {

namespace {
const QString contentTypeKey = QStringLiteral("content-type");
}

void ContentTypeReading::readResponse(const UrlResponse &response)
{
    const QString contentType = response.headers.value(contentTypeKey).value_or(QString());
    if (contentType.isEmpty())
        return;
    m_responceType = ResponceType::Http;
    m_contentType = contentType;
    m_over = true;
}

void ContentTypeReading::readData(QByteArrayView chunk)
{
    if (m_over || m_responceType != ResponceType::Unknown)
        return;
    m_streamData.append(chunk);
    if (m_streamData.size() < icyAnswerSize)
        return;
    const auto fields = icyHeaderFields(std::exchange(m_streamData, {}));
    if (fields) {
        m_responceType = ResponceType::Icy;
        m_contentType = fields->value(contentTypeKey);
    }
    // An ICY answer that names no content type leaves the question open.
    m_over = !fields || fields->contains(contentTypeKey);
}

} // namespace orvel
