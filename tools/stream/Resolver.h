#pragma once

#include "audio/playlist/PlaylistDownload.h"
#include "platform/net/UrlConnection.h"
#include "tools/stream/Outcome.h"

#include <functional>
#include <variant>

namespace orvel {

// Finds the stream behind a URL as the player does: in the playlist, where the URL names one.
class Resolver final : public UrlConnectionDelegate, public std::enable_shared_from_this<Resolver>
{
public:
    // Called with the stream's URL, or why there is none.
    using Handler = std::function<void(const std::variant<Url, Outcome> &)>;

    // Calls `handler` once: at once for a URL that does not name a playlist.
    void resolve(const Url &url, Handler handler);
    // The handler is not called any more.
    void cancel();

private:
    void end(const std::variant<Url, Outcome> &result);
    void playlistReceived();
    void didReceiveResponse(UrlConnection &connection, const UrlResponse &response) override;
    void didReceiveData(UrlConnection &connection, QByteArrayView data) override;
    void didFailWithError(UrlConnection &connection, const NetError &error) override;
    void connectionDidFinishLoading(UrlConnection &connection) override;

    std::unique_ptr<PlaylistDownload> m_playlist;
    std::shared_ptr<UrlConnection> m_connection;
    Handler m_handler;
};

} // namespace orvel
