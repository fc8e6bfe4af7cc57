#include "demo/IcyFraming.h"
#include "sound/LivePlayer.h"
#include "support/EncodedTone.h"
#include "support/ScriptedServer.h"
#include "support/SoundComparison.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>
#include <random>

using namespace orvel;
using namespace orvel::test;

namespace {

using enum AudioFormat;

// The player reads in pieces, and what does not fill one at the stream's end is not heard. This follows a
// stream that is to be heard whole; it is longer than a piece.
const QByteArray noSound(50000, '\0');

const EncodedTone &mp3()
{
    static const EncodedTone tone = encodeTone({.seconds = 9});
    return tone;
}

const EncodedTone &aac()
{
    static const EncodedTone tone = encodeTone({.format = mpeg4Aac, .bitrate = 96000, .seconds = 10});
    return tone;
}

const char *contentType(const EncodedTone &tone)
{
    return tone.format.format == mpegLayer3 ? "audio/mpeg" : "audio/aacp";
}

QByteArray head(const EncodedTone &tone, const QByteArray &more = {})
{
    return httpHead(QByteArray("Content-Type: ") + contentType(tone) + "\r\n" + more);
}

// Plays what one connection is given, to its end.
std::vector<float> played(const Script &script, QStringList *titles = nullptr)
{
    ScriptedServer server(script);
    LivePlayer player(server.url());
    EXPECT_TRUE(player.playsToTheEnd([&] { return server.openConnections() == 0; }));
    if (titles)
        *titles = player.titles;
    return player.sound();
}

Script inPieces(const QByteArray &bytes, const std::function<qsizetype()> &size)
{
    Script script;
    for (qsizetype at = 0; at < bytes.size();) {
        const qsizetype count = std::min(size(), bytes.size() - at);
        script.push_back(Send{bytes.sliced(at, count)});
        at += count;
    }
    return script;
}

} // namespace

TEST(StreamedSoundTest, IsTheSentSoundInEveryFormat)
{
    const auto highEfficiency = [](int rate, int channels) {
        return withBandReplication(encodeTone({mpeg4Aac, rate, channels, 64000, 10}), 0);
    };
    const std::pair<const char *, EncodedTone> cases[] = {
        {"MP3 44.1 kHz stereo", mp3()},
        {"MP3 48 kHz mono", encodeTone({mpegLayer3, 48000, 1, 96000, 8})},
        {"MP3 32 kHz stereo", encodeTone({mpegLayer3, 32000, 2, 112000, 6})},
        {"MP3 22.05 kHz mono", encodeTone({mpegLayer3, 22050, 1, 48000, 6})},
        {"AAC 44.1 kHz mono", encodeTone({mpeg4Aac, 44100, 1, 64000, 10})},
        {"AAC 48 kHz stereo", encodeTone({mpeg4Aac, 48000, 2, 128000, 6})},
        {"AAC 22.05 kHz stereo", encodeTone({mpeg4Aac, 22050, 2, 64000, 6})},
        {"HE-AAC 44.1 kHz", highEfficiency(22050, 2)},
        {"HE-AAC 48 kHz", highEfficiency(24000, 2)},
        {"HE-AAC v2 44.1 kHz", highEfficiency(22050, 1)},
    };
    for (const auto &[name, tone] : cases) {
        SCOPED_TRACE(name);
        expectSameSound(played({Send{head(tone) + tone.bytes + noSound}}), decoded(tone));
    }
}

TEST(StreamedSoundTest, DoesNotKnowWhereMetadataLay)
{
    const struct
    {
        const EncodedTone &tone;
        int interval;
        QByteArray statusLine = "HTTP/1.1 200 OK";
    } cases[] = {{mp3(), 1}, {mp3(), 4095}, {aac(), 1}, {aac(), 8192}, {mp3(), 777, "ICY 200 OK"}};
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message()
                     << contentType(c.tone) << ' ' << c.interval << ' ' << c.statusLine.toStdString());
        // Titles of all lengths, so that blocks of all sizes lie anywhere in a frame.
        demo::IcyFraming framing(c.interval);
        QStringList titles;
        QByteArray body;
        const QByteArray audio = c.tone.bytes + noSound;
        const qsizetype step = 1777 + c.interval;
        for (qsizetype at = 0; at < audio.size(); at += step) {
            if (audio.size() - at >= step)
                titles << QStringLiteral("No %1").arg(titles.size(), 1 + int(titles.size() % 97));
            body +=
                framing.framed(audio.sliced(at, std::min(step, audio.size() - at)), titles.back().toUtf8());
        }
        const QByteArray fields = QByteArray("content-type:") + contentType(c.tone) +
                                  "\r\nicy-metaint:" + QByteArray::number(c.interval) + "\r\n";
        QStringList told;
        expectSameSound(played({Send{httpHead(fields, c.statusLine) + body}}, &told), decoded(c.tone));
        // Each is told; titles that come at once are read when the last is there.
        EXPECT_EQ(told.size(), titles.size());
        EXPECT_EQ(told.last().toStdString(), titles.last().toStdString());
    }
}

