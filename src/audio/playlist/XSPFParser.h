#pragma once

#include "audio/playlist/PlaylistParser.h"

namespace orvel {

// Reads XSPF: the first location of a track, in the XSPF namespace.
class XSPFParser : public PlaylistParser
{
public:
    std::optional<QString> parseStreamUrl(const QByteArray &body) override;
};

} // namespace orvel
