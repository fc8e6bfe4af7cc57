#pragma once

#include "audio/playlist/PlaylistParser.h"

namespace orvel {

// PLS: what follows "=" in the first line that begins with "File", whatever its number and value. The file
// may be in any encoding that keeps ASCII, the value alone has to be UTF-8.
class PLSParser : public PlaylistParser
{
public:
    std::optional<QString> parseStreamUrl(const QByteArray &body) override;
};

} // namespace orvel
