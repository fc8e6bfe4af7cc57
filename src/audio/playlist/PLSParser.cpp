#include "audio/playlist/PLSParser.h"

#include "audio/playlist/PlaylistLines.h"
#include "platform/foundation/ByteText.h"

namespace orvel {

std::optional<QString> PLSParser::parseStreamUrl(const QByteArray &body)
{
    const auto line = findLine(body, [](QByteArrayView candidate) {
        return candidate.startsWith("File") && candidate.contains('=');
    });
    if (!line)
        return std::nullopt;
    return decodeUtf8(line->sliced(line->indexOf('=') + 1));
}

} // namespace orvel
