#pragma once

#include "audio/playlist/PlaylistParser.h"

namespace orvel {

// M3U, UTF-8 only: the first line that begins with "http". Comments, directives and relative paths never do.
class M3UParser : public PlaylistParser
{
public:
    std::optional<QString> parseStreamUrl(const QByteArray &body) override;
};

} // namespace orvel
