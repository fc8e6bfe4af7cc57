// Reads one live stream to its end as the player does, without playing it:
//   orvel-bench-reading URL [frames]
// splits sound and metadata and, with "frames", finds the frames too. Prints what it found as one line.

#include "audio/live/IcyStream.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/RunLoop.h"
#include "platform/media/parse/FramedAudioFileStream.h"
#include "platform/net/UrlConnection.h"

#include <QCoreApplication>
#include <cstdio>

using namespace orvel;

namespace {

// The player's own piece of sound, half a second of it.
constexpr quint32 bufferSize = 22050;

class Reader final : public UrlConnectionDelegate, public IcyStreamClient, public AudioFileStreamClient
{
public:
    explicit Reader(bool findsFrames)
    {
        m_stream.setBufferSize(bufferSize);
        if (findsFrames)
            m_parser = openFramedAudioFileStream(*this, AudioFileType::none);
    }

    void didReceiveResponse(UrlConnection &, const UrlResponse &response) override
    {
        for (const HeaderFields::Field &field : response.headers.fields())
            m_stream.applyHeader(field.name, field.value);
    }
    void didReceiveData(UrlConnection &, QByteArrayView data) override { m_stream.parse(data); }
    void didFailWithError(UrlConnection &, const NetError &error) override
    {
        std::fprintf(stderr, "%s\n", qUtf8Printable(error.localizedDescription));
        QCoreApplication::exit(1);
    }
    void connectionDidFinishLoading(UrlConnection &) override
    {
        std::printf("%lld bytes of sound, %lld titles, %lld frames\n", m_bytes, m_titles, m_frames);
        QCoreApplication::exit(0);
    }

    bool icyHeadersEnded() override { return true; }
    void icyMetadataReady() override {}
    void icyTitleChanged(const QString &) override { ++m_titles; }
    bool icyAudioGathered(QByteArrayView audio) override
    {
        m_bytes += audio.size();
        return !m_parser || m_parser->parseBytes(audio);
    }

    void handlePropertyChange(AudioFileStream &, AudioFileStreamProperty) override {}
    void handlePacket(AudioFileStream &, quint32 count, QByteArrayView,
                      std::span<const AudioStreamPacketDescription>) override
    {
        m_frames += count;
    }

private:
    StationInfo m_station;
    IcyStream m_stream{*this, m_station};
    std::unique_ptr<AudioFileStream> m_parser;
    long long m_bytes = 0;
    long long m_titles = 0;
    long long m_frames = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const std::optional<Url> url = Url::fromText(arguments.value(1));
    if (!url) {
        std::fprintf(stderr, "usage: orvel-bench-reading URL [frames]\n");
        return 2;
    }
    MainQueue::open();
    RunLoop::main();
    UrlRequest request{.url = *url, .acceptsBareAnswer = true};
    request.headers.set(QStringLiteral("Icy-Metadata"), QStringLiteral("1"));
    UrlConnection::start(request, std::make_shared<Reader>(arguments.value(2) == QLatin1String("frames")));
    const int result = QCoreApplication::exec();
    closeConnections();
    MainQueue::close();
    return result;
}
