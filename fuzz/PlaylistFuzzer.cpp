#include "FuzzSupport.h"
#include "audio/playlist/M3UParser.h"
#include "audio/playlist/PLSParser.h"
#include "audio/playlist/PlaylistLines.h"
#include "audio/playlist/XPathQuery.h"
#include "audio/playlist/XSPFParser.h"
#include "platform/foundation/ByteText.h"
#include "platform/foundation/Url.h"

using namespace orvel;
using fuzz::require;

namespace {

std::optional<QString> streamIn(PlaylistParser &&parser, const QByteArray &body)
{
    const std::optional<QString> stream = parser.parseStreamUrl(body);
    const std::optional<Url> url = stream ? Url::fromText(*stream) : std::nullopt;
    if (url) {
        require(url->text() == *stream, "an address remembers its text");
        require(!url->scheme().isEmpty(), "an address has a scheme");
        url->pathExtension();
        url->encoded();
    }
    return stream;
}

bool isPartOfLine(const QString &stream, const QByteArray &body)
{
    const QByteArray bytes = stream.toUtf8();
    const auto firstLine = findLine(bytes, [](QByteArrayView) { return true; });
    return firstLine->size() == bytes.size() && body.contains(bytes);
}

} // namespace

// All three read each input: which one does is decided by the address, not by the body.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray body = fuzz::viewOf(data, size).toByteArray();
    if (const auto stream = streamIn(M3UParser(), body))
        require(stream->startsWith(u"http") && isPartOfLine(*stream, body), "M3U gives one of its lines");
    if (const auto stream = streamIn(PLSParser(), body))
        require(isPartOfLine(*stream, body), "PLS gives a part of one of its lines");
    if (const auto stream = streamIn(XSPFParser(), body))
        require(stream->isValidUtf16(), "XSPF gives a text");
    xpathQuery(body, {}, "//*", 3);
    return 0;
}
