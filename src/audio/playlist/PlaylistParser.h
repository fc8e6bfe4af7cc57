#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace orvel {

// Finds the stream in a playlist's body. Stateless.
class PlaylistParser
{
public:
    virtual ~PlaylistParser() = default;
    // Returns the first stream address as written, or std::nullopt when there is none or the body can't be
    // read.
    virtual std::optional<QString> parseStreamUrl(const QByteArray &body) = 0;
};

} // namespace orvel
