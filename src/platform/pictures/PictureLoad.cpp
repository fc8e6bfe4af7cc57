#include "platform/pictures/PictureLoad.h"

#include "platform/foundation/ByteText.h"
#include "platform/pictures/PictureDecoder.h"

#include <algorithm>

namespace orvel {

namespace {

constexpr int statusNotModified = 304;

} // namespace

std::shared_ptr<PictureLoad> PictureLoad::start(const Url &url, Client client)
{
    const std::shared_ptr<PictureLoad> load(new PictureLoad(url, std::move(client)));
    if (load->m_stored && load->m_stored->fresh)
        load->decode(load->m_stored->bytes, &PictureLoad::storedIsDecoded);
    else
        load->fetch();
    return load;
}

PictureLoad::PictureLoad(const Url &url, Client client)
    : m_url(url), m_client(std::move(client)), m_cache(PictureCache::shared()), m_stored(m_cache.stored(url))
{
}

void PictureLoad::cancel()
{
    m_client = {};
    if (m_connection)
        std::exchange(m_connection, nullptr)->cancel();
}

void PictureLoad::fetch()
{
    UrlRequest request{m_url};
    if (m_stored)
        request.headers = m_stored->conditions;
    m_connection = UrlConnection::start(request, shared_from_this());
}

void PictureLoad::didReceiveResponse(UrlConnection &, const UrlResponse &response)
{
    m_response = response;
    const bool validates = response.statusCode == statusNotModified && m_stored;
    m_announcedBytes =
        integerValue(response.headers.value(QStringLiteral("Content-Length")).value_or(QString()));
    if ((response.statusCode / 100 != 2 && !validates) || m_announcedBytes > maxPictureBytes)
        finish({});
}

void PictureLoad::didReceiveData(UrlConnection &, QByteArrayView data)
{
    // Not every address is a picture's: a live stream would come in for ever.
    if (m_bytes.isEmpty() && !looksLikePicture(data)) {
        finish({});
        return;
    }
    if (m_bytes.size() + data.size() > maxPictureBytes) {
        finish({});
        return;
    }
    m_bytes.append(data);
    if (m_announcedBytes > 0)
        m_client.progressed(std::min(1.0, double(m_bytes.size()) / double(m_announcedBytes)));
}

void PictureLoad::didFailWithError(UrlConnection &, const NetError &) { finish({}); }

void PictureLoad::connectionDidFinishLoading(UrlConnection &)
{
    m_connection.reset();
    if (m_response.statusCode == statusNotModified)
        decode(m_stored->bytes, &PictureLoad::storedIsDecoded);
    else
        decode(m_bytes, &PictureLoad::answerIsDecoded);
}

void PictureLoad::decode(const QByteArray &bytes, void (PictureLoad::*then)(const QImage &))
{
    decodePicture(bytes,
                  [self = shared_from_this(), then](const QImage &picture) { ((*self).*then)(picture); });
}

void PictureLoad::storedIsDecoded(const QImage &picture)
{
    if (picture.isNull()) {
        // The file was spoilt: as if nothing had been stored.
        m_cache.remove(m_url);
        m_stored.reset();
        if (m_client.finished)
            fetch();
        return;
    }
    if (m_response.statusCode == statusNotModified)
        m_cache.keepValidated(m_url, m_response.headers, picture);
    else
        m_cache.keepDecoded(m_url, picture);
    finish(picture);
}

void PictureLoad::answerIsDecoded(const QImage &picture)
{
    if (!picture.isNull() && m_response.statusCode == 200)
        m_cache.keep(m_url, m_response.headers, m_bytes, picture);
    finish(picture);
}

void PictureLoad::finish(const QImage &picture)
{
    const Client client = std::exchange(m_client, {});
    if (m_connection)
        std::exchange(m_connection, nullptr)->cancel();
    if (client.finished)
        client.finished(picture);
}

} // namespace orvel
