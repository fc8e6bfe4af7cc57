#pragma once

#include "audio/playlist/PlaylistParser.h"
#include "platform/foundation/Url.h"

#include <QByteArrayView>
#include <memory>

namespace orvel {

// A playlist on its way in, and the stream that it names.
class PlaylistDownload
{
public:
    // By the extension of the URL's path, whatever its case: M3U, PLS or XSPF. Null when the URL is a
    // stream's own.
    static std::unique_ptr<PlaylistDownload> forUrl(const Url &url);

    // Forgets what has come in so far.
    void clear() { m_body.clear(); }
    // False when it has had enough: what follows in a longer playlist is not read.
    bool append(QByteArrayView data);
    // The first stream in what has come in, which is forgotten; nothing when no URL can be made of it.
    std::optional<Url> takeStreamUrl();

private:
    explicit PlaylistDownload(std::unique_ptr<PlaylistParser> parser) : m_parser(std::move(parser)) {}

    std::unique_ptr<PlaylistParser> m_parser;
    QByteArray m_body;
};

} // namespace orvel
