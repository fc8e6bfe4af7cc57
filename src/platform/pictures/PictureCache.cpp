#include "platform/pictures/PictureCache.h"

#include "platform/foundation/RunLoop.h"
#include "platform/net/HttpFreshness.h"
#include "platform/pictures/PictureDecoder.h"

#include <QDateTime>
#include <QIODevice>
#include <QStandardPaths>
#include <memory>

namespace orvel {

namespace {

constexpr qint64 diskBytes = qint64(64) * 1024 * 1024;
constexpr int memoryKiB = 32 * 1024;

double now() { return RunLoop::main().secondsSince1970(); }

QUrl key(const Url &url) { return QUrl::fromEncoded(url.encoded()); }

// The fields that tell how long an answer lives and how to validate it.
HeaderFields cacheFields(const QNetworkCacheMetaData &stored)
{
    HeaderFields fields;
    for (const auto &[name, value] : stored.rawHeaders())
        fields.set(QString::fromLatin1(name), QString::fromLatin1(value));
    return fields;
}

void takeCacheFields(HeaderFields &fields, const HeaderFields &answer)
{
    for (const char *name : {"Cache-Control", "Date", "Expires", "Last-Modified", "ETag", "Vary"}) {
        const QString field = QString::fromLatin1(name);
        if (const std::optional<QString> value = answer.value(field))
            fields.set(field, *value);
    }
}

QNetworkCacheMetaData metaData(const Url &url, const HeaderFields &fields, double freshUntil)
{
    QNetworkCacheMetaData::RawHeaderList headers;
    for (const HeaderFields::Field &field : fields.fields())
        headers.append({field.name.toLatin1(), field.value.toLatin1()});
    QNetworkCacheMetaData data;
    data.setUrl(key(url));
    data.setRawHeaders(headers);
    data.setExpirationDate(QDateTime::fromMSecsSinceEpoch(qint64(freshUntil * 1000)));
    return data;
}

double freshUntil(const QNetworkCacheMetaData &data)
{
    return double(data.expirationDate().toMSecsSinceEpoch()) / 1000;
}

} // namespace

PictureCache &PictureCache::shared()
{
    static PictureCache cache(QStandardPaths::writableLocation(QStandardPaths::CacheLocation) +
                              QStringLiteral("/pictures"));
    return cache;
}

PictureCache::PictureCache(const QString &folder) : m_decoded(memoryKiB)
{
    m_disk.setCacheDirectory(folder);
    m_disk.setMaximumCacheSize(diskBytes);
}

std::optional<PictureCache::Stored> PictureCache::stored(const Url &url)
{
    const QNetworkCacheMetaData data = m_disk.metaData(key(url));
    const std::unique_ptr<QIODevice> device(data.isValid() ? m_disk.data(key(url)) : nullptr);
    if (!device)
        return std::nullopt;
    Stored stored{device->read(maxPictureBytes), freshUntil(data) > now()};
    const HeaderFields fields = cacheFields(data);
    if (const auto tag = fields.value(QStringLiteral("ETag")))
        stored.conditions.set(QStringLiteral("If-None-Match"), *tag);
    if (const auto modified = fields.value(QStringLiteral("Last-Modified")))
        stored.conditions.set(QStringLiteral("If-Modified-Since"), *modified);
    return stored;
}

QImage PictureCache::decoded(const Url &url) const
{
    const Decoded *decoded = m_decoded.object(url.text());
    return decoded && decoded->freshUntil > now() ? decoded->picture : QImage();
}

void PictureCache::keep(const Url &url, const HeaderFields &answer, const QByteArray &bytes,
                        const QImage &picture)
{
    remove(url);
    const HttpFreshness freshness = httpFreshness(answer, now());
    HeaderFields fields;
    takeCacheFields(fields, answer);
    const bool canBeValidated =
        fields.value(QStringLiteral("ETag")) || fields.value(QStringLiteral("Last-Modified"));
    if (!freshness.mayBeStored || (freshness.seconds == 0 && !canBeValidated))
        return;
    if (QIODevice *device = m_disk.prepare(metaData(url, fields, now() + freshness.seconds))) {
        device->write(bytes);
        m_disk.insert(device);
    }
    keepDecoded(url, picture);
}

void PictureCache::keepValidated(const Url &url, const HeaderFields &answer, const QImage &picture)
{
    HeaderFields fields = cacheFields(m_disk.metaData(key(url)));
    takeCacheFields(fields, answer);
    m_disk.updateMetaData(metaData(url, fields, now() + httpFreshness(fields, now()).seconds));
    keepDecoded(url, picture);
}

void PictureCache::keepDecoded(const Url &url, const QImage &picture)
{
    const auto cost = int(picture.sizeInBytes() / 1024 + 1);
    m_decoded.insert(url.text(), new Decoded{picture, freshUntil(m_disk.metaData(key(url)))}, cost);
}

void PictureCache::remove(const Url &url)
{
    m_decoded.remove(url.text());
    m_disk.remove(key(url));
}

} // namespace orvel
