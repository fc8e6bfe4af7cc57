#include "audio/playlist/XSPFParser.h"

#include "audio/playlist/XPathQuery.h"

namespace orvel {

std::optional<QString> XSPFParser::parseStreamUrl(const QByteArray &body)
{
    const auto locations =
        xpathQuery(body, {{"xspf", "http://xspf.org/ns/0/"}}, "//xspf:track/xspf:location", 1);
    if (!locations || locations->empty())
        return std::nullopt;
    return locations->front().nodeContent;
}

} // namespace orvel