TEST(StreamedSoundTest, DoesNotKnowHowTheNetworkCutIt)
{
    std::minstd_rand random(5);
    const auto cut = [&] { return 1 + qsizetype(random() % 3 ? random() % 16 : random() % 9000); };
    const std::vector<float> expected = decoded(mp3());
    expectSameSound(played(inPieces(head(mp3()) + mp3().bytes + noSound, cut)), expected);

    Script chunked = inPieces(mp3().bytes + noSound, cut);
    for (Step &step : chunked) {
        QByteArray &piece = std::get<Send>(step).bytes;
        piece = QByteArray::number(piece.size(), 16) + "\r\n" + piece + "\r\n";
    }
    chunked.insert(chunked.begin(), Send{head(mp3(), "Transfer-Encoding: chunked\r\nConnection: close\r\n")});
    chunked.push_back(Send{"0\r\n\r\n"});
    expectSameSound(played(chunked), expected);
}

TEST(StreamedSoundTest, GoesOnWhereAnUnderrunStoppedIt)
{
    for (const EncodedTone *tone : {&mp3(), &aac()}) {
        SCOPED_TRACE(contentType(*tone));
        // Also in the middle of a frame.
        const qsizetype half = tone->bytes.size() / 2 + 100;
        ScriptedServer server({Send{head(*tone) + tone->bytes.first(half)}, WaitForRelease{},
                               Send{tone->bytes.sliced(half) + noSound}});
        LivePlayer player(server.url());
        player.streamer->play();
        ASSERT_TRUE(player.reaches(RadioStatePlaying));
        player.release();
        ASSERT_TRUE(player.reaches(RadioStateBuffering));
        player.hold();
        server.release();
        ASSERT_TRUE(player.reaches(RadioStatePlaying));
        ASSERT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
        letEventsRun();
        player.release();
        ASSERT_TRUE(player.reaches(RadioStateStopped));
        EXPECT_EQ(server.requestCount(), 1u);
        expectSameSound(player.sound(), decoded(*tone));
    }
}

TEST(StreamedSoundTest, IsCutByAPauseAndBeginsAnewWithTheNextPlay)
{
    const std::vector<float> expected = withoutSilence(decoded(mp3()));
    // The first connection is left between two blocks of metadata.
    const auto framed = [](const QByteArray &bytes, const QByteArray &title) {
        return Send{head(mp3(), "icy-metaint: 7001\r\n") + demo::IcyFraming(7001).framed(bytes, title)};
    };
    ScriptedServer server(std::vector<Script>{{framed(mp3().bytes.first(100'001), "A - B"), Stall{}},
                                              {framed(mp3().bytes + noSound, "C - D")}});
    LivePlayer player(server.url());
    player.streamer->play();
    ASSERT_TRUE(player.reaches(RadioStatePlaying));
    player.streamer->pause();
    ASSERT_TRUE(player.reaches(RadioStateStopped));
    const std::vector<float> cut = withoutSilence(player.sound());
    ASSERT_LT(cut.size(), expected.size());
    EXPECT_TRUE(
        soundDifference(cut, {expected.begin(), expected.begin() + std::ptrdiff_t(cut.size())}).isNull());

    EXPECT_TRUE(player.playsToTheEnd([&] { return server.openConnections() == 0; }));
    EXPECT_EQ(server.requestCount(), 2u);
    expectSameSound(player.sound(), expected);
    EXPECT_EQ(player.titles.last(), "C - D");
}
