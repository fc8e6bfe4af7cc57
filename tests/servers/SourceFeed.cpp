#include "servers/SourceFeed.h"

#include "servers/IcecastServer.h"
#include "support/TestLoop.h"

namespace orvel::test {

namespace {

// Time stands still for the first ten seconds, so that they are read at once.
const QString sound = QStringLiteral("sine=frequency=440:sample_rate=44100[tone];"
                                     "anoisesrc=sample_rate=44100:amplitude=0.3[noise];"
                                     "[tone][noise]amix=inputs=2,asetpts=max(0\\,PTS-10/TB)");

} // namespace

SourceFeed::SourceFeed(const IcecastServer &server, Codec codec)
    : m_server(server), m_codec(codec), m_process(server.logFile(mount().mid(1) + QStringLiteral(".log")))
{
}

QString SourceFeed::mount() const
{
    return m_codec == Codec::Mp3 ? QStringLiteral("/mp3") : QStringLiteral("/aac");
}

QString SourceFeed::start()
{
    m_process.end();
    QStringList arguments{"-hide_banner",
                          "-nostdin",
                          "-loglevel",
                          "error",
                          "-re",
                          "-f",
                          "lavfi",
                          "-i",
                          sound,
                          "-af",
                          "asetpts=N/SR/TB",
                          "-ac",
                          "2",
                          "-b:a",
                          QString::number(bytesPerSecond * 8),
                          "-ice_name",
                          name,
                          "-ice_genre",
                          genre,
                          "-ice_url",
                          site};
    if (m_codec == Codec::Mp3)
        arguments << "-c:a"
                  << "libmp3lame"
                  << "-write_xing"
                  << "0"
                  << "-id3v2_version"
                  << "0"
                  << "-content_type"
                  << "audio/mpeg"
                  << "-f"
                  << "mp3";
    else
        arguments << "-c:a"
                  << "aac"
                  << "-content_type"
                  << "audio/aac"
                  << "-f"
                  << "adts";
    if (QString failure = m_process.start(QStringLiteral("ffmpeg"), arguments << m_server.sourceUrl(mount()));
        !failure.isNull())
        return failure;
    const auto hasBurst = [this] {
        return m_server.get(mount(), m_server.burstBytes()).size() == m_server.burstBytes();
    };
    if (waitUntil([&] { return !m_process.isRunning() || hasBurst(); }) && m_process.isRunning())
        return {};
    return QStringLiteral("ffmpeg feeds nothing, see %1").arg(m_server.logFile(mount().mid(1)));
}

} // namespace orvel::test
