#include "servers/FileServer.h"
#include "servers/FilePlayer.h"
#include "support/SoundComparison.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

struct FileServerTest : testing::Test
{
    void SetUp() override
    {
        ASSERT_EQ(server.start().toStdString(), "");
        ASSERT_TRUE(server.make("a.wav", "-c:a pcm_s16le"));
    }
    // The whole sound of a file at this address.
    std::vector<float> played(const QString &url)
    {
        FilePlayer player(url);
        player->start();
        EXPECT_TRUE(player.ends());
        EXPECT_EQ(player->errorCode(), 0);
        return player.sound();
    }
    // The sound of the file as it lies there.
    std::vector<float> expected(const QString &name = "a.wav")
    {
        QFile file(server.path(name));
        file.open(QIODevice::ReadOnly);
        const QByteArray bytes = file.readAll();
        std::vector<float> samples;
        for (qsizetype at = bytes.indexOf("data") + 8; at + 1 < bytes.size(); at += 2)
            samples.push_back(float(qint16(quint8(bytes[at]) | quint8(bytes[at + 1]) << 8)) / 32768);
        return samples;
    }

    FileServer server;
};

} // namespace

TEST_F(FileServerTest, PlaysHoweverTheFileIsServed)
{
    for (const char *way : {"", "unknown", "whole", "moved"}) {
        SCOPED_TRACE(way);
        expectSameSound(played(server.url("a.wav", way)), expected());
    }
}

TEST_F(FileServerTest, TakesAnyCertificate)
{
    expectSameSound(played(server.secureUrl("a.wav")), expected());
}

TEST_F(FileServerTest, FailsWithoutAFile)
{
    for (const bool isThere : {true, false}) {
        FilePlayer player(server.url("none.wav"));
        player->start();
        EXPECT_TRUE(player.ends());
        EXPECT_EQ(player->errorCode(), AudioStreamerErrorAudioDataNotFound);
        EXPECT_TRUE(player.sound().empty());
        if (isThere)
            server.end();
    }
}

TEST_F(FileServerTest, SeeksByARangeOrThroughWhatComes)
{
    for (const char *way : {"", "whole"}) {
        FilePlayer player(server.url("a.wav", way));
        ASSERT_TRUE(player.begins());
        player->seekToTime(5);
        ASSERT_TRUE(player.ends());
        const std::vector<float> all = expected();
        expectSameSound(player.sound(), {all.begin() + 5 * 44100 * 2, all.end()});
    }
    EXPECT_EQ(server.requests().filter("bytes=882").size(), 2);
    FilePlayer player(server.url("a.wav", "refused"));
    ASSERT_TRUE(player.begins());
    player->seekToTime(5);
    ASSERT_TRUE(player.ends());
    EXPECT_EQ(player->errorCode(), AudioStreamerErrorAudioDataNotFound);
}

// Much longer than the server's patience. ORVEL_PAUSE_SECONDS is for a longer one.
TEST_F(FileServerTest, OutlivesAPauseThatTheServerDoesNot)
{
    ASSERT_TRUE(server.make("long.wav", "-filter:a aloop=loop=9:size=441000 -c:a pcm_s16le"));
    FilePlayer player(server.url("long.wav"));
    ASSERT_TRUE(player.begins());
    player->pause();
    ASSERT_TRUE(player->isPaused());
    player.release();
    const double pause = qEnvironmentVariableIsSet("ORVEL_PAUSE_SECONDS")
                             ? qEnvironmentVariableIntValue("ORVEL_PAUSE_SECONDS")
                             : 3;
    EXPECT_FALSE(waitUntil([&] { return !player->isPaused(); }, pause));
    player->pause();
    ASSERT_TRUE(player.ends(60));
    EXPECT_EQ(player->errorCode(), 0);
    expectSameSound(player.sound(), expected("long.wav"));
    EXPECT_EQ(server.requests().filter("206").size(), 1); // it was taken up once
}
