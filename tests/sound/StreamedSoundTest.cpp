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

const QByteArray mp3Head = "Content-Type: audio/mpeg\r\n";

// Each in a segment of its own, most of a few bytes and some of thousands.
Script inPieces(const QByteArray &bytes)
{
    std::minstd_rand random(5);
    Script script;
    for (qsizetype at = 0; at < bytes.size();) {
        script.push_back(Send{bytes.mid(at, 1 + qsizetype(random() % 3 ? random() % 16 : random() % 9000))});
        at += std::get<Send>(script.back()).bytes.size();
    }
    return script;
}

} // namespace

TEST(StreamedSoundTest, IsTheSentSoundInEveryFormatWhereverMetadataLayAndTheNetworkCutIt)
{
    const auto highEfficiency = [](int rate, int channels) {
        return withBandReplication(encodeTone({mpeg4Aac, rate, channels, 64000, 10}));
    };
    const struct
    {
        const char *name;
        EncodedTone tone;
        int interval;
        QByteArray statusLine = "HTTP/1.1 200 OK";
    } cases[] = {
        {"MP3 44.1 kHz stereo", mp3(), 1},
        {"MP3 48 kHz mono", encodeTone({mpegLayer3, 48000, 1, 96000, 8}), 4095},
        {"MP3 32 kHz stereo", encodeTone({mpegLayer3, 32000, 2, 112000, 6}), 777, "ICY 200 OK"},
        {"MP3 22.05 kHz mono", encodeTone({mpegLayer3, 22050, 1, 48000, 6}), 16000},
        {"AAC 44.1 kHz mono", encodeTone({mpeg4Aac, 44100, 1, 64000, 10}), 1},
        {"AAC 48 kHz stereo", encodeTone({mpeg4Aac, 48000, 2, 128000, 6}), 8192},
        {"AAC 22.05 kHz stereo", encodeTone({mpeg4Aac, 22050, 2, 64000, 6}), 4096, "ICY 200 OK"},
        {"HE-AAC 44.1 kHz", highEfficiency(22050, 2), 8192},
        {"HE-AAC 48 kHz", highEfficiency(24000, 2), 777},
        {"HE-AAC v2 44.1 kHz", highEfficiency(22050, 1), 4095},
    };
    for (const auto &[name, tone, interval, statusLine] : cases) {
        SCOPED_TRACE(name);
        // Titles of all lengths, so that blocks of all sizes lie anywhere in a frame.
        demo::IcyFraming framing(interval);
        QStringList titles;
        QByteArray body;
        const QByteArray audio = tone.bytes + noSound;
        const qsizetype step = 1777 + interval;
        for (qsizetype at = 0; at < audio.size(); at += step) {
            if (audio.size() - at >= step)
                titles << QStringLiteral("No %1").arg(titles.size(), 1 + int(titles.size() % 97));
            body += framing.framed(audio.mid(at, step), titles.back().toUtf8());
        }
        const QByteArray type = tone.format.format == mpegLayer3 ? "audio/mpeg" : "audio/aacp";
        const QByteArray fields =
            "content-type:" + type + "\r\nicy-metaint:" + QByteArray::number(interval) + "\r\n";
        ScriptedServer server(inPieces(httpHead(fields, statusLine) + body));
        LivePlayer player(server.url());
        EXPECT_TRUE(player.playsToTheEnd([&] { return server.openConnections() == 0; }));
        expectSameSound(player.sound(), decoded(tone));
        // Each is told; titles that come at once are read when the last is there.
        EXPECT_EQ(player.titles.size(), titles.size());
        EXPECT_EQ(player.titles.last().toStdString(), titles.last().toStdString());
    }
}

TEST(StreamedSoundTest, GoesOnWhereAnUnderrunStoppedIt)
{
    // In the middle of a frame.
    const qsizetype half = mp3().bytes.size() / 2 + 100;
    ScriptedServer server({Send{httpHead(mp3Head) + mp3().bytes.first(half)}, WaitForRelease{},
                           Send{mp3().bytes.sliced(half) + noSound}});
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
    expectSameSound(player.sound(), decoded(mp3()));
}

TEST(StreamedSoundTest, IsCutByAPauseAndBeginsAnewWithTheNextPlay)
{
    const std::vector<float> expected = withoutSilence(decoded(mp3()));
    // The first connection is left between two blocks of metadata.
    const auto framed = [](const QByteArray &bytes, const QByteArray &title) {
        return Send{httpHead(mp3Head + "icy-metaint: 7001\r\n") +
                    demo::IcyFraming(7001).framed(bytes, title)};
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
