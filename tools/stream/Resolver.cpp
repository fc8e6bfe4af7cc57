#include "tools/stream/Resolver.h"

namespace orvel {

void Resolver::resolve(const Url &url, Handler handler)
{
    // As long as the player waits.
    constexpr double idleSeconds = 30;
    m_handler = std::move(handler);
    m_playlist = PlaylistDownload::forUrl(url);
    if (!m_playlist) {
        end(url);
        return;
    }
    m_connection = UrlConnection::start({.url = url, .idleTimeout = idleSeconds}, shared_from_this());
}

void Resolver::cancel()
{
    m_handler = nullptr;
    if (const std::shared_ptr<UrlConnection> connection = std::exchange(m_connection, nullptr))
        connection->cancel();
}

void Resolver::end(const std::variant<Url, Outcome> &result)
{
    const Handler handler = std::exchange(m_handler, nullptr);
    cancel();
    handler(result);
}

void Resolver::playlistReceived()
{
    if (const std::optional<Url> url = m_playlist->takeStreamUrl())
        end(*url);
    else
        end(Outcome::failure(ExitCode::NoStream, QStringLiteral("The playlist names no stream.")));
}

void Resolver::didReceiveResponse(UrlConnection &, const UrlResponse &response)
{
    if (response.statusCode >= 400)
        end(outcomeOfStatus(response.statusCode));
}

void Resolver::didReceiveData(UrlConnection &, QByteArrayView data)
{
    if (!m_playlist->append(data))
        playlistReceived();
}

void Resolver::didFailWithError(UrlConnection &, const NetError &error) { end(outcomeOf(error)); }

void Resolver::connectionDidFinishLoading(UrlConnection &) { playlistReceived(); }

} // namespace orvel
