#pragma once

#include "audio/playlist/PlaylistParser.h"

namespace orvel {

// Reads M3U in UTF-8: the first line that begins with "http". Comments, directives and relative paths never
// do.
class M3UParser : public PlaylistParser
{
public:
    std::optional<QString> parseStreamUrl(const QByteArray &body) override;
};

} // namespace orvel
