#pragma once

#include "audio/playlist/PlaylistParser.h"

namespace orvel {

// Reads PLS: what follows "=" in the first line that begins with "File". The file may be in any encoding that
// keeps ASCII; the value has to be UTF-8.
//
// Deliberate: neither the entry's number counts nor whether its value is an address
// (PlaylistParserTest.PLSTakesTheEarliestFileEntry).
class PLSParser : public PlaylistParser
{
public:
    std::optional<QString> parseStreamUrl(const QByteArray &body) override;
};

} // namespace orvel
