#pragma once

#include "audio/live/StationInfo.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace orvel {

// Receives what is in a stream as it is read. Called from inside IcyStream::parse.
class IcyStreamClient
{
public:
    virtual ~IcyStreamClient() = default;
    // The header block of a bare ICY answer has ended: time to open a parser. Returning false drops the rest
    // of the chunk.
    virtual bool icyHeadersEnded() = 0;
    // The header block has changed the station's name, genre or site.
    virtual void icyMetadataReady() = 0;
    virtual void icyTitleChanged(const QString &title) = 0;
    // At least one buffer size of sound is gathered. May change the buffer size. Returning false drops the
    // rest of the chunk.
    virtual bool icyAudioGathered(QByteArrayView audio) = 0;
};

// Splits a live stream's bytes into sound and in-band metadata, in whole runs, whatever the chunks. Reads the
// header block of a bare "ICY 200 OK" answer out of the body. One thread. Public sources: the SHOUTcast
// streaming convention ("icy-metaint" bytes of sound, one length byte counting 16-byte blocks,
// "StreamTitle='...';" padded with NUL).
class IcyStream
{
public:
    // Writes what headers say of the station to `station`. Both must outlive the stream.
    IcyStream(IcyStreamClient &client, StationInfo &station) : m_client(client), m_station(station) {}

    // Forgets what an earlier connection has brought, but for the station, the content type and the bit rate,
    // which stay until others replace them.
    void reset();
    void parse(QByteArrayView chunk);

    // Sound is handed over in pieces of this many bytes; a piece already gathered may be longer when this has
    // shrunk.
    void setBufferSize(quint32 bytes) { m_bufferSize = bytes; }
    enum class HeaderKind { Unknown, Technical, Metadata };
    // Takes one header field: the interval, the bit rate, or the station's name, genre or site.
    HeaderKind applyHeader(QStringView name, const QString &value);

    // Bytes of sound between metadata blocks; 0 or less when there are none.
    qint32 metadataInterval() const { return m_metadataInterval; }
    // Bytes a second; 0 when unknown.
    qint32 bitrateInBytes() const { return m_bitrateInBytes; }
    const QString &contentType() const { return m_contentType; }
    void setContentType(const QString &type) { m_contentType = type; }

private:
    qsizetype parseHeaders(QByteArrayView chunk);
    void parseHeaderLine(QByteArrayView line);
    bool gather(QByteArrayView audio);
    void parseMetadata();

    IcyStreamClient &m_client;
    StationInfo &m_station;
    quint32 m_bufferSize = 4096;
    QByteArray m_audioData;
    QByteArray m_metaData;
    qint32 m_metadataInterval = 0;
    qint32 m_metadataLength = 0;
    qint32 m_streamCount = 0; // sound since the last metadata block
    qint32 m_bitrateInBytes = 0;
    QString m_contentType;
    bool m_icyStartFound = false;
    bool m_icyEndFound = false;
    bool m_metadataChanged = false; // by a header line of this chunk
    QByteArray m_headerRest;        // the header line that has not ended yet
    bool m_headerLineTooLong = false;
};

// Returns the title in a metadata block, "StreamTitle='...';" at its start. Returns a null text when there is
// none or the bytes are not UTF-8.
// Deliberate: a title with a ";" is not read, so that the one before it stays
// (IcyStreamTest.ReadsOnlyPlainTitles).
QString streamTitle(QByteArrayView metadata);

} // namespace orvel
