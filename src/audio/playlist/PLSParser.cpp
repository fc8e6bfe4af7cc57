#include "audio/playlist/PLSParser.h"

#include "audio/playlist/PlaylistLines.h"
#include "platform/foundation/ByteText.h"

namespace orvel {

std::optional<QString> PLSParser::parseStreamUrl(const QByteArray &body)
{
    // ASCII needs no second look: all of it is UTF-8 too.
    const std::optional<QString> text = decodeUtf8(body);
    if (!text)
        return std::nullopt;
    const auto line = findLine(*text, [](QStringView candidate) {
        return candidate.startsWith(u"File") && candidate.contains(u'=');
    });
    if (!line)
        return std::nullopt;
    return line->sliced(line->indexOf(u'=') + 1).toString();
}

} // namespace orvel
