#pragma once

#include "audio/playlist/PlaylistParser.h"
#include "platform/foundation/Url.h"

#include <QByteArrayView>
#include <memory>

namespace orvel {

// Gathers a playlist's body, and finds the stream that it names.
class PlaylistDownload
{
public:
    // Chooses the parser by the extension of the URL's path, ignoring case: M3U, PLS or XSPF. Returns nullptr
    // when the URL is a stream's own.
    static std::unique_ptr<PlaylistDownload> forUrl(const Url &url);

    // Forgets what has been gathered.
    void clear() { m_body.clear(); }
    // Returns false once 1 MiB is gathered; what follows is not read.
    bool append(QByteArrayView data);
    // Returns the first stream in what has been gathered, which is forgotten; std::nullopt when no URL can be
    // made of it.
    std::optional<Url> takeStreamUrl();

private:
    explicit PlaylistDownload(std::unique_ptr<PlaylistParser> parser) : m_parser(std::move(parser)) {}

    std::unique_ptr<PlaylistParser> m_parser;
    QByteArray m_body;
};

} // namespace orvel
