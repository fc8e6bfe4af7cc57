#include "FuzzSupport.h"
#include "audio/icy/StreamFileType.h"
#include "audio/probe/ContentTypeReading.h"
#include "audio/probe/MetadataReading.h"

using namespace orvel;
using fuzz::ChunkedInput;
using fuzz::require;

namespace {

template<typename Reading>
Reading readingOf(const UrlResponse &response, const ChunkedInput &body, ChunkedInput::Feed feed)
{
    Reading reading;
    reading.readResponse(response);
    (body.*feed)([&reading](QByteArrayView chunk) { reading.readData(chunk); });
    return reading;
}

} // namespace

// An input is an answer: header fields, an empty line, the body, and the sizes of its chunks.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QByteArrayView input = fuzz::viewOf(data, size);
    UrlResponse response{.statusCode = 200};
    for (const auto &[name, value] : fuzz::takeHead(input))
        response.headers.set(name, value);
    const ChunkedInput body(input);

    const auto whole = readingOf<MetadataReading>(response, body, &ChunkedInput::takeWhole);
    const auto chunked = readingOf<MetadataReading>(response, body, &ChunkedInput::takeChunks);
    const auto slow = readingOf<MetadataReading>(response, body, &ChunkedInput::takeByteForByte);
    const auto type = readingOf<ContentTypeReading>(response, body, &ChunkedInput::takeChunks);
    for (const MetadataReading *reading : {&whole, &chunked})
        require(!reading->dictionary() ||
                    reading->dictionary()->contains(QStringLiteral("StreamResponceType")),
                "an answer that was understood has its kind");
    streamFileType(type.contentType());

    // Of a bare ICY answer as much is read as has arrived with the byte that tells it.
    const QString told = response.headers.value(QStringLiteral("content-type")).value_or(QString());
    if (told.isEmpty())
        return 0;
    require(type.isOver() && type.contentType() == told, "the head tells the type");
    require(chunked.dictionary() == whole.dictionary() && chunked.isOver() == whole.isOver(),
            "the same is read through any chunks");
    require(slow.dictionary() == whole.dictionary() && slow.isOver() == whole.isOver(),
            "the same is read byte for byte");
    return 0;
}
