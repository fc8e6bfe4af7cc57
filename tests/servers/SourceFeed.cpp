#include "servers/SourceFeed.h"

#include "servers/IcecastServer.h"
#include "support/TestLoop.h"

namespace orvel::test {

namespace {

// A tone in noise. Time stands still for the first ten seconds, so that they are read at once.
constexpr auto source = "-hide_banner -nostdin -loglevel error -re -f lavfi -i "
                        "sine=frequency=440:sample_rate=44100[tone];"
                        "anoisesrc=sample_rate=44100:amplitude=0.3[noise];"
                        "[tone][noise]amix=inputs=2,asetpts=max(0\\,PTS-10/TB)";
constexpr auto mp3 = "-c:a libmp3lame -write_xing 0 -id3v2_version 0 -content_type audio/mpeg -f mp3";
constexpr auto aac = "-c:a aac -content_type audio/aac -f adts";

} // namespace

SourceFeed::SourceFeed(const IcecastServer &server, Codec codec)
    : m_server(server), m_codec(codec), m_process(server.logFile(mount().mid(1) + ".log"))
{
}

QString SourceFeed::mount() const { return m_codec == Codec::Mp3 ? "/mp3" : "/aac"; }

QString SourceFeed::start()
{
    m_process.end();
    const QString command =
        QStringLiteral(
            "%1 -af asetpts=N/SR/TB -ac 2 -b:a %2 -ice_name \"%3\" -ice_genre %4 -ice_url %5 %6 %7")
            .arg(source)
            .arg(bytesPerSecond * 8)
            .arg(name, genre, site, m_codec == Codec::Mp3 ? mp3 : aac, m_server.sourceUrl(mount()));
    if (QString failure = m_process.start("ffmpeg", QProcess::splitCommand(command)); !failure.isNull())
        return failure;
    const auto hasBurst = [this] {
        return m_server.get(mount(), m_server.burstBytes()).size() == m_server.burstBytes();
    };
    if (waitUntil([&] { return !m_process.isRunning() || hasBurst(); }) && m_process.isRunning())
        return {};
    return QStringLiteral("ffmpeg feeds nothing, see %1").arg(m_server.logFile(mount().mid(1)));
}

} // namespace orvel::test
