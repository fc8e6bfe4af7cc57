#pragma once

#include "audio/live/IcyStream.h"
#include "audio/live/RadioState.h"
#include "audio/live/TransferPacing.h"
#include "audio/playlist/PlaylistDownload.h"
#include "platform/net/UrlConnection.h"

#include <optional>

namespace orvel {

// What a player learns of its connection beside what is in the stream. Main thread.
class StreamConnectionClient
{
public:
    virtual ~StreamConnectionClient() = default;
    // The stream's head has come, its header fields have been read.
    virtual void streamAnswered() = 0;
    // The server refuses, or there is no stream to ask for.
    virtual void requestFailed(RadioError error) = 0;
    // The transfer of the stream has failed.
    virtual void connectionLost() = 0;
    virtual void connectionFinished() = 0;
};

// The network side of a live player: asks for the playlist, if there is one, then for the stream that it
// names, and splits what comes into sound and metadata. Main thread. Held by a shared_ptr; its owner calls
// cancel() before it goes.
class StreamConnection final : public UrlConnectionDelegate,
                               public std::enable_shared_from_this<StreamConnection>
{
public:
    // How requests are made.
    struct Request
    {
        QString userAgent;     // sent as "User-Agent" when not null
        unsigned timeout = 30; // seconds without a byte after which a request has failed
    };

    // `url` becomes the stream's once a playlist has named it; `station` takes what headers say. Both outlive
    // the connection.
    StreamConnection(StreamConnectionClient &client, IcyStreamClient &streamClient, Url &url,
                     StationInfo &station);

    // Connects anew, with nothing known of an earlier stream.
    void start(const Request &request);
    // Nothing is told to the clients after it.
    void cancel();

    IcyStream &icyStream() { return m_icyStream; }
    TransferPacing &pacing() { return m_pacing; }
    // The last answer's status code: 0 before it, and of a bare ICY answer.
    int httpStatusCode() const { return m_httpStatusCode; }
    // Why the last transfer failed, when it did.
    const std::optional<NetError> &networkError() const { return m_networkError; }

private:
    enum class HttpState { FetchingPlaylist, FetchingStream };

    void requestPlaylist();
    void requestAudioStream();
    void send(UrlRequest request);
    void playlistReceived();
    void readStreamHeaders(const HeaderFields &headers);

    void didReceiveResponse(UrlConnection &connection, const UrlResponse &response) override;
    void didReceiveData(UrlConnection &connection, QByteArrayView data) override;
    void didFailWithError(UrlConnection &connection, const NetError &error) override;
    void connectionDidFinishLoading(UrlConnection &connection) override;

    StreamConnectionClient &m_client;
    IcyStreamClient &m_streamClient;
    Url &m_url;
    IcyStream m_icyStream;
    TransferPacing m_pacing;
    Request m_request;
    std::shared_ptr<UrlConnection> m_urlConnection;
    int m_httpStatusCode = 0;
    std::optional<NetError> m_networkError;
    std::unique_ptr<PlaylistDownload> m_playlist; // nullptr: the URL is the stream's
    HttpState m_httpState;
};

} // namespace orvel
