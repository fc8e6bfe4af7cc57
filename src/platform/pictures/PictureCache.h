#pragma once

#include "platform/net/UrlRequest.h"

#include <QCache>
#include <QImage>
#include <QNetworkDiskCache>
#include <optional>

namespace orvel {

// Pictures that were loaded, as HTTP lets a client keep them (RFC 9111): their bytes on disk (64 MiB), and
// the last ones decoded in memory (32 MiB) while they are fresh. Main thread.
class PictureCache
{
public:
    // The application's own, in the user's cache folder.
    static PictureCache &shared();
    explicit PictureCache(const QString &folder);

    struct Stored
    {
        QByteArray bytes;
        // True: may be shown without asking the server.
        bool fresh = false;
        // What a request to validate it says.
        HeaderFields conditions{};
    };
    std::optional<Stored> stored(const Url &url);
    // A null image when there is none or it is no longer fresh.
    QImage decoded(const Url &url) const;

    // Keeps the answer of status 200 that `bytes` came with, if it allows that.
    void keep(const Url &url, const HeaderFields &answer, const QByteArray &bytes, const QImage &picture);
    // What is stored has been validated by an answer of status 304.
    void keepValidated(const Url &url, const HeaderFields &answer, const QImage &picture);
    // What was stored and is still fresh has been decoded.
    void keepDecoded(const Url &url, const QImage &picture);
    void remove(const Url &url);

private:
    struct Decoded
    {
        QImage picture;
        double freshUntil;
    };

    QNetworkDiskCache m_disk;
    QCache<QString, Decoded> m_decoded; // cost in KiB
};

} // namespace orvel
