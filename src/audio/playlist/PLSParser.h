#pragma once

#include "audio/playlist/PlaylistParser.h"

namespace orvel {

// PLS, UTF-8 or ASCII: what follows "=" in the first line that begins with "File", whatever its number and
// value.
class PLSParser : public PlaylistParser
{
public:
    std::optional<QString> parseStreamUrl(const QByteArray &body) override;
};

} // namespace orvel
