#include "audio/playlist/M3UParser.h"

#include "audio/playlist/PlaylistLines.h"
#include "platform/foundation/ByteText.h"

namespace orvel {

std::optional<QString> M3UParser::parseStreamUrl(const QByteArray &body)
{
    const std::optional<QString> text = decodeUtf8(body);
    if (!text)
        return std::nullopt;
    const auto line = findLine(*text, [](QStringView candidate) { return candidate.startsWith(u"http"); });
    if (!line)
        return std::nullopt;
    return line->toString();
}

} // namespace orvel
