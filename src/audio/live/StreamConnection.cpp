#include "audio/live/StreamConnection.h"

namespace orvel {

namespace {

// Until the format is known, the parser is fed in pieces of this many bytes.
constexpr quint32 firstBufferSize = 4096;

} // namespace

StreamConnection::StreamConnection(StreamConnectionClient &client, IcyStreamClient &streamClient, Url &url,
                                   StationInfo &station)
    : m_client(client)
    , m_streamClient(streamClient)
    , m_url(url)
    , m_icyStream(streamClient, station)
    , m_playlist(PlaylistDownload::forUrl(url))
    , m_httpState(m_playlist ? HttpState::FetchingPlaylist : HttpState::FetchingStream)
{
}

void StreamConnection::start(const Request &request)
{
    m_request = request;
    m_icyStream.reset();
    m_icyStream.setBufferSize(firstBufferSize);
    if (m_httpState == HttpState::FetchingStream)
        requestAudioStream();
    else
        requestPlaylist();
}

void StreamConnection::requestPlaylist() { send({m_url}); }

void StreamConnection::requestAudioStream()
{
    UrlRequest request{.url = m_url, .acceptsBareAnswer = true};
    request.headers.set(QStringLiteral("Icy-Metadata"), QStringLiteral("1"));
    request.headers.set(QStringLiteral("Cache-Control"), QStringLiteral("no-cache"));
    // Sound is never packed: what claims to be could only unpack to a thousand times its size.
    request.headers.set(QStringLiteral("Accept-Encoding"), QStringLiteral("identity"));
    send(std::move(request));
}

void StreamConnection::send(UrlRequest request)
{
    if (!m_request.userAgent.isNull())
        request.headers.set(QStringLiteral("User-Agent"), m_request.userAgent);
    request.idleTimeout = m_request.timeout;
    cancel();
    m_httpStatusCode = 0;
    m_networkError.reset();
    m_urlConnection = UrlConnection::start(request, shared_from_this());
    m_pacing.begin(m_urlConnection);
}

void StreamConnection::cancel()
{
    m_pacing.end();
    if (const std::shared_ptr<UrlConnection> connection = std::exchange(m_urlConnection, nullptr))
        connection->cancel();
}

void StreamConnection::didReceiveResponse(UrlConnection &, const UrlResponse &response)
{
    m_httpStatusCode = response.statusCode;
    if (response.statusCode >= 400) {
        m_client.requestFailed(RadioErrorHostNotReachable);
    } else if (m_httpState == HttpState::FetchingPlaylist) {
        m_playlist->clear();
    } else {
        readStreamHeaders(response.headers);
        m_client.streamAnswered();
    }
}

void StreamConnection::readStreamHeaders(const HeaderFields &headers)
{
    m_icyStream.setContentType(headers.value(QStringLiteral("content-type")).value_or(QString()));
    bool hasMetadata = false;
    for (const HeaderFields::Field &field : headers.fields())
        hasMetadata |= m_icyStream.applyHeader(field.name, field.value) == IcyStream::HeaderKind::Metadata;
    if (hasMetadata)
        m_streamClient.icyMetadataReady();
}

void StreamConnection::didReceiveData(UrlConnection &, QByteArrayView data)
{
    if (m_httpState == HttpState::FetchingStream)
        m_icyStream.parse(data);
    else if (!m_playlist->append(data))
        playlistReceived();
}

void StreamConnection::connectionDidFinishLoading(UrlConnection &)
{
    cancel();
    if (m_httpState == HttpState::FetchingPlaylist)
        playlistReceived();
    else
        m_client.connectionFinished();
}

void StreamConnection::playlistReceived()
{
    cancel();
    const std::optional<Url> url = m_playlist->takeStreamUrl();
    if (!url) {
        m_client.requestFailed(RadioErrorPlaylistParsing);
        return;
    }
    m_url = *url;
    m_httpState = HttpState::FetchingStream;
    requestAudioStream();
}

void StreamConnection::didFailWithError(UrlConnection &, const NetError &error)
{
    cancel();
    m_networkError = error;
    if (m_httpState == HttpState::FetchingPlaylist)
        m_client.requestFailed(RadioErrorHostNotReachable);
    else
        m_client.connectionLost();
}

} // namespace orvel
