#pragma once

#include "platform/net/UrlConnection.h"
#include "platform/pictures/PictureCache.h"

#include <functional>

namespace orvel {

// Loads the picture at one URL, from the cache or the server, and decodes it off the main thread. Main
// thread.
class PictureLoad final : public UrlConnectionDelegate, public std::enable_shared_from_this<PictureLoad>
{
public:
    // Neither is called from inside start() or after cancel().
    struct Client
    {
        // The fraction of the announced bytes that have arrived. Not called when no length was announced.
        std::function<void(double fraction)> progressed;
        // Called once, with a null image when the load has failed.
        std::function<void(const QImage &picture)> finished;
    };

    static std::shared_ptr<PictureLoad> start(const Url &url, Client client);
    // Ends the load. A picture whose bytes have all arrived is still kept in the cache.
    void cancel();

private:
    PictureLoad(const Url &url, Client client);
    void fetch();
    void decode(const QByteArray &bytes, void (PictureLoad::*then)(const QImage &));
    void storedIsDecoded(const QImage &picture);
    void answerIsDecoded(const QImage &picture);
    void finish(const QImage &picture);

    void didReceiveResponse(UrlConnection &connection, const UrlResponse &response) override;
    void didReceiveData(UrlConnection &connection, QByteArrayView data) override;
    void didFailWithError(UrlConnection &connection, const NetError &error) override;
    void connectionDidFinishLoading(UrlConnection &connection) override;

    const Url m_url;
    Client m_client;
    PictureCache &m_cache;
    std::optional<PictureCache::Stored> m_stored;
    std::shared_ptr<UrlConnection> m_connection;
    UrlResponse m_response;
    qint64 m_announcedBytes = 0;
    QByteArray m_bytes;
};

} // namespace orvel
