#include "audio/probe/ContentTypeReading.h"

namespace orvel {

void ContentTypeReading::readResponse(const UrlResponse &response)
{
    const QString contentType = contentTypeOf(response);
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
    if (!m_answer.gather(chunk))
        return;
    const auto fields = m_answer.headerFields();
    m_answer.takeData();
    if (fields) {
        m_responceType = ResponceType::Icy;
        m_contentType = fields->value(contentTypeKey);
    }
    // Deliberate: an ICY answer without a content type is never over, so that nobody takes it for an answer
    // of another kind (ContentTypeReadingTest.TakesTheHeadersOrTheIcyAnswersType).
    m_over = !fields || fields->contains(contentTypeKey);
}

} // namespace orvel
