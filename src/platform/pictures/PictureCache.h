#pragma once

#include "platform/net/UrlRequest.h"

#include <QCache>
#include <QImage>
#include <QNetworkDiskCache>
#include <optional>

namespace orvel {

// Keeps loaded pictures as HTTP lets a client keep them (RFC 9111): their bytes on disk, at most 64 MiB, and
// the last ones decoded in memory, at most 32 MiB, while they are fresh. Main thread.
class PictureCache
{
public:
    // Returns the application's own cache, in the user's cache folder.
    static PictureCache &shared();
    explicit PictureCache(const QString &folder);

    struct Stored
    {
        QByteArray bytes;
        // True when the picture may be shown without asking the server.
        bool fresh = false;
        // The header fields of a request that validates it.
        HeaderFields conditions{};
    };
    // Returns what the disk holds, or nullopt.
    std::optional<Stored> stored(const Url &url);
    // Returns a null image when memory holds none or it is no longer fresh.
    QImage decoded(const Url &url) const;

    // Keeps the body of an answer of status 200 and the picture decoded from it, if the answer allows that.
    // Removes what was kept before in any case.
    void keep(const Url &url, const HeaderFields &answer, const QByteArray &bytes, const QImage &picture);
    // Refreshes what the disk holds with an answer of status 304, and keeps the picture decoded from it.
    void keepValidated(const Url &url, const HeaderFields &answer, const QImage &picture);
    // Keeps the picture decoded from what the disk holds.
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
