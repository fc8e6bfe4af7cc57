#include "support/ScriptedServer.h"
#include "tools/Tool.h"

#include <csignal>
#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

TEST(PlayTest, TellsWhatHappensAsJson)
{
    Tool tool({"play", "--json", "--volume", "0.2", "--buffer", "1",
               stationStream("la-radio.mp3", "seconds=4&paced=0")});
    EXPECT_EQ(tool.status(), 0);
    EXPECT_EQ(tool.errors(), QByteArray());
    QStringList order;
    for (const JsonValue &object : tool.objects())
        order << (object["event"].string() == u"state" ? object["state"] : object["event"]).string();
    EXPECT_EQ(order.first(), "url");
    EXPECT_EQ(order.last(), "end");
    EXPECT_GE(tool.event("end")["time"].text().toDouble(), 2); // in real time
    EXPECT_LT(order.indexOf("connecting"), order.indexOf("playing"));
    EXPECT_EQ(order.count("sound"), 1);
    EXPECT_EQ(tool.event("station")["genre"].string(), "Pop");
    EXPECT_FALSE(tool.event("title")["title"].string().isEmpty());
}

TEST(PlayTest, EndsAfterItsTime)
{
    Tool tool({"play", "--json", "--seconds", "1.5", stationStream("la-radio.mp3")});
    EXPECT_EQ(tool.status(), tool.says("\"sound\"") ? 0 : 9);
    EXPECT_GE(tool.event("end")["time"].text().toDouble(), 1.5);
}

TEST(PlayTest, FollowsAPlaylistAndExplainsAnError)
{
    const ScriptedServer server(Script{Send{httpHead()}, Send{"http://127.0.0.1:1/live\n"}});
    Tool tool({"play", "--json", server.url("/a.m3u")});
    EXPECT_EQ(tool.status(), 3);
    EXPECT_TRUE(tool.says("\"http://127.0.0.1:1/live\""));
    const JsonValue error = tool.event("error");
    EXPECT_EQ(error["error"].integerValue(), 9);
    EXPECT_EQ(tool.errors(), "orvel-stream: " + error["message"].string().toUtf8() + '\n');
    EXPECT_EQ(tool.event("end")["status"].integerValue(), 3);
}

TEST(PlayTest, ShowsNoControlCharacterOfAServer)
{
    const ScriptedServer server(
        Script{Send{httpHead("Content-Type: audio/mpeg\r\nicy-name: A\x1b[2J\tB\xc2\x85\r\n")}, Close{}});
    Tool tool({"play", server.url()});
    EXPECT_EQ(tool.status(), 6);
    EXPECT_TRUE(tool.out().contains("A\xef\xbf\xbd[2J\xef\xbf\xbd"
                                    "B\xef\xbf\xbd\n"))
        << tool.out().toStdString();
}

TEST(PlayTest, ASignalEndsItInOrder)
{
    Tool tool({"play", "--json", stationStream("la-radio.mp3")});
    ASSERT_TRUE(tool.says("\"sound\""));
    tool.signal(SIGINT);
    EXPECT_EQ(tool.status(), 128 + SIGINT);
    EXPECT_EQ(tool.event("end")["status"].integerValue(), 128 + SIGINT);
    EXPECT_EQ(tool.errors(), QByteArray());
}

TEST(PlayTest, EndsWhenNobodyReads)
{
    QProcess shell;
    shell.start("sh", {"-c", QStringLiteral("ORVEL_AUDIO_DEVICE=null %1 play --seconds 30 '%2' >/dev/full")
                                 .arg(ORVEL_STREAM, stationStream("la-radio.mp3"))});
    ASSERT_TRUE(shell.waitForFinished());
    EXPECT_EQ(shell.exitCode(), 8);
}
