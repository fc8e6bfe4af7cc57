#include "FuzzSupport.h"
#include "audio/live/IcyStream.h"

#include <algorithm>
#include <utility>
#include <vector>

using namespace orvel;
using fuzz::ChunkedInput;
using fuzz::require;

namespace {

// What a listener notices: each piece of sound and each title, in order, and what the headers told at the
// end.
struct Heard
{
    std::vector<QByteArray> sound;
    std::vector<std::pair<qsizetype, QString>> titles; // with the number of pieces before
    qint32 interval = 0;
    qint32 bitrate = 0;
    QString name, genre, url, contentType;

    bool operator==(const Heard &) const = default;
};

class Listener : public IcyStreamClient
{
public:
    explicit Listener(quint32 bufferSize) : m_laterBufferSize(bufferSize) { m_stream.setBufferSize(64); }

    void takeField(const QString &name, const QString &value) { m_stream.applyHeader(name, value); }
    // As a connection does, it hands nothing over before it has enough to tell a bare ICY answer by.
    void take(QByteArrayView chunk)
    {
        if (m_hasBegun)
            return m_stream.parse(chunk);
        m_beginning.append(chunk);
        if (m_beginning.size() >= 16)
            begin();
    }
    Heard heard()
    {
        if (!m_hasBegun)
            begin();
        m_heard.interval = m_stream.metadataInterval();
        m_heard.bitrate = m_stream.bitrateInBytes();
        m_heard.name = m_station.name;
        m_heard.genre = m_station.genre;
        m_heard.url = m_station.url;
        m_heard.contentType = m_stream.contentType();
        return m_heard;
    }

private:
    void begin()
    {
        m_hasBegun = true;
        m_stream.parse(m_beginning);
    }
    bool icyHeadersEnded() override
    {
        require(!std::exchange(m_headersEnded, true), "headers end once");
        return true;
    }
    void icyMetadataReady() override {}
    void icyTitleChanged(const QString &title) override
    {
        require(!title.isNull() && !title.contains(u';') && title.isValidUtf16(), "a title has no semicolon");
        m_heard.titles.emplace_back(m_heard.sound.size(), title);
    }
    // As a player does, it asks for other pieces once the first one has told the format.
    bool icyAudioGathered(QByteArrayView audio) override
    {
        require(audio.size() == (m_heard.sound.empty() ? 64 : m_laterBufferSize),
                "a piece is one buffer size long");
        m_heard.sound.push_back(audio.toByteArray());
        m_stream.setBufferSize(m_laterBufferSize);
        return true;
    }

    const quint32 m_laterBufferSize;
    StationInfo m_station;
    IcyStream m_stream{*this, m_station};
    QByteArray m_beginning;
    bool m_hasBegun = false;
    bool m_headersEnded = false;
    Heard m_heard;
};

struct Answer
{
    std::vector<fuzz::HeaderField> fields;
    ChunkedInput body;
    quint32 bufferSize = 1;

    Heard heard(ChunkedInput::Feed feed) const
    {
        Listener listener(bufferSize);
        for (const auto &[name, value] : fields)
            listener.takeField(name, value);
        (body.*feed)([&listener](QByteArrayView chunk) { listener.take(chunk); });
        return listener.heard();
    }
};

} // namespace

// An input is an answer: header fields, an empty line, the body, and the sizes of its chunks.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QByteArrayView input = fuzz::viewOf(data, size);
    if (input.isEmpty())
        return 0;
    const quint32 bufferSize = 1 + static_cast<unsigned char>(input.back()) % 100;
    std::vector<fuzz::HeaderField> fields = fuzz::takeHead(input);
    const Answer answer{std::move(fields), ChunkedInput(input), bufferSize};
    const QByteArrayView body = answer.body.bytes();

    Listener head(bufferSize);
    for (const auto &[name, value] : answer.fields)
        head.takeField(name, value);
    // Without an interval any chunk may turn out to begin a bare ICY answer, and how much of an endless
    // header line is kept is up to the chunks.
    const QByteArrayView status("ICY 200 OK");
    const bool isBare = body.size() < 16 * 1024 && body.size() >= 16 &&
                        body.first(status.size()).compare(status, Qt::CaseInsensitive) == 0;
    if (head.heard().interval == 0 && !isBare)
        answer.heard(&ChunkedInput::takeChunks);
    else
        answer.body.sameThroughAnyChunks([&answer](ChunkedInput::Feed feed) { return answer.heard(feed); });
    return 0;
}
