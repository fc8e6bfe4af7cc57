#include "audio/live/IcyStream.h"

#include "audio/icy/IcyHeader.h"
#include "platform/foundation/ByteText.h"

#include <algorithm>

namespace orvel {

namespace {

// Longer header lines are skipped.
constexpr qsizetype maxHeaderLine = 16 * 1024;

} // namespace

QString streamTitle(QByteArrayView metadata)
{
    const std::optional<QString> text = decodeUtf8(metadata);
    const QLatin1String opening("StreamTitle='");
    if (!text || !text->startsWith(opening))
        return {};
    const qsizetype end = text->indexOf(u';', opening.size());
    if (end <= opening.size() || text->at(end - 1) != u'\'')
        return {};
    const QString title = text->sliced(opening.size(), end - 1 - opening.size());
    return title.isNull() ? QStringLiteral("") : title;
}

void IcyStream::reset()
{
    m_audioData.clear();
    m_metaData.clear();
    m_metadataInterval = 0;
    m_metadataLength = 0;
    m_streamCount = 0;
    m_icyStartFound = false;
    m_icyEndFound = false;
    m_headerRest.clear();
    m_headerLineTooLong = false;
}

IcyStream::HeaderKind IcyStream::applyHeader(QStringView name, const QString &value)
{
    if (equalsIgnoringCase(name, u"icy-metaint")) {
        m_metadataInterval = intValue(value);
        return HeaderKind::Technical;
    }
    if (equalsIgnoringCase(name, u"icy-br")) {
        m_bitrateInBytes = qint32(qint64(intValue(value)) * 1000 >> 3);
        return HeaderKind::Technical;
    }
    const std::pair<QStringView, QString &> metadata[] = {
        {u"icy-name", m_station.name}, {u"icy-genre", m_station.genre}, {u"icy-url", m_station.url}};
    for (const auto &[field, place] : metadata) {
        if (equalsIgnoringCase(name, field)) {
            place = value;
            return HeaderKind::Metadata;
        }
    }
    return HeaderKind::Unknown;
}

void IcyStream::parse(QByteArrayView chunk)
{
    if (m_metadataInterval == 0 && beginsWithIcyStatus(chunk))
        m_icyStartFound = true;
    if (m_icyStartFound && !m_icyEndFound) {
        const qsizetype headerBytes = parseHeaders(chunk);
        if (headerBytes < 0)
            return;
        chunk = chunk.sliced(headerBytes);
    }
    if (m_metadataInterval == 0) {
        // Deliberate: a bare ICY answer without an interval plays nothing (FaultsTest.OfBareAnswers).
        if (!m_icyStartFound)
            gather(chunk);
        return;
    }
    while (!chunk.isEmpty()) {
        if (m_metadataLength >= 1) {
            const qsizetype run = std::min<qsizetype>(m_metadataLength, chunk.size());
            std::copy_if(chunk.begin(), chunk.begin() + run, std::back_inserter(m_metaData),
                         [](char byte) { return byte != 0; });
            chunk = chunk.sliced(run);
            m_metadataLength -= qint32(run);
            if (m_metadataLength == 0)
                parseMetadata();
        } else if (m_metadataInterval >= 1 && m_streamCount == m_metadataInterval) {
            // Deliberate: the length byte is signed, so one from 128 on opens no block, and the bytes of that
            // block count as sound (IcyStreamTest.TellsSoundFromMetadataInAnyChunking).
            m_metadataLength = qint32(static_cast<signed char>(chunk.front())) * 16;
            m_streamCount = 0;
            chunk = chunk.sliced(1);
        } else {
            qsizetype run = chunk.size();
            if (m_metadataInterval >= 1) {
                run = std::min<qsizetype>(run, m_metadataInterval - m_streamCount);
                m_streamCount += qint32(run);
            }
            if (!gather(chunk.first(run)))
                return;
            chunk = chunk.sliced(run);
        }
    }
}

// Returns how many bytes of `chunk` belong to the header block, all of them while it has not ended; -1 when
// the rest of the chunk is to be dropped.
qsizetype IcyStream::parseHeaders(QByteArrayView chunk)
{
    const qsizetype carried = m_headerRest.size();
    const QByteArray block = m_headerRest + chunk.toByteArray();
    m_metadataChanged = false;
    qsizetype lineStart = 0;
    qsizetype audioStart = -1;
    // A line counts as ended when the byte behind its CR LF is known.
    for (qsizetype p = block.indexOf(icyLineEnd, std::max<qsizetype>(0, carried - 2));
         p >= 0 && p + 3 <= block.size(); p = block.indexOf(icyLineEnd, lineStart)) {
        // Empty only when the block's last CR LF CR LF was cut in its middle.
        const bool isEmptyLine = p == lineStart && !m_headerLineTooLong;
        const bool isTooLong = m_headerLineTooLong || p - lineStart > maxHeaderLine;
        if (!isEmptyLine && !isTooLong)
            parseHeaderLine(QByteArrayView(block).sliced(lineStart, p - lineStart));
        m_headerLineTooLong = false;
        lineStart = p + 2;
        if (isEmptyLine)
            audioStart = lineStart;
        else if (QByteArrayView(block).sliced(lineStart).startsWith(icyLineEnd))
            audioStart = lineStart + 2;
        if (audioStart >= 0)
            break;
    }
    if (audioStart >= 0) {
        m_icyEndFound = true;
        m_headerRest.clear();
        if (!m_client.icyHeadersEnded())
            return -1;
    } else {
        m_headerRest = block.sliced(lineStart);
        if (m_headerRest.size() > maxHeaderLine) {
            m_headerRest = m_headerRest.last(2); // what a line end may begin with
            m_headerLineTooLong = true;
        }
    }
    if (m_metadataChanged)
        m_client.icyMetadataReady();
    return audioStart >= 0 ? audioStart - carried : chunk.size();
}

void IcyStream::parseHeaderLine(QByteArrayView line)
{
    const std::optional<IcyHeaderField> field = icyHeaderField(line);
    if (!field)
        return;
    // Deliberate: a second colon ends the value, so that a site keeps its scheme word alone
    // (IcyStreamTest.ReadsTheHeaderBlockOfABareAnswerWhereverItIsSplit).
    const QString value = field->value.section(u':', 0, 0).trimmed();
    const HeaderKind kind = applyHeader(field->name, value);
    m_metadataChanged |= kind == HeaderKind::Metadata;
    if (kind == HeaderKind::Unknown && equalsIgnoringCase(field->name, u"Content-Type"))
        m_contentType = value;
}

bool IcyStream::gather(QByteArrayView audio)
{
    while (!audio.isEmpty()) {
        const qsizetype wanted = std::max<qsizetype>(m_bufferSize, 1);
        if (m_audioData.isEmpty() && audio.size() >= wanted) {
            const QByteArrayView piece = audio.first(wanted);
            audio = audio.sliced(wanted);
            if (!m_client.icyAudioGathered(piece))
                return false;
            continue;
        }
        const qsizetype missing = std::max<qsizetype>(wanted - m_audioData.size(), 1);
        const qsizetype run = std::min(missing, audio.size());
        m_audioData.append(audio.first(run));
        audio = audio.sliced(run);
        if (m_audioData.size() >= wanted) {
            const QByteArray piece = std::exchange(m_audioData, {});
            if (!m_client.icyAudioGathered(piece))
                return false;
        }
    }
    return true;
}

void IcyStream::parseMetadata()
{
    const QString title = streamTitle(m_metaData);
    m_metaData.clear();
    if (!title.isNull())
        m_client.icyTitleChanged(title);
}

} // namespace orvel
