#include "audio/playlist/M3UParser.h"

#include "audio/playlist/PlaylistLines.h"
#include "platform/foundation/ByteText.h"

namespace orvel {

std::optional<QString> M3UParser::parseStreamUrl(const QByteArray &body)
{
    if (!decodeUtf8(body))
        return std::nullopt;
    const auto line = findLine(body, [](QByteArrayView candidate) { return candidate.startsWith("http"); });
    if (!line)
        return std::nullopt;
    return decodeUtf8(*line);
}

} // namespace orvel
