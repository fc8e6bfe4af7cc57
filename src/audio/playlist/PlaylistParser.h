#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace orvel {

// Finds the stream in a playlist's body.
class PlaylistParser
{
public:
    virtual ~PlaylistParser() = default;
    // The first stream address, as written; nothing when there is none or the body can't be read.
    virtual std::optional<QString> parseStreamUrl(const QByteArray &body) = 0;
};

} // namespace orvel
