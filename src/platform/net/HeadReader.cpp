#include "platform/net/HeadReader.h"

#include "platform/foundation/ByteText.h"

namespace orvel {

namespace {

constexpr qsizetype maxBytes = 256 * 1024;
constexpr std::size_t maxFields = 1000;

// Old streaming servers send names in Latin-1.
QString headerText(QByteArrayView bytes)
{
    const QByteArrayView trimmed = bytes.trimmed();
    return decodeUtf8(trimmed).value_or(QString::fromLatin1(trimmed));
}

} // namespace

bool HeadReader::addLine(QByteArrayView line)
{
    m_bytes += line.size();
    if (m_bytes > maxBytes)
        return false;
    if (m_final)
        return true; // a trailer
    if (!m_inHead) {
        m_response = {};
        m_lastName.clear();
        m_inHead = true;
        m_response.statusCode =
            intValue(QString::fromLatin1(line.sliced(std::max<qsizetype>(0, line.indexOf(' ')))));
        return true;
    }
    if (!line.trimmed().isEmpty())
        return addField(line);
    m_inHead = false;
    m_final = m_response.statusCode >= 200 && !isRedirect();
    return true;
}

bool HeadReader::addField(QByteArrayView line)
{
    if (line.front() == ' ' || line.front() == '\t') { // goes on with the field before
        if (!m_lastName.isEmpty())
            m_response.headers.set(m_lastName,
                                   *m_response.headers.value(m_lastName) + u' ' + headerText(line));
        return true;
    }
    const qsizetype colon = line.indexOf(':');
    if (colon <= 0)
        return true;
    m_lastName = headerText(line.first(colon));
    m_response.headers.set(m_lastName, headerText(line.sliced(colon + 1)));
    return m_response.headers.fields().size() <= maxFields;
}

void HeadReader::bodyBegins()
{
    if (!m_final && isRedirect())
        m_response = {};
    m_final = true;
}

bool HeadReader::isRedirect() const
{
    const int status = m_response.statusCode;
    return status >= 300 && status < 400 &&
           !m_response.headers.value(QStringLiteral("Location")).value_or(QString()).isEmpty();
}

} // namespace orvel
