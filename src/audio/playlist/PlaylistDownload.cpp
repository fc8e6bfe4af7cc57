#include "audio/playlist/PlaylistDownload.h"

#include "audio/playlist/M3UParser.h"
#include "audio/playlist/PLSParser.h"
#include "audio/playlist/XSPFParser.h"
#include "platform/foundation/ByteText.h"

#include <algorithm>

namespace orvel {

namespace {

constexpr qsizetype maxBytes = 1 << 20;

std::unique_ptr<PlaylistParser> parserFor(const QString &extension)
{
    if (equalsIgnoringCase(extension, u"m3u"))
        return std::make_unique<M3UParser>();
    if (equalsIgnoringCase(extension, u"pls"))
        return std::make_unique<PLSParser>();
    if (equalsIgnoringCase(extension, u"xspf"))
        return std::make_unique<XSPFParser>();
    return nullptr;
}

} // namespace

std::unique_ptr<PlaylistDownload> PlaylistDownload::forUrl(const Url &url)
{
    std::unique_ptr<PlaylistParser> parser = parserFor(url.pathExtension());
    if (!parser)
        return nullptr;
    return std::unique_ptr<PlaylistDownload>(new PlaylistDownload(std::move(parser)));
}

bool PlaylistDownload::append(QByteArrayView data)
{
    m_body.append(data.first(std::min(data.size(), maxBytes - m_body.size())));
    return m_body.size() < maxBytes;
}

std::optional<Url> PlaylistDownload::takeStreamUrl()
{
    const std::optional<QString> text = m_parser->parseStreamUrl(std::exchange(m_body, {}));
    return text ? Url::fromText(*text) : std::nullopt;
}

} // namespace orvel
