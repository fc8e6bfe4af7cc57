#include "LivePlayer.h"
#include "demo/IcyFraming.h"
#include "support/EncodedTone.h"
#include "support/ScriptedServer.h"
#include "support/SoundComparison.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>
#include <iostream>
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
std::vector<float> played(const Script &script, QStringList *titles = nullptr, float volume = 1)
{
    ScriptedServer server(script);
    LivePlayer player(server.url());
    player.streamer->setVolume(volume);
    EXPECT_TRUE(player.playsToTheEnd([&] { return server.openConnections() == 0; }));
    if (titles)
        *titles = player.titles();
    return player.sound();
}

// The tone without its first packets.
EncodedTone from(std::size_t packet, EncodedTone tone)
{
    tone.packets.erase(tone.packets.begin(), tone.packets.begin() + std::ptrdiff_t(packet));
    return tone;
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
        {"MP3 44.1 kHz mono", encodeTone({mpegLayer3, 44100, 1, 96000, 8})},
        {"MP3 48 kHz stereo", encodeTone({mpegLayer3, 48000, 2, 160000, 6})},
        {"MP3 32 kHz stereo", encodeTone({mpegLayer3, 32000, 2, 112000, 6})},
        {"MP3 24 kHz stereo", encodeTone({mpegLayer3, 24000, 2, 64000, 6})},
        {"MP3 22.05 kHz mono", encodeTone({mpegLayer3, 22050, 1, 48000, 6})},
        {"AAC 44.1 kHz stereo", aac()},
        {"AAC 44.1 kHz mono", encodeTone({mpeg4Aac, 44100, 1, 64000, 10})},
        {"AAC 48 kHz stereo", encodeTone({mpeg4Aac, 48000, 2, 128000, 6})},
        {"AAC 22.05 kHz stereo", encodeTone({mpeg4Aac, 22050, 2, 64000, 6})},
        {"AAC 22.05 kHz mono", encodeTone({mpeg4Aac, 22050, 1, 48000, 6})},
        {"HE-AAC 44.1 kHz", highEfficiency(22050, 2)},
        {"HE-AAC 48 kHz", highEfficiency(24000, 2)},
        {"HE-AAC v2 44.1 kHz", highEfficiency(22050, 1)},
    };
    for (const auto &[name, tone] : cases) {
        SCOPED_TRACE(name);
        const std::vector<float> sound = played({Send{head(tone) + tone.bytes + noSound}});
        const std::vector<float> expected = decoded(tone);
        expectSameSound(sound, expected);
        std::cout << name << ": " << compareSound(sound, expected) << std::endl;
    }
}

TEST(StreamedSoundTest, IsTheSameAtAnyVolume)
{
    for (const float volume : {0.5F, 0.3F})
        expectSameSound(played({Send{head(mp3()) + mp3().bytes + noSound}}, nullptr, volume),
                        scaled(decoded(mp3()), volume));
}

TEST(StreamedSoundTest, DoesNotKnowWhereMetadataLay)
{
    const std::vector<float> expected[] = {decoded(mp3()), decoded(aac())};
    const QByteArray bareStatus = "ICY 200 OK";
    struct Case
    {
        const EncodedTone &tone;
        const std::vector<float> &expected;
        int interval;
        QByteArray statusLine = "HTTP/1.1 200 OK";
    };
    const Case cases[] = {{mp3(), expected[0], 1},
                          {mp3(), expected[0], 1000},
                          {mp3(), expected[0], 4095},
                          {mp3(), expected[0], 16000},
                          {aac(), expected[1], 1},
                          {aac(), expected[1], 1000},
                          {aac(), expected[1], 8192},
                          {mp3(), expected[0], 777, bareStatus},
                          {aac(), expected[1], 777, bareStatus}};
    for (const Case &c : cases) {
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
        expectSameSound(played({Send{httpHead(fields, c.statusLine) + body}}, &told), c.expected);
        // Each is told; titles that come at once are read when the last is there.
        EXPECT_EQ(told.size(), titles.size());
        EXPECT_EQ(told.last().toStdString(), titles.last().toStdString());
    }
}

TEST(StreamedSoundTest, DoesNotKnowHowTheNetworkCutIt)
{
    std::minstd_rand random(5);
    const std::function<qsizetype()> cuts[] = {
        [] { return 417; },
        [] { return 4096; },
        [&] { return 1 + qsizetype(random() % 1460); },
        [&] { return 1 + qsizetype(random() % 3 ? random() % 16 : random() % 9000); },
    };
    const QByteArray bytes = head(mp3()) + mp3().bytes + noSound;
    const std::vector<float> expected = decoded(mp3());
    for (const auto &cut : cuts) {
        SCOPED_TRACE(&cut - cuts);
        expectSameSound(played(inPieces(bytes, cut)), expected);
    }

    Script chunked = inPieces(mp3().bytes + noSound, cuts[2]);
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
        player.letGo();
        ASSERT_TRUE(player.reaches(RadioStateBuffering));
        player.hold();
        server.release();
        ASSERT_TRUE(player.reaches(RadioStatePlaying));
        ASSERT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
        letEventsRun();
        player.letGo();
        ASSERT_TRUE(player.reaches(RadioStateStopped));
        EXPECT_EQ(server.requestCount(), 1u);
        expectSameSound(player.sound(), decoded(*tone));
    }
}

TEST(StreamedSoundTest, BeginsWithTheFirstWholeFrame)
{
    for (const EncodedTone *tone : {&mp3(), &aac()}) {
        for (const qint64 into : {1, 4, 150}) {
            SCOPED_TRACE(testing::Message() << contentType(*tone) << ' ' << into);
            const QByteArray bytes = tone->bytes.sliced(tone->packets[20].startOffset + into);
            expectSameSound(played({Send{head(*tone) + bytes + noSound}}), decoded(from(21, *tone)));
        }
    }
}

TEST(StreamedSoundTest, EndsWithTheLastFrameThatWasRead)
{
    // Read were a first piece, until the format was known, and pieces of half a second's bytes at that rate.
    constexpr qsizetype firstPiece = 4096;
    constexpr qsizetype piece = 22050;
    for (const qsizetype rest : {0, 1, 22049}) {
        SCOPED_TRACE(rest);
        const qsizetype read = firstPiece + 5 * piece;
        EncodedTone tone = mp3();
        std::erase_if(tone.packets, [&](const auto &p) { return p.startOffset + p.dataByteSize > read; });
        expectSameSound(played({Send{head(tone) + tone.bytes.first(read + rest)}}), decoded(tone));
    }
}

TEST(StreamedSoundTest, IsCutByAPauseAndBeginsAnewWithTheNextPlay)
{
    const std::vector<float> expected = decoded(mp3());
    ScriptedServer server({Send{head(mp3()) + mp3().bytes + noSound}});
    LivePlayer player(server.url());
    player.streamer->play();
    ASSERT_TRUE(player.reaches(RadioStatePlaying));
    player.streamer->pause();
    ASSERT_TRUE(player.reaches(RadioStateStopped));
    const SoundDifference cut = compareSound(player.sound(), expected);
    EXPECT_EQ(cut.different + cut.surplus, 0) << cut;
    EXPECT_GT(cut.missing, 0);

    EXPECT_TRUE(player.playsToTheEnd([&] { return server.openConnections() == 0; }));
    EXPECT_EQ(server.requestCount(), 2u);
    expectSameSound(player.sound(), expected);
}
